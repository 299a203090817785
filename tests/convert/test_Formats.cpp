#include "convert/formats/Formats.h"

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
            {"kyt", "kyt kyf"}, {"kyf", "kyt kyf"},    {"mol", "mol mdl"},       {"mdl", "mol mdl"}, {"sdf", "sdf sd"},
            {"sd", "sdf sd"},   {"smi", "smi smiles"}, {"smiles", "smi smiles"}, {"csv", "csv"},     {"tsv", "tsv"},
            {"cdxml", "cdxml"}, {"svg", "svg"},        {"png", "png"},           {"pdf", "pdf"},
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
        row("a.kyt.gz", "kyt");
        row("A.SDF.GZ", "sdf");
        row("a.gz", "");
        row("a.sdf.gz.gz", "");
        row("a.kyt~", "");
        row("-", "");
        row("", "");
    }

    void whatStandsBehindTheLastDotIsTheFormat()
    {
        QFETCH(QString, fileName);
        QTEST(formatOfFile(fileName), "format");
    }

    void someFormatsCanOnlyBeReadOrWritten()
    {
        for (const char* name : {"pdf", "xyz", "inchi", "inchikey"})
            QVERIFY(!formatNamed(name)->read && formatNamed(name)->write);
        for (const char* name : {"csv", "tsv", "cdxml"})
            QVERIFY(formatNamed(name)->read && !formatNamed(name)->write);
        for (const char* name : {"kyt", "mol", "sdf", "smi", "svg", "png"})
            QVERIFY(formatNamed(name)->read && formatNamed(name)->write);
    }
};

QTEST_APPLESS_MAIN(test_Formats)
#include "test_Formats.moc"
