#pragma once

#include <QDeadlineTimer>
#include <QString>

class QStatusBar;

/// The texts of a status bar: messages of the commands, and status tips of menus and buttons, which cover the messages.
///
/// When a tip is removed, the message that it covered is shown again for the rest of its time.
class StatusMessages {
public:
    /// `bar` is not owned and must live as long as messages are shown.
    explicit StatusMessages(QStatusBar* bar);

    /// Shows `text` for the given time; 0 means until something else is shown.
    void show(const QString& text, int milliseconds);

    /// Shows `text` instead of the message; an empty text removes the tip.
    void setTip(const QString& text);

private:
    void coverMessage();
    void uncoverMessage();

    QStatusBar* bar;
    QString message;
    QDeadlineTimer messageEnd;
    bool covered = false;
};
