/// Walks at random through small drawings, in the editor and in a model of it at once, and stops where they differ.

#include "tests/monkey/ModelWalk.h"

#include <QCommandLineParser>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int eventsForEach = 500; // in one drawing

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Compares the editor with a model of it, event by event.");
    parser.addHelpOption();
    const QCommandLineOption seedOption("seed", "The first seed.", "number", "1");
    const QCommandLineOption stepsOption("steps", "Events in total, 500 for each seed.", "number", "5000");
    parser.addOptions({seedOption, stepsOption});
    parser.process(application);

    const int steps = parser.value(stepsOption).toInt();
    quint64 seed = parser.value(seedOption).toULongLong();
    int played = 0;
    Statistics statistics;
    for (; played < steps; ++seed) {
        ModelWalk walk(seed);
        walk.play(std::min(eventsForEach, steps - played));
        played += int(walk.events().size());
        for (auto entry = walk.statistics.cbegin(); entry != walk.statistics.cend(); ++entry)
            statistics[entry.key()] += entry.value();
        if (walk.fault().isEmpty())
            continue;
        print(walk.events().join(u'\n')
              + QStringLiteral("\nseed %1 differs after event %2: %3\n")
                    .arg(seed)
                    .arg(walk.events().size())
                    .arg(walk.fault()));
        return 1;
    }
    print(toText(statistics));
    print(QStringLiteral("%1 events without a difference\n").arg(played));
    return 0;
}
