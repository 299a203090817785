#include "convert/formats/Cdxml.h"

#include "convert/chemistry/StartChemistry.h"
#include "tests/convert/Converting.h"

#include <QTest>

namespace {

/// A document with a bond length of 15 points.
QByteArray documentWith(const QByteArray& objects)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<CDXML BondLength=\"15\"><page>\n" + objects
        + "</page></CDXML>\n";
}

/// A document with one fragment.
QByteArray fragmentWith(const QByteArray& contents)
{
    return documentWith("<fragment id=\"1\">\n" + contents + "</fragment>\n");
}

/// Ethanol, whose atoms have the ids 2 to 4, and more that is in its fragment.
QByteArray ethanolWith(const QByteArray& contents = {}, const QByteArray& bond = "<b B=\"2\" E=\"3\"/>\n")
{
    return fragmentWith("<n id=\"2\" p=\"0 0\"/>\n<n id=\"3\" p=\"15 0\"/>\n"
                        "<n id=\"4\" p=\"15 15\" Element=\"8\" NumHydrogens=\"1\"><t><s>OH</s></t></n>\n"
                        + bond + "<b B=\"3\" E=\"4\"/>\n" + contents);
}

std::vector<Sketch> sketchesOf(const QByteArray& text)
{
    return read(text, "cdxml");
}

QByteArray smilesOf(const QByteArray& text)
{
    return write(sketchesOf(text), "smi");
}

QStringList warningsOf(const QByteArray& text)
{
    Notes notes;
    readCdxml({.text = text}, "test", notes);
    return notes.lines();
}

} // namespace

class test_Cdxml : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void coordinatesAreThoseOfTheDocument()
    {
        const std::vector<Sketch> sketches = sketchesOf(ethanolWith());
        QCOMPARE(sketches.size(), 1U);
        const std::vector<SketchAtom>& atoms = sketches[0].molecules[0].atoms;
        QCOMPARE(atoms.size(), 3U);
        QCOMPARE(atoms[1].x - atoms[0].x, 30.0);
        QCOMPARE(atoms[1].y - atoms[0].y, 0.0);
        QCOMPARE(atoms[2].y - atoms[1].y, 30.0); // y points down in both
        QCOMPARE(smilesOf(ethanolWith()), QByteArray("CCO\n"));
    }

    void atomsHaveElementIsotopeAndCharge_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("carbon") << QByteArray() << "C";
        QTest::newRow("element") << QByteArray("Element=\"7\"") << "N";
        QTest::newRow("charge") << QByteArray("Element=\"8\" Charge=\"-1\"") << "O-";
        QTest::newRow("isotope") << QByteArray("Isotope=\"13\"") << "13C";
        QTest::newRow("all") << QByteArray("Element=\"20\" Charge=\"2\" Isotope=\"48\"") << "48Ca2+";
        QTest::newRow("named ordinary") << QByteArray("NodeType=\"Element\" Element=\"16\"") << "S";
        QTest::newRow("attachment point") << QByteArray("NodeType=\"ExternalConnectionPoint\"") << "*";
    }

    void atomsHaveElementIsotopeAndCharge()
    {
        QFETCH(QByteArray, attributes);
        const std::vector<Sketch> sketches = sketchesOf(fragmentWith("<n id=\"2\" p=\"0 0\" " + attributes + "/>"));
        QTEST(sketches[0].molecules[0].atoms[0].symbol, "symbol");
    }

    void labelsAreKept_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::addColumn<QString>("symbol");
        const auto row = [](const char* name, const QByteArray& attributes, const QByteArray& label,
                            const char* symbol) {
            QTest::newRow(name) << QByteArray("<n id=\"2\" p=\"0 0\" " + attributes + "><t><s>" + label
                                              + "</s></t></n>")
                                << QString(symbol);
        };
        row("generic nickname", "NodeType=\"GenericNickname\" GenericNickname=\"R\"", "R1", "R1");
        row("generic nickname without text", "NodeType=\"GenericNickname\" GenericNickname=\"R\"", "", "R");
        row("bare nickname", "NodeType=\"Nickname\"", "Ph", "Ph");
        row("bare fragment", "NodeType=\"Fragment\"", "COOH", "COOH");
        row("in pieces", "NodeType=\"Nickname\"", "CO</s><s face=\"32\">2</s><s>Me", "CO2Me");
        row("unspecified", "NodeType=\"Unspecified\"", "lig and", "lig_and");
        row("formula", "NodeType=\"Formula\"", "C6H13", "C6H13");
        row("list", "NodeType=\"ElementList\" ElementList=\"7 8\"", "[N,O]", "[N,O]");
    }

    void labelsAreKept()
    {
        QFETCH(QByteArray, node);
        QTEST(sketchesOf(fragmentWith(node))[0].molecules[0].atoms[0].symbol, "symbol");
    }

    void nicknamesWithAStructureAreReplacedByIt()
    {
        const QByteArray structure = "<n id=\"9\" p=\"30 0\" NodeType=\"Nickname\"><t>CO2Me</t><fragment id=\"10\">\n"
                                     "<n id=\"11\" p=\"30 0\"/><n id=\"12\" p=\"30 15\" Element=\"8\"/>"
                                     "<n id=\"13\" p=\"45 0\" Element=\"8\"/><n id=\"14\" p=\"60 0\"/>"
                                     "<n id=\"15\" p=\"15 0\" NodeType=\"ExternalConnectionPoint\"/>\n"
                                     "<b B=\"11\" E=\"12\" Order=\"2\"/><b B=\"11\" E=\"13\"/><b B=\"13\" E=\"14\"/>"
                                     "<b B=\"15\" E=\"11\"/></fragment></n>\n";
        QCOMPARE(smilesOf(ethanolWith(structure + "<b B=\"2\" E=\"9\"/>")), QByteArray("COC(=O)CCO\n"));
        // Without a bond from outside, the attachment point is an atom.
        QCOMPARE(smilesOf(fragmentWith(structure)), QByteArray("*C(=O)OC\n"));
    }

    void severalAttachmentPointsKeepTheirOrder()
    {
        const auto linked = [](const QByteArray& ordering) {
            return fragmentWith("<n id=\"2\" p=\"0 0\" Element=\"9\"/><n id=\"3\" p=\"60 0\" Element=\"17\"/>"
                                "<n id=\"9\" p=\"30 0\" NodeType=\"Nickname\""
                                + ordering
                                + "><t>CH2O</t>"
                                  "<fragment id=\"10\" ConnectionOrder=\"13 14\"><n id=\"11\" p=\"20 0\"/>"
                                  "<n id=\"12\" p=\"40 0\" Element=\"8\"/>"
                                  "<n id=\"13\" p=\"10 0\" NodeType=\"ExternalConnectionPoint\"/>"
                                  "<n id=\"14\" p=\"50 0\" NodeType=\"ExternalConnectionPoint\"/>"
                                  "<b B=\"13\" E=\"11\"/><b B=\"11\" E=\"12\"/><b B=\"12\" E=\"14\"/></fragment></n>"
                                  "<b id=\"20\" B=\"2\" E=\"9\"/><b id=\"21\" B=\"9\" E=\"3\"/>");
        };
        QCOMPARE(smilesOf(linked(" BondOrdering=\"20 21\"")), QByteArray("FCOCl\n"));
        QCOMPARE(smilesOf(linked(" BondOrdering=\"21 20\"")), QByteArray("FOCCl\n"));
        QVERIFY_THROWS_EXCEPTION(ConversionError, smilesOf(linked("")));
    }

    void bondsHaveTheirOrder_data()
    {
        QTest::addColumn<QByteArray>("order");
        QTest::addColumn<std::vector<KytBondType>>("kinds");
        using Kinds = std::vector<KytBondType>;
        QTest::newRow("1") << QByteArray("1") << Kinds{KYTBT_SingleBond};
        QTest::newRow("2") << QByteArray("2") << Kinds{KYTBT_SingleBond, KYTBT_SingleBond};
        QTest::newRow("3") << QByteArray("3") << Kinds{KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond};
        QTest::newRow("1.5") << QByteArray("1.5") << Kinds{KYTBT_SingleBond, KYTBT_DashedLine};
        QTest::newRow("hydrogen") << QByteArray("hydrogen") << Kinds{KYTBT_DashedLine};
        QTest::newRow("dative") << QByteArray("dative") << Kinds{KYTBT_SingleBond};
    }

    void bondsHaveTheirOrder()
    {
        QFETCH(QByteArray, order);
        const QByteArray bond = "<b B=\"2\" E=\"3\" Order=\"" + order + "\"/>";
        QTEST(sketchesOf(ethanolWith("", bond))[0].molecules[0].bonds[0].kinds, "kinds");
    }

    void wedgesStartWhereTheyAreNarrow_data()
    {
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<KytBondType>("kind");
        QTest::addColumn<int>("from");
        QTest::newRow("up from its begin") << QByteArray("WedgeBegin") << KYTBT_StereoUp << 0;
        QTest::newRow("up from its end") << QByteArray("WedgeEnd") << KYTBT_StereoUp << 1;
        QTest::newRow("down from its begin") << QByteArray("WedgedHashBegin") << KYTBT_StereoDown << 0;
        QTest::newRow("down from its end") << QByteArray("WedgedHashEnd") << KYTBT_StereoDown << 1;
        QTest::newRow("solid") << QByteArray("Solid") << KYTBT_SingleBond << 0;
        QTest::newRow("bold") << QByteArray("Bold") << KYTBT_SingleBond << 0;
    }

    void wedgesStartWhereTheyAreNarrow()
    {
        QFETCH(QByteArray, display);
        const QByteArray bond = "<b B=\"2\" E=\"3\" Display=\"" + display + "\"/>";
        const SketchBond wedge = sketchesOf(ethanolWith("", bond))[0].molecules[0].bonds[0];
        QTEST(wedge.kinds.front(), "kind");
        QTEST(wedge.from, "from");
    }

    // Alanine with the amine above, the acid to the lower right and the methyl group to the lower left. With the amine
    // towards the viewer, they follow clockwise: R, which is the D form.
    void aDrawnStereocentreIsThatOfTheMolecule()
    {
        const auto alanine = [](const QByteArray& display) {
            return fragmentWith(
                "<n id=\"2\" p=\"0 0\"/><n id=\"3\" p=\"0 -15\" Element=\"7\"/><n id=\"4\" p=\"-13 7.5\"/>"
                "<n id=\"5\" p=\"13 7.5\"/><n id=\"6\" p=\"13 22.5\" Element=\"8\"/>"
                "<n id=\"7\" p=\"26 0\" Element=\"8\"/>"
                "<b B=\"2\" E=\"3\" Display=\""
                + display
                + "\"/><b B=\"2\" E=\"4\"/><b B=\"2\" E=\"5\"/>"
                  "<b B=\"5\" E=\"6\" Order=\"2\"/><b B=\"5\" E=\"7\"/>");
        };
        QCOMPARE(smilesOf(alanine("WedgeBegin")), QByteArray("C[C@@H](N)C(=O)O\n"));
        QCOMPARE(smilesOf(alanine("WedgedHashBegin")), QByteArray("C[C@H](N)C(=O)O\n"));
    }

    void wavyBondsLeaveADoubleBondOpen_data()
    {
        QTest::addColumn<QByteArray>("single");
        QTest::addColumn<QByteArray>("both");
        QTest::addColumn<QByteArray>("smiles");
        QTest::newRow("none") << QByteArray() << QByteArray() << QByteArray("C/C=C/C\n");
        QTest::newRow("a single bond") << QByteArray(" Display=\"Wavy\"") << QByteArray() << QByteArray("CC=CC\n");
        QTest::newRow("the double bond") << QByteArray() << QByteArray(" Display=\"Wavy\"") << QByteArray("CC=CC\n");
    }

    void wavyBondsLeaveADoubleBondOpen()
    {
        QFETCH(QByteArray, single);
        QFETCH(QByteArray, both);
        const QByteArray butene = fragmentWith(
            "<n id=\"2\" p=\"0 0\"/><n id=\"3\" p=\"13 7\"/><n id=\"4\" p=\"26 0\"/><n id=\"5\" p=\"39 7\"/>"
            "<b B=\"2\" E=\"3\""
            + single + "/><b B=\"3\" E=\"4\" Order=\"2\"" + both + "/><b B=\"4\" E=\"5\"/>");
        QTEST(smilesOf(butene), "smiles");
    }

    void fragmentsAreMoleculesOfOneDrawing()
    {
        const QByteArray two = documentWith("<group><fragment id=\"1\"><n id=\"2\" p=\"0 0\"/></fragment></group>"
                                            "<fragment id=\"3\"><n id=\"4\" p=\"150 0\" Element=\"8\"/></fragment>");
        const std::vector<Sketch> sketches = sketchesOf(two);
        QCOMPARE(sketches.size(), 1U);
        QCOMPARE(sketches[0].molecules.size(), 2U);
        QCOMPARE(sketches[0].molecules[1].atoms[0].x - sketches[0].molecules[0].atoms[0].x, 300.0);
    }

    void whatADrawingCannotHoldIsTold_data()
    {
        QTest::addColumn<QByteArray>("object");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char* name, const QByteArray& object, const char* warning) {
            QTest::newRow(name) << object << QString(warning);
        };
        row("arrow", "<arrow id=\"50\" Head3D=\"1 2 0\"/>", "arrows: discarded, not supported in drawings (1)");
        row("older arrow", "<graphic GraphicType=\"Line\" ArrowType=\"FullHead\"/>",
            "arrows: discarded, not supported in drawings (1)");
        row("plus sign", "<t p=\"1 2\"><s>+</s></t>", "plus signs: discarded, not supported in drawings (1)");
        row("plus symbol", "<graphic GraphicType=\"Symbol\" SymbolType=\"Plus\"/>",
            "plus signs: discarded, not supported in drawings (1)");
        row("text", "<t p=\"1 2\"><s>80</s><s>%</s></t>", "texts: discarded, not supported in drawings (1)");
        row("curve", "<curve/>", "other objects: discarded, not supported in drawings (1)");
        row("radical", "<n id=\"50\" p=\"0 50\" Radical=\"Doublet\"/>",
            "unpaired electrons: discarded, not supported in drawings (1)");
        row("hydrogens", "<n id=\"50\" p=\"0 50\" NumHydrogens=\"2\"/>",
            "atoms with an unusual number of hydrogens: read with the usual number (1)");
    }

    void whatADrawingCannotHoldIsTold()
    {
        QFETCH(QByteArray, object);
        QFETCH(QString, warning);
        QCOMPARE(warningsOf(ethanolWith(object)), QStringList(warning));
    }

    void whatIsRepeatedOrBelongsToAtomsIsNotTold()
    {
        QCOMPARE(warningsOf(ethanolWith("<graphic SupersededBy=\"50\" GraphicType=\"Line\" ArrowType=\"FullHead\"/>"
                                        "<objecttag><t>1</t></objecttag>")),
                 QStringList());
    }

    void badDocumentsAreRefusedWithTheirLine_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char* name, const QByteArray& text, const char* fault) {
            QTest::newRow(name) << text << QString(fault);
        };
        row("empty", "", "test:1: invalid XML");
        row("no XML", "CCO", "test:1: invalid XML");
        row("cut off", ethanolWith().left(200), "test:7: invalid XML");
        row("another document", "<svg/>", "test:1: not a CDXML document");
        row("no molecule", documentWith(""), "test:1: contains no molecule");
        row("no such node", ethanolWith("<b B=\"2\" E=\"77\"/>\n"), "test:9: bond refers to non-existent node \"77\"");
        row("no end", ethanolWith("<b B=\"2\"/>\n"), "test:9: bond refers to non-existent node \"\"");
        row("to itself", ethanolWith("<b B=\"2\" E=\"2\"/>\n"), "test:9: bond from an atom to itself");
        row("twice", ethanolWith("<b B=\"3\" E=\"2\"/>\n"), "test:9: duplicate bond between two atoms");
        row("order", ethanolWith("<b B=\"2\" E=\"4\" Order=\"7\"/>\n"), "test:9: bond of order \"7\": not supported");
        row("same id", ethanolWith("<n id=\"2\" p=\"9 9\"/>\n"), "test:9: second node with the id 2");
        row("no position", ethanolWith("<n id=\"9\"/>\n"), "test:9: atom without a position");
        row("half a position", ethanolWith("<n id=\"9\" p=\"1\"/>\n"), "test:9: position of an atom without two");
        row("no number", ethanolWith("<n id=\"9\" p=\"1 x\"/>\n"), "test:9: invalid number \"x\"");
        row("not finite", ethanolWith("<n id=\"9\" p=\"1 nan\"/>\n"), "test:9: invalid number \"nan\"");
        row("far away", ethanolWith("<n id=\"9\" p=\"1 1e300\"/>\n"), "test:9: position of an atom out of range");
        row("no element", ethanolWith("<n id=\"9\" p=\"1 1\" Element=\"119\"/>\n"), "test:9: Element must be");
        row("unknown kind of node", ethanolWith("<n id=\"9\" p=\"1 1\" NodeType=\"VariableAttachment\"/>\n"),
            "test:9: node of type VariableAttachment: not supported");
        row("no label", ethanolWith("<n id=\"9\" p=\"1 1\" NodeType=\"Nickname\"/>\n"),
            "test:9: node of type Nickname without a label");
        row("no bond length", documentWith("").replace("\"15\"", "\"0\""), "test:2: the document's bond length");
    }

    void badDocumentsAreRefusedWithTheirLine()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, fault);
        try {
            sketchesOf(text);
            QFAIL("read");
        } catch (const ConversionError& error) {
            QVERIFY2(error.text().startsWith(fault), qPrintable(error.text()));
        }
    }

    void deepNestingDoesNotExhaustTheStack()
    {
        QByteArray text;
        for (int i = 0; i < 200'000; ++i)
            text += "<group>";
        QVERIFY_THROWS_EXCEPTION(ConversionError, sketchesOf(documentWith(text)));
    }
};

QTEST_MAIN(test_Cdxml)
#include "test_Cdxml.moc"
