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
    OutputStyle style;
    bool json = false;
};

/// Parses the arguments after the program name. Throws ConversionError for invalid arguments.
Options parseOptions(const QStringList& arguments);

/// The text of --help; fits a terminal of 80 columns and 24 lines.
QString helpText();
