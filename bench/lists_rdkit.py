#!/usr/bin/env python3
"""Parses SMILES, lays them out and writes one SD file with RDKit: what lists.sh measures kytconvert against.

Usage: lists_rdkit.py SMILES_FILE SD_FILE
"""
import sys

from rdkit import Chem, RDLogger
from rdkit.Chem import AllChem

RDLogger.DisableLog("rdApp.*")
source, target = sys.argv[1:]
with open(source, encoding="utf-8") as lines, Chem.SDWriter(target) as writer:
    for line in lines:
        smiles, _, name = line.strip().replace("\t", " ").partition(" ")
        molecule = Chem.MolFromSmiles(smiles)
        if molecule is None:
            continue
        molecule.SetProp("_Name", name)
        AllChem.Compute2DCoords(molecule)
        writer.write(molecule)
