#include <QFile>
#include <QMimeDatabase>
#include <QTest>

/// How the desktop's database of file types, as found by XDG_DATA_DIRS, tells the program's files.
class test_MimeType : public QObject {
    Q_OBJECT

private slots:
    void samplesAndLibraryMoleculesAreTold_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* file : {"data/alanine.kyt", "data/caffeine.kyt", "lib/benzene.kyf", "lib/water.kyf"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    void samplesAndLibraryMoleculesAreTold()
    {
        QFETCH(QString, file);
        QVERIFY(QFile::exists(file));
        QCOMPARE(database.mimeTypeForFile(file).name(), workspace);
        QCOMPARE(database.mimeTypeForFile(file, QMimeDatabase::MatchContent).name(), workspace);
    }

    void theEndingsAreKnown()
    {
        QCOMPARE(database.mimeTypeForFile(QStringLiteral("a.kyt"), QMimeDatabase::MatchExtension).name(), workspace);
        QCOMPARE(database.mimeTypeForFile(QStringLiteral("a.kyf"), QMimeDatabase::MatchExtension).name(), workspace);
    }

    void molfilesAreKnown()
    {
        const QMimeType type = database.mimeTypeForFile(QStringLiteral("a.mol"), QMimeDatabase::MatchExtension);
        QCOMPARE(type.name(), QStringLiteral("chemical/x-mdl-molfile"));
        QVERIFY(type.inherits(QStringLiteral("text/plain")));
    }

    void theFirstWordIsKnownWithoutAnEnding()
    {
        QCOMPARE(database.mimeTypeForFileNameAndData(QStringLiteral("a"), QByteArray("KYTFILE\nEND_KYTFILE\n")).name(),
                 workspace);
    }

    void otherTextIsNotTakenForAWorkspace()
    {
        QCOMPARE(database.mimeTypeForData(QByteArray("A KYTFILE\n")).name(), QStringLiteral("text/plain"));
    }

    void aWorkspaceIsTextToo() { QVERIFY(database.mimeTypeForName(workspace).inherits(QStringLiteral("text/plain"))); }

private:
    const QString workspace = QStringLiteral("application/x-kytstudio-workspace");
    const QMimeDatabase database;
};

QTEST_GUILESS_MAIN(test_MimeType)
#include "test_MimeType.moc"
