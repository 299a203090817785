#pragma once

#include "tests/monkey/Step.h"

#include <functional>

/// The shortest sequence found, by leaving out steps of `steps`, that `fails` still calls failing; `steps` themselves
/// must. No single step of the result can be left out, unless `mayGoOn` said no before that was clear.
Steps shrunk(Steps steps, const std::function<bool(const Steps&)>& fails, const std::function<bool()>& mayGoOn);
