#include "FileDialogs.h"

#include "app/StateLabel.h"

#include <QAction>

namespace {

QString stateOf(const TestWindow& window)
{
    return window->findChild<StateLabel*>()->wholeText();
}

void pointAt(const TestWindow& window, const QPoint& at)
{
    QWidget* paper = window->view->viewport();
    QMouseEvent move(QEvent::MouseMove, QPointF(at), paper->mapToGlobal(QPointF(at)), Qt::NoButton, {}, {});
    QApplication::sendEvent(paper, &move);
}

} // namespace

class test_StateLabel : public QObject {
    Q_OBJECT

private slots:
    void nameAndModeAreShown()
    {
        const TestWindow window;
        window->viewMode->trigger();
        QCOMPARE(stateOf(window), QString("noname.kyt \u00b7 View Mode"));
        window->drawStereoUp->trigger();
        QCOMPARE(stateOf(window), QString("noname.kyt \u00b7 Add Stereo Bond"));
    }

    void theFileNameIsShownWithoutItsFolder()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->viewMode->trigger();
        writeFile(folder.path("caffeine.kyt"), atomsInAFile(2));
        QCOMPARE(choose(window, openCommand, folder.path("caffeine.kyt")), QString());
        QCOMPARE(stateOf(window), QString("caffeine.kyt \u00b7 View Mode"));
    }

    void theAtomsUnderThePointerAreShown()
    {
        const TestWindow window;
        window->viewMode->trigger();
        window.atom(100, 100, 12.5F);
        window.atom(200, 100);
        window.atom(200, 100, -3);
        const QString always = stateOf(window);
        pointAt(window, {100, 100});
        QCOMPARE(stateOf(window), always + " \u00b7 depth 12.50");
        pointAt(window, {200, 100});
        QCOMPARE(stateOf(window), always + " \u00b7 depth -3.00 \u00b7 2 atoms on top of each other");
        pointAt(window, {300, 300});
        QCOMPARE(stateOf(window), always);
    }

    void atomsOutsideTheCanvasAreCounted_data()
    {
        QTest::addColumn<QPointF>("at");
        QTest::addColumn<bool>("outside");
        QTest::newRow("in the middle") << QPointF(1000, 1000) << false;
        QTest::newRow("at the corner") << QPointF(0, 0) << false;
        QTest::newRow("at the far corner") << QPointF(2000, 2000) << false;
        QTest::newRow("to the left") << QPointF(-1, 100) << true;
        QTest::newRow("below") << QPointF(100, 2001) << true;
    }

    void atomsOutsideTheCanvasAreCounted()
    {
        QFETCH(QPointF, at);
        QFETCH(bool, outside);
        const TestWindow window;
        window.atom(at.x(), at.y());
        window->view->recordStep("Draw Bond");
        window->viewMode->trigger();
        QCOMPARE(stateOf(window).endsWith("1 outside the canvas"), outside);
    }

    void aFailedSaveIsShownUntilTheNextGoodOne()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->viewMode->trigger();
        window.atom(100, 100);
        const QString always = stateOf(window);
        const QString name = folder.path("a.kyt");
        writeFile(name, atomsInAFile(1));
        QCOMPARE(choose(window, openCommand, name), QString());
        const QString opened = stateOf(window);
        QVERIFY(opened != always);
        QVERIFY(QFile::remove(name));
        QVERIFY(QDir().mkdir(name));
        {
            const LoggedMessages messages;
            window.atom(50, 50);
            window->slotFileSave();
        }
        QCOMPARE(message(window), QString("Saving Done !"));
        QCOMPARE(stateOf(window), opened + " \u00b7 not saved: a.kyt");
        QVERIFY(QDir().rmdir(name));
        window->slotFileSave();
        QCOMPARE(stateOf(window), opened);
    }

    void messagesGoFirst()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->resize(450, 400);
        const auto* label = window->findChild<StateLabel*>();
        QStatusBar* bar = window->statusBar();
        bar->clearMessage();
        QVERIFY(label->width() > 0);
        QCOMPARE(label->text(), label->wholeText());
        const QString message(60, u'm');
        bar->showMessage(message);
        QVERIFY2(bar->width() - label->width() >= bar->fontMetrics().horizontalAdvance(message.left(30)), "no room");
        QCOMPARE(label->text(), QString());
        QCOMPARE(bar->currentMessage(), message);
        bar->clearMessage();
        QCOMPARE(label->text(), label->wholeText());
    }

    void theBarKeepsItsHeight()
    {
        const TestWindow window;
        QVERIFY(window.show());
        const int height = window->statusBar()->height();
        window->findChild<StateLabel*>()->hide();
        QCoreApplication::processEvents();
        QCOMPARE(window->statusBar()->height(), height);
    }
};

int main(int argc, char** argv)
{
    return runTests<test_StateLabel>(argc, argv);
}
#include "test_StateLabel.moc"
