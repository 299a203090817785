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

KytStudioApp* editor = nullptr; // while its event loop runs

void keepCopy()
{
    if (editor)
        editor->keepCopy();
}

/// The program's icon, in the sizes that window managers ask for.
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
    // A save beyond the limit on file sizes is to fail, not to end the program.
    std::signal(SIGXFSZ, SIG_IGN);

    // The fonts' configuration takes as long to read as the connection to the X server takes to set up.
    std::thread fonts(FcInit);
    QApplication application(argc, argv);
    fonts.join();
    QApplication::setDesktopFileName(QStringLiteral("kytstudio"));
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));

    QTranslator translator;
    static_cast<void>(translator.load(QStringLiteral("kytstudio.") + QLocale::system().name(), QStringLiteral(".")));
    QApplication::installTranslator(&translator);

    // Left to the end of the process, with its document and its viewer.
    static auto* const window = new KytStudioApp;
    window->show();
    // Reading and sending the icon takes longer than showing the window.
    QTimer::singleShot(0, window, [] { QApplication::setWindowIcon(applicationIcon()); });

    editor = window;
    const TerminationWatch watch(keepCopy);
    // The toolkit leaves by exit() when it loses its X server, as happens at the end of many sessions.
    std::atexit(keepCopy);
    const int status = QApplication::exec();
    editor = nullptr;
    return status;
}
