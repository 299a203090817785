#include "FileDialogs.h"
#include "Program.h"

#include "app/KytAtomProperties.h"
#include "app/KytBondProperties.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace {

QString nameOf(QWidget* widget)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

/// Those shown buttons and fields below `window` that a screen reader has no name for.
QStringList namelessIn(const QWidget* window)
{
    QStringList nameless;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        const bool needsName = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget);
        if (needsName && widget->isVisible() && nameOf(widget).trimmed().isEmpty())
            nameless << QString::fromLatin1(widget->metaObject()->className()) + ' ' + widget->objectName();
    }
    return nameless;
}

/// How bright a colour looks, from 0 to 1.
double luminance(const QColor& color)
{
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of two colours, from 1 to 21.
double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// The share of an icon's pixels that stand out from the ground.
double shareSeen(const QIcon& icon, const QColor& ground)
{
    const QImage picture = icon.pixmap(24, 24).toImage().convertToFormat(QImage::Format_ARGB32);
    int seen = 0;
    int painted = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.alpha() < 128)
                continue;
            ++painted;
            seen += contrast(pixel, ground) >= 2.5;
        }
    }
    return painted > 0 ? double(seen) / painted : 0;
}

} // namespace

class test_accessibility : public QObject {
    Q_OBJECT

private slots:
    void everyButtonOfTheWindowHasAName()
    {
        const TestWindow window;
        QVERIFY(window.show());
        QCOMPARE(namelessIn(window.get()), QStringList());
        QVERIFY(window->findChildren<QToolButton*>().size() > 20);
    }

    void everyButtonHasANameInASmallWindowToo()
    {
        const TestWindow window;
        window->resize(200, 200);
        QVERIFY(window.show());
        int shown = 0;
        for (QToolButton* more : window->findChildren<QToolButton*>("qt_toolbar_ext_button")) {
            shown += more->isVisible();
            QCOMPARE(nameOf(more), QString("More buttons"));
            QCOMPARE(more->toolTip(), QString("More buttons"));
        }
        QVERIFY(shown >= 2);
        QCOMPARE(namelessIn(window.get()), QStringList());
    }

    void everyButtonAndFieldOfThePropertyDialogsHasAName()
    {
        KytAtomProperties atomDialog;
        atomDialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&atomDialog));
        QCOMPARE(namelessIn(&atomDialog), QStringList());
        QCOMPARE(nameOf(atomDialog.lineEdit_name), QString("Symbol"));
        QCOMPARE(nameOf(atomDialog.lineEdit_colorRed), QString("Red, 0 to 255"));
        QCOMPARE(nameOf(atomDialog.lineEdit_colorGreen), QString("Green, 0 to 255"));
        QCOMPARE(nameOf(atomDialog.lineEdit_colorBlue), QString("Blue, 0 to 255"));

        KytBondProperties bondDialog;
        bondDialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&bondDialog));
        QCOMPARE(namelessIn(&bondDialog), QStringList());
        QCOMPARE(nameOf(bondDialog.lineEdit_angle), QString("Bond Projection Angle"));
    }

    void everyButtonAndFieldOfTheFileDialogsHasAName()
    {
        const TestWindow window;
        const auto look = [](QFileDialog* dialog) { QCOMPARE(namelessIn(dialog), QStringList()); };
        QCOMPARE(inEachFileDialog(window, look), QString());
    }

    void everyButtonOfTheQuestionsHasAName()
    {
        const TestWindow window;
        const auto look = [](QMessageBox* box) { QCOMPARE(namelessIn(box), QStringList()); };
        QCOMPARE(inEachQuestion(window, look), QString());
    }

    void theDrawingHasAName()
    {
        const TestWindow window;
        QCOMPARE(nameOf(window->view), QString("Drawing"));
    }

    void theTwoWedgesAreToldApart()
    {
        const TestWindow window;
        const auto* bar = window->findChild<QToolBar*>("draw operations");
        QCOMPARE(nameOf(bar->widgetForAction(window->drawStereoUp)), QString("Add Stereo Bond, towards the viewer"));
        QCOMPARE(nameOf(bar->widgetForAction(window->drawStereoDown)),
                 QString("Add Stereo Bond, away from the viewer"));
        QSet<QString> names;
        int buttons = 0;
        for (const QToolBar* each : window->findChildren<QToolBar*>()) {
            for (QAction* action : each->actions()) {
                if (action->isSeparator())
                    continue;
                names << nameOf(each->widgetForAction(action));
                ++buttons;
            }
        }
        QCOMPARE(buttons, 4 + 10 + 1 + 6);
        QCOMPARE(names.size(), buttons);
    }

    void everyCommandHasItsTipsAndHelp()
    {
        const TestWindow window;
        QCOMPARE(window->actions().size(), 30);
        for (const QAction* action : window->actions()) {
            QVERIFY2(!action->toolTip().isEmpty(), qPrintable(action->text()));
            QVERIFY2(!action->statusTip().isEmpty(), qPrintable(action->text()));
            QVERIFY2(!action->whatsThis().isEmpty(), qPrintable(action->text()));
        }
    }

    void iconsAreSeenOnTheirGround_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("white") << QColor(255, 255, 255);
        QTest::newRow("a light toolbar") << QColor(239, 239, 239);
        QTest::newRow("a dark toolbar") << QColor(45, 45, 48);
        QTest::newRow("a nearly black toolbar") << QColor(24, 24, 26);
    }

    void iconsAreSeenOnTheirGround()
    {
        QFETCH(QColor, ground);
        const TestWindow window;
        for (const QToolBar* bar : window->findChildren<QToolBar*>()) {
            for (const QAction* action : bar->actions()) {
                if (action->isSeparator())
                    continue;
                const double share = shareSeen(action->icon(), ground);
                QVERIFY2(share > 0.3, qPrintable(action->text() + ' ' + QString::number(share)));
            }
        }
    }

    void aScreenOfTwiceTheScaleShowsAndDrawsTheSame()
    {
        const WorkingFolder folder;
        const QPoint button = buttonPlace("draw operations", &KytStudioApp::drawBond);
        const QPoint from = canvasPlace({60, 70});
        const QPoint to = canvasPlace({110, 90});
        Program program(folder.path(), {"QT_SCALE_FACTOR=2"});
        const QString window = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(window));
        QVERIFY(Program::xdotool({"getwindowgeometry", window}).contains("900x800"));
        Program::click(window, 2 * button);
        Program::click(window, 2 * from);
        Program::moveTo(window, 2 * to);
        Program::click(window, 2 * to);
        Program::press("ctrl+s");
        const QString dialog = Program::windowTitled("Choose a Filename to save under");
        QVERIFY(Program::hasKeyboard(dialog));
        Program::xdotool({"type", "--clearmodifiers", folder.path("twice")});
        Program::press("Return");
        QVERIFY(Program::hasKeyboard(window));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(
            readFile(folder.path("twice.kyt")),
            QByteArray("KYTFILE\n MOLECULE 2 1\n  ATOM C 60 70 0 255 0 0\n  ATOM C 110 90 0 255 0 0\n  BOND 0 1 1 1\n"
                       " END_MOLECULE\nEND_KYTFILE\n"));
    }
};

int main(int argc, char** argv)
{
    return runTests<test_accessibility>(argc, argv);
}

#include "test_accessibility.moc"
