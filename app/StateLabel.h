#pragma once

#include <QLabel>

class QStatusBar;

/// A quiet text at the right end of a status bar. The bar's messages go before it: what they need of a narrow bar it
/// does without, and shows the rest of its text in its tool tip.
class StateLabel : public QLabel {
    Q_OBJECT

public:
    /// Puts itself into `bar`, which owns it.
    explicit StateLabel(QStatusBar* bar);

    /// Shows `text`, cut off at its start where there is no room.
    void showText(const QString& text);
    QString wholeText() const { return whole; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QStatusBar* bar;
    QString whole;
};
