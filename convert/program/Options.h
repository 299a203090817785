#pragma once

#include "convert/program/Conversion.h"

#include <QStringList>

/// The parsed command line.
struct Options {
    enum class Task { Convert, Check, Info, Help, Version };

    Task task = Task::Convert;
    QStringList inputs;
    QString output = QStringLiteral("-");
    const Format* from = nullptr; ///< if null, determined by each file's extension
    const Format* to = nullptr;   ///< set if the task is to convert
    InputStyle input;
    OutputStyle style;
    bool json = false;
    bool layout = false;     ///< lay out drawings anew
    bool skipErrors = false; ///< go on after a record that cannot be converted
    int jobs = 1;            ///< number of worker processes
    int timeLimit = 60;      ///< for a record, in seconds of processor time
    bool verbose = false;    ///< print also what every conversion of its kind loses
};

/// Parses the arguments after the program name. Throws ConversionError for invalid arguments.
Options parseOptions(const QStringList& arguments);

/// The text of --help; fits a terminal of 80 columns and 24 lines.
QString helpText();
