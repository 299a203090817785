#pragma once

#include "view/KytViewState.h"

#include <QString>

/// What a gesture in the mode `state` is called in the status bar when it is undone, translated.
QString stepName(KytViewState state);

/// The mode itself, translated.
QString modeName(KytViewState state);
