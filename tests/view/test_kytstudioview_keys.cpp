#include "app/KytAtomProperties.h"
#include "tests/view/StepsFixture.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

using Prepare = void (*)(StepsFixture&);

QString colorOf(const KytAtom* atom)
{
    return atom->_atomColor[0] + ' ' + atom->_atomColor[1] + ' ' + atom->_atomColor[2];
}

void setColor(KytAtom* atom, const QString& color)
{
    const QStringList parts = color.split(' ');
    for (int i = 0; i < 3; ++i)
        atom->_atomColor[i] = parts[i];
}

/// Types letters one after the other, 100 ms apart.
void type(const StepsFixture& f, const char* letters, quint64 time = 1000)
{
    for (; *letters; ++letters, time += 100)
        f.view->typeLetter(QLatin1Char(*letters), time);
}

} // namespace

class test_kytstudioview_keys : public QObject {
    Q_OBJECT

private slots:
    void aTypedElementIsWhatTheDialogWouldSet_data() { addModeRows(everyMode); }

    void aTypedElementIsWhatTheDialogWouldSet()
    {
        QFETCH(int, mode);
        StepsFixture typed;
        typed.mode(KytViewState(mode));
        typed.lone->name = "anything";
        typed.lone->locked = true;
        typed.move({300, 100});
        type(typed, "o");

        StepsFixture edited;
        edited.lone->name = "anything";
        edited.lone->locked = true;
        KytAtomProperties dialog;
        dialog.setAtom(edited.lone);
        dialog.lineEdit_name->setText("O");
        dialog.pushButton2->click();
        QCOMPARE(snapshotDifference(typed.drawn(), edited.drawn()), QString());
        QCOMPARE(typed.lone->symbol, QString("O"));
        QCOMPARE(typed.lone->name, QString("anything"));
    }

    void theColourFollowsTheElement_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("color");
        QTest::addColumn<QString>("letters");
        QTest::addColumn<QString>("after");
        const auto row = [](const char* symbol, const char* color, const char* letters, const char* after) {
            QTest::addRow("%s %s, %s", symbol, color, letters) << symbol << color << letters << after;
        };
        row("C", "255 0 0", "n", "48 80 255");    // a new atom
        row("C", "255 0 0", "c", "64 64 64");     // a new atom stays carbon
        row("C", "64 64 64", "o", "255 0 0");     // as in the library
        row("N+", "48 80 255", "s", "230 200 0"); // with a charge
        row("OH", "255 0 0", "n", "48 80 255");   // a label
        row("O", "255 0 0", "pt", "255 20 150");  // an element without a colour of its own
        row("Pt", "255 20 150", "c", "64 64 64");
        row("C", "1 2 3", "n", "1 2 3"); // chosen by the user
        row("C", "48 80 255", "o", "48 80 255");
        row("C", "064 64 64", "o", "064 64 64");
        row("C", "48 80 255", "na", "48 80 255"); // also while the first letter is N
    }

    void theColourFollowsTheElement()
    {
        QFETCH(QString, symbol);
        QFETCH(QString, color);
        QFETCH(QString, letters);
        StepsFixture f;
        f.lone->setSymbol(symbol);
        setColor(f.lone, color);
        f.history->record("before");
        f.move({300, 100});
        type(f, letters.toLatin1());
        QTEST(colorOf(f.lone), "after");
        f.view->undo();
        QCOMPARE(f.lone->symbol, symbol);
        QCOMPARE(colorOf(f.lone), color);
    }

    void eachElementIsAStep_data()
    {
        QTest::addColumn<QString>("letters");
        QTest::addColumn<QStringList>("symbols"); // after each step
        QTest::newRow("one letter") << "n" << QStringList{"N"};
        QTest::newRow("two letters of one") << "cl" << QStringList{"Cl"};
        QTest::newRow("two of one, the first no element") << "zn" << QStringList{"Zn"};
        QTest::newRow("two letters of two") << "np" << QStringList{"Np"};
        QTest::newRow("two elements") << "ns" << QStringList{"N", "S"};
        QTest::newRow("one element after the other") << "ncl" << QStringList{"N", "Cl"};
        QTest::newRow("the same twice") << "nn" << QStringList{"N"};
        QTest::newRow("no element") << "jqz" << QStringList{};
    }

    void eachElementIsAStep()
    {
        QFETCH(QString, letters);
        QFETCH(QStringList, symbols);
        StepsFixture f;
        const QStringList before = f.drawn();
        f.move({300, 100});
        type(f, letters.toLatin1());
        const QStringList after = f.drawn();
        QCOMPARE(f.history->undoCount(), symbols.size());
        for (auto symbol = symbols.crbegin(); symbol != symbols.crend(); ++symbol) {
            QCOMPARE(f.lone->symbol, *symbol);
            QCOMPARE(f.view->undo(), QString("Element"));
        }
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
        while (!f.view->redo().isNull()) { }
        QCOMPARE(snapshotDifference(f.drawn(), after), QString());
    }

    void theSecondLetterReplacesOnlyItsOwnStep_data()
    {
        QTest::addColumn<Prepare>("between");
        QTest::addColumn<int>("steps");
        QTest::newRow("nothing") << Prepare([](StepsFixture&) {}) << 1;
        QTest::newRow("another step") << Prepare([](StepsFixture& f) {
            f.left->moveBy(1, 0);
            f.view->recordStep("between");
        }) << 3;
        QTest::newRow("undone") << Prepare([](StepsFixture& f) { f.view->undo(); }) << 1;
        QTest::newRow("undone and redone") << Prepare([](StepsFixture& f) {
            f.view->undo();
            f.view->redo();
        }) << 1;
        QTest::newRow("a drag under way") << Prepare([](StepsFixture& f) {
            f.press({300, 100});
            f.move({310, 100});
        }) << 3;
        QTest::newRow("elsewhere and back") << Prepare([](StepsFixture& f) {
            f.move({100, 100});
            f.move({300, 100});
        }) << 1;
    }

    void theSecondLetterReplacesOnlyItsOwnStep()
    {
        QFETCH(Prepare, between);
        QFETCH(int, steps);
        StepsFixture f;
        const QStringList before = f.drawn();
        f.move({300, 100});
        type(f, "c");
        between(f);
        type(f, "l", 1500);
        QCOMPARE(f.lone->symbol, QString("Cl"));
        QCOMPARE(colorOf(f.lone), QString("0 200 0"));
        QCOMPARE(f.history->undoCount(), steps);
        QCOMPARE(f.history->redoCount(), 0);
        while (!f.view->undo().isNull()) { }
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
    }

    void aLetterLaterOnOrElsewhereStartsAnew()
    {
        StepsFixture f;
        f.move({300, 100});
        type(f, "c", 1000);
        type(f, "o", 1801);
        QCOMPARE(f.lone->symbol, QString("O"));
        type(f, "c", 3000);
        f.move({160, 100});
        type(f, "o", 3100);
        QCOMPARE(f.lone->symbol, QString("C"));
        QCOMPARE(f.right->symbol, QString("O"));
        QCOMPARE(f.history->undoCount(), 4);
    }

    void withoutAnAtomUnderThePointerNothingHappens_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::newRow("empty paper") << QPoint(500, 300);
        QTest::newRow("a line") << QPoint(130, 100);
    }

    void withoutAnAtomUnderThePointerNothingHappens()
    {
        QFETCH(QPoint, at);
        StepsFixture f;
        const QStringList before = f.drawn();
        QVERIFY(!f.view->typeLetter(u'n', 1)); // the pointer has not come yet
        f.move(at);
        QVERIFY(!f.view->typeLetter(u'n', 2));
        f.move({300, 100});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(f.view->viewport(), &leave);
        QVERIFY(!f.view->typeLetter(u'n', 3));
        QCOMPARE(f.drawn(), before);
        QCOMPARE(f.history->undoCount(), 0);
    }

    void theTopmostAtomIsMeantAndZoomAndScrollCount()
    {
        StepsFixture f;
        KytAtom* top = f.atom(300, 100);
        f.view->zoomTo(2, {0, 0});
        f.scrollTo({200, 50});
        f.move({600, 200});
        type(f, "n");
        QCOMPARE(top->symbol, QString("N"));
        QCOMPARE(f.lone->symbol, QString("C"));
    }

    void aBondUnderWayGoesOn()
    {
        StepsFixture f;
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        type(f, "n");
        QCOMPARE(f.gesture(), QString("begun"));
        f.click({300, 100});
        QCOMPARE(f.atoms().last()->symbol, QString("N"));
        QCOMPARE(f.view->undo(), QString("Draw Bond"));
        QCOMPARE(f.view->undo(), QString("Element"));
        QCOMPARE(f.view->undo(), QString("Draw Bond"));
    }

    void deleteDoesWhatTheModeDoes_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("items"); // that go, labels included
        QTest::newRow("an atom and its bond") << QPoint(160, 100) << 3 + 1;
        QTest::newRow("a lone atom") << QPoint(300, 100) << 2;
        QTest::newRow("a line") << QPoint(130, 100) << 1;
        QTest::newRow("a line of a double bond") << QPoint(100, 230) << 1;
        QTest::newRow("a wedge") << QPoint(190, 200) << 1;
        QTest::newRow("a label") << QPoint() << 0;
        QTest::newRow("empty paper") << QPoint(500, 300) << 0;
    }

    void deleteDoesWhatTheModeDoes()
    {
        QFETCH(QPoint, at);
        QFETCH(int, items);
        QStringList drawn[2];
        for (const bool byKey : {false, true}) {
            for (const KytViewState mode : everyMode) {
                StepsFixture f;
                f.bond(f.atom(100, 200), f.atom(100, 260), {KYTBT_SingleBond, KYTBT_SingleBond});
                f.bond(f.atom(160, 200), f.atom(200, 200), {KYTBT_StereoUp});
                f.bond(f.right, f.atom(160, 150));
                f.history->record("more");
                f.mode(byKey ? mode : KYTVS_deleteItem);
                const auto count = f.drawn().size();
                const auto steps = f.history->undoCount();
                const QPoint point = at.isNull() ? StepsFixture::onLabel(f.lone) : at;
                f.move(point);
                if (byKey)
                    f.view->deleteSelected();
                else
                    f.click(point);
                if (!drawn[0].isEmpty())
                    QCOMPARE(snapshotDifference(f.drawn(), drawn[0]), QString());
                drawn[0] = f.drawn();
                QCOMPARE(count - f.drawn().size(), items);
                QCOMPARE(f.history->undoCount() - steps, items > 0 ? 1 : 0);
                if (items > 0)
                    QCOMPARE(f.view->undo(), QString("Delete Item"));
                QCOMPARE(f.drawn().size(), count);
            }
        }
    }

    void deleteActsOnWhatIsThereNext()
    {
        StepsFixture f;
        f.bond(f.atom(100, 200), f.atom(100, 260));
        const auto atoms = f.atoms().size();
        f.move({100, 200});
        f.view->deleteSelected();
        f.view->deleteSelected(); // nothing is left there
        QCOMPARE(f.atoms().size(), atoms - 1);
        f.move({300, 100});
        KytAtom* under = f.lone;
        const KytAtom* top = f.atom(300, 100);
        f.move({301, 100});
        f.view->deleteSelected();
        QVERIFY(!f.isOnCanvas(top));
        QCOMPARE(f.view->hover, under);
        QVERIFY(isHighlighted(under));
        f.view->deleteSelected();
        QVERIFY(!f.isOnCanvas(under));
        QVERIFY(!f.view->hover);
    }

    void deleteEndsADragAndABondThatLosesItsStart()
    {
        StepsFixture f;
        f.press({300, 100});
        f.move({320, 120});
        f.view->deleteSelected();
        QVERIFY(!f.view->moving);
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.view->undo(), QString("Delete Item"));
        QCOMPARE(f.view->undo(), QString("Move"));
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.view->deleteSelected();
        QCOMPARE(f.gesture(), QString("none"));
        QCOMPARE(f.atoms().size(), 3);
    }

    void aDeletedAtomForgetsItsFirstLetter()
    {
        StepsFixture f;
        f.move({300, 100});
        type(f, "c", 1000);
        f.view->deleteSelected();
        f.view->undo();
        f.move({301, 100});
        type(f, "l", 1100);
        QCOMPARE(f.atoms().last()->symbol, QString("C"));
    }

    void keysWorkWithoutAHistoryAndWithoutACanvas()
    {
        StepsFixture f;
        f.view->history = nullptr;
        f.move({300, 100});
        type(f, "cl");
        QCOMPARE(f.lone->symbol, QString("Cl"));
        f.view->deleteSelected();
        QCOMPARE(f.atoms().size(), 2);
        f.history.reset();
        f.freeCanvas();
        QVERIFY(!f.view->typeLetter(u'n', 1));
        f.view->deleteSelected();
    }
};

QTEST_MAIN(test_kytstudioview_keys)
#include "test_kytstudioview_keys.moc"
