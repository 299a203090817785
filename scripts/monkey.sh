#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: scripts/monkey.sh [--asan] [--model] [STEPS] [FIRST_SEED]

Runs random clicks, keys and commands on the editor's main window, on a virtual screen:
STEPS steps in total (default: 100000), 4000 per seed, starting with FIRST_SEED
(default: 1). The invariants of the drawing are checked after every step. Two seeds run
at a time: two editors on one screen, which share the folder of safety copies.

If a check fails, or the program crashes, hangs or leaks memory, prints the command that
reproduces the failure, reduces it to the shortest sequence of steps, and saves that in
build/monkey. Ends with a summary of the steps.

  --asan   with AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
  --model  instead, gestures on small drawings, 500 events per seed; after each event, the
           drawing is compared with that of a model. Prints the events up to a difference.
  --help   show this text
END
}

per_seed=4000
preset=release
model=
numbers=()
for argument in "$@"; do
    case $argument in
    --asan) preset=asan ;;
    --model) model=yes ;;
    --help | -h)
        usage
        exit 0
        ;;
    *[!0-9]* | '') fail "invalid argument \"$argument\" (see --help)" ;;
    *) numbers+=("$argument") ;;
    esac
done
[ ${#numbers[@]} -le 2 ] || fail "too many arguments (see --help)"
steps=${numbers[0]:-100000}
first_seed=${numbers[1]:-1}
seeds=$(((steps + per_seed - 1) / per_seed))

program=${model:+model_walk}
program=${program:-monkey}
say "Building the monkey test ($preset)"
install_missing "${build_packages[@]}" "${screen_packages[@]}"
build "$preset" "$program" -DBUILD_TESTING=ON
mkdir -p "$root/build/monkey"

# Same as in the test presets.
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1
export LSAN_OPTIONS="print_suppressions=0:suppressions='$root/tests/suppressions/leaks.supp'"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
if [ "$model" ]; then
    say "Comparing $steps events with the model, starting with seed $first_seed"
    exec "$root/tests/on_screen" "$root/build/$preset/tests/monkey/model_walk" --seed "$first_seed" --steps "$steps"
fi
say "Running $seeds seeds of $per_seed steps, starting with seed $first_seed"
exec "$root/tests/on_screen" "$root/build/$preset/tests/monkey/monkey" --seed "$first_seed" --seeds "$seeds" \
    --together 2 --steps "$per_seed" --keep "$root/build/monkey"
