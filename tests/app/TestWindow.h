#pragma once

#include "app/kytstudio.h"
#include "i3d/KytI3dView.h"
#include "tests/support/Drawing.h"
#include "tests/support/Files.h"
#include "tests/support/LoggedMessages.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFont>
#include <QImage>
#include <QStatusBar>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QWindow>

#include <functional>
#include <vector>

/// A main window that goes at the end of the scope together with what it leaves behind: document, canvas and viewer.
class TestWindow : public DrawnCanvas {
public:
    TestWindow()
        : TestWindow(new KytStudioApp)
    {
    }
    ~TestWindow()
    {
        KytI3dView* viewer = window->i3dviewer;
        delete window;
        delete viewer;
        delete canvas();
        delete doc;
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    KytStudioApp* operator->() const { return window; }
    KytStudioApp* get() const { return window; }

    /// Shows the window and waits until it has the keyboard.
    [[nodiscard]] bool show() const
    {
        window->show();
        window->activateWindow();
        return QTest::qWaitForWindowActive(window);
    }

private:
    explicit TestWindow(KytStudioApp* window)
        : DrawnCanvas(window->doc)
        , window(window)
    {
    }

    KytStudioApp* window;
};

/// The text in the status bar.
inline QString message(const TestWindow& window)
{
    return window->statusBar()->currentMessage();
}

/// After how many milliseconds the text in the status bar goes; 0 when it stays.
inline int timeOut(const TestWindow& window)
{
    for (const QTimer* timer : window->statusBar()->findChildren<QTimer*>(Qt::FindDirectChildrenOnly)) {
        if (timer->isActive())
            return timer->interval();
    }
    return 0;
}

/// The texts that a status bar has shown since this log was made, each as "text" or "text|milliseconds".
class StatusLog : public QObject {
public:
    explicit StatusLog(const TestWindow& window)
    {
        connect(window->statusBar(), &QStatusBar::messageChanged, this, [this, &window](const QString& text) {
            const int after = timeOut(window);
            shown << (after > 0 ? QStringLiteral("%1|%2").arg(text).arg(after) : text);
        });
    }
    QStringList shown;
};

/// The number of items on the canvas, the rubber band left out.
inline qsizetype itemCount(const TestWindow& window)
{
    QCanvasItemList items = window.canvas()->allItems();
    items.removeAll(tempBond);
    return items.size();
}

/// A folder of its own as the working directory, until the end of the scope.
class WorkingFolder {
public:
    WorkingFolder()
        : before(QDir::currentPath())
    {
        if (!folder.isValid() || !QDir::setCurrent(folder.path()))
            qFatal("no temporary folder");
    }
    ~WorkingFolder() { QDir::setCurrent(before); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

    QString path() const { return QDir(folder.path()).canonicalPath(); }
    QString path(const QString& name) const { return path() + u'/' + name; }
    QStringList names() const
    {
        return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

private:
    QString before;
    QTemporaryDir folder;
};

/// A workspace with one molecule of `count` lone atoms with the symbol `symbol`, in a row at height `y`.
inline QByteArray atomsInAFile(int count, const QByteArray& symbol = "C", int y = 100)
{
    QByteArray text = "KYTFILE\n MOLECULE " + QByteArray::number(count) + " 0\n";
    for (int i = 0; i < count; ++i) {
        text +=
            "  ATOM " + symbol + ' ' + QByteArray::number(20 + 20 * i) + ' ' + QByteArray::number(y) + " 0 255 0 0\n";
    }
    return text + " END_MOLECULE\nEND_KYTFILE\n";
}

inline const QByteArray emptyWorkspace = "KYTFILE\nEND_KYTFILE\n";

/// Acts on the modal windows that a command opens, one step for each, while the command waits for them.
///
/// A window that no step waits for, and one that stays although all steps are done, is dismissed after a while so that
/// the test goes on, and fails done().
class ModalSteps : public QObject {
public:
    ModalSteps() { again(); }

    /// When a modal window of the class `Dialog` with the object name `name` (any, if null) has the keyboard: `act`.
    template <typename Dialog> void then(const QString& name, std::function<void(Dialog*)> act)
    {
        steps.push_back([name, act](QWidget* front) -> std::function<void()> {
            auto* dialog = dynamic_cast<Dialog*>(front);
            if (!dialog || (!name.isNull() && dialog->objectName() != name))
                return {};
            return [dialog, act] { act(dialog); };
        });
    }
    template <typename Dialog> void then(std::function<void(Dialog*)> act) { then<Dialog>(QString(), std::move(act)); }

    /// True when every step was taken and no other window came up.
    bool done() const { return steps.empty() && complaint.isEmpty(); }
    QByteArray trouble() const
    {
        return complaint.isEmpty() ? QByteArray::number(steps.size()) + " modal windows did not come up"
                                   : complaint.toUtf8();
    }
    /// What went wrong, or nothing.
    QString fault() const { return done() ? QString() : QString::fromUtf8(trouble()); }

private:
    static constexpr int period = 20;     // milliseconds
    static constexpr int activation = 50; // periods until a window without the keyboard is acted on
    static constexpr int patience = 500;  // periods until a window is dismissed

    // A timer of its own each time: one that is being served does not fire again in the event loops started by it.
    void again() { QTimer::singleShot(period, this, &ModalSteps::look); }

    void look()
    {
        again();
        QWidget* front = QApplication::activeModalWidget();
        if (front != waitedFor) {
            waitedFor = front;
            periods = 0;
        }
        if (!front || !front->isVisible())
            return;
        ++periods;
        if (!steps.empty() && (front->isActiveWindow() || periods > activation)) {
            if (const std::function<void()> act = steps.front()(front)) {
                steps.erase(steps.begin());
                waitedFor = nullptr;
                act();
                return;
            }
        }
        if (periods > patience)
            dismiss(front);
    }

    void dismiss(QWidget* front)
    {
        complaint +=
            QStringLiteral("dismissed a %1 named \"%2\", titled \"%3\". ")
                .arg(QLatin1String(front->metaObject()->className()), front->objectName(), front->windowTitle());
        if (auto* dialog = qobject_cast<QDialog*>(front))
            dialog->reject();
        else
            front->close();
    }

    std::vector<std::function<std::function<void()>(QWidget*)>> steps;
    QWidget* waitedFor = nullptr;
    int periods = 0;
    QString complaint;
};

/// Whether two pictures look the same: what is wholly transparent has no colour.
inline bool samePicture(const QImage& one, const QImage& other)
{
    return one.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        == other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Puts every text that is translated in brackets, and replaces "Ctrl" by "Alt" in keys, until the end of the scope.
class BracketTranslator : public QTranslator {
public:
    BracketTranslator() { QCoreApplication::installTranslator(this); }
    ~BracketTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        if (!QByteArray(context).startsWith("Kyt"))
            return {};
        const QString source = QString::fromUtf8(text);
        return source.startsWith("Ctrl+") ? "Alt" + source.mid(4) : u'[' + source + u']';
    }
};

/// Keeps the 3D window from opening, until the end of the scope: the viewer finds no video and returns at once.
class NoThirdDimension {
public:
    NoThirdDimension()
        : before(qgetenv("SDL_VIDEODRIVER"))
    {
        qputenv("SDL_VIDEODRIVER", "none of them");
    }
    ~NoThirdDimension()
    {
        if (before.isNull())
            qunsetenv("SDL_VIDEODRIVER");
        else
            qputenv("SDL_VIDEODRIVER", before);
    }
    NoThirdDimension(const NoThirdDimension&) = delete;
    NoThirdDimension& operator=(const NoThirdDimension&) = delete;

private:
    QByteArray before;
};

/// Runs the tests of `Test` in an application set up as the editor sets up its own.
template <typename Test> int runTests(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont("helvetica", 12));
    QApplication::setQuitOnLastWindowClosed(false);
    Test test;
    return QTest::qExec(&test, argc, argv);
}
