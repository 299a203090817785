#pragma once

#include "tests/monkey/Chance.h"
#include "tests/monkey/MonkeyFolder.h"
#include "tests/monkey/Statistics.h"

#include <QPointer>

class QDialog;
class QFileDialog;
class QMenu;
class QMessageBox;
class QPrintDialog;

/// Answers at random whatever window waits for an answer, while a step that may open one is under way.
class Answers : public QObject {
public:
    Answers(const MonkeyFolder& folder, Statistics& statistics);

    /// From now on windows are answered as `salt` has it.
    void begin(int salt);
    void end();

    /// A window that would not go, whatever was done to it; or nothing.
    QString fault() const { return complaint; }

private:
    void again();
    void look();
    void answer(QWidget* front);
    void dismiss(QWidget* front);

    bool closeByKey(QDialog* dialog);
    void answerMenu(QMenu* menu);
    void answerMessage(QMessageBox* box);
    void answerFileDialog(QFileDialog* dialog);
    void answerPrintDialog(QPrintDialog* dialog);
    void answerForm(QDialog* dialog);
    void pressAnyButton(QDialog* dialog);
    void count(const QString& what) { ++statistics[what]; }

    const MonkeyFolder& folder;
    Statistics& statistics;
    Chance chance{0};
    bool active = false;
    quint64 round = 0;
    QPointer<QWidget> answered;
    int tries = 0;
    QString complaint;
};
