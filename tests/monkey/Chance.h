#pragma once

#include <QtGlobal>

#include <initializer_list>
#include <random>

/// Numbers that look random and are the same for the same seed on every machine, which the distributions of the
/// standard library do not promise.
class Chance {
public:
    explicit Chance(quint64 seed)
        : engine(seed)
    {
    }

    /// From 0 to `bound` - 1; 0 where `bound` is not positive.
    int below(int bound) { return bound > 0 ? static_cast<int>(engine() % static_cast<quint64>(bound)) : 0; }
    int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool percent(int share) { return below(100) < share; }
    int oneOf(std::initializer_list<int> choices) { return choices.begin()[below(static_cast<int>(choices.size()))]; }

private:
    std::mt19937_64 engine;
};
