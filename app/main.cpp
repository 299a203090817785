#include "app/kytstudio.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QTranslator>

#include <csignal>

int main(int argc, char* argv[])
{
    // A save beyond the limit on file sizes is to fail, not to end the program.
    std::signal(SIGXFSZ, SIG_IGN);

    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));

    QTranslator translator;
    static_cast<void>(translator.load(QStringLiteral("kytstudio.") + QLocale::system().name(), QStringLiteral(".")));
    QApplication::installTranslator(&translator);

    // Left to the end of the process, with its document and its viewer.
    static KytStudioApp* const window = new KytStudioApp;
    window->show();
    return QApplication::exec();
}
