#include "tests/support/Drawing.h"
#include "view/Selection.h"

#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

/// Two molecules, one of them partly locked, and a lone atom. Atoms are named by their symbols.
struct Molecules {
    Molecules()
        : free(drawing.chain<3>(0, 0))
        , mixed(drawing.chain<3>(0, 100))
        , lone(drawing.atom(0, 200))
    {
        mixed[0]->locked = mixed[1]->locked = true;
        const QList<KytAtom*> all = drawing.atoms();
        for (qsizetype i = 0; i < all.size(); ++i)
            all[i]->setSymbol(QString(QChar(u'a' + int(i))));
    }

    QList<KytAtom*> named(const QString& names) const
    {
        QList<KytAtom*> atoms;
        for (const QChar name : names)
            atoms.append(drawing.atoms()[name.unicode() - u'a']);
        return atoms;
    }

    QString names(const Selection& selection) const
    {
        QString text;
        for (const KytAtom* atom : selection.atoms(*drawing.canvas()))
            text += atom->symbol;
        return text;
    }

    Drawing drawing;
    std::array<KytAtom*, 3> free;  // a b c
    std::array<KytAtom*, 3> mixed; // d e f; d and e are locked
    KytAtom* lone;                 // g
};

QImage painted(const Selection& selection, const QRect& area = {0, 0, 100, 100}, double zoom = 1)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    selection.paint(painter, area, zoom);
    return image;
}

bool isWhite(const QImage& image, const QPoint& p)
{
    return image.pixelColor(p) == QColor(Qt::white);
}

} // namespace

class test_Selection : public QObject {
    Q_OBJECT

private slots:
    void atomsAreAddedAndKeptInTheOrderOfTheCanvas_data()
    {
        QTest::addColumn<QStringList>("added");
        QTest::addColumn<QString>("selected");
        QTest::newRow("nothing") << QStringList{""} << "";
        QTest::newRow("one") << QStringList{"b"} << "b";
        QTest::newRow("in another order") << QStringList{"gca"} << "acg";
        QTest::newRow("one after the other") << QStringList{"c", "a"} << "ac";
        QTest::newRow("twice") << QStringList{"bb", "b"} << "b";
        QTest::newRow("a locked atom") << QStringList{"e"} << "def";
        QTest::newRow("a free atom of a locked molecule") << QStringList{"f"} << "f";
        QTest::newRow("a locked and a free atom") << QStringList{"ad"} << "adef";
    }

    void atomsAreAddedAndKeptInTheOrderOfTheCanvas()
    {
        QFETCH(QStringList, added);
        const Molecules m;
        Selection selection;
        for (const QString& names : added)
            selection.add(m.named(names), *m.drawing.canvas());
        QTEST(m.names(selection), "selected");
        QCOMPARE(selection.isEmpty(), m.names(selection).isEmpty());
    }

    void togglingAddsOrRemoves_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("toggled");
        QTest::addColumn<QString>("after");
        QTest::newRow("add") << "a"
                             << "b"
                             << "ab";
        QTest::newRow("remove") << "ab"
                                << "a"
                                << "b";
        QTest::newRow("remove the last") << "a"
                                         << "a"
                                         << "";
        QTest::newRow("add a locked molecule") << "a"
                                               << "d"
                                               << "adef";
        QTest::newRow("remove a locked molecule") << "adef"
                                                  << "e"
                                                  << "a";
        QTest::newRow("remove a free atom of a locked molecule") << "def"
                                                                 << "f"
                                                                 << "de";
        QTest::newRow("add the locked rest of a molecule") << "f"
                                                           << "d"
                                                           << "def";
    }

    void togglingAddsOrRemoves()
    {
        QFETCH(QString, before);
        QFETCH(QString, toggled);
        const Molecules m;
        Selection selection;
        selection.add(m.named(before), *m.drawing.canvas());
        selection.toggle(m.named(toggled).first(), *m.drawing.canvas());
        QTEST(m.names(selection), "after");
    }

    void whatIsNotOnTheCanvasIsIgnored()
    {
        const Molecules m;
        const Drawing other;
        Selection selection;
        selection.add({nullptr, other.atom(0, 0), m.lone}, *m.drawing.canvas());
        QCOMPARE(m.names(selection), QString("g"));
        QCOMPARE(selection.size(), 1);
    }

    void aForgottenAtomIsNotSelected()
    {
        const Molecules m;
        Selection selection;
        selection.add(m.named("ab"), *m.drawing.canvas());
        QVERIFY(selection.forget(m.free[0]));
        QVERIFY(!selection.forget(m.free[0]));
        QVERIFY(!selection.forget(m.lone->canvasSymbol));
        QCOMPARE(m.names(selection), QString("b"));
        QVERIFY(selection.contains(m.free[1]));
        QVERIFY(!selection.contains(m.free[0]));
    }

    void aHaloSurroundsEachAtom()
    {
        const Drawing d;
        KytAtom* atom = d.atom(50, 50);
        Selection selection;
        QCOMPARE(painted(selection), painted(Selection()));
        selection.add({atom}, *d.canvas());
        const QImage one = painted(selection);
        const int reach = int(Selection::reach(1));
        QVERIFY(!isWhite(one, {50, 50}));
        for (const QPoint& away : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            QVERIFY(!isWhite(one, QPoint(50, 50) + away * (reach - 2)));
            QVERIFY(isWhite(one, QPoint(50, 50) + away * (reach + 2)));
        }
        QCOMPARE(painted(selection, QRect(0, 0, 30, 100)), painted(Selection())); // outside the area to be painted
        QVERIFY(painted(selection, QRect(0, 0, 45, 100)) != painted(Selection()));
    }

    void halosStayVisibleWhenZoomedOut()
    {
        QCOMPARE(Selection::reach(0.25), 4 * Selection::reach(1));
        QCOMPARE(Selection::reach(8), Selection::reach(1));
    }

    void theOutlineStandsOutFromThePaper()
    {
        const Drawing d;
        Selection selection;
        selection.add({d.atom(50, 50)}, *d.canvas());
        const QImage image = painted(selection);
        double darkest = 1;
        for (int x = 0; x < 100; ++x)
            darkest = std::min(darkest, luminance(image.pixelColor(x, 50)));
        QVERIFY2(1.05 / (darkest + 0.05) >= 3, "the contrast is below 3 to 1");
    }

private:
    /// Relative luminance as the Web Content Accessibility Guidelines define it.
    static double luminance(const QColor& color)
    {
        const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    }
};

QTEST_MAIN(test_Selection)
#include "test_Selection.moc"
