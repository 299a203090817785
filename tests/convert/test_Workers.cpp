#include "convert/Deadline.h"
#include "convert/Notes.h"
#include "convert/program/Workers.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>

#include <unistd.h>

namespace {

/// What workers answer to these tasks.
QList<QByteArray> answersTo(const QList<QByteArray>& tasks, int count, const Workers::Work& work)
{
    Workers workers(count, work);
    QList<QByteArray> answers;
    qsizetype added = 0;
    while (added < tasks.size() || workers.isBusy()) {
        while (added < tasks.size() && workers.hasRoom())
            workers.add(tasks[added++]);
        while (const std::optional<Workers::Result> result = workers.take())
            answers.append(result->fault.isEmpty() ? result->result : result->task + ": " + result->fault.toUtf8());
        if (workers.isBusy())
            workers.wait(-1, 1000);
    }
    return answers;
}

QByteArray upperCase(const QByteArray& task)
{
    if (task == "crash")
        raise(SIGKILL);
    if (task == "exit")
        _exit(0);
    volatile bool endless = task == "loop"; // volatile, so that the loop is not optimized away
    while (endless) { }
    if (task.startsWith("slow"))
        usleep(20'000);
    return task.toUpper();
}

} // namespace

class test_Workers : public QObject {
    Q_OBJECT

private slots:
    void resultsComeInTheOrderOfTasks_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {1, 2, 5})
            QTest::addRow("%d", count) << count;
    }

    void resultsComeInTheOrderOfTasks()
    {
        QFETCH(int, count);
        QList<QByteArray> tasks;
        QList<QByteArray> expected;
        for (int i = 0; i < 1000; ++i) {
            tasks.append((i % 50 == 0 ? "slow" : "task") + QByteArray::number(i));
            expected.append(tasks.back().toUpper());
        }
        QCOMPARE(answersTo(tasks, count, upperCase), expected);
    }

    void tasksAndResultsOfAnySizeAreCarried()
    {
        QList<QByteArray> tasks;
        for (const int size : {0, 1, 65'535, 65'536, 3'000'000, 20'000'000, 2})
            tasks.append(QByteArray(size, 'x'));
        const auto twice = [](const QByteArray& task) { return task + task; };
        const QList<QByteArray> answers = answersTo(tasks, 2, twice);
        for (int i = 0; i < tasks.size(); ++i)
            QCOMPARE(answers[i], tasks[i] + tasks[i]);
    }

    void aWorkerThatEndsIsReplaced_data()
    {
        QTest::addColumn<QByteArray>("task");
        QTest::addColumn<QByteArray>("fault");
        QTest::newRow("crash") << QByteArray("crash") << QByteArray("crash: the worker process crashed (Killed)");
        QTest::newRow("exit") << QByteArray("exit") << QByteArray("exit: the worker process ended unexpectedly");
        QTest::newRow("time limit") << QByteArray("loop") << QByteArray("loop: timed out after 1 s");
    }

    void aWorkerThatEndsIsReplaced()
    {
        QFETCH(QByteArray, task);
        QFETCH(QByteArray, fault);
        const int before = Deadline::limit();
        Deadline::setLimit(1);
        for (const int count : {1, 3})
            QCOMPARE(answersTo({"a", task, "b", "c", "d", task}, count, upperCase),
                     (QList<QByteArray>{"A", fault, "B", "C", "D", fault}));
        Deadline::setLimit(before);
    }

    void tasksDoNotPileUp()
    {
        Workers workers(2, upperCase);
        int added = 0;
        for (; workers.hasRoom(); ++added)
            workers.add("slow");
        QVERIFY2(added >= 2 && added <= 200, qPrintable(QString::number(added)));
        Workers large(2, upperCase);
        for (added = 0; large.hasRoom(); ++added)
            large.add(QByteArray(1'000'000, 'x'));
        QVERIFY2(added >= 2 && added <= 10, qPrintable(QString::number(added)));
    }

    void busyWorkersEndWithTheirOwner()
    {
        QElapsedTimer timer;
        timer.start();
        {
            Workers workers(2, upperCase);
            workers.add("loop");
            workers.add("loop");
        }
        QVERIFY(timer.elapsed() < 20'000);
    }
};

QTEST_APPLESS_MAIN(test_Workers)
#include "test_Workers.moc"
