#pragma once

#include "tests/monkey/Step.h"

/// `count` steps that depend on `seed` alone: gestures as a hand makes them, of presses, moves and releases, and now
/// and then one that is torn or comes out of the blue.
Steps stepsFromSeed(quint64 seed, int count);
