#pragma once

class QLabel;

/// Shrinks the label's font, from the application's, until its text is seen in full in the label's box.
void fitText(QLabel* label);
