#include "convert/formats/Formats.h"
#include "convert/formats/TextLines.h"

#include <QTest>

Q_DECLARE_METATYPE(const Format*)

class test_Formats : public QObject {
    Q_OBJECT

private slots:
    void formatsHaveTheirNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("extensions");
        const std::pair<const char*, const char*> names[] = {
            {"kyt", "kyt kyf"}, {"kyf", "kyt kyf"}, {"mol", "mol mdl"},    {"mdl", "mol mdl"},
            {"sdf", "sdf sd"},  {"sd", "sdf sd"},   {"smi", "smi smiles"}, {"smiles", "smi smiles"},
            {"svg", "svg"},     {"png", "png"},     {"pdf", "pdf"},
        };
        for (const auto& [name, extensions] : names) {
            const QString text = name;
            const QString mixed = text.left(1).toUpper() + text.mid(1);
            for (const QString& spelling : {text, text.toUpper(), mixed})
                QTest::addRow("%s", qPrintable(spelling)) << spelling << QByteArray(extensions);
        }
    }

    void formatsHaveTheirNames()
    {
        QFETCH(QString, name);
        const Format* format = formatNamed(name);
        QVERIFY(format);
        QTEST(QByteArray(format->extensions), "extensions");
    }

    void otherNamesAreNone_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* none : {"", ".kyt", "kyt ", " kyt", "ky", "kytt", "mol2", "jpg", "*", "kyt kyf"})
            QTest::addRow("\"%s\"", none) << QString(none);
    }

    void otherNamesAreNone()
    {
        QFETCH(QString, name);
        QVERIFY(!formatNamed(name));
    }

    void whatStandsBehindTheLastDotIsTheFormat_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<const Format*>("format");
        const auto row = [](const char* fileName, const char* format) {
            QTest::newRow(fileName) << QString(fileName) << formatNamed(format);
        };
        row("a.kyt", "kyt");
        row("A.MOL", "mol");
        row("a.mol.sdf", "sdf");
        row("a.sdf.mol", "mol");
        row("/a folder/b.smi", "smi");
        row("x.mol/y.svg", "svg");
        row("%03d.png", "png");
        row(".pdf", "pdf");
        row("x.mol/y", "");
        row("kyt", "");
        row("a.", "");
        row("a.kyt.gz", "");
        row("a.kyt~", "");
        row("-", "");
        row("", "");
    }

    void whatStandsBehindTheLastDotIsTheFormat()
    {
        QFETCH(QString, fileName);
        QTEST(formatOfFile(fileName), "format");
    }

    void pdfFilesCanOnlyBeWritten()
    {
        QVERIFY(!formatNamed("pdf")->read && formatNamed("pdf")->write);
        for (const char* name : {"kyt", "mol", "sdf", "smi", "svg", "png"})
            QVERIFY(formatNamed(name)->read && formatNamed(name)->write);
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
