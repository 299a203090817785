#include "tests/monkey/NeighbourCopies.h"

#include "doc/SafetyCopies.h"
#include "tests/support/Drawing.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <optional>

/// That whatever an editor does to the copies of another one is noticed.
class test_NeighbourCopies : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(state.isValid());
        qputenv("XDG_STATE_HOME", QFile::encodeName(state.path()));
    }

    void init()
    {
        written.emplace();
        QVERIFY(written->write());
    }

    void anEditorThatLeavesThemAloneHasNoFault()
    {
        const NeighbourCopies known;
        QVERIFY(!known.isEmpty());
        const Drawing drawing;
        drawing.atom(50, 50);
        SafetyCopies own;
        for (int i = 0; i < 30; ++i) {
            drawing.atom(10 * i, 90);
            QCOMPARE(own.keep(*drawing.canvas()), QString());
        }
        QCOMPARE(own.available().size(), 20);
        QCOMPARE(known.fault(*drawing.canvas()), QString());
    }

    void whatIsDoneToThemIsAFault_data()
    {
        QTest::addColumn<std::function<void(QFile&)>>("change");
        QTest::addColumn<QString>("name");
        for (const char* name : {"1990-01-01T00-00-00.000+0000.kyt", "2090-01-01T00-00-11.000+0000.kyt"}) {
            QTest::addRow("deleted %.4s", name) << std::function([](QFile& file) { QVERIFY(file.remove()); }) << name;
            QTest::addRow("written %.4s", name) << std::function([](QFile& file) { file.resize(0); }) << name;
        }
    }

    void whatIsDoneToThemIsAFault()
    {
        QFETCH(std::function<void(QFile&)>, change);
        QFETCH(QString, name);
        const Drawing drawing;
        QFile file(safetyCopyFolder() + u'/' + name);
        change(file);
        QCOMPARE(written->fault(*drawing.canvas()), "a copy of another editor was changed or deleted: " + name);
    }

    void anOpenedOneIsAFault()
    {
        const Drawing drawing;
        drawing.atom(50, 50)->setSymbol("Neighbour");
        QCOMPARE(written->fault(*drawing.canvas()), QString("a copy of another editor was opened"));
    }

private:
    QTemporaryDir state;
    std::optional<NeighbourCopies> written;
};

QTEST_MAIN(test_NeighbourCopies)
#include "test_NeighbourCopies.moc"
