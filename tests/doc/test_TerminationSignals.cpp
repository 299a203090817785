#include "doc/TerminationSignals.h"

#include <QtTest>

#include <sys/wait.h>
#include <unistd.h>

#include <memory>

namespace {

volatile std::sig_atomic_t handled = 0;

void handle(int number)
{
    handled = number;
}

/// Handles the signals in this test's own way, and gives them back to the test framework at the end.
class Handling {
public:
    explicit Handling(void (*handler)(int))
    {
        handled = 0;
        for (const int number : {SIGINT, SIGTERM, SIGHUP})
            former.emplace_back(number, std::signal(number, handler));
    }
    ~Handling()
    {
        for (const auto& [number, handler] : former)
            std::signal(number, handler);
    }

private:
    std::vector<std::pair<int, void (*)(int)>> former;
};

} // namespace

class test_TerminationSignals : public QObject {
    Q_OBJECT

private slots:
    void nothingHasArrivedAtFirst()
    {
        const Handling handling(handle);
        {
            const TerminationSignals held;
            QVERIFY(!held.arrived());
        }
        QCOMPARE(int(handled), 0);
    }

    void aSignalIsHeldBackUntilTheEnd_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("interrupt") << SIGINT;
        QTest::newRow("terminate") << SIGTERM;
        QTest::newRow("hang up") << SIGHUP;
    }

    void aSignalIsHeldBackUntilTheEnd()
    {
        QFETCH(int, number);
        const Handling handling(handle);
        {
            const TerminationSignals held;
            raise(number);
            QVERIFY(held.arrived());
            QCOMPARE(int(handled), 0);
        }
        QCOMPARE(int(handled), number);
    }

    void anIgnoredSignalStaysIgnored()
    {
        const Handling handling(SIG_IGN);
        const TerminationSignals held;
        raise(SIGTERM);
        QVERIFY(!held.arrived());
    }

    void aSignalOfAnEarlierTimeIsForgotten()
    {
        const Handling handling(handle);
        {
            const TerminationSignals held;
            raise(SIGTERM);
        }
        const TerminationSignals held;
        QVERIFY(!held.arrived());
    }

    void withoutAHandlerTheProcessDiesOfTheSignal()
    {
        const pid_t child = fork();
        if (child == 0) {
            std::signal(SIGTERM, SIG_DFL);
            auto held = std::make_unique<TerminationSignals>();
            raise(SIGTERM);
            const bool survived = held->arrived();
            held.reset();
            _exit(survived ? 1 : 2);
        }
        QVERIFY(child > 0);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGTERM);
    }
};

QTEST_APPLESS_MAIN(test_TerminationSignals)
#include "test_TerminationSignals.moc"
