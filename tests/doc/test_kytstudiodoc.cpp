#include "tests/doc/WorkspaceDrawing.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr uid_t ordinaryUserId = 65534;

const QString emptyWorkspace = "KYTFILE\nEND_KYTFILE\n";
const QString oneAtom = "KYTFILE\n MOLECULE 1 0\n  ATOM N 10 20 0 255 0 0\n END_MOLECULE\nEND_KYTFILE\n";

// A folder of its own that an ordinary user may write to, also when root runs the test.
class Folder {
public:
    Folder()
    {
        if (geteuid() == 0 && chown(qPrintable(directory.path()), ordinaryUserId, ordinaryUserId) != 0)
            qFatal("the folder cannot be given away");
        setMode(0755);
    }
    ~Folder() { setMode(0755); }

    QString path(const QString& name) const { return directory.filePath(name); }
    QStringList entries() const
    {
        return QDir(directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    void setMode(mode_t mode) const { chmod(qPrintable(directory.path()), mode); }

    QString fill(const QString& name, const QString& text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("a file cannot be made");
        file.close();
        if (geteuid() == 0 && chown(qPrintable(file.fileName()), ordinaryUserId, ordinaryUserId) != 0)
            qFatal("a file cannot be given away");
        return file.fileName();
    }

private:
    QTemporaryDir directory;
};

QString contents(const QString& name)
{
    return QString::fromUtf8(readFile(name));
}

struct stat statusOf(const QString& name)
{
    struct stat status = {};
    if (lstat(QFile::encodeName(name).constData(), &status) != 0)
        status.st_mode = 0;
    return status;
}

mode_t permissionsOf(const QString& name)
{
    return statusOf(name).st_mode & 07777;
}

// Gives up root's rights while it lives; an ordinary user has none to give up.
class OrdinaryUser {
public:
    OrdinaryUser()
        : wasRoot(geteuid() == 0)
    {
        if (wasRoot && setresuid(ordinaryUserId, ordinaryUserId, 0) != 0)
            qFatal("root's rights cannot be given up");
    }
    ~OrdinaryUser()
    {
        if (wasRoot && setresuid(0, 0, 0) != 0)
            qFatal("root's rights cannot be taken back");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool wasRoot;
};

// Lets no file grow beyond `bytes` while it lives; writing more is then an error like a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        handler = std::signal(SIGXFSZ, SIG_IGN);
        struct rlimit limit = before;
        limit.rlim_cur = bytes;
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            qFatal("the file size cannot be limited");
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    struct rlimit before;
    void (*handler)(int);
};

// A file system of 64 KiB in memory, for those who may mount one.
class SmallDisk {
public:
    explicit SmallDisk(const QString& place)
        : mountPoint(QFile::encodeName(place))
        , mounted(::mount("tmpfs", mountPoint.constData(), "tmpfs", 0, "size=64k") == 0)
    {
    }
    ~SmallDisk()
    {
        if (mounted)
            ::umount2(mountPoint.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    bool isMounted() const { return mounted; }

private:
    QByteArray mountPoint;
    bool mounted;
};

bool mayMount()
{
    Folder folder;
    return SmallDisk(folder.path("")).isMounted();
}

// A drawing whose workspace takes more than 100 KiB.
void fillWithManyAtoms(WorkspaceDrawing& drawing)
{
    QString text = "KYTFILE MOLECULE 4000 0 ";
    for (int i = 0; i < 4000; ++i)
        text += QString("ATOM Symbol%1 %1 12 0 255 0 0 ").arg(i);
    drawing.read(text + "END_MOLECULE END_KYTFILE");
}

class UpsideDown : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QByteArray(context) == "KytStudioDoc" && QByteArray(source) == "noname.kyt" ? "emanon.kyt" : QString();
    }
};

} // namespace

class test_kytstudiodoc : public QObject {
    Q_OBJECT

private slots:
    // A new document

    void newDocumentIsNonameAndUnmodifiedWithoutACanvas()
    {
        const KytStudioDoc doc;
        QVERIFY(!doc.isModified());
        QVERIFY(!doc.modified);
        QCOMPARE(doc.docName, "noname.kyt");
        QVERIFY(!doc.canvas);
        QVERIFY(!doc.parent());
        QVERIFY(doc.objectName().isEmpty());
    }

    void firstNameIsTranslated()
    {
        UpsideDown translator;
        QCoreApplication::installTranslator(&translator);
        const KytStudioDoc doc;
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(doc.docName, "emanon.kyt");
    }

    void newDocMakesAWhiteCanvasAndMarksTheDocumentModified()
    {
        WorkspaceDrawing drawing;
        const KytStudioDoc& doc = *drawing.doc;
        QVERIFY(doc.canvas);
        QCOMPARE(doc.canvas->size(), QSize(2000, 2000));
        QCOMPARE(doc.canvas->backgroundColor(), QColor("white"));
        QVERIFY(doc.canvas->doubleBuffering());
        QCOMPARE(doc.canvas->advancePeriod(), 25);
        QVERIFY(doc.canvas->allItems().isEmpty());
        QVERIFY(doc.isModified());
        QCOMPARE(doc.docName, "noname.kyt");
    }

    void newDocTellsOnceWhenEverythingIsThere()
    {
        KytStudioDoc doc;
        QSignalSpy told(&doc, &KytStudioDoc::documentChanged);
        bool ready = false;
        connect(&doc, &KytStudioDoc::documentChanged, this, [&] { ready = doc.canvas && doc.isModified(); });
        doc.newDoc();
        QCOMPARE(told.count(), 1);
        QVERIFY(ready);
        delete doc.canvas;
    }

    void secondNewDocLeavesTheFirstCanvasAlone()
    {
        WorkspaceDrawing drawing;
        const QPointer<QCanvas> first(drawing.canvas());
        drawing.atom(1, 2);
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        drawing.doc->newDoc();
        QCOMPARE(told.count(), 1);
        QCanvas* second = drawing.canvas();
        QVERIFY(second != first);
        QVERIFY(second->allItems().isEmpty());
        QVERIFY(first);
        QCOMPARE(first->allItems().size(), 2);
        delete first;
        QCOMPARE(drawing.canvas(), second);
    }

    void documentForgetsACanvasThatIsDestroyed()
    {
        KytStudioDoc doc;
        doc.newDoc();
        delete doc.canvas;
        QVERIFY(!doc.canvas);
        doc.newDoc();
        QVERIFY(doc.canvas);
        delete doc.canvas;
        QVERIFY(!doc.canvas);
    }

    void destroyedDocumentLeavesItsCanvas()
    {
        QPointer<QCanvas> canvas;
        {
            KytStudioDoc doc;
            doc.newDoc();
            canvas = doc.canvas;
        }
        QVERIFY(canvas);
        delete canvas;
    }

    // Saving

    void savingAnUnmodifiedDocumentWritesNothing()
    {
        const Folder folder;
        KytStudioDoc doc;
        doc.docName = folder.path("never.kyt");
        QVERIFY(doc.save());
        QVERIFY(folder.entries().isEmpty());

        WorkspaceDrawing drawing;
        drawing.doc->modified = false;
        drawing.doc->docName = folder.path("missing/never.kyt");
        QVERIFY(drawing.doc->save());
        QVERIFY(folder.entries().isEmpty());
    }

    void savingWritesTheNamedFile()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->docName = folder.path("a.kyt");
        QVERIFY(drawing.doc->save());
        QCOMPARE(contents(folder.path("a.kyt")), emptyWorkspace);
        QCOMPARE(drawing.doc->docName, folder.path("a.kyt"));
    }

    void savingTwiceWritesTwice()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->docName = folder.path("a.kyt");
        QVERIFY(drawing.doc->save());
        drawing.atom(10, 20, 0, "N");
        QVERIFY(drawing.doc->save());
        QCOMPARE(contents(folder.path("a.kyt")), oneAtom);
    }

    void savingKeepsModifiedAndTellsNobody()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->docName = folder.path("a.kyt");
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(drawing.doc->save());
        QVERIFY(drawing.doc->isModified());
        QVERIFY(drawing.doc->saveAs(folder.path("b.kyt")));
        QVERIFY(drawing.doc->isModified());
        QVERIFY(!drawing.doc->saveAs(folder.path("missing/b.kyt")));
        QVERIFY(drawing.doc->isModified());
        QCOMPARE(told.count(), 0);
    }

    void savingIntoAMissingDirectoryFails()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->docName = folder.path("missing/a.kyt");
        QVERIFY(!drawing.doc->save());
        QVERIFY(!drawing.doc->saveAs(folder.path("missing/a.kyt")));
        QVERIFY(folder.entries().isEmpty());
    }

    void saveAsWritesTheFileAndKeepsTheName()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.atom(10, 20, 0, "N");
        QVERIFY(drawing.doc->saveAs(folder.path("other.kyt")));
        QCOMPARE(contents(folder.path("other.kyt")), oneAtom);
        QCOMPARE(drawing.doc->docName, "noname.kyt");
    }

    void saveAsWritesAnUnmodifiedDocument()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->modified = false;
        QVERIFY(drawing.doc->saveAs(folder.path("other.kyt")));
        QCOMPARE(contents(folder.path("other.kyt")), emptyWorkspace);
        QVERIFY(!drawing.doc->isModified());
    }

    void longerFileIsReplacedAsAWhole()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", QString("something else\n").repeated(1000));
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->saveAs(name));
        QCOMPARE(contents(name), emptyWorkspace);
    }

    void namesWithBlanksAndLettersBeyondAsciiAreWritten()
    {
        const Folder folder;
        const QString name = folder.path(QString::fromUtf8("caf\xc3\xa9 [*] %1 a.kyt"));
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->saveAs(name));
        QCOMPARE(contents(name), emptyWorkspace);
        QVERIFY(drawing.doc->load(name, false));
    }

    void emptyNameFails()
    {
        const Folder folder;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path("")));
        WorkspaceDrawing drawing;
        drawing.doc->docName = "";
        const bool saved = drawing.doc->save();
        const bool savedAs = drawing.doc->saveAs("");
        const bool savedAsNull = drawing.doc->saveAs(QString());
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(!saved);
        QVERIFY(!savedAs);
        QVERIFY(!savedAsNull);
        QVERIFY(folder.entries().isEmpty());
    }

    void directoryIsNotWritten()
    {
        const Folder folder;
        QVERIFY(QDir().mkdir(folder.path("a.kyt")));
        WorkspaceDrawing drawing;
        QVERIFY(!drawing.doc->saveAs(folder.path("a.kyt")));
        QVERIFY(!drawing.doc->saveAs(folder.path("")));
        QVERIFY(QFileInfo(folder.path("a.kyt")).isDir());
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
    }

    void pathThroughAFileFails()
    {
        const Folder folder;
        const QString file = folder.fill("a", "text");
        WorkspaceDrawing drawing;
        QVERIFY(!drawing.doc->saveAs(file + "/b.kyt"));
        QVERIFY(!drawing.doc->load(file + "/b.kyt", false));
        QCOMPARE(contents(file), "text");
    }

    void pipeIsNotWritten()
    {
        const Folder folder;
        const QString name = folder.path("a.kyt");
        QCOMPARE(mkfifo(qPrintable(name), 0666), 0);
        WorkspaceDrawing drawing;
        QVERIFY(!drawing.doc->saveAs(name));
        QVERIFY(S_ISFIFO(statusOf(name).st_mode));
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
    }

    void deviceIsNotWritten()
    {
        // As an ordinary user, who cannot put a file in the device's place by mistake.
        const Folder folder;
        WorkspaceDrawing drawing;
        for (const char* device : {"/dev/null", "/dev/full"}) {
            const QString link = folder.path(QFileInfo(device).fileName());
            QVERIFY(QFile::link(device, link));
            const OrdinaryUser user;
            QVERIFY2(!drawing.doc->saveAs(link), device);
            QVERIFY2(!drawing.doc->saveAs(device), device);
            QVERIFY2(S_ISCHR(statusOf(device).st_mode), device);
        }
        QCOMPARE(folder.entries(), (QStringList{"full", "null"}));
    }

    void permissionsAreKept_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode : {0600, 0640, 0644, 0664, 0666, 0755})
            QTest::addRow("%o", mode) << mode;
    }

    void permissionsAreKept()
    {
        QFETCH(int, mode);
        const Folder folder;
        const QString name = folder.fill("a.kyt", "old");
        QCOMPARE(chmod(qPrintable(name), mode), 0);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->saveAs(name));
        QCOMPARE(contents(name), emptyWorkspace);
        QCOMPARE(int(permissionsOf(name)), mode);
    }

    void newFileHasTheUsualPermissions()
    {
        const Folder folder;
        const mode_t before = umask(027);
        WorkspaceDrawing drawing;
        const bool saved = drawing.doc->saveAs(folder.path("a.kyt"));
        umask(before);
        QVERIFY(saved);
        QCOMPARE(int(permissionsOf(folder.path("a.kyt"))), 0640);
    }

    void symbolicLinkStaysALink_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("absolute") << "/";
        QTest::newRow("relative") << "";
    }

    void symbolicLinkStaysALink()
    {
        QFETCH(QString, target);
        const Folder folder;
        QVERIFY(QDir().mkdir(folder.path("far")));
        const QString file = folder.fill("far/real.kyt", "old");
        const QByteArray first = target.isEmpty() ? QByteArray("far/real.kyt") : QFile::encodeName(file);
        QCOMPARE(symlink(first.constData(), qPrintable(folder.path("one.kyt"))), 0);
        QCOMPARE(symlink("one.kyt", qPrintable(folder.path("two.kyt"))), 0);
        WorkspaceDrawing drawing;
        for (const QString& name : {folder.path("one.kyt"), folder.path("two.kyt")}) {
            drawing.atom(1, 2);
            QVERIFY(drawing.doc->saveAs(name));
            QVERIFY(S_ISLNK(statusOf(name).st_mode));
            QVERIFY(S_ISREG(statusOf(file).st_mode));
            QCOMPARE(contents(file), drawing.written());
        }
        QCOMPARE(folder.entries(), (QStringList{"far", "one.kyt", "two.kyt"}));
    }

    void danglingLinkGetsItsTarget()
    {
        const Folder folder;
        const QString link = folder.path("link.kyt");
        QCOMPARE(symlink("target.kyt", qPrintable(link)), 0);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->saveAs(link));
        QVERIFY(S_ISLNK(statusOf(link).st_mode));
        QCOMPARE(contents(folder.path("target.kyt")), emptyWorkspace);
    }

    void noOtherFileIsLeftBehind()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        fillWithManyAtoms(drawing);
        for (int i = 0; i < 3; ++i)
            QVERIFY(drawing.doc->saveAs(folder.path("a.kyt")));
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
        QCOMPARE(contents(folder.path("a.kyt")), drawing.written());
    }

    // Saving when the disk is full

    void shortWriteKeepsTheOldFile_data()
    {
        QTest::addColumn<int>("missing");
        QTest::newRow("nothing fits") << 1000000;
        QTest::newRow("half of it fits") << 60000;
        QTest::newRow("all but one byte fits") << 1;
    }

    void shortWriteKeepsTheOldFile()
    {
        QFETCH(int, missing);
        const Folder folder;
        WorkspaceDrawing drawing;
        const QString name = folder.path("a.kyt");
        QVERIFY(drawing.doc->saveAs(name));
        fillWithManyAtoms(drawing);
        drawing.doc->docName = name;
        const int size = int(drawing.written().size());
        QVERIFY(size > 100000);
        bool saved, savedAs;
        {
            const FileSizeLimit limit(rlim_t(std::max(0, size - missing)));
            saved = drawing.doc->save();
            savedAs = drawing.doc->saveAs(name);
        }
        QVERIFY(!saved);
        QVERIFY(!savedAs);
        QCOMPARE(contents(name), emptyWorkspace);
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
        QVERIFY(drawing.doc->save());
        QCOMPARE(contents(name), drawing.written());
    }

    void shortWriteLeavesNoNewFile()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        fillWithManyAtoms(drawing);
        bool saved;
        {
            const FileSizeLimit limit(5000);
            saved = drawing.doc->saveAs(folder.path("a.kyt"));
        }
        QVERIFY(!saved);
        QVERIFY(folder.entries().isEmpty());
    }

    void limitOfJustTheSizeIsEnough()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        fillWithManyAtoms(drawing);
        bool saved;
        {
            const FileSizeLimit limit(rlim_t(drawing.written().size()));
            saved = drawing.doc->saveAs(folder.path("a.kyt"));
        }
        QVERIFY(saved);
        QCOMPARE(contents(folder.path("a.kyt")), drawing.written());
    }

    void fullDiskKeepsTheOldFile_data()
    {
        QTest::addColumn<bool>("mount");
        QTest::newRow("file size limit") << false;
        if (mayMount())
            QTest::newRow("small disk") << true;
    }

    void fullDiskKeepsTheOldFile()
    {
        QFETCH(bool, mount);
        const Folder folder;
        const std::unique_ptr<SmallDisk> disk(mount ? new SmallDisk(folder.path("")) : nullptr);
        const std::unique_ptr<FileSizeLimit> limit(mount ? nullptr : new FileSizeLimit(65536));
        QVERIFY(!disk || disk->isMounted());
        WorkspaceDrawing drawing;
        drawing.atom(10, 20, 0, "N");
        const QString name = folder.path("a.kyt");
        QVERIFY(drawing.doc->saveAs(name));
        fillWithManyAtoms(drawing);
        for (int attempt = 0; attempt < 3; ++attempt) {
            QVERIFY(!drawing.doc->saveAs(name));
            QCOMPARE(contents(name), oneAtom);
            QCOMPARE(folder.entries(), QStringList("a.kyt"));
        }
        QVERIFY(!drawing.doc->saveAs(folder.path("b.kyt")));
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
        WorkspaceDrawing small;
        QVERIFY(small.doc->saveAs(name));
        QCOMPARE(contents(name), emptyWorkspace);
    }

    // Saving as an ordinary user

    void writableFileInALockedDirectoryIsWrittenDirectly()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", QString("old").repeated(5000));
        const ino_t node = statusOf(name).st_ino;
        folder.setMode(0555);
        WorkspaceDrawing drawing;
        bool saved;
        {
            const OrdinaryUser user;
            saved = drawing.doc->saveAs(name);
        }
        QVERIFY(saved);
        QCOMPARE(contents(name), emptyWorkspace);
        QCOMPARE(statusOf(name).st_ino, node);
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
    }

    void readOnlyFileInALockedDirectoryIsKept()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", "old");
        QCOMPARE(chmod(qPrintable(name), 0444), 0);
        folder.setMode(0555);
        WorkspaceDrawing drawing;
        bool saved;
        {
            const OrdinaryUser user;
            saved = drawing.doc->saveAs(name);
        }
        QVERIFY(!saved);
        QCOMPARE(contents(name), "old");
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
    }

    void newFileInALockedDirectoryFails()
    {
        const Folder folder;
        folder.setMode(0555);
        WorkspaceDrawing drawing;
        bool saved;
        {
            const OrdinaryUser user;
            saved = drawing.doc->saveAs(folder.path("a.kyt"));
        }
        QVERIFY(!saved);
        QVERIFY(folder.entries().isEmpty());
    }

    void readOnlyFileIsKept()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", "old");
        QCOMPARE(chmod(qPrintable(name), 0444), 0);
        WorkspaceDrawing drawing;
        bool saved;
        {
            const OrdinaryUser user;
            saved = drawing.doc->saveAs(name);
        }
        QVERIFY(!saved);
        QCOMPARE(contents(name), "old");
        QCOMPARE(folder.entries(), QStringList("a.kyt"));
    }

    // Loading

    void loadingAMissingFileFailsAndTellsNobody()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.atom(1, 2);
        const QString before = drawing.written();
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(!drawing.doc->load(folder.path("missing.kyt"), false));
        QCOMPARE(told.count(), 0);
        QCOMPARE(drawing.written(), before);
        QCOMPARE(drawing.doc->docName, "noname.kyt");
        QVERIFY(folder.entries().isEmpty());
    }

    void loadingTellsOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("atoms");
        QTest::newRow("one atom") << oneAtom << 1;
        QTest::newRow("no atom") << emptyWorkspace << 0;
        QTest::newRow("empty file") << "" << 0;
        QTest::newRow("something else") << "<html></html>" << 0;
        QTest::newRow("cut after the molecule") << oneAtom.left(oneAtom.indexOf("END_KYTFILE")) << 1;
        QTest::newRow("molecule missing") << "KYTFILE ATOM C 1 2 3 255 0 0 END_KYTFILE" << 0;
    }

    void loadingTellsOnce()
    {
        QFETCH(QString, text);
        QFETCH(int, atoms);
        const Folder folder;
        const QString name = folder.fill("a.kyt", text);
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        int atomsWhenTold = -1;
        connect(drawing.doc, &KytStudioDoc::documentChanged, this,
                [&] { atomsWhenTold = int(drawing.atoms().size()); });
        const LoggedMessages messages;
        QVERIFY(drawing.doc->load(name, false));
        QCOMPARE(told.count(), 1);
        QCOMPARE(atomsWhenTold, atoms);
        QCOMPARE(contents(name), text);
    }

    void loadingAddsToTheCanvas()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", oneAtom);
        WorkspaceDrawing drawing;
        KytAtom* old = drawing.atom(500, 600, 7, "Old");
        QCanvas* canvas = drawing.canvas();
        QVERIFY(drawing.doc->load(name, false));
        QVERIFY(drawing.doc->load(name, false));
        QCOMPARE(drawing.canvas(), canvas);
        QCOMPARE(drawing.symbols(), (QStringList{"Old", "N", "N"}));
        QCOMPARE(drawing.atoms().first(), old);
        QCOMPARE(old->x(), 500.0);
        QCOMPARE(old->getAtomZ(), 7.0f);
    }

    void loadingKeepsNameAndModified()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        drawing.doc->modified = false;
        QVERIFY(drawing.doc->load(folder.fill("a.kyt", oneAtom), true));
        QCOMPARE(drawing.doc->docName, "noname.kyt");
        QVERIFY(!drawing.doc->isModified());
    }

    void whatIsLoadedIsPaintedWithoutWaiting()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", oneAtom);
        WorkspaceDrawing drawing;
        drawing.canvas()->update();
        const QSignalSpy painted(drawing.canvas(), &QCanvas::changed);
        QVERIFY(drawing.doc->load(name, false));
        QCOMPARE(painted.count(), 1);
    }

    void secondArgumentBecomesTheLock()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", oneAtom);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->load(name, true));
        QVERIFY(drawing.doc->load(name, false));
        QVERIFY(drawing.atoms().at(0)->locked);
        QVERIFY(!drawing.atoms().at(1)->locked);
    }

    void loadingReadsWhatWasSaved()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        fillWithManyAtoms(drawing);
        const QString name = folder.path("a.kyt");
        QVERIFY(drawing.doc->saveAs(name));
        QCOMPARE(contents(name), drawing.written());
        WorkspaceDrawing again;
        QVERIFY(again.doc->load(name, false));
        QCOMPARE(again.written(), drawing.written());
    }

    void letterBeyondAsciiComesBack()
    {
        const Folder folder;
        const QString symbol = QString::fromUtf8("\xce\xb1-\xe2\x82\x82\xf0\x9f\x98\x80");
        WorkspaceDrawing drawing;
        drawing.atom(1, 2, 3, symbol);
        QVERIFY(drawing.doc->saveAs(folder.path("a.kyt")));
        WorkspaceDrawing again;
        QVERIFY(again.doc->load(folder.path("a.kyt"), false));
        QCOMPARE(again.symbols(), QStringList(symbol));
    }

    void directoryIsNotRead()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(!drawing.doc->load(folder.path(""), false));
        QVERIFY(!drawing.doc->load("/", false));
        QVERIFY(!drawing.doc->load(".", false));
        QCOMPARE(told.count(), 0);
    }

    void pipeIsRefusedAtOnce()
    {
        const Folder folder;
        const QString name = folder.path("pipe.kyt");
        QCOMPARE(mkfifo(qPrintable(name), 0666), 0);
        QVERIFY(QFile::link(name, folder.path("link.kyt")));
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(!drawing.doc->load(name, false));
        QVERIFY(!drawing.doc->load(folder.path("link.kyt"), false));
        QCOMPARE(told.count(), 0);
    }

    void socketIsRefused()
    {
        const Folder folder;
        const QByteArray name = QFile::encodeName(folder.path("s.kyt"));
        struct sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        QVERIFY(name.size() < int(sizeof address.sun_path));
        qstrcpy(address.sun_path, name.constData());
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(descriptor, reinterpret_cast<struct sockaddr*>(&address), sizeof address), 0);
        WorkspaceDrawing drawing;
        QVERIFY(!drawing.doc->load(folder.path("s.kyt"), false));
        QVERIFY(!drawing.doc->saveAs(folder.path("s.kyt")));
        QVERIFY(S_ISSOCK(statusOf(folder.path("s.kyt")).st_mode));
        ::close(descriptor);
    }

    void devicesAreRefusedAtOnce()
    {
        const Folder folder;
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(!drawing.doc->load("/dev/null", false)); // where this fails, the endless one must not be tried
        QVERIFY(!drawing.doc->load("/dev/zero", false));
        QVERIFY(!drawing.doc->load("/dev/full", false));
        QVERIFY(QFile::link("/dev/zero", folder.path("link.kyt")));
        QVERIFY(!drawing.doc->load(folder.path("link.kyt"), false));
        QCOMPARE(told.count(), 0);
    }

    void linkToAFileIsRead()
    {
        const Folder folder;
        folder.fill("a.kyt", oneAtom);
        QCOMPARE(symlink("a.kyt", qPrintable(folder.path("b.kyt"))), 0);
        QCOMPARE(symlink("b.kyt", qPrintable(folder.path("c.kyt"))), 0);
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->load(folder.path("b.kyt"), false));
        QVERIFY(drawing.doc->load(folder.path("c.kyt"), false));
        QCOMPARE(drawing.symbols(), (QStringList{"N", "N"}));
    }

    void linkToADirectoryOrNothingIsRefused()
    {
        const Folder folder;
        QCOMPARE(symlink(".", qPrintable(folder.path("directory.kyt"))), 0);
        QCOMPARE(symlink("missing", qPrintable(folder.path("dangling.kyt"))), 0);
        QCOMPARE(symlink("round.kyt", qPrintable(folder.path("round.kyt"))), 0);
        WorkspaceDrawing drawing;
        for (const char* name : {"directory.kyt", "dangling.kyt", "round.kyt"})
            QVERIFY2(!drawing.doc->load(folder.path(name), false), name);
        QVERIFY(!drawing.doc->saveAs(folder.path("round.kyt")));
        QVERIFY(!drawing.doc->saveAs(folder.path("directory.kyt")));
    }

    void emptyNameIsNotRead()
    {
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        QVERIFY(!drawing.doc->load("", false));
        QVERIFY(!drawing.doc->load(QString(), false));
        QCOMPARE(told.count(), 0);
    }

    void fileWithoutReadPermissionIsRefused()
    {
        const Folder folder;
        const QString name = folder.fill("a.kyt", oneAtom);
        QCOMPARE(chmod(qPrintable(name), 0), 0);
        WorkspaceDrawing drawing;
        QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
        bool loaded;
        {
            const OrdinaryUser user;
            loaded = drawing.doc->load(name, false);
        }
        QVERIFY(!loaded);
        QCOMPARE(told.count(), 0);
        QVERIFY(drawing.atoms().isEmpty());
    }

    void fileThatEndsAnywhereIsRead()
    {
        const QString whole =
            "KYTFILE\n MOLECULE 2 1\n  ATOM N 1 2 3 255 0 0\n  ATOM O 31 2 3 9 8 7\n  BOND 0 1 2 1 0\n"
            " END_MOLECULE\n MOLECULE 1 0\n  ATOM S 5 6 7 0 0 0\n END_MOLECULE\nEND_KYTFILE\n";
        const LoggedMessages messages;
        const Folder folder;
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            const QString name = folder.fill("a.kyt", whole.left(length));
            WorkspaceDrawing drawing;
            QSignalSpy told(drawing.doc, &KytStudioDoc::documentChanged);
            QVERIFY(drawing.doc->load(name, false));
            QCOMPARE(told.count(), 1);
        }
    }

    void binaryFileIsRead()
    {
        const LoggedMessages messages;
        const Folder folder;
        QByteArray bytes = "KYTFILE MOLECULE 3 3 ATOM ";
        for (int i = 0; i < 4096; ++i)
            bytes += char((i * 197 + i / 7) % 256);
        QFile file(folder.path("a.kyt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
        file.close();
        WorkspaceDrawing drawing;
        QVERIFY(drawing.doc->load(folder.path("a.kyt"), false));
        QVERIFY(drawing.atoms().size() <= 3);
    }
};

QTEST_MAIN(test_kytstudiodoc)
#include "test_kytstudiodoc.moc"
