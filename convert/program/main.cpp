#include "convert/program/Program.h"

#include <QApplication>
#include <QFont>

#include <csignal>

namespace {

/// Discards log messages: the program reports the reader's faults itself.
void discardMessage(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

int main(int argc, char* argv[])
{
    // Exceeding the file size limit must be reported as a write error, not end the program.
    std::signal(SIGXFSZ, SIG_IGN);

    const QStringList arguments = argumentsOf(argc, argv);
    if (const std::optional<int> status = answerAtOnce(arguments))
        return *status;

    // No window is shown, so no display is needed, whatever QT_QPA_PLATFORM is.
    qInstallMessageHandler(discardMessage);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int one = 1;
    QApplication application(one, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));
    return run(arguments);
}
