#!/usr/bin/env bash
# Measures the conversion of a list of SMILES to one SD file beside a Python script that parses, lays out and writes the
# same with RDKit (package python3-rdkit), and prints a Markdown table. Times are medians of interleaved runs.
# Usage: bench/lists.sh [KYTCONVERT [SMILES_FILE [RUNS]]]; the default file is 10 000 lines of the molecules of the tests.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=$(readlink -f "${1:-$root/build/release/kytconvert}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if [ $# -ge 2 ]; then
    cp -- "$2" "$work/list.smi"
else
    grep -v -e '^#' -e ' ! ' "$root/tests/convert/molecules.smi" >"$work/known.smi"
    while cat "$work/known.smi"; do :; done 2>/dev/null | head -n 10000 >"$work/list.smi" || true
fi

/usr/bin/python3 - "$program" "$root/bench/lists_rdkit.py" "$work" "${3:-5}" <<'END'
import os, statistics, subprocess, sys, time
program, script, work, runs = sys.argv[1:]
source = f"{work}/list.smi"
commands = {
    "Python with RDKit": ["/usr/bin/python3", script, source, f"{work}/python.sdf"],
    "`kytconvert --jobs 1`": [program, source, "-o", f"{work}/one.sdf", "--jobs", "1", "--skip-errors"],
    "`kytconvert --jobs 2`": [program, source, "-o", f"{work}/two.sdf", "--jobs", "2", "--skip-errors"],
}
times = {name: [] for name in commands}
memory = {name: 0 for name in commands}
for _ in range(int(runs)):
    for name, command in commands.items():
        start = time.monotonic()
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        times[name].append(time.monotonic() - start)
        if os.waitstatus_to_exitcode(status) not in (0, 1):
            sys.exit(f"lists.sh: {name} failed")
        memory[name] = max(memory[name], usage.ru_maxrss // 1024)


def molecules(name):
    with open(f"{work}/{name}.sdf", encoding="utf-8") as file:
        return sum(line.startswith("$$$$") for line in file)


counts = {name: molecules(name) for name in ("python", "one", "two")}
if len(set(counts.values())) != 1:
    print(f"lists.sh: different numbers of molecules: {counts}", file=sys.stderr)
if open(f"{work}/one.sdf", "rb").read() != open(f"{work}/two.sdf", "rb").read():
    sys.exit("lists.sh: the output depends on the number of workers")
base = statistics.median(times["Python with RDKit"])
print(f"{counts['python']} SMILES to one SD file, medians of {runs} runs, {os.cpu_count()} processors:\n")
print("| program | time | of Python's | lowest and highest | memory of a process |\n|---|---|---|---|---|")
for name in commands:
    median = statistics.median(times[name])
    print(f"| {name} | {median:.2f} s | {median / base:.2f} | {min(times[name]):.2f} to {max(times[name]):.2f} s "
          f"| {memory[name]} MiB |")
END
