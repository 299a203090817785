#include "convert/Program.h"

#include <QApplication>
#include <QFont>

#include <csignal>

namespace {

/// What the toolkit and the reader log is told in this program's own words, or does not matter here.
void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

int main(int argc, char* argv[])
{
    // A file beyond the limit on sizes is a failure to report, not the program's end.
    std::signal(SIGXFSZ, SIG_IGN);

    const QStringList arguments = argumentsOf(argc, argv);
    if (const std::optional<int> status = answerAtOnce(arguments))
        return *status;

    // There is nothing to show, so no display is needed, whatever the environment says.
    qInstallMessageHandler(dropMessage);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int one = 1;
    QApplication application(one, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));
    return run(arguments);
}
