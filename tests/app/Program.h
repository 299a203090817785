#pragma once

#include "TestWindow.h"

#include <QPoint>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>
#include <QToolBar>

/// The program itself, running on the test's screen and driven from outside as by a person.
class Program {
public:
    /// `launcher` is a command that runs the one that is appended to it.
    explicit Program(const QString& folder, const QStringList& environment = {}, const QStringList& arguments = {},
                     const QStringList& launcher = {})
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (const QString& variable : environment)
            variables.insert(variable.section('=', 0, 0), variable.section('=', 1));
        process.setProcessEnvironment(variables);
        process.setWorkingDirectory(folder);
        process.setProcessChannelMode(QProcess::MergedChannels);
        QStringList command = launcher + QStringList(KYTSTUDIO_PROGRAM) + arguments;
        const QString first = command.takeFirst();
        process.start(first, command);
    }
    ~Program()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Runs xdotool; what it prints.
    static QByteArray xdotool(const QStringList& arguments)
    {
        QProcess tool;
        tool.start("xdotool", arguments);
        if (!tool.waitForFinished(20000))
            tool.kill();
        return tool.readAllStandardOutput().trimmed();
    }

    /// Waits for a shown window with this title; its id, or nothing.
    static QString windowTitled(const QString& title)
    {
        for (int i = 0; i < 200; ++i) {
            const QByteArray found =
                xdotool({"search", "--onlyvisible", "--name", '^' + QRegularExpression::escape(title) + '$'});
            if (!found.isEmpty())
                return QString::fromLatin1(found).section('\n', -1);
            QTest::qWait(50);
        }
        return {};
    }

    static bool hasKeyboard(const QString& window)
    {
        xdotool({"windowactivate", window});
        for (int i = 0; i < 200; ++i) {
            if (xdotool({"getwindowfocus"}) == window.toLatin1())
                return true;
            QTest::qWait(50);
        }
        return false;
    }

    static void click(const QString& window, const QPoint& place, int button = 1)
    {
        xdotool({"mousemove", "--window", window, QString::number(place.x()), QString::number(place.y())});
        QTest::qWait(100);
        xdotool({"click", QString::number(button)});
        QTest::qWait(100);
    }

    static void moveTo(const QString& window, const QPoint& place)
    {
        xdotool({"mousemove", "--window", window, QString::number(place.x()), QString::number(place.y())});
        QTest::qWait(100);
    }

    static void press(const QString& keys)
    {
        xdotool({"key", "--clearmodifiers", keys});
        QTest::qWait(100);
    }

    /// Has the program open a workspace, and waits until that is done; whether it is. `window` is the editor's.
    static bool openFile(const QString& window, const QString& name)
    {
        press("ctrl+o");
        const QString dialog = windowTitled("Choose a File");
        if (!hasKeyboard(dialog))
            return false;
        xdotool({"type", "--clearmodifiers", name});
        press("Return");
        return windowTitled(name) == window && hasKeyboard(window);
    }

    /// Whether the program has ended by the signal `number`.
    bool endedBy(int number)
    {
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(30000))
            return false;
        output = process.readAll();
        return process.exitStatus() == QProcess::CrashExit && process.exitCode() == number;
    }

    /// Whether the program has ended by itself with the status 0.
    bool endedWell()
    {
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(30000))
            return false;
        output = process.readAll();
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    QProcess process;
    QByteArray output; ///< of the ended program, both streams
};

/// Where the middle of an action's button stands in a window at the start size.
inline QPoint buttonPlace(const char* barName, QAction* KytStudioApp::*action)
{
    const TestWindow window;
    if (!window.show())
        return {};
    const QWidget* button = window->findChild<QToolBar*>(barName)->widgetForAction(window.get()->*action);
    return button->mapTo(window.get(), button->rect().center());
}

/// Where a canvas point stands in a window at the start size.
inline QPoint canvasPlace(const QPoint& p)
{
    const TestWindow window;
    return window.show() ? window->view->viewport()->mapTo(window.get(), p) : QPoint();
}
