#include "convert/program/Options.h"

#include <QTest>
#include <QThread>

namespace {

/// Why the arguments are refused, or nothing.
QString refusal(const QStringList& arguments)
{
    try {
        parseOptions(arguments);
    } catch (const ConversionError& fault) {
        return fault.text();
    }
    return {};
}

} // namespace

class test_Options : public QObject {
    Q_OBJECT

private slots:
    void withoutOptionsTheDefaultsHold()
    {
        const Options options = parseOptions({"a.kyt", "-o", "b.svg"});
        QCOMPARE(options.task, Options::Task::Convert);
        QCOMPARE(options.inputs, QStringList("a.kyt"));
        QCOMPARE(options.output, QString("b.svg"));
        QVERIFY(!options.from);
        QCOMPARE(options.to, formatNamed("svg"));
        QCOMPARE(options.style.picture.scale, 1.0);
        QCOMPARE(options.style.picture.margin, 10.0);
        QCOMPARE(options.style.picture.background, QColor(Qt::white));
        QVERIFY(!options.style.v3000);
        QVERIFY(!options.json);
    }

    void everyOptionIsTaken()
    {
        const Options options = parseOptions({"--from", "smi", "--to", "PNG", "--scale", "2.5", "--margin", "0",
                                              "--background", "#ff0000", "--v3000", "-o", "out", "a", "-", "b"});
        QCOMPARE(options.inputs, QStringList({"a", "-", "b"}));
        QCOMPARE(options.output, QString("out"));
        QCOMPARE(options.from, formatNamed("smi"));
        QCOMPARE(options.to, formatNamed("png"));
        QCOMPARE(options.style.picture.scale, 2.5);
        QCOMPARE(options.style.picture.margin, 0.0);
        QCOMPARE(options.style.picture.background, QColor(255, 0, 0));
        QVERIFY(options.style.v3000);
    }

    void everyOptionOfAPictureIsTaken()
    {
        const PictureStyle plain = parseOptions({"a", "-o", "b.svg"}).style.picture;
        QCOMPARE(plain.look, PictureLook::Paper);
        QVERIFY(!plain.colors && !plain.names);
        QVERIFY(!plain.carbons && !plain.textAsPaths);
        const PictureStyle style =
            parseOptions({"a",     "-o",        "b.svg",   "--style",  "acs",   "--colors",      "drawing", "--text",
                          "paths", "--carbons", "--names", "--legend", "mass",  "--columns",     "3",       "--dpi",
                          "300",   "--width",   "400",     "--height", "200.5", "--bond-length", "12"})
                .style.picture;
        QCOMPARE(style.look, PictureLook::Acs);
        QCOMPARE(*style.colors, PictureColors::Drawing);
        QVERIFY(style.carbons && style.textAsPaths);
        QCOMPARE(*style.names, true);
        QCOMPARE(style.legend, QString("mass"));
        QCOMPARE(style.columns, 3);
        QCOMPARE(style.dpi, 300.0);
        QCOMPARE(style.width, 400.0);
        QCOMPARE(style.height, 200.5);
        QCOMPARE(style.bondLength, 12.0);
        QCOMPARE(*parseOptions({"a", "-o", "b.svg", "--no-names"}).style.picture.names, false);
    }

    void theOutputIsNamedInFourWays_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("short") << QStringList{"-o", "b.mol", "a"};
        QTest::newRow("short in one word") << QStringList{"-ob.mol", "a"};
        QTest::newRow("long") << QStringList{"a", "--output", "b.mol"};
        QTest::newRow("long in one word") << QStringList{"a", "--output=b.mol"};
        QTest::newRow("the last one counts") << QStringList{"-o", "c.svg", "a", "-o", "b.mol"};
    }

    void theOutputIsNamedInFourWays()
    {
        QFETCH(QStringList, arguments);
        const Options options = parseOptions(arguments);
        QCOMPARE(options.inputs, QStringList("a"));
        QCOMPARE(options.output, QString("b.mol"));
        QCOMPARE(options.to, formatNamed("mol"));
    }

    void whatToWriteIsSaidByTheEndingOrByAnOption_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("format");
        QTest::newRow("ending") << QStringList{"a", "-o", "b.sdf"} << "sdf";
        QTest::newRow("option") << QStringList{"a", "--to", "sdf"} << "sdf";
        QTest::newRow("option before ending") << QStringList{"a", "-o", "b.svg", "--to", "pdf"} << "pdf";
        QTest::newRow("numbered files") << QStringList{"a", "-o", "m%03d.SMI"} << "smi";
    }

    void whatToWriteIsSaidByTheEndingOrByAnOption()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, format);
        QCOMPARE(parseOptions(arguments).to, formatNamed(format));
    }

    void standardOutputIsTheDefault() { QCOMPARE(parseOptions({"a", "--to", "smi"}).output, QString("-")); }

    void whatFollowsTwoDashesIsAnInput()
    {
        QCOMPARE(parseOptions({"--to", "smi", "--", "--check", "-o"}).inputs, QStringList({"--check", "-o"}));
    }

    void tasks_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("task");
        const auto row = [](const char* name, const QStringList& arguments, Options::Task task) {
            QTest::newRow(name) << arguments << int(task);
        };
        row("check", {"--check", "a", "b"}, Options::Task::Check);
        row("check of a stream", {"--check", "--from", "mol", "-"}, Options::Task::Check);
        row("info", {"--info", "a"}, Options::Task::Info);
        row("info as JSON", {"--json", "--info", "a"}, Options::Task::Info);
        row("help", {"--help"}, Options::Task::Help);
        row("help in short", {"-h"}, Options::Task::Help);
        row("version", {"--version"}, Options::Task::Version);
        row("help goes before all", {"--version", "--check", "--info", "--help"}, Options::Task::Help);
        row("version goes before the others", {"--check", "--info", "--version"}, Options::Task::Version);
        row("conversion", {"a", "--to", "smi"}, Options::Task::Convert);
    }

    void tasks()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, task);
        const Options options = parseOptions(arguments);
        QCOMPARE(int(options.task), task);
        QCOMPARE(options.json, arguments.contains("--json"));
    }

    void numbersHaveTheirLimits_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        const std::pair<const char*, QList<std::pair<const char*, bool>>> texts[] = {
            {"scale",
             {{"0.01", true},
              {"0.009", false},
              {"0", false},
              {"-1", false},
              {"100", true},
              {"100.01", false},
              {"1e1", true},
              {" 2 ", true},
              {"1e3", false},
              {"2,5", false},
              {"2x", false},
              {"nan", false},
              {"inf", false},
              {"", false}}},
            {"margin",
             {{"0", true}, {"-0.1", false}, {"10000", true}, {"10000.5", false}, {"wide", false}, {"nan", false}}},
        };
        for (const auto& [option, rows] : texts)
            for (const auto& [text, taken] : rows)
                QTest::addRow("%s \"%s\"", option, text) << QString(option) << QString(text) << taken;
    }

    void numbersHaveTheirLimits()
    {
        QFETCH(QString, option);
        QFETCH(QString, text);
        QFETCH(bool, taken);
        const QStringList arguments{"a", "--to", "png", "--" + option + '=' + text};
        if (taken) {
            const PictureStyle style = parseOptions(arguments).style.picture;
            QCOMPARE(option == "scale" ? style.scale : style.margin, text.toDouble());
        } else {
            const QString fault = refusal(arguments);
            QVERIFY2(fault.startsWith("--" + option + " must be a number from "), qPrintable(fault));
        }
    }

    void backgrounds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        QTest::newRow("name") << "red" << QColor(255, 0, 0);
        QTest::newRow("name in capitals") << "LightBlue" << QColor(173, 216, 230);
        QTest::newRow("six digits") << "#0102Fe" << QColor(1, 2, 254);
        QTest::newRow("three digits") << "#f80" << QColor(255, 136, 0);
        QTest::newRow("with its opacity") << "#80ff0000" << QColor(255, 0, 0, 128);
        QTest::newRow("transparent") << "transparent" << QColor(0, 0, 0, 0);
        QTest::newRow("no such name") << "blau" << QColor();
        QTest::newRow("no number") << "#ggg" << QColor();
        QTest::newRow("five digits") << "#12345" << QColor();
        QTest::newRow("nothing") << "" << QColor();
    }

    void backgrounds()
    {
        QFETCH(QString, text);
        QFETCH(QColor, color);
        const QStringList arguments{"a", "--to", "png", "--background=" + text};
        if (color.isValid())
            QCOMPARE(parseOptions(arguments).style.picture.background.rgba(), color.rgba());
        else
            QVERIFY2(refusal(arguments).startsWith("invalid colour \"" + text + '"'), qPrintable(refusal(arguments)));
    }

    void whatMakesNoSenseIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("why");
        const auto row = [](const char* name, const QStringList& arguments, const char* why) {
            QTest::newRow(name) << arguments << QString(why);
        };
        row("nothing", {}, "no input file specified");
        row("no input", {"-o", "a.svg"}, "no input file specified");
        row("unknown style", {"a", "-o", "a.svg", "--style", "Paper"}, "--style must be one of: paper, acs, editor");
        row("unknown colours", {"a", "-o", "a.svg", "--colors", "red"},
            "--colors must be one of: black, element, drawing");
        row("unknown text", {"a", "-o", "a.svg", "--text", "bold"}, "--text must be one of: text, paths");
        row("half a column", {"a", "-o", "a.svg", "--columns", "2.5"},
            "--columns must be a whole number from 1 to 1000");
        row("no columns", {"a", "-o", "a.svg", "--columns", "0"}, "--columns must be a whole number from 1 to 1000");
        row("no width", {"a", "-o", "a.svg", "--width", "0"}, "--width must be a number from 1 to 100000");
        row("an unknown option", {"a", "--bogus"}, "unknown option 'bogus' ");
        row("an unknown option with help", {"--help", "--bogus"}, "unknown option 'bogus' ");
        row("an unknown letter", {"a", "-x"}, "unknown option 'x' ");
        row("an option without its value", {"a", "--to"}, "missing value after '--to' ");
        row("a value for an option without one", {"a", "--check=yes"}, "unexpected value after '--check' ");
        row("an unknown format to read", {"--from", "abc", "-", "--to", "smi"}, "unknown format \"abc\"");
        row("an unknown format to write", {"a", "--to", ""}, "unknown format \"\"");
        row("no format to write", {"a"}, "unknown output format: use a file extension or --to");
        row("an unknown file extension", {"a", "-o", "b.abc"}, "unknown output format: use a file extension or --to");
        row("standard input twice", {"-", "a", "-", "--to", "smi"}, "standard input can be read only once");
        row("a check and a table", {"--check", "--info", "a"}, "--check and --info cannot be combined");
        row("a check that writes", {"--check", "a", "-o", "b.svg"},
            "--output and --to cannot be combined with --check or --info");
        row("a table that converts", {"--info", "a", "--to", "smi"},
            "--output and --to cannot be combined with --check or --info");
        row("JSON of a conversion", {"--json", "a", "-o", "b.svg"}, "--json requires --info");
        row("JSON of a check", {"--json", "--check", "a"}, "--json requires --info");
    }

    void whatMakesNoSenseIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, why);
        const QString fault = refusal(arguments);
        QVERIFY2(fault.startsWith(why), qPrintable(fault));
        QVERIFY2(fault.endsWith(" (see --help)"), qPrintable(fault));
        QVERIFY(!fault.contains('\n'));
    }

    void recordsHaveTheirOptions()
    {
        const Options plain = parseOptions({"a.csv", "-o", "b.sdf"});
        QVERIFY(plain.input.smilesColumn.isEmpty() && plain.input.nameColumn.isEmpty() && !plain.skipErrors);
        QCOMPARE(plain.timeLimit, 60);
        QCOMPARE(plain.jobs, QThread::idealThreadCount());
        const Options all = parseOptions({"a.csv", "-o", "b.sdf.gz", "--smiles-column", "x y", "--name-column", "2",
                                          "--skip-errors", "--jobs", "7", "--time-limit", "5", "--layout"});
        QCOMPARE(all.to, formatNamed("sdf"));
        QCOMPARE(all.input.smilesColumn, QString("x y"));
        QCOMPARE(all.input.nameColumn, QString("2"));
        QVERIFY(all.skipErrors);
        QVERIFY(all.layout && !plain.layout);
        QCOMPARE(all.jobs, 7);
        QCOMPARE(all.timeLimit, 5);
    }

    void wholeNumbersHaveTheirLimits_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        for (const char* option : {"jobs", "time-limit"})
            for (const auto& [text, taken] :
                 {std::pair("1", true), std::pair("1024", true), std::pair("0", false), std::pair("-1", false),
                  std::pair("1.5", false), std::pair("x", false), std::pair("", false), std::pair("100000", false)})
                QTest::addRow("%s \"%s\"", option, text) << QString(option) << QString(text) << taken;
    }

    void wholeNumbersHaveTheirLimits()
    {
        QFETCH(QString, option);
        QFETCH(QString, text);
        QFETCH(bool, taken);
        const QString fault = refusal({"a.smi", "--to", "sdf", "--" + option, text});
        QCOMPARE(fault.isEmpty(), taken);
        QVERIFY(taken || fault.contains("must be a whole number from 1 to "));
    }

    void helpFitsAScreenAndShowsExamples()
    {
        const QStringList lines = helpText().trimmed().split('\n');
        QVERIFY2(lines.size() <= 24, qPrintable(QString::number(lines.size())));
        for (const QString& line : lines)
            QVERIFY2(line.size() < 80, qPrintable(line));
        QVERIFY(helpText().endsWith('\n'));
        QVERIFY(lines.contains("Examples:"));
    }

    void helpNamesEveryOption_data()
    {
        QTest::addColumn<QString>("option");
        for (const char* option :
             {"-o",           "--output",      "--from",          "--to",          "--v3000",       "--scale",
              "--margin",     "--background",  "--style",         "--colors",      "--carbons",     "--text",
              "--columns",    "--names",       "--no-names",      "--legend",      "--width",       "--height",
              "--dpi",        "--bond-length", "--smiles-column", "--name-column", "--skip-errors", "--jobs",
              "--time-limit", "--check",       "--info",          "--json",        "--help",        "--version",
              "--layout"})
            QTest::newRow(option) << option;
    }

    void helpNamesEveryOption()
    {
        QFETCH(QString, option);
        QVERIFY(helpText().contains(option));
    }
};

QTEST_APPLESS_MAIN(test_Options)
#include "test_Options.moc"
