#include "app/FileDialogs.h"
#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "view/kytstudioview.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

namespace {

constexpr int progressTime = 5000; // milliseconds
constexpr int resultTime = 4000;   // milliseconds

/// A file name as a window title: "[*]" must be doubled because Qt replaces it with the mark of a modified document.
QString captionFor(QString fileName)
{
    return fileName.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

} // namespace

/// Deletes all atoms and thereby all bonds, after a safety copy, for which no old copy named `inUse` is deleted.
void KytStudioApp::clearDrawing(const QString& inUse)
{
    keepCopy(inUse);
    if (doc->canvas)
        doc->canvas->deleteItems(QCanvasItem::Rtti_Ellipse);
}

void KytStudioApp::slotFileNew()
{
    showMessage(tr("Creating file"));
    beginStep();
    clearDrawing();
    endStep(fileNew);
}

void KytStudioApp::slotFileOpen()
{
    showMessage(tr("Opening file..."), progressTime);
    beginStep();
    const KytHistory::Title before = title();
    doc->docName = askOpenFileName(this,
                                   {.name = QStringLiteral("Open file dialog"),
                                    .caption = tr("Choose a File"),
                                    .directory = QStringLiteral("data/"),
                                    .filter = tr("KytBench (*.kyt)")});
    if (doc->docName.isEmpty()) {
        history->record(fileOpen->iconText(), before);
        emit view->drawingChanged();
        showMessage(tr("Opening aborted"), resultTime);
        return;
    }
    openDocument(before);
}

/// Reads the document of the name that was just set; `before` is the title before that.
void KytStudioApp::openDocument(const KytHistory::Title& before)
{
    clearDrawing();
    readIntoView(doc->docName, false);
    setWindowTitle(captionFor(doc->docName));
    history->record(fileOpen->iconText(), before);
    emit view->drawingChanged();
    showMessage(tr("Loaded document: ") + doc->docName, resultTime);
}

void KytStudioApp::openAtStart(const QString& fileName)
{
    missingFile = QFileInfo(fileName).isFile() && QFileInfo(fileName).isReadable() ? QString() : fileName;
    if (missingFile.isNull()) {
        const KytHistory::Title before = title();
        doc->docName = QFileInfo(fileName).canonicalFilePath();
        openDocument(before);
    }
    updateState();
}

QString KytStudioApp::askSaveName(const QString& extension)
{
    return askSaveFileName(this,
                           {.name = QStringLiteral("Save File dialog"),
                            .caption = tr("Choose a Filename to save under"),
                            .directory = QStringLiteral("/home"),
                            .filter = tr("KytBench(*.kyt)")},
                           extension)
        + extension;
}

/// The extension is always appended, even to a name that has it or to an empty one, so a save cannot be cancelled.
void KytStudioApp::slotFileSave()
{
    showMessage(tr("Saving file..."), progressTime);
    if (doc->docName == tr("noname.kyt"))
        doc->docName = askSaveName(QStringLiteral(".kyt"));
    // Intentional: the message does not depend on the result of the save; the document logs a failure.
    noteSave(doc->save(), doc->docName);
    showMessage(tr("Saving Done !"), resultTime);
}

void KytStudioApp::slotFileSaveAs()
{
    showMessage(tr("Saving file under new filename..."), progressTime);
    const QString name = askSaveName(tr(".kyt"));
    showMessage(tr("Saving As.."), progressTime);
    if (name.isEmpty()) {
        showMessage(tr("Saving aborted"), resultTime);
        return;
    }
    noteSave(doc->saveAs(name), name);
    showMessage(tr("Saving Done !"), resultTime);
}

void KytStudioApp::slotFileClose()
{
    showMessage(tr("Closing file..."), progressTime);
    beginStep();
    QMessageBox question(QMessageBox::Information, tr("Close !"),
                         tr("Closing the File..\nDo your want to save ur changes to File?"),
                         QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    question.button(QMessageBox::Yes)->setText(tr("Save"));
    question.button(QMessageBox::No)->setText(tr("Discard"));
    question.setDefaultButton(QMessageBox::Yes);
    question.setEscapeButton(QMessageBox::Cancel);
    switch (question.exec()) {
    case QMessageBox::Yes:
        slotFileSave();
        clearDrawing();
        endStep(fileClose);
        showMessage(tr("Done !"), resultTime);
        break;
    case QMessageBox::No:
        clearDrawing();
        endStep(fileClose);
        showMessage(tr("Done !"), resultTime);
        break;
    case QMessageBox::Cancel:
        showMessage(tr("Close Aborted..."), resultTime);
        break;
    default:
        break;
    }
}

/// Prints an empty page.
void KytStudioApp::slotFilePrint()
{
    showMessage(tr("Printing..."));
    QPrinter printer(QPrinter::ScreenResolution);
    if (QPrintDialog(&printer, this).exec() == QDialog::Accepted)
        QPainter painter(&printer);
    showMessage(tr("Ready."));
}

bool KytStudioApp::queryExit()
{
    return QMessageBox::information(this, tr("Quit !"), tr("Do your really want to quit?"),
                                    QMessageBox::Ok | QMessageBox::Cancel)
        == QMessageBox::Ok;
}

void KytStudioApp::slotFileQuit()
{
    showMessage(tr("Exiting application..."));
    if (!doc->isModified() || queryExit())
        QApplication::quit();
    showMessage(tr("Ready."));
}
