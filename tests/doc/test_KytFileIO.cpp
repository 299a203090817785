#include "tests/doc/WorkspaceDrawing.h"
#include "tests/support/Near.h"

#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"

#include <QDir>
#include <QLocale>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace {

QString asNumber(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

// A workspace around the given molecules.
QString workspace(const QString& molecules)
{
    return "KYTFILE\n" + molecules + "\nEND_KYTFILE\n";
}

// A molecule of `count` carbons, 30 pixels apart on a row, with these records.
QString rowOf(int count, const QString& bondCount, const QString& bonds)
{
    QString text = QString("MOLECULE %1 ").arg(count) + bondCount + "\n";
    for (int i = 0; i < count; ++i)
        text += QString("ATOM C%1 %2 100 0 255 0 0\n").arg(i).arg(100 + 30 * i);
    return text + bonds + "\nEND_MOLECULE\n";
}

// A molecule of one atom, to see that the reader has found its way back to the start of a molecule.
const QString marker = "MOLECULE 1 0 ATOM Marker 7 8 9 1 2 3 END_MOLECULE\n";

QString moleculeBlock(KytFileIO& io, KytMolecule* molecule, QCanvas* canvas)
{
    QString text;
    QTextStream stream(&text);
    io.writeMolecule(stream, molecule, canvas);
    stream.flush();
    return text;
}

// The workspace that a drawing gives after it has been written and read once.
QString rewritten(const QString& text)
{
    WorkspaceDrawing drawing;
    drawing.read(text);
    return drawing.written();
}

// A locale with a decimal comma and a dot between thousands, made on the spot so that none has to be installed.
class CommaLocale {
public:
    CommaLocale()
    {
        const QString name = directory.filePath("comma");
        QDir().mkdir(name);
        QFile file(name + "/LC_NUMERIC");
        if (!file.open(QIODevice::WriteOnly))
            qFatal("the locale cannot be made");
        file.write(numericCategory());
        file.close();
        qputenv("LOCPATH", QFile::encodeName(directory.path()));
        std::setlocale(LC_NUMERIC, "comma");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
    ~CommaLocale()
    {
        std::setlocale(LC_NUMERIC, "C");
        QLocale::setDefault(QLocale::c());
        qunsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool isInForce() const { return std::strcmp(std::localeconv()->decimal_point, ",") == 0; }

private:
    // The compiled form of the category: a magic number, the number of fields, their places, the fields.
    static QByteArray numericCategory()
    {
        const auto number = [](quint32 value) { return QByteArray(reinterpret_cast<const char*>(&value), 4); };
        const QByteArray fields[] = {
            QByteArray(",\0\0\0", 4),    QByteArray(".\0\0\0", 4), QByteArray("\3\3\0\0", 4), number(','), number('.'),
            QByteArray("UTF-8\0\0\0", 8)};
        QByteArray places;
        QByteArray values;
        for (const QByteArray& field : fields) {
            places += number(quint32(4 * 2 + 4 * std::size(fields) + values.size()));
            values += field;
        }
        return number(0x20031115 ^ LC_NUMERIC) + number(quint32(std::size(fields))) + places + values;
    }

    QTemporaryDir directory;
};

} // namespace

class test_KytFileIO : public QObject {
    Q_OBJECT

private slots:
    // Layout

    void emptyCanvasIsTwoWordsOnTwoLines()
    {
        WorkspaceDrawing drawing;
        QCOMPARE(drawing.written(), "KYTFILE\nEND_KYTFILE\n");
        WorkspaceDrawing again;
        QVERIFY(again.read(drawing.written()));
        QVERIFY(again.canvas()->allItems().isEmpty());
    }

    void carbonAndOxygenWithOneBondByteForByte()
    {
        WorkspaceDrawing drawing;
        KytAtom* carbon = drawing.atom(100, 100);
        drawing.bond(carbon, drawing.atom(130, 100, 0, "O"));
        QCOMPARE(drawing.written(),
                 "KYTFILE\n"
                 " MOLECULE 2 1\n"
                 "  ATOM C 100 100 0 255 0 0\n"
                 "  ATOM O 130 100 0 255 0 0\n"
                 "  BOND 0 1 1 1\n"
                 " END_MOLECULE\n"
                 "END_KYTFILE\n");
    }

    void blockOfOneMoleculeByteForByte()
    {
        WorkspaceDrawing drawing;
        drawing.atom(1, 2);
        KytAtom* sulphur = drawing.atom(130.5, -7.25, 12.5f, "S");
        sulphur->_atomColor[0] = "1";
        sulphur->_atomColor[1] = "22";
        sulphur->_atomColor[2] = "133";
        KytFileIO io;
        QCOMPARE(moleculeBlock(io, sulphur->getMolecule(), drawing.canvas()),
                 " MOLECULE 1 0\n"
                 "  ATOM S 130.5 -7.25 12.5 1 22 133\n"
                 " END_MOLECULE\n");
    }

    void fieldsHoldTheCountsOfTheMoleculeWritten()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(1, 1);
        KytAtom* c = drawing.atom(2, 2);
        drawing.bond(a, b);
        drawing.bond(b, c);
        drawing.atom(9, 9);
        KytFileIO io;
        QCOMPARE(io.atomsCount, 0);
        QCOMPARE(io.bondsCount, 0);
        moleculeBlock(io, a->getMolecule(), drawing.canvas());
        QCOMPARE(io.atomsCount, 3);
        QCOMPARE(io.bondsCount, 2);
    }

    void moleculeWithoutAtomsIsAnEmptyBlock()
    {
        WorkspaceDrawing drawing;
        drawing.atom(1, 2);
        KytMolecule empty;
        KytFileIO io;
        QCOMPARE(moleculeBlock(io, &empty, drawing.canvas()), " MOLECULE 0 0\n END_MOLECULE\n");
    }

    void moleculesComeInTheOrderOfTheirFirstAtoms()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(1, 0, 0, "A");
        KytAtom* b = drawing.atom(2, 0, 0, "B");
        KytAtom* a2 = drawing.atom(3, 0, 0, "A2");
        KytAtom* b2 = drawing.atom(4, 0, 0, "B2");
        drawing.bond(b2, b);
        drawing.bond(a2, a);
        QCOMPARE(drawing.written(),
                 "KYTFILE\n"
                 " MOLECULE 2 1\n"
                 "  ATOM A 1 0 0 255 0 0\n"
                 "  ATOM A2 3 0 0 255 0 0\n"
                 "  BOND 1 0 1 1\n"
                 " END_MOLECULE\n"
                 " MOLECULE 2 1\n"
                 "  ATOM B 2 0 0 255 0 0\n"
                 "  ATOM B2 4 0 0 255 0 0\n"
                 "  BOND 1 0 1 1\n"
                 " END_MOLECULE\n"
                 "END_KYTFILE\n");
    }

    void atomsComeInTheOrderOfTheCanvasWhateverTheBonds()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(9, 0, 0, "A");
        KytAtom* b = drawing.atom(1, 0, 0, "B");
        KytAtom* c = drawing.atom(5, 0, 0, "D");
        drawing.bond(c, b);
        drawing.bond(b, a);
        a->setZ(50);
        b->setZ(-1);
        WorkspaceDrawing again;
        QVERIFY(again.read(drawing.written()));
        QCOMPARE(again.symbols(), (QStringList{"A", "B", "D"}));
        QCOMPARE(again.bondTexts(), (QStringList{"1-0:1", "2-1:1"}));
    }

    void hiddenAtomsAreWritten()
    {
        WorkspaceDrawing drawing;
        drawing.atom(1, 2)->hide();
        new KytAtom(drawing.canvas(), "Fe", 3, false);
        QCOMPARE(drawing.written(),
                 "KYTFILE\n"
                 " MOLECULE 1 0\n  ATOM C 1 2 0 255 0 0\n END_MOLECULE\n"
                 " MOLECULE 1 0\n  ATOM Fe 0 0 3 255 0 0\n END_MOLECULE\n"
                 "END_KYTFILE\n");
    }

    void otherItemsOnTheCanvasAreNotWritten()
    {
        WorkspaceDrawing drawing;
        (new QCanvasLine(drawing.canvas()))->show();
        (new QCanvasText("text", drawing.canvas()))->show();
        (new QCanvasPolygon(drawing.canvas()))->show();
        QCOMPARE(drawing.written(), "KYTFILE\nEND_KYTFILE\n");
    }

    void bondIsWrittenOnce()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(30, 0);
        drawing.bond(a, b);
        QCOMPARE(a->outList.size(), 1);
        QCOMPARE(b->inList.size(), 1);
        QCOMPARE(drawing.written().count("BOND"), 1);
    }

    void bondsComeRowByRow()
    {
        WorkspaceDrawing drawing;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 4; ++i)
            atoms.append(drawing.atom(30 * i, 0));
        for (auto [from, to] : {std::pair(3, 0), {1, 3}, {0, 2}, {2, 1}, {1, 0}, {3, 2}, {0, 1}})
            drawing.bond(atoms[from], atoms[to]);
        const QString text = drawing.written();
        QVERIFY(text.contains(" MOLECULE 4 7\n"));
        QVERIFY2(text.contains("  BOND 0 1 1 1\n  BOND 0 2 1 1\n  BOND 1 0 1 1\n  BOND 1 3 1 1\n"
                               "  BOND 2 1 1 1\n  BOND 3 0 1 1\n  BOND 3 2 1 1\n END_MOLECULE\n"),
                 qPrintable(text));
    }

    void bondsBetweenTheSameAtomsFillOneCellAndCountTwice()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(30, 0);
        drawing.bond(a, b, {1, 1, 1});
        drawing.bond(a, b, {0});
        const QString text = drawing.written();
        QVERIFY2(text.contains(" MOLECULE 2 2\n"), qPrintable(text));
        QVERIFY2(text.contains("255 0 0\n  BOND 0 1 1 0\n END_MOLECULE\n"), qPrintable(text));
        QCOMPARE(text.count("BOND"), 1);
    }

    void opposedBondsAreTwo()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(30, 0);
        drawing.bond(b, a, {0});
        drawing.bond(a, b, {1});
        QVERIFY(drawing.written().contains(" MOLECULE 2 2\n"));
        QVERIFY(drawing.written().contains("  BOND 0 1 1 1\n  BOND 1 0 1 0\n END_MOLECULE\n"));
    }

    void bondToAnotherMoleculeGoesToIndexZero()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0, 0, "A");
        KytAtom* b = drawing.atom(30, 0, 0, "B");
        KytAtom* far = drawing.atom(60, 0, 0, "Far");
        drawing.bond(a, b);
        drawing.looseBond(b, far, {0});
        KytFileIO io;
        QCOMPARE(moleculeBlock(io, a->getMolecule(), drawing.canvas()),
                 " MOLECULE 2 1\n"
                 "  ATOM A 0 0 0 255 0 0\n"
                 "  ATOM B 30 0 0 255 0 0\n"
                 "  BOND 0 1 1 1\n"
                 "  BOND 1 0 1 0\n"
                 " END_MOLECULE\n");
    }

    void bondFromAnotherMoleculeComesFromIndexZero()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0, 0, "A");
        KytAtom* far = drawing.atom(60, 0, 0, "Far");
        drawing.looseBond(a, far, {1, 0});
        KytFileIO io;
        QCOMPARE(moleculeBlock(io, far->getMolecule(), drawing.canvas()),
                 " MOLECULE 1 0\n  ATOM Far 60 0 0 255 0 0\n  BOND 0 0 2 1 0\n END_MOLECULE\n");
    }

    void kindsFollowTheLineCount_data()
    {
        QTest::addColumn<QList<int>>("kinds");
        QTest::addColumn<QString>("record");
        QTest::newRow("solid") << QList<int>{1} << "1 1";
        QTest::newRow("dashed") << QList<int>{0} << "1 0";
        QTest::newRow("wedge up") << QList<int>{2} << "1 2";
        QTest::newRow("wedge down") << QList<int>{3} << "1 3";
        QTest::newRow("solid and dashed") << QList<int>{1, 0} << "2 1 0";
        QTest::newRow("dashed and solid") << QList<int>{0, 1} << "2 0 1";
        QTest::newRow("three") << QList<int>{1, 0, 1} << "3 1 0 1";
        QTest::newRow("a fourth is not taken") << QList<int>{0, 0, 1, 1} << "3 0 0 1";
    }

    void kindsFollowTheLineCount()
    {
        QFETCH(QList<int>, kinds);
        QFETCH(QString, record);
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytBond* bond = drawing.bond(a, drawing.atom(30, 0), {});
        for (int kind : kinds)
            bond->addBond(static_cast<KytBondType>(kind), 60.0);
        QVERIFY2(drawing.written().contains("\n  BOND 0 1 " + record + "\n END_MOLECULE\n"),
                 qPrintable(drawing.written()));
    }

    void recordWithoutLinesIsContinuedOnTheSameLine()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytAtom* b = drawing.atom(30, 0);
        KytAtom* c = drawing.atom(60, 0);
        drawing.bond(a, b, {});
        drawing.bond(b, c, {1});
        drawing.bond(c, a, {});
        const QString text = drawing.written();
        QVERIFY2(text.endsWith("255 0 0\n  BOND 0 1 0   BOND 1 2 1 1\n  BOND 2 0 0  END_MOLECULE\nEND_KYTFILE\n"),
                 qPrintable(text));
        WorkspaceDrawing again;
        QVERIFY(again.read(text));
        QCOMPARE(again.bondTexts(), (QStringList{"0-1:", "1-2:1", "2-0:"}));
        QCOMPARE(again.written(), text);
    }

    void recordWithACountBeyondThreeHasNoKindsAndNoLineEnd_data()
    {
        QTest::addColumn<int>("count");
        for (int count : {-1, 4, 100})
            QTest::addRow("count %d", count) << count;
    }

    void recordWithACountBeyondThreeHasNoKindsAndNoLineEnd()
    {
        QFETCH(int, count);
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytBond* bond = drawing.bond(a, drawing.atom(30, 0), {1});
        bond->bondCount = count;
        const QString text = drawing.written();
        bond->bondCount = 1;
        QVERIFY2(text.endsWith(QString("255 0 0\n  BOND 0 1 %1  END_MOLECULE\nEND_KYTFILE\n").arg(count)),
                 qPrintable(text));
    }

    void kindSlotsStayWhenALineIsDeleted()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(0, 0);
        KytBond* bond = drawing.bond(a, drawing.atom(30, 0), {1, 0, 1});
        delete bond->bond1;
        QVERIFY2(drawing.written().contains("\n  BOND 0 1 2 1 0\n"), qPrintable(drawing.written()));
    }

    void writingChangesNothing()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(4, "3", "BOND 0 1 1 1 BOND 2 1 2 0 1 BOND 2 3 1 3") + marker)));
        const QStringList bonds = drawing.bondTexts();
        const QString text = drawing.written();
        QCOMPARE(drawing.written(), text);
        QCOMPARE(drawing.bondTexts(), bonds);
        QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "C2", "C3", "Marker"}));
    }

    // Index

    void indexIsThePlaceInTheArray()
    {
        WorkspaceDrawing drawing;
        KytFileIO io;
        for (int i = 0; i < 5; ++i)
            io.atomsArr.append(drawing.atom(i, i));
        for (int i = 0; i < 5; ++i)
            QCOMPARE(io.getIndex(io.atomsArr[i]), i);
    }

    void missingAtomHasIndexZero()
    {
        WorkspaceDrawing drawing;
        KytFileIO io;
        KytAtom* missing = drawing.atom(0, 0);
        QCOMPARE(io.getIndex(missing), 0);
        io.atomsArr = {drawing.atom(1, 1), drawing.atom(2, 2)};
        QCOMPARE(io.getIndex(missing), 0);
        QCOMPARE(io.getIndex(nullptr), 0);
    }

    void indexDoesNotTrustWhatAnEarlierWritingLeft()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(4, "0", ""))));
        drawing.written();
        const QList<KytAtom*> atoms = drawing.atoms();
        KytFileIO io;
        io.atomsArr = {atoms[3], atoms[1]};
        QCOMPARE(io.getIndex(atoms[3]), 0);
        QCOMPARE(io.getIndex(atoms[1]), 1);
        QCOMPARE(io.getIndex(atoms[0]), 0);
        QCOMPARE(io.getIndex(atoms[2]), 0);
        for (int rank : {-1, 1, 2, 1000000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            for (KytAtom* atom : atoms)
                atom->rank = rank;
            QCOMPARE(io.getIndex(atoms[3]), 0);
            QCOMPARE(io.getIndex(atoms[1]), 1);
            QCOMPARE(io.getIndex(atoms[2]), 0);
        }
    }

    // Numbers

    void coordinatesHaveSixSignificantDigits_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << "0";
        QTest::newRow("whole") << 100.0 << "100";
        QTest::newRow("half") << 130.5 << "130.5";
        QTest::newRow("negative") << -3.25 << "-3.25";
        QTest::newRow("third") << 1.0 / 3 << "0.333333";
        QTest::newRow("two thirds of 1000") << 2000.0 / 3 << "666.667";
        QTest::newRow("trailing zeros go") << 0.1 + 0.2 << "0.3";
        QTest::newRow("six digits") << 123456.0 << "123456";
        QTest::newRow("rounded to six digits") << 123456.7 << "123457";
        QTest::newRow("last number without exponent") << 999999.0 << "999999";
        QTest::newRow("rounded up into the exponent") << 999999.5 << "1e+06";
        QTest::newRow("a million") << 1000000.0 << "1e+06";
        QTest::newRow("a million and a half") << 1500000.0 << "1.5e+06";
        QTest::newRow("seven digits") << -1234567.0 << "-1.23457e+06";
        QTest::newRow("three digits of exponent") << 1e100 << "1e+100";
        QTest::newRow("small without exponent") << 0.0001 << "0.0001";
        QTest::newRow("small with many digits") << 0.000123456789 << "0.000123457";
        QTest::newRow("small with exponent") << 0.00001 << "1e-05";
        QTest::newRow("very small") << -2.5e-120 << "-2.5e-120";
    }

    void coordinatesHaveSixSignificantDigits()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        WorkspaceDrawing drawing;
        drawing.atom(value, 1);
        drawing.atom(2, value);
        QVERIFY2(drawing.written().contains("\n  ATOM C " + text + " 1 0 255 0 0\n"), qPrintable(drawing.written()));
        QVERIFY2(drawing.written().contains("\n  ATOM C 2 " + text + " 0 255 0 0\n"), qPrintable(drawing.written()));
    }

    void depthsHaveSixSignificantDigits_data()
    {
        QTest::addColumn<float>("z");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0f << "0";
        QTest::newRow("negative zero") << -0.0f << "-0";
        QTest::newRow("tenth") << 0.1f << "0.1";
        QTest::newRow("depth of a wedge of 30 pixels") << 51.961525f << "51.9615";
        QTest::newRow("negative") << -17.3205081f << "-17.3205";
        QTest::newRow("two to the 24th") << 16777216.0f << "1.67772e+07";
        QTest::newRow("largest") << std::numeric_limits<float>::max() << "3.40282e+38";
        QTest::newRow("lowest") << std::numeric_limits<float>::lowest() << "-3.40282e+38";
        QTest::newRow("smallest normal") << std::numeric_limits<float>::min() << "1.17549e-38";
        QTest::newRow("smallest of all") << std::numeric_limits<float>::denorm_min() << "1.4013e-45";
    }

    void depthsHaveSixSignificantDigits()
    {
        QFETCH(float, z);
        QFETCH(QString, text);
        WorkspaceDrawing drawing;
        drawing.atom(1, 2, z);
        const QString written = drawing.written();
        QVERIFY2(written.contains("\n  ATOM C 1 2 " + text + " 255 0 0\n"), qPrintable(written));
        QCOMPARE(rewritten(written), written);
    }

    void randomNumbersAreWrittenLikeG()
    {
        QRandomGenerator random(31);
        WorkspaceDrawing drawing;
        KytAtom* atom = drawing.atom(0, 0);
        for (int round = 0; round < 2000; ++round) {
            const double scale = std::pow(10.0, random.bounded(-12, 13));
            atom->move((random.generateDouble() - 0.5) * scale, (random.generateDouble() - 0.5) * scale);
            atom->setAtomZ(float((random.generateDouble() - 0.5) * scale));
            const QString record = "  ATOM C " + asNumber(atom->x()) + " " + asNumber(atom->y()) + " "
                + asNumber(atom->getAtomZ()) + " 255 0 0";
            QCOMPARE(drawing.written().split('\n').at(2), record);
        }
    }

    // Words

    void symbolIsWrittenAsOneWord_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("word");
        QTest::newRow("plain") << "Xe"
                               << "Xe";
        QTest::newRow("empty") << ""
                               << "_";
        QTest::newRow("none at all") << QString() << "_";
        QTest::newRow("blank") << " "
                               << "_";
        QTest::newRow("blanks") << "   "
                                << "_";
        QTest::newRow("blank inside") << "C H"
                                      << "C_H";
        QTest::newRow("run of mixed white space inside") << "C \t\n H"
                                                         << "C_H";
        QTest::newRow("two runs") << "a b  c"
                                  << "a_b_c";
        QTest::newRow("blanks around") << "  N  "
                                       << "_N_";
        QTest::newRow("underscores stay") << "__"
                                          << "__";
        QTest::newRow("underscore beside a blank") << "a_ b"
                                                   << "a__b";
        QTest::newRow("no-break space") << QString(QChar(0xa0)) + "O"
                                        << "_O";
        QTest::newRow("ideographic space") << "O" + QString(QChar(0x3000)) << "O_";
        QTest::newRow("a keyword") << "END_MOLECULE"
                                   << "END_MOLECULE";
        QTest::newRow("a number") << "12.5"
                                  << "12.5";
        QTest::newRow("letters beyond ASCII")
            << QString::fromUtf8("\xce\xb2\xe2\x82\x83") << QString::fromUtf8("\xce\xb2\xe2\x82\x83");
    }

    void symbolIsWrittenAsOneWord()
    {
        QFETCH(QString, symbol);
        QFETCH(QString, word);
        WorkspaceDrawing drawing;
        drawing.atom(1, 2, 0, symbol);
        drawing.atom(3, 4, 0, "Z");
        QVERIFY2(drawing.written().contains("\n  ATOM " + word + " 1 2 0 255 0 0\n"), qPrintable(drawing.written()));
        QCOMPARE(drawing.symbols(), (QStringList{symbol, "Z"}));
        WorkspaceDrawing again;
        QVERIFY(again.read(drawing.written()));
        QCOMPARE(again.symbols(), (QStringList{word, "Z"}));
    }

    void colourIsWrittenAsOneWord_data()
    {
        QTest::addColumn<QString>("colour");
        QTest::addColumn<QString>("word");
        QTest::newRow("plain") << "17"
                               << "17";
        QTest::newRow("empty") << ""
                               << "0";
        QTest::newRow("none at all") << QString() << "0";
        QTest::newRow("blank") << " "
                               << "0";
        QTest::newRow("blank in front") << " 12"
                                        << "12";
        QTest::newRow("blank behind") << "12 "
                                      << "12";
        QTest::newRow("two numbers") << "12 34"
                                     << "12";
        QTest::newRow("digits and letters before the blank") << "12x 34"
                                                             << "12";
        QTest::newRow("no number and a blank") << "red blue"
                                               << "0";
        QTest::newRow("sign and blank") << "-5 "
                                        << "-5";
        QTest::newRow("plus and blank") << "+7 "
                                        << "7";
        QTest::newRow("sign apart from its digits") << "- 5"
                                                    << "0";
        QTest::newRow("line end") << "1\n2"
                                  << "1";
        QTest::newRow("tab in front") << "\t200"
                                      << "200";
        QTest::newRow("leading zeros and a blank") << "007 "
                                                   << "7";
        QTest::newRow("fraction and a blank") << "2.9 "
                                              << "2";
        QTest::newRow("no-break space behind") << "12" + QString(QChar(0xa0)) << "12";
        QTest::newRow("no-break space in front") << QString(QChar(0xa0)) + "12"
                                                 << "0";
        QTest::newRow("leading zeros without a blank stay") << "007"
                                                            << "007";
        QTest::newRow("a word without a blank stays") << "red"
                                                      << "red";
        QTest::newRow("too large stays") << "300"
                                         << "300";
        QTest::newRow("negative stays") << "-1"
                                        << "-1";
        QTest::newRow("fraction stays") << "2.9"
                                        << "2.9";
    }

    void colourIsWrittenAsOneWord()
    {
        QFETCH(QString, colour);
        QFETCH(QString, word);
        for (int part = 0; part < 3; ++part) {
            WorkspaceDrawing drawing;
            KytAtom* atom = drawing.atom(1, 2);
            QStringList words = {"11", "22", "33"};
            for (int i = 0; i < 3; ++i)
                atom->_atomColor[i] = i == part ? colour : words[i];
            words[part] = word;
            QVERIFY2(drawing.written().contains("\n  ATOM C 1 2 0 " + words.join(' ') + "\n"),
                     qPrintable(drawing.written()));
            QCOMPARE(atom->_atomColor[part], colour);
            WorkspaceDrawing again;
            QVERIFY(again.read(drawing.written()));
            for (int i = 0; i < 3; ++i)
                QCOMPARE(again.atoms().at(0)->_atomColor[i], words[i]);
        }
    }

    void everyWhiteSpaceOfTheReaderIsKeptOutOfWords()
    {
        WorkspaceDrawing drawing;
        KytAtom* atom = drawing.atom(1, 2);
        for (int code = 1; code < 0x10000; ++code) {
            const QChar character(code);
            if (!character.isSpace())
                continue;
            atom->setSymbol(QString("a") + character + "b");
            atom->_atomColor[1] = QString("7") + character + "8";
            QVERIFY2(drawing.written().contains("  ATOM a_b 1 2 0 255 7 0\n"), qPrintable(QString::number(code, 16)));
        }
    }

    void otherControlCharactersAreWrittenAsStored()
    {
        for (int code : {0x01, 0x07, 0x08, 0x0e, 0x1b, 0x1c, 0x1f, 0x7f, 0xad, 0x200b, 0x2060}) {
            const QString symbol = QString("a") + QChar(code) + "b";
            WorkspaceDrawing drawing;
            drawing.atom(1, 2, 0, symbol);
            QVERIFY2(drawing.written().contains("  ATOM " + symbol + " 1 2 0"), qPrintable(QString::number(code, 16)));
            WorkspaceDrawing again;
            QVERIFY(again.read(drawing.written()));
            QCOMPARE(again.symbols(), QStringList(symbol));
        }
    }

    // Reading

    void emptyWorkspaceAddsNothing()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE\nEND_KYTFILE\n"));
        QVERIFY(drawing.canvas()->allItems().isEmpty());
    }

    void workedExampleIsRead()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE\n MOLECULE 2 1\n  ATOM C 100 100 0 255 0 0\n  ATOM O 130.5 -100 7.5 1 20 133\n"
                             "  BOND 1 0 2 1 0\n END_MOLECULE\nEND_KYTFILE\n"));
        const QList<KytAtom*> atoms = drawing.atoms();
        QCOMPARE(atoms.size(), 2);
        const KytAtom* oxygen = atoms[1];
        QCOMPARE(oxygen->getSymbol(), "O");
        QCOMPARE(oxygen->getName(), "O");
        QCOMPARE(oxygen->x(), 130.5);
        QCOMPARE(oxygen->y(), -100.0);
        QCOMPARE(oxygen->getAtomZ(), 7.5f);
        QCOMPARE(oxygen->_atomColor[0], "1");
        QCOMPARE(oxygen->_atomColor[1], "20");
        QCOMPARE(oxygen->_atomColor[2], "133");
        QCOMPARE(oxygen->canvas(), drawing.canvas());
        QVERIFY(oxygen->isVisible());
        QCOMPARE(oxygen->canvasSymbol->text(), "O");
        QCOMPARE(oxygen->canvasSymbol->x(), 130.5);
        QCOMPARE(oxygen->canvasSymbol->y(), -100.0);
        QVERIFY(oxygen->canvasSymbol->isVisible());
        QCOMPARE(oxygen->outList.size(), 1);
        QVERIFY(oxygen->inList.isEmpty());
        const KytBond* bond = oxygen->outList.first();
        QCOMPARE(bond->toAtom, atoms[0]);
        QCOMPARE(atoms[0]->inList, QList<KytBond*>{oxygen->outList.first()});
        QCOMPARE(bond->bondCount, 2);
        QCOMPARE(bond->bond1Type, KYTBT_SingleBond);
        QCOMPARE(bond->bond2Type, KYTBT_DashedLine);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(130, -100));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(100, 100));
        QVERIFY(bond->bond1->isVisible());
    }

    void readAtomsOfOneBlockShareOneMolecule()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, "1", "BOND 0 1 1 1") + marker)));
        const QList<KytAtom*> atoms = drawing.atoms();
        KytMolecule* first = atoms[0]->getMolecule();
        QCOMPARE(first->getAtomsCount(), 3);
        QCOMPARE(first->atomsCount, 3);
        QCOMPARE(atoms[1]->getMolecule(), first);
        QCOMPARE(atoms[2]->getMolecule(), first);
        QVERIFY(atoms[3]->getMolecule() != first);
        QCOMPARE(atoms[3]->getMolecule()->getAtomsCount(), 1);
    }

    void lockBecomesThatOfEveryAtom_data()
    {
        QTest::addColumn<bool>("locked");
        QTest::newRow("locked") << true;
        QTest::newRow("free") << false;
    }

    void lockBecomesThatOfEveryAtom()
    {
        QFETCH(bool, locked);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, "2", "BOND 0 1 1 1 BOND 1 2 1 2") + marker), locked));
        QCOMPARE(drawing.atoms().size(), 4);
        for (const KytAtom* atom : drawing.atoms())
            QCOMPARE(atom->locked, locked);
    }

    void layoutCarriesNoMeaning()
    {
        WorkspaceDrawing spread, onOneLine;
        const QString words = "KYTFILE MOLECULE 2 1 ATOM C 1 2 3 255 0 0 ATOM N 31 2 3 4 5 6 BOND 0 1 1 1 "
                              "END_MOLECULE END_KYTFILE";
        QVERIFY(onOneLine.read(words));
        QVERIFY(spread.read("\n\n \t" + QString(words).replace(' ', "\n \t\n") + "   \n"));
        QCOMPARE(spread.written(), onOneLine.written());
        QCOMPARE(spread.symbols(), (QStringList{"C", "N"}));
    }

    void lineEndsOfOtherSystemsAreBlanks()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE\r\nMOLECULE 1 0\r\nATOM\fC\v1 2 3\r255 0 0\r\nEND_MOLECULE\r\nEND_KYTFILE\r\n"));
        QCOMPARE(drawing.symbols(), QStringList("C"));
        QCOMPARE(drawing.atoms().at(0)->_atomColor[2], "0");
    }

    void keywordsAreNotChecked()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE MOLECULE 2 2 NUCLEUS C 1 2 3 255 0 0 7 N 31 2 3 255 0 0 "
                             "STICK 0 1 1 1 ATOM 1 0 1 0 END_MOLECULE END_KYTFILE"));
        QCOMPARE(drawing.symbols(), (QStringList{"C", "N"}));
        QCOMPARE(drawing.bondTexts(), (QStringList{"0-1:1", "1-0:0"}));
    }

    void closingWordIsNotChecked()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE MOLECULE 1 0 ATOM C 1 2 3 255 0 0 ENOUGH MOLECULE 1 0 ATOM N 1 2 3 255 0 0 "
                             "MOLECULE END_KYTFILE"));
        QCOMPARE(drawing.symbols(), (QStringList{"C", "N"}));
    }

    void coloursAreTexts()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read("KYTFILE MOLECULE 1 0 ATOM C 1 2 3 007 red -300.5 END_MOLECULE END_KYTFILE"));
        const KytAtom* atom = drawing.atoms().at(0);
        QCOMPARE(atom->_atomColor[0], "007");
        QCOMPARE(atom->_atomColor[1], "red");
        QCOMPARE(atom->_atomColor[2], "-300.5");
        QVERIFY(drawing.written().contains("  ATOM C 1 2 3 007 red -300.5\n"));
    }

    void keywordsMayBeSymbols_data()
    {
        QTest::addColumn<QString>("word");
        for (const char* word : {"END_MOLECULE", "END_KYTFILE", "KYTFILE", "MOLECULE", "ATOM", "BOND"})
            QTest::newRow(word) << word;
    }

    void keywordsMayBeSymbols()
    {
        QFETCH(QString, word);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace("MOLECULE 2 1 ATOM " + word
                                       + " 1 2 3 255 0 0 ATOM N 31 2 3 255 0 0 BOND 0 1 1 1 "
                                         "END_MOLECULE "
                                       + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{word, "N", "Marker"}));
        QCOMPARE(drawing.bondTexts(), QStringList("0-1:1"));
        QCOMPARE(rewritten(drawing.written()), drawing.written());
    }

    void keywordsMayBeColours()
    {
        const QStringList words = {"END_KYTFILE", "KYTFILE", "MOLECULE", "ATOM", "BOND"};
        for (const QString& word : words) {
            for (int part = 0; part < 3; ++part) {
                WorkspaceDrawing drawing;
                KytAtom* atom = drawing.atom(1, 2);
                drawing.bond(atom, drawing.atom(31, 2, 0, "N"));
                atom->_atomColor[part] = word;
                WorkspaceDrawing again;
                QVERIFY(again.read(drawing.written()));
                QCOMPARE(again.written(), drawing.written());
                QCOMPARE(again.atoms().first()->_atomColor[part], word);
            }
        }
    }

    void readingNeverRemovesAnything()
    {
        WorkspaceDrawing drawing;
        KytAtom* a = drawing.atom(1, 2, 3, "A");
        KytAtom* b = drawing.atom(4, 5, 6, "B");
        KytBond* bond = drawing.bond(a, b);
        const QCanvasItemList before = drawing.canvas()->allItems();
        QVERIFY(drawing.read(workspace(rowOf(2, "1", "BOND 0 1 1 1"))));
        QVERIFY(!drawing.read("nonsense"));
        QVERIFY(!drawing.read(""));
        QCOMPARE(drawing.canvas()->allItems().mid(0, before.size()), before);
        QCOMPARE(drawing.symbols(), (QStringList{"A", "B", "C0", "C1"}));
        QCOMPARE(a->outList, QList<KytBond*>{bond});
        QCOMPARE(a->x(), 1.0);
        QVERIFY(a->getMolecule() != drawing.atoms().at(2)->getMolecule());
    }

    void wordsBehindTheEndStayInTheStream()
    {
        WorkspaceDrawing drawing;
        QString text = workspace(marker) + workspace(marker + marker) + "tail";
        QTextStream stream(&text);
        KytFileIO io;
        QVERIFY(io.readWorkspace(stream, drawing.doc, false));
        QCOMPARE(drawing.atoms().size(), 1);
        QVERIFY(io.readWorkspace(stream, drawing.doc, true));
        QCOMPARE(drawing.atoms().size(), 3);
        QString word;
        stream >> word;
        QCOMPARE(word, "tail");
    }

    void depthsStayAsTheyWereRead()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace("MOLECULE 3 2 ATOM C 0 0 5 255 0 0 ATOM C 30 0 -7 255 0 0 ATOM C 60 0 9 255 0 0 "
                                       "BOND 0 1 1 1 BOND 1 2 1 2 END_MOLECULE")));
        QCOMPARE(drawing.atoms().at(0)->getAtomZ(), 5.0f);
        QCOMPARE(drawing.atoms().at(1)->getAtomZ(), -7.0f);
        QCOMPARE(drawing.atoms().at(2)->getAtomZ(), 9.0f);
    }

    void wrongStartReadsNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << "";
        QTest::newRow("blanks") << " \n\t ";
        QTest::newRow("another word") << "KITFILE " + marker + "END_KYTFILE";
        QTest::newRow("small letters") << "kytfile " + marker + "END_KYTFILE";
        QTest::newRow("no blank behind the word") << "KYTFILE" + marker + "END_KYTFILE";
        QTest::newRow("word comes second") << "A KYTFILE " + marker + "END_KYTFILE";
        QTest::newRow("molecule at once") << marker + "END_KYTFILE";
        QTest::newRow("end at once") << "END_KYTFILE";
    }

    void wrongStartReadsNothing()
    {
        QFETCH(QString, text);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(!drawing.read(text));
        QVERIFY(drawing.canvas()->allItems().isEmpty());
    }

    void wrongWordBetweenMoleculesKeepsWhatWasRead_data()
    {
        QTest::addColumn<QString>("rest");
        QTest::newRow("end of the stream") << "";
        QTest::newRow("another word") << "MOLEKUL 0 0 END_MOLECULE END_KYTFILE";
        QTest::newRow("small letters") << "molecule 0 0 END_MOLECULE END_KYTFILE";
        QTest::newRow("an atom") << "ATOM C 1 2 3 255 0 0 END_KYTFILE";
        QTest::newRow("closing word twice") << "END_MOLECULE END_KYTFILE";
        QTest::newRow("start again") << "KYTFILE " + marker + "END_KYTFILE";
    }

    void wrongWordBetweenMoleculesKeepsWhatWasRead()
    {
        QFETCH(QString, rest);
        const LoggedMessages messages;
        for (const QString& before : {QString(), marker, marker + marker}) {
            WorkspaceDrawing drawing;
            QVERIFY(!drawing.read("KYTFILE\n" + before + rest));
            QCOMPARE(drawing.atoms().size(), before.count("MOLECULE 1"));
        }
    }

    // Numbers that are none

    void realNumberIsReadAsAWhole_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<float>("value");
        QTest::newRow("whole") << "12" << 12.0f;
        QTest::newRow("negative") << "-12.75" << -12.75f;
        QTest::newRow("fraction") << "0.1" << 0.1f;
        QTest::newRow("no digit before the point") << ".5" << 0.5f;
        QTest::newRow("exponent") << "1.5e+06" << 1500000.0f;
        QTest::newRow("bare exponent") << "1e2" << 100.0f;
        QTest::newRow("capital exponent") << "25E-1" << 2.5f;
        QTest::newRow("leading zeros") << "-007.50" << -7.5f;
        QTest::newRow("leading zero is not octal") << "010" << 10.0f;
        QTest::newRow("nearest float") << "130.53" << 130.53f;
        QTest::newRow("more digits than a float has") << "16777217.25" << 16777217.25f;
        QTest::newRow("largest") << "3.40282e+38" << 3.40282e+38f;
        QTest::newRow("too small to be told from zero") << "1e-60" << 0.0f;
        QTest::newRow("letters") << "abc" << 0.0f;
        QTest::newRow("letters behind") << "12abc" << 0.0f;
        QTest::newRow("decimal comma") << "12,5" << 0.0f;
        QTest::newRow("commas between thousands") << "1,234" << 0.0f;
        QTest::newRow("two points") << "1.2.3" << 0.0f;
        QTest::newRow("two signs") << "--5" << 0.0f;
        QTest::newRow("sign alone") << "-" << 0.0f;
        QTest::newRow("point alone") << "." << 0.0f;
        QTest::newRow("exponent without digits") << "1e" << 0.0f;
        QTest::newRow("nan") << "nan" << 0.0f;
        QTest::newRow("NaN") << "NaN" << 0.0f;
        QTest::newRow("negative nan") << "-nan" << 0.0f;
        QTest::newRow("inf") << "inf" << 0.0f;
        QTest::newRow("negative inf") << "-inf" << 0.0f;
        QTest::newRow("positive inf") << "+inf" << 0.0f;
        QTest::newRow("infinity") << "Infinity" << 0.0f;
        QTest::newRow("hexadecimal") << "0x10" << 0.0f;
        QTest::newRow("hexadecimal with exponent") << "0x1p3" << 0.0f;
        QTest::newRow("beyond float") << "1e39" << 0.0f;
        QTest::newRow("below float") << "-1e39" << 0.0f;
        QTest::newRow("beyond double") << "1e400" << 0.0f;
        QTest::newRow("endless digits") << QString(5000, '9') << 0.0f;
        QTest::newRow("formula") << "1+1" << 0.0f;
        QTest::newRow("other digits") << QString(QChar(0x0663)) << 0.0f;
    }

    void realNumberIsReadAsAWhole()
    {
        QFETCH(QString, word);
        QFETCH(float, value);
        const LoggedMessages messages;
        for (int place = 0; place < 3; ++place) {
            QStringList words = {"1", "2", "3"};
            words[place] = word;
            WorkspaceDrawing drawing;
            QVERIFY(
                drawing.read(workspace("MOLECULE 1 0 ATOM C " + words.join(' ') + " 255 0 0 END_MOLECULE " + marker)));
            QCOMPARE(drawing.symbols(), (QStringList{"C", "Marker"}));
            const KytAtom* atom = drawing.atoms().first();
            QCOMPARE(atom->x(), double(place == 0 ? value : 1));
            QCOMPARE(atom->y(), double(place == 1 ? value : 2));
            QCOMPARE(atom->getAtomZ(), place == 2 ? value : 3);
            QCOMPARE(atom->_atomColor[0], "255");
        }
    }

    void wholeNumberIsReadAsAWhole_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<int>("kind");
        QTest::newRow("one") << "1" << 1;
        QTest::newRow("leading zero") << "01" << 1;
        QTest::newRow("wraps to one in 32 bits") << "4294967297" << 0;
        QTest::newRow("fraction") << "1.0" << 0;
        QTest::newRow("exponent") << "1e0" << 0;
        QTest::newRow("hexadecimal") << "0x1" << 0;
        QTest::newRow("letters") << "one" << 0;
        QTest::newRow("letters behind") << "1st" << 0;
    }

    void wholeNumberIsReadAsAWhole()
    {
        QFETCH(QString, word);
        QFETCH(int, kind);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "1", "BOND 0 1 1 " + word) + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "Marker"}));
        QCOMPARE(drawing.bondTexts(), QStringList(QString("0-1:%1").arg(kind)));
    }

    void countsAreDecimal()
    {
        WorkspaceDrawing drawing;
        QString atoms;
        for (int i = 0; i < 10; ++i)
            atoms += QString("ATOM C%1 %1 0 0 255 0 0 ").arg(i);
        QVERIFY(drawing.read(workspace("MOLECULE 010 001 " + atoms + "BOND 08 09 02 01 00 END_MOLECULE " + marker)));
        QCOMPARE(drawing.atoms().size(), 11);
        QCOMPARE(drawing.bondTexts(), QStringList("8-9:1 0"));
    }

    void negativeCountsAreZero_data()
    {
        QTest::addColumn<QString>("counts");
        QTest::addColumn<int>("atoms");
        QTest::newRow("no atoms") << "-1 0" << 0;
        QTest::newRow("no bonds") << "2 -1" << 2;
        QTest::newRow("neither") << "-5 -7" << 0;
        QTest::newRow("lowest") << "-2147483648 -2147483648" << 0;
        QTest::newRow("words") << "some more" << 0;
        QTest::newRow("beyond int") << "99999999999 99999999999" << 0;
        QTest::newRow("nothing") << "0 0" << 0;
    }

    void negativeCountsAreZero()
    {
        QFETCH(QString, counts);
        QFETCH(int, atoms);
        const LoggedMessages messages;
        const QString records = QString("ATOM C 1 2 3 255 0 0 ").repeated(atoms);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace("MOLECULE " + counts + " " + records + "END_MOLECULE " + marker)));
        QCOMPARE(drawing.atoms().size(), atoms + 1);
        QCOMPARE(drawing.symbols().last(), "Marker");
    }

    void indexThatIsNoNumberIsZero()
    {
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "2", "BOND x 1 1 1 BOND 1 1.0 1 0") + marker)));
        QCOMPARE(drawing.bondTexts(), (QStringList{"0-1:1", "1-0:0"}));
    }

    void commaLocaleChangesNothing()
    {
        const QString text =
            workspace(" MOLECULE 2 1\n  ATOM C 130.5 -0.25 1234.5 255 0 0\n  ATOM C 1.5e+06 2 1e-05 255 0 0\n"
                      "  BOND 0 1 1 2\n END_MOLECULE");
        const CommaLocale locale;
        QVERIFY(locale.isInForce());
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(text));
        QCOMPARE(drawing.atoms().at(0)->x(), 130.5);
        QCOMPARE(drawing.atoms().at(0)->getAtomZ(), 1234.5f);
        QCOMPARE(drawing.atoms().at(1)->x(), 1500000.0);
        QCOMPARE(drawing.written(), text);
        QVERIFY(drawing.read(workspace("MOLECULE 1 0 ATOM C 1,5 1.234,5 0 255 0 0 END_MOLECULE")));
        QCOMPARE(drawing.atoms().last()->x(), 0.0);
        QCOMPARE(drawing.atoms().last()->y(), 0.0);
    }

    // Counts and ends

    void hugeCountsTakeNoMemory_data()
    {
        QTest::addColumn<QString>("molecule");
        QTest::newRow("atoms") << "MOLECULE 2147483647 0 ATOM C 1 2 3 255 0 0 END_MOLECULE ";
        QTest::newRow("fewer atoms") << "MOLECULE 200000000 0 ATOM C 1 2 3 255 0 0 END_MOLECULE ";
        QTest::newRow("bonds") << "MOLECULE 1 2147483647 ATOM C 1 2 3 255 0 0 END_MOLECULE ";
        QTest::newRow("both") << "MOLECULE 2147483647 2147483647 ATOM C 1 2 3 255 0 0 END_MOLECULE ";
        QTest::newRow("lines of a skipped bond")
            << "MOLECULE 1 1 ATOM C 1 2 3 255 0 0 BOND 0 1 2147483647 1 END_MOLECULE ";
    }

    void hugeCountsTakeNoMemory()
    {
        QFETCH(QString, molecule);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        drawing.atom(0, 0, 0, "First");
        const qint64 before = peakMemory();
        QVERIFY(before > 0);
        QVERIFY(drawing.read(workspace(molecule + marker)));
        QVERIFY2(peakMemory() - before < 200 * 1024, qPrintable(QString("%1 KiB").arg(peakMemory() - before)));
        QCOMPARE(drawing.symbols(), (QStringList{"First", "C", "Marker"}));
    }

    void closingWordInPlaceOfARecordEndsTheMolecule_data()
    {
        QTest::addColumn<QString>("counts");
        QTest::addColumn<QString>("records");
        QTest::addColumn<int>("atoms");
        QTest::addColumn<int>("bonds");
        const QString atom = "ATOM C 1 2 3 255 0 0 ";
        QTest::newRow("no atom of three") << "3 0"
                                          << "" << 0 << 0;
        QTest::newRow("two atoms of three") << "3 0" << atom + atom << 2 << 0;
        QTest::newRow("two atoms of three before bonds") << "3 5" << atom + atom << 2 << 0;
        QTest::newRow("no bond of one") << "2 1" << atom + atom << 2 << 0;
        QTest::newRow("one bond of two") << "2 2" << atom + atom + "BOND 0 1 1 1 " << 2 << 1;
        QTest::newRow("two bonds of a thousand") << "2 1000" << atom + atom + "BOND 0 1 1 1 BOND 1 0 2 1 0 " << 2 << 2;
    }

    void closingWordInPlaceOfARecordEndsTheMolecule()
    {
        QFETCH(QString, counts);
        QFETCH(QString, records);
        QFETCH(int, atoms);
        QFETCH(int, bonds);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace("MOLECULE " + counts + " " + records + "END_MOLECULE " + marker)));
        QCOMPARE(drawing.atoms().size(), atoms + 1);
        QCOMPARE(drawing.bonds().size(), bonds);
        QCOMPARE(drawing.symbols().last(), "Marker");
    }

    void closingWordInPlaceOfAnAtomsNumberEndsTheMolecule_data()
    {
        QTest::addColumn<QString>("record");
        QTest::newRow("x") << "ATOM N";
        QTest::newRow("y") << "ATOM N 1";
        QTest::newRow("z") << "ATOM N 1 2";
        QTest::newRow("red") << "ATOM N 1 2 3";
        QTest::newRow("green") << "ATOM N 1 2 3 0";
        QTest::newRow("blue") << "ATOM N 1 2 3 0 0";
    }

    void closingWordInPlaceOfAnAtomsNumberEndsTheMolecule()
    {
        QFETCH(QString, record);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(
            workspace("MOLECULE 4 2 ATOM A 1 2 3 255 0 0 ATOM B 4 5 6 255 0 0 " + record + " END_MOLECULE " + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"A", "B", "Marker"}));
        QVERIFY(drawing.bonds().isEmpty());
    }

    void closingWordInPlaceOfABondsNumberEndsTheMolecule_data()
    {
        QTest::addColumn<QString>("record");
        QTest::newRow("start") << "BOND";
        QTest::newRow("end") << "BOND 1";
        QTest::newRow("line count") << "BOND 1 2";
        QTest::newRow("first kind") << "BOND 1 2 1";
        QTest::newRow("second kind") << "BOND 1 2 2 1";
        QTest::newRow("third kind") << "BOND 1 2 3 1 0";
        QTest::newRow("kind that would not be drawn") << "BOND 1 2 9 1 1 1 1";
        QTest::newRow("kind of a skipped bond") << "BOND 1 1 3 1";
    }

    void closingWordInPlaceOfABondsNumberEndsTheMolecule()
    {
        QFETCH(QString, record);
        const LoggedMessages messages;
        for (const char* announced : {"0", "1", "2", "9"}) {
            WorkspaceDrawing drawing;
            QVERIFY(drawing.read(workspace(rowOf(3, announced, "BOND 0 1 1 1 " + record) + marker)));
            QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "C2", "Marker"}));
            QCOMPARE(drawing.bondTexts().first(), "0-1:1");
            QVERIFY(drawing.bonds().size() <= 2);
        }
    }

    void bondsBeyondTheAnnouncedOnesAreRead_data()
    {
        QTest::addColumn<QString>("announced");
        for (const char* announced : {"0", "1", "2", "3", "-3", "none"})
            QTest::newRow(announced) << announced;
    }

    void bondsBeyondTheAnnouncedOnesAreRead()
    {
        QFETCH(QString, announced);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, announced, "BOND 0 1 1 1 BOND 1 2 2 0 1 BOND 2 0 1 3") + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "C2", "Marker"}));
        QCOMPARE(drawing.bondTexts(), (QStringList{"0-1:1", "1-2:0 1", "2-0:3"}));
    }

    void atomsBeyondTheAnnouncedOnesEndTheReading()
    {
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(
            !drawing.read(workspace("MOLECULE 1 0 ATOM A 1 2 3 255 0 0 ATOM B 1 2 3 255 0 0 END_MOLECULE " + marker)));
        QCOMPARE(drawing.symbols(), QStringList("A"));
    }

    void truncationAtEveryByteKeepsWhatWasRead()
    {
        const LoggedMessages messages;
        const QString whole = "KYTFILE\n MOLECULE 3 2\n  ATOM A 100 100 0 255 0 0\n  ATOM B 130.5 100 -2.5 1 22 133\n"
                              "  ATOM D 160 1.5e+02 0 255 0 0\n  BOND 0 1 3 1 0 1\n  BOND 1 2 1 2\n END_MOLECULE\n"
                              " MOLECULE 1 0\n  ATOM E 1 2 3 4 5 6\n END_MOLECULE\nEND_KYTFILE\n";
        const qsizetype end = whole.indexOf("END_KYTFILE") + 11;
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const QString cut = whole.left(length);
            WorkspaceDrawing drawing;
            QCOMPARE(drawing.read(cut), length >= end);
            const qsizetype lines = cut.count('\n');
            const qsizetype atoms = std::clamp<qsizetype>(lines - 2, 0, 3) + (lines >= 10 ? 1 : 0);
            const qsizetype bonds = std::clamp<qsizetype>(lines - 5, 0, 2);
            const qsizetype readAtoms = drawing.atoms().size();
            const qsizetype readBonds = drawing.bonds().size();
            QVERIFY2(readAtoms == atoms || readAtoms == atoms + 1, qPrintable(cut));
            QVERIFY2(readBonds == bonds || readBonds == bonds + 1, qPrintable(cut));
            const QStringList symbols = {"A", "B", "D", "E"};
            QCOMPARE(drawing.symbols().mid(0, atoms), symbols.mid(0, atoms));
            QCOMPARE(drawing.bondTexts().mid(0, bonds), (QStringList{"0-1:1 0 1", "1-2:2"}).mid(0, bonds));
            QCOMPARE(rewritten(drawing.written()), drawing.written());
        }
    }

    void bondOutsideItsMoleculeIsSkippedWithItsKinds_data()
    {
        QTest::addColumn<QString>("record");
        QTest::newRow("start too large") << "BOND 3 0 1 1";
        QTest::newRow("end too large") << "BOND 0 3 1 1";
        QTest::newRow("negative start") << "BOND -1 0 1 1";
        QTest::newRow("negative end") << "BOND 0 -1 2 1 1";
        QTest::newRow("far too large") << "BOND 0 2147483647 3 1 0 1";
        QTest::newRow("far too small") << "BOND -2147483648 1 3 1 0 1";
        QTest::newRow("both") << "BOND 7 8 1 2";
        QTest::newRow("no lines") << "BOND 7 8 0";
        QTest::newRow("negative line count") << "BOND 7 8 -2";
        QTest::newRow("many lines") << "BOND 7 8 6 1 2 3 4 5 6";
    }

    void bondOutsideItsMoleculeIsSkippedWithItsKinds()
    {
        QFETCH(QString, record);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(marker + rowOf(3, "3", "BOND 0 1 1 1 " + record + " BOND 1 2 1 0") + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"Marker", "C0", "C1", "C2", "Marker"}));
        QCOMPARE(drawing.bondTexts(), (QStringList{"1-2:1", "2-3:0"}));
    }

    void bondFromAnAtomToItselfIsSkippedWithItsKinds()
    {
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "3", "BOND 0 0 2 1 1 BOND 1 1 1 2 BOND 0 1 1 1") + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "Marker"}));
        QCOMPARE(drawing.bondTexts(), QStringList("0-1:1"));
        QCOMPARE(drawing.atoms().at(1)->getBondCount(), 1);
    }

    void lineCountsOutsideOneToThree_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("bond");
        QTest::newRow("none") << "BOND 0 1 0"
                              << "0-1:";
        QTest::newRow("negative") << "BOND 0 1 -3"
                                  << "0-1:";
        QTest::newRow("no number") << "BOND 0 1 many"
                                   << "0-1:";
        QTest::newRow("four") << "BOND 0 1 4 1 0 1 0"
                              << "0-1:1 0 1";
        QTest::newRow("nine") << "BOND 0 1 9 0 0 0 1 1 1 2 3 4"
                              << "0-1:0 0 0";
    }

    void lineCountsOutsideOneToThree()
    {
        QFETCH(QString, record);
        QFETCH(QString, bond);
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, "2", record + " BOND 1 2 1 1") + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{"C0", "C1", "C2", "Marker"}));
        QCOMPARE(drawing.bondTexts(), (QStringList{bond, "1-2:1"}));
        QCOMPARE(rewritten(drawing.written()), drawing.written());
    }

    // Kinds

    void otherKindsAreCountedAndNotDrawn_data()
    {
        QTest::addColumn<QString>("kinds");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("written");
        for (const char* kind : {"4", "5", "6", "7", "8", "99", "-1", "-2147483648", "2147483647"})
            QTest::addRow("kind %s", kind) << QString("1 %1").arg(kind) << 0 << "1 0";
        QTest::newRow("three of them") << "3 4 5 7" << 0 << "3 0 0 0";
        QTest::newRow("between lines") << "3 1 6 0" << 2 << "3 1 0 0";
        QTest::newRow("before a line") << "2 7 1" << 1 << "2 0 1";
        QTest::newRow("behind a line") << "2 1 -9" << 1 << "2 1 0";
    }

    void otherKindsAreCountedAndNotDrawn()
    {
        QFETCH(QString, kinds);
        QFETCH(int, lines);
        QFETCH(QString, written);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "1", "BOND 0 1 " + kinds))));
        QCOMPARE(drawing.bonds().first()->bondCount, kinds.split(' ').first().toInt());
        int drawn = 0;
        for (const QCanvasItem* item : drawing.canvas()->allItems())
            drawn += item->rtti() == QCanvasItem::Rtti_Line || item->rtti() == QCanvasItem::Rtti_Polygon;
        QCOMPARE(drawn, lines);
        const QString text = drawing.written();
        QVERIFY2(text.contains("\n  BOND 0 1 " + written + "\n"), qPrintable(text));
        QCOMPARE(rewritten(text), text);
    }

    void wedgeIsAloneOnItsBond_data()
    {
        QTest::addColumn<QString>("read");
        QTest::addColumn<QString>("kept");
        QTest::newRow("line on a wedge") << "2 2 1"
                                         << "1 2";
        QTest::newRow("wedge on a line") << "2 1 3"
                                         << "1 1";
        QTest::newRow("wedge on a wedge") << "2 3 2"
                                          << "1 3";
        QTest::newRow("wedge between lines") << "3 1 2 0"
                                             << "2 1 0";
        QTest::newRow("undrawn kind on a wedge") << "2 2 5"
                                                 << "1 2";
        QTest::newRow("wedge on an undrawn kind") << "2 5 2"
                                                  << "1 0";
    }

    void wedgeIsAloneOnItsBond()
    {
        QFETCH(QString, read);
        QFETCH(QString, kept);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, "2", "BOND 0 1 " + read + " BOND 1 2 1 1"))));
        QVERIFY2(drawing.written().contains("\n  BOND 0 1 " + kept + "\n  BOND 1 2 1 1\n"),
                 qPrintable(drawing.written()));
    }

    void linesAreSolidOrDashed()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "1", "BOND 0 1 3 0 1 0"))));
        const KytBond* bond = drawing.bonds().first();
        QVERIFY(bond->bond1->isDashed);
        QVERIFY(!bond->bond2->isDashed);
        QVERIFY(bond->bond3->isDashed);
        QVERIFY(!bond->stereoBond);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(100, 100));
        QCOMPARE(bond->bond2->getStartPoint(), QPoint(100, 94));
        QCOMPARE(bond->bond3->getEndPoint(), QPoint(130, 106));
    }

    void wedgeAngleComesFromTheDepths_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<double>("angle");
        const auto degrees = [](double depth, double length) {
            return std::atan(std::abs(depth / length)) * 57.29577951308232;
        };
        QTest::newRow("same depth") << "100 100 7"
                                    << "130 100 7" << 0.0;
        QTest::newRow("as deep as long") << "100 100 0"
                                         << "130 100 30" << 45.0;
        QTest::newRow("rising towards the start") << "100 100 30"
                                                  << "130 100 0" << 45.0;
        QTest::newRow("slanted") << "0 0 0"
                                 << "30 40 25" << degrees(25, 50);
        QTest::newRow("upright") << "100 140 10"
                                 << "100 100 -10" << degrees(20, 40);
        QTest::newRow("fractions are cut") << "100.9 100 0"
                                           << "130.2 100 30" << 45.0;
        QTest::newRow("fractions are cut toward zero") << "-0.9 0 0"
                                                       << "30.9 -0.9 30" << 45.0;
        QTest::newRow("depth keeps its fraction") << "0 0 0.5"
                                                  << "10 0 3" << degrees(2.5, 10);
        QTest::newRow("usual wedge") << "0 0 0"
                                     << "10 0 17.3205" << degrees(17.3205, 10);
        QTest::newRow("same pixel, same depth") << "10.1 10 4"
                                                << "10.8 10.5 4" << 0.0;
        QTest::newRow("same pixel, other depth") << "10.1 10 4"
                                                 << "10.8 10.5 5" << 89.5;
        QTest::newRow("same place, other depth") << "10 10 4"
                                                 << "10 10 -4" << 89.5;
        QTest::newRow("squares beyond int") << "0 0 0"
                                            << "100000 0 100000" << 45.0;
        QTest::newRow("difference beyond int") << "-2e9 0 0"
                                               << "2e9 0 4e9" << 45.0;
        QTest::newRow("places beyond int") << "-1e30 0 0"
                                           << "1e30 0 0" << 0.0;
    }

    void wedgeAngleComesFromTheDepths()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(double, angle);
        for (const char* kind : {"2", "3"}) {
            WorkspaceDrawing drawing;
            QVERIFY(drawing.read(workspace("MOLECULE 2 1 ATOM C " + from + " 255 0 0 ATOM C " + to
                                           + " 255 0 0 BOND 0 1 1 " + kind + " END_MOLECULE " + marker)));
            const KytBond* bond = drawing.bonds().first();
            QVERIFY(bond->stereoBond);
            QVERIFY(!bond->bond1);
            QCOMPARE(int(bond->stereoBond->bondType), QString(kind).toInt());
            QVERIFY2(std::abs(bond->stereoBond->getAngle() - angle) < 1e-4,
                     qPrintable(QString::number(bond->stereoBond->getAngle())));
            for (const KytAtom* atom : drawing.atoms()) {
                QVERIFY(qIsFinite(atom->x()) && qIsFinite(atom->y()) && qIsFinite(atom->getAtomZ()));
            }
        }
    }

    // There and back

    void drawingWithEverythingComesBack()
    {
        WorkspaceDrawing drawing;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 8; ++i)
            atoms.append(drawing.atom(100 + 30.3 * i, 100 + 7.77 * (i % 3), 0, QString("S%1").arg(i)));
        KytAtom* alone = drawing.atom(-12.25, 1e7, -3.75f, "Q q");
        alone->_atomColor[0] = " 12 ";
        alone->_atomColor[1] = "";
        alone->_atomColor[2] = "blue";
        drawing.bond(atoms[0], atoms[1], {1});
        drawing.bond(atoms[1], atoms[2], {1, 0});
        drawing.bond(atoms[3], atoms[2], {0, 0, 1});
        drawing.bond(atoms[2], atoms[0], {2});
        drawing.bond(atoms[2], atoms[0], {3});
        drawing.bond(atoms[0], atoms[3], {});
        drawing.bond(atoms[4], atoms[5], {7, 1});
        drawing.bond(atoms[5], atoms[6], {3});
        drawing.bond(atoms[6], atoms[7], {-5});
        atoms[5]->moveBy(3.3, 4.4);
        atoms[6]->setAtomZ(12.3456789f);
        const QString first = drawing.written();
        WorkspaceDrawing read;
        QVERIFY(read.read(first));
        const QString second = read.written();
        WorkspaceDrawing readAgain;
        QVERIFY(readAgain.read(second));
        QCOMPARE(readAgain.written(), second);
        QCOMPARE(read.atoms().size(), 9);
        QCOMPARE(read.bonds().size(), 8);
        // Only the count in the header forgets the bond that shared its cell.
        QVERIFY(first.contains(" MOLECULE 4 6\n"));
        QCOMPARE(second, QString(first).replace(" MOLECULE 4 6\n", " MOLECULE 4 5\n"));
        for (qsizetype i = 0; i < 9; ++i) {
            NEAR(read.atoms().at(i)->getAtomZ(), drawing.atoms().at(i)->getAtomZ(), 1e-4);
            QCOMPARE(readAgain.atoms().at(i)->x(), read.atoms().at(i)->x());
            QCOMPARE(readAgain.atoms().at(i)->getAtomZ(), read.atoms().at(i)->getAtomZ());
        }
    }

    void sampleIsAFixedPoint_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("two molecules") << workspace(" MOLECULE 2 1\n  ATOM C 1 2 3 255 0 0\n  ATOM O 4.5 5 6 0 0 0\n"
                                                    "  BOND 0 1 3 1 0 1\n END_MOLECULE\n MOLECULE 1 0\n"
                                                    "  ATOM N 1e+06 -1e-05 -0 a b c\n END_MOLECULE");
        QTest::newRow("no lines") << workspace(" MOLECULE 2 1\n  ATOM C 1 2 3 255 0 0\n  ATOM O 4.5 5 6 0 0 0\n"
                                               "  BOND 1 0 0  END_MOLECULE");
        QTest::newRow("wedge") << workspace(
            " MOLECULE 2 2\n  ATOM C 0 0 3.40282e+38 255 0 0\n"
            "  ATOM O 0 0 -3.40282e+38 0 0 0\n  BOND 0 1 1 2\n  BOND 1 0 1 3\n END_MOLECULE");
    }

    void sampleIsAFixedPoint()
    {
        QFETCH(QString, text);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(text));
        QCOMPARE(drawing.written(), text);
        for (const KytAtom* atom : drawing.atoms())
            QVERIFY(qIsFinite(atom->x()) && qIsFinite(atom->y()) && qIsFinite(atom->getAtomZ()));
    }

    void wordSoupIsHarmlessAndReadTheSameTwice()
    {
        const LoggedMessages messages;
        const QStringList words = {"MOLECULE",
                                   "END_MOLECULE",
                                   "END_KYTFILE",
                                   "ATOM",
                                   "BOND",
                                   "0",
                                   "1",
                                   "2",
                                   "3",
                                   "-1",
                                   "7",
                                   "100.5",
                                   "nan",
                                   "1e400",
                                   "2147483647",
                                   "C",
                                   "255",
                                   "MOLECULE 3 2",
                                   "MOLECULE 2 1",
                                   "ATOM C 1 2 3 255 0 0",
                                   "ATOM N 31 2 9 255 0 0",
                                   "BOND 0 1 1 1",
                                   "BOND 1 0 2 1 0",
                                   "BOND 1 2 1 2",
                                   "BOND 0 1 1 3",
                                   "END_MOLECULE"};
        QRandomGenerator random(99);
        for (int round = 0; round < 1500; ++round) {
            QStringList soup = {"KYTFILE"};
            if (round % 2)
                soup << "MOLECULE 3 2"
                     << "ATOM C 1 2 3 255 0 0"
                     << "ATOM C 41 2 3 255 0 0";
            for (int i = random.bounded(50); i > 0; --i)
                soup.append(words[random.bounded(int(words.size()))]);
            const QString text = soup.join(' ');
            WorkspaceDrawing drawing, same;
            const bool result = drawing.read(text);
            QCOMPARE(same.read(text), result);
            QVERIFY(drawing.atoms().size() <= text.count(' '));
            const QString first = drawing.written();
            QCOMPARE(same.written(), first);
            const QString second = rewritten(first);
            QCOMPARE(rewritten(second), second);
            WorkspaceDrawing again;
            QVERIFY2(again.read(first), qPrintable(text));
            QCOMPARE(again.symbols(), drawing.symbols());
            for (const KytAtom* atom : drawing.atoms())
                QVERIFY(qIsFinite(atom->x()) && qIsFinite(atom->y()) && qIsFinite(atom->getAtomZ()));
        }
    }

    void randomBytesAreHarmless()
    {
        const LoggedMessages messages;
        QRandomGenerator random(5);
        for (int round = 0; round < 500; ++round) {
            QByteArray bytes = round % 2 ? "KYTFILE MOLECULE 3 3 " : "";
            for (int i = random.bounded(1000); i > 0; --i)
                bytes += char(random.bounded(256));
            QTextStream stream(&bytes, QIODevice::ReadOnly);
            WorkspaceDrawing drawing;
            QVERIFY(!KytFileIO("garbage.kyt").readWorkspace(stream, drawing.doc, false));
            QVERIFY(drawing.atoms().size() <= 3);
        }
    }

    void veryLongWordsAreRead()
    {
        const LoggedMessages messages;
        const QString longWord(20000, 'x');
        const QString huge(2000000, '1');
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace("MOLECULE 2 1 " + huge + " " + longWord + " " + huge + " 2 3 " + huge
                                       + " 0 0 ATOM N 30 2 3 255 0 0 " + huge + " 0 1 1 " + huge + " END_MOLECULE "
                                       + marker)));
        QCOMPARE(drawing.symbols(), (QStringList{longWord, "N", "Marker"}));
        QCOMPARE(drawing.atoms().first()->x(), 0.0);
        QCOMPARE(drawing.atoms().first()->_atomColor[0], huge);
        QCOMPARE(drawing.bondTexts(), QStringList("0-1:0"));
        WorkspaceDrawing none;
        QVERIFY(!none.read(huge + huge));
    }

    void bondsWithOddKindsCanBeEdited()
    {
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(
            workspace(rowOf(6, "5", "BOND 0 1 1 7 BOND 1 2 3 1 5 0 BOND 2 3 2 6 1 BOND 3 4 0 BOND 4 5 3 -9 99 4"))));
        for (KytAtom* atom : drawing.atoms()) {
            atom->moveBy(5, -3);
            atom->setAtomZ(atom->getAtomZ() + 2);
        }
        for (KytBond* bond : drawing.bonds()) {
            bond->setBond();
            bond->addBond(KYTBT_SingleBond, 60.0);
            bond->moveBy(1, 1);
        }
        const QString text = drawing.written();
        QVERIFY2(text.contains(
                     "  BOND 0 1 2 0 1\n  BOND 1 2 3 1 0 0\n  BOND 2 3 3 0 1 1\n  BOND 3 4 1 1\n  BOND 4 5 3 0 0 0\n"),
                 qPrintable(text));
        QCOMPARE(rewritten(text), text);
        for (KytBond* bond : drawing.bonds())
            delete bond;
        QVERIFY(drawing.bonds().isEmpty());
        QCOMPARE(drawing.atoms().size(), 6);
    }

    // Reports

    void soundWorkspaceIsReadWithoutAWord()
    {
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(3, "2", "BOND 0 1 3 1 0 1 BOND 1 2 1 2") + marker)));
        QVERIFY2(LoggedMessages::lines().isEmpty(), qPrintable(LoggedMessages::lines().join('\n')));
    }

    void oneLineForEachKindOfTrouble_data()
    {
        QTest::addColumn<QString>("once");
        QTest::addColumn<QString>("often");
        const auto atoms = [](int count, const QString& x) {
            return workspace(QString("MOLECULE %1 0 ").arg(count)
                             + QString("ATOM C " + x + " 2 3 255 0 0 ").repeated(count) + "END_MOLECULE");
        };
        QTest::newRow("words that are no numbers") << atoms(1, "abc") << atoms(300, "abc");
        QTest::newRow("numbers beyond their range") << atoms(1, "1e99") << atoms(300, "1e99");
        const auto bonds = [](int count, const QString& ends) {
            return workspace(rowOf(2, QString::number(count), QString("BOND " + ends + " 1 1 ").repeated(count)));
        };
        QTest::newRow("bonds outside") << bonds(1, "0 9") << bonds(300, "0 9");
        QTest::newRow("bonds from an atom to itself") << bonds(1, "1 1") << bonds(300, "1 1");
        QTest::newRow("wrong start") << "WHAT"
                                     << "WHAT WHAT WHAT";
        QTest::newRow("early end") << "KYTFILE"
                                   << "KYTFILE " + marker;
        QTest::newRow("negative counts") << workspace("MOLECULE -1 0 END_MOLECULE")
                                         << workspace(QString("MOLECULE -1 0 END_MOLECULE ").repeated(50));
        QTest::newRow("molecules cut short")
            << workspace("MOLECULE 5 0 END_MOLECULE") << workspace(QString("MOLECULE 5 0 END_MOLECULE ").repeated(50));
    }

    void oneLineForEachKindOfTrouble()
    {
        QFETCH(QString, once);
        QFETCH(QString, often);
        for (const QString& text : {once, often}) {
            const LoggedMessages messages;
            WorkspaceDrawing drawing;
            drawing.read(text);
            const QStringList lines = LoggedMessages::lines();
            QCOMPARE(lines.size(), 1);
            QVERIFY2(lines.first().contains("sample.kyt"), qPrintable(lines.first()));
            QVERIFY(!lines.first().contains('\n'));
            QVERIFY(!LoggedMessages::categories().contains("default"));
        }
    }

    void reportNamesTheFile()
    {
        QTemporaryDir directory;
        QFile file(directory.filePath("some name.kyt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(workspace("MOLECULE 1 1 ATOM C x 2 3 255 0 0 BOND 0 5 1 1 END_MOLECULE").toUtf8());
        file.close();
        const LoggedMessages messages;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->load(file.fileName(), false));
        const QStringList lines = LoggedMessages::lines();
        QCOMPARE(lines.size(), 2);
        for (const QString& line : lines)
            QVERIFY2(line.contains("some name.kyt"), qPrintable(line));
        QVERIFY(lines[0] != lines[1]);
    }

    // Size

    void largeMoleculeTakesNoSquareTable()
    {
        constexpr int size = 20000;
        QString text = QString(" MOLECULE %1 %2\n").arg(size).arg(size - 1);
        for (int i = 0; i < size; ++i)
            text += QString("  ATOM C %1 %2 0 255 0 0\n").arg(10 + 20 * (i % 90)).arg(10 + i / 90);
        for (int i = 1; i < size; ++i)
            text += QString("  BOND %1 %2 1 1\n").arg(i - 1).arg(i);
        text = workspace(text + " END_MOLECULE");
        WorkspaceDrawing drawing;
        const LoggedMessages messages;
        QVERIFY(drawing.read(text));
        QVERIFY(LoggedMessages::lines().isEmpty());
        const qint64 before = peakMemory();
        QCOMPARE(drawing.written(), text);
        QVERIFY2(peakMemory() - before < 500 * 1024, qPrintable(QString("%1 KiB").arg(peakMemory() - before)));
        QCOMPARE(drawing.atoms().first()->getMolecule()->getAtomsCount(), size);
    }

    void manyMoleculesComeBack()
    {
        QString text;
        for (int i = 0; i < 20000; ++i)
            text += QString(" MOLECULE 1 0\n  ATOM C %1 7 0 255 0 0\n END_MOLECULE\n").arg(i);
        text = workspace(text.chopped(1));
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(text));
        QCOMPARE(drawing.written(), text);
    }

    void manyBondsOnOneAtomComeBack()
    {
        constexpr int size = 20000;
        QString text = QString(" MOLECULE %1 %2\n").arg(size).arg(size - 1);
        for (int i = 0; i < size; ++i)
            text += QString("  ATOM C %1 %2 0 255 0 0\n").arg(i % 1000).arg(i / 1000);
        for (int i = 1; i < size; i += 2)
            text += QString("  BOND 0 %1 1 1\n").arg(i);
        for (int i = 2; i < size; i += 2)
            text += QString("  BOND %1 0 1 0\n").arg(i);
        text = workspace(text + " END_MOLECULE");
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(text));
        QCOMPARE(drawing.written(), text);
    }

    void manyBondsInOneCellAreRead()
    {
        constexpr int size = 10000;
        WorkspaceDrawing drawing;
        QVERIFY(drawing.read(workspace(rowOf(2, "100000", QString("BOND 0 1 1 1 ").repeated(size)) + marker)));
        QCOMPARE(drawing.bonds().size(), size);
        const QString text = drawing.written();
        QVERIFY(text.contains(QString(" MOLECULE 2 %1\n").arg(size)));
        QCOMPARE(text.count("BOND"), 1);
    }
};

QTEST_MAIN(test_KytFileIO)
#include "test_KytFileIO.moc"
