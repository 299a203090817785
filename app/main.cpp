#include "app/TerminationWatch.h"
#include "app/kytstudio.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLocale>
#include <QTimer>
#include <QTranslator>

#include <csignal>
#include <cstdlib>
#include <thread>

#include <fontconfig/fontconfig.h>

namespace {

KytStudioApp* editor = nullptr; // set while the event loop runs

void keepCopy()
{
    if (editor)
        editor->keepCopy();
}

void keepCopyAtExit()
{
    if (editor)
        editor->keepCopyAtExit();
}

/// The program's icon, in the sizes that window managers use.
QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral(":/icons/kytstudio-%1.png").arg(size));
    return icon;
}

} // namespace

int main(int argc, char* argv[])
{
    // A save that exceeds the file size limit must fail, not end the program.
    std::signal(SIGXFSZ, SIG_IGN);

    // Fontconfig is initialized while the connection to the X server is set up; both take about the same time.
    std::thread fonts(FcInit);
    QApplication application(argc, argv);
    fonts.join();
    QApplication::setDesktopFileName(QStringLiteral("kytstudio"));
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));

    QTranslator translator;
    static_cast<void>(translator.load(QStringLiteral("kytstudio.") + QLocale::system().name(), QStringLiteral(".")));
    QApplication::installTranslator(&translator);

    // Never deleted, like its document and its viewer.
    static auto* const window = new KytStudioApp;
    window->show();
    // Set after the window is shown, because loading the icon takes longer than that.
    QTimer::singleShot(0, window, [] { QApplication::setWindowIcon(applicationIcon()); });

    // The launcher passes the name of a file in the environment, since all arguments are those of the toolkit.
    const QString fileToOpen = qEnvironmentVariable("KYTSTUDIO_OPEN");
    qunsetenv("KYTSTUDIO_OPEN");
    if (!fileToOpen.isEmpty())
        window->openAtStart(fileToOpen);

    window->noteAbandonedCopy();

    editor = window;
    const TerminationWatch watch(keepCopy);
    // Qt calls exit() if it loses the connection to the X server, for example at the end of a session.
    std::atexit(keepCopyAtExit);
    const int status = QApplication::exec();
    editor = nullptr;
    window->releaseCopies();
    return status;
}
