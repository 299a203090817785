#pragma once

#include <QStringList>

#include <optional>

/// The arguments after the program name.
QStringList argumentsOf(int argc, char* argv[]);

/// Handles what needs no application object: --help, --version and invalid arguments. Returns the exit status, or
/// nothing if run() must be called.
std::optional<int> answerAtOnce(const QStringList& arguments);

/// Runs the program and returns its exit status: 0 for success, 1 if --check found faults, 2 if an input could not be
/// read or the output could not be written.
int run(const QStringList& arguments);
