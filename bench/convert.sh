#!/usr/bin/env bash
# Measures kytconvert: 1 000 molecules from SMILES to pictures and to one SD file, and a drawing of 20 000 atoms to SVG.
# Usage: bench/convert.sh [KYTCONVERT]
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/release/kytconvert}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# measure TITLE COUNT ARGUMENT...: runs the program and prints what it took.
measure() {
    python3 - "$program" "$@" <<'END'
import resource, subprocess, sys, time
program, title, count, *arguments = sys.argv[1:]
before = resource.getrusage(resource.RUSAGE_CHILDREN)
start = time.monotonic()
subprocess.run([program, *arguments], check=True, stderr=subprocess.DEVNULL)
seconds = time.monotonic() - start
used = resource.getrusage(resource.RUSAGE_CHILDREN)
processor = used.ru_utime + used.ru_stime - before.ru_utime - before.ru_stime
print(f"{title}: {seconds:.2f} s, {processor:.2f} s of processor time, "
      f"{int(count) / processor:.0f} a second of it, {used.ru_maxrss / 1024:.0f} MB")
END
}

# The known molecules over and over, those of more than 60 characters included.
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
measure "1000 SMILES to 1000 SVG pictures" 1000 "$work/molecules.smi" -o "$work/pictures/%04d.svg"
measure "1000 SMILES to 1000 PNG pictures" 1000 "$work/molecules.smi" -o "$work/pictures/%04d.png"
measure "1000 SMILES to one SD file" 1000 "$work/molecules.smi" -o "$work/molecules.sdf"
measure "one SD file of 1000 to SMILES" 1000 "$work/molecules.sdf" -o "$work/again.smi"
measure "20000 atoms to SVG" 20000 "$work/sheet.kyt" -o "$work/sheet.svg"
measure "20000 atoms to PDF" 20000 "$work/sheet.kyt" -o "$work/sheet.pdf"
measure "20000 atoms to a molfile" 20000 "$work/sheet.kyt" -o "$work/sheet.mol"
printf "the SVG file has %d bytes\n" "$(stat -c %s "$work/sheet.svg")"
