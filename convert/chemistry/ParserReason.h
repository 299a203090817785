#pragma once

#include <QString>

/// The first error that RDKit has logged since the last call, in plain words; empty if there is none.
QString takeLoggedReason();

/// The message of an RDKit parser in plain words, with atoms counted from 1. A message that is not known is kept.
QString plainReason(const QString& message);

/// Lets RDKit's errors go to takeLoggedReason() instead of standard error.
void captureParserLog();
