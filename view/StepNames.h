#pragma once

#include "view/KytViewState.h"

#include <QString>

/// The translated name of a gesture in the mode `state`, shown when it is undone.
QString stepName(KytViewState state);

/// The translated name of the mode.
QString modeName(KytViewState state);
