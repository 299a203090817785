#include "convert/formats/Gzip.h"

#include "convert/Notes.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

namespace {

/// Compressed by another program.
QByteArray byGzip(const QByteArray& text, const QStringList& arguments = {"-c"})
{
    QProcess gzip;
    gzip.start("gzip", arguments);
    gzip.write(text);
    gzip.closeWriteChannel();
    return gzip.waitForFinished() ? gzip.readAllStandardOutput() : QByteArray();
}

QByteArray compressed(const QByteArray& text)
{
    GzipWriter writer;
    QByteArray bytes;
    for (qsizetype at = 0; at < text.size(); at += 1000)
        bytes += writer.add(text.mid(at, 1000));
    return bytes + writer.finish();
}

/// What a reader gives, in pieces of `piece` bytes.
QByteArray readBack(const QByteArray& bytes, std::size_t piece = 4096)
{
    MemorySource source(bytes);
    GzipReader reader(source);
    QByteArray text;
    std::vector<char> buffer(piece);
    while (const std::size_t count = reader.read(buffer.data(), piece))
        text.append(buffer.data(), qsizetype(count));
    return text;
}

QString faultOf(const QByteArray& bytes)
{
    try {
        readBack(bytes, 1 << 20);
    } catch (const ConversionError& fault) {
        return fault.text();
    }
    return {};
}

/// Text that compresses badly, so that it has several blocks.
QByteArray randomText(int size)
{
    QRandomGenerator random(1);
    QByteArray text;
    while (text.size() < size)
        text += QByteArray::number(random.generate(), 36) + '\n';
    return text;
}

} // namespace

class test_Gzip : public QObject {
    Q_OBJECT

private slots:
    void textsComeBack_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("one byte") << QByteArray("C");
        QTest::newRow("a line") << QByteArray("CCO ethanol\n");
        QTest::newRow("what starts like a gzip file") << QByteArray("\x1f\x8b");
        QTest::newRow("much") << randomText(500'000);
    }

    void textsComeBack()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(readBack(compressed(text)), text);
        QCOMPARE(readBack(byGzip(text)), text);
        QCOMPARE(readBack(byGzip(text), 7), text);
        QCOMPARE(byGzip(compressed(text), {"-dc"}), text);
    }

    void whatIsNotCompressedStaysAsItIs_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("one byte") << QByteArray("C");
        QTest::newRow("the first byte of a gzip file alone") << QByteArray("\x1f");
        QTest::newRow("a line") << QByteArray("CCO ethanol\n");
        QTest::newRow("much") << randomText(200'000);
    }

    void whatIsNotCompressedStaysAsItIs()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(readBack(text), text);
    }

    void severalFilesAreOne()
    {
        QCOMPARE(readBack(byGzip("one\n") + compressed("two\n") + byGzip("") + byGzip("three")),
                 QByteArray("one\ntwo\nthree"));
        QCOMPARE(readBack(byGzip("one\n") + QByteArray(600, '\0')), QByteArray("one\n"));
    }

    void damageIsNoticed_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("fault");
        const QByteArray whole = byGzip(randomText(100'000));
        const QString damaged = "damaged gzip file";
        const QString cutOff = "unexpected end of the gzip file";
        QTest::newRow("cut off in the header") << whole.left(5) << cutOff;
        QTest::newRow("cut off in the middle") << whole.left(whole.size() / 2) << cutOff;
        QTest::newRow("cut off before its last byte") << whole.chopped(1) << cutOff;
        QTest::newRow("a byte changed") << QByteArray(whole).replace(5000, 2, "\x01\x02") << damaged;
        QTest::newRow("another checksum") << QByteArray(whole).replace(whole.size() - 8, 4, "abcd") << damaged;
        QTest::newRow("another compression") << QByteArray("\x1f\x8b\x07\0\0\0\0\0\0\0abc", 13) << damaged;
        QTest::newRow("text behind it") << whole + "text" << damaged;
    }

    void damageIsNoticed()
    {
        QFETCH(QByteArray, bytes);
        QTEST(faultOf(bytes), "fault");
    }

    void aBombIsRefused()
    {
        constexpr int mebibyte = 1024 * 1024;
        QCOMPARE(faultOf(compressed(QByteArray(60 * mebibyte, '\n'))), QString());
        QCOMPARE(faultOf(compressed(QByteArray(80 * mebibyte, '\n'))),
                 QString("gzip file expands to more than 200 times its size (limit)"));
    }
};

QTEST_APPLESS_MAIN(test_Gzip)
#include "test_Gzip.moc"
