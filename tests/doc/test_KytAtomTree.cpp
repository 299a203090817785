#include "tests/doc/WorkspaceDrawing.h"

#include <QRandomGenerator>
#include <QTest>

#include <cstdio>

namespace {

QString asNumber(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

QString tree(KytAtom* start, KytVisitedPairs* visited)
{
    QString text;
    QTextStream stream(&text);
    start->writeMoleculeToFile(&stream, visited);
    stream.flush();
    return text;
}

QString tree(KytAtom* start)
{
    KytVisitedPairs visited;
    return tree(start, &visited);
}

// The rule of the writer, told as a recursion.
void writeByRecursion(KytAtom* atom, QString& text, KytVisitedPairs& visited)
{
    const auto isNew = [&](KytAtom* other) {
        return !visited.contains(std::pair(atom, other)) && !visited.contains(std::pair(other, atom));
    };
    text += "ATOM " + asNumber(atom->x()) + " " + asNumber(atom->y()) + "\n";
    for (KytBond* bond : atom->inList) {
        if (!isNew(bond->fromAtom))
            continue;
        text += QString("BOND_IN %1\n").arg(bond->bondCount);
        visited.append(std::pair(atom, bond->fromAtom));
        writeByRecursion(bond->fromAtom, text, visited);
    }
    for (KytBond* bond : atom->outList) {
        if (!isNew(bond->toAtom))
            continue;
        text += QString("BOND_OUT %1\n").arg(bond->bondCount);
        visited.append(std::pair(atom, bond->toAtom));
        writeByRecursion(bond->toAtom, text, visited);
    }
    text += "END\n";
}

// The rule of the reader, told as a recursion. Atoms are numbered as they are made; a bond is (other atom, lines).
struct ReadByRecursion {
    struct Atom {
        int x = 0;
        int y = 0;
        QStringList in;
        QStringList out;
    };

    explicit ReadByRecursion(const QString& source)
        : text(source)
        , atoms(1)
    {
        readAtom(0);
    }

    void skipBlanks()
    {
        while (place < text.size() && text[place].isSpace())
            ++place;
    }

    QString word()
    {
        skipBlanks();
        const qsizetype start = place;
        while (place < text.size() && !text[place].isSpace())
            ++place;
        return text.mid(start, place - start);
    }

    int number()
    {
        skipBlanks();
        const qsizetype start = place;
        if (place < text.size() && text[place] == '-')
            ++place;
        while (place < text.size() && text[place].isDigit())
            ++place;
        return text.mid(start, place - start).toInt();
    }

    void readAtom(qsizetype atom)
    {
        word();
        atoms[atom].x = number();
        atoms[atom].y = number();
        for (;;) {
            const QString keyword = word();
            if (keyword != "BOND_IN" && keyword != "BOND_OUT")
                return;
            const int count = number();
            const int lines = count >= 1 && count <= 3 ? count : 0;
            const qsizetype other = atoms.size();
            atoms.append(Atom());
            readAtom(other);
            const qsizetype from = keyword == "BOND_IN" ? other : atom;
            const qsizetype to = keyword == "BOND_IN" ? atom : other;
            atoms[from].out.append(QString("%1x%2").arg(to).arg(lines));
            atoms[to].in.append(QString("%1x%2").arg(from).arg(lines));
        }
    }

    QString summary() const
    {
        QString all;
        for (const Atom& atom : atoms)
            all +=
                QString("(%1, %2) in %3 out %4\n").arg(atom.x).arg(atom.y).arg(atom.in.join(','), atom.out.join(','));
        return all;
    }

    QString text;
    qsizetype place = 0;
    QList<Atom> atoms;
};

QString summary(const WorkspaceDrawing& drawing)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    QHash<KytAtom*, qsizetype> ranks;
    for (KytAtom* atom : atoms)
        ranks.insert(atom, ranks.size());
    QString all;
    for (const KytAtom* atom : atoms) {
        QStringList in, out;
        for (const KytBond* bond : atom->inList)
            in.append(QString("%1x%2").arg(ranks.value(bond->fromAtom)).arg(bond->bondCount));
        for (const KytBond* bond : atom->outList)
            out.append(QString("%1x%2").arg(ranks.value(bond->toAtom)).arg(bond->bondCount));
        all += QString("(%1, %2) in %3 out %4\n").arg(atom->x()).arg(atom->y()).arg(in.join(','), out.join(','));
    }
    return all;
}

// Reads a tree into a fresh start atom of the drawing, which is the first one on its canvas.
struct TreeReading {
    explicit TreeReading(const QString& source)
        : text(source)
        , stream(&text)
        , start(new KytAtom(drawing.canvas(), 0, false))
        , molecule(new KytMolecule)
    {
        start->readMoleculeFromFile(&stream, molecule, drawing.doc);
    }

    WorkspaceDrawing drawing;
    QString text;
    QTextStream stream;
    KytAtom* start;
    KytMolecule* molecule;
};

// The atoms of a ring, joined one to the next and the last to the first.
QList<KytAtom*> ring(WorkspaceDrawing& drawing, int size)
{
    QList<KytAtom*> atoms;
    for (int i = 0; i < size; ++i)
        atoms.append(drawing.atom(10 * i, 5));
    for (int i = 0; i < size; ++i)
        drawing.looseBond(atoms[i], atoms[(i + 1) % size], {KYTBT_SingleBond});
    return atoms;
}

void compareWithRecursion(KytAtom* start)
{
    KytVisitedPairs expectedPairs;
    QString expected;
    writeByRecursion(start, expected, expectedPairs);
    KytVisitedPairs pairs;
    QCOMPARE(tree(start, &pairs), expected);
    QCOMPARE(pairs, expectedPairs);
    QCOMPARE(summary(TreeReading(expected).drawing), ReadByRecursion(expected).summary());
}

// A random graph with bonds of 0 to 3 lines, several of them between the same atoms now and then.
QList<KytAtom*> randomGraph(WorkspaceDrawing& drawing, QRandomGenerator& random)
{
    const int size = random.bounded(1, 8);
    QList<KytAtom*> atoms;
    for (int i = 0; i < size; ++i)
        atoms.append(drawing.atom(random.bounded(-20, 400), random.bounded(400)));
    for (int i = size > 1 ? random.bounded(2 * size) : 0; i > 0; --i) {
        const int from = random.bounded(size);
        const int to = (from + random.bounded(1, size)) % size;
        KytBond* bond = drawing.looseBond(atoms[from], atoms[to], {});
        for (int lines = random.bounded(4); lines > 0; --lines)
            bond->addBond(KYTBT_SingleBond, 60.0);
    }
    return atoms;
}

QString chainText(int size, const QString& keyword, bool ended)
{
    QString text;
    for (int i = 0; i < size; ++i) {
        if (i > 0)
            text += keyword + " 1\n";
        text += QString("ATOM %1 7\n").arg(i % 2000);
    }
    if (ended)
        text += QString("END\n").repeated(size);
    return text;
}

} // namespace

class test_KytAtomTree : public QObject {
    Q_OBJECT

private slots:
    // Writing

    void loneAtomIsAnAtomRecordAndAnEnd()
    {
        WorkspaceDrawing drawing;
        QCOMPARE(tree(drawing.atom(50, 60)), "ATOM 50 60\nEND\n");
    }

    void singleBondWrittenFromItsStartIsOutgoing()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(1, 2);
        drawing.bond(a, drawing.atom(3, 4));
        QCOMPARE(tree(a), "ATOM 1 2\nBOND_OUT 1\nATOM 3 4\nEND\nEND\n");
    }

    void singleBondWrittenFromItsEndIsIncoming()
    {
        WorkspaceDrawing drawing;
        KytAtom* b = drawing.atom(3, 4);
        drawing.bond(drawing.atom(1, 2), b);
        QCOMPARE(tree(b), "ATOM 3 4\nBOND_IN 1\nATOM 1 2\nEND\nEND\n");
    }

    void incomingBondsComeBeforeOutgoingOnes()
    {
        WorkspaceDrawing drawing;
        KytAtom* middle = drawing.atom(0, 0);
        drawing.bond(middle, drawing.atom(1, 0));
        drawing.bond(middle, drawing.atom(2, 0), {1, 1});
        drawing.bond(drawing.atom(3, 0), middle, {1, 1, 1});
        drawing.bond(drawing.atom(4, 0), middle);
        QCOMPARE(tree(middle),
                 "ATOM 0 0\n"
                 "BOND_IN 3\nATOM 3 0\nEND\n"
                 "BOND_IN 1\nATOM 4 0\nEND\n"
                 "BOND_OUT 1\nATOM 1 0\nEND\n"
                 "BOND_OUT 2\nATOM 2 0\nEND\n"
                 "END\n");
    }

    void lineCountIsWrittenWhateverItIs_data()
    {
        QTest::addColumn<int>("lines");
        for (int lines = 0; lines <= 3; ++lines)
            QTest::addRow("%d lines", lines) << lines;
    }

    void lineCountIsWrittenWhateverItIs()
    {
        QFETCH(int, lines);
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytBond* bond = drawing.bond(a, drawing.atom(9, 9), {});
        for (int i = 0; i < lines; ++i)
            bond->addBond(i % 2 ? KYTBT_DashedLine : KYTBT_SingleBond, 60.0);
        QCOMPARE(tree(a), QString("ATOM 0 0\nBOND_OUT %1\nATOM 9 9\nEND\nEND\n").arg(lines));
    }

    void wedgeIsWrittenAsOneLine()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        drawing.bond(a, drawing.atom(9, 9), {KYTBT_StereoDown});
        QCOMPARE(tree(a), "ATOM 0 0\nBOND_OUT 1\nATOM 9 9\nEND\nEND\n");
    }

    void coordinatesHaveSixSignificantDigits()
    {
        WorkspaceDrawing drawing;
        QCOMPARE(tree(drawing.atom(130.5, -0.00001)), "ATOM 130.5 -1e-05\nEND\n");
        QCOMPARE(tree(drawing.atom(1234567, 1.0 / 3)), "ATOM 1.23457e+06 0.333333\nEND\n");
    }

    void threeAtomRingHoldsFourAtomRecords()
    {
        WorkspaceDrawing drawing;
        for (KytAtom* start : ring(drawing, 3))
            QCOMPARE(tree(start).count("ATOM"), 4);
    }

    void ringOfAnySizeHoldsOneAtomMore_data()
    {
        QTest::addColumn<int>("size");
        for (int size : {3, 4, 5, 6, 7, 12})
            QTest::addRow("ring of %d", size) << size;
    }

    void ringOfAnySizeHoldsOneAtomMore()
    {
        QFETCH(int, size);
        WorkspaceDrawing drawing;
        for (KytAtom* start : ring(drawing, size)) {
            const QString text = tree(start);
            QCOMPARE(text.count("ATOM"), size + 1);
            QCOMPARE(text.count("BOND_"), size);
            QCOMPARE(text.count("END"), size + 1);
            const QString record = "ATOM " + asNumber(start->x()) + " 5\n";
            QCOMPARE(text.count(record), 2);
            compareWithRecursion(start);
        }
    }

    void secondCopyOfARingAtomTakesItsOtherBonds()
    {
        WorkspaceDrawing drawing;
        const QList<KytAtom*> atoms = ring(drawing, 3);
        drawing.looseBond(atoms[0], drawing.atom(99, 99), {KYTBT_SingleBond});
        // The walk goes backwards through 2 and 1 and comes to 0 again, which there still has its bond to (99, 99).
        QCOMPARE(tree(atoms[0]),
                 "ATOM 0 5\n"
                 "BOND_IN 1\nATOM 20 5\n"
                 "BOND_IN 1\nATOM 10 5\n"
                 "BOND_IN 1\nATOM 0 5\n"
                 "BOND_OUT 1\nATOM 99 99\nEND\n"
                 "END\nEND\nEND\nEND\n");
    }

    void secondBondBetweenTwoAtomsIsLeftOut()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(1, 1);
        drawing.bond(a, b, {1});
        drawing.bond(a, b, {1, 1});
        drawing.bond(b, a, {1, 1, 1});
        QCOMPARE(tree(a), "ATOM 0 0\nBOND_IN 3\nATOM 1 1\nEND\nEND\n");
        QCOMPARE(tree(b), "ATOM 1 1\nBOND_IN 1\nATOM 0 0\nEND\nEND\n");
    }

    void bondFromAnAtomToItselfWritesTheAtomTwice()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(4, 5);
        KytBond* bond = drawing.looseBond(a, a, {1});
        QCOMPARE(tree(a), "ATOM 4 5\nBOND_IN 1\nATOM 4 5\nEND\nEND\n");
        delete bond;
    }

    void visitedPairsAreGatheredInOrder()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(1, 0);
        KytAtom* c = drawing.atom(2, 0);
        drawing.bond(a, b);
        drawing.bond(c, b);
        KytVisitedPairs visited;
        tree(b, &visited);
        QCOMPARE(visited, (KytVisitedPairs{{b, a}, {b, c}}));
    }

    void pairsVisitedBeforeAreNotWrittenAgain()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(1, 0);
        KytAtom* c = drawing.atom(2, 0);
        drawing.bond(a, b);
        drawing.bond(b, c);
        KytVisitedPairs visited = {{b, a}};
        QCOMPARE(tree(a, &visited), "ATOM 0 0\nEND\n");
        QCOMPARE(tree(b, &visited), "ATOM 1 0\nBOND_OUT 1\nATOM 2 0\nEND\nEND\n");
        QCOMPARE(visited, (KytVisitedPairs{{b, a}, {b, c}}));
        QCOMPARE(tree(b, &visited), "ATOM 1 0\nEND\n");
    }

    void writingChangesNothing()
    {
        WorkspaceDrawing drawing;
        const QList<KytAtom*> atoms = ring(drawing, 5);
        const QString before = summary(drawing);
        const QString first = tree(atoms[2]);
        QCOMPARE(tree(atoms[2]), first);
        QCOMPARE(summary(drawing), before);
        for (const KytAtom* atom : atoms)
            QCOMPARE(atom->flag, 0);
    }

    void fusedRingsAreWrittenAsTheRecursionWouldWriteThem_data()
    {
        QTest::addColumn<QString>("edges");
        QTest::newRow("two triangles on one edge") << "01 12 20 13 32";
        QTest::newRow("two squares on one edge") << "01 12 23 30 24 45 53";
        QTest::newRow("the same with mixed directions") << "10 12 32 30 24 54 53";
        QTest::newRow("two six-rings on one edge") << "01 12 23 34 45 50 56 67 78 89 94";
        QTest::newRow("every atom with every other") << "01 02 03 12 13 23";
        QTest::newRow("cube") << "01 12 23 30 45 56 67 74 04 15 26 37";
        QTest::newRow("two rings joined in one atom") << "01 12 20 23 34 42";
        QTest::newRow("ring with a tail on each atom") << "01 12 20 03 41 25 56";
        QTest::newRow("double edges") << "01 01 10 12 21 20";
    }

    void fusedRingsAreWrittenAsTheRecursionWouldWriteThem()
    {
        QFETCH(QString, edges);
        WorkspaceDrawing drawing;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 10; ++i)
            atoms.append(drawing.atom(10 * i, 100 - i));
        for (const QString& edge : edges.split(' '))
            drawing.looseBond(atoms[edge[0].digitValue()], atoms[edge[1].digitValue()], {KYTBT_SingleBond});
        for (KytAtom* start : std::as_const(atoms))
            compareWithRecursion(start);
    }

    void randomGraphsAreWrittenAndReadAsTheRecursionsWould()
    {
        QRandomGenerator random(20240607);
        for (int round = 0; round < 150; ++round) {
            WorkspaceDrawing drawing;
            for (KytAtom* start : randomGraph(drawing, random)) {
                compareWithRecursion(start);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    // Reading

    void readAtomsAreFlatUnlockedCarbonsOfTheGivenMolecule()
    {
        TreeReading reading("ATOM 1 2 BOND_OUT 1 ATOM 3 4 BOND_IN 2 ATOM 5 6 END END END");
        const QList<KytAtom*> atoms = reading.drawing.atoms();
        QCOMPARE(atoms.size(), 3);
        QCOMPARE(reading.molecule->getAtomsCount(), 3);
        QCOMPARE(reading.molecule->atomsCount, 3);
        for (const KytAtom* atom : atoms) {
            QCOMPARE(atom->getSymbol(), "C");
            QCOMPARE(atom->getName(), "C");
            QCOMPARE(atom->getAtomZ(), 0.0f);
            QCOMPARE(atom->_atomColor[0], "255");
            QCOMPARE(atom->_atomColor[1], "0");
            QCOMPARE(atom->_atomColor[2], "0");
            QVERIFY(!atom->locked);
            QCOMPARE(atom->getMolecule(), reading.molecule);
        }
    }

    void readAtomsAreShownButTheStartAtomIsLeftAlone()
    {
        TreeReading reading("ATOM 1 2 BOND_OUT 1 ATOM 3 4 END BOND_IN 1 ATOM 5 6 END END");
        const QList<KytAtom*> atoms = reading.drawing.atoms();
        QCOMPARE(atoms.size(), 3);
        QVERIFY(!atoms[0]->isVisible());
        QVERIFY(atoms[1]->isVisible());
        QVERIFY(atoms[2]->isVisible());
    }

    void startAtomKeepsSymbolDepthAndColour()
    {
        WorkspaceDrawing drawing;
        auto* start = new KytAtom(drawing.canvas(), "Xe", 12.5f, true);
        start->_atomColor[1] = "77";
        QString text = "ATOM 8 9 END";
        QTextStream stream(&text);
        auto* molecule = new KytMolecule;
        start->readMoleculeFromFile(&stream, molecule, drawing.doc);
        QCOMPARE(start->getSymbol(), "Xe");
        QCOMPARE(start->getAtomZ(), 12.5f);
        QCOMPARE(start->_atomColor[1], "77");
        QVERIFY(start->locked);
        QCOMPARE(start->x(), 8.0);
        QCOMPARE(start->y(), 9.0);
        QCOMPARE(start->canvasSymbol->x(), 8.0);
        QCOMPARE(start->canvasSymbol->y(), 9.0);
        QCOMPARE(start->getMolecule(), molecule);
    }

    void outgoingBondRunsFromTheCurrentAtom()
    {
        TreeReading reading("ATOM 1 2 BOND_OUT 2 ATOM 3 4 END END");
        QCOMPARE(reading.start->outList.size(), 1);
        QVERIFY(reading.start->inList.isEmpty());
        const KytBond* bond = reading.start->outList.first();
        QCOMPARE(bond->fromAtom, reading.start);
        QCOMPARE(bond->toAtom->x(), 3.0);
        QCOMPARE(bond->toAtom->inList.size(), 1);
        QCOMPARE(bond->bondCount, 2);
    }

    void incomingBondRunsToTheCurrentAtom()
    {
        TreeReading reading("ATOM 1 2 BOND_IN 3 ATOM 3 4 END END");
        QCOMPARE(reading.start->inList.size(), 1);
        QVERIFY(reading.start->outList.isEmpty());
        const KytBond* bond = reading.start->inList.first();
        QCOMPARE(bond->toAtom, reading.start);
        QCOMPARE(bond->fromAtom->y(), 4.0);
        QCOMPARE(bond->fromAtom->outList.size(), 1);
        QCOMPARE(bond->bondCount, 3);
    }

    void bondsHaveSolidLinesOnly_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("lines");
        for (int count : {1, 2, 3})
            QTest::addRow("count %d", count) << count << count;
        for (int count : {0, -1, 4, 5, 1000000000})
            QTest::addRow("count %d", count) << count << 0;
    }

    void bondsHaveSolidLinesOnly()
    {
        QFETCH(int, count);
        QFETCH(int, lines);
        TreeReading reading(QString("ATOM 0 0 BOND_OUT %1 ATOM 50 0 END END").arg(count));
        QCOMPARE(reading.start->outList.size(), 1);
        const KytBond* bond = reading.start->outList.first();
        QCOMPARE(bond->bondCount, lines);
        QCOMPARE(bond->bond1 != nullptr, lines >= 1);
        QCOMPARE(bond->bond2 != nullptr, lines >= 2);
        QCOMPARE(bond->bond3 != nullptr, lines >= 3);
        QVERIFY(!bond->stereoBond);
        if (lines >= 1)
            QCOMPARE(bond->bond1Type, KYTBT_SingleBond);
        if (lines >= 2)
            QCOMPARE(bond->bond2Type, KYTBT_SingleBond);
        if (lines >= 3)
            QCOMPARE(bond->bond3Type, KYTBT_SingleBond);
    }

    void outgoingBondWithCountZeroHasNoLines()
    {
        TreeReading reading("ATOM 0 0\nBOND_OUT 0\nATOM 9 9\nEND\nEND\n");
        QCOMPARE(reading.drawing.atoms().size(), 2);
        QCOMPARE(reading.start->outList.size(), 1);
        QCOMPARE(reading.start->outList.first()->bondCount, 0);
        for (const QCanvasItem* item : reading.drawing.canvas()->allItems())
            QVERIFY(item->rtti() != QCanvasItem::Rtti_Line);
    }

    void atomKeywordIsNotChecked()
    {
        TreeReading reading("END 1 2 BOND_OUT 1 BOND_IN 3 4 END END");
        QCOMPARE(summary(reading.drawing), "(1, 2) in  out 1x1\n(3, 4) in 0x1 out \n");
    }

    void wordsMayBeSeparatedByAnyWhiteSpace()
    {
        TreeReading reading("\r\n\tATOM\t1\f2\vBOND_OUT\r\n\r\n3 ATOM\n\n3   4\tEND END");
        QCOMPARE(summary(reading.drawing), "(1, 2) in  out 1x3\n(3, 4) in 0x3 out \n");
    }

    void readingStopsAfterTheEndOfTheStartAtom()
    {
        TreeReading reading("ATOM 1 2 END BOND_OUT 1");
        QCOMPARE(reading.drawing.atoms().size(), 1);
        QString next;
        reading.stream >> next;
        QCOMPARE(next, "BOND_OUT");
    }

    void readingAddsToWhatIsThere()
    {
        WorkspaceDrawing drawing;
        KytAtom* old = drawing.atom(500, 500, 3, "N");
        auto* start = new KytAtom(drawing.canvas(), 0, false);
        QString text = "ATOM 1 2 BOND_OUT 1 ATOM 3 4 END END";
        QTextStream stream(&text);
        start->readMoleculeFromFile(&stream, new KytMolecule, drawing.doc);
        QCOMPARE(drawing.atoms().size(), 3);
        QCOMPARE(drawing.atoms().first(), old);
        QCOMPARE(old->x(), 500.0);
        QVERIFY(old->getMolecule() != start->getMolecule());
    }

    void unknownWordEndsOnlyTheLevelThatMetIt()
    {
        TreeReading reading("ATOM 1 2 BOND_OUT 1 ATOM 3 4 STOP BOND_IN 2 ATOM 5 6 END END");
        QCOMPARE(summary(reading.drawing), "(1, 2) in 2x2 out 1x1\n(3, 4) in 0x1 out \n(5, 6) in  out 0x2\n");
    }

    void fractionOfTheSecondCoordinateEndsTheLevel()
    {
        TreeReading reading("ATOM 100 60.5\nBOND_OUT 1\nATOM 3 4\nEND\nEND\n");
        QCOMPARE(summary(reading.drawing), "(100, 60) in  out \n");
        QString next;
        reading.stream >> next;
        QCOMPARE(next, "BOND_OUT");
    }

    void fractionOfTheFirstCoordinateEndsTheLevel()
    {
        TreeReading reading("ATOM 100.5 60\nBOND_OUT 1\nATOM 3 4\nEND\nEND\n");
        QCOMPARE(summary(reading.drawing), "(100, 0) in  out \n");
        QString next;
        reading.stream >> next;
        QCOMPARE(next, "60");
    }

    void fractionInABondCountLeavesTheRestForTheKeyword()
    {
        TreeReading reading("ATOM 1 2 BOND_OUT 2.5 3 4 END END");
        QCOMPARE(summary(reading.drawing), "(1, 2) in  out 1x2\n(3, 4) in 0x2 out \n");
    }

    void numbersAreDecimal_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<double>("y");
        QTest::newRow("plain") << "60" << 60.0;
        QTest::newRow("negative") << "-60" << -60.0;
        QTest::newRow("leading zero is not octal") << "010" << 10.0;
        QTest::newRow("eight after a zero") << "08" << 8.0;
        QTest::newRow("hexadecimal is a zero and a rest") << "0x10" << 0.0;
        QTest::newRow("binary is a zero and a rest") << "0b11" << 0.0;
        QTest::newRow("exponent is left over") << "6e2" << 6.0;
        QTest::newRow("decimal comma is left over") << "6,5" << 6.0;
    }

    void numbersAreDecimal()
    {
        QFETCH(QString, word);
        QFETCH(double, y);
        TreeReading reading("ATOM 7 " + word + " END");
        QCOMPARE(reading.start->x(), 7.0);
        QCOMPARE(reading.start->y(), y);
    }

    void wordInPlaceOfANumberIsZeroAndStaysInTheStream()
    {
        TreeReading reading("ATOM END 5 6");
        QCOMPARE(summary(reading.drawing), "(0, 0) in  out \n");
        QString next;
        reading.stream >> next;
        QCOMPARE(next, "5");
    }

    void emptyStreamIsAnAtomAtTheOrigin()
    {
        TreeReading reading("");
        QCOMPARE(summary(reading.drawing), "(0, 0) in  out \n");
        QCOMPARE(reading.start->getMolecule(), reading.molecule);
    }

    // Any input

    void truncationAtEveryCharacterReadsAsTheRecursionWould()
    {
        const QString whole = "ATOM 10 20\nBOND_IN 2\nATOM 30 40\nBOND_OUT 3\nATOM -5 6\nEND\nEND\n"
                              "BOND_OUT 1\nATOM 70 80\nEND\nEND\n";
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const QString cut = whole.left(length);
            if (cut.endsWith('-'))
                continue; // a sign alone is no number, and what it leaves behind is nobody's word
            QCOMPARE(summary(TreeReading(cut).drawing), ReadByRecursion(cut).summary());
        }
    }

    void wordSoupReadsAsTheRecursionWould()
    {
        const QStringList words = {"ATOM", "ATOM", "BOND_IN",  "BOND_IN",    "BOND_OUT",   "BOND_OUT", "END",
                                   "1",    "2",    "3",        "0",          "-3",         "77",       "4",
                                   "12.5", "x",    "ATOM 1 2", "ATOM 30 40", "BOND_OUT 1", "BOND_IN 2"};
        QRandomGenerator random(77);
        for (int round = 0; round < 600; ++round) {
            QStringList soup;
            for (int i = random.bounded(80); i > 0; --i)
                soup.append(words[random.bounded(int(words.size()))]);
            const QString text = soup.join(random.bounded(2) ? ' ' : '\n');
            QCOMPARE(summary(TreeReading(text).drawing), ReadByRecursion(text).summary());
        }
    }

    void randomCharactersAreHarmless()
    {
        QRandomGenerator random(4711);
        for (int round = 0; round < 300; ++round) {
            QString text = round % 2 ? "ATOM 1 2 BOND_OUT 1 " : "";
            for (int i = random.bounded(300); i > 0; --i)
                text += QChar(random.bounded(1, round % 3 ? 128 : 0xd800));
            TreeReading reading(text);
            QVERIFY(!reading.drawing.atoms().isEmpty());
            QVERIFY(reading.drawing.atoms().size() <= text.size());
        }
    }

    void numbersBeyondTheRangeAreHarmless_data()
    {
        QTest::addColumn<QString>("word");
        QTest::newRow("past the range of int") << "99999999999";
        QTest::newRow("past it below") << "-99999999999";
        QTest::newRow("past the range of 64 bits") << "99999999999999999999999999";
        QTest::newRow("100 000 digits") << QString(100000, '7');
        QTest::newRow("a sign alone") << "-";
        QTest::newRow("two signs") << "--5";
    }

    void numbersBeyondTheRangeAreHarmless()
    {
        QFETCH(QString, word);
        for (const QString& text : {"ATOM " + word + " 5 END", "ATOM 5 " + word + " END",
                                    "ATOM 5 5 BOND_OUT " + word + " ATOM 6 6 END END"}) {
            TreeReading reading(text);
            QCOMPARE(reading.start->getMolecule(), reading.molecule);
            for (const KytAtom* atom : reading.drawing.atoms()) {
                QVERIFY(qIsFinite(atom->x()));
                QVERIFY(qIsFinite(atom->y()));
            }
            for (const KytBond* bond : reading.drawing.bonds())
                QVERIFY(bond->bondCount >= 0 && bond->bondCount <= 3);
        }
    }

    // Size

    void longChainIsWrittenAndReadBack_data()
    {
        QTest::addColumn<QString>("keyword");
        QTest::newRow("along the bonds") << "BOND_OUT";
        QTest::newRow("against the bonds") << "BOND_IN";
    }

    void longChainIsWrittenAndReadBack()
    {
        QFETCH(QString, keyword);
        const QString text = chainText(100000, keyword, true);
        TreeReading reading(text);
        QCOMPARE(reading.drawing.atoms().size(), 100000);
        QCOMPARE(reading.molecule->getAtomsCount(), 100000);
        QCOMPARE(tree(reading.start), text);
    }

    void longChainWithoutItsEndsIsRead_data() { longChainIsWrittenAndReadBack_data(); }

    void longChainWithoutItsEndsIsRead()
    {
        QFETCH(QString, keyword);
        TreeReading reading(chainText(20000, keyword, false));
        QCOMPARE(reading.drawing.atoms().size(), 20000);
        QCOMPARE(reading.drawing.bonds().size(), 19999);
        QCOMPARE(tree(reading.start), chainText(20000, keyword, true));
    }

    void longRingIsWrittenAndReadBack()
    {
        WorkspaceDrawing drawing;
        const QList<KytAtom*> atoms = ring(drawing, 20000);
        const QString text = tree(atoms[1234]);
        QCOMPARE(text.count("ATOM"), 20001);
        QCOMPARE(text.count("BOND_IN"), 20000);
        QCOMPARE(TreeReading(text).drawing.atoms().size(), 20001);
    }

    void manyBondsOnOneAtomAreWrittenAndReadBack()
    {
        QString text = "ATOM 5 5\n";
        for (int i = 0; i < 20000; ++i)
            text += QString("BOND_OUT 1\nATOM %1 9\nEND\n").arg(i % 1000);
        text += "END\n";
        TreeReading reading(text);
        QCOMPARE(reading.start->outList.size(), 20000);
        QCOMPARE(tree(reading.start), text);
    }

    void longLadderOfFusedRingsIsWritten()
    {
        WorkspaceDrawing drawing;
        constexpr int rungs = 3000;
        QList<KytAtom*> left, right;
        for (int i = 0; i < rungs; ++i) {
            left.append(drawing.atom(10, i));
            right.append(drawing.atom(20, i));
            drawing.looseBond(left[i], right[i], {1});
            if (i > 0) {
                drawing.looseBond(left[i - 1], left[i], {1});
                drawing.looseBond(right[i], right[i - 1], {1});
            }
        }
        const QString text = tree(left.first());
        QCOMPARE(text.count("BOND_"), 3 * rungs - 2);
        QCOMPARE(text.count("ATOM"), 3 * rungs - 1);
        QCOMPARE(TreeReading(text).drawing.atoms().size(), 3 * rungs - 1);
    }
};

QTEST_MAIN(test_KytAtomTree)
#include "test_KytAtomTree.moc"
