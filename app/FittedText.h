#pragma once

#include <QList>

class QLabel;

/// Shrinks the label's font, from the application's, until its text is seen in full in the label's box.
void fitText(QLabel* label);

/// Does so to all of the labels alike, so that their texts stay of one size.
void fitTexts(const QList<QLabel*>& labels);
