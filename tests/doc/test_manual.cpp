#include "tests/doc/WorkspaceDrawing.h"
#include "tests/support/Files.h"
#include "tests/support/Near.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

namespace {

QString textOf(const QString& fileName)
{
    return QString::fromUtf8(readFile(fileName));
}

/// The workspace in the manual's fenced block.
QString example()
{
    static const QRegularExpression block(
        "^```kyt\n(.*?)^```$", QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    return block.match(textOf("docs/manual.md")).captured(1);
}

/// A heading's name in links.
QString anchorOf(const QString& heading)
{
    QString anchor = heading.toLower();
    anchor.remove(QRegularExpression("[^\\w\\- ]"));
    return anchor.replace(' ', '-');
}

QStringList anchorsIn(const QString& text)
{
    static const QRegularExpression headings("^#+ (.*)$", QRegularExpression::MultilineOption);
    QStringList anchors;
    for (const QRegularExpressionMatch& match : headings.globalMatch(text))
        anchors << anchorOf(match.captured(1));
    return anchors;
}

/// A drawing with the manual's example in it.
class ReadExample : public WorkspaceDrawing {
public:
    ReadExample()
        : readToTheEnd(read(example()))
    {
    }

    bool readToTheEnd;
};

} // namespace

class test_manual : public QObject {
    Q_OBJECT

private slots:
    void theExampleIsThere()
    {
        QVERIFY(example().startsWith("KYTFILE\n"));
        QVERIFY(example().endsWith("END_KYTFILE\n"));
    }

    void theExampleHoldsWhatTheTextSays()
    {
        const ReadExample read;
        QVERIFY(read.readToTheEnd);
        const QList<KytAtom*> atoms = read.atoms();
        QCOMPARE(atoms.size(), 6);

        KytAtom* carbon = atoms[0];
        KytAtom* oxygen = atoms[1];
        QCOMPARE(carbon->getSymbol(), QString("C"));
        QCOMPARE(oxygen->getSymbol(), QString("O"));
        QCOMPARE(carbon->getBondCount(), 3);
        const KytBond* carbonyl = carbon->isConnected(oxygen);
        QVERIFY(carbonyl);
        QCOMPARE(carbonyl->bondCount, 2);

        KytAtom* nitrogen = atoms[4];
        KytAtom* hydrogen = atoms[5];
        QCOMPARE(nitrogen->getSymbol(), QString("N"));
        QCOMPARE(carbon->getMolecule(), oxygen->getMolecule());
        QVERIFY(carbon->getMolecule() != nitrogen->getMolecule());
        const KytBond* wedge = nitrogen->isConnected(hydrogen);
        QVERIFY(wedge && wedge->stereoBond);
        QCOMPARE(wedge->bond1Type, KYTBT_StereoUp);
        NEAR(wedge->stereoBond->getAngle(), 45, 0.001);
        QCOMPARE(hydrogen->x() - nitrogen->x(), 30.0);
        QCOMPARE(hydrogen->getAtomZ(), 30.0F);
    }

    void theExampleIsWrittenAsTheProgramWritesIt() { QCOMPARE(ReadExample().written(), example()); }

    void everyLinkLeadsSomewhere_data()
    {
        QTest::addColumn<QString>("page");
        for (const char* page : {"README.md", "CONTRIBUTING.md", "CHANGELOG.md", "lib/README.md"})
            QTest::newRow(page) << page;
        for (const QString& page : QDir("docs").entryList({"*.md"}))
            QTest::newRow(qPrintable(page)) << "docs/" + page;
    }

    void everyLinkLeadsSomewhere()
    {
        QFETCH(QString, page);
        static const QRegularExpression links("\\]\\(([^)]+)\\)");
        const QString text = textOf(page);
        QVERIFY(QFileInfo(page).isReadable());
        for (const QRegularExpressionMatch& match : links.globalMatch(text)) {
            const QString link = match.captured(1).simplified();
            if (link.contains("://"))
                continue;
            const QString file = link.section('#', 0, 0);
            const QString target = file.isEmpty() ? page : QFileInfo(page).path() + '/' + file;
            QVERIFY2(QFileInfo::exists(target), qPrintable(link));
            if (link.contains('#'))
                QVERIFY2(anchorsIn(textOf(target)).contains(link.section('#', 1)), qPrintable(link));
        }
    }

    void everyPictureIsShownSomewhere()
    {
        const QString pages = textOf("README.md") + textOf("docs/manual.md");
        const QStringList pictures = QDir("docs/pictures").entryList({"*.png"});
        QVERIFY(!pictures.isEmpty());
        for (const QString& picture : pictures)
            QVERIFY2(pages.contains("pictures/" + picture), qPrintable(picture));
    }

    void everyMessageExplainedIsOneOfTheProgram()
    {
        static const QRegularExpression rows("^\\| \"(.+)\" \\|", QRegularExpression::MultilineOption);
        const QString known =
            textOf("translations/kytstudio_de.ts").replace("&quot;", "\"").replace("&apos;", "'").replace("&amp;", "&");
        int explained = 0;
        for (const QRegularExpressionMatch& match : rows.globalMatch(textOf("docs/manual.md"))) {
            const QString message = match.captured(1);
            QVERIFY2(known.contains('>' + message) || known.contains('\n' + message + '<'), qPrintable(message));
            ++explained;
        }
        QVERIFY(explained > 20);
    }
};

QTEST_MAIN(test_manual)
#include "test_manual.moc"
