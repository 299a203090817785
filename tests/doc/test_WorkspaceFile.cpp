#include "doc/WorkspaceFile.h"
#include "tests/doc/WorkspaceDrawing.h"
#include "tests/support/DisturbedCalls.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

constexpr uid_t ordinaryId = 65534;
constexpr gid_t someGroup = 4321;

/// A folder that everybody may use.
class Folder {
public:
    Folder() { chmod(qPrintable(directory.path()), 0777); }
    /// One below `place`, or where temporary folders usually are if that is impossible.
    explicit Folder(const QString& place)
        : directory(QFileInfo(place).isWritable() ? place + "/test_WorkspaceFile-XXXXXX" : QString())
    {
    }

    QString path(const QString& name) const { return directory.filePath(name); }
    QStringList names() const
    {
        return QDir(directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir directory;
};

QByteArray contents(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

bool put(const QString& name, const QByteArray& text)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

struct stat statusOf(const QString& name)
{
    struct stat status = {};
    if (stat(QFile::encodeName(name).constData(), &status) != 0)
        status.st_mode = 0;
    return status;
}

/// Whether the file system makes files without a name, so that one is seen only when it is whole.
bool hasNamelessFiles(const QString& folder)
{
    const int descriptor = open(QFile::encodeName(folder).constData(), O_TMPFILE | O_RDWR, 0600);
    if (descriptor >= 0)
        close(descriptor);
    return descriptor >= 0;
}

/// Runs `act` in a process of its own; the status that waitpid tells of it.
int inAProcess(const std::function<int()>& act)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(act());
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

bool endedWith(int status, int code)
{
    return WIFEXITED(status) && WEXITSTATUS(status) == code;
}

bool wasKilled(int status)
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

/// Makes this process one of an ordinary user, where it belongs to root.
bool becomeOrdinary(const std::vector<gid_t>& groups = {})
{
    if (geteuid() != 0)
        return true;
    return setgroups(groups.size(), groups.data()) == 0 && setresgid(ordinaryId, ordinaryId, ordinaryId) == 0
        && setresuid(ordinaryId, ordinaryId, ordinaryId) == 0;
}

bool writeLine(const char* name, const QByteArray& line)
{
    const int descriptor = open(name, O_WRONLY);
    const bool written = descriptor >= 0 && ::write(descriptor, line.constData(), size_t(line.size())) == line.size();
    close(descriptor);
    return written;
}

/// Mounts a file system in memory on `place`, for this process alone.
bool mountSmallDisk(const QString& place, const char* options)
{
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        if (!writeLine("/proc/self/uid_map", user + ' ' + user + " 1") || !writeLine("/proc/self/setgroups", "deny")
            || !writeLine("/proc/self/gid_map", group + ' ' + group + " 1"))
            return false;
    } else if (unshare(CLONE_NEWNS) != 0) {
        return false;
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("tmpfs", qPrintable(place), "tmpfs", 0, options) == 0;
}

bool mayMount()
{
    const Folder folder;
    return endedWith(inAProcess([&] { return mountSmallDisk(folder.path(""), "size=64k") ? 0 : 1; }), 0);
}

/// A drawing with a workspace of about 60 KiB, told apart by its symbols.
void fill(WorkspaceDrawing& drawing, const QString& symbol)
{
    QString text = "KYTFILE MOLECULE 1500 1499 ";
    for (int i = 0; i < 1500; ++i)
        text += QString("ATOM %1 %2 12 0 255 0 0 ").arg(symbol).arg(i);
    for (int i = 0; i < 1499; ++i)
        text += QString("BOND %1 %2 1 1 ").arg(i).arg(i + 1);
    drawing.read(text + "END_MOLECULE END_KYTFILE");
}

} // namespace

class test_WorkspaceFile : public QObject {
    Q_OBJECT

private slots:
    void textIsWhatAFileHolds()
    {
        WorkspaceDrawing drawing;
        QCOMPARE(workspaceText(*drawing.canvas()), QByteArray("KYTFILE\nEND_KYTFILE\n"));
        drawing.atom(10, 20, 0, QString::fromUtf8("\xce\xb1"));
        QCOMPARE(workspaceText(*drawing.canvas()), drawing.written().toUtf8());
    }

    void savingTellsNothingAndFailingTellsWhy_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("written");
        QTest::newRow("new file") << "a.kyt" << true;
        QTest::newRow("no name") << "" << false;
        QTest::newRow("folder") << "." << false;
        QTest::newRow("missing folder") << "missing/a.kyt" << false;
        QTest::newRow("device") << "/dev/full" << false;
    }

    void savingTellsNothingAndFailingTellsWhy()
    {
        QFETCH(QString, name);
        QFETCH(bool, written);
        const Folder folder;
        const QString whole = name.isEmpty() || name.startsWith('/') ? name : folder.path(name);
        QCOMPARE(writeWholeFile(whole, "text").isEmpty(), written);
        QCOMPARE(folder.names(), written ? QStringList(name) : QStringList());
    }

    void aFailedSaveIsLoggedOnce()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        const LoggedMessages messages;
        const QString name = folder.path("missing/a.kyt");
        QVERIFY(!drawing.doc->saveAs(name));
        QCOMPARE(messages.lines(), QStringList(name + ": cannot be saved: No such file or directory"));
        QCOMPARE(messages.categories(), QStringList("kytstudio.workspace"));
        QVERIFY(drawing.doc->saveAs(folder.path("a.kyt")));
        QCOMPARE(messages.lines().size(), 1);
    }

    void everythingIsOnTheDiskBeforeItTakesTheFilesPlace_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::newRow("new file") << false;
        QTest::newRow("existing file") << true;
    }

    void everythingIsOnTheDiskBeforeItTakesTheFilesPlace()
    {
        QFETCH(bool, exists);
        const Folder folder;
        const QString name = folder.path("a.kyt");
        QVERIFY(!exists || put(name, "old"));
        QByteArrayList calls;
        {
            const DisturbedCalls counted;
            QCOMPARE(writeWholeFile(name, "new"), QString());
            calls = counted.names();
        }
        const auto lastPlacing = std::max(calls.lastIndexOf("rename"), calls.lastIndexOf("linkat"));
        const auto firstPlacing = calls.contains("linkat") ? calls.indexOf("linkat") : calls.indexOf("rename");
        QVERIFY(calls.contains("write"));
        QVERIFY(calls.contains("fdatasync"));
        QVERIFY(lastPlacing >= 0);
        QVERIFY(calls.lastIndexOf("write") < calls.indexOf("fdatasync"));
        QVERIFY(calls.indexOf("fdatasync") < firstPlacing);
        QVERIFY(lastPlacing < calls.lastIndexOf("fsync"));
    }

    void killedAtAnyStepThereIsTheOldFileOrTheNewOne_data() { everythingIsOnTheDiskBeforeItTakesTheFilesPlace_data(); }

    void killedAtAnyStepThereIsTheOldFileOrTheNewOne()
    {
        QFETCH(bool, exists);
        const QByteArray text = QByteArray("new").repeated(50000);
        int steps = 0;
        int foundOld = 0;
        for (;; ++steps) {
            const Folder folder;
            const QString name = folder.path("a.kyt");
            QVERIFY(!exists || put(name, "old"));
            const int status = inAProcess([&] {
                const DisturbedCalls killed(DisturbedCalls::Kill, steps);
                return writeWholeFile(name, text).isEmpty() ? 0 : 1;
            });
            const bool isOld = exists ? contents(name) == "old" : !QFile::exists(name);
            QVERIFY(isOld || contents(name) == text);
            foundOld += isOld;
            if (endedWith(status, 0)) {
                QVERIFY(!isOld);
                break;
            }
            QVERIFY(wasKilled(status));
        }
        QVERIFY(steps >= 4); // open, write, sync, put in place
        QVERIFY(foundOld >= 4);
        QVERIFY(foundOld <= steps);
    }

    void killedAThousandTimesThereIsTheOldFileOrTheNewOne()
    {
        constexpr int kills = 1000;
        const Folder folder("/dev/shm"); // in memory, so that most of the time is not spent waiting for a disk
        const QString name = folder.path("a.kyt");
        WorkspaceDrawing drawings[2];
        fill(drawings[0], "First");
        fill(drawings[1], "Second");
        const QByteArray texts[] = {drawings[0].written().toUtf8(), drawings[1].written().toUtf8()};
        QElapsedTimer timer;
        timer.start();
        QVERIFY(drawings[0].doc->saveAs(name));
        const auto duration = double(timer.nsecsElapsed());
        QCOMPARE(contents(name), texts[0]);

        // The moment lies anywhere in the time that a save takes; the estimate of that follows what is seen.
        QRandomGenerator random(20);
        double range = duration;
        int present = 0; // which of the drawings the file holds
        int old = 0;
        int whole = 0;
        int interrupted = 0;
        for (int i = 0; i < kills; ++i) {
            const int next = 1 - present;
            int begun[2];
            QCOMPARE(pipe(begun), 0);
            const pid_t child = fork();
            if (child == 0) {
                const char byte = 0;
                const bool told = ::write(begun[1], &byte, 1) == 1;
                _exit(told && drawings[next].doc->saveAs(name) ? 0 : 1);
            }
            QVERIFY(child > 0);
            char byte;
            QCOMPARE(read(begun[0], &byte, 1), ssize_t(1));
            timer.start();
            const double moment = random.bounded(range);
            while (double(timer.nsecsElapsed()) < moment)
                usleep(20);
            kill(child, SIGKILL);
            int status = 0;
            QCOMPARE(waitpid(child, &status, 0), child);
            close(begun[0]);
            close(begun[1]);

            QVERIFY(wasKilled(status) || endedWith(status, 0));
            const QByteArray found = contents(name);
            QVERIFY(found == texts[present] || (found == texts[next]));
            QVERIFY(wasKilled(status) || found == texts[next]);
            const bool isNew = found == texts[next];
            interrupted += wasKilled(status);
            old += !isNew;
            whole += isNew;
            present = isNew ? next : present;
            range *= isNew ? 0.99 : 1.01;
        }
        const QStringList left = folder.names();
        qInfo("%d kills, %d of them during the save (at up to %.1f ms): %d old files, %d new ones, %d temporary files "
              "left",
              kills, interrupted, range / 1e6, old, whole, int(left.size()) - 1);
        QCOMPARE(old + whole, kills);
        QVERIFY(old > kills / 10);
        QVERIFY(whole > kills / 10);

        for (const QString& each : left) {
            if (each == "a.kyt")
                continue;
            QVERIFY2(each.startsWith("a.kyt."), qPrintable(each));
            if (hasNamelessFiles(folder.path("")))
                QVERIFY(contents(folder.path(each)) == texts[0] || contents(folder.path(each)) == texts[1]);
        }
        QVERIFY(drawings[0].doc->saveAs(name));
        QCOMPARE(contents(name), texts[0]);
        QCOMPARE(folder.names(), left);
    }

    void failingAtAnyStepKeepsTheOldFileAndLeavesNoOther_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<int>("error");
        for (const int error : {ENOSPC, EDQUOT, EIO, EPERM}) {
            QTest::addRow("new file, %s", strerrorname_np(error)) << false << error;
            QTest::addRow("existing file, %s", strerrorname_np(error)) << true << error;
        }
    }

    void failingAtAnyStepKeepsTheOldFileAndLeavesNoOther()
    {
        QFETCH(bool, exists);
        QFETCH(int, error);
        const QByteArray text = QByteArray("new").repeated(50000);
        QByteArrayList failures;
        for (int step = 0;; ++step) {
            const Folder folder;
            const QString name = folder.path("a.kyt");
            QVERIFY(!exists || put(name, "old"));
            QString trouble;
            QByteArrayList calls;
            {
                const DisturbedCalls failing(DisturbedCalls::Fail, step, error);
                trouble = writeWholeFile(name, text);
                calls = failing.names();
            }
            if (trouble.isEmpty()) {
                QCOMPARE(contents(name), text);
                QCOMPARE(folder.names(), QStringList("a.kyt"));
            } else {
                failures.append(calls.value(step));
                QVERIFY2(exists ? contents(name) == "old" : !QFile::exists(name), calls.join(' '));
                QCOMPARE(folder.names(), exists ? QStringList("a.kyt") : QStringList());
            }
            if (calls.size() <= step)
                break;
        }
        QVERIFY(failures.contains("write"));
        QCOMPARE(failures.contains("fdatasync"), error != EPERM);
        QVERIFY(failures.contains(exists ? "rename" : "linkat") || failures.contains("rename"));
    }

    void fullDiskKeepsTheOldFileAndLeavesNoOther_data()
    {
        QTest::addColumn<QByteArray>("options"); // of a file system to mount; nothing: its error is made
        QTest::newRow("pretended") << QByteArray();
        if (mayMount()) {
            QTest::newRow("no room") << QByteArray("size=64k");
            QTest::newRow("no further file") << QByteArray("size=64k,nr_inodes=2");
        }
    }

    void fullDiskKeepsTheOldFileAndLeavesNoOther()
    {
        QFETCH(QByteArray, options);
        const Folder folder;
        const int status = inAProcess([&] {
            if (!options.isEmpty() && !mountSmallDisk(folder.path(""), options))
                return 1;
            const QString name = folder.path("a.kyt");
            if (!put(name, "old"))
                return 2;
            const std::unique_ptr<DisturbedCalls> full(
                options.isEmpty() ? new DisturbedCalls(DisturbedCalls::Fail, 2, ENOSPC) : nullptr);
            if (writeWholeFile(name, QByteArray("new").repeated(50000)) != "No space left on device")
                return 3;
            if (contents(name) != "old")
                return 4;
            return folder.names() == QStringList("a.kyt") ? 0 : 5;
        });
        QVERIFY2(endedWith(status, 0), QByteArray::number(status));
    }

    void ownerAndGroupAreKeptWhereTheUserMayGiveFilesAway()
    {
        const Folder folder;
        const QString name = folder.path("a.kyt");
        QVERIFY(put(name, "old"));
        if (geteuid() == 0)
            QCOMPARE(chown(qPrintable(name), ordinaryId, someGroup), 0);
        QCOMPARE(chmod(qPrintable(name), 0640), 0);
        const struct stat before = statusOf(name);
        QCOMPARE(writeWholeFile(name, "new"), QString());
        const struct stat after = statusOf(name);
        QCOMPARE(contents(name), QByteArray("new"));
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
        QCOMPARE(after.st_mode, before.st_mode);
    }

    void groupIsKeptByItsMember()
    {
        const Folder folder;
        const QString name = folder.path("a.kyt");
        QVERIFY(put(name, "old"));
        gid_t groups[256];
        const gid_t group = geteuid() == 0 ? someGroup : getgroups(256, groups) > 0 ? groups[0] : getegid();
        QCOMPARE(chown(qPrintable(name), geteuid() == 0 ? ordinaryId : geteuid(), group), 0);
        QCOMPARE(chmod(qPrintable(name), 0660), 0);
        QVERIFY(endedWith(
            inAProcess([&] { return becomeOrdinary({group}) && writeWholeFile(name, "new").isEmpty() ? 0 : 1; }), 0));
        QCOMPARE(contents(name), QByteArray("new"));
        QCOMPARE(statusOf(name).st_gid, group);
        QCOMPARE(int(statusOf(name).st_mode & ALLPERMS), 0660);
    }

    void strangersOfAFileKeepTheirRights()
    {
        const Folder folder;
        const QString name = folder.path("a.kyt");
        QVERIFY(put(name, "old"));
        if (geteuid() == 0)
            QCOMPARE(chown(qPrintable(name), ordinaryId, someGroup), 0);
        QCOMPARE(chmod(qPrintable(name), 0664), 0);
        const struct stat before = statusOf(name);
        QVERIFY(endedWith(inAProcess([&] { return becomeOrdinary() && writeWholeFile(name, "new").isEmpty() ? 0 : 1; }),
                          0));
        QCOMPARE(contents(name), QByteArray("new"));
        const struct stat after = statusOf(name);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(int(after.st_mode & ALLPERMS), after.st_gid == before.st_gid ? 0664 : 0644);
    }

    void otherHardLinkKeepsTheOldContents()
    {
        const Folder folder;
        QVERIFY(put(folder.path("a.kyt"), "old"));
        QCOMPARE(link(qPrintable(folder.path("a.kyt")), qPrintable(folder.path("b.kyt"))), 0);
        QCOMPARE(writeWholeFile(folder.path("a.kyt"), "new"), QString());
        QCOMPARE(contents(folder.path("a.kyt")), QByteArray("new"));
        QCOMPARE(contents(folder.path("b.kyt")), QByteArray("old"));
    }
};

QTEST_MAIN(test_WorkspaceFile)
#include "test_WorkspaceFile.moc"
