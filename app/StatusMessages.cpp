#include "app/StatusMessages.h"

#include <QStatusBar>

#include <algorithm>

StatusMessages::StatusMessages(QStatusBar* bar)
    : bar(bar)
{
}

void StatusMessages::show(const QString& text, int milliseconds)
{
    message = text;
    messageEnd = milliseconds > 0 ? QDeadlineTimer(milliseconds) : QDeadlineTimer(QDeadlineTimer::Forever);
    covered = false;
    bar->showMessage(text, milliseconds);
}

void StatusMessages::setTip(const QString& text)
{
    if (!text.isEmpty()) {
        coverMessage();
        bar->showMessage(text);
    } else if (covered) {
        uncoverMessage();
    }
}

void StatusMessages::coverMessage()
{
    if (covered)
        return;
    covered = true;
    if (bar->currentMessage() == message)
        return;
    message = bar->currentMessage();
    messageEnd = QDeadlineTimer(QDeadlineTimer::Forever);
}

void StatusMessages::uncoverMessage()
{
    covered = false;
    if (message.isEmpty() || messageEnd.hasExpired())
        bar->clearMessage();
    else if (messageEnd.isForever())
        bar->showMessage(message);
    else
        bar->showMessage(message, static_cast<int>(std::max<qint64>(1, messageEnd.remainingTime())));
}
