#include "convert/Options.h"

#include <QCommandLineParser>

namespace {

constexpr double largestScale = 100;
constexpr double largestMargin = 10'000; // canvas pixels

[[noreturn]] void refuse(const QString& why)
{
    throw ConversionError(why + QStringLiteral(" (--help shows how it is used)"));
}

Format formatOption(const QCommandLineParser& parser, const QString& option)
{
    const QString name = parser.value(option);
    const std::optional<Format> format = formatNamed(name);
    if (!format)
        refuse(QStringLiteral("there is no format \"%1\"").arg(name));
    return *format;
}

double numberOption(const QCommandLineParser& parser, const QString& option, double least, double most, double usual)
{
    if (!parser.isSet(option))
        return usual;
    bool isNumber = false;
    const double number = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(number >= least && number <= most))
        refuse(QStringLiteral("--%1 takes a number from %2 to %3").arg(option).arg(least).arg(most));
    return number;
}

QColor colorOption(const QCommandLineParser& parser, const QString& option)
{
    const QString name = parser.value(option);
    const QColor color(name);
    if (!color.isValid())
        refuse(QStringLiteral("\"%1\" is no colour: take a name, #rrggbb or transparent").arg(name));
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
        refuse(parser.errorText());

    Options options;
    options.task = taskOf(parser);
    if (options.task == Options::Task::Help || options.task == Options::Task::Version)
        return options;
    options.inputs = parser.positionalArguments();
    if (options.inputs.isEmpty())
        refuse(QStringLiteral("no input is named"));
    if (options.inputs.count(QStringLiteral("-")) > 1)
        refuse(QStringLiteral("standard input can be read only once"));
    if (parser.isSet("check") && parser.isSet("info"))
        refuse(QStringLiteral("--check and --info do not go together"));
    if (parser.isSet("from"))
        options.from = formatOption(parser, "from");
    options.json = parser.isSet("json");
    if (options.json && options.task != Options::Task::Info)
        refuse(QStringLiteral("--json goes with --info"));
    if (options.task != Options::Task::Convert && (parser.isSet("output") || parser.isSet("to")))
        refuse(QStringLiteral("--check and --info answer on standard output, without --output and --to"));
    if (options.task != Options::Task::Convert)
        return options;

    if (parser.isSet("output"))
        options.output = parser.value("output");
    const std::optional<Format> to =
        parser.isSet("to") ? std::optional(formatOption(parser, "to")) : formatOfFile(options.output);
    if (!to)
        refuse(QStringLiteral("which format to write is not said: name an output with an ending, or take --to"));
    options.to = *to;
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
       kytconvert --check FILE...     kytconvert --info [--json] FILE...

Converts drawings. Reads kyt, kyf, mol, mdl, sdf and smi, and writes these and
svg, png and pdf. "-" is standard input or output. Several inputs that go onto
one drawing stand side by side; "%d" in OUTPUT makes one file per molecule.

  -o, --output FILE    what to write; its ending says the format
  --from, --to FORMAT  where no ending says it
  --v3000              write molfiles and SD files as V3000 in any case
  --scale NUMBER       size of a picture (1)
  --margin PIXELS      space around a picture's drawing (10)
  --background COLOUR  of a picture: a name, #rrggbb, transparent (white)
  --check              say what the editor's reader would skip, stop at or mend
  --info, --json       tell formula, weight, rings and complaints, also as JSON
  --help, --version

Examples:
  kytconvert drawing.kyt -o figure.pdf --margin 5
  kytconvert molecules.smi -o molecules.sdf
  echo 'CC(=O)O acetic acid' | kytconvert --from smi - -o acid.kyf
)");
}
