#include "convert/Formats.h"

#include <QTest>

Q_DECLARE_METATYPE(std::optional<Format>)

class test_Formats : public QObject {
    Q_OBJECT

private slots:
    void formatsHaveTheirNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<std::optional<Format>>("format");
        const std::pair<const char*, Format> names[] = {
            {"kyt", Format::Workspace}, {"kyf", Format::Workspace}, {"mol", Format::Molfile},
            {"mdl", Format::Molfile},   {"sdf", Format::SdFile},    {"sd", Format::SdFile},
            {"smi", Format::Smiles},    {"smiles", Format::Smiles}, {"svg", Format::Svg},
            {"png", Format::Png},       {"pdf", Format::Pdf},
        };
        for (const auto& [name, format] : names) {
            const QString text = name;
            QTest::newRow(name) << text << std::optional(format);
            QTest::addRow("%s", qPrintable(text.toUpper())) << text.toUpper() << std::optional(format);
            const QString mixed = text.left(1).toUpper() + text.mid(1);
            QTest::addRow("%s", qPrintable(mixed)) << mixed << std::optional(format);
        }
        for (const char* none : {"", ".kyt", "kyt ", " kyt", "ky", "kytt", "mol2", "jpg", "*"})
            QTest::addRow("\"%s\" is none", none) << QString(none) << std::optional<Format>();
    }

    void formatsHaveTheirNames()
    {
        QFETCH(QString, name);
        QFETCH(std::optional<Format>, format);
        QCOMPARE(formatNamed(name), format);
    }

    void whatStandsBehindTheLastDotIsTheFormat_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<std::optional<Format>>("format");
        const auto row = [](const char* fileName, std::optional<Format> format) {
            QTest::newRow(fileName) << QString(fileName) << format;
        };
        row("a.kyt", Format::Workspace);
        row("A.MOL", Format::Molfile);
        row("a.mol.sdf", Format::SdFile);
        row("a.sdf.mol", Format::Molfile);
        row("/a folder/b.smi", Format::Smiles);
        row("x.mol/y.svg", Format::Svg);
        row("%03d.png", Format::Png);
        row(".pdf", Format::Pdf);
        row("x.mol/y", {});
        row("kyt", {});
        row("a.", {});
        row("a.kyt.gz", {});
        row("a.kyt~", {});
        row("-", {});
        row("", {});
    }

    void whatStandsBehindTheLastDotIsTheFormat()
    {
        QFETCH(QString, fileName);
        QFETCH(std::optional<Format>, format);
        QCOMPARE(formatOfFile(fileName), format);
    }

    void threeFormatsArePictures()
    {
        for (const Format format : {Format::Svg, Format::Png, Format::Pdf})
            QVERIFY(isPicture(format));
        for (const Format format : {Format::Workspace, Format::Molfile, Format::SdFile, Format::Smiles})
            QVERIFY(!isPicture(format));
    }

    void linesEndInAnyWay_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<QByteArray>>("lines");
        const auto row = [](const char* name, const QByteArray& text, const QList<QByteArray>& lines) {
            QTest::newRow(name) << text << lines;
        };
        row("LF", "a\nb\n", {"a", "b", ""});
        row("CR LF", "a\r\nb\r\n", {"a", "b", ""});
        row("CR", "a\rb\r", {"a", "b", ""});
        row("all three", "a\nb\r\nc\rd", {"a", "b", "c", "d"});
        row("LF CR is two ends", "a\n\rb", {"a", "", "b"});
        row("two CR and LF", "a\r\r\nb", {"a", "", "b"});
        row("no end", "a", {"a"});
        row("nothing", "", {""});
        row("one end", "\r", {"", ""});
        row("other separators are letters", "a\fb\v\xe2\x80\xa8", {"a\fb\v\xe2\x80\xa8"});
    }

    void linesEndInAnyWay()
    {
        QFETCH(QByteArray, text);
        QTEST(linesOf(text), "lines");
    }

    void textIsUtf8OrElseLatin1_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("UTF-8") << QByteArray("\xc3\xa9thane") << QByteArray("\xc3\xa9thane");
        QTest::newRow("Latin-1") << QByteArray("\xe9thane") << QByteArray("\xc3\xa9thane");
        QTest::newRow("both, so all is Latin-1")
            << QByteArray("\xc3\xa9 \xe9") << QByteArray("\xc3\x83\xc2\xa9 \xc3\xa9");
        QTest::newRow("cut off in a letter") << QByteArray("a\xc3") << QByteArray("a\xc3\x83");
        QTest::newRow("half a surrogate pair") << QByteArray("\xed\xa0\x80") << QByteArray("\xc3\xad\xc2\xa0\xc2\x80");
        QTest::newRow("beyond 16 bits") << QByteArray("\xf0\x9f\x98\x80") << QByteArray("\xf0\x9f\x98\x80");
        QTest::newRow("a byte order mark is no text") << QByteArray("\xef\xbb\xbf"
                                                                    "C")
                                                      << QByteArray("C");
        QTest::newRow("a null byte is kept") << QByteArray("a\0b", 3) << QByteArray("a\0b", 3);
    }

    void textIsUtf8OrElseLatin1()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, line);
        QCOMPARE(linesOf(text), QList<QByteArray>{line});
    }
};

QTEST_APPLESS_MAIN(test_Formats)
#include "test_Formats.moc"
