#!/usr/bin/python3
"""test_judges.py KYTCONVERT: RDKit's Python and Open Babel read what kytconvert writes, and must find the molecule that
was meant. Each compares its own canonical SMILES of the input with that of the record. Ends with 77 if one of them is
not installed."""

import math
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import unittest

try:
    from rdkit import Chem, RDLogger
    from rdkit.Chem import AllChem
except ImportError:
    print("python3-rdkit is not installed")
    sys.exit(77)
if not shutil.which("obabel"):
    print("openbabel is not installed")
    sys.exit(77)
RDLogger.DisableLog("rdApp.*")

KYTCONVERT = sys.argv.pop(1)
HERE = pathlib.Path(__file__).parent
RDKIT, OPEN_BABEL = "RDKit", "Open-Babel"


def listed():
    """The molecules of judged.smi by name, and the judges that cannot read them from a file."""
    molecules, exceptions = {}, {}
    for line in (HERE / "judged.smi").read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        smiles, name, *reason = line.split()
        molecules[name] = smiles
        exceptions[name] = reason[1] if reason else None
    return molecules, exceptions


def rdkit_canonical(molecule):
    """The canonical SMILES without the hydrogens that a symbol implies, after a second reading."""
    if molecule is None:
        return "unreadable"
    smiles = Chem.MolToSmiles(Chem.RemoveHs(molecule))
    for _ in range(2):
        again = Chem.MolFromSmiles(smiles)
        smiles = Chem.MolToSmiles(again) if again else smiles
    return smiles


def records_of(sd_text):
    """The records of an SD file by name."""
    records = [record for record in sd_text.split("$$$$\n") if record.strip()]
    return {record.split("\n")[0].strip(): record for record in records}


def open_babel_smiles(text, kind):
    """Open Babel's canonical SMILES of a file, by name."""
    found = {}
    for _ in range(2):  # the second time, they no longer depend on the order of atoms
        run = subprocess.run(["obabel", f"-i{kind}", "-ocan"], input=text, capture_output=True, text=True, check=False)
        found = dict(reversed(line.split("\t")[:2]) for line in run.stdout.splitlines() if "\t" in line)
        found = {name.strip(): smiles for name, smiles in found.items()}
        text, kind = "".join(f"{smiles}\t{name}\n" for name, smiles in found.items()), "smi"
    return found


def named(names, sd_text):
    """The SD file with these names for its records; workspaces keep none."""
    records = sd_text.split("$$$$\n")
    return "".join(name + record[record.index("\n"):] + "$$$$\n" for name, record in zip(names, records))


def smi_text(molecules):
    return "".join(f"{smiles} {name}\n" for name, smiles in molecules.items())


def readings_of(text, kind):
    """What each judge reads from a file ("smi" or "sdf"): canonical SMILES by judge and name."""
    if kind == "smi":
        lines = [line.split() for line in text.splitlines()]
        own = {line[-1]: rdkit_canonical(Chem.MolFromSmiles(line[0])) for line in lines if len(line) > 1}
    else:
        own = {name: rdkit_canonical(Chem.MolFromMolBlock(record, removeHs=False))
               for name, record in records_of(text).items()}
    return {RDKIT: own, OPEN_BABEL: open_babel_smiles(text, kind)}


class Folder:
    """A folder for the files of one test."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)

    def convert(self, name, text, to, *options):
        """The text that kytconvert writes from the text of a file called `name`, and its warnings."""
        source = self.path / name
        source.write_text(text)
        run = subprocess.run([KYTCONVERT, source, "--to", to, *options], capture_output=True, text=True, check=False)
        if run.returncode != 0:
            raise AssertionError(run.stderr)
        return run.stdout, run.stderr

    def molfiles(self, smiles):
        """The molfiles of a SMILES file, one for each molecule, as an SD file."""
        source = self.path / "in.smi"
        source.write_text(smiles)
        subprocess.run([KYTCONVERT, source, "-o", self.path / "m%03d.mol"], check=True, capture_output=True)
        return "".join(file.read_text() + "$$$$\n" for file in sorted(self.path.glob("m*.mol")))

    def through_workspaces(self, molecules):
        """The SD file of workspaces of the molecules, one each."""
        source = self.path / "in.smi"
        source.write_text(smi_text(molecules))
        subprocess.run([KYTCONVERT, source, "-o", self.path / "w%03d.kyt"], check=True, capture_output=True)
        return named(molecules, self.combined(sorted(self.path.glob("w*.kyt")), "sdf"))

    def combined(self, sources, to, *options):
        """The text that kytconvert writes from several files."""
        command = [KYTCONVERT, *sources, "--to", to, *options]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    def sd_files(self, name, text):
        """The V2000 and the V3000 SD file that kytconvert writes from a text."""
        return {"V2000": self.convert(name, text, "sdf")[0], "V3000": self.convert(name, text, "sdf", "--v3000")[0]}


class Judged(unittest.TestCase):
    def setUp(self):
        self.folder = Folder()

    def assert_same(self, meant, found, exceptions=None, version=""):
        """Each judge reads the same from both, but for the named exceptions, which it must not read."""
        for judge, smiles in meant.items():
            for name, expected in smiles.items():
                exception = (exceptions or {}).get(name) or "none"
                excepted = exception in (judge, f"{judge}-{version}")
                with self.subTest(judge=judge, molecule=name, version=version):
                    if excepted:
                        self.assertNotEqual(found[judge].get(name), expected, "no longer an exception")
                    else:
                        self.assertEqual(found[judge].get(name), expected)


class ListedMolecules(Judged):
    """The molecules of judged.smi through every writer."""

    def setUp(self):
        super().setUp()
        self.molecules, self.exceptions = listed()
        self.text = smi_text(self.molecules)
        self.meant = readings_of(self.text, "smi")

    def test_the_judges_can_tell_isomers_apart(self):
        for judge, smiles in self.meant.items():
            self.assertEqual(len(smiles), len(self.molecules), judge)
            for one, other in (("pentenol_E", "pentenol_Z"), ("pentenol_E", "pentenol_open"),
                               ("D-alanine", "L-alanine")):
                self.assertNotEqual(smiles[one], smiles[other], judge)

    def test_sd_files(self):
        for version, text in self.folder.sd_files("in.smi", self.text).items():
            self.assert_same(self.meant, readings_of(text, "sdf"), self.exceptions, version)

    def test_molfiles(self):
        self.assert_same(self.meant, readings_of(self.folder.molfiles(self.text), "sdf"), self.exceptions, "V2000")

    def test_smiles(self):
        readable = {name: smiles for name, smiles in self.molecules.items() if self.exceptions[name] != RDKIT}
        text, _ = self.folder.convert("in.smi", smi_text(readable), "smi")
        self.assert_same(readings_of(smi_text(readable), "smi"), readings_of(text, "smi"))

    def test_sd_files_of_sd_files(self):
        first = self.folder.sd_files("in.smi", self.text)["V2000"]
        for version, text in self.folder.sd_files("in.sdf", first).items():
            self.assert_same(self.meant, readings_of(text, "sdf"), self.exceptions, version)

    def test_workspaces(self):
        # A drawing always shows one isomer.
        drawable = {name: smiles for name, smiles in self.molecules.items() if "open" not in name}
        meant = readings_of(smi_text(drawable), "smi")
        text = self.folder.through_workspaces(drawable)
        self.assert_same(meant, readings_of(text, "sdf"), self.exceptions)


class Conformers(Judged):
    """Molecules in space, with and without hydrogens."""

    def sd_file(self, with_hydrogens):
        blocks = []
        molecules, exceptions = listed()
        for name, smiles in molecules.items():
            molecule = Chem.AddHs(Chem.MolFromSmiles(smiles))
            can_be_embedded = "*" not in smiles and molecule.GetNumHeavyAtoms() > 3
            if exceptions[name] or not can_be_embedded or AllChem.EmbedMolecule(molecule, randomSeed=15) != 0:
                continue
            molecule = molecule if with_hydrogens else Chem.RemoveHs(molecule)
            molecule.SetProp("_Name", name)
            blocks.append(Chem.MolToMolBlock(molecule))
        self.assertGreater(len(blocks), 40)
        return "$$$$\n".join(blocks) + "$$$$\n"

    def test_all(self):
        for with_hydrogens in (False, True):
            source = self.sd_file(with_hydrogens)
            meant = readings_of(source, "sdf")
            with self.subTest(with_hydrogens=with_hydrogens):
                for version, text in self.folder.sd_files("in.sdf", source).items():
                    self.assert_same(meant, readings_of(text, "sdf"), version=version)
                smiles, _ = self.folder.convert("in.sdf", source, "smi")
                self.assert_same({RDKIT: meant[RDKIT]}, readings_of(smiles, "smi"))


class RandomDrawings(Judged):
    """Drawings with random bonds and wedges through V2000, V3000 and SMILES: all are the same molecule."""

    COUNT = 300
    VALENCES = {"C": 4, "N": 3, "O": 2, "S": 2, "F": 1, "Cl": 1, "Br": 1}

    def drawing(self, rng):
        """A workspace of one branched molecule whose bonds leave each atom in different directions."""
        atoms = [("C", 500.0, 500.0, 0.0)]  # symbol, x, y and the direction from which its first bond comes
        free = [4]
        bonds = []
        turns = (math.pi / 3, -math.pi / 3, 0)  # of the bonds that leave an atom, from the one that leads to it
        first_turns = (math.pi / 3, -math.pi / 3, math.pi, 0)
        for _ in range(rng.randrange(4, 14)):
            start = rng.choice([i for i, count in enumerate(free) if count > 0] or [None])
            if start is None:
                break
            _, x, y, direction = atoms[start]
            taken = sum(bond[0] == start for bond in bonds)
            turn = (turns if start else first_turns)[taken] + rng.uniform(-0.2, 0.2)
            symbol = rng.choice(list(self.VALENCES))
            end = (symbol, x + 30 * math.cos(direction + turn), y + 30 * math.sin(direction + turn), direction + turn)
            if any(math.hypot(end[1] - atom[1], end[2] - atom[2]) < 15 for atom in atoms):
                continue
            is_double = free[start] > 1 and self.VALENCES[symbol] > 1 and rng.random() < 0.2
            order = 2 if is_double else 1
            atoms.append(end)
            free[start] -= order
            free.append(self.VALENCES[symbol] - order)
            bonds.append([start, len(atoms) - 1, "2 1 1" if is_double else "1 1"])
        for bond in bonds:
            degree = sum(bond[0] in other[:2] for other in bonds)
            first = not any(other[0] == bond[0] and other[2] in ("1 2", "1 3") for other in bonds)
            if bond[2] == "1 1" and degree >= 3 and first and rng.random() < 0.7:
                bond[2] = rng.choice(("1 2", "1 3"))
        return atoms, bonds

    def workspace(self, rng):
        atoms, bonds = self.drawing(rng)
        lines = [f"KYTFILE MOLECULE {len(atoms)} {len(bonds)}"]
        lines += [f"ATOM {symbol} {x:.2f} {y:.2f} 0 1 1 1" for symbol, x, y, _ in atoms]
        lines += [f"BOND {start} {end} {kind}" for start, end, kind in bonds]
        return "\n".join(lines + ["END_MOLECULE END_KYTFILE\n"])

    def test_all(self):
        rng = random.Random(15)
        sources = [self.folder.path / f"d{number:03}.kyt" for number in range(self.COUNT)]
        for source in sources:
            source.write_text(self.workspace(rng))
        names = [source.stem for source in sources]
        smiles = self.folder.combined(sources, "smi").splitlines()
        meant = readings_of(smi_text(dict(zip(names, smiles))), "smi")
        self.assertEqual(len(meant[RDKIT]), self.COUNT)
        self.assertGreater(sum("@" in one or "/" in one for one in smiles), self.COUNT // 4)
        for version, options in (("V2000", ()), ("V3000", ("--v3000",))):
            records = named(names, self.folder.combined(sources, "sdf", *options))
            self.assert_same(meant, readings_of(records, "sdf"), version=version)


if __name__ == "__main__":
    unittest.main()
