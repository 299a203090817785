#pragma once

/// Drops the mouse and key input, and the requests to close a window, that have reached the program's windows while it
/// was too busy to look. To be called right after such a time, from the GUI thread; everything else that has arrived,
/// such as repaints, is dealt with before it returns.
///
/// Presses and releases stay paired: a button that was pressed in that time and is still held stays without effect
/// until it is released, and the release of one that was pressed before it is delivered.
void dropPendingInput();
