#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: scripts/monkey.sh [--asan] [STEPS] [FIRST_SEED]

Sets monkeys on the editor's main window, on a virtual screen: STEPS random clicks,
keys and commands in all (100000 if not said), 4000 for each seed, from FIRST_SEED on
(1 if not said). After every step all that must hold of a drawing is checked.

Where something does not hold, or the program crashes, hangs or loses memory, it says
how to see that again and looks for the shortest sequence of steps that shows it,
which it leaves in build/monkey. Ends with the number of steps done and what they were.

  --asan   with AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
  --help   show this text
END
}

per_seed=4000
preset=release
numbers=()
for argument in "$@"; do
    case $argument in
    --asan) preset=asan ;;
    --help | -h)
        usage
        exit 0
        ;;
    *[!0-9]* | '') fail "\"$argument\" is neither a number nor an option; --help lists the options." ;;
    *) numbers+=("$argument") ;;
    esac
done
[ ${#numbers[@]} -le 2 ] || fail "Too many numbers; --help shows what they mean."
steps=${numbers[0]:-100000}
first_seed=${numbers[1]:-1}
seeds=$(((steps + per_seed - 1) / per_seed))

say "Building the monkey ($preset)."
install_missing "${build_packages[@]}" "${screen_packages[@]}"
build "$preset" monkey -DBUILD_TESTING=ON
mkdir -p "$root/build/monkey"

# As in the test presets.
export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1
export LSAN_OPTIONS="print_suppressions=0:suppressions='$root/tests/suppressions/leaks.supp'"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
say "$seeds seeds of $per_seed steps, from seed $first_seed on."
exec "$root/tests/on_screen" "$root/build/$preset/tests/monkey/monkey" --seed "$first_seed" --seeds "$seeds" \
    --steps "$per_seed" --keep "$root/build/monkey"
