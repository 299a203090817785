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
measure "the same" "one SVG sheet" 1000 molecules "$work/molecules.smi" -o "$work/sheet-of-molecules.svg"
measure "that SD file" "SMILES" 1000 molecules "$work/molecules.sdf" -o "$work/again.smi"
measure "a drawing of 20 000 atoms" "SVG" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.svg"
measure "the same" "SVG in the editor's look" 20000 atoms "$work/sheet.kyt" --style editor -o "$work/sheet.svg"
measure "the same" "PDF" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.pdf"
measure "the same" "molfile" 20000 atoms "$work/sheet.kyt" -o "$work/sheet.mol"

# The pictures of 200 molecules against a Python program that draws them with RDKit, in turns. Needs python3-rdkit.
head -n 200 "$work/molecules.smi" >"$work/200.smi"
/usr/bin/python3 - "$program" "$work" <<'END'
import statistics, subprocess, sys, time
program, work = sys.argv[1:]
DRAW = """
import sys
from rdkit import Chem
from rdkit.Chem import AllChem
from rdkit.Chem.Draw import rdMolDraw2D
for number, line in enumerate(open(sys.argv[1] + '/200.smi')):
    molecule = Chem.MolFromSmiles(line.split()[0])
    AllChem.Compute2DCoords(molecule)
    drawer = rdMolDraw2D.MolDraw2DSVG(300, 300)
    rdMolDraw2D.PrepareAndDrawMolecule(drawer, molecule)
    drawer.FinishDrawing()
    with open(f'{sys.argv[1]}/pictures/rdkit{number}.svg', 'w') as picture:
        picture.write(drawer.GetDrawingText())
"""
if subprocess.run(["/usr/bin/python3", "-c", "import rdkit"], stderr=subprocess.DEVNULL).returncode != 0:
    sys.exit("bench/convert.sh: no comparison with RDKit's Python: not installed")
own, python = [], []
for run in range(7):
    for times, command in ((own, [program, f"{work}/200.smi", "-o", f"{work}/pictures/own%03d.svg"]),
                           (python, ["/usr/bin/python3", "-c", DRAW, work])):
        start = time.monotonic()
        subprocess.run(command, check=True, stderr=subprocess.DEVNULL)
        times.append(time.monotonic() - start)
print(f"\n200 SVG pictures: kytconvert {statistics.median(own):.2f} s, "
      f"a Python program with RDKit {statistics.median(python):.2f} s (medians of 7, in turns).")
END
