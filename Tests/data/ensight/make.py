#!/usr/bin/python3
"""Makes the files of this folder that no program at hand writes, each model in all forms that EnSight Gold has: ASCII,
C Binary in both orders of bytes, and Fortran Binary. Needs python3-numpy.

Then expect.py writes what is in them. Run both in this folder when a file is to change.
"""
import struct

import numpy as np

rng = np.random.default_rng(7)


class Form:
    """Writes texts and numbers of a file, one after the other."""

    def __init__(self, name, kind):
        self.kind, self.order, self.bytes = kind, ">" if kind == "big" else "<", b""
        self.file = name

    def head(self):
        if self.kind in ("little", "big"):
            self.text("C Binary")
        elif self.kind == "fortran":
            self.text("Fortran Binary")

    def record(self, data):
        mark = struct.pack("<i", len(data))
        self.bytes += mark + data + mark if self.kind == "fortran" else data

    def text(self, text):
        if self.kind == "ascii":
            self.bytes += text.encode() + b"\n"
        else:
            self.record(text.encode().ljust(80, b"\0" if self.kind == "little" else b" "))

    def ints(self, *numbers, wide=1):
        if self.kind == "ascii":
            for i in range(0, len(numbers), wide):
                self.bytes += "".join("%10d" % n for n in numbers[i:i + wide]).encode() + b"\n"
        else:
            self.record(struct.pack("%s%di" % (self.order, len(numbers)), *numbers))

    def floats(self, numbers, wide=1):
        if self.kind == "ascii":
            for i in range(0, len(numbers), wide):
                self.bytes += "".join("%12.5e" % n for n in numbers[i:i + wide]).encode() + b"\n"
        else:
            self.record(struct.pack("%s%df" % (self.order, len(numbers)), *numbers))

    def write(self):
        open(self.file, "wb").write(self.bytes)


CORNERS = {"point": [(0, 0, 0)], "bar": [(0, 0, 0), (1, 0, 0)], "tria": [(0, 0, 0), (1, 0, 0), (0, 1, 0)],
           "quad": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)], "tetra": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)],
           "pyramid": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0.5, 0.5, 1)],
           "penta": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (0, 1, 1)],
           "hexa": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)]}
EDGES = {"bar3": [(0, 1)], "tria6": [(0, 1), (1, 2), (2, 0)], "quad8": [(0, 1), (1, 2), (2, 3), (3, 0)],
         "tetra10": [(0, 1), (1, 2), (2, 0), (0, 3), (1, 3), (2, 3)],
         "pyramid13": [(0, 1), (1, 2), (2, 3), (3, 0), (0, 4), (1, 4), (2, 4), (3, 4)],
         "penta15": [(0, 1), (1, 2), (2, 0), (3, 4), (4, 5), (5, 3), (0, 3), (1, 4), (2, 5)],
         "hexa20": [(0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)]}


def points_of(kind, shift):
    corners = [np.array(p, float) + (shift, 0, 0) for p in CORNERS[kind.rstrip("0123456789")]]
    return corners + [(corners[a] + corners[b]) / 2 for a, b in EDGES.get(kind, [])]


class Part:
    def __init__(self, number, name, kinds):
        """Elements side by side; polygons and a polyhedron are of the nodes that are there."""
        self.number, self.name, self.points, self.sections = number, name, [], []
        for place, kind in enumerate(kinds):
            if kind == "nsided":
                self.sections.append((kind, [[1, 2, 3, 5, 4], [7, 8, 9]]))
            elif kind == "nfaced":
                self.sections.append((kind, [[[1, 2, 3], [1, 2, 4], [2, 3, 4], [1, 3, 4]]]))
            else:
                own = points_of(kind[2:] if kind.startswith("g_") else kind, 2.0 * place)
                self.sections.append((kind, [[len(self.points) + i + 1 for i in range(len(own))]]))
                self.points += own


def zoo():
    return [Part(1, "shells", ["tria3", "tria6", "quad4", "quad8", "g_quad4", "nsided"]),
            Part(5, "solids, all of them", ["tetra4", "tetra10", "pyramid5", "pyramid13", "penta6", "penta15", "hexa8", "hexa20", "nfaced"]),
            Part(9, "lines", ["point", "bar2", "bar3"])]


def geometry(out, parts, ids, shift=0.0, extents=False, with_elements=True):
    out.text("a mesh made by hand")
    out.text("of %d parts" % len(parts))
    out.text("node id " + ids)
    out.text("element id " + ids)
    if extents:
        out.text("extents")
        out.floats([-1, 1, -2, 2, -3, 3], wide=2)
    listed = ids in ("given", "ignore")
    for part in parts:
        out.text("part")
        out.ints(part.number)
        out.text(part.name)
        out.text("coordinates")
        out.ints(len(part.points))
        if listed:
            out.ints(*[100 * part.number + i for i in range(len(part.points))])
        for axis in range(3):
            out.floats([p[axis] + shift for p in part.points])
        for place, (kind, elements) in enumerate(part.sections if with_elements else []):
            out.text(kind)
            out.ints(len(elements))
            if listed:
                out.ints(*[1000 * part.number + 10 * place + i for i in range(len(elements))])
            if kind == "nfaced":
                out.ints(*[len(faces) for faces in elements])
                out.ints(*[len(face) for faces in elements for face in faces])
                for faces in elements if out.kind == "ascii" else []:
                    for face in faces:
                        out.ints(*face, wide=len(face))
                if out.kind != "ascii":
                    out.ints(*[n for faces in elements for face in faces for n in face])
                continue
            if kind == "nsided":
                out.ints(*[len(nodes) for nodes in elements])
            for nodes in elements if out.kind == "ascii" else []:
                out.ints(*nodes, wide=len(nodes))
            if out.kind != "ascii":
                out.ints(*[n for nodes in elements for n in nodes])


def some(count):
    return list(np.round(rng.random(count) * 10, 3))


def part_head(out, part):
    out.text("part")
    out.ints(part.number)


def variable(out, parts, components, on_nodes):
    out.text("values made by hand")
    for part in parts:
        part_head(out, part)
        for kind, elements in [("coordinates", part.points)] if on_nodes else part.sections:
            out.text(kind)
            for _ in range(components):
                out.floats(some(len(elements)))


def holes_at_nodes(out, parts):
    """Some nodes of the first part, all but some of the second one, none of the third."""
    out.text("values here and there")
    part_head(out, parts[0])
    out.text("coordinates partial")
    out.ints(3)
    out.ints(2, 7, 5)
    out.floats(some(3))
    part_head(out, parts[1])
    out.text("coordinates undef")
    out.floats([-999])
    values = some(len(parts[1].points))
    values[::4] = [-999] * len(values[::4])
    out.floats(values)


def holes_in_elements(out, parts):
    """Vectors of some sections, not in the order of the mesh."""
    out.text("values here and there")
    for part in parts[:2]:
        part_head(out, part)
        for kind, elements in part.sections[::-2]:
            if kind == "nsided":
                out.text(kind + " partial")
                out.ints(1)
                out.ints(2)
                for _ in range(3):
                    out.floats(some(1))
            else:
                out.text(kind + " undef")
                out.floats([1e30])
                for axis in range(3):
                    out.floats(some(len(elements)) if axis else [1e30] * len(elements))


CASE = """# What every part of a case may say.
FORMAT
type:   ensight gold

GEOMETRY
model:    zoo_%(kind)s.geo
measured: 1 drops.***

VARIABLE
constant per case: 1 Load 1.5 2.5
constant per case: Gravity 9.81
scalar per node: 1 Temp zoo_%(kind)s_Temp.***
vector per node: Displacement zoo_%(kind)s_Displacement
tensor symm per node: Stress zoo_%(kind)s_Stress
tensor asym per node: Gradient zoo_%(kind)s_Gradient
scalar per node: Holes zoo_%(kind)s_Holes
scalar per element: 2 Damage zoo_%(kind)s_Damage.*
vector per element: Gaps zoo_%(kind)s_Gaps
tensor symm per element: Strain zoo_%(kind)s_Strain
complex scalar per node: 1 Wave zoo_re.*** zoo_im.*** 50
scalar per measured node: 1 Size drops_size.***

TIME
time set:               1  # of two
number of steps:        2
filename numbers:       8
                        20
time values:            0.5
 1.5
time set:               2 damage
number of steps:        1
filename start number:  3
filename increment:     2
time values:            2.25

MATERIAL
material set number: 1 all
material id count: 2
material id numbers: 1
2
material id names: steel
air
material id per element: zoo_matid

SCRIPTS
metadata: zoo.xml
"""


def make_zoo(kind):
    parts = zoo()
    name = "zoo_" + kind
    open(name + ".case", "w").write(CASE % {"kind": kind})

    def write(suffix, function, *arguments, **options):
        out = Form(name + suffix, kind)
        if suffix == ".geo":
            out.head()
        function(out, *arguments, **options)
        out.write()

    write(".geo", geometry, parts, "given", extents=True)
    write("_Temp.008", variable, parts, 1, True)
    write("_Temp.020", variable, parts, 1, True)
    write("_Displacement", variable, parts, 3, True)
    write("_Stress", variable, parts, 6, True)
    write("_Gradient", variable, parts[:1], 9, True)
    write("_Holes", holes_at_nodes, parts)
    write("_Damage.3", variable, parts, 1, False)
    write("_Gaps", holes_in_elements, parts)
    write("_Strain", variable, parts[:2], 6, False)


SINGLE = """FORMAT
type: ensight gold
GEOMETRY
model: 1 1 single_%(kind)s.geo*
VARIABLE
scalar per node: 1 2 Temp "single_%(kind)s Temp"
vector per element: 1 1 Flux single_%(kind)s_Flux*
TIME
time set: 1
number of steps: 3
time values: 0 0.5 1
FILE
file set: 1
filename index: 1
number of steps: 2
filename index: 2
number of steps: 1
file set: 2
number of steps: 3
"""


def make_single(kind):
    """Several steps in a file; the mesh grows from step to step."""
    steps = [[Part(1, "body", kinds)] for kinds in (["hexa8"], ["hexa8", "tria3"], ["hexa8", "tria3", "bar2"])]
    name = "single_" + kind
    open(name + ".case", "w").write(SINGLE % {"kind": kind})

    def write(suffix, which, function, *arguments):
        out = Form(name + suffix, kind)
        if function is geometry:
            out.head()
        index = []
        for step in which:
            out.text("BEGIN TIME STEP")
            index.append(len(out.bytes))
            function(out, steps[step], *arguments)
            out.text("END TIME STEP")
        if kind == "little":  # Where the steps begin, which need not be there.
            begin = len(out.bytes)
            out.bytes += struct.pack("<i%dqiq" % len(index), len(index), *index, 0, begin) + b"FILE_INDEX".ljust(80, b"\0")
        out.write()

    write(".geo1", [0, 1], geometry, "assign")
    write(".geo2", [2], geometry, "assign")
    write(" Temp", [0, 1, 2], variable, 1, True)
    write("_Flux1", [0, 1], variable, 3, False)
    write("_Flux2", [2], variable, 3, False)


BLOCKS = """FORMAT
type: ensight gold
GEOMETRY
model: blocks_%(kind)s.geo
VARIABLE
scalar per node: Temp blocks_%(kind)s_Temp
vector per element: Flux blocks_%(kind)s_Flux
"""

BLOCKS_OF = [(1, "curved", "block iblanked", (3, 2, 2)), (2, "planes", "block rectilinear with_ghost", (3, 3, 1)),
             (3, "boxes", "block uniform", (2, 2, 3)), (4, "cut out", "block curvilinear range", (3, 3, 1))]


def make_blocks(kind):
    name = "blocks_" + kind
    open(name + ".case", "w").write(BLOCKS % {"kind": kind})
    out = Form(name + ".geo", kind)
    out.head()
    for text in ("structured blocks", "of all sorts", "node id given", "element id off"):
        out.text(text)
    sizes = []
    for number, title, keyword, size in BLOCKS_OF:
        out.text("part")
        out.ints(number)
        out.text(title)
        out.text(keyword)
        out.ints(*size, wide=3)
        if "range" in keyword:
            out.ints(2, 3, 1, 2, 1, 1, wide=6)
            size = (2, 2, 1)
        count = int(np.prod(size))
        sizes.append((number, count, int(np.prod([max(n - 1, 1) for n in size]))))
        i, j, k = (axis.ravel(order="F") for axis in np.meshgrid(*[np.arange(n) for n in size], indexing="ij"))
        if "uniform" in keyword:
            out.floats([10, 20, 30], wide=1)
            out.floats([0.5, 0.25, 2], wide=1)
        elif "rectilinear" in keyword:
            for n in size:
                out.floats(list(np.cumsum(np.arange(n)) + 5.0))
        else:
            for axis in (i + 0.25 * j, j + 0.125 * k, k + 10.0 * number):
                out.floats([float(v) for v in axis])
        if "iblanked" in keyword:
            out.ints(*[0 if n == 11 else 1 for n in range(count)])
        if "with_ghost" in keyword:
            out.text("ghost_flags")
            out.ints(0, 0, 1, 0)
        out.text("node_ids")
        out.ints(*[100 * number + n for n in range(count)])
    out.write()
    for suffix, components, on_nodes in (("_Temp", 1, True), ("_Flux", 3, False)):
        out = Form(name + suffix, kind)
        out.text("values of blocks")
        for number, nodes, cells in sizes:
            out.text("part")
            out.ints(number)
            out.text("block")
            for _ in range(components):
                out.floats(some(nodes if on_nodes else cells))
        out.write()


def make_coordinates():
    """The second mesh has nothing but coordinates, and stays until a time of the variable's own."""
    open("coordinates.case", "w").write("""FORMAT
type: ensight gold
GEOMETRY
model: 1 coordinates.geo* change_coords_only
VARIABLE
scalar per node: 2 Temp coordinates_Temp.*
TIME
time set: 1
number of steps: 2
filename start number: 0
filename increment: 1
time values: 0 1
time set: 2
number of steps: 3
filename start number: 0
filename increment: 1
time values: 0 1 2
""")
    parts = [Part(1, "body", ["hexa8", "penta6"])]
    for step in range(2):
        out = Form("coordinates.geo%d" % step, "ascii")
        geometry(out, parts, "ignore", shift=step, with_elements=step == 0)
        out.write()
    for step in range(3):
        out = Form("coordinates_Temp.%d" % step, "ascii")
        variable(out, parts, 1, True)
        out.write()


for form in ("ascii", "little", "big", "fortran"):
    rng = np.random.default_rng(7)
    make_zoo(form)
for form in ("ascii", "little", "fortran"):
    rng = np.random.default_rng(8)
    make_single(form)
    rng = np.random.default_rng(9)
    make_blocks(form)
make_coordinates()
