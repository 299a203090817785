#pragma once

#include <QLabel>

class QStatusBar;

/// A subdued text at the right end of a status bar. The bar's messages take precedence: where there is not enough room
/// for both, the text is cut off or hidden, and the tool tip shows all of it.
class StateLabel : public QLabel {
    Q_OBJECT

public:
    /// Adds itself to `bar`, which owns it.
    explicit StateLabel(QStatusBar* bar);

    /// Shows `text`, with its start cut off where there is not enough room.
    void showText(const QString& text);
    QString wholeText() const { return whole; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QStatusBar* bar;
    QString whole;
};
