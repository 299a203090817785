#include "convert/formats/LineReader.h"

#include "convert/Notes.h"

#include <QTest>

namespace {

/// Gives its bytes in pieces of this size.
class SlowSource : public MemorySource {
public:
    SlowSource(const QByteArray& bytes, std::size_t piece)
        : MemorySource(bytes)
        , piece(piece)
    {
    }

    std::size_t read(char* buffer, std::size_t size) override
    {
        return MemorySource::read(buffer, std::min(size, piece));
    }

private:
    std::size_t piece;
};

/// Never ends: the same letter again and again.
class EndlessSource : public ByteSource {
public:
    std::size_t read(char* buffer, std::size_t size) override
    {
        std::memset(buffer, 'C', size);
        given += size;
        return size;
    }

    std::size_t given = 0;
};

class BrokenSource : public ByteSource {
public:
    std::size_t read(char*, std::size_t) override { throw ConversionError(QStringLiteral("broken")); }
};

QList<QByteArray> linesOf(ByteSource& source)
{
    LineReader reader(source, "test");
    QList<QByteArray> lines;
    QByteArray line;
    while (reader.next(line)) {
        lines.append(line);
        if (reader.number() != lines.size())
            return {};
    }
    return lines;
}

QString faultOf(ByteSource& source)
{
    try {
        linesOf(source);
    } catch (const ConversionError& fault) {
        return fault.text();
    }
    return {};
}

} // namespace

class test_LineReader : public QObject {
    Q_OBJECT

private slots:
    void linesEndInAnyWay_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<QByteArray>>("lines");
        const auto row = [](const char* name, const QByteArray& text, const QList<QByteArray>& lines) {
            QTest::newRow(name) << text << lines;
        };
        row("LF", "a\nb\n", {"a", "b"});
        row("CR LF", "a\r\nb\r\n", {"a", "b"});
        row("CR", "a\rb\r", {"a", "b"});
        row("all three", "a\nb\r\nc\rd", {"a", "b", "c", "d"});
        row("LF CR is two ends", "a\n\rb", {"a", "", "b"});
        row("two CR and LF", "a\r\r\nb", {"a", "", "b"});
        row("no end", "a", {"a"});
        row("nothing", "", {});
        row("one end", "\r", {""});
        row("blank lines", "\n\n", {"", ""});
        row("other separators are letters", "a\fb\v\xe2\x80\xa8", {"a\fb\v\xe2\x80\xa8"});
        row("a byte order mark is no text",
            "\xef\xbb\xbf"
            "C\nN",
            {"C", "N"});
        row("UTF-8", "\xc3\xa9thane", {"\xc3\xa9thane"});
        row("Latin-1", "\xe9thane", {"\xc3\xa9thane"});
        row("a line of each", "\xc3\xa9\n\xe9", {"\xc3\xa9", "\xc3\xa9"});
        row("cut off in a letter", "a\xc3", {"a\xc3\x83"});
        row("half a surrogate pair", "\xed\xa0\x80", {"\xc3\xad\xc2\xa0\xc2\x80"});
    }

    void linesEndInAnyWay()
    {
        QFETCH(QByteArray, text);
        MemorySource all(text);
        QTEST(linesOf(all), "lines");
        for (std::size_t piece = 1; piece < 4; ++piece) {
            SlowSource slow(text, piece);
            QTEST(linesOf(slow), "lines");
        }
    }

    void manyLinesAreReadInPieces()
    {
        QByteArray text;
        for (int i = 0; i < 30'000; ++i)
            text += QByteArray::number(i) + '\n';
        MemorySource source(text);
        const QList<QByteArray> lines = linesOf(source);
        QCOMPARE(lines.size(), 30'000);
        QCOMPARE(lines.back(), QByteArray("29999"));
    }

    void aLineHasALongestLength()
    {
        MemorySource longest(QByteArray(LineReader::maxLength, 'C') + "\nN");
        QCOMPARE(linesOf(longest).size(), 2);
        MemorySource longer("N\n" + QByteArray(LineReader::maxLength + 1, 'C') + "\nN");
        QCOMPARE(faultOf(longer), QString("test:2: line longer than 1048576 bytes"));
        EndlessSource endless;
        QCOMPARE(faultOf(endless), QString("test:1: line longer than 1048576 bytes"));
        QVERIFY(endless.given < 2 * std::size_t(LineReader::maxLength));
    }

    void faultsNameTheirLine()
    {
        MemorySource null(QByteArray("a\nb\0c\n", 6));
        QCOMPARE(faultOf(null), QString("test:2: unexpected null byte"));
        BrokenSource broken;
        QCOMPARE(faultOf(broken), QString("test:1: broken"));
    }

    void allThatFollowsIsTakenAsItIs()
    {
        MemorySource source("a\r\n\xe9\nb");
        LineReader reader(source, "test");
        QByteArray line;
        QVERIFY(reader.next(line));
        QCOMPARE(reader.takeAll(4), QByteArray("\n\xe9\nb"));
        QVERIFY(!reader.next(line));
    }

    void aFileHasALargestSize()
    {
        MemorySource source("abcde");
        LineReader reader(source, "test");
        QVERIFY_THROWS_EXCEPTION(ConversionError, reader.takeAll(4));
        EndlessSource endless;
        LineReader endlessReader(endless, "test");
        QVERIFY_THROWS_EXCEPTION(ConversionError, endlessReader.takeAll(1'000'000));
        QVERIFY(endless.given < 2'000'000);
    }
};

QTEST_APPLESS_MAIN(test_LineReader)
#include "test_LineReader.moc"
