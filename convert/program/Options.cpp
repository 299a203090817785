#include "convert/program/Options.h"

#include <QCommandLineParser>

#include <algorithm>
#include <thread>

namespace {

constexpr double largestScale = 100;
constexpr double largestMargin = 10'000; // pixels
constexpr int mostColumns = 1000;
constexpr double largestSize = 100'000;      // pixels
constexpr double largestResolution = 10'000; // pixels per inch
constexpr double longestBond = 1000;         // points
constexpr int maxJobs = 1024;
constexpr int maxTimeLimit = 86'400; // seconds

/// One worker for each processor that the program may use.
int defaultJobs()
{
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, maxJobs);
}

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

const Format* formatOption(const QCommandLineParser& parser, const QString& option, const QStringList& known)
{
    const QString name = parser.value(option);
    const Format* format = formatNamed(name);
    if (!format)
        fail(QStringLiteral("unknown format \"%1\": use one of %2").arg(name, known.join(QStringLiteral(", "))));
    if (!known.contains(name, Qt::CaseInsensitive))
        fail(QStringLiteral("format \"%1\" can only be %2: use one of %3")
                 .arg(name, format->read ? QStringLiteral("read") : QStringLiteral("written"),
                      known.join(QStringLiteral(", "))));
    return format;
}

int wholeNumberOption(const QCommandLineParser& parser, const QString& option, int maximum, int defaultValue)
{
    if (!parser.isSet(option))
        return defaultValue;
    bool isNumber = false;
    const int number = parser.value(option).toInt(&isNumber);
    if (!isNumber || number < 1 || number > maximum)
        fail(QStringLiteral("--%1 must be a whole number from 1 to %2").arg(option).arg(maximum));
    return number;
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

/// The value of an option that is one of these names.
template <typename Value>
Value choiceOption(const QCommandLineParser& parser, const QString& option,
                   std::initializer_list<std::pair<const char*, Value>> choices, Value defaultValue)
{
    if (!parser.isSet(option))
        return defaultValue;
    QStringList names;
    for (const auto& [name, value] : choices) {
        if (parser.value(option) == QLatin1String(name))
            return value;
        names.append(QLatin1String(name));
    }
    fail(QStringLiteral("--%1 must be one of: %2").arg(option, names.join(QStringLiteral(", "))));
}

PictureStyle pictureStyle(const QCommandLineParser& parser)
{
    PictureStyle style;
    using Look = PictureLook;
    style.look = choiceOption(parser, QStringLiteral("style"),
                              {{"paper", Look::Paper}, {"acs", Look::Acs}, {"editor", Look::Editor}}, style.look);
    using Colors = std::optional<PictureColors>;
    style.colors = choiceOption(parser, QStringLiteral("colors"),
                                {{"black", Colors(PictureColors::Black)},
                                 {"element", Colors(PictureColors::Element)},
                                 {"drawing", Colors(PictureColors::Drawing)}},
                                style.colors);
    style.textAsPaths = choiceOption(parser, QStringLiteral("text"), {{"text", false}, {"paths", true}}, false);
    style.carbons = parser.isSet(QStringLiteral("carbons"));
    if (parser.isSet(QStringLiteral("names")) || parser.isSet(QStringLiteral("no-names")))
        style.names = parser.isSet(QStringLiteral("names"));
    style.legend = parser.value(QStringLiteral("legend"));
    style.scale = numberOption(parser, "scale", 0.01, largestScale, style.scale);
    style.margin = numberOption(parser, "margin", 0, largestMargin, style.margin);
    style.columns = wholeNumberOption(parser, "columns", mostColumns, style.columns);
    style.width = numberOption(parser, "width", 1, largestSize, style.width);
    style.height = numberOption(parser, "height", 1, largestSize, style.height);
    style.dpi = numberOption(parser, "dpi", 1, largestResolution, style.dpi);
    style.bondLength = numberOption(parser, "bond-length", 1, longestBond, style.bondLength);
    if (parser.isSet("background"))
        style.background = colorOption(parser, "background");
    return style;
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
                       {"style", {}, "name"},
                       {"colors", {}, "name"},
                       {"carbons", {}},
                       {"text", {}, "kind"},
                       {"columns", {}, "number"},
                       {"names", {}},
                       {"no-names", {}},
                       {"legend", {}, "property"},
                       {"width", {}, "pixels"},
                       {"height", {}, "pixels"},
                       {"dpi", {}, "number"},
                       {"bond-length", {}, "points"},
                       {"v3000", {}},
                       {"layout", {}},
                       {"smiles-column", {}, "column"},
                       {"name-column", {}, "column"},
                       {"skip-errors", {}},
                       {"jobs", {}, "number"},
                       {"time-limit", {}, "seconds"},
                       {"check", {}},
                       {"info", {}},
                       {"json", {}},
                       {"verbose", {}},
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
        options.from = formatOption(parser, "from", readableExtensions());
    options.input = {parser.value("smiles-column"), parser.value("name-column")};
    options.skipErrors = parser.isSet("skip-errors");
    options.jobs = wholeNumberOption(parser, "jobs", maxJobs, defaultJobs());
    options.timeLimit = wholeNumberOption(parser, "time-limit", maxTimeLimit, options.timeLimit);
    options.json = parser.isSet("json");
    options.verbose = parser.isSet("verbose");
    if (options.json && options.task != Options::Task::Info)
        fail(QStringLiteral("--json requires --info"));
    if (options.task != Options::Task::Convert && (parser.isSet("output") || parser.isSet("to")))
        fail(QStringLiteral("--output and --to cannot be combined with --check or --info"));
    if (options.task != Options::Task::Convert)
        return options;

    if (parser.isSet("output"))
        options.output = parser.value("output");
    options.to = parser.isSet("to") ? formatOption(parser, "to", writableExtensions()) : formatOfFile(options.output);
    if (!options.to || !options.to->write)
        fail(QStringLiteral("unknown output format: use a file extension or --to (%1)")
                 .arg(writableExtensions().join(QStringLiteral(", "))));
    if (!options.to->isSupported)
        fail(QStringLiteral("InChI is not supported by this build: libinchi was not found"));
    options.style.picture = pictureStyle(parser);
    options.style.v3000 = parser.isSet("v3000");
    options.layout = parser.isSet("layout");
    return options;
}

QString helpText()
{
    return QStringLiteral(R"(Usage: kytconvert [options] INPUT... -o OUTPUT
       kytconvert --check|--info [--json] FILE...

Converts molecule drawings. Reads kyt, kyf, mol, mdl, sdf, smi, csv, tsv and
cdxml; writes kyt, kyf, mol, mdl, sdf, smi, xyz, inchi, inchikey, svg, png and
pdf; all of them also compressed, as .gz. "-" is standard input or output. "%d"
in OUTPUT writes one file per molecule.

  -o, --output FILE    output file; its extension selects the format
  --from, --to FORMAT  formats (default: from the file extensions)
  --v3000, --layout    always write V3000; lay out all molecules anew
  Pictures: --style paper|acs|editor, --colors, --carbons, --text, --columns,
  --names, --no-names, --legend, --width, --height, --dpi, --bond-length,
  --scale, --margin, --background; see the manual page.
  --smiles-column, --name-column COLUMN   of a table: heading or number
  --skip-errors        go on after records that cannot be converted
  --jobs NUMBER, --time-limit SECONDS   workers; limit for a record (60)
  --check              report all faults that are found in a file
  --info, --json       print formula, weight, InChI and warnings, also as JSON
  --help, --version, --verbose (reports also what is discarded in every case)

Examples:
  kytconvert drawing.kyt -o figure.pdf --margin 5
  kytconvert molecules.csv.gz -o molecules.sdf --skip-errors
)");
}
