#include "app/Converter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>

#include <sys/prctl.h>

namespace {

const QString converterName = QStringLiteral("kytconvert");

/// The first line of what kytconvert printed, without its name and the name of its input.
QString reasonIn(const QByteArray& printed)
{
    QString line = QString::fromUtf8(printed).section(u'\n', 0, 0);
    for (const QString& prefix : {converterName + QStringLiteral(": "), QStringLiteral("standard input:")})
        if (line.startsWith(prefix))
            line.remove(0, prefix.size());
    return line.trimmed();
}

} // namespace

QString Converter::program()
{
    const QFileInfo beside(QDir(QCoreApplication::applicationDirPath()).filePath(converterName));
    return beside.isExecutable() ? beside.filePath() : QStandardPaths::findExecutable(converterName);
}

Converter::Converter(const QStringList& arguments, const QByteArray& input, int limit, QObject* parent)
    : QObject(parent)
    , process(new QProcess(this))
{
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    connect(process, &QProcess::finished, this, &Converter::report);
    const auto reportNoStart = [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            emit finished({}, tr("kytconvert cannot be started"));
    };
    connect(process, &QProcess::errorOccurred, this, reportNoStart, Qt::QueuedConnection);
    limitTimer.setSingleShot(true);
    connect(&limitTimer, &QTimer::timeout, this, [this] {
        isTimedOut = true;
        process->kill();
    });
    limitTimer.start(limit);
    process->start(program(), arguments);
    process->write(input);
    process->closeWriteChannel();
}

Converter::~Converter()
{
    disconnect(process, nullptr, this, nullptr);
    process->kill();
    process->waitForFinished();
}

bool Converter::wait(int milliseconds)
{
    return process->state() == QProcess::NotRunning || process->waitForFinished(milliseconds);
}

void Converter::report()
{
    limitTimer.stop();
    const bool succeeded = process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
    if (succeeded) {
        emit finished(process->readAllStandardOutput(), QString());
        return;
    }
    const QString reason = reasonIn(process->readAllStandardError());
    emit finished({},
                  isTimedOut             ? tr("kytconvert took too long")
                      : reason.isEmpty() ? tr("kytconvert failed")
                                         : reason);
}
