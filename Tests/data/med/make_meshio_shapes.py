"""Turns the Gmsh files of one element of each shape to MED as meshio does. See make_med_programs.sh."""

import sys

import meshio

# meshio 5.0 forgot these.
for shape in ("wedge15", "pyramid13"):
    meshio._mesh.topological_dimension.setdefault(shape, 3)

for order in ("first", "serendipity"):
    mesh = meshio.read(f"{sys.argv[1]}/{order}22.msh")
    meshio.write(f"meshio-{order}.med", meshio.Mesh(mesh.points, mesh.cells), file_format="med")
