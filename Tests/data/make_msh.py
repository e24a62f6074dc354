#!/usr/bin/python3
"""Writes the files in msh/ with gmsh and meshio, and beside each mesh what meshio reads in it, as JSON.

The files are checked in; run this again only when one is added. Needs Debian's gmsh and python3-meshio.
"""
import json
import os
import subprocess
import tempfile

import meshio
import numpy as np

# meshio 5.0 forgot these.
for shape in ("wedge15", "wedge18", "pyramid13", "pyramid14"):
    meshio._mesh.topological_dimension.setdefault(shape, 3)

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "msh")

# One element of each shape of first order, in four physical groups.
SHAPES = """$MeshFormat
2.2 0 8
$EndMeshFormat
$PhysicalNames
4
3 1 "Solids"
2 2 "Faces"
1 3 "Edge"
0 4 "Corner"
$EndPhysicalNames
$Nodes
15
1 0 0 0
2 1 0 0
3 1 1 0
4 0 1 0
5 0 0 1
6 1 0 1
7 1 1 1
8 0 1 1
9 0.5 0.5 2
10 2 0 0
11 2 0 1
12 0.5 3 1.5
13 0 -1 0
14 3 0 0
15 0 -1 1
$EndNodes
$Elements
8
1 5 2 1 1 1 2 3 4 5 6 7 8
2 7 2 1 1 5 6 7 8 9
3 6 2 1 1 2 10 3 6 11 7
4 4 2 1 1 8 7 12 9
5 2 2 2 2 1 2 13
6 3 2 2 2 1 13 15 5
7 1 2 3 3 10 14
8 15 2 4 4 14
$EndElements
"""

BOX = """SetFactory("OpenCASCADE");
Box(1) = {0, 0, 0, 2, 1, 1};
Physical Volume("Body", 7) = {1};
Physical Surface("Left", 3) = {1};
Physical Surface("Right", 2) = {2};
Mesh.MeshSizeMin = 1;
Mesh.MeshSizeMax = 1;
"""

VIEW = """View "Shear" {
  SS(0,0,0, 1,0,0, 0,1,0, 0,0,1){1,2,3,4, 10,20,30,40};
  SH(1,0,0, 2,0,0, 2,1,0, 1,1,0, 1,0,1, 2,0,1, 2,1,1, 1,1,1){1,2,3,4,5,6,7,8, 11,12,13,14,15,16,17,18};
  TIME{0.5, 1.5};
};
Save View[0] "%s";
"""


def run_gmsh(text, *arguments):
    with tempfile.TemporaryDirectory() as scratch:
        script = os.path.join(scratch, "script.geo")
        with open(script, "w") as out:
            out.write(text)
        with open(os.path.join(scratch, "shapes.msh"), "w") as out:
            out.write(SHAPES)
        done = subprocess.run(["gmsh", script, *arguments], capture_output=True, text=True, check=True)
        if "Error" in done.stdout + done.stderr:
            raise RuntimeError(done.stdout + done.stderr)


def path(name):
    return os.path.join(FOLDER, name)


def write_orders(name, version, binary, incomplete, order=2):
    run_gmsh(
        f"""Merge "shapes.msh";
Mesh.SecondOrderIncomplete = {incomplete};
SetOrder {order};
Mesh.Binary = {binary};
Mesh.MshFileVersion = {version};
Save "{path(name)}";
""",
        "-",
    )


def write_box(name, version, *arguments):
    run_gmsh(BOX, "-3", "-format", version, *arguments, "-o", path(name))


def node_value(xyz, step):
    return xyz[0] + 10 * xyz[1] + 100 * xyz[2] + 1000 * step


def write_steps(source, name, binary):
    """Values per node and element over three steps, which gmsh reads and writes again."""
    mesh = meshio.read(path(source))
    text = open(path(source)).read()
    for step in range(3):
        text += f'$NodeData\n1\n"Heat"\n1\n{0.25 * step}\n3\n{step}\n1\n{len(mesh.points)}\n'
        for i, xyz in enumerate(mesh.points):
            text += f"{i + 1} {float(node_value(xyz, step))!r}\n"
        text += "$EndNodeData\n"
    with tempfile.TemporaryDirectory() as scratch:
        merged = os.path.join(scratch, "merged.msh")
        with open(merged, "w") as out:
            out.write(text)
        save_view(merged, name, 4.1, binary)


def write_again(source, name, version):
    save_view(path(source), name, version, 1)


def save_view(source, name, version, binary):
    run_gmsh(f'Merge "{source}";\nPostProcessing.SaveMesh = 1;\nMesh.Binary = {binary};\n'
             f'Mesh.MshFileVersion = {version};\nSave View[0] "{path(name)}";\n', "-")


def write_data(source, name, version, binary):
    """Values of all kinds, written by meshio."""
    mesh = meshio.read(path(source))
    x, y, z = mesh.points.T
    points = {
        "Temperature": 20 + x * y + z,
        "Displacement": 0.1 * mesh.points,
        "Flow": mesh.points[:, [1, 2, 0]],
        "Stress": np.stack([x, 2 + y, z, 2 + y, y, x * z, z, x * z, 3 + z], axis=1),
    }
    cells = {"Density": [], "Normal": []}
    for block in mesh.cells:
        centres = mesh.points[block.data].mean(axis=1)
        cells["Density"].append(centres[:, 0] - centres[:, 1])
        cells["Normal"].append(centres)
    keep = {key: mesh.cell_data[key] for key in ("gmsh:physical", "gmsh:geometrical")}
    out = meshio.Mesh(mesh.points, mesh.cells, points, {**keep, **cells}, mesh.field_data)
    out.point_data.update({k: v for k, v in mesh.point_data.items() if version == "gmsh" and k == "gmsh:dim_tags"})
    meshio.write(path(name), out, file_format=version, binary=binary)


# Of our types, without the nodes inside faces and volumes.
NODE_COUNTS = {"quad9": 8, "hexahedron27": 20, "wedge18": 15, "pyramid14": 13}


DIMENSIONS = {
    "vertex": 0, "line": 1, "line3": 1, "triangle": 2, "triangle6": 2, "quad": 2, "quad8": 2, "quad9": 2,
}


def describe(name):
    """Each element as the coordinates of its nodes in VTK's order, which is ours."""
    mesh = meshio.read(path(name))
    parts = {}
    for index, block in enumerate(mesh.cells):
        count = NODE_COUNTS.get(block.type, block.data.shape[1])
        dimension = DIMENSIONS.get(block.type, 3)
        names = {(int(t), int(d)): n for n, (t, d) in mesh.field_data.items()}
        for row, nodes in enumerate(block.data):
            tag = int(mesh.cell_data["gmsh:physical"][index][row])
            part = parts.setdefault(names[tag, dimension], {"elements": []})
            places = mesh.points[nodes[:count]].flatten().tolist()
            part["elements"].append(places)
    for part in parts.values():
        part["elements"].sort()
    with open(path(name.replace(".msh", ".json")), "w") as out:
        json.dump(parts, out, sort_keys=True, separators=(",", ":"))
        out.write("\n")


def main():
    os.makedirs(FOLDER, exist_ok=True)
    write_orders("first22.msh", 2.2, 0, 0, order=1)
    write_orders("first41bin.msh", 4.1, 1, 0, order=1)
    write_orders("serendipity22.msh", 2.2, 0, 1)
    write_orders("serendipity41bin.msh", 4.1, 1, 1)
    write_orders("complete40.msh", 4.0, 0, 0)
    write_orders("complete41.msh", 4.1, 0, 0)
    write_orders("complete22bin.msh", 2.2, 1, 0)
    write_box("box41.msh", "msh41")
    write_box("box41bin.msh", "msh41", "-bin", "-order", "2")
    write_box("box22bin.msh", "msh22", "-bin", "-order", "2")
    write_box("parametric41.msh", "msh41", "-setnumber", "Mesh.SaveParametric", "1")
    write_box("parametric41bin.msh", "msh41", "-bin", "-setnumber", "Mesh.SaveParametric", "1")
    write_box("parametric40.msh", "msh40", "-setnumber", "Mesh.SaveParametric", "1")
    write_box("parametric22bin.msh", "msh22", "-bin", "-setnumber", "Mesh.SaveParametric", "1")
    write_box("parametric22.msh", "msh22", "-setnumber", "Mesh.SaveParametric", "1")
    write_box("partitioned41.msh", "msh41", "-part", "2", "-part_ghosts")
    write_box("partitioned41bin.msh", "msh41", "-bin", "-part", "2", "-part_ghosts")
    write_box("partitioned22.msh", "msh22", "-part", "2", "-part_ghosts")
    run_gmsh(VIEW % path("view.msh"), "-")
    write_again("view.msh", "viewbin.msh", 2.2)
    write_again("view.msh", "view41bin.msh", 4.1)
    write_steps("box41.msh", "steps41.msh", 0)
    write_steps("box41.msh", "steps41bin.msh", 1)
    write_data("serendipity22.msh", "data22.msh", "gmsh22", False)
    write_data("serendipity22.msh", "data22bin.msh", "gmsh22", True)
    write_data("box41.msh", "data41.msh", "gmsh", False)
    write_data("box41.msh", "data41bin.msh", "gmsh", True)
    for name in ("first22", "first41bin", "serendipity22", "serendipity41bin",
                 "box41", "box22bin"):
        describe(name + ".msh")


if __name__ == "__main__":
    main()
