#pragma once

#include <QStringList>

#include <optional>

/// The arguments behind the program's name.
QStringList argumentsOf(int argc, char* argv[]);

/// Does what takes no application object: answers --help and --version, complains about arguments that make no sense.
/// The exit status, or nothing where there is more to do.
std::optional<int> answerAtOnce(const QStringList& arguments);

/// Does what the arguments say, and gives the exit status: 0, 1 when --check found something, 2 for bad input or
/// output.
int run(const QStringList& arguments);
