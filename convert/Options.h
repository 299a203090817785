#pragma once

#include "convert/Conversion.h"

#include <QStringList>

#include <optional>

/// The parsed command line.
struct Options {
    enum class Task { Convert, Check, Info, Help, Version };

    Task task = Task::Convert;
    QStringList inputs;
    QString output = QStringLiteral("-");
    std::optional<Format> from; ///< if unset, determined by each file's extension
    Format to = Format::Workspace;
    OutputStyle style;
    bool json = false;
};

/// Parses the arguments after the program name. Throws ConversionError for invalid arguments.
Options parseOptions(const QStringList& arguments);

/// The text of --help; fits a terminal of 80 columns and 24 lines.
QString helpText();
