#pragma once

#include <QString>

/// Prints a message on standard error, after the name of the program.
void printError(const QString& text);
