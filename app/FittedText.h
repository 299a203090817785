#pragma once

#include <QList>

class QLabel;
class QLineEdit;

/// Sets the label's font to the application's, reduced in size until the whole text fits into the label.
void fitText(QLabel* label);

/// Does the same for several labels, with one font size for all of them.
void fitTexts(const QList<QLabel*>& labels);

/// Sets the edit's font to the application's, reduced in size until its letters, including descenders, fit into the
/// height of the edit.
void fitHeight(QLineEdit* edit);
