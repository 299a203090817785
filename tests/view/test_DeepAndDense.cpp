#include "model/DrawnMolecules.h"
#include "tests/support/Drawing.h"
#include "tests/support/LargeDrawings.h"
#include "tests/support/LargeGestures.h"
#include "tests/support/Near.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>

// Nothing here may use the machine's stack for each atom, or take time with the square of a drawing: a test that does
// is ended by its time limit.

namespace {

using Maker = LargeDrawing (*)(int, bool);

std::vector<QPointF> placesOf(const QList<KytAtom*>& atoms)
{
    std::vector<QPointF> places;
    for (const KytAtom* atom : atoms)
        places.emplace_back(atom->x(), atom->y());
    return places;
}

} // namespace

class test_DeepAndDense : public QObject {
    Q_OBJECT

private slots:
    void aLargeDrawingIsEditedSavedAndCleared_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("wedges");
        QTest::newRow("a chain of 200 000 atoms") << &large::chain << 200000 << false;
        QTest::newRow("a chain of 200 000 atoms, all wedges") << &large::chain << 200000 << true;
        QTest::newRow("a sheet of 100 000 fused rings") << &large::sheet << 201000 << false;
        QTest::newRow("a sheet of 100 000 fused rings with wedges") << &large::sheet << 201000 << true;
        QTest::newRow("a star of 50 000 bonds") << &large::star << 50000 << false;
        QTest::newRow("a star of 50 000 bonds with wedges") << &large::star << 50000 << true;
        QTest::newRow("a ladder of 60 diamonds") << &large::ladder << 60 << false;
        QTest::newRow("a ladder of 60 diamonds with wedges") << &large::ladder << 60 << true;
    }

    void aLargeDrawingIsEditedSavedAndCleared()
    {
        QFETCH(Maker, make);
        QFETCH(int, count);
        QFETCH(bool, wedges);
        const LargeDrawing drawing = make(count, wedges);
        const auto atomCount = int(drawing.atoms.size());
        const QTemporaryDir folder;
        const QString file = folder.filePath("drawing.kyt");
        QVERIFY(writeWorkspace(drawing, file));

        Drawing d;
        KytStudioView view(nullptr, d.doc);
        QVERIFY(d.doc->load(file, false));
        QList<KytAtom*> atoms = drawnAtoms(*d.canvas());
        QCOMPARE(atoms.size(), atomCount);
        QCOMPARE(bondsAmong(atoms), int(drawing.bonds.size()));
        QCOMPARE(drawnMolecules(*d.canvas()).size(), 1);

        atoms.first()->setAtomZ(1234);
        QCOMPARE(atoms.first()->atomZ, 1234.0F);

        const std::vector<QPointF> before = placesOf(atoms);
        moveOneStep(&view, atoms.first(), KYTVS_view);
        for (int i = 0; i < atomCount; ++i)
            QCOMPARE(QPointF(atoms[i]->x(), atoms[i]->y()), before[i] + QPointF(1, 1));
        moveOneStep(&view, atoms.first(), KYTVS_rotate);
        QCOMPARE(QPointF(atoms.first()->x(), atoms.first()->y()), before[0] + QPointF(1, 1));

        QVERIFY(d.doc->saveAs(folder.filePath("saved.kyt")));
        Drawing copy;
        QVERIFY(copy.doc->load(folder.filePath("saved.kyt"), false));
        QCOMPARE(copy.atoms().size(), atomCount);
        QCOMPARE(copy.lines().size() + copy.wedges().size(), int(drawing.bonds.size()));
        copy.freeCanvas();

        KytAtom* middle = atoms.first()->getBondCount() > 9 ? atoms.first() : atoms[atomCount / 2];
        const int bonds = middle->getBondCount();
        auto* target = new KytAtom(d.canvas(), middle->atomZ, false);
        QVERIFY(!target->combine(middle));
        QCOMPARE(target->getBondCount(), bonds);
        QCOMPARE(d.atoms().size(), atomCount);

        delete anyBondOf(target);
        QCOMPARE(target->getBondCount(), bonds - 1);

        delete target;
        QCOMPARE(d.atoms().size(), atomCount - 1);
        tempBond->setCanvas(nullptr);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
        QCOMPARE(drawingFault(*d.canvas()), QString());

        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
        QVERIFY(d.doc->load(file, false));
        d.freeCanvas();
        QCOMPARE(d.doc->canvas, nullptr);
    }

    void theDepthOfALongChainReachesItsEnd()
    {
        const QTemporaryDir folder;
        QVERIFY(writeWorkspace(large::chain(200000, true), folder.filePath("chain.kyt")));
        Drawing d;
        QVERIFY(d.doc->load(folder.filePath("chain.kyt"), false));
        const QList<KytAtom*> atoms = drawnAtoms(*d.canvas());
        const float before = atoms.last()->atomZ;
        atoms.first()->setAtomZ(before);
        QVERIFY(atoms.last()->atomZ > before * 1.9F);
        atoms.first()->setAtomZ(0);
        NEAR(atoms.last()->atomZ / before, 1, 1e-2);
    }

    void aSheetCutInTwoIsTwoMolecules()
    {
        const LargeDrawing drawing = large::sheet(20000);
        const QTemporaryDir folder;
        QVERIFY(writeWorkspace(drawing, folder.filePath("sheet.kyt")));
        Drawing d;
        QVERIFY(d.doc->load(folder.filePath("sheet.kyt"), false));
        const QList<KytAtom*> atoms = drawnAtoms(*d.canvas());
        const double cut = atoms[10000]->y();
        for (KytAtom* atom : atoms)
            if (std::abs(atom->y() - cut) < 8)
                delete atom;
        QCOMPARE(drawnMolecules(*d.canvas()).size(), 2);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }
};

QTEST_MAIN(test_DeepAndDense)
#include "test_DeepAndDense.moc"
