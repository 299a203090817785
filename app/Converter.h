#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class QProcess;

/// One run of kytconvert in the background. Ends with this object, or with the editor.
class Converter : public QObject {
    Q_OBJECT

public:
    /// The path of kytconvert: beside the editor, else on the PATH. Empty if it is not installed.
    static QString program();

    /// Starts kytconvert with `input` on its standard input. It is ended if it takes longer than `limit` milliseconds.
    Converter(const QStringList& arguments, const QByteArray& input, int limit, QObject* parent = nullptr);
    ~Converter() override;

    /// Waits until it has ended, for at most the given time. Returns false if it still runs. Emits finished.
    bool wait(int milliseconds);

signals:
    /// Emitted once. `error` is null on success, otherwise a text in English without the name of the program.
    void finished(const QByteArray& output, const QString& error);

private:
    void report();

    QProcess* process;
    QTimer limitTimer;
    bool isTimedOut = false;
};
