#!/usr/bin/python3
"""Draws the checked molecules in all looks beside RDKit's own drawings: docs/pictures/looks.png.

compare_pictures.py KYTCONVERT PICTURE [PERCENT]

Needs RDKit's Python module, rsvg-convert and ImageMagick. Each row shows a molecule in the looks paper, acs and editor
and as RDKit draws it by itself from the same coordinates. PERCENT is the size, 100 by default.
"""

import pathlib
import subprocess
import sys
import tempfile

from rdkit import Chem
from rdkit.Chem.Draw import rdMolDraw2D

LOOKS = ("paper", "acs", "editor")
SAMPLES = sorted(pathlib.Path("data").glob("*.kyt")) + sorted(pathlib.Path("lib").glob("*.kyf"))
WIDTH = 340  # of a picture's cell, in pixels at 100 %
RESOLUTION = 96
FONT = "Liberation-Sans"


def run(*command):
    subprocess.run([str(part) for part in command], check=True, stderr=subprocess.DEVNULL)


def drawings(program, folder):
    """The checked molecules as molfiles of their own and the samples: (name, file)."""
    lines = pathlib.Path("tests/convert/pictures.smi").read_text().splitlines()
    molecules = [line for line in lines if line and not line.startswith("#")]
    smiles = folder / "all.smi"
    smiles.write_text("\n".join(molecules) + "\n")
    run(program, smiles, "-o", folder / "m%03d.mol")
    for number, line in enumerate(molecules, 1):
        yield line.partition(" ")[2], folder / f"m{number:03}.mol"
    for sample in SAMPLES:
        yield sample.name, sample


def draw_by_rdkit(program, drawing, picture, folder, dpi):
    """RDKit's own drawing, at the size of its choice for bonds of 20 pt."""
    molfile = folder / "of_rdkit.mol"
    run(program, drawing, "-o", molfile)
    molecule = Chem.MolFromMolFile(str(molfile), sanitize=False, removeHs=False)
    try:
        Chem.SanitizeMol(molecule)
        Chem.AssignChiralTypesFromBondDirs(molecule)
    except Chem.MolSanitizeException:
        molecule.UpdatePropertyCache(strict=False)
    drawer = rdMolDraw2D.MolDraw2DSVG(-1, -1)
    drawer.drawOptions().scalingFactor = 14
    rdMolDraw2D.PrepareAndDrawMolecule(drawer, molecule)
    drawer.FinishDrawing()
    svg = folder / "of_rdkit.svg"
    svg.write_text(drawer.GetDrawingText())
    run("rsvg-convert", "-z", dpi / RESOLUTION, svg, "-o", picture)


def main(program, target, percent="100"):
    dpi = RESOLUTION * float(percent) / 100
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        rows = []
        for number, (title, drawing) in enumerate(drawings(program, folder)):
            own = folder / f"{number:03}-rdkit.png"
            draw_by_rdkit(program, drawing, own, folder, dpi)
            pictures = []
            for look in LOOKS:
                picture = folder / f"{number:03}-{look}.png"
                run(program, drawing, "--style", look, "--dpi", dpi, "-o", picture)
                pictures.append(picture)
            rows.append(folder / f"{number:03}-row.png")
            run("montage", "-font", FONT, "-title", title, *pictures, own, "-tile", "x1", "-geometry",
                f"{round(WIDTH * dpi / RESOLUTION)}x+0+0>", "-pointsize", round(9 * dpi / RESOLUTION), rows[-1])
        run("convert", *rows, "-append", "-strip", "+dither", "-colors", "64", f"PNG8:{target}")


if __name__ == "__main__":
    main(*sys.argv[1:])
