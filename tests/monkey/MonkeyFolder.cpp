#include "tests/monkey/MonkeyFolder.h"

#include <sys/stat.h>

namespace {

constexpr int mostLeftBehind = 200; // files

void copyFiles(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files))
        QFile::copy(from + u'/' + name, to + u'/' + name);
}

struct BrokenFile {
    const char* name;
    const char* contents;
};

const BrokenFile brokenFiles[] = {
    {"empty.kyt", ""},
    {"magic.kyt", "KYTFILES MOLECULE 0 0 END_MOLECULE END_KYTFILE"},
    {"cut.kyt", "KYTFILE MOLECULE 3 2 ATOM C 10 10 0 255 0 0 ATOM N 60 60 0 0 0 2"},
    {"few.kyt", "KYTFILE MOLECULE 9 9 ATOM C 10 10 0 1 2 3 ATOM O 90 90 5 1 2 3 BOND 0 1 1 1 END_MOLECULE END_KYTFILE"},
    {"many.kyt", "KYTFILE MOLECULE 2000000000 2000000000 ATOM C 50 90 0 1 2 3 END_MOLECULE END_KYTFILE"},
    {"negative.kyt", "KYTFILE MOLECULE -5 -5 END_MOLECULE MOLECULE 1 -1 ATOM C 5 5 0 0 0 0 END_MOLECULE END_KYTFILE"},
    {"indices.kyt",
     "KYTFILE MOLECULE 2 5 ATOM C 100 100 0 1 2 3 ATOM C 140 100 0 1 2 3 BOND 0 7 1 1 BOND -1 0 1 1 BOND 1 1 2 1 1\n"
     "BOND 0 1 3 1 0 1 BOND 99999999999 0 1 1 END_MOLECULE END_KYTFILE"},
    {"kinds.kyt",
     "KYTFILE MOLECULE 4 4 ATOM C 100 50 0 1 2 3 ATOM C 140 50 0 1 2 3 ATOM C 140 90 0 1 2 3 ATOM C 100 90 0 1 2 3\n"
     "BOND 0 1 3 4 1 7 BOND 1 2 2 5 0 BOND 2 3 3 1 2 6 BOND 3 0 9 1 1 1 1 1 1 1 1 1 END_MOLECULE END_KYTFILE"},
    {"lineless.kyt",
     "KYTFILE MOLECULE 3 2 ATOM C 20 50 0 1 2 3 ATOM C 80 50 0 1 2 3 ATOM C 80 99 0 1 2 3 BOND 0 1 0 BOND 1 2 1 2\n"
     "END_MOLECULE END_KYTFILE"},
    {"parallel.kyt",
     "KYTFILE MOLECULE 2 4 ATOM C 200 50 0 1 2 3 ATOM C 240 80 0 1 2 3 BOND 0 1 1 1 BOND 0 1 2 1 1 BOND 1 0 1 2\n"
     "BOND 1 0 1 3 END_MOLECULE END_KYTFILE"},
    {"pieces.kyt",
     "KYTFILE MOLECULE 4 2 ATOM C 200 150 0 1 2 3 ATOM C 240 180 0 1 2 3 ATOM N 20 150 9 1 2 3 ATOM N 60 150 9 1 2 3\n"
     "BOND 0 1 1 1 BOND 3 2 1 0 END_MOLECULE END_KYTFILE"},
    {"numbers.kyt",
     "KYTFILE MOLECULE 3 2 ATOM C nan inf -inf x y z ATOM C 1e999 -1e-999 0x10 1 2 3 ATOM C 1,5 2.5.5 -- 1 2 3\n"
     "BOND 0 1 1 2 BOND 1 2 1 1 END_MOLECULE END_KYTFILE"},
    {"far.kyt",
     "KYTFILE MOLECULE 4 3 ATOM C 1e30 -1e30 1e30 1 2 3 ATOM C 3e38 3e38 -3e38 1 2 3 ATOM C 60 60 0 1 2 3\n"
     "ATOM C -5e9 60 0 1 2 3 BOND 0 1 1 2 BOND 1 2 2 1 1 BOND 2 3 1 3 END_MOLECULE END_KYTFILE"},
    {"steep.kyt",
     "KYTFILE MOLECULE 3 2 ATOM C 60 60 0 1 2 3 ATOM C 60 60 500 1 2 3 ATOM C 61 60 1e20 1 2 3 BOND 0 1 1 2 BOND 1 2 1 "
     "3\n"
     "END_MOLECULE END_KYTFILE"},
    {"ring.kyt",
     "KYTFILE MOLECULE 4 5 ATOM C 300 60 0 1 2 3 ATOM C 340 60 0 1 2 3 ATOM C 340 99 0 1 2 3 ATOM C 300 99 0 1 2 3\n"
     "BOND 0 1 1 2 BOND 1 2 1 1 BOND 2 3 1 3 BOND 3 0 1 1 BOND 0 2 2 1 0 END_MOLECULE END_KYTFILE"},
    {"words.kyt",
     "KYTFILE MOLECULE 2 1 ATOM END_MOLECULE 30 200 0 255 0 0 ATOM BOND 70 200 0 MOLECULE ATOM BOND\n"
     "BOND 0 1 1 1 END_MOLECULE END_KYTFILE trailing words"},
    {"binary.kyt", "KYTFILE\x01\x02\xff\xfe\x80 MOLECULE 1 0 \xc3\x28 \xf0\x9f"},
};

} // namespace

MonkeyFolder::MonkeyFolder()
{
    const QString project = QStringLiteral(KYTSTUDIO_FOLDER);
    for (const char* name : {"lib", "data"})
        copyFiles(project + u'/' + QLatin1String(name), QLatin1String(name));
    QFile::link(project + QStringLiteral("/icons"), QStringLiteral("icons"));
    writeBrokenFiles();

    QFile::copy(QStringLiteral("data/alanine.kyt"), QStringLiteral("link target.kyt"));
    QFile::link(QStringLiteral("link target.kyt"), QStringLiteral("link.kyt"));
    QFile::link(QStringLiteral("nowhere/target.kyt"), QStringLiteral("dangling.kyt"));
    QFile::link(QStringLiteral("loop.kyt"), QStringLiteral("loop.kyt"));
    mkfifo("pipe.kyt", 0600);
    QDir().mkdir(QStringLiteral("folder.kyt"));
    QDir().mkdir(QStringLiteral("refuses"));
    writeFile(QStringLiteral("refuses/writable.kyt"), emptyWorkspace);
    QFile::setPermissions(QStringLiteral("refuses"), QFile::ReadOwner | QFile::ExeOwner);
    writeFile(QStringLiteral("readonly.kyt"), atomsInAFile(3));
    QFile::setPermissions(QStringLiteral("readonly.kyt"), QFile::ReadOwner);

    for (const BrokenFile& file : brokenFiles)
        names << QLatin1String(file.name);
    // Saved again and again under one of a few names, with and without the extension that the program appends.
    for (const char* name : {"a",
                             "a",
                             "a",
                             "b",
                             "c",
                             "link",
                             "a.kyt",
                             "a.kyt",
                             "a.kyt",
                             "a.kyt",
                             "b.kyt",
                             "b.kyt",
                             "c.kyt",
                             "a.kyt.kyt",
                             ".kyt",
                             "noname.kyt",
                             "lib/benzene.kyf",
                             "lib/cubane.kyf",
                             "lib/water.kyf",
                             "data/alanine.kyt",
                             "data/caffeine.kyt",
                             "link.kyt",
                             "dangling.kyt",
                             "loop.kyt",
                             "pipe.kyt",
                             "folder.kyt",
                             "refuses/new",
                             "refuses/writable.kyt",
                             "readonly",
                             "readonly.kyt",
                             "missing.kyt",
                             "missing/missing.kyt",
                             "a.kyt/inside",
                             "",
                             "."})
        names << QLatin1String(name);
}

MonkeyFolder::~MonkeyFolder()
{
    QFile::setPermissions(QStringLiteral("refuses"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void MonkeyFolder::writeBrokenFiles() const
{
    for (const BrokenFile& file : brokenFiles)
        writeFile(folder.path(QLatin1String(file.name)), file.contents);
}

QString MonkeyFolder::fileName(int number) const
{
    const qsizetype places = names.size() + 2;
    const qsizetype place = number % places;
    if (place == names.size())
        return QStringLiteral("/proc/monkey");
    if (place == names.size() + 1)
        return folder.path(QString(300, u'n'));
    return folder.path(names[place]);
}

QString MonkeyFolder::anyName(const QString& text) const
{
    // Only what stays in here: a name must not climb out.
    QString name = text.left(200);
    name.replace(QStringLiteral(".."), QStringLiteral("__")).remove(QChar::Null);
    return folder.path(name);
}

void MonkeyFolder::tidy() const
{
    if (folder.names().size() < mostLeftBehind)
        return;
    for (const QString& name : folder.names())
        if (QFileInfo(folder.path(name)).isFile() && !names.contains(name))
            QFile::remove(folder.path(name));
}

QString anyText(int number)
{
    static const QStringList texts = {
        QStringLiteral("C"),
        QStringLiteral("N"),
        QStringLiteral("OH"),
        QStringLiteral("Cl"),
        QString(),
        QStringLiteral(" "),
        QStringLiteral("0"),
        QStringLiteral("30"),
        QStringLiteral("45.75"),
        QStringLiteral("60"),
        QStringLiteral("89"),
        QStringLiteral("90"),
        QStringLiteral("255"),
        QStringLiteral("999"),
        QStringLiteral("-1"),
        QStringLiteral("+7"),
        QStringLiteral("99999999999999999999"),
        QStringLiteral("1e309"),
        QStringLiteral("nan"),
        QStringLiteral("0x1F"),
        QStringLiteral("END_MOLECULE"),
        QStringLiteral("END_KYTFILE"),
        QStringLiteral("MOLECULE"),
        QStringLiteral("KYTFILE"),
        QStringLiteral("ATOM"),
        QStringLiteral("BOND 0 1 1 1"),
        QStringLiteral("two words"),
        QStringLiteral("  a\tb\nc  "),
        QStringLiteral("<b>bold</b>&amp;"),
        QStringLiteral("&File %1 %s %n [*]"),
        QStringLiteral("a/b"),
        QStringLiteral("*"),
        QString::fromUtf8("\xc3\xbc\xe2\x82\xac\xce\xa9 \xe5\x88\x86\xe5\xad\x90"),
        QString::fromUtf8("\xf0\x9f\xa7\xaa\xf0\x9f\x90\x92"),
        QString::fromUtf8("e\xcc\x81\xcc\xa7\xe2\x80\x8d\xe2\x80\xae\xd7\xa9"),
        QString::fromUtf8("\xef\xbb\xbf\xc2\xa0\xe3\x80\x80"),
        QString(QChar(0xd800)) + QStringLiteral("x"),
        QString(QChar::Null) + QStringLiteral("x"),
        QString(700, u'W'),
        QString(40, u'\u0301'),
    };
    return texts[number % texts.size()];
}
