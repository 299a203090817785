#pragma once

#include <QStringList>
#include <QtGlobal>

/// Gathers the warnings that are logged while it lives, and keeps them off standard error.
class LoggedMessages {
public:
    LoggedMessages()
    {
        lines().clear();
        categories().clear();
        previous = qInstallMessageHandler(keep);
    }
    ~LoggedMessages() { qInstallMessageHandler(previous); }
    LoggedMessages(const LoggedMessages&) = delete;
    LoggedMessages& operator=(const LoggedMessages&) = delete;

    static QStringList& lines()
    {
        static QStringList kept;
        return kept;
    }
    static QStringList& categories()
    {
        static QStringList kept;
        return kept;
    }

private:
    static void keep(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        if (type == QtDebugMsg || type == QtInfoMsg)
            return;
        lines().append(text);
        categories().append(context.category);
    }

    QtMessageHandler previous;
};
