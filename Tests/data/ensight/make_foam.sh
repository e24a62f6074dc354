#!/bin/sh
# Makes foam_ascii, foam_binary and foam_nodes with OpenFOAM's own converter, from its smallest tutorial on a mesh of six
# cells: Debian's openfoam and openfoam-examples. Then expect.py writes what is in them.
set -e
export WM_PROJECT_DIR=/usr/share/openfoam
folder=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
cp -r /usr/share/doc/openfoam-examples/examples/incompressible/icoFoam/cavity/cavity "$work"
cd "$work/cavity"
gunzip -r . 2>/dev/null || true
sed -i 's/(20 20 1)/(3 2 1)/' system/blockMeshDict
sed -i 's/^endTime .*/endTime 0.02;/; s/^writeInterval .*/writeInterval 2;/' system/controlDict
blockMesh
icoFoam
foamToEnsight -width 3 -ascii -name "$folder/foam_ascii"
foamToEnsight -width 3 -name "$folder/foam_binary"
foamToEnsight -width 3 -latestTime -nodeValues -name "$folder/foam_nodes"
rm -f "$folder"/foam_*/data/*/time
rm -r "$work"
