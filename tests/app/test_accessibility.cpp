#include "TestWindow.h"

#include "app/KytAtomProperties.h"
#include "app/KytBondProperties.h"
#include "app/FileDialogs.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QFileDialog>
#include <QLineEdit>
#include <QToolBar>
#include <QToolButton>
#include <QWhatsThis>

namespace {

QString nameOf(QWidget* widget)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString("<no interface>");
}

/// Those shown buttons and fields below `window` that a screen reader has no name for.
QStringList namelessIn(const QWidget& window)
{
    QStringList nameless;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool needsName = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget);
        if (needsName && widget->isVisible() && nameOf(widget).trimmed().isEmpty())
            nameless << QString::fromLatin1(widget->metaObject()->className()) + ' ' + widget->objectName();
    }
    return nameless;
}

} // namespace

class TestAccessibility : public QObject {
    Q_OBJECT

private slots:
    void t();
};

void TestAccessibility::t()
{
    for (const bool dark : {false, true}) {
    if (dark) {
        QPalette p(QColor(45,45,48));
        qApp->setPalette(p);
    }
    const TestWindow window;
    QVERIFY(window.show());
    QTest::qWait(200);
    qInfo() << namelessIn(*window.get());
    window->grab().save(QString("/tmp/ww/shots/g-%1.png").arg(dark));
    KytAtom* atom = addAtom(window, 80, 80);
    KytAtomProperties d; d.setAtom(atom); d.show();
    QTest::qWait(200);
    qInfo() << namelessIn(d);
    d.grab().save(QString("/tmp/ww/shots/a-%1.png").arg(dark));
    KytBondProperties b; b.show();
    QTest::qWait(200);
    qInfo() << namelessIn(b);
    b.grab().save(QString("/tmp/ww/shots/b-%1.png").arg(dark));
    QWidget *f=0;
    QTimer::singleShot(600, [&]{ f = QApplication::activeModalWidget(); qInfo() << f << namelessIn(*f); 
    f->grab().save(QString("/tmp/ww/shots/f-%1.png").arg(dark));
    static_cast<QDialog*>(f)->reject(); });
    window->slotFileOpen();
    QTimer::singleShot(600, [&]{ f = QApplication::activeModalWidget(); qInfo() << f << namelessIn(*f); 
    f->grab().save(QString("/tmp/ww/shots/c-%1.png").arg(dark));
    static_cast<QDialog*>(f)->reject(); });
    window->slotFileClose();
    window->resize(200,200);
    QTest::qWait(200);
    qInfo() << namelessIn(*window.get());
    window->grab().save(QString("/tmp/ww/shots/s-%1.png").arg(dark));
    for (auto *b : window->findChildren<QToolButton*>()) qInfo() << b->objectName() << nameOf(b) << b->toolTip() << b->isVisible();
    }
}

int main(int argc, char** argv)
{
    return runTests<TestAccessibility>(argc, argv);
}

#include "test_accessibility.moc"
