#!/bin/sh
# Writes the files in cgns/ through the CGNS library, and expected.json, what an independent reader finds in them.
# The files are checked in; run this again only when make_cgns.c or expect.py changes.
# Needs libcgns-dev, cgns-convert and python3-h5py.
set -eu

cd "$(dirname "$0")/cgns"
folder=$(pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cc -Wall -o "$scratch/make_cgns" make_cgns.c -lcgns
cd "$scratch"
./make_cgns
mv ./*.cgns "$folder/"
cd "$folder"
./expect.py
