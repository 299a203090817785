#include "app/FileDialogs.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QMessageBox>

#include <utility>

namespace {

/// Tells files by their names alone. Left to itself, a dialog looks into every file of a folder for its type, and waits
/// for ever for one that nobody writes.
class NamesOnly : public QFileIconProvider {
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

/// A save dialog that knows the extension that its answer will get.
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

QString answer(QFileDialog& dialog)
{
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

QString askOpenFileName(QWidget* parent, const FileQuestion& question)
{
    NamesOnly icons;
    QFileDialog dialog(parent);
    dialog.setIconProvider(&icons);
    prepare(dialog, question);
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QString name = answer(dialog);
    const QString resolved = name.isEmpty() ? QString() : QFileInfo(name).canonicalFilePath();
    return resolved.isEmpty() ? name : resolved;
}

QString askSaveFileName(QWidget* parent, const FileQuestion& question, const QString& extension)
{
    NamesOnly icons;
    SaveDialog dialog(parent, extension);
    dialog.setIconProvider(&icons);
    prepare(dialog, question);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return answer(dialog);
}
