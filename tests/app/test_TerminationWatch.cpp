#include "app/TerminationWatch.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>
#include <QtTest>

#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace {

constexpr int stayed = 7; // exit status of a process that nothing has ended

void sayFarewell()
{
    std::puts("farewell");
    std::fflush(stdout);
}

/// Raises the signals one after the other from the event loop, which runs for a while.
int runAndRaise(const QList<int>& numbers)
{
    QTimer::singleShot(0, QCoreApplication::instance(), [numbers] {
        for (const int number : numbers)
            raise(number);
    });
    QTimer::singleShot(500, QCoreApplication::instance(), [] { QCoreApplication::exit(stayed); });
    return QCoreApplication::exec();
}

/// What the process that a test starts does.
int act(const QString& what)
{
    if (what == "ignored") {
        std::signal(SIGHUP, SIG_IGN);
        const TerminationWatch watch(sayFarewell);
        return runAndRaise({SIGHUP});
    }
    if (what == "afterwards") {
        {
            const TerminationWatch watch(sayFarewell);
        }
        return runAndRaise({SIGTERM});
    }
    const TerminationWatch watch(sayFarewell);
    if (what == "together")
        return runAndRaise({SIGTERM, SIGHUP, SIGTERM});
    if (what == "hanging") {
        raise(SIGTERM);
        raise(SIGTERM); // of the same request
        usleep(1200000);
        raise(SIGINT);
        return 1;
    }
    if (what == "held back") {
        {
            const TerminationSignals held;
            raise(SIGINT);
            if (!held.arrived())
                return 1;
        }
        return runAndRaise({});
    }
    if (what == "held back, hanging") {
        const TerminationSignals held;
        raise(SIGINT);
        usleep(1200000);
        raise(SIGHUP);
        return 1;
    }
    return runAndRaise({what.toInt()});
}

} // namespace

class test_TerminationWatch : public QObject {
    Q_OBJECT

private slots:
    void theProcessEndsByTheSignalAfterItsFarewell_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("number");
        QTest::addColumn<QByteArray>("farewell");
        const QByteArray once = "farewell\n";
        QTest::newRow("interrupt") << QString::number(SIGINT) << SIGINT << once;
        QTest::newRow("terminate") << QString::number(SIGTERM) << SIGTERM << once;
        QTest::newRow("hang up") << QString::number(SIGHUP) << SIGHUP << once;
        QTest::newRow("several at the end of a session") << "together" << SIGTERM << once;
        QTest::newRow("again in a program that hangs") << "hanging" << SIGINT << QByteArray();
        QTest::newRow("held back by a window") << "held back" << SIGINT << once;
        QTest::newRow("again in a window that hangs") << "held back, hanging" << SIGHUP << QByteArray();
        QTest::newRow("after the watch has gone") << "afterwards" << SIGTERM << QByteArray();
    }

    void theProcessEndsByTheSignalAfterItsFarewell()
    {
        QFETCH(QString, what);
        QFETCH(int, number);
        QFETCH(QByteArray, farewell);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {"--act", what});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), number);
        QCOMPARE(process.readAllStandardOutput(), farewell);
    }

    void anIgnoredSignalStaysIgnored()
    {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {"--act", "ignored"});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), stayed);
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--act") == 0)
        return act(QString::fromLocal8Bit(argv[2]));
    test_TerminationWatch test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_TerminationWatch.moc"
