#include "tests/monkey/Step.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The whole way of a fault that was put in on purpose: found, said how to see again, brought down to few steps.
class test_Monkey : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(folder.isValid()); }

    void stepsWithoutAFaultAreCounted()
    {
        const Run good = run({"--seed", "77", "--seeds", "2", "--steps", "150"});
        QVERIFY2(good.status == QProcess::NormalExit && good.code == 0, qPrintable(good.output));
        QVERIFY2(good.output.contains("seed 77: 150 steps"), qPrintable(good.output));
        QVERIFY2(good.output.contains("seed 78: 150 steps"), qPrintable(good.output));
        QVERIFY2(good.output.contains("300 steps without a fault, 0 sequences failed"), qPrintable(good.output));
    }

    void aFaultIsShownAgainWithTheFewestSteps_data()
    {
        QTest::addColumn<QStringList>("planted");
        QTest::addColumn<QString>("fault");
        QTest::newRow("a broken rule") << QStringList{"--most-atoms", "2"} << "there are more than 2 atoms";
        QTest::newRow("a crash") << QStringList{"--crash-bonds", "1"} << "killed by signal 6";
        QTest::newRow("a hang") << QStringList{"--hang-wedges", "0"} << "it hangs";
    }

    void aFaultIsShownAgainWithTheFewestSteps()
    {
        QFETCH(QStringList, planted);
        QFETCH(QString, fault);
        const Run watched = run(QStringList{"--seed", "5", "--steps", "600", "--keep", folder.path()} + planted);
        QCOMPARE(watched.status, QProcess::NormalExit);
        QVERIFY2(watched.code == 1, qPrintable(watched.output));
        QVERIFY2(watched.output.contains("seed 5 fails at step "), qPrintable(watched.output));
        QVERIFY2(watched.output.contains(": " + fault + '\n'), qPrintable(watched.output));
        QVERIFY2(watched.output.contains("--play --seed 5 --steps 600 " + planted.join(' ')),
                 qPrintable(watched.output));

        const QString fileName = folder.filePath("seed-5.steps");
        QVERIFY2(watched.output.contains("--play --file " + fileName + ' ' + planted.join(' ')),
                 qPrintable(watched.output));
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const std::optional<Steps> steps = stepsFromText(QString::fromUtf8(file.readAll()));
        QVERIFY(steps);
        QVERIFY2(!steps->isEmpty() && steps->size() <= 12, qPrintable(toText(*steps)));

        const auto outcome = [&](const Steps& played) {
            return run(QStringList{"--file", saved(played), "--shrink-seconds", "0"} + planted).output;
        };
        QVERIFY(outcome(*steps).contains("fails at step " + QString::number(steps->size()) + ": " + fault + '\n'));
        for (qsizetype i = 0; i < steps->size(); ++i) {
            Steps fewer = *steps;
            fewer.removeAt(i);
            const QString output = outcome(fewer);
            QVERIFY2(output.contains(", 0 sequences failed"), qPrintable(QString::number(i) + '\n' + output));
        }
    }

    void aFileOfStepsThatIsNoneIsRefused()
    {
        QFile file(folder.filePath("none.steps"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("press here\n");
        file.close();
        const Run refused = run({"--file", file.fileName(), "--shrink-seconds", "0"});
        QCOMPARE(refused.code, 2);
        QVERIFY2(refused.output.contains("none.steps holds something that is no step"), qPrintable(refused.output));
    }

#ifdef KYTSTUDIO_SANITIZED
    void lostMemoryIsFound()
    {
        const Run watched = run({"--seed", "4", "--steps", "600", "--shrink-seconds", "0", "--lose-memory"});
        QCOMPARE(watched.code, 1);
        QVERIFY2(watched.output.contains(": memory was lost\n"), qPrintable(watched.output));
    }
#endif

private:
    struct Run {
        QProcess::ExitStatus status;
        int code;
        QString output;
    };
    static Run run(const QStringList& arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(MONKEY_PROGRAM, arguments);
        process.waitForFinished(-1);
        return {process.exitStatus(), process.exitCode(), QString::fromLocal8Bit(process.readAll())};
    }

    QString saved(const Steps& steps) const
    {
        QFile file(folder.filePath("some.steps"));
        if (!file.open(QIODevice::WriteOnly) || file.write(toText(steps).toUtf8()) < 0)
            qFatal("no temporary file");
        return file.fileName();
    }

    QTemporaryDir folder;
};

QTEST_GUILESS_MAIN(test_Monkey)
#include "test_Monkey.moc"
