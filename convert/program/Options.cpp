#include "convert/program/Options.h"

#include <QCommandLineParser>

namespace {

constexpr double largestScale = 100;
constexpr double largestMargin = 10'000; // canvas pixels

[[noreturn]] void fail(const QString& reason)
{
    throw ConversionError(reason + QStringLiteral(" (see --help)"));
}

/// A sentence of Qt in the style of this program's messages: lower case, without a full stop.
QString asReason(QString sentence)
{
    if (sentence.endsWith(u'.'))
        sentence.chop(1);
    return sentence.left(1).toLower() + sentence.mid(1);
}

const Format* formatOption(const QCommandLineParser& parser, const QString& option)
{
    const QString name = parser.value(option);
    const Format* format = formatNamed(name);
    if (!format)
        fail(QStringLiteral("unknown format \"%1\"").arg(name));
    return format;
}

double numberOption(const QCommandLineParser& parser, const QString& option, double minimum, double maximum,
                    double defaultValue)
{
    if (!parser.isSet(option))
        return defaultValue;
    bool isNumber = false;
    const double number = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(number >= minimum && number <= maximum))
        fail(QStringLiteral("--%1 must be a number from %2 to %3").arg(option).arg(minimum).arg(maximum));
    return number;
}

QColor colorOption(const QCommandLineParser& parser, const QString& option)
{
    const QString name = parser.value(option);
    const QColor color(name);
    if (!color.isValid())
        fail(QStringLiteral("invalid colour \"%1\": use a name, #rrggbb or transparent").arg(name));
    return color;
}

Options::Task taskOf(const QCommandLineParser& parser)
{
    if (parser.isSet("help"))
        return Options::Task::Help;
    if (parser.isSet("version"))
        return Options::Task::Version;
    if (parser.isSet("check"))
        return Options::Task::Check;
    return parser.isSet("info") ? Options::Task::Info : Options::Task::Convert;
}

} // namespace

Options parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsCompactedShortOptions);
    parser.addOptions({{{"o", "output"}, {}, "file"},
                       {"from", {}, "format"},
                       {"to", {}, "format"},
                       {"scale", {}, "number"},
                       {"margin", {}, "pixels"},
                       {"background", {}, "colour"},
                       {"v3000", {}},
                       {"check", {}},
                       {"info", {}},
                       {"json", {}},
                       {{"h", "help"}, {}},
                       {"version", {}}});
    if (!parser.parse(QStringList("kytconvert") + arguments))
        fail(asReason(parser.errorText()));

    Options options;
    options.task = taskOf(parser);
    if (options.task == Options::Task::Help || options.task == Options::Task::Version)
        return options;
    options.inputs = parser.positionalArguments();
    if (options.inputs.isEmpty())
        fail(QStringLiteral("no input file specified"));
    if (options.inputs.count(QStringLiteral("-")) > 1)
        fail(QStringLiteral("standard input can be read only once"));
    if (parser.isSet("check") && parser.isSet("info"))
        fail(QStringLiteral("--check and --info cannot be combined"));
    if (parser.isSet("from"))
        options.from = formatOption(parser, "from");
    options.json = parser.isSet("json");
    if (options.json && options.task != Options::Task::Info)
        fail(QStringLiteral("--json requires --info"));
    if (options.task != Options::Task::Convert && (parser.isSet("output") || parser.isSet("to")))
        fail(QStringLiteral("--output and --to cannot be combined with --check or --info"));
    if (options.task != Options::Task::Convert)
        return options;

    if (parser.isSet("output"))
        options.output = parser.value("output");
    options.to = parser.isSet("to") ? formatOption(parser, "to") : formatOfFile(options.output);
    if (!options.to)
        fail(QStringLiteral("unknown output format: use a file extension or --to"));
    options.style.picture.scale = numberOption(parser, "scale", 0.01, largestScale, options.style.picture.scale);
    options.style.picture.margin = numberOption(parser, "margin", 0, largestMargin, options.style.picture.margin);
    if (parser.isSet("background"))
        options.style.picture.background = colorOption(parser, "background");
    options.style.v3000 = parser.isSet("v3000");
    return options;
}

QString helpText()
{
    return QStringLiteral(R"(Usage: kytconvert [options] INPUT... -o OUTPUT
       kytconvert --check FILE...
       kytconvert --info [--json] FILE...

Converts molecule drawings. Reads kyt, kyf, mol, mdl, sdf and smi; writes these
and svg, png and pdf. "-" is standard input or output. Where the output holds a
single drawing, several inputs are laid out side by side. "%d" in OUTPUT writes
one file per molecule.

  -o, --output FILE    output file; its extension selects the format
  --from FORMAT        input format (default: from the file extension)
  --to FORMAT          output format (default: from the file extension)
  --v3000              always write molfiles and SD files as V3000
  --scale NUMBER       scale factor of a picture (default: 1)
  --margin PIXELS      margin around the drawing in a picture (default: 10)
  --background COLOUR  background: name, #rrggbb, transparent (default: white)
  --check              report all errors that the editor finds in a file
  --info, --json       print formula, weight, rings and warnings, also as JSON
  --help, --version

Examples:
  kytconvert drawing.kyt -o figure.pdf --margin 5
  kytconvert molecules.smi -o molecules.sdf
  echo 'CC(=O)O acetic acid' | kytconvert --from smi - -o acid.kyf
)");
}
