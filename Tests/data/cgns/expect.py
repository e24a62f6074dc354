#!/usr/bin/python3
"""Writes what this folder's files hold as expected.json, read by h5py (python3-h5py), which knows nothing of CGNS. ADF
files are turned into HDF5 by adf2hdf of cgns-convert before. Programs wrote saturne.cgns (code_saturne), pipe.cgns and
tut21.cgns: PETSc's (Debian's libpetsc3.18-dev-examples, share/petsc/datafiles/meshes; BSD licence), the former being
grid_c.cgns there.

For each file its states; for each state its time and parts; for each part the name, nodes, elements as type and nodes,
and results as [type, mapping, values], null being undefined. The name of another file stands for the same contents.
Of the long lists of LARGE_FILES only every so many items are told, beginning with the first one.
"""
import glob
import json
import math
import re
import subprocess
import tempfile

import h5py
import numpy as np

FIRST = list(range(64))
HEXA_20 = FIRST[:12] + [16, 17, 18, 19, 12, 13, 14, 15]  # Edges of the bottom, the sides and the top.
PENTA_15 = FIRST[:9] + [12, 13, 14, 9, 10, 11]
# By CGNS' number of the type: how many nodes, what it is here, and which of its nodes are those.
TYPES = {2: (1, "point", FIRST[:1]), 3: (2, "beam", FIRST[:2]), 4: (3, "beam_3", FIRST[:3]), 5: (3, "triangle", FIRST[:3]),
         6: (6, "triangle_6", FIRST[:6]), 7: (4, "quadrilateral", FIRST[:4]), 8: (8, "quadrilateral_8", FIRST[:8]),
         9: (9, "quadrilateral_8", FIRST[:8]), 10: (4, "tetrahedron", FIRST[:4]), 11: (10, "tetrahedron_10", FIRST[:10]),
         12: (5, "pyramid", FIRST[:5]), 13: (14, "pyramid_13", FIRST[:13]), 21: (13, "pyramid_13", FIRST[:13]),
         14: (6, "wedge", FIRST[:6]), 15: (15, "wedge_15", PENTA_15), 16: (18, "wedge_15", PENTA_15),
         17: (8, "hexahedron", FIRST[:8]), 18: (20, "hexahedron_20", HEXA_20), 19: (27, "hexahedron_20", HEXA_20)}
MIXED, NGON = 20, 22
LARGE_FILES = {"tut21.cgns": 17}  # Which divides no length of rows and columns.
TENSOR = ["XX", "YY", "ZZ", "XY", "YZ", "(?:ZX|XZ)"]


class Node:
    def __init__(self, group):
        self.group = group
        self.name, self.label = (group.attrs[key].decode() for key in ("name", "label"))

    def children(self, label=None):
        nodes = [Node(child) for child in self.group.values() if isinstance(child, h5py.Group)]
        nodes.sort(key=lambda node: h5py.h5o.get_info(node.group.id).addr)  # As they were written.
        return [node for node in nodes if label in (None, node.label)]

    def child(self, name):
        return next((node for node in self.children() if node.name == name), None)

    def data(self):
        return np.ravel(self.group[" data"][()])

    def text(self):
        return bytes(self.data().astype(np.uint8)).decode()

    def sizes(self):
        return list(self.group[" data"].shape[::-1])


def plain(values):
    return [None if math.isnan(v) else float(v) for v in np.ravel(values)]


def core(array, counts, rind):
    """The values without the layers around them, the first dimension fastest."""
    values = array.data().reshape(array.sizes()[::-1])
    for d, count in enumerate(counts):
        begin = rind[2 * d]
        values = np.take(values, range(begin, begin + count), axis=len(counts) - 1 - d)
    return values.ravel().astype(float)


def rind_of(node, dimension):
    rinds = node.children("Rind_t")
    return list(rinds[0].data()) if rinds else [0] * 2 * dimension


def join(arrays, mapping):
    """Results of what has names that go together."""
    found, left = {}, dict(arrays)
    for kind, endings in (("tensor", TENSOR), ("vector", ["X", "Y", "Z"]), ("vector", ["_x", "_y", "_z"])):
        for first in arrays:
            stem = first[:-len(endings[0])]
            names = [next((n for n in left if re.fullmatch(re.escape(stem) + e, n)), None) for e in endings]
            if first.endswith(endings[0]) and stem and None not in names:
                values = np.stack([left.pop(n) for n in names], 1)
                kind_of = "displacement" if stem == "Displacement" else kind
                found[stem + "/" + mapping] = [kind_of, mapping, plain(values)]
    for name, values in left.items():
        found[name + "/" + mapping] = ["scalar", mapping, plain(values)]
    return found


def flat(arrays):
    """Vectors of two components get a third one. Rows of tensors are none."""
    for name in [n for n in arrays if re.fullmatch(".*[^XY]X", n) and n[:-1] + "Y" in arrays]:
        arrays.setdefault(name[:-1] + "Z", np.zeros(len(arrays[name])))
    return arrays


def sections(zone, cells):
    """The elements by their numbers, from 1."""
    elements = {}
    for section in zone.children("Elements_t"):
        kind = section.data()[0]
        begin, end = section.child("ElementRange").data()
        nodes = [int(n) for n in section.child("ElementConnectivity").data()]
        starts = section.child("ElementStartOffset")
        starts = starts and list(starts.data())
        next_one = 0
        for i in range(end - begin + 1):
            first = starts[i] if starts else next_one
            own = nodes[first] if kind == MIXED else kind
            first += kind == MIXED
            if kind == NGON:
                count = starts[i + 1] - first
                elements[begin + i] = [{3: "triangle", 4: "quadrilateral"}[count]] + [n - 1 for n in nodes[first:first + count]]
            else:
                count, name, order = TYPES[own]
                elements[begin + i] = [name] + [nodes[first + n] - 1 for n in order]
                next_one = first + count
    return [elements[number] for number in range(1, cells + 1)]


def block(counts):
    """The cells of a structured zone."""
    sizes = (list(counts) + [1, 1])[:3]
    at = lambda i, j, k: int(i + sizes[0] * (j + sizes[1] * k))
    square = lambda i, j, k: [at(i, j, k), at(i + 1, j, k), at(i + 1, j + 1, k), at(i, j + 1, k)]
    spans = [range(max(size - 1, 1)) for size in sizes]
    elements = []
    for k in spans[2]:
        for j in spans[1]:
            for i in spans[0]:
                if len(counts) == 3:
                    elements.append(["hexahedron"] + square(i, j, k) + square(i, j, k + 1))
                elif len(counts) == 2:
                    elements.append(["quadrilateral"] + square(i, j, k))
                else:
                    elements.append(["beam", i, i + 1])
    return elements


def pointed(zone, ending, step):
    """The names that belong to a step."""
    names = []
    for iterative in zone.children("ZoneIterativeData_t"):
        for array in iterative.children("DataArray_t"):
            if re.fullmatch(ending, array.name):
                names.append(array.text()[32 * step:32 * step + 32].rstrip())
    return names


def part(zone, name, dimension, flatness, step):
    structured = zone.children("ZoneType_t")[0].text() == "Structured"
    sizes = zone.data()
    count = dimension if structured else 1
    nodes, cells = list(sizes[:count]), list(sizes[count:2 * count])
    grid = (pointed(zone, "GridCoordinatesPointers", step) or ["GridCoordinates"])[0]
    if grid == "Null":
        return {"name": name, "nodes": [], "elements": [], "results": {}}
    grid = zone.child(grid)
    axes = [core(grid.child("Coordinate" + axis), nodes, rind_of(grid, count)) for axis in "XYZ"[:flatness]]
    axes += [np.zeros(len(axes[0]))] * (3 - flatness)
    found = {}
    chosen = pointed(zone, "FlowSolution.*Pointers", step)
    locations = set()
    for solution in zone.children("FlowSolution_t"):
        location = (solution.children("GridLocation_t") or [None])[0]
        location = location.text() if location else "Vertex"
        if (solution.name not in chosen) if chosen else location in locations:
            continue
        locations.add(location)
        counts, mapping = {"Vertex": (nodes, "node"), "CellCenter": (cells, "element")}[location]
        arrays = {a.name: core(a, counts, rind_of(solution, count)) for a in solution.children("DataArray_t")}
        found.update(join(flat(arrays) if flatness == 2 else arrays, mapping))
    elements = block(nodes) if structured else sections(zone, cells[0])
    return {"name": name, "nodes": plain(np.stack(axes, 1)), "elements": elements, "results": found}


def undefined_like(found, one):
    width = {"scalar": 1, "vector": 3, "displacement": 3, "tensor": 6}[found[0]]
    return found[:2] + [[None] * width * (len(one["nodes"]) // 3 if found[1] == "node" else len(one["elements"]))]


def complete(states):
    """A result that only some parts of a state have is undefined on the others."""
    for state in states:
        every = {}
        for one in state["parts"]:
            every.update(one["results"])
        for one in state["parts"]:
            for key, found in every.items():
                one["results"].setdefault(key, undefined_like(found, one))
    return states


def states_of(path):
    bases = Node(h5py.File(path)["/"]).children("CGNSBase_t")
    iterative = bases[0].children("BaseIterativeData_t")
    times = [float(t) for t in iterative[0].child("TimeValues").data()] if iterative else [None]
    states = []
    for step, time in enumerate(times):
        parts = []
        for base in bases:
            dimension, flatness = base.data()
            for zone in base.children("Zone_t"):
                name = zone.name if len(bases) == 1 else base.name + "/" + zone.name
                parts.append(part(zone, name, dimension, flatness, step))
        states.append({"time": time, "parts": parts})
    return complete(states)


def thin(states, every):
    """The same with some of each list."""
    some = lambda items: {"count": len(items), "every": every, "items": items[::every]}
    for state in states:
        for one in state["parts"]:
            one["nodes"] = some(one["nodes"])
            one["elements"] = some(one["elements"])
            for found in one["results"].values():
                found[2] = some(found[2])
    return states


expected = {}
with tempfile.TemporaryDirectory() as folder:
    for path in sorted(glob.glob("*.cgns")):
        other = path.replace("_adf", "")
        if other != path:
            expected[path] = other
        elif h5py.is_hdf5(path):
            expected[path] = states_of(path)
        else:
            subprocess.run(["adf2hdf", path, folder + "/" + path], check=True, stdout=subprocess.DEVNULL)
            expected[path] = states_of(folder + "/" + path)
        if path in LARGE_FILES:
            expected[path] = thin(expected[path], LARGE_FILES[path])

with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
