#!/usr/bin/python3
"""Makes the files of this folder: duct.tec by the tools of CGNS (cgns-convert), four by meshio (python3-meshio), the others here.

Then expect.py writes what a small parser of its own finds in them. Run both in this folder when a file is to change.
"""
import os
import shutil
import subprocess
import sys
import tempfile

import meshio
import numpy as np

sys.path.insert(0, "../vtk")
from make import points_of  # noqa: E402

rng = np.random.default_rng(13)


def numbers(*shape):
    return np.round(rng.random(shape), 3)


def make_by_cgns_tools():
    """Numbers as Plot3D has them become a CGNS file, and that becomes one of Tecplot."""
    with tempfile.TemporaryDirectory() as folder:
        points = ordered(3, 3, 2) * [1, 0.5, 2] + [0, 0, 1]
        for name, head, columns in (("duct.xyz", "3 3 2\n", points.T), ("duct.q", "3 3 2\n0.5 0 1e5 0\n", 1 + numbers(5, 18))):
            with open(os.path.join(folder, name), "w") as file:
                file.write(head + "".join("%.5g\n" % v for v in columns.ravel()))
        for command in ("plot3d_to_cgns -s -f duct.xyz duct.q duct.cgns", "cgns_to_tecplot -a duct.cgns duct.tec"):
            subprocess.run(command.split(), check=True, cwd=folder, stdout=subprocess.DEVNULL)
        shutil.copy(os.path.join(folder, "duct.tec"), ".")


def make_by_meshio():
    kinds = {"solids": ("hexahedron", "wedge", "pyramid", "tetra"), "shells": ("quad", "triangle"), "tets": ("tetra",), "lines": ("triangle",)}
    for name, own in kinds.items():
        points, cells = [], []
        for i, kind in enumerate(own):
            new = points_of(kind, 2.0 * i)
            cells.append((kind, np.array([range(len(points), len(points) + len(new))])))
            points += new
        n = len(points)
        data = {"Temperature": numbers(n)}
        for axis in "XYZ":
            data["Displacement" + axis] = numbers(n)
        cell_data = {} if name == "tets" else {"Damage": [numbers(1) for _ in own]}
        meshio.write("meshio_%s.%s" % (name, "dat" if name == "tets" else "tec"), meshio.Mesh(np.array(points), cells, point_data=data, cell_data=cell_data), file_format="tecplot")
    os.rename("meshio_lines.tec", "meshio_triangle.tec")


def rows(array):
    return "".join(" ".join("%.6g" % v for v in np.atleast_1d(row)) + "\n" for row in array)


def ordered(ni, nj, nk=1):
    return np.array([(i, j + 0.1 * i, k) for k in range(nk) for j in range(nj) for i in range(ni)], float)


def make_ordered():
    """Ordered zones of one, two and three dimensions, and a point; old and new words, comments and other records."""
    text = '# By hand, "VARIABLES" in a comment\nTITLE = "Ordered, zones"\nvariables = X, Y, "z [m]", \'wall pressure\'\n"T#1"\nDATASETAUXDATA Code="A = B, C"\n'
    a = ordered(3, 2, 2)
    text += 'ZONE T="block, I=9", I=3, J=2, K=2, ZONETYPE=Ordered, DATAPACKING=BLOCK\n VARLOCATION=([4-5]=CELLCENTERED) DT=(SINGLE SINGLE SINGLE DOUBLE DOUBLE)\n'
    text += rows(a.T) + rows(numbers(2, 2))
    a = ordered(3, 1, 2)
    text += 'TEXT X=1, Y=2\nT="ZONE of text"\nZONE I=3, J=1 K=2 F=POINT C=RED\nAUXDATA note = "a ZONE"\n' + rows(np.hstack([a, numbers(6, 2)]))
    a = ordered(4, 1)
    text += 'zone t=\'line\' i=4\n' + rows(np.hstack([a, numbers(4, 2)])).replace(" ", ",\t")
    text += 'ZONE T="line", I=1, DATAPACKING=POINT\n0.5 .5D0 +5E-1 nan 1.5-1 # a point\nGEOMETRY X=0, Y=0, T=LINE\n1\n2\n0 0\n1 1\n'
    open("ordered.dat", "w").write(text)


def make_elements():
    """Elements of all kinds, bricks that are less, repeated numbers, passive variables; carriage returns."""
    text = 'TITLE = "Elements"\nVARIABLES = "CoordinateX" "CoordinateY" "CoordinateZ" "sxx" "syy" "szz" "sxy" "syz" "szx" "p"\n'
    hexahedron = points_of("hexahedron", 0)
    tip = points_of("pyramid", 0)[4]
    p = np.array(hexahedron + [tip])
    cells = [[1, 2, 3, 4, 5, 6, 7, 8], [1, 2, 3, 3, 5, 6, 7, 7], [1, 2, 3, 4, 9, 9, 9, 9], [1, 2, 3, 3, 9, 9, 9, 9], [1, 1, 3, 4, 5, 5, 7, 8]]
    text += 'ZONE T="bricks", NODES=9, ELEMENTS=5, ZONETYPE=FEBRICK, DATAPACKING=BLOCK, VARLOCATION=(9*NODAL, CELLCENTERED)\n'
    text += rows(p.T) + rows(numbers(5, 9)) + "9*0.25\n" + "2*1.5,3*-2\n" + rows(cells)
    text += 'ZONE T="quads", N=4, E=2, F=FEPOINT, ET=QUADRILATERAL, PASSIVEVARLIST=([4-9])\n'
    text += rows(np.hstack([np.array(hexahedron[:4]), numbers(4, 1)])) + rows([[1, 2, 3, 4], [1, 2, 3, 3]])
    text += 'ZONE T="bars", N=3, E=2, ZONETYPE=FELINESEG, DATAPACKING=POINT\n' + rows(np.hstack([np.array(hexahedron[:3]), numbers(3, 7)])) + rows([[1, 2], [2, 3]])
    open("elements.tp", "w", newline="").write(text.replace("\n", "\r\n"))


def make_times():
    """Two strands; one moves, the other shares all but a variable; a static zone, and a strand that begins later."""
    text = 'TITLE = "Times"\nVARIABLES = "X" "Y" "Z" "p" "q"\n'
    tetra = np.array(points_of("tetra", 0))
    for step, time in enumerate((0.5, 0.25, 1)):
        text += 'ZONE T="moving %g", N=4, E=1, F=FEPOINT, ET=TETRAHEDRON, SOLUTIONTIME=%g, STRANDID=1\n' % (time, time)
        text += rows(np.hstack([tetra * (1 + step), numbers(4, 2)])) + "1 2 3 4\n"
        share = ", VARSHARELIST=([1-3]=2), CONNECTIVITYSHAREZONE=2" if step else ""
        passive = ", PASSIVEVARLIST=[5]" if step == 1 else ""
        text += 'ZONE T="fixed %g", N=3, E=1, F=FEBLOCK, ET=TRIANGLE, SOLUTIONTIME=%g, STRANDID=2%s%s, VARLOCATION=([5]=CELLCENTERED)\n' % (time, time, share, passive)
        text += ("" if step else rows(tetra[:3].T)) + rows(numbers(1, 3)) + (rows(numbers(1, 1)) if step != 1 else "") + ("" if step else "1 2 3\n")
        if step == 0:
            text += 'ZONE T="static", I=2, STRANDID=0, SOLUTIONTIME=7\n' + rows(np.hstack([ordered(2, 1) + 5, numbers(2, 2)]))
    text += 'ZONE T="late", I=2, SOLUTIONTIME=1, STRANDID=9\n' + rows(np.hstack([ordered(2, 1) + 9, numbers(2, 2)]))
    open("times.tec", "w").write(text)


def make_still():
    """Times, no strands, and the mesh is shared by all: it is there once."""
    text = 'VARIABLES = "x" "y" "u"\nZONE T="first", I=2, J=2, DATAPACKING=BLOCK, SOLUTIONTIME=0\n' + rows(ordered(2, 2)[:, :2].T) + rows(numbers(1, 4))
    for step in (1, 2):
        text += 'ZONE I=2, J=2, DATAPACKING=BLOCK, SOLUTIONTIME=%d, VARSHARELIST=([1-2])\n' % step + rows(numbers(1, 4))
    open("still.tec", "w").write(text)


if __name__ == "__main__":
    make_by_cgns_tools()
    make_by_meshio()
    make_ordered()
    make_elements()
    make_times()
    make_still()
