#!/usr/bin/env bash
# Measures kytconvert and prints a Markdown table with one row per command; times are medians of five runs.
# Usage: bench/convert.sh [KYTCONVERT]
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/release/kytconvert}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# measure FROM TO COUNT UNIT ARGUMENT...: runs kytconvert with the arguments and prints a row.
measure() {
    python3 - "$program" "$@" <<'END'
import resource, statistics, subprocess, sys, time
program, source, target, count, unit, *arguments = sys.argv[1:]
times = []
for run in range(5):
    start = time.monotonic()
    subprocess.run([program, *arguments], check=True, stderr=subprocess.DEVNULL)
    times.append(time.monotonic() - start)
seconds = statistics.median(times)
memory = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss / 1024
print(f"| {source} | {target} | {seconds:.2f} s | {int(count) / seconds:.0f} {unit} | {memory:.0f} MiB |")
END
}

# 1000 lines: the molecules of the tests, repeated.
grep -v -e '^#' -e ' ! ' "$root/tests/convert/molecules.smi" >"$work/known.smi"
for _ in 1 2 3; do cat "$work/known.smi"; done | head -n 1000 >"$work/molecules.smi"
[ "$(wc -l <"$work/molecules.smi")" -eq 1000 ]

python3 - >"$work/sheet.kyt" <<'END'
print("KYTFILE\n MOLECULE 20000 19999")
for i in range(20000):
    row, column = divmod(i, 200)
    x = 5 + 9.9 * (column if row % 2 == 0 else 199 - column)
    print(f"  ATOM C {x:.6g} {5 + 19.9 * row + 6 * (column % 2):.6g} 0 64 64 64")
for i in range(19999):
    print(f"  BOND {i} {i + 1} 1 1" if i % 3 else f"  BOND {i} {i + 1} 2 1 1")
print(" END_MOLECULE\nEND_KYTFILE")
END

mkdir "$work/pictures"
printf '| from | to | time | per second | memory |\n|---|---|---|---|---|\n'
measure "1 000 molecules as SMILES" "one SD file" 1000 molecules "$work/molecules.smi" -o "$work/molecules.sdf"
measure "the same" "1 000 SVG pictures" 1000 molecules "$work/molecules.smi" -o "$work/pictures/%04d.svg"
measure "the same" "1 000 PNG pictures" 1000 molecules "$work/molecules.smi" -o "$work/pictures/%04d.png"
measure "that SD file" "SMILES" 1000 molecules "$work/molecules.sdf" -o "$work/again.smi"
measure "a drawing of 20 000 atoms" "SVG" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.svg"
measure "the same" "PDF" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.pdf"
measure "the same" "molfile" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.mol"
