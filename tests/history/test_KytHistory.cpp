#include "history/KytHistory.h"
#include "model/MoleculeMotion.h"
#include "tests/support/Drawing.h"
#include "tests/support/Snapshot.h"

#include <QTest>

class test_KytHistory : public QObject {
    Q_OBJECT

private slots:
    void stepsAreTakenBackInTheirOrder()
    {
        Drawing d;
        KytHistory history(d.doc);
        std::vector<QStringList> states{snapshotOf(*d.canvas())};
        for (int i = 0; i < 5; ++i) {
            d.atom(100 * i, 50);
            QVERIFY(history.record(QString::number(i)));
            states.push_back(snapshotOf(*d.canvas()));
        }
        for (int i = 4; i >= 0; --i) {
            QCOMPARE(history.undo(), QString::number(i));
            QCOMPARE(snapshotOf(*d.canvas()), states[i]);
        }
        QVERIFY(!history.undo());
        QCOMPARE(history.redoCount(), 5);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(history.redo(), QString::number(i));
            QCOMPARE(snapshotOf(*d.canvas()), states[i + 1]);
        }
        QVERIFY(!history.redo());
    }

    void whatChangesNothingIsNoStep()
    {
        Drawing d;
        KytAtom* atom = d.atom(1, 2);
        KytHistory history(d.doc);
        QVERIFY(!history.record("nothing"));
        atom->moveBy(5, 5);
        atom->moveBy(-5, -5);
        QVERIFY(!history.record("there and back"));
        QCOMPARE(history.undoCount(), 0);
    }

    void aNewStepForgetsWhatWasUndone()
    {
        Drawing d;
        KytHistory history(d.doc);
        d.atom(1, 2);
        history.record("one");
        history.undo();
        d.atom(3, 4);
        QVERIFY(history.record("other"));
        QVERIFY(!history.redo());
        QCOMPARE(history.undo(), QString("other"));
        QCOMPARE(d.atoms().size(), 0);
    }

    void aNewAtomStandsBehindWhatIsRestored()
    {
        Drawing d;
        KytHistory history(d.doc);
        KytAtom* first = d.atom(1, 2);
        d.atom(3, 4);
        history.record("two atoms");
        delete first;
        history.record("deleted");
        KytAtom* third = d.atom(5, 6);
        history.record("third");
        history.undo();
        history.undo();
        const QList<KytAtom*> atoms = atomsOf(*d.canvas());
        QCOMPARE(atoms.size(), 2);
        QCOMPARE(atoms[0]->x(), 1.0);
        Q_UNUSED(third)
        KytAtom* fourth = d.atom(7, 8);
        QCOMPARE(atomsOf(*d.canvas()).last(), fourth);
    }

    void aTitleGoesWithItsStep()
    {
        Drawing d;
        KytHistory history(d.doc);
        KytHistory::Title title{"a.kyt", "a"};
        history.title = [&] { return title; };
        history.setTitle = [&](const KytHistory::Title& other) { title = other; };
        const KytHistory::Title before = std::exchange(title, {"b.kyt", "b"});
        d.atom(1, 2);
        QVERIFY(history.record("Open", before));
        d.atom(3, 4);
        QVERIFY(history.record("Draw"));
        history.undo();
        QCOMPARE(title.docName, QString("b.kyt"));
        history.undo();
        QCOMPARE(title, before);
        title.docName = "saved.kyt"; // a save has asked for a name
        history.redo();
        QCOMPARE(title.docName, QString("b.kyt"));
        history.undo();
        QCOMPARE(title.docName, QString("saved.kyt"));
    }

    void aTitleAloneIsAStep()
    {
        Drawing d;
        KytHistory history(d.doc);
        KytHistory::Title title{"a.kyt", "a"};
        history.title = [&] { return title; };
        history.setTitle = [&](const KytHistory::Title& other) { title = other; };
        const KytHistory::Title before = std::exchange(title, {"", "a"});
        QVERIFY(history.record("Open", before));
        QVERIFY(!history.record("Open", title));
        QCOMPARE(history.undo(), QString("Open"));
        QCOMPARE(title, before);
    }

    void oldStepsAreForgottenButNeverTheLast()
    {
        Drawing d;
        for (int i = 0; i < 30000; ++i)
            d.atom(i % 2000, i / 15);
        KytHistory history(d.doc);
        for (int i = 0; i < 60; ++i) {
            for (KytAtom* atom : atomsOf(*d.canvas()))
                atom->moveBy(i % 2 ? 1 : -1, 0);
            QVERIFY(history.record(QString::number(i)));
            QVERIFY(history.size() <= KytHistory::mostMemory || history.undoCount() == 1);
        }
        QVERIFY(history.undoCount() >= 1 && history.undoCount() < 60);
        QCOMPARE(history.undo(), QString("59"));
    }

    void twoHundredStepsOfAThousandAtomsAreKept()
    {
        Drawing d;
        QList<KytAtom*> atoms{d.atom(0, 0)};
        for (int i = 1; i < 1000; ++i) {
            atoms.append(d.atom(i % 40 * 30, i / 40 * 30));
            d.bond(atoms[i - 1], atoms[i], {i % 3 ? 1 : 2});
        }
        KytHistory history(d.doc);
        for (int i = 0; i < 200; ++i) {
            moveMolecule(*d.canvas(), atoms.first()->molecule, 1, i % 3);
            QVERIFY(history.record("Move"));
        }
        QCOMPARE(history.undoCount(), 200);
    }

    void withoutACanvasNothingHappens()
    {
        Drawing d;
        KytHistory history(d.doc);
        d.atom(1, 2);
        history.record("one");
        d.freeCanvas();
        QVERIFY(!history.record("two"));
        QVERIFY(!history.undo());
    }
};

QTEST_MAIN(test_KytHistory)
#include "test_KytHistory.moc"
