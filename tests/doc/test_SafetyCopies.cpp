#include "doc/SafetyCopies.h"
#include "tests/doc/WorkspaceDrawing.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t ordinaryId = 65534;

/// A state folder of its own, which the environment names while it lives.
class StateHome {
public:
    StateHome()
        : before(qgetenv("XDG_STATE_HOME"))
        , homeBefore(qgetenv("HOME"))
    {
        chmod(qPrintable(directory.path()), 0777);
        qputenv("XDG_STATE_HOME", QFile::encodeName(directory.path()));
    }
    ~StateHome()
    {
        qputenv("XDG_STATE_HOME", before);
        qputenv("HOME", homeBefore);
    }
    StateHome(const StateHome&) = delete;
    StateHome& operator=(const StateHome&) = delete;

    QString path(const QString& name) const { return directory.filePath(name); }
    QDir folder() const { return QDir(path("kytstudio")); }
    QStringList everything() const
    {
        QStringList names =
            folder().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        names.removeOne("sessions");
        return names;
    }
    /// The contents of all files, in the order of their names.
    QStringList texts() const
    {
        QStringList read;
        for (const QString& name : everything())
            read.append(contents(folder().filePath(name)));
        return read;
    }
    static QString contents(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString("(cannot be read)");
    }

    /// A file in the folder, with the time of its last change.
    QString put(const QString& name, const QByteArray& text, const QDateTime& changed) const
    {
        folder().mkpath(".");
        QFile file(folder().filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()
            || !file.setFileTime(changed, QFile::FileModificationTime))
            qFatal("a file cannot be made");
        return file.fileName();
    }
    /// A copy as if made so many minutes ago.
    QString putCopy(int minutesAgo, const QByteArray& text = "KYTFILE\nEND_KYTFILE\n") const
    {
        const QDateTime time = QDateTime::currentDateTimeUtc().addSecs(-60 * minutesAgo);
        return put(nameAt(time), text, time);
    }
    /// The name of a copy made at a time in UTC.
    static QString nameAt(const QDateTime& time) { return time.toString("yyyy-MM-dd'T'HH-mm-ss.zzz'+0000.kyt'"); }

private:
    QByteArray before;
    QByteArray homeBefore;
    QTemporaryDir directory;
};

/// A drawing of one atom with this symbol.
struct OneAtom : WorkspaceDrawing {
    explicit OneAtom(const QString& symbol) { atom(10, 20, 0, symbol); }
    void keep(const QString& inUse = {}) { SafetyCopies().keep(*canvas(), {inUse}); }
};

QString workspaceOf(const QString& symbol)
{
    return "KYTFILE\n MOLECULE 1 0\n  ATOM " + symbol + " 10 20 0 255 0 0\n END_MOLECULE\nEND_KYTFILE\n";
}

/// Another time zone, until the end of the scope.
class TimeZone {
public:
    explicit TimeZone(const char* name)
        : before(qgetenv("TZ"))
        , wasSet(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", name);
        tzset();
    }
    ~TimeZone()
    {
        if (wasSet)
            qputenv("TZ", before);
        else
            qunsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    QByteArray before;
    bool wasSet;
};

int inAProcess(const std::function<int()>& act)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(act());
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

class test_SafetyCopies : public QObject {
    Q_OBJECT

private slots:
    void folderIsInTheStateHome()
    {
        const StateHome state;
        QCOMPARE(safetyCopyFolder(), state.path("kytstudio"));
    }

    void withoutAStateHomeTheFolderIsInTheHome_data()
    {
        QTest::addColumn<QByteArray>("stateHome");
        QTest::newRow("not set") << QByteArray();
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("relative") << QByteArray("some/folder");
    }

    void withoutAStateHomeTheFolderIsInTheHome()
    {
        QFETCH(QByteArray, stateHome);
        const StateHome state;
        if (stateHome.isNull())
            qunsetenv("XDG_STATE_HOME");
        else
            qputenv("XDG_STATE_HOME", stateHome);
        qputenv("HOME", QFile::encodeName(state.path("me")));
        QCOMPARE(safetyCopyFolder(), state.path("me/.local/state/kytstudio"));
        OneAtom("C").keep();
        QCOMPARE(QDir(state.path("me/.local/state/kytstudio")).entryList(QDir::Files).size(), 1);
    }

    void withoutAnyHomeThereIsNoFolder_data()
    {
        QTest::addColumn<QByteArray>("home");
        QTest::newRow("not set") << QByteArray();
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("relative") << QByteArray("me");
    }

    void withoutAnyHomeThereIsNoFolder()
    {
        QFETCH(QByteArray, home);
        const StateHome state;
        qunsetenv("XDG_STATE_HOME");
        if (home.isNull())
            qunsetenv("HOME");
        else
            qputenv("HOME", home);
        QCOMPARE(safetyCopyFolder(), QString());
        const QStringList here = QDir().entryList();
        const LoggedMessages messages;
        OneAtom("C").keep();
        QCOMPARE(QDir().entryList(), here);
        QCOMPARE(messages.lines(), QStringList());
    }

    void copyIsTheWorkspaceAndOpens()
    {
        const StateHome state;
        WorkspaceDrawing drawing;
        drawing.bond(drawing.atom(10, 20, 5, QString::fromUtf8("\xce\xb1")), drawing.atom(40, 20), {KYTBT_StereoUp});
        SafetyCopies().keep(*drawing.canvas());
        QCOMPARE(state.texts(), QStringList(drawing.written()));
        WorkspaceDrawing again;
        QVERIFY(again.doc->load(state.folder().filePath(state.everything().first()), false));
        QCOMPARE(again.written(), drawing.written());
    }

    void emptyDrawingIsNotCopied()
    {
        const StateHome state;
        WorkspaceDrawing drawing;
        SafetyCopies().keep(*drawing.canvas());
        new QCanvasText("not an atom", drawing.canvas());
        SafetyCopies().keep(*drawing.canvas());
        QVERIFY(!state.folder().exists());
    }

    void folderAndCopyAreForTheUserAlone()
    {
        const StateHome state;
        const mode_t before = umask(0);
        OneAtom("C").keep();
        umask(before);
        struct stat status;
        QCOMPARE(stat(qPrintable(state.folder().path()), &status), 0);
        QCOMPARE(int(status.st_mode & ALLPERMS), 0700);
        QCOMPARE(stat(qPrintable(state.folder().filePath(state.everything().first())), &status), 0);
        QCOMPARE(int(status.st_mode & ALLPERMS), 0600);
    }

    void missingFoldersAreMade()
    {
        const StateHome state;
        qputenv("XDG_STATE_HOME", QFile::encodeName(state.path("a/b/c")));
        OneAtom("C").keep();
        QCOMPARE(QDir(state.path("a/b/c/kytstudio")).entryList(QDir::Files).size(), 1);
    }

    void nameTellsLocalTimeAndTheFileItToo()
    {
        const TimeZone zone("XYZ-5:30"); // five and a half hours ahead
        const StateHome state;
        const QDateTime begin = QDateTime::currentDateTimeUtc();
        OneAtom("C").keep();
        const QDateTime end = QDateTime::currentDateTimeUtc().addMSecs(1);
        const QString name = state.everything().value(0);
        const QRegularExpression form("^(\\d{4}-\\d\\d-\\d\\dT\\d\\d-\\d\\d-\\d\\d\\.\\d{3})\\+0530\\.kyt$");
        const QString local = form.match(name).captured(1);
        QDateTime told = QDateTime::fromString(local, "yyyy-MM-dd'T'HH-mm-ss.zzz");
        told.setTimeSpec(Qt::UTC);
        told = told.addSecs(-(5 * 3600 + 30 * 60));
        QVERIFY2(told.isValid() && begin <= told && told <= end, qPrintable(name));
        QCOMPARE(QFileInfo(state.folder().filePath(name)).lastModified().toUTC(), told);
    }

    void sameContentsAreCopiedOnce()
    {
        const StateHome state;
        OneAtom("C").keep();
        const QStringList first = state.everything();
        OneAtom("C").keep();
        QCOMPARE(state.everything(), first);
    }

    void sameContentsAreCopiedAgainAfterOthers()
    {
        const StateHome state;
        OneAtom("C").keep();
        OneAtom("N").keep();
        OneAtom("C").keep();
        QCOMPARE(state.texts(), QStringList({workspaceOf("C"), workspaceOf("N"), workspaceOf("C")}));
    }

    void manyCopiesInOneMomentHaveNamesOfTheirOwn()
    {
        const StateHome state;
        QStringList expected;
        for (int i = 0; i < 20; ++i) {
            OneAtom(QString::number(i)).keep();
            expected << workspaceOf(QString::number(i));
        }
        QCOMPARE(state.texts(), expected);
    }

    void processesDoNotTakeEachOthersNames()
    {
        constexpr int processes = 6;
        const StateHome state;
        int go[2];
        QCOMPARE(pipe(go), 0);
        QList<pid_t> children;
        std::vector<std::unique_ptr<OneAtom>> drawings;
        for (int i = 0; i < processes * 3; ++i)
            drawings.push_back(std::make_unique<OneAtom>(QString::number(i)));
        for (int i = 0; i < processes; ++i) {
            const pid_t child = fork();
            if (child == 0) {
                close(go[1]);
                char byte;
                static_cast<void>(!read(go[0], &byte, 1)); // the end of the pipe, for all at once
                for (int k = 0; k < 3; ++k)
                    drawings[3 * i + k]->keep();
                _exit(0);
            }
            children.append(child);
        }
        close(go[0]);
        close(go[1]);
        for (const pid_t child : children) {
            int status = -1;
            waitpid(child, &status, 0);
            QCOMPARE(status, 0);
        }
        const QStringList texts = state.texts();
        QCOMPARE(texts.size(), processes * 3);
        QCOMPARE(QSet<QString>(texts.begin(), texts.end()).size(), processes * 3);
        for (int i = 0; i < processes * 3; ++i)
            QVERIFY(texts.contains(workspaceOf(QString::number(i))));
    }

    void newestTwentyAreKept()
    {
        const StateHome state;
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        const QStringList before = state.everything();
        OneAtom("C").keep();
        const QStringList after = state.everything();
        QCOMPARE(after.size(), 20);
        QCOMPARE(after.mid(0, 19), before.mid(6));
        QCOMPARE(state.texts().last(), workspaceOf("C"));
    }

    // An earlier version gave these names when the X server was lost.
    void copiesWithoutADateAreKeptLikeOthers()
    {
        const StateHome state;
        const auto minutesAgo = [](int minutes) { return QDateTime::currentDateTimeUtc().addSecs(-60 * minutes); };
        const QString old = state.put("+0000.kyt", "old", minutesAgo(30));
        const QString young = state.put("-0330.kyt", "young", minutesAgo(3));
        for (int minutes = 25; minutes > 5; --minutes)
            state.putCopy(minutes);
        const QList<SafetyCopy> copies = SafetyCopies().available();
        QCOMPARE(copies.size(), 22);
        QCOMPARE(copies.first().fileName, young);
        QCOMPARE(copies.last().fileName, old);
        OneAtom("C").keep();
        QVERIFY(!QFile::exists(old));
        QVERIFY(QFile::exists(young));
        QCOMPARE(state.everything().size(), 20);
    }

    // Else it could get the name of an automatic copy that another one of the same moment has replaced.
    void copyIsNamedAfterTheNewestOneOfItsMoment()
    {
        const TimeZone zone("UTC0");
        const StateHome state;
        for (const int milliseconds : {900, 60'000}) {
            const QDateTime time = QDateTime::currentDateTimeUtc().addMSecs(milliseconds);
            state.put(StateHome::nameAt(time), QByteArray::number(milliseconds), time);
        }
        OneAtom("C").keep();
        QCOMPARE(state.texts(), QStringList({"900", workspaceOf("C"), "60000"}));
    }

    void searchForANameEnds()
    {
        const TimeZone zone("UTC0");
        const StateHome state;
        const QDateTime longAgo = QDateTime::currentDateTimeUtc().addYears(-1);
        qsizetype taken = 0;
        // All names of the next seconds, however long it takes to make them.
        for (QDateTime time = QDateTime::currentDateTimeUtc(); time < QDateTime::currentDateTimeUtc().addMSecs(4000);
             time = time.addMSecs(1)) {
            state.put(StateHome::nameAt(time), "other", longAgo);
            ++taken;
        }
        QVERIFY(!SafetyCopies().keep(*OneAtom("C").canvas()).isEmpty());
        QCOMPARE(state.everything().size(), taken);
    }

    void automaticCopyReplacesTheOneBefore()
    {
        const StateHome state;
        SafetyCopies copies;
        copies.keepAutomatically(*OneAtom("C").canvas());
        copies.keepAutomatically(*OneAtom("N").canvas());
        QCOMPARE(state.texts(), QStringList{workspaceOf("N")});
        copies.keep(*OneAtom("O").canvas());
        QCOMPARE(state.texts(), QStringList{workspaceOf("O")});
        copies.keepAutomatically(*OneAtom("S").canvas());
        copies.keep(*OneAtom("S").canvas()); // makes it a copy that stays
        copies.keepAutomatically(*OneAtom("P").canvas());
        QCOMPARE(state.texts(), QStringList({workspaceOf("O"), workspaceOf("S"), workspaceOf("P")}));
    }

    void automaticCopyThatWasSavedToStays()
    {
        const StateHome state;
        SafetyCopies copies;
        copies.keepAutomatically(*OneAtom("C").canvas());
        QFile file(copies.available().first().fileName);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") && file.flush());
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFile::FileModificationTime));
        copies.keepAutomatically(*OneAtom("N").canvas());
        QCOMPARE(state.texts(), QStringList({"mine", workspaceOf("N")}));
    }

    void emptyDrawingLeavesTheAutomaticCopy()
    {
        const StateHome state;
        SafetyCopies copies;
        copies.keepAutomatically(*OneAtom("C").canvas());
        copies.keepAutomatically(*WorkspaceDrawing().canvas());
        QCOMPARE(state.texts(), QStringList{workspaceOf("C")});
    }

    void copiesOfARunningProgramAreItsOwn()
    {
        const StateHome state;
        SafetyCopies mine;
        mine.keep(*OneAtom("C").canvas());
        const QString name = mine.available().first().fileName;
        SafetyCopies other;
        QVERIFY(other.available().isEmpty());
        other.keep(*OneAtom("C").canvas()); // the same contents are no reason to do without one of its own
        QCOMPARE(state.texts(), QStringList({workspaceOf("C"), workspaceOf("C")}));
        for (int i = 0; i < 25; ++i)
            other.keep(*OneAtom(QString::number(i)).canvas());
        QVERIFY(QFile::exists(name));
        QCOMPARE(other.available().size(), 20);
        QCOMPARE(mine.available().size(), 1);
        QVERIFY(!SafetyCopies::takeAbandoned());
        mine.release();
        other.keep(*OneAtom("last").canvas());
        QVERIFY(!QFile::exists(name));
        QCOMPARE(other.available().size(), 20);
    }

    void lastCopyOfAnAbandonedProgramIsTakenOnce()
    {
        const StateHome state;
        OneAtom first("1");
        OneAtom second("2");
        const int status = inAProcess([&] {
            auto* copies = new SafetyCopies; // whose destructor does not run
            copies->keep(*first.canvas());
            copies->keepAutomatically(*second.canvas());
            copies->keepAutomatically(*first.canvas());
            return 0;
        });
        QCOMPARE(status, 0);
        const std::optional<SafetyCopy> copy = SafetyCopies::takeAbandoned();
        QVERIFY(copy);
        QCOMPARE(StateHome::contents(copy->fileName), workspaceOf("1"));
        QVERIFY(std::llabs(copy->created - QDateTime::currentMSecsSinceEpoch()) < 60'000);
        QVERIFY(!SafetyCopies::takeAbandoned());
        QCOMPARE(SafetyCopies().available().size(), 2);
    }

    void abandonedProgramWhoseCopiesAreGoneIsNotMentioned()
    {
        const StateHome state;
        OneAtom carbon("C");
        QCOMPARE(inAProcess([&] {
                     (new SafetyCopies)->keep(*carbon.canvas());
                     return 0;
                 }),
                 0);
        QVERIFY(QFile::remove(state.folder().filePath(state.everything().first())));
        QVERIFY(!SafetyCopies::takeAbandoned());
    }

    void otherFilesAreNeverDeleted()
    {
        const StateHome state;
        const QDateTime longAgo = QDateTime::currentDateTimeUtc().addYears(-3);
        const QStringList others{"noname.kyt",
                                 "2020-01-01T00-00-00.000+0000.kyt.bak",
                                 "x2020-01-01T00-00-00.000+0000.kyt",
                                 "2020-01-01T00-00-00.000.kyt",
                                 "2020-13-41T00-00-00.000+0000.kyt",
                                 "2020-01-01T00:00:00.000+0000.kyt",
                                 "2020-01-01T00-00-00.000+0000.KYT",
                                 ".2020-01-01T00-00-00.000+0000.kyt",
                                 "2020-01-01T00-00-00.000+0000"};
        for (const QString& name : others)
            state.put(name, "somebody's", longAgo);
        QVERIFY(state.folder().mkdir("2020-01-01T00-00-00.001+0000.kyt"));
        QVERIFY(QFile::link(state.path("elsewhere"), state.folder().filePath("2020-01-01T00-00-00.002+0000.kyt")));
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        OneAtom("C").keep();
        const QStringList after = state.everything();
        QCOMPARE(after.size(), 20 + others.size() + 2);
        for (const QString& name : others)
            QVERIFY2(after.contains(name), qPrintable(name));
    }

    // Whoever opens a copy and saves has made it a document.
    void copyThatWasSavedToStays()
    {
        const StateHome state;
        const QString saved = state.putCopy(100);
        const QString old = state.putCopy(99);
        OneAtom document("Mine");
        QVERIFY(document.doc->saveAs(saved));
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        OneAtom("C").keep();
        QCOMPARE(StateHome::contents(saved), workspaceOf("Mine"));
        QVERIFY(!QFile::exists(old));
        QCOMPARE(state.everything().size(), 21);
    }

    void fileInUseStays_data()
    {
        QTest::addColumn<bool>("throughALink");
        QTest::newRow("by its name") << false;
        QTest::newRow("by a link") << true;
    }

    void fileInUseStays()
    {
        QFETCH(bool, throughALink);
        const StateHome state;
        const QString used = state.putCopy(100);
        const QString old = state.putCopy(99);
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        const QString link = state.path("link.kyt");
        QVERIFY(QFile::link(used, link));
        OneAtom("C").keep(throughALink ? link : used);
        QVERIFY(QFile::exists(used));
        QVERIFY(!QFile::exists(old));
        QCOMPARE(state.everything().size(), 21);
    }

    void newCopyStaysThoughTheClockWasAhead()
    {
        const StateHome state;
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(-60 * minutes);
        OneAtom("C").keep();
        QCOMPARE(state.everything().size(), 20);
        QCOMPARE(state.texts().first(), workspaceOf("C"));
    }

    void copiesOfAnotherTimeZoneAreKnown()
    {
        const StateHome state;
        for (int i = 0; i < 12; ++i) {
            const TimeZone zone("EAST-9");
            OneAtom('E' + QString::number(i)).keep();
        }
        QTest::qWait(20); // copies of one moment are named after the following milliseconds
        for (int i = 0; i < 12; ++i) {
            const TimeZone zone("WEST9");
            OneAtom('W' + QString::number(i)).keep();
        }
        QStringList texts = state.texts();
        QCOMPARE(texts.size(), 20);
        for (int i = 0; i < 12; ++i) {
            QVERIFY(texts.contains(workspaceOf('W' + QString::number(i))));
            QCOMPARE(texts.contains(workspaceOf('E' + QString::number(i))), i >= 4);
        }
    }

    void nothingHappensWhereThereCanBeNoCopy_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("the folder is a file") << "file";
        QTest::newRow("the folder is a pipe") << "pipe";
        QTest::newRow("the folder is a link to nowhere") << "link";
        QTest::newRow("the state home is a file") << "home file";
        QTest::newRow("the state home is a device") << "/dev/null";
    }

    void nothingHappensWhereThereCanBeNoCopy()
    {
        QFETCH(QString, obstacle);
        const StateHome state;
        const QByteArray folder = QFile::encodeName(state.path("kytstudio"));
        QFile file(state.path(obstacle == "file" ? "kytstudio" : "other"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        if (obstacle == "pipe")
            QCOMPARE(mkfifo(folder.constData(), 0600), 0);
        else if (obstacle == "link")
            QCOMPARE(symlink("/nowhere/at/all", folder.constData()), 0);
        else if (obstacle == "home file")
            qputenv("XDG_STATE_HOME", QFile::encodeName(state.path("other")));
        else if (obstacle.startsWith('/'))
            qputenv("XDG_STATE_HOME", obstacle.toLatin1());
        const QStringList before = QDir(state.path("")).entryList(QDir::AllEntries | QDir::System);
        const LoggedMessages messages;
        OneAtom("C").keep();
        QCOMPARE(QDir(state.path("")).entryList(QDir::AllEntries | QDir::System), before);
        QCOMPARE(messages.lines(), QStringList());
    }

    void unwritableFolderIsLeftAlone()
    {
        const StateHome state;
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        const QStringList before = state.everything();
        QCOMPARE(chmod(qPrintable(state.folder().path()), 0555), 0);
        OneAtom drawing("C");
        const int status = inAProcess([&] {
            if (geteuid() == 0
                && (setresgid(ordinaryId, ordinaryId, ordinaryId) || setresuid(ordinaryId, ordinaryId, ordinaryId)))
                return 1;
            drawing.keep();
            return 0;
        });
        QCOMPARE(status, 0);
        QCOMPARE(state.everything(), before);
        QCOMPARE(chmod(qPrintable(state.folder().path()), 0700), 0);
    }

    void fullDiskLeavesNoPartAndKeepsTheOldCopies()
    {
        const StateHome state;
        for (int minutes = 25; minutes > 0; --minutes)
            state.putCopy(minutes);
        const QStringList before = state.everything();
        WorkspaceDrawing drawing;
        for (int i = 0; i < 2000; ++i)
            drawing.atom(i, 20, 0, "Symbol");
        QVERIFY(drawing.written().size() > 60000);
        const int status = inAProcess([&] {
            const struct rlimit limit = {30000, 30000};
            std::signal(SIGXFSZ, SIG_IGN);
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                return 1;
            SafetyCopies().keep(*drawing.canvas());
            return 0;
        });
        QCOMPARE(status, 0);
        QCOMPARE(state.everything(), before);
    }

    void killedWhileCopyingLeavesNoHalfCopy()
    {
        const StateHome state;
        WorkspaceDrawing drawing;
        for (int i = 0; i < 2000; ++i)
            drawing.atom(i, 20, 0, "Symbol");
        int copied = 0;
        for (int i = 0; i < 60; ++i) {
            drawing.atoms().first()->move(i, 0);
            const pid_t child = fork();
            if (child == 0) {
                SafetyCopies().keep(*drawing.canvas());
                _exit(0);
            }
            usleep(useconds_t(i) * 1000);
            kill(child, SIGKILL);
            int status = 0;
            waitpid(child, &status, 0);
            copied += status == 0;
        }
        const QDir folder = state.folder();
        const QString end = " END_MOLECULE\nEND_KYTFILE\n";
        for (const QString& name : folder.entryList({"2*.kyt"}, QDir::Files))
            QVERIFY2(StateHome::contents(folder.filePath(name)).endsWith(end), qPrintable(name));
        SafetyCopies().keep(*drawing.canvas());
        QVERIFY(!folder.entryList({"2*.kyt"}, QDir::Files).isEmpty());
        qInfo("%d of 60 copies were made before the kill", copied);
    }
};

QTEST_MAIN(test_SafetyCopies)
#include "test_SafetyCopies.moc"
