#pragma once

#include "convert/program/Options.h"
#include "convert/program/Output.h"

/// What became of a conversion.
struct Tally {
    qint64 records = 0;
    qint64 failures = 0;
};

/// Thrown where a termination signal has arrived, once no worker is left.
struct Terminated {
    int signal;
};

/// Converts the records of all inputs one after the other in worker processes, and writes them to `output` in their
/// order. A record that fails is named on standard error. If it must not be skipped and `output` cannot be discarded,
/// it is the last one. Warnings are added to `notes`. Does not commit the output.
Tally convertRecords(const Options& options, Output& output, Notes& notes);

/// Reads all inputs for an output that holds one drawing, or for a table. A record that fails is named on standard
/// error and counted in `tally`.
std::vector<std::pair<QString, Sketch>> readInputs(const Options& options, Tally& tally, Notes& notes);
