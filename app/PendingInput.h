#pragma once

/// Drops pending mouse and key input and requests to close a window, which arrived while the event loop was not
/// running. To be called from the GUI thread right after such a period. All other pending events, such as repaints and
/// the end of the session, are processed before it returns.
///
/// Presses and releases remain paired: a button that was pressed in this period and is still held has no effect until
/// it is released, and the release of a button that was pressed earlier is delivered.
void dropPendingInput();
