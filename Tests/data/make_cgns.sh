#!/bin/sh
# Writes the files in cgns/ through the CGNS library, and expected.json, what an independent reader finds in them.
# The files are checked in; run this again only when make_cgns.c or expect.py changes.
# saturne.cgns was written by code_saturne 6.0.2 of the wedge, the pyramid and so on in ../msh/first22.msh with saturne.xml;
# pipe.cgns is grid_c.cgns of PETSc's examples (libpetsc3.18-dev-examples; BSD-2-clause, The PETSc Development Team).
# Needs libcgns-dev, cgns-convert, python3-h5py and code-saturne-bin.
set -eu

cd "$(dirname "$0")/cgns"
folder=$(pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cc -Wall -o "$scratch/make_cgns" make_cgns.c -lcgns
cd "$scratch"
./make_cgns
cp "$folder/saturne.xml" setup.xml
/usr/lib/code_saturne/cs_preprocess "$folder/../msh/first22.msh" --out mesh_input >/dev/null
/usr/lib/code_saturne/cs_solver >/dev/null
mv results.cgns saturne.cgns
mv ./*.cgns "$folder/"
cd "$folder"
./expect.py
