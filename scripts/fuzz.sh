#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: fuzz.sh [--keep] [--runs COUNT] [SECONDS [TARGET]]

Builds the fuzz targets with clang, AddressSanitizer and UndefinedBehaviorSanitizer, and
runs each with libFuzzer for SECONDS (default: 60). TARGET is workspace, tree, editing,
clipboard, molfile, smiles, csv, cdxml or gzip; by default, all are run, one per processor at a
time. Inputs that reach new code are kept in build/fuzz/corpus for the next run. Inputs that
fail end the run of their target and are copied to tests/fuzz/found, which ./test.sh replays.

Inputs have at most 1024 bytes, those that are drawn in the editor (the first four targets)
512, and workspaces that are only read 384. KYTSTUDIO_FUZZ_MAX_LEN sets another limit.

  --keep        add the inputs that increase the coverage of tests/fuzz/corpus to it
  --runs COUNT  end after COUNT inputs instead of SECONDS
  --help        show this text
END
}

all_targets=(workspace tree editing clipboard molfile smiles csv cdxml gzip)
keep=
seconds=
runs=
targets=()
while [ $# -gt 0 ]; do
    argument=$1
    shift
    case $argument in
    --keep) keep=yes ;;
    --runs)
        runs=${1-}
        [[ $runs =~ ^[1-9][0-9]*$ ]] || {
            echo "fuzz.sh: invalid number of runs \"$runs\" (see --help)" >&2
            exit 2
        }
        shift
        ;;
    --help | -h)
        usage
        exit 0
        ;;
    *)
        if [[ " ${all_targets[*]} " == *" $argument "* ]]; then
            targets+=("$argument")
            continue
        fi
        if [ -n "$seconds" ] || ! [[ $argument =~ ^[1-9][0-9]*$ ]]; then
            echo "fuzz.sh: invalid argument \"$argument\" (see --help)" >&2
            exit 2
        fi
        seconds=$argument
        ;;
    esac
done
[ ${#targets[@]} -gt 0 ] || targets=("${all_targets[@]}")

# libFuzzer checks for leaks after every input that may have leaked.
export LSAN_OPTIONS=print_suppressions=0:suppressions=$root/tests/suppressions/fuzz.supp
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# last_number PATTERN LOG: prints the last number after the pattern in the log.
last_number() {
    grep -a -o -E "$1 *[0-9]+" "$2" | tail -n 1 | grep -o -E '[0-9]+$' || echo 0
}

# draws_in_editor TARGET: whether its inputs are drawn in the editor. No leak in these targets has to be recognised by
# its stack, as those in RDKit have, so that blocks keep no stacks. replay_* with the input of a fault shows the stack.
draws_in_editor() {
    [[ $1 =~ ^(workspace|tree|editing|clipboard)$ ]]
}

# length_limit TARGET: prints how many bytes an input may have. Drawings with many atoms take long and tell nothing more.
length_limit() {
    case $1 in
    workspace) echo 384 ;;
    tree | editing | clipboard) echo 512 ;;
    *) echo 1024 ;;
    esac
}

# fuzz TARGET: runs one target; fails if an input fails.
fuzz() {
    local target=$1 program=build/asan/tests/fuzz/fuzz_$1
    local corpus=build/fuzz/corpus/$target found=tests/fuzz/found/$target log=build/fuzz/fuzz_$target.log
    local new=build/fuzz/new/$target
    mkdir -p "$corpus" "$found"
    rm -rf "$new"
    mkdir -p "$new"
    export ASAN_OPTIONS=malloc_context_size=5:quarantine_size_mb=8
    if draws_in_editor "$target"; then
        export ASAN_OPTIONS=malloc_context_size=0:quarantine_size_mb=1:thread_local_quarantine_size_kb=16
    fi
    local limit=(-max_total_time="${seconds:-60}") amount="${seconds:-60} seconds"
    [ -z "$runs" ] || { limit=(-runs="$runs") && amount="$runs executions"; }
    say "Fuzzing $target for $amount; log: $log"
    local passed=yes length
    length=$(length_limit "$target")
    # Choosing inputs by the rarity of their features (-entropic) takes longer than running them.
    "$program" "${limit[@]}" -max_len="${KYTSTUDIO_FUZZ_MAX_LEN:-$length}" -timeout=60 \
        -entropic=0 -rss_limit_mb=4096 -print_final_stats=1 -dict=tests/fuzz/kyt.dict -artifact_prefix="$new/" \
        "$corpus" "tests/fuzz/corpus/$target" "$found" >"$log" 2>&1 || passed=

    # The name of a failed input consists of the kind of failure and a hash.
    local findings=("$new"/*)
    [ -e "${findings[0]}" ] || findings=()
    [ ${#findings[@]} -eq 0 ] || cp -- "${findings[@]}" "$found"
    say "$target: $(last_number 'number_of_executed_units:' "$log") executions," \
        "$(last_number 'average_exec_per_sec:' "$log") per second;" \
        "coverage $(last_number 'cov:' "$log") edges, $(last_number 'ft:' "$log") features;" \
        "${#findings[@]} findings"
    if [ -z "$passed" ]; then
        grep -a -m 5 -E 'ERROR|SUMMARY|runtime error|after (reading|editing|pasting)|broken' "$log" >&2 ||
            tail -n 20 "$log" >&2
        [ ${#findings[@]} -eq 0 ] || printf '  %s\n' "${findings[@]/#"$new"/"$found"}" >&2
        return 1
    fi
    if [ -n "$keep" ]; then
        "$program" -merge=1 -use_counters=0 -max_len=1024 "tests/fuzz/corpus/$target" "$corpus" >>"$log" 2>&1 ||
            fail "merging the inputs of $target failed: see $log"
        say "$target: $(find "tests/fuzz/corpus/$target" -type f | wc -l) inputs in tests/fuzz/corpus"
    fi
}

install_missing "${build_packages[@]}" "${converter_packages[@]}" "${fuzz_packages[@]}"
build asan fuzz -DBUILD_TESTING=ON
status=0
jobs=${KYTSTUDIO_JOBS:-$(nproc)}
for ((first = 0; first < ${#targets[@]}; first += jobs)); do
    running=()
    for target in "${targets[@]:first:jobs}"; do
        fuzz "$target" &
        running+=($!)
    done
    for process in "${running[@]}"; do
        wait "$process" || status=1
    done
done
exit "$status"
