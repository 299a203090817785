#include "tests/support/Drawing.h"
#include "view/ElementTyping.h"

#include <QTest>

#include <limits>

namespace {

struct Letter {
    char letter;
    quint64 time;
    int atom = 0;
};

using Letters = QList<Letter>;

} // namespace

Q_DECLARE_METATYPE(Letters)

class test_ElementTyping : public QObject {
    Q_OBJECT

private slots:
    void lettersMakeSymbols_data()
    {
        QTest::addColumn<Letters>("letters");
        QTest::addColumn<QString>("symbols"); // of each letter; "." for none, "+" before one that completes
        const auto row = [](const char* name, const Letters& letters, const char* symbols) {
            QTest::newRow(name) << letters << QString(symbols);
        };
        row("an element of one letter", {{'N', 0}}, "N");
        row("a small letter", {{'n', 0}}, "N");
        row("two letters", {{'c', 0}, {'l', 100}}, "C +Cl");
        row("two capitals", {{'B', 0}, {'R', 100}}, "B +Br");
        row("a first letter that is no element", {{'z', 0}, {'n', 100}}, ". +Zn");
        row("a letter that starts no element", {{'j', 0}, {'q', 1}}, ". .");
        row("letters that make no element", {{'n', 0}, {'s', 100}}, "N S");
        row("letters that make one in the other order only", {{'l', 0}, {'c', 100}}, ". C");
        row("the same letter again", {{'c', 0}, {'c', 100}, {'c', 200}}, "C C C");
        row("the second letter of one is the first of the next", {{'n', 0}, {'c', 100}, {'l', 200}}, "N C +Cl");
        row("a third letter", {{'c', 0}, {'l', 100}, {'a', 200}, {'r', 300}}, "C +Cl . +Ar");
        row("a completed symbol is not completed again", {{'s', 0}, {'c', 1}, {'o', 2}}, "S +Sc O");
        row("at the end of the pause", {{'c', 1000}, {'l', 1800}}, "C +Cl");
        row("after the pause", {{'c', 1000}, {'l', 1801}}, "C .");
        row("after the pause, with a symbol of its own", {{'c', 1000}, {'o', 1801}}, "C O");
        row("a letter that waits too long", {{'z', 1000}, {'n', 1801}}, ". N");
        row("the pause starts with each first letter", {{'n', 0}, {'c', 700}, {'l', 1400}}, "N C +Cl");
        row("a clock that was set back", {{'c', 1000}, {'l', 999}}, "C .");
        row("the end of a clock", {{'c', std::numeric_limits<quint64>::max()}, {'l', 0}}, "C +Cl");
        row("another atom", {{'c', 0, 0}, {'l', 100, 1}}, "C .");
        row("another atom and back", {{'c', 0, 0}, {'o', 100, 1}, {'l', 200, 0}}, "C O .");
    }

    void lettersMakeSymbols()
    {
        QFETCH(Letters, letters);
        const Drawing d;
        const KytAtom* const atoms[] = {d.atom(0, 0), d.atom(10, 0)};
        ElementTyping typing;
        QStringList symbols;
        for (const auto& [letter, time, atom] : letters) {
            const ElementTyping::Typed typed = typing.type(QLatin1Char(letter), atoms[atom], time);
            symbols += typed.symbol.isNull() ? "." : (typed.completes ? "+" : "") + typed.symbol;
        }
        QTEST(symbols.join(' '), "symbols");
    }

    void aForgottenAtomHasNoFirstLetter()
    {
        const Drawing d;
        const KytAtom* const atom = d.atom(0, 0);
        const KytAtom* const other = d.atom(10, 0);
        ElementTyping typing;
        typing.type(u'c', atom, 0);
        typing.forget(other);
        QCOMPARE(typing.type(u'l', atom, 1).symbol, QString("Cl"));
        typing.type(u'c', atom, 2);
        typing.forget(atom);
        QVERIFY(typing.type(u'l', atom, 3).symbol.isNull());
    }
};

QTEST_MAIN(test_ElementTyping)
#include "test_ElementTyping.moc"
