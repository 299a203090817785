#include "app/PausedPings.h"

#include <QGuiApplication>
#include <QWidget>
#include <QtTest>

// Last: the X headers define common words as macros.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#undef None
#undef Bool
#undef Status

namespace {

/// The names of the protocols that a window takes part in, as another program reads them.
QStringList protocols(const QWidget& widget)
{
    Display* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
    Atom* atoms = nullptr;
    int count = 0;
    XGetWMProtocols(display, widget.winId(), &atoms, &count);
    QStringList names;
    for (int i = 0; i < count; ++i) {
        char* name = XGetAtomName(display, atoms[i]);
        names.append(name);
        XFree(name);
    }
    XFree(atoms);
    names.sort();
    return names;
}

} // namespace

class test_PausedPings : public QObject {
    Q_OBJECT

private slots:
    void allWindowsPauseAndAnswerAgain()
    {
        QWidget first;
        QWidget second;
        const QWidget neverShown;
        first.show();
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&first) && QTest::qWaitForWindowExposed(&second));
        const QStringList before = protocols(first);
        QVERIFY(before.contains("_NET_WM_PING"));
        QVERIFY(before.contains("WM_DELETE_WINDOW"));
        QStringList without = before;
        without.removeAll("_NET_WM_PING");
        for (int time = 0; time < 2; ++time) {
            {
                const PausedPings pause;
                QCOMPARE(protocols(first), without);
                QCOMPARE(protocols(second), without);
            }
            QCOMPARE(protocols(first), before);
            QCOMPARE(protocols(second), before);
        }
    }

    void aWindowMayCloseMeanwhile()
    {
        auto window = std::make_unique<QWidget>();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const PausedPings pause;
        window.reset();
    }
};

QTEST_MAIN(test_PausedPings)
#include "test_PausedPings.moc"
