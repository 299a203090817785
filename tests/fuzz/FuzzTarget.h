#pragma once

#include "tests/support/Drawing.h"

#include <QByteArray>
#include <QString>

// What every fuzz target is made of. A check that fails says so on standard error and aborts.

/// Makes the application, without a screen, fonts and messages: qApp, which is the caller's. Called once, before the
/// first input.
void startApplication();

/// Runs one input; each target has its own. The same input always does the same, and nothing of it stays behind.
void runInput(const QByteArray& input);

/// Aborts when `holds` is false, with `rule` as what is broken.
void demand(bool holds, const char* rule);

/// Aborts when there is a fault, which was found at the time `when`.
void demandNoFault(const QString& fault, const char* when);

/// An empty drawing, cleared at the end. Making a canvas takes longer than reading a small file onto it, so documents
/// are kept from input to input.
class KeptDrawing : public DrawnCanvas {
public:
    KeptDrawing();
    ~KeptDrawing();
    KeptDrawing(const KeptDrawing&) = delete;
    KeptDrawing& operator=(const KeptDrawing&) = delete;
};
