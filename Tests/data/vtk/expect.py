#!/usr/bin/python3
"""Writes what this folder's files hold as expected.json, read without VTK: XML by ElementTree, Exodus by netCDF4
(python3-netcdf4), EnSight and legacy files as what they are, lists of numbers.

For each file its states; for each state its time and parts; for each part the name, nodes, elements as type and nodes,
and results as [type, mapping, values], null being undefined. A part without a name is called as its file. The name of
another file stands for the same contents.
"""
import json
import math
import struct
import xml.etree.ElementTree as ElementTree

import netCDF4
import numpy as np

TYPES = {1: "point", 3: "beam", 5: "triangle", 9: "quadrilateral", 10: "tetrahedron", 12: "hexahedron", 13: "wedge", 14: "pyramid",
         21: "beam_3", 22: "triangle_6", 23: "quadrilateral_8", 24: "tetrahedron_10", 25: "hexahedron_20", 26: "wedge_15",
         27: "pyramid_13"}
WEDGES = {13: [0, 2, 1, 3, 5, 4], 26: [0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13]}
VOIGT = [0, 1, 2, 3, 4, 5]
FULL = [0, 4, 8, 1, 5, 2]


def plain(values):
    return [None if math.isnan(v) else float(v) for v in np.ravel(values)]


def result(name, values, mapping):
    """An array of items of one of the usual sizes; None for what becomes no result."""
    values = np.asarray(values, float)
    values = values.reshape(len(values), -1)
    kind = {1: "scalar", 3: "displacement" if name in ("Displacement", "u") else "vector", 6: "tensor", 9: "tensor"}.get(values.shape[1])
    if kind is None:
        return None
    return [kind, mapping, plain(values[:, FULL] if values.shape[1] == 9 else values)]


def results(points, cells):
    found = {}
    for arrays, mapping in ((points, "node"), (cells, "element")):
        for name, values in arrays.items():
            if name not in ("Ids", "vtkGhostType") and (one := result(name, values, mapping)):
                found[name + "/" + mapping] = one
    return found


def elements_of(types, connectivity, offsets):
    elements, begin = [], 0
    for kind, end in zip(types, offsets):
        nodes = connectivity[begin:end]
        if kind in WEDGES:
            nodes = [nodes[i] for i in WEDGES[kind]]
        elements.append([TYPES[kind]] + [int(n) for n in nodes])
        begin = end
    return elements


def part(name, points, elements, found):
    return {"name": name, "nodes": plain(points), "elements": elements, "results": found}


def numbers(array):
    """The values of a DataArray in ASCII."""
    values = [float(word) for word in array.text.split()]
    return np.array(values).reshape(-1, int(array.get("NumberOfComponents", 1)))


def vtu(path, name=""):
    piece = ElementTree.parse(path).getroot().find("UnstructuredGrid/Piece")
    data = [{a.get("Name"): numbers(a) for a in piece.find(tag) or [] if a.tag == "DataArray" and a.get("type") != "String"}
            for tag in ("PointData", "CellData")]
    cells = {a.get("Name"): [int(w) for w in a.text.split()] for a in piece.find("Cells") if a.get("Name") in ("connectivity", "offsets", "types")}
    points = numbers(piece.find("Points/DataArray"))
    elements = elements_of(cells["types"], cells["connectivity"], cells["offsets"])
    return part(name, points, elements, results(*data)), data


def without(one, ghosts):
    """Leaves elements out that another piece has; all nodes stay."""
    kept = [i for i, ghost in enumerate(ghosts) if not ghost]
    one["elements"] = [one["elements"][i] for i in kept]
    for found in one["results"].values():
        if found[1] == "element":
            width = len(found[2]) // len(ghosts)
            found[2] = [v for i in kept for v in found[2][i * width:(i + 1) * width]]


def pvtu():
    pieces = []
    for i in range(2):
        one, data = vtu("row_%d.vtu" % i, "row_%d" % i)
        without(one, data[1]["vtkGhostType"].ravel())
        pieces.append(one)
    return pieces


def legacy(path):
    words = iter(open(path).read().split())
    points, cells, arrays, types = None, {}, {}, None
    target = None
    for word in words:
        if word == "POINTS":
            count = int(next(words))
            next(words)
            points = np.array([float(next(words)) for _ in range(3 * count)])
        elif word == "CELLS":
            counts = [int(next(words)), int(next(words))]
        elif word in ("OFFSETS", "CONNECTIVITY"):
            next(words)
            cells[word] = [int(next(words)) for _ in range(counts[word == "CONNECTIVITY"])]
        elif word == "CELL_TYPES":
            types = [int(next(words)) for _ in range(int(next(words)))]
        elif word in ("POINT_DATA", "CELL_DATA"):
            target = arrays.setdefault(word, {})
            next(words)
        elif word == "GLOBAL_IDS":
            next(words), next(words)
        elif word == "FIELD":
            next(words)
            for _ in range(int(next(words))):
                name = next(words)
                if name == "METADATA":  # Names of components stand between arrays.
                    while name != "Name":
                        name = next(words)
                    next(words)
                components, tuples = int(next(words)), int(next(words))
                next(words)
                target[name] = np.array([float(next(words)) for _ in range(components * tuples)]).reshape(tuples, components)
    elements = elements_of(types, cells["CONNECTIVITY"], cells["OFFSETS"][1:])
    return part("", points, elements, results(arrays["POINT_DATA"], arrays["CELL_DATA"]))


NODAL = {"DISPL": ("displacement", ["DISPLX", "DISPLY", "DISPLZ"]), "s": ("tensor", ["sxx", "syy", "szz", "sxy", "syz", "szx"]),
         "TEMP": ("scalar", ["TEMP"]), "LONE_X": ("scalar", ["LONE_X"])}
ELEMENT = {"STRESS": ("tensor", ["STRESSXX", "STRESSYY", "STRESSZZ", "STRESSXY", "STRESSYZ", "STRESSXZ"]),
           "Damage": ("scalar", ["Damage"])}
EXODUS_TYPES = {"HEX": "hexahedron", "WEDGE": "wedge_15"}


def exodus(path):
    file = netCDF4.Dataset(path)
    file.set_auto_mask(False)

    def texts(name):
        return [b"".join(row).split(b"\0")[0].decode() for row in file[name][:]]

    names = [texts("name_nod_var"), texts("name_elem_var")]
    points = np.stack([file["coord" + axis][:] for axis in "xyz"], 1)
    states = []
    for step, time in enumerate(file["time_whole"][:]):
        parts = []
        for block, name in enumerate(texts("eb_names")):
            connect = file["connect%d" % (block + 1)]
            nodes = sorted(set(connect[:].ravel() - 1))
            own = [[nodes.index(n - 1) for n in row] for row in connect[:]]
            if connect.elem_type == "WEDGE":
                own = [[row[i] for i in (0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11)] for row in own]
            found = {}
            for key, (kind, parts_of) in NODAL.items():
                values = [file["vals_nod_var%d" % (names[0].index(n) + 1)][step][nodes] for n in parts_of]
                found[key + "/node"] = [kind, "node", plain(np.stack(values, 1))]
            for key, (kind, parts_of) in ELEMENT.items():
                variables = ["vals_elem_var%deb%d" % (names[1].index(n) + 1, block + 1) for n in parts_of]
                there = variables[0] in file.variables
                values = np.stack([file[v][step] for v in variables], 1) if there else np.full((len(own), len(parts_of)), np.nan)
                found[key + "/element"] = [kind, "element", plain(values)]
            one = part(name, points[nodes], [[EXODUS_TYPES[connect.elem_type]] + row for row in own], found)
            one["nodeIds"] = [int(i) for i in file["node_num_map"][:][nodes]]
            one["elementIds"] = [int(file["elem_num_map"][block])]
            parts.append(one)
        states.append({"time": float(time), "parts": parts})
    return states


ENSIGHT_TYPES = {"hexa8": "hexahedron", "penta6": "wedge", "hexa20": "hexahedron_20"}


def ensight_geometry(path):
    lines = open(path).read().split("\n")
    parts, at = [], 4
    while at < len(lines) and lines[at] == "part":
        name, count = lines[at + 2], int(lines[at + 4])
        points = np.array([float(v) for v in lines[at + 5:at + 5 + 3 * count]]).reshape(3, count).T
        at += 5 + 3 * count
        nodes = [int(n) - 1 for n in lines[at + 2].split()]
        parts.append((name, points, [[ENSIGHT_TYPES[lines[at]]] + nodes]))
        at += 3
    return parts


def ensight_variable(path, components, parts, on_nodes):
    lines = open(path).read().split("\n")
    values, at = [np.full((len(points) if on_nodes else 1, components), np.nan) for _, points, _ in parts], 1
    while at < len(lines) and lines[at] == "part":
        number = int(lines[at + 1]) - 1
        count = len(values[number])
        values[number] = np.array([float(v) for v in lines[at + 3:at + 3 + components * count]]).reshape(components, count).T
        at += 3 + components * count
    # Tensors are 11 22 33 12 13 23.
    return [v[:, [0, 1, 2, 3, 5, 4]] if components == 6 else v for v in values]


def ensight(variables, geometry):
    states = []
    for step, time in enumerate((0.5, 1.5)):
        shape = ensight_geometry(geometry(step))
        parts = [part(name, points, elements, {}) for name, points, elements in shape]
        for name, on_nodes, components in variables:
            mapping = "node" if on_nodes else "element"
            for one, values in zip(parts, ensight_variable("frame_%s.%d" % (name, step), components, shape, on_nodes)):
                one["results"][name + "/" + mapping] = result(name, values, mapping)
        states.append({"time": time, "parts": parts})
    return states


def ensight_binary():
    def floats(path, begin, count):
        return np.array(struct.unpack("<%df" % count, open(path, "rb").read()[begin:begin + 4 * count]), float)

    # Texts have 80 bytes: "C Binary", two of description, node ids, element ids, "part", number, name, "coordinates", count.
    raw = open("binary.0.00000.geo", "rb").read()
    begin = raw.index(b"coordinates") + 80
    count = struct.unpack("<i", raw[begin:begin + 4])[0]
    begin += 4
    if b"node id given" in raw:
        begin += 4 * count
    points = floats("binary.0.00000.geo", begin, 3 * count).reshape(3, count).T
    name = raw[raw.index(b"part") + 84:][:80].split(b"\0")[0].decode().strip()
    kinds = {b"hexa8": "hexahedron"}
    cells = raw.index(b"hexa8") + 84 + (4 if b"element id given" in raw else 0)
    nodes = struct.unpack("<8i", raw[cells:cells + 32])
    found = {}
    for variable, components in (("p_n", 1), ("Velocity_n", 3)):
        values = floats("binary.0.00000_n." + variable[:-2], 80 + 80 + 4 + 80, components * count).reshape(components, count).T
        found[variable + "/node"] = result(variable, values, "node")
    found["Damage_c/element"] = result("Damage", floats("binary.0.00000_c.Damage", 80 + 80 + 4 + 80, 1).reshape(1, 1), "element")
    return [{"time": None, "parts": [part(name, points, [[kinds[b"hexa8"]] + [n - 1 for n in nodes]], found)]}]


def at_no_time(*parts):
    return [{"time": None, "parts": list(parts)}]


def undefined_like(found, elements, nodes):
    width = {"scalar": 1, "vector": 3, "displacement": 3, "tensor": 6}[found[0]]
    return found[:2] + [[None] * width * (nodes if found[1] == "node" else elements)]


def complete(states):
    """A result that only some parts of a state have is undefined on the others."""
    for state in states:
        every = {}
        for one in state["parts"]:
            every.update(one["results"])
        for one in state["parts"]:
            for key, found in every.items():
                one["results"].setdefault(key, undefined_like(found, len(one["elements"]), len(one["nodes"]) // 3))
    return states


zoo = vtu("zoo_ascii.vtu")[0]
empty = part("part 1", [], [], {})
expected = {"zoo_ascii.vtu": at_no_time(zoo)}
expected["meshio.vtu"] = at_no_time(vtu("meshio.vtu")[0])
expected["row.pvtu"] = at_no_time(*pvtu())
expected["blocks.vtm"] = at_no_time(*[vtu("blocks/blocks_%d.vtu" % i, name)[0] for i, name in enumerate(("wing/skin", "wing/spar", "tail"))])
expected["series.pvd"] = [{"time": 0.25, "parts": [vtu("series_a0.vtu", "part 0")[0], empty]},
                          {"time": 0.5, "parts": [vtu("series_a1.vtu", "part 0")[0], vtu("series_b.vtu", "part 1")[0]]}]
expected["zoo_ascii.vtk"] = at_no_time(legacy("zoo_ascii.vtk"))
expected["bar.ex2"] = exodus("bar.ex2")
expected["frame.case"] = ensight([("Temp", True, 1), ("Displacement", True, 3), ("Stress", True, 6), ("Flux", False, 3), ("Strain", False, 6), ("Damage", False, 1)], lambda step: "frame.geo")
expected["moving.case"] = ensight([("Temp", True, 1)], lambda step: "moving.geo%d" % step)
expected["binary.0.case"] = ensight_binary()

expected = {name: complete(states) for name, states in expected.items()}
expected.update({"zoo_binary.vtu": "zoo_ascii.vtu", "zoo_raw.vtu": "zoo_ascii.vtu", "zoo_binary.vtk": "zoo_ascii.vtk"})

with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
