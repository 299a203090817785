// Runs a fuzz target on kept inputs: replay CORPUS [FOUND]
// Every file of the folder CORPUS, which must hold some, and of the folder FOUND, which holds what has ever failed, if
// anything. Each file is named before it is run, so the one that fails is the last one named.

#include "tests/fuzz/FuzzTarget.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <memory>

namespace {

bool replay(const QString& name)
{
    std::printf("%s\n", qPrintable(name));
    std::fflush(stdout);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "replay: %s cannot be read\n", qPrintable(name));
        return false;
    }
    runInput(file.readAll());
    return true;
}

/// The number of files replayed, or -1 when one cannot be read.
int replayFolder(const QDir& folder)
{
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names)
        if (!replay(folder.filePath(name)))
            return -1;
    return static_cast<int>(names.size());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: replay CORPUS [FOUND]\n");
        return 2;
    }
    startApplication();
    const std::unique_ptr<QApplication> application(qApp);
    const int kept = replayFolder(QDir(QFile::decodeName(argv[1])));
    if (kept == 0)
        std::fprintf(stderr, "replay: there are no inputs in %s\n", argv[1]);
    if (kept <= 0)
        return 1;
    const int found = argc == 3 ? replayFolder(QDir(QFile::decodeName(argv[2]))) : 0;
    if (found < 0)
        return 1;
    std::printf("%d kept inputs and %d that have failed before are fine\n", kept, found);
    return 0;
}
