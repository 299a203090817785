#pragma once

#include "TestWindow.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

/// Types `name` over what stands in the dialog's name field.
inline void typeName(QFileDialog* dialog, const QString& name)
{
    auto* field = dialog->findChild<QLineEdit*>("fileNameEdit");
    QVERIFY(field);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, name);
}

inline void pressEnter(QFileDialog* dialog)
{
    QTest::keyClick(dialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
}

inline void typeNameAndEnter(QFileDialog* dialog, const QString& name)
{
    typeName(dialog, name);
    pressEnter(dialog);
}

inline void pressEscape(QFileDialog* dialog)
{
    QTest::keyClick(dialog, Qt::Key_Escape);
}

/// A command that asks for a file, and the object name of the dialog that it opens.
struct FileCommand {
    void (KytStudioApp::*slot)();
    const char* dialog;
};

inline constexpr FileCommand openCommand{&KytStudioApp::slotFileOpen, "Open file dialog"};
inline constexpr FileCommand saveCommand{&KytStudioApp::slotFileSave, "Save File dialog"};
inline constexpr FileCommand saveAsCommand{&KytStudioApp::slotFileSaveAs, "Save File dialog"};
inline constexpr FileCommand insertCommand{&KytStudioApp::slotInsertMolecule, "Insert Moleculwe dialog"};
inline constexpr FileCommand importCommand{&KytStudioApp::slotImportMolecule, "Import Moleculwe dialog"};

inline void thenType(ModalSteps& steps, const FileCommand& command, const QString& name)
{
    steps.then<QFileDialog>(command.dialog, [name](QFileDialog* dialog) { typeNameAndEnter(dialog, name); });
}

inline void thenCancel(ModalSteps& steps, const FileCommand& command)
{
    steps.then<QFileDialog>(command.dialog, [](QFileDialog* dialog) { pressEscape(dialog); });
}

inline void thenClick(ModalSteps& steps, QMessageBox::StandardButton button)
{
    steps.then<QMessageBox>([button](QMessageBox* box) { QTest::mouseClick(box->button(button), Qt::LeftButton); });
}

// Each runs a command of the window and answers what it asks; what was wrong with the question, or nothing.

inline QString choose(const TestWindow& window, const FileCommand& command, const QString& name)
{
    ModalSteps steps;
    thenType(steps, command, name);
    (window.get()->*command.slot)();
    return steps.fault();
}

inline QString cancel(const TestWindow& window, const FileCommand& command)
{
    ModalSteps steps;
    thenCancel(steps, command);
    (window.get()->*command.slot)();
    return steps.fault();
}

inline QString closeWith(const TestWindow& window, const std::function<void(QMessageBox*)>& answer)
{
    ModalSteps steps;
    steps.then<QMessageBox>(answer);
    window->slotFileClose();
    return steps.fault();
}

inline QString closeWith(const TestWindow& window, QMessageBox::StandardButton button)
{
    return closeWith(window, [button](QMessageBox* box) { QTest::mouseClick(box->button(button), Qt::LeftButton); });
}

// Each opens all of the window's dialogs of one kind, looks at them one by one, and leaves them by Escape; what was
// wrong with one that came up or did not, or nothing.

inline QString inEachFileDialog(const TestWindow& window, const std::function<void(QFileDialog*)>& look)
{
    const WorkingFolder folder; // takes what a cancelled save writes
    ModalSteps steps;
    for (const FileCommand& command : {openCommand, insertCommand, saveAsCommand}) {
        steps.then<QFileDialog>([&look](QFileDialog* dialog) {
            look(dialog);
            pressEscape(dialog);
        });
        (window.get()->*command.slot)();
    }
    return steps.fault();
}

inline QString inEachQuestion(const TestWindow& window, const std::function<void(QMessageBox*)>& look)
{
    ModalSteps steps;
    const std::function<void()> questions[] = {[&] { window->slotFileClose(); }, [&] { QVERIFY(!window->queryExit()); },
                                               [&] { window->slotHelpAbout(); }};
    for (const std::function<void()>& ask : questions) {
        steps.then<QMessageBox>([&look](QMessageBox* box) {
            look(box);
            QTest::keyClick(box, Qt::Key_Escape);
        });
        ask();
    }
    return steps.fault();
}
