#include "bonds/BondUpdate.h"
#include "tests/support/Files.h"
#include "tests/support/Near.h"
#include "tests/support/RoundTrip.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

/// Draws at random, and edits what it has drawn. The same seed always gives the same drawing.
class RandomDrawing : public Drawing {
public:
    explicit RandomDrawing(quint32 seed)
        : random(seed)
    {
        // Half of the drawings lie on whole pixels around the canvas, as a hand draws them.
        plain = below(2) == 0;
        for (int i = below(14); i > 0; --i)
            addAtom();
        for (int i = below(18); i > 0; --i)
            addBond();
        for (int i = below(12); i > 0; --i)
            edit();
    }

private:
    int below(int bound) { return random.bounded(bound); }

    template <typename Value> Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(static_cast<int>(values.size()))];
    }

    double coordinate()
    {
        if (plain)
            return below(2400) - 200;
        const double within = random.generateDouble() * 2 - 1;
        return within * oneOf({1e-40, 1e-6, 1.0, 150.0, 2000.0, 2000.0, 2000.0, 1e5, 1e7, 1e12, 3e38});
    }

    QString symbol()
    {
        const QString elements[] = {"C", "H", "O", "N", "CH3", "Fe", QString::fromUtf8("\xce\xb2\xe2\x82\x83")};
        const QString oddities[] = {
            "",        " ", "C H",         "  two  blanks\t", "END_MOLECULE", "BOND", "12.5", "END_KYTFILE",
            "\u00a0O", "_", QChar(0xd800), QString(300, 'x')};
        return below(8) != 0 ? elements[below(std::size(elements))] : oddities[below(std::size(oddities))];
    }

    QString color()
    {
        return below(6) != 0 ? QString::number(below(256))
                             : oneOf<QString>({"", " ", "999", "red", " 12", "-1", "7 8"});
    }

    KytAtom* anyAtom()
    {
        const QList<KytAtom*> all = atoms();
        return all.isEmpty() ? nullptr : all[below(static_cast<int>(all.size()))];
    }

    KytBond* anyBond()
    {
        QList<KytBond*> all;
        const QList<KytAtom*> drawn = atoms();
        for (const KytAtom* atom : drawn)
            all += atom->outList;
        return all.isEmpty() ? nullptr : all[below(static_cast<int>(all.size()))];
    }

    void addAtom()
    {
        KytAtom* made = atom(coordinate(), coordinate(), static_cast<float>(coordinate()), below(3) == 0);
        made->setSymbol(symbol());
        made->setName(symbol());
        for (QString& component : made->_atomColor)
            component = color();
    }

    void addBond()
    {
        KytAtom* from = anyAtom();
        KytAtom* to = anyAtom();
        if (!from || from == to)
            return;
        KytBond* known = from->isConnected(to);
        addKinds(known ? known : bond(from, to, {}));
    }

    void addKinds(KytBond* bond)
    {
        const auto angle = static_cast<float>(random.generateDouble() * 89.9);
        const auto add = [&](int kind) { bond->addBond(static_cast<KytBondType>(kind), angle); };
        switch (below(8)) {
        case 0:
        case 1:
        case 2:
            add(oneOf({KYTBT_StereoUp, KYTBT_StereoDown}));
            break;
        case 3:
            for (int i = below(4); i > 0; --i)
                add(oneOf({0, 1, 4, 5, 6, 7, -9, 99}));
            break;
        default:
            for (int i = 1 + below(3); i > 0; --i)
                add(oneOf({KYTBT_SingleBond, KYTBT_DashedLine}));
        }
    }

    void edit()
    {
        KytAtom* atom = anyAtom();
        if (!atom)
            return;
        switch (below(10)) {
        case 0:
            atom->moveBy(coordinate(), coordinate());
            break;
        case 1:
            moveMolecule(atom->getMolecule());
            break;
        case 2:
            atom->rotateAbout(coordinate(), coordinate(), static_cast<float>(random.generateDouble() * 7));
            break;
        case 3:
            atom->setAtomZ(static_cast<float>(coordinate()));
            break;
        case 4:
            atom->setSymbol(symbol());
            break;
        case 5:
            merge(atom, anyAtom());
            break;
        case 6:
            delete atom;
            break;
        case 7:
            deleteLine(anyBond());
            break;
        case 8:
            if (KytBond* bond = anyBond(); bond && bond->stereoBond)
                bond->stereoBond->setAngle(static_cast<float>(below(120) - 10));
            break;
        default:
            addBond();
        }
    }

    void moveMolecule(const KytMolecule* molecule)
    {
        const double dx = below(400) - 200;
        const double dy = below(400) - 200;
        BondUpdate update(oneOf({qint64{0}, qint64{1000}}));
        const QList<KytAtom*> drawn = atoms();
        for (KytAtom* atom : drawn)
            if (atom->getMolecule() == molecule)
                atom->moveBy(dx, dy, update);
    }

    static void merge(KytAtom* stays, KytAtom* dropped)
    {
        if (stays != dropped && stays->combine(dropped))
            delete dropped;
    }

    void deleteLine(KytBond* bond)
    {
        if (!bond)
            return;
        KytBondLine* lines[] = {bond->bond1, bond->bond2, bond->bond3};
        KytBondLine* line = lines[below(3)];
        if (bond->stereoBond)
            bond->stereoBond->deleteBond();
        else if (line)
            delete line;
        else
            delete bond;
    }

    QRandomGenerator random;
    bool plain;
};

QStringList sampleFiles()
{
    QStringList names;
    for (const auto& [folder, pattern] : {std::pair("data", "*.kyt"), {"lib", "*.kyf"}}) {
        const QDir directory(folder);
        const QStringList found = directory.entryList({pattern}, QDir::Files, QDir::Name);
        for (const QString& name : found)
            names.append(directory.filePath(name));
    }
    return names;
}

/// A molecule of each kind of record that a file can lose.
const QByteArray smallWorkspace = "KYTFILE\n"
                                  " MOLECULE 4 3\n"
                                  "  ATOM C 100 100 0 255 0 0\n"
                                  "  ATOM O 130.5 100 17.3205 1 2 3\n"
                                  "  ATOM N 160 140 0 0 0 255\n"
                                  "  ATOM H 190 140 0 9 9 9\n"
                                  "  BOND 0 1 1 2\n"
                                  "  BOND 0 2 2 1 0\n"
                                  "  BOND 3 2 3 1 1 1\n"
                                  " END_MOLECULE\n"
                                  " MOLECULE 1 0\n"
                                  "  ATOM S 10 20 30 40 50 60\n"
                                  " END_MOLECULE\n"
                                  "END_KYTFILE\n";

using Change = std::function<void(Drawing&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class test_RoundTrip : public QObject {
    Q_OBJECT

private slots:
    void randomDrawingComesBack_data()
    {
        QTest::addColumn<quint32>("firstSeed");
        for (quint32 seed = 0; seed < 4000; seed += 500)
            QTest::addRow("seeds from %u", seed) << seed;
    }

    void randomDrawingComesBack()
    {
        QFETCH(quint32, firstSeed);
        for (quint32 seed = firstSeed; seed < firstSeed + 500; ++seed) {
            const RandomDrawing drawing(seed);
            for (const QString& fault :
                 {drawingFault(*drawing.canvas()), moleculeFault(*drawing.canvas()), roundTripFault(drawing.canvas())})
                QVERIFY2(fault.isEmpty(), qPrintable(QString("seed %1: %2").arg(seed).arg(fault)));
        }
    }

    void samplesComeBackAloneAndTogether()
    {
        const QStringList names = sampleFiles();
        QVERIFY(names.size() >= 8);
        Drawing together;
        for (const QString& name : names) {
            const QByteArray bytes = readFile(name);
            Drawing alone;
            QVERIFY2(addWorkspace(bytes, alone), qPrintable(name));
            QCOMPARE(roundTripFault(alone.canvas()), QString());
            QCOMPARE(writtenWorkspace(alone.canvas()), bytes);
            QVERIFY(addWorkspace(bytes, together, true));
        }
        QCOMPARE(roundTripFault(together.canvas()), QString());
        const QList<KytAtom*> atoms = together.atoms();
        for (qsizetype i = 0; i + 5 < atoms.size(); i += 5)
            if (atoms[i]->combine(atoms[i + 2]))
                delete atoms[i + 2];
        QVERIFY(together.atoms().size() < atoms.size());
        QCOMPARE(drawingFault(*together.canvas()), QString());
        QCOMPARE(roundTripFault(together.canvas()), QString());
    }

    void wedgeDrawnByHandKeepsItsAngle()
    {
        QRandomGenerator random(17);
        for (int round = 0; round < 300; ++round) {
            const auto angle = static_cast<float>(1 + random.bounded(88) + random.generateDouble());
            const KytBondType kind = round % 2 == 0 ? KYTBT_StereoUp : KYTBT_StereoDown;
            Drawing drawing;
            KytAtom* from = drawing.atom(random.bounded(2000), random.bounded(2000));
            KytAtom* to = drawing.atom(from->x() + 20 + random.bounded(100), random.bounded(2000));
            drawing.bond(from, to, {kind}, angle)->setBond();
            QVERIFY(to->getAtomZ() > 0);
            Drawing read;
            QVERIFY(addWorkspace(writtenWorkspace(drawing.canvas()), read));
            const KytStereoBond* wedge = read.atoms().first()->outList.first()->stereoBond;
            NEAR(wedge->getAngle(), angle, 1e-3);
            QCOMPARE(wedge->bondType, kind);
        }
    }

    // The check itself

    void soundDrawingHasNoFault()
    {
        Drawing before;
        Drawing after;
        QVERIFY(addWorkspace(smallWorkspace, before));
        QVERIFY(addWorkspace(writtenWorkspace(before.canvas()), after));
        QCOMPARE(comeBackFault(*before.canvas(), *after.canvas()), QString());
    }

    void differenceIsNoticed_data()
    {
        QTest::addColumn<Change>("change");
        const auto add = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
        const auto atom = [](const Drawing& drawing, int place) { return drawing.atoms()[place]; };
        const auto bond = [atom](const Drawing& drawing, int place) { return atom(drawing, place)->outList.first(); };
        add("x", [=](Drawing& after) { atom(after, 0)->moveBy(0.001, 0); });
        add("y", [=](Drawing& after) { atom(after, 1)->moveBy(0, -0.001); });
        add("depth", [=](Drawing& after) { atom(after, 4)->setAtomZ(30.001F); });
        add("symbol", [=](Drawing& after) { atom(after, 2)->setSymbol("n"); });
        add("red", [=](Drawing& after) { atom(after, 1)->_atomColor[0] = "2"; });
        add("blue", [=](Drawing& after) { atom(after, 4)->_atomColor[2] = "060"; });
        add("an atom less", [=](Drawing& after) { delete atom(after, 4); });
        add("an atom more", [](Drawing& after) { after.atom(1, 1); });
        add("an atom less in a molecule", [=](Drawing& after) { delete atom(after, 1); });
        add("molecules joined", [=](Drawing& after) { atom(after, 4)->setMolecule(atom(after, 0)->getMolecule()); });
        add("molecule split", [=](Drawing& after) { delete bond(after, 3); });
        add("a bond less", [=](Drawing& after) {
            delete bond(after, 0);
            atom(after, 1)->setMolecule(atom(after, 0)->getMolecule());
        });
        add("a bond more", [=](Drawing& after) { after.bond(atom(after, 1), atom(after, 2)); });
        add("direction", [=](Drawing& after) {
            delete bond(after, 3);
            after.bond(atom(after, 2), atom(after, 3), {1, 1, 1});
        });
        add("a line less", [=](Drawing& after) { delete bond(after, 3)->bond3; });
        add("a line more", [=](Drawing& after) { after.looseBond(atom(after, 0), atom(after, 2), {1, 0, 1}); });
        add("kind", [=](Drawing& after) { bond(after, 3)->bond2Type = KYTBT_DashedLine; });
        add("dashes", [=](Drawing& after) { bond(after, 3)->bond2->isDashed = true; });
        add("wedge the other way", [=](Drawing& after) { bond(after, 0)->stereoBond->bondType = KYTBT_StereoDown; });
        add("angle", [=](Drawing& after) { bond(after, 0)->stereoBond->pangle += 0.01F; });
        add("an item of nobody", [](Drawing& after) { new QCanvasLine(after.canvas()); });
    }

    void differenceIsNoticed()
    {
        QFETCH(Change, change);
        Drawing before;
        Drawing after;
        QVERIFY(addWorkspace(smallWorkspace, before));
        QVERIFY(addWorkspace(smallWorkspace, after));
        change(after);
        QVERIFY(!comeBackFault(*before.canvas(), *after.canvas()).isEmpty());
    }

    void numbersAreComparedInSixDigits_data()
    {
        QTest::addColumn<double>("before");
        QTest::addColumn<double>("after");
        QTest::addColumn<bool>("same");
        QTest::newRow("equal") << 130.5 << 130.5 << true;
        QTest::newRow("six digits of more") << 666.666666 << 666.667 << true;
        QTest::newRow("a step too far") << 666.666666 << 666.6677 << false;
        QTest::newRow("half a step of the first digits") << 1.000005 << 1.0 << true;
        QTest::newRow("a step of the first digits") << 1.00001 << 1.0 << false;
        QTest::newRow("sign") << 12.0 << -12.0 << false;
        QTest::newRow("zero for something") << 1e-30 << 0.0 << false;
        QTest::newRow("too small for float") << 1e-60 << 0.0 << true;
        QTest::newRow("largest float") << 3.40282347e38 << 3.40282e38 << true;
        QTest::newRow("largest float for nothing") << 3.40282347e38 << 0.0 << false;
        QTest::newRow("beyond float") << -3.5e38 << 0.0 << true;
        QTest::newRow("not a number") << 1.0 << std::nan("") << false;
    }

    void numbersAreComparedInSixDigits()
    {
        QFETCH(double, before);
        QFETCH(double, after);
        QTEST(isSameNumber(before, after), "same");
    }

    void bondOutOfItsMoleculeIsNoticed()
    {
        Drawing drawing;
        drawing.looseBond(drawing.atom(0, 0), drawing.atom(30, 0));
        QVERIFY(!roundTripFault(drawing.canvas()).isEmpty());
    }
};

QTEST_MAIN(test_RoundTrip)
#include "test_RoundTrip.moc"
