#include "convert/chemistry/Canvas.h"
#include "convert/pictures/EditorPicture.h"
#include "tests/support/Files.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>

#include <unistd.h>

namespace {

struct Outcome {
    int status = -1; // -1 where the program did not end by itself
    QByteArray out;
    QString err;
};

/// Runs the program without a display.
Outcome convert(const QStringList& arguments, const QByteArray& input = {}, const QString& folder = {})
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DISPLAY");
    program.setProcessEnvironment(environment);
    if (!folder.isEmpty())
        program.setWorkingDirectory(folder);
    program.start(KYTCONVERT_PROGRAM, arguments);
    program.write(input);
    program.closeWriteChannel();
    Outcome outcome;
    if (program.waitForFinished(120'000) && program.exitStatus() == QProcess::NormalExit)
        outcome.status = program.exitCode();
    outcome.out = program.readAllStandardOutput();
    outcome.err = QString::fromUtf8(program.readAllStandardError());
    return outcome;
}

/// What the editor shows of a file, where the picture of it is to be.
QImage screenshot(const QString& fileName)
{
    Canvas canvas;
    canvas.doc.load(fileName, false);
    KytStudioView view(nullptr, &canvas.doc);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(900, 700);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view))
        return {};
    const QRect area = pictureArea(*canvas.doc.canvas, PictureStyle());
    return view.viewport()->grab().toImage().copy(area).convertToFormat(QImage::Format_RGB32);
}

QImage pictureIn(const QByteArray& file, const QString& format, const QSize& size)
{
    if (format == "png")
        return QImage::fromData(file, "PNG").convertToFormat(QImage::Format_RGB32);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QSvgRenderer renderer(file);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

int lightness(QRgb color)
{
    return qGray(color);
}

/// The share of pixels that have nothing like them within a pixel's distance in the other picture.
double unlikePixels(const QImage& a, const QImage& b)
{
    int unlike = 0;
    for (int y = 1; y < a.height() - 1; ++y) {
        for (int x = 1; x < a.width() - 1; ++x) {
            int nearest = 255;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    nearest =
                        std::min(nearest, std::abs(lightness(a.pixel(x, y)) - lightness(b.pixel(x + dx, y + dy))));
            unlike += nearest > 48;
        }
    }
    return double(unlike) / (a.width() * a.height());
}

double inkShare(const QImage& image)
{
    int ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixel(x, y) != qRgb(255, 255, 255);
    return double(ink) / (image.width() * image.height());
}

/// How many stretches of ink the row with the most has.
int mostStrokes(const QImage& image)
{
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        int strokes = 0;
        for (int x = 1; x < image.width(); ++x)
            strokes += lightness(image.pixel(x, y)) < 128 && lightness(image.pixel(x - 1, y)) >= 128;
        most = std::max(most, strokes);
    }
    return most;
}

} // namespace

class test_kytconvert : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setFont(QFont("helvetica", 12)); }

    void init() { folder = std::make_unique<QTemporaryDir>(); }

    void helpAndVersionAreAnswered()
    {
        const Outcome outcome = convert({"--help"});
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.out.contains("Examples:"));
        QVERIFY(convert({"--version"}).out.startsWith("kytconvert "));
    }

    void aFileBecomesAnotherByItsEnding_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("kyt") << "kyt" << QByteArray("KYTFILE\n MOLECULE 12 12\n");
        QTest::newRow("kyf") << "KYF" << QByteArray("KYTFILE\n MOLECULE 12 12\n");
        QTest::newRow("mol") << "mol" << QByteArray("\n     RDKit          2D\n\n 12 12");
        QTest::newRow("sdf") << "sdf" << QByteArray("\n     RDKit          2D\n\n 12 12");
        QTest::newRow("smi") << "smi" << QByteArray("c1ccccc1\n");
        QTest::newRow("svg") << "svg" << QByteArray("<?xml");
        QTest::newRow("png") << "png" << QByteArray("\x89PNG\r\n");
        QTest::newRow("pdf") << "pdf" << QByteArray("%PDF-1.");
    }

    void aFileBecomesAnotherByItsEnding()
    {
        QFETCH(QString, ending);
        QFETCH(QByteArray, start);
        const QString output = folder->filePath("out.") + ending;
        const Outcome outcome = convert({"lib/benzene.kyf", "-o", output});
        QVERIFY2(outcome.status == 0, qPrintable(outcome.err));
        const QByteArray contents = readFile(output);
        QVERIFY2(contents.startsWith(start), contents.left(60).constData());
        QCOMPARE(QDir(folder->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void aPipeNeedsNoFiles()
    {
        const Outcome outcome = convert({"--from", "smi", "--to", "smi", "-", "-o", "-"}, "C1=CC=CC=C1 benzene\n");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.out, QByteArray("c1ccccc1\tbenzene\n"));
        QCOMPARE(outcome.err, QString());
    }

    void aWorkspaceThroughTheProgramStaysAsItIs()
    {
        const Outcome outcome = convert({"data/caffeine.kyt", "--to", "kyt"});
        QCOMPARE(outcome.out, readFile("data/caffeine.kyt"));
    }

    void severalInputsShareADrawing()
    {
        const Outcome outcome = convert({"lib/water.kyf", "lib/benzene.kyf", "--to", "kyt"});
        QCOMPARE(outcome.out.count("MOLECULE "), 2);
        QCOMPARE(outcome.out.count("ATOM "), 15);
    }

    void numberedOutputsHoldAMoleculeEach()
    {
        const Outcome outcome = convert({"--from", "smi", "-", "-o", folder->filePath("m%03d.smi")}, "C\nCC\nCCC\n");
        QCOMPARE(outcome.status, 0);
        QCOMPARE(readFile(folder->filePath("m001.smi")), QByteArray("C\n"));
        QCOMPARE(readFile(folder->filePath("m003.smi")), QByteArray("CCC\n"));
    }

    void picturesShowWhatTheEditorShows_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("format");
        for (const char* file : {"data/alanine.kyt", "data/caffeine.kyt", "lib/benzene.kyf"})
            for (const char* format : {"png", "svg"})
                QTest::addRow("%s as %s", file, format) << file << format;
    }

    void picturesShowWhatTheEditorShows()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, format);
        const QImage shown = screenshot(fileName);
        const Outcome outcome = convert({fileName, "--to", format, "--style", "editor"});
        QCOMPARE(outcome.status, 0);
        const QImage picture = pictureIn(outcome.out, format, shown.size());
        QCOMPARE(picture.size(), shown.size());
        QVERIFY(inkShare(shown) > 0.02);
        QVERIFY2(unlikePixels(shown, shown.mirrored()) > 0.03, "a picture that is upside down would be taken for it");
        const double unlike = std::max(unlikePixels(picture, shown), unlikePixels(shown, picture));
        QVERIFY2(unlike < (format == "png" ? 0.0005 : 0.01), qPrintable(QString::number(unlike)));
    }

    void numberedOutputsHoldAMoleculeOfADrawingEach()
    {
        const QByteArray two = "KYTFILE MOLECULE 1 0 ATOM C 1 1 0 1 1 1 END_MOLECULE MOLECULE 1 0 ATOM N 9 9 0 1 1 1 "
                               "END_MOLECULE END_KYTFILE";
        const Outcome outcome = convert({"--from", "kyt", "-", "-o", folder->filePath("m%d.smi")}, two);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(readFile(folder->filePath("m1.smi")), QByteArray("C\n"));
        QCOMPARE(readFile(folder->filePath("m2.smi")), QByteArray("N\n"));
    }

    void noneOfTheNumberedOutputsIsWrittenWhereOneCannotBe()
    {
        const QByteArray two =
            "KYTFILE MOLECULE 1 0 ATOM C 1 1 0 1 1 1 END_MOLECULE MOLECULE 1 0 ATOM N 1e30 9 0 1 1 1 "
            "END_MOLECULE END_KYTFILE";
        const Outcome outcome = convert({"--from", "kyt", "-", "-o", folder->filePath("m%d.svg")}, two);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(QDir(folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void aFullDiskIsNamedAndTheOldFileStays()
    {
        QVERIFY(writeFile(folder->filePath("out.png"), "the old one"));
        QProcess shell;
        shell.start("bash",
                    {"-c", "ulimit -f 1; exec \"$0\" lib/megaphon.kyf --scale 9 -o \"$1\"", KYTCONVERT_PROGRAM,
                     folder->filePath("out.png")});
        QVERIFY(shell.waitForFinished(60'000));
        QCOMPARE(shell.exitCode(), 2);
        const QString told = QString::fromUtf8(shell.readAllStandardError());
        QVERIFY2(told.contains("out.png: cannot be written: File too large"), qPrintable(told));
        QCOMPARE(readFile(folder->filePath("out.png")), QByteArray("the old one"));
        QCOMPARE(QDir(folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList("out.png"));
    }

    void anEmptyFileIsFilledWhereItIs()
    {
        QFile file(folder->filePath("preview"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(convert({"lib/water.kyf", "--to", "png", "-o", file.fileName()}).status, 0);
        QCOMPARE(QImage::fromData(file.readAll(), "PNG").isNull(), false); // read from the file opened before
    }

    void anEmptyFileStaysEmptyIfTheDiskIsFull()
    {
        QVERIFY(writeFile(folder->filePath("out.png"), ""));
        QProcess shell;
        shell.start("bash",
                    {"-c", "ulimit -f 1; exec \"$0\" lib/megaphon.kyf --scale 9 -o \"$1\"", KYTCONVERT_PROGRAM,
                     folder->filePath("out.png")});
        QVERIFY(shell.waitForFinished(60'000));
        QCOMPARE(shell.exitCode(), 2);
        QCOMPARE(readFile(folder->filePath("out.png")), QByteArray());
    }

    void faultsThatCannotBeToldAreNoAnswer()
    {
        QVERIFY(writeFile(folder->filePath("bad.kyt"), "KYTFILE"));
        QProcess shell;
        shell.start("bash",
                    {"-c", "exec \"$0\" --check \"$1\" > /dev/full", KYTCONVERT_PROGRAM, folder->filePath("bad.kyt")});
        QVERIFY(shell.waitForFinished(60'000));
        QCOMPARE(shell.exitCode(), 2);
        QVERIFY(shell.readAllStandardError().contains("standard output: cannot be written"));
    }

    void theHatchingOfAFallingWedgeGrowsWithAPicture()
    {
        QVERIFY(writeFile(folder->filePath("wedge.kyt"),
                          "KYTFILE MOLECULE 2 1 ATOM C 100 100 0 1 1 1 ATOM C 190 100 9 1 1 1 BOND 0 1 1 3 "
                          "END_MOLECULE END_KYTFILE"));
        const auto strokes = [&](const QString& scale) {
            return mostStrokes(pictureIn(
                convert({folder->filePath("wedge.kyt"), "--to", "png", "--style", "editor", "--scale", scale}).out,
                "png", QSize()));
        };
        const int plain = strokes("1");
        QVERIFY2(plain >= 4, qPrintable(QString::number(plain)));
        QVERIFY2(std::abs(strokes("8") - plain) <= 2, qPrintable(QString::number(strokes("8"))));
    }

    void scaleMarginAndBackgroundOfAPicture_data()
    {
        QTest::addColumn<QString>("style");
        for (const char* style : {"paper", "acs", "editor"})
            QTest::newRow(style) << style;
    }

    void scaleMarginAndBackgroundOfAPicture()
    {
        QFETCH(QString, style);
        const QImage plain = QImage::fromData(convert({"lib/water.kyf", "--to", "png", "--style", style}).out);
        const QImage large =
            QImage::fromData(convert({"lib/water.kyf", "--to", "png", "--style", style, "--scale", "2"}).out);
        const QSize difference = large.size() - plain.size() * 2;
        QVERIFY(std::abs(difference.width()) <= 1 && std::abs(difference.height()) <= 1); // sizes are rounded
        const QImage wide =
            QImage::fromData(convert({"lib/water.kyf", "--to", "png", "--style", style, "--margin", "25"}).out);
        QCOMPARE(wide.size(), plain.size() + QSize(30, 30));
        const QImage red = QImage::fromData(
            convert({"lib/water.kyf", "--to", "png", "--style", style, "--background", "#ff0000"}).out);
        QCOMPARE(red.pixel(0, 0), qRgb(255, 0, 0));
        const QImage clear = QImage::fromData(
            convert({"lib/water.kyf", "--to", "png", "--style", style, "--background", "transparent"}).out);
        QCOMPARE(qAlpha(clear.pixel(0, 0)), 0);
    }

    void checkIsSilentForASoundFileAndTellsFaultsByTheirPlace()
    {
        const Outcome sound = convert({"--check", "data/alanine.kyt"});
        QCOMPARE(sound.status, 0);
        QCOMPARE(sound.out, QByteArray());
        QCOMPARE(sound.err, QString());
        QVERIFY(
            writeFile(folder->filePath("bad.kyt"), "KYTFILE\n MOLECULE 1 0\n  ATOM C 1 x 0 1 1 1\n END_MOLECULE\n"));
        const Outcome bad = convert({"--check", "bad.kyt"}, {}, folder->path());
        QCOMPARE(bad.status, 1);
        QCOMPARE(bad.out,
                 QByteArray("bad.kyt:3:12: invalid number; read as 0\n"
                            "bad.kyt:5:1: unexpected end of file, END_KYTFILE missing\n"));
    }

    void infoIsATableOrJson()
    {
        const Outcome table = convert({"--info", "lib/benzene.kyf"});
        QCOMPARE(table.status, 0);
        const QList<QByteArray> lines = table.out.split('\n');
        QCOMPARE(lines[0].simplified(), QByteArray("Molecule Formula Weight Atoms Bonds Rings Warnings"));
        QCOMPARE(lines[1].simplified(), QByteArray("lib/benzene.kyf C6H6 78.114 12 12 1 0"));

        const Outcome json = convert({"--info", "--json", "--from", "smi", "-"}, "CCO ethanol\n[Na+].[Cl-] salt\n");
        const QJsonArray molecules = QJsonDocument::fromJson(json.out).array();
        QCOMPARE(molecules.size(), 2);
        QCOMPARE(molecules[0].toObject()["formula"].toString(), QString("C2H6O"));
        QCOMPARE(molecules[0].toObject()["name"].toString(), QString("ethanol"));
        QCOMPARE(molecules[0].toObject()["weight"].toDouble(), 46.069);
        QCOMPARE(molecules[1].toObject()["atoms"].toInt(), 2);
    }

    void badInputGivesOneLineAndNoOutput_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("line");
        const QStringList toFile = {"-o", "out.svg"};
        QTest::newRow("missing file") << QStringList{"none.kyt"} + toFile << QByteArray() << "none.kyt: ";
        QTest::newRow("folder") << QStringList{"--from", "kyt", "."} + toFile << QByteArray() << ".: is a folder";
        QTest::newRow("empty") << QStringList{"--from", "kyt", "-"} + toFile << QByteArray() << ":1:1: ";
        QTest::newRow("binary") << QStringList{"--from", "mol", "-"} + toFile << QByteArray("\0\xff\x01", 3) << ":1: ";
        QTest::newRow("bad SMILES") << QStringList{"--from", "smi", "-"} + toFile << QByteArray("CC\nC(C\n") << ":2: ";
        QTest::newRow("unknown ending") << QStringList{"none.abc"} + toFile << QByteArray() << "none.abc: ";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << QByteArray() << "bogus";
        QTest::newRow("no input") << QStringList() << QByteArray() << "no input";
        QTest::newRow("a PDF file is no input")
            << QStringList{"--from", "pdf", "-"} + toFile << QByteArray() << "can only be written";
        QTest::newRow("not even a picture")
            << QStringList{"--from", "png", "-"} + toFile << QByteArray() << "no drawing";
        QTest::newRow("a picture of something else")
            << QStringList{"--from", "svg", "-"} + toFile << QByteArray("<svg/>") << "no drawing";
        QTest::newRow("a sheet of several pages for one file")
            << QStringList{"--from", "smi", "-", "--columns", "1", "--height", "50"} + toFile
            << QByteArray("C\nCC\nC\n") << "sheet of 3 pages";
        QTest::newRow("far away") << QStringList{"--from", "kyt", "-"} + toFile
                                  << QByteArray("KYTFILE MOLECULE 1 0 ATOM C 1e30 0 0 1 1 1 END_MOLECULE END_KYTFILE")
                                  << "too large";
        QTest::newRow("announces much") << QStringList{"--from", "kyt", "-"} + toFile
                                        << QByteArray("KYTFILE MOLECULE 2000000000 0") << ":1:";
    }

    void badInputGivesOneLineAndNoOutput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(QString, line);
        QVERIFY(writeFile(folder->filePath("out.svg"), "the old one"));
        const Outcome outcome = convert(arguments, input, folder->path());
        QCOMPARE(outcome.status, 2);
        QVERIFY2(outcome.err.startsWith("kytconvert: ") && outcome.err.contains(line), qPrintable(outcome.err));
        QCOMPARE(outcome.err.count(u'\n'), 1);
        QCOMPARE(outcome.out, QByteArray());
        QCOMPARE(readFile(folder->filePath("out.svg")), QByteArray("the old one"));
        QCOMPARE(QDir(folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList("out.svg"));
    }

    void anOutputThatCannotBeWrittenIsTold()
    {
        const QString missing = folder->filePath("none/out.svg");
        const Outcome outcome = convert({"lib/water.kyf", "-o", missing});
        QCOMPARE(outcome.status, 2);
        QVERIFY(outcome.err.contains("none/out.svg: cannot be written"));
        const Outcome onFolder = convert({"lib/water.kyf", "--to", "svg", "-o", folder->path()});
        QCOMPARE(onFolder.status, 2);
        const Outcome full = convert({"lib/water.kyf", "--to", "svg", "-o", "/dev/full"});
        QCOMPARE(full.status, 2);
        QVERIFY(QFile::exists("/dev/full"));
    }

    void warningsNameWhatIsLostOnce()
    {
        const QByteArray text = "KYTFILE MOLECULE 3 2 ATOM C 1 1 0 1 1 1 ATOM C 31 1 0 1 1 1 ATOM C 61 1 0 1 1 1 "
                                "BOND 0 1 1 0 BOND 1 2 1 0 END_MOLECULE END_KYTFILE";
        const Outcome outcome = convert({"--from", "kyt", "--to", "mol", "-"}, text);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.err,
                 QString("kytconvert: warning: hydrogen bonds: written as bond type 8 (any) in V2000 (2)\n"));
    }

    // Records

    void everyRecordThatFailsIsNamed()
    {
        const QString err = convert({"--from", "smi", "-", "-o", "out.sdf"}, badLines, folder->path()).err;
        QCOMPARE(err,
                 QString("kytconvert: standard input:2: open: parenthesis not closed: C(C\n"
                         "kytconvert: standard input:4: aromatic ring without alternating double bonds (atoms 1, 2, 3, "
                         "4, 5)\n"
                         "kytconvert: standard input:5: five: atom 2 (C) has more bonds than its valence allows\n"
                         "kytconvert: out.sdf: not written, since 3 of 6 records failed (--skip-errors omits them)\n"));
    }

    void afterAFailureNothingOfAFileRemains_data()
    {
        QTest::addColumn<QString>("output");
        for (const char* output : {"out.sdf", "out.smi.gz", "out%d.sdf", "out.kyt"})
            QTest::newRow(output) << QString(output);
    }

    void afterAFailureNothingOfAFileRemains()
    {
        QFETCH(QString, output);
        const Outcome fresh = convert({"--from", "smi", "-", "-o", output}, badLines, folder->path());
        QCOMPARE(fresh.status, 2);
        QCOMPARE(files(), QStringList());
        QVERIFY(writeFile(folder->filePath(output), "the old one"));
        convert({"--from", "smi", "-", "-o", output}, badLines, folder->path());
        QCOMPARE(files(), QStringList(output));
        QCOMPARE(readFile(folder->filePath(output)), QByteArray("the old one"));
    }

    void errorsCanBeSkipped()
    {
        const Outcome toFile =
            convert({"--skip-errors", "--from", "smi", "-", "-o", "out.smi"}, badLines, folder->path());
        QCOMPARE(toFile.status, 1);
        QCOMPARE(readFile(folder->filePath("out.smi")), QByteArray("C\nCC\tethane\nO\n"));
        QVERIFY(toFile.err.endsWith("kytconvert: 3 of 6 records failed and were skipped\n"));
        const Outcome toStream = convert({"--skip-errors", "--from", "smi", "--to", "smi", "-"}, badLines);
        QCOMPARE(toStream.status, 1);
        QCOMPARE(toStream.out, QByteArray("C\nCC\tethane\nO\n"));
        const Outcome drawing = convert({"--skip-errors", "--from", "smi", "--to", "kyt", "-"}, badLines);
        QCOMPARE(drawing.status, 1);
        QCOMPARE(drawing.out.count("MOLECULE "), 3);
        const Outcome info = convert({"--skip-errors", "--info", "--json", "--from", "smi", "-"}, badLines);
        QCOMPARE(info.status, 1);
        QCOMPARE(QJsonDocument::fromJson(info.out).array().size(), 3);
    }

    void standardOutputEndsWithTheFirstFailure()
    {
        const Outcome outcome = convert({"--from", "smi", "--to", "smi", "-"}, badLines);
        QCOMPARE(outcome.status, 2);
        QCOMPARE(outcome.out, QByteArray("C\n"));
        QCOMPARE(outcome.err.count(u'\n'), 1);
    }

    void recordsAreWrittenAsTheyAreDone()
    {
        QProcess program;
        program.start(KYTCONVERT_PROGRAM, {"--from", "smi", "--to", "smi", "-"});
        for (const QByteArray smiles : {"C", "CC", "CCC"}) {
            program.write(smiles + '\n');
            QVERIFY(program.waitForReadyRead(30'000));
            QCOMPARE(program.readAllStandardOutput(), smiles + '\n');
        }
        program.closeWriteChannel();
        QVERIFY(program.waitForFinished(30'000));
        QCOMPARE(program.exitCode(), 0);
    }

    void theNumberOfWorkersDoesNotChangeTheOutput_data()
    {
        QTest::addColumn<QString>("format");
        for (const char* format : {"smi", "sdf", "xyz"})
            QTest::newRow(format) << QString(format);
    }

    void theNumberOfWorkersDoesNotChangeTheOutput()
    {
        QFETCH(QString, format);
        const QStringList arguments = {"--skip-errors", "tests/convert/molecules.smi", "--to", format, "--jobs"};
        const Outcome one = convert(arguments + QStringList("1"));
        const Outcome four = convert(arguments + QStringList("4"));
        QVERIFY(one.out.size() > 5000);
        QVERIFY2(one.out == four.out, "the outputs differ");
        QCOMPARE(one.err, four.err);
    }

    void partsOfAnInputGiveThePartsOfTheOutput()
    {
        const QList<QByteArray> lines = readFile("tests/convert/molecules.smi").split('\n');
        QByteArray parts;
        for (qsizetype from = 0; from < lines.size(); from += 50) {
            QByteArray part;
            for (qsizetype i = from; i < std::min(from + 50, lines.size()); ++i)
                part += lines[i] + '\n';
            parts += convert({"--from", "smi", "--to", "sdf", "-"}, part).out;
        }
        QVERIFY(parts == convert({"tests/convert/molecules.smi", "--to", "sdf"}).out);
    }

    void aRecordThatTakesTooLongIsNamedAndTheOthersAreConverted()
    {
        const QByteArray slow = QByteArray("C").repeated(990);
        const Outcome outcome = convert({"--skip-errors", "--time-limit", "1", "--from", "smi", "--to", "sdf", "-"},
                                        "C first\n" + slow + " slow\nO last\n");
        QVERIFY2(outcome.status == 1, qPrintable(outcome.err));
        QVERIFY2(outcome.err.contains("standard input:2: timed out after 1 s\n"), qPrintable(outcome.err));
        QCOMPARE(outcome.out.count("$$$$"), 2);
    }

    void anInputIsReadByItsContentsWhateverItsCompression()
    {
        const QStringList toGzip = {"tests/convert/molecules.smi", "-o", folder->filePath("out.smi.gz")};
        QCOMPARE(convert(toGzip).status, 0);
        const QByteArray compressed = readFile(folder->filePath("out.smi.gz"));
        QVERIFY(compressed.startsWith("\x1f\x8b"));
        const QByteArray plain = convert({"tests/convert/molecules.smi", "--to", "smi"}).out;
        QCOMPARE(convert({folder->filePath("out.smi.gz"), "--to", "smi"}).out, plain);
        QCOMPARE(convert({"--from", "smi", "--to", "smi", "-"}, compressed).out, plain);
        const Outcome cut = convert({"--from", "smi", "--to", "smi", "-"}, compressed.chopped(9));
        QCOMPARE(cut.status, 2);
        QVERIFY2(cut.err.endsWith(": unexpected end of the gzip file\n"), qPrintable(cut.err));
    }

    void aTableKeepsNamesAndOtherColumns()
    {
        const QByteArray table = "Name,SMILES,pKa\n\"acetic, pure\",CC(=O)O,4.76\n";
        const QByteArray out = convert({"--from", "csv", "--to", "sdf", "-"}, table).out;
        QVERIFY(out.startsWith("acetic, pure\n"));
        QVERIFY(out.contains(">  <pKa>\n4.76\n\n"));
        QCOMPARE(convert({"--from", "csv", "--to", "smi", "--name-column", "3", "-"}, table).out,
                 QByteArray("CC(=O)O\t4.76\n"));
        const Outcome none = convert({"--from", "csv", "--to", "smi", "--smiles-column", "x", "-"}, table);
        QCOMPARE(none.status, 2);
        QVERIFY(none.err.contains("standard input:1: no column \"x\""));
    }

    void aHeadingOfAListIsNoMolecule_data()
    {
        QTest::addColumn<QByteArray>("heading");
        for (const char* heading : {"SMILES", "smiles name", "Canonical_SMILES\tID", "# comment\nSMILES"})
            QTest::newRow(heading) << QByteArray(heading);
    }

    void aHeadingOfAListIsNoMolecule()
    {
        QFETCH(QByteArray, heading);
        const Outcome outcome = convert({"--from", "smi", "--to", "smi", "-"}, heading + "\nC\n");
        QCOMPARE(outcome.out, QByteArray("C\n"));
        QCOMPARE(outcome.status, 0);
        QCOMPARE(convert({"--from", "smi", "--to", "smi", "-"}, "C\n" + heading + "\n").status, 2);
    }

    void checkNamesEveryFault()
    {
        const Outcome outcome = convert({"--check", "--from", "smi", "-"}, badLines);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.out.count('\n'), 3);
        QCOMPARE(outcome.err, QString());
    }

    void checkNamesEveryFaultOfARecord()
    {
        const QByteArray atoms = "    0.0000    0.0000    0.0000 C   0  0\n    1.5000    0.0000    0.0000 C   0  0\n";
        const auto record = [&](const QByteArray& bonds, int count) {
            return "\n\n\n  2  " + QByteArray::number(count) + "  0  0  0  0            999 V2000\n" + atoms + bonds
                + "M  END\n$$$$\n";
        };
        const QByteArray file =
            record("  1  3  1  0\n  2  2  1  0\n", 2) + record("  1  2  1  0\n", 1) + record("  1  9  1  0\n", 1);
        const Outcome outcome = convert({"--check", "--from", "sdf", "-"}, file);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(QString::fromUtf8(outcome.out),
                 QString("standard input:7: bond refers to non-existent atom 3\n"
                         "standard input:8: bond from atom 2 to itself\n"
                         "standard input:26: bond refers to non-existent atom 9\n"));
    }

    void aLineWithoutAnEndIsRefused()
    {
        QProcess shell;
        shell.start("bash", {"-c", "yes C | tr -d '\\n' | \"$0\" --from smi --to smi -", KYTCONVERT_PROGRAM});
        QVERIFY(shell.waitForFinished(60'000));
        QCOMPARE(shell.exitCode(), 2);
        QCOMPARE(shell.readAllStandardError(),
                 QByteArray("kytconvert: standard input:1: line longer than 1048576 bytes\n"));
    }

#ifndef KYTSTUDIO_SANITIZED // which keeps freed memory for a while
    void memoryDoesNotGrowWithTheNumberOfRecords()
    {
        constexpr int kibibytes = 64 * 1024;
        const auto peak = [](int records) {
            QProcess shell;
            shell.start("bash",
                        {"-c",
                         "yes 'CCO ethanol' | head -n \"$1\" |"
                         " /usr/bin/env python3 -c 'import resource, subprocess, sys;"
                         " subprocess.run(sys.argv[1:], check=True, stdout=subprocess.DEVNULL);"
                         " print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)'"
                         " \"$0\" --from smi --to smi --jobs 2 -",
                         KYTCONVERT_PROGRAM, QString::number(records)});
            return shell.waitForFinished(120'000) ? shell.readAllStandardOutput().trimmed().toInt() : 0;
        };
        const int few = peak(500);
        const int many = peak(10'000);
        QVERIFY2(few > 0 && many > 0, "the program did not run");
        QVERIFY2(many < kibibytes, qPrintable(QString::number(many)));
        QVERIFY2(many < few + 4096, qPrintable(QStringLiteral("%1 and %2 KiB").arg(few).arg(many)));
    }
#endif

    void aTerminatedConversionLeavesNothing()
    {
        QProcess program;
        program.setWorkingDirectory(folder->path());
        program.start(KYTCONVERT_PROGRAM, {"--from", "smi", "-", "-o", "out%d.sdf"});
        program.write("C\n");
        QTRY_VERIFY_WITH_TIMEOUT(!files().isEmpty(), 30'000);
        program.terminate();
        QVERIFY(program.waitForFinished(30'000));
        QCOMPARE(program.exitStatus(), QProcess::CrashExit); // by the signal
        QCOMPARE(files(), QStringList());
    }

    void unknownFormatsGetTheListOfThoseThatAreKnown()
    {
        const QString read = convert({"a.abc", "--to", "smi"}).err;
        QVERIFY2(read.contains("a.abc: unknown format") && read.contains("csv") && !read.contains("pdf"),
                 qPrintable(read));
        const QString written = convert({"a.smi", "-o", "b.abc"}).err;
        QVERIFY2(written.contains("unknown output format") && written.contains("xyz") && !written.contains("cdxml"),
                 qPrintable(written));
    }

    void whatIsAlwaysLostIsToldOnDemand()
    {
        QCOMPARE(convert({"data/caffeine.kyt", "--to", "smi"}).err, QString());
        QCOMPARE(convert({"data/caffeine.kyt", "--to", "smi", "--verbose"}).err,
                 QString("kytconvert: warning: coordinates, depths and colours of molecules: discarded, not supported "
                         "in SMILES (1)\n"));
    }

private:
    QStringList files() const
    {
        return QDir(folder->path()).entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    const QByteArray badLines = "C\nC(C open\nCC ethane\nc1cccc1\nCC(C)(C)(C)C five\nO\n";
    std::unique_ptr<QTemporaryDir> folder;
};

QTEST_MAIN(test_kytconvert)
#include "test_kytconvert.moc"
