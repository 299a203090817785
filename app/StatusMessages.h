#pragma once

#include <QDeadlineTimer>
#include <QString>

class QStatusBar;

/// The texts of a status bar: messages of the commands, and the tips of menus and buttons that are shown over them.
///
/// When a tip goes, the message that it covered comes back for the rest of its time.
class StatusMessages {
public:
    /// `bar` is not owned and must live as long as messages are shown.
    explicit StatusMessages(QStatusBar* bar);

    /// Shows `text` for so many milliseconds; 0 keeps it until something else is shown.
    void show(const QString& text, int milliseconds);

    /// Shows `text` over the message; an empty text takes the tip away.
    void setTip(const QString& text);

private:
    void coverMessage();
    void uncoverMessage();

    QStatusBar* bar;
    QString message;
    QDeadlineTimer messageEnd;
    bool covered = false;
};
