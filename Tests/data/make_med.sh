#!/bin/sh
# Writes the files in med/ through libmedc and meshio, and beside each what an independent reader finds in it.
# The files are checked in; run this again only when make_med.c or read_med.py changes.
# Needs libmedc-dev, python3-h5py and python3-meshio.
set -eu

cd "$(dirname "$0")/med"
folder=$(pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# shellcheck disable=SC2046
cc -Wall -o "$scratch/make_med" make_med.c $(pkg-config --cflags hdf5-openmpi) -lmedC $(pkg-config --libs hdf5-openmpi)
cd "$scratch"
./make_med
/usr/bin/python3 "$folder/make_meshio.py"
for file in *.med *.rmed; do
    /usr/bin/python3 "$folder/read_med.py" "$file" >"${file%.*}.json"
    mv "$file" "${file%.*}.json" "$folder/"
done
