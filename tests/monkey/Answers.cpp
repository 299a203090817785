#include "tests/monkey/Answers.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QToolButton>

namespace {

constexpr int triesAtRandom = 6; // then Escape
constexpr int triesAtAll = 40;   // then the window is in the way

QString kindOf(const QWidget* window)
{
    return QString::fromLatin1(window->metaObject()->className()) + QStringLiteral(" \"")
        + (window->objectName().isEmpty() ? window->windowTitle() : window->objectName()).section(u'/', -1).left(30)
        + QStringLiteral("\"");
}

} // namespace

Answers::Answers(const MonkeyFolder& folder, Statistics& statistics)
    : folder(folder)
    , statistics(statistics)
{
}

void Answers::begin(int salt)
{
    chance = Chance(static_cast<quint64>(salt));
    active = true;
    ++round;
    answered = nullptr;
    tries = 0;
    again();
}

void Answers::end()
{
    active = false;
}

// A timer of its own each time: one that is being served does not fire again in the event loops started by it.
void Answers::again()
{
    QTimer::singleShot(0, this, [this, wanted = round] {
        if (active && wanted == round)
            look();
    });
}

void Answers::look()
{
    again();
    QWidget* front = QApplication::activePopupWidget();
    if (!front)
        front = QApplication::activeModalWidget();
    if (!front || !front->isVisible())
        return;
    if (front != answered) {
        answered = front;
        tries = 0;
        count(QStringLiteral("window ") + kindOf(front));
    }
    ++tries;
    if (tries > triesAtAll)
        complaint = kindOf(front) + QStringLiteral(" does not go");
    if (tries > triesAtRandom)
        dismiss(front);
    else
        answer(front);
}

void Answers::dismiss(QWidget* front)
{
    count(QStringLiteral("window dismissed ") + kindOf(front));
    if (auto* dialog = qobject_cast<QDialog*>(front))
        dialog->reject();
    else
        front->close();
}

void Answers::answer(QWidget* front)
{
    if (auto* menu = qobject_cast<QMenu*>(front))
        answerMenu(menu);
    else if (auto* box = qobject_cast<QMessageBox*>(front))
        answerMessage(box);
    else if (auto* files = qobject_cast<QFileDialog*>(front))
        answerFileDialog(files);
    else if (auto* print = qobject_cast<QPrintDialog*>(front))
        answerPrintDialog(print);
    else if (auto* dialog = qobject_cast<QDialog*>(front))
        answerForm(dialog);
    else
        dismiss(front);
}

void Answers::answerMenu(QMenu* menu)
{
    const QPointer<QMenu> alive = menu;
    for (int i = chance.below(6); i > 0 && alive; --i)
        QTest::keyClick(menu, chance.percent(80) ? Qt::Key_Down : Qt::Key_Up);
    if (alive)
        QTest::keyClick(menu, chance.percent(60) ? Qt::Key_Return : Qt::Key_Escape);
}

/// Now and then no button is pressed: true when it was a key, or the window's own close button.
bool Answers::closeByKey(QDialog* dialog)
{
    const QString name = dialog->windowTitle().section(u'/', -1).left(30);
    switch (chance.below(9)) {
    case 0:
        count(QStringLiteral("answer ") + name + QStringLiteral(": Escape"));
        QTest::keyClick(dialog, Qt::Key_Escape);
        return true;
    case 1:
        count(QStringLiteral("answer ") + name + QStringLiteral(": Return"));
        QTest::keyClick(dialog, Qt::Key_Return);
        return true;
    case 2:
        count(QStringLiteral("answer ") + name + QStringLiteral(": closed"));
        dialog->close();
        return true;
    default:
        return false;
    }
}

void Answers::answerMessage(QMessageBox* box)
{
    if (!closeByKey(box)) {
        QAbstractButton* button = box->buttons().value(chance.below(static_cast<int>(box->buttons().size())));
        count(QStringLiteral("answer ") + box->windowTitle().section(u'/', -1).left(30) + QStringLiteral(": ")
              + button->text());
        button->click();
    }
}

void Answers::answerFileDialog(QFileDialog* dialog)
{
    auto* field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const int drawn = chance.below(100);
    if (drawn < 8 || !field) {
        QTest::keyClick(dialog, Qt::Key_Escape);
    } else if (drawn < 12) {
        dialog->close();
    } else if (drawn < 16) {
        // The working directory is in here; wherever else the dialog stands, nothing is to be written.
        const bool opens = dialog->acceptMode() == QFileDialog::AcceptOpen;
        field->setText(opens ? anyText(chance.below(1000)) : folder.anyName(anyText(chance.below(1000))));
        QTest::keyClick(field, Qt::Key_Return);
    } else if (drawn < 18) {
        if (auto* up = dialog->findChild<QToolButton*>(QStringLiteral("toParentButton")))
            up->click();
    } else {
        field->setText(folder.fileName(chance.below(1 << 16)));
        QTest::keyClick(field, Qt::Key_Return);
    }
}

void Answers::answerPrintDialog(QPrintDialog* dialog)
{
    if (chance.percent(50)) {
        dialog->reject();
        return;
    }
    count(QStringLiteral("answer print: accepted"));
    dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
    dialog->printer()->setOutputFileName(folder.anyName(QStringLiteral("print.pdf")));
    dialog->done(QDialog::Accepted);
}

void Answers::answerForm(QDialog* dialog)
{
    const QList<QLineEdit*> fields = dialog->findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        if (chance.percent(40))
            field->setText(anyText(chance.below(1000)));
        else if (chance.percent(20))
            QTest::keyClicks(field, QStringLiteral("42"));
    }
    if (!closeByKey(dialog))
        pressAnyButton(dialog);
}

void Answers::pressAnyButton(QDialog* dialog)
{
    const QList<QAbstractButton*> buttons = dialog->findChildren<QAbstractButton*>();
    if (buttons.isEmpty())
        return;
    QAbstractButton* button = buttons[chance.below(static_cast<int>(buttons.size()))];
    count(QStringLiteral("answer ") + dialog->windowTitle() + QStringLiteral(": ") + button->text());
    button->click();
}
