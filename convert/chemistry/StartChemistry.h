#pragma once

/// Silences RDKit's log and sets the C locale for numbers. Must be called once, after the application object is
/// created.
void startChemistry();
