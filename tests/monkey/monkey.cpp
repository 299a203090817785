/// Sets monkeys on the editor's main window: plays random steps, each sequence in a process of its own, and looks after
/// every step whether all is as it must be. Where it is not, it says how to see it again and looks for the shortest
/// sequence that shows it.

#include "tests/monkey/Monkey.h"
#include "tests/monkey/NeighbourCopies.h"
#include "tests/monkey/Shrink.h"
#include "tests/monkey/StepGenerator.h"

#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

const QString leakFault = QStringLiteral("memory was lost");
constexpr unsigned longestStart = 120; // seconds until a process that has not begun to play counts as hanging

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

struct Options {
    quint64 firstSeed = 1;
    int seeds = 1;
    int steps = 2000;
    int together = 1;
    int shrinkSeconds = 300;
    bool play = false;
    QString file;
    QString progressFile;
    QString keep;
    QStringList plantedArguments;
    PlantedFaults planted;
};

/// What a process reached that played steps.
struct Trial {
    QString fault; ///< nothing when all went well
    QString kind;  ///< the fault without what differs from run to run
    int step = -1; ///< the step it came to; -1 when it did not come to any
    QString output;
};

Options optionsOf(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription("Random clicks and keys on KytStudio's main window.");
    parser.addHelpOption();
    const QCommandLineOption seed("seed", "The first seed.", "number", "1");
    const QCommandLineOption seeds("seeds", "How many seeds.", "number", "1");
    const QCommandLineOption steps("steps", "Steps for each seed.", "number", "2000");
    const QCommandLineOption together("together", "How many seeds at a time, on one display.", "number", "1");
    const QCommandLineOption file("file", "Takes the steps from a file, not from seeds.", "file");
    const QCommandLineOption play("play", "Plays in this process, for a debugger, and shrinks nothing.");
    const QCommandLineOption progress("progress", "With --play: keeps the number of the step here.", "file");
    const QCommandLineOption keep("keep", "Where sequences that fail are written to.", "folder", ".");
    const QCommandLineOption shrink("shrink-seconds", "How long to look for a shorter sequence.", "number", "300");
    const QCommandLineOption mostAtoms("most-atoms", "Planted: more atoms are a fault.", "number");
    const QCommandLineOption crashBonds("crash-bonds", "Planted: more bonds are a crash.", "number");
    const QCommandLineOption hangWedges("hang-wedges", "Planted: more wedges make it hang.", "number");
    const QCommandLineOption leak("lose-memory", "Planted: every chain loses memory.");
    parser.addOptions(
        {seed, seeds, steps, together, file, play, progress, keep, shrink, mostAtoms, crashBonds, hangWedges, leak});
    parser.process(application);

    Options options;
    options.firstSeed = parser.value(seed).toULongLong();
    options.seeds = parser.value(seeds).toInt();
    options.steps = parser.value(steps).toInt();
    options.shrinkSeconds = parser.value(shrink).toInt();
    options.play = parser.isSet(play);
    options.file = parser.value(file);
    options.together = std::max(1, parser.value(together).toInt());
    options.progressFile = parser.value(progress);
    options.keep = parser.value(keep);
    const auto plant = [&](const QCommandLineOption& option, int& number) {
        if (!parser.isSet(option))
            return;
        number = parser.value(option).toInt();
        options.plantedArguments << "--" + option.names().first() << parser.value(option);
    };
    plant(mostAtoms, options.planted.mostAtoms);
    plant(crashBonds, options.planted.crashBonds);
    plant(hangWedges, options.planted.hangWedges);
    options.planted.leak = parser.isSet(leak);
    if (options.planted.leak)
        options.plantedArguments << "--lose-memory";
    return options;
}

Steps stepsOf(const Options& options)
{
    if (options.file.isEmpty())
        return stepsFromSeed(options.firstSeed, options.steps);
    const std::optional<Steps> steps = stepsFromText(QString::fromUtf8(readFile(options.file)));
    if (!steps) {
        print(options.file + QStringLiteral(" holds something that is no step, or cannot be read\n"));
        std::exit(2);
    }
    return *steps;
}

// ---- in the process that plays

/// Set up as the editor sets itself up.
int playHere(int argc, char** argv, const Options& options)
{
    std::signal(SIGXFSZ, SIG_IGN);
    alarm(longestStart);
#ifdef KYTSTUDIO_CONVERTER_FOLDER
    qputenv("PATH", KYTSTUDIO_CONVERTER_FOLDER ":" + qgetenv("PATH"));
#endif
    const Steps steps = stepsOf(options);

    QFile progressFile(options.progressFile);
    uchar* progress = nullptr;
    if (!options.progressFile.isEmpty() && progressFile.open(QIODevice::ReadWrite))
        progress = progressFile.map(0, sizeof(int));

    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));
    QTranslator translator;
    static_cast<void>(translator.load(QStringLiteral("kytstudio.") + QLocale::system().name(), QStringLiteral(".")));
    QApplication::installTranslator(&translator);

    Monkey monkey(steps, options.planted, [progress](int step) {
        if (progress)
            std::memcpy(progress, &step, sizeof step);
    });
    monkey.start();
    const int code = QApplication::exec();
    alarm(longestStart);
    print(toText(monkey.statistics));
    if (!monkey.fault().isEmpty())
        print(QStringLiteral("fault: %1\n").arg(monkey.fault()));
    return code;
}

// ---- in the process that watches

Trial play(const Options& options, const QStringList& source)
{
    QTemporaryFile progress;
    const int none = -1;
    if (!progress.open() || progress.write(reinterpret_cast<const char*>(&none), sizeof none) != sizeof none
        || !progress.flush())
        qFatal("no temporary file");

    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{"--play", "--progress", progress.fileName()} + source + options.plantedArguments);
    process.waitForFinished(-1);

    Trial trial;
    trial.output = QString::fromLocal8Bit(process.readAll());
    const QByteArray reached = readFile(progress.fileName());
    std::memcpy(&trial.step, reached.constData(), sizeof trial.step);
    if (process.exitStatus() == QProcess::CrashExit)
        trial.fault = process.exitCode() == SIGALRM ? QStringLiteral("it hangs")
                                                    : QStringLiteral("killed by signal %1").arg(process.exitCode());
    else if (process.exitCode() == Monkey::faultCode)
        trial.fault = trial.output.section(QStringLiteral("fault: "), -1).section(u'\n', 0, 0);
    else if (process.exitCode() != 0 && trial.output.contains(QLatin1String("LeakSanitizer: detected memory leaks")))
        trial.fault = leakFault;
    else if (process.exitCode() != 0)
        trial.fault = QStringLiteral("ended with code %1").arg(process.exitCode());
    trial.kind = trial.fault;
    trial.kind.remove(QRegularExpression(QStringLiteral("[0-9]+")));
    return trial;
}

Trial playSteps(const Options& options, const Steps& steps)
{
    QTemporaryFile file;
    const QByteArray text = toText(steps).toUtf8();
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        qFatal("no temporary file");
    return play(options, {"--file", file.fileName()});
}

QString command(const QStringList& arguments)
{
    return QStringLiteral("  %1 %2 %3\n")
        .arg(QStringLiteral(KYTSTUDIO_FOLDER "/tests/on_screen"), QCoreApplication::applicationFilePath(),
             arguments.join(u' '));
}

/// Looks for a short sequence that still fails in the same way, and writes it to `fileName`.
void shrinkInto(const QString& fileName, const Options& options, const Trial& failed, Steps steps)
{
    const bool leaks = failed.kind == leakFault;
    if (!leaks)
        steps.resize(std::min<qsizetype>(steps.size(), failed.step + 1));
    const QDeadlineTimer deadline(options.shrinkSeconds * 1000);
    int trials = 0;
    const Steps few = shrunk(
        steps,
        [&](const Steps& fewer) {
            ++trials;
            return playSteps(options, fewer).kind == failed.kind;
        },
        [&] { return !deadline.hasExpired(); });
    QDir().mkpath(QFileInfo(fileName).path());
    writeFile(fileName, "# " + failed.fault.toUtf8() + '\n' + toText(few).toUtf8());
    print(QStringLiteral("%1 of its steps are enough (%2 after %3 trials), in %4:\n")
              .arg(few.size())
              .arg(deadline.hasExpired() ? "no more time to look" : "none of them can be left out")
              .arg(trials)
              .arg(fileName)
          + command(QStringList{"--play", "--file", fileName} + options.plantedArguments));
}

void report(const Options& options, const QString& source, const QStringList& sourceArguments, const Trial& failed,
            const Steps& steps)
{
    print(QStringLiteral("%1 fails at step %2: %3\n").arg(source).arg(failed.step + 1).arg(failed.fault));
    print(failed.output.right(8000));
    if (failed.step < 0) {
        print(QStringLiteral("It did not come to play at all.\n"));
        return;
    }
    print(QStringLiteral("To see it again:\n")
          + command(QStringList{"--play"} + sourceArguments + options.plantedArguments));
    if (options.shrinkSeconds > 0)
        shrinkInto(QDir(options.keep).absoluteFilePath(QString(source).replace(u' ', u'-') + ".steps"), options, failed,
                   steps);
}

/// What several sequences add to, each in a thread.
struct Totals {
    std::mutex mutex;
    Statistics statistics;
    int started = 0;
    int failures = 0;
};

/// Plays from one source of steps.
void watch(const Options& options, Totals& totals)
{
    const QString source = options.file.isEmpty() ? QStringLiteral("seed %1").arg(options.firstSeed)
                                                  : QStringLiteral("file %1").arg(QFileInfo(options.file).baseName());
    const QStringList arguments = options.file.isEmpty()
        ? QStringList{"--seed", QString::number(options.firstSeed), "--steps", QString::number(options.steps)}
        : QStringList{"--file", options.file};
    const Steps steps = stepsOf(options);
    QElapsedTimer clock;
    clock.start();
    const Trial trial = play(options, arguments);
    const std::lock_guard<std::mutex> lock(totals.mutex);
    if (!trial.fault.isEmpty()) {
        ++totals.failures;
        report(options, source, arguments, trial, steps);
        return;
    }
    addText(totals.statistics, trial.output);
    print(QStringLiteral("%1: %2 steps in %3 s\n")
              .arg(source)
              .arg(trial.step + 1)
              .arg(clock.elapsed() / 1000.0, 0, 'f', 1));
}

qint64 stepsIn(const Statistics& statistics)
{
    qint64 steps = 0;
    for (auto entry = statistics.cbegin(); entry != statistics.cend(); ++entry)
        if (entry.key().startsWith(QLatin1String("step ")))
            steps += entry.value();
    return steps;
}

int watchAll(const Options& options)
{
    NeighbourCopies neighbour;
    if (!neighbour.write()) {
        print(QStringLiteral("the copies of a neighbour cannot be written\n"));
        return 2;
    }
    Totals totals;
    const int sequences = options.file.isEmpty() ? options.seeds : 1;
    const auto playNext = [&] {
        for (;;) {
            Options one = options;
            {
                const std::lock_guard<std::mutex> lock(totals.mutex);
                if (totals.started == sequences)
                    return;
                one.firstSeed += static_cast<quint64>(totals.started++);
            }
            watch(one, totals);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < options.together; ++i)
        threads.emplace_back(playNext);
    for (std::thread& thread : threads)
        thread.join();
    print(toText(totals.statistics));
    print(QStringLiteral("%1 steps without a fault, %2 sequences failed\n")
              .arg(stepsIn(totals.statistics))
              .arg(totals.failures));
    return totals.failures > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    {
        int count = argc;
        const QCoreApplication application(count, argv);
        options = optionsOf(application);
        if (!options.play)
            return watchAll(options);
    }
    return playHere(argc, argv, options);
}
