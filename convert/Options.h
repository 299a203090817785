#pragma once

#include "convert/Conversion.h"

#include <QStringList>

#include <optional>

/// What the command line asks for.
struct Options {
    enum class Task { Convert, Check, Info, Help, Version };

    Task task = Task::Convert;
    QStringList inputs;
    QString output = QStringLiteral("-");
    std::optional<Format> from; ///< where it is not the files' endings that say it
    Format to = Format::Workspace;
    OutputStyle style;
    bool json = false;
};

/// Reads the arguments behind the program's name. Throws ConversionError where they make no sense.
Options parseOptions(const QStringList& arguments);

/// The text of --help: fits a screen of 80 columns and 24 lines.
QString helpText();
