#include "app/FileDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

#include <utility>

namespace {

/// Determines icons and types from file names only. The default provider reads every file in a folder, and blocks for
/// ever on a pipe without a writer.
class NameIconProvider : public QFileIconProvider {
public:
    QIcon icon(const QFileInfo& info) const override
    {
        return QFileIconProvider::icon(info.isDir() ? QFileIconProvider::Folder : QFileIconProvider::File);
    }
    QString type(const QFileInfo& info) const override
    {
        return info.isDir() ? QFileIconProvider::type(info) : info.suffix();
    }
};

/// A save dialog that appends an extension to the selected name. A line below its fields shows the file that will be
/// written, or why it cannot be written.
class SaveDialog : public QFileDialog {
    Q_DECLARE_TR_FUNCTIONS(SaveDialog)

public:
    SaveDialog(QWidget* parent, QString extension)
        : QFileDialog(parent)
        , extension(std::move(extension))
    {
        setOption(QFileDialog::DontConfirmOverwrite);
    }

    /// Adds the line that shows the file. To be called after the dialog is set up, when its fields exist.
    void showFileBelow()
    {
        auto* grid = qobject_cast<QGridLayout*>(layout());
        auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (!grid || !name)
            return;
        below = new QLabel(this);
        below->setObjectName(QStringLiteral("fileToWrite"));
        below->setTextFormat(Qt::PlainText);
        below->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        grid->addWidget(below, grid->rowCount(), 0, 1, grid->columnCount());
        connect(name, &QLineEdit::textChanged, this, &SaveDialog::showFile);
        connect(this, &QFileDialog::directoryEntered, this, &SaveDialog::showFile);
        showFile();
    }

protected:
    void accept() override
    {
        const QString name = selectedFiles().value(0);
        if (name.isEmpty() || QFileInfo(name).isDir()) {
            QFileDialog::accept();
            return;
        }
        const QString fault = whyNot(name + extension);
        if (!fault.isEmpty())
            showBelow(fault, true);
        else if (mayWrite(name + extension))
            QFileDialog::accept();
    }

private:
    void showFile()
    {
        const QString name = selectedFiles().value(0);
        const bool isFile = !name.isEmpty() && !QFileInfo(name).isDir();
        showBelow(isFile ? tr("Saves as: %1").arg(QDir::toNativeSeparators(name + extension)) : QString());
    }

    void showBelow(const QString& text, bool isFault = false)
    {
        if (!below)
            return;
        QFont font = below->font();
        font.setBold(isFault);
        below->setFont(font);
        below->setText(text);
        below->setToolTip(text);
    }

    /// Why this file cannot be written; empty if it can.
    static QString whyNot(const QString& fileName)
    {
        const QFileInfo file(fileName);
        const QFileInfo folder(file.path());
        if (!folder.isDir())
            return tr("The folder \"%1\" does not exist.").arg(folder.filePath());
        if (file.isDir())
            return tr("\"%1\" is a folder.").arg(file.fileName());
        if (file.exists() && !file.isFile())
            return tr("\"%1\" is not a regular file.").arg(file.fileName());
        const bool writable = file.exists() ? file.isWritable() : folder.isWritable();
        return writable
            ? QString()
            : tr("No write permission for \"%1\".").arg(file.exists() ? file.fileName() : folder.filePath());
    }

    bool mayWrite(const QString& fileName)
    {
        if (!QFileInfo::exists(fileName))
            return true;
        const QString question =
            QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(fileName).fileName());
        return QMessageBox::warning(this, windowTitle(), question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            == QMessageBox::Yes;
    }

    QString extension;
    QLabel* below = nullptr;
};

void prepare(QFileDialog& dialog, const FileQuestion& question)
{
    dialog.setObjectName(question.name);
    dialog.setWindowTitle(question.caption);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setDirectory(question.directory);
    dialog.setNameFilter(question.filter);
}

/// Runs the dialog. Returns the selected file, or an empty text if it was cancelled.
QString selectedFile(QFileDialog& dialog)
{
    const bool accepted = dialog.exec() == QDialog::Accepted;
    // After a question about overwriting, not every window manager returns the keyboard focus to the parent.
    if (QWidget* parent = dialog.parentWidget())
        parent->activateWindow();
    return accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

QString askOpenFileName(QWidget* parent, const FileQuestion& question)
{
    NameIconProvider icons;
    QFileDialog dialog(parent);
    dialog.setIconProvider(&icons);
    prepare(dialog, question);
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QString name = selectedFile(dialog);
    const QString resolved = name.isEmpty() ? QString() : QFileInfo(name).canonicalFilePath();
    return resolved.isEmpty() ? name : resolved;
}

QString askSaveFileName(QWidget* parent, const FileQuestion& question, const QString& extension)
{
    NameIconProvider icons;
    SaveDialog dialog(parent, extension);
    dialog.setIconProvider(&icons);
    prepare(dialog, question);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.showFileBelow();
    return selectedFile(dialog);
}
