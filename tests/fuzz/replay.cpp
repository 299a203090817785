// Runs a fuzz target on the files of the folders that are its arguments: replay FOLDER...
// The file that it stopped at is the last one named.

#include "tests/fuzz/FuzzTarget.h"

#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

bool replay(const QString& name)
{
    QFile file(name);
    std::printf("%s\n", qPrintable(name));
    std::fflush(stdout);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    runInput(file.readAll());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    startApplication();
    if (argc < 2) {
        std::fprintf(stderr, "replay: no folder is named\n");
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        if (names.isEmpty()) {
            std::fprintf(stderr, "replay: there are no inputs in %s\n", argv[i]);
            return 1;
        }
        for (const QString& name : names) {
            if (!replay(folder.filePath(name))) {
                std::fprintf(stderr, "replay: %s cannot be read\n", qPrintable(name));
                return 1;
            }
        }
        std::printf("%d inputs of %s are fine\n", int(names.size()), argv[i]);
    }
    return 0;
}
