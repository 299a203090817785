#include "app/FileDialogs.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
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

/// A save dialog that takes the extension that will be appended into account when it checks for existing files.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(QWidget* parent, QString extension)
        : QFileDialog(parent)
        , extension(std::move(extension))
    {
        setOption(QFileDialog::DontConfirmOverwrite);
    }

protected:
    void accept() override
    {
        const QString name = selectedFiles().value(0);
        if (name.isEmpty() || QFileInfo(name).isDir() || mayWrite(name + extension))
            QFileDialog::accept();
    }

private:
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
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
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
    return selectedFile(dialog);
}
