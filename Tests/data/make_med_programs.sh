#!/bin/sh
# Writes the files in med/ that other programs make of the meshes in msh/, and beside each what an independent reader
# finds in it. The files are checked in; run this again only when one is added.
# Needs Debian's packages gmsh, freecad-python3, code-saturne-bin, python3-meshio and python3-h5py, and in GMSH_MED a gmsh
# built with -DENABLE_MED=ON, which Debian's is not: from Debian's sources of it, with libmedc-dev.
set -eu

: "${GMSH_MED:?the path of a gmsh that writes MED}"
cd "$(dirname "$0")"
msh=$(pwd)/msh
med=$(pwd)/med
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

for order in first serendipity; do
    "$GMSH_MED" "$msh/${order}22.msh" -save -format med -o "gmsh-$order.med"
    gmsh "$msh/${order}22.msh" -save -format unv -o "$order.unv"
done
/usr/bin/python3 "$med/make_meshio_shapes.py" "$msh"

# FreeCAD's meshes are Salome's: SMESH.
cat >convert.py <<'EOF'
import Fem

for order in ("first", "serendipity"):
    mesh = Fem.FemMesh()
    mesh.read(order + ".unv")
    mesh.write("freecad-" + order + ".med")
EOF
freecadcmd convert.py

# A flow through the four volumes, two time steps.
mkdir saturne
cp "$med/saturne.xml" saturne/setup.xml
cd saturne
/usr/lib/code_saturne/cs_preprocess "$msh/first22.msh" --out mesh_input
/usr/lib/code_saturne/cs_solver
cp results.med ../saturne.med
cd ..

for file in *.med; do
    /usr/bin/python3 "$med/read_med.py" "$file" >"${file%.*}.json"
    mv "$file" "${file%.*}.json" "$med/"
done
