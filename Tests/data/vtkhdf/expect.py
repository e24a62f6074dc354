#!/usr/bin/python3
"""Writes what h5py (python3-h5py) finds in this folder's files as expected.json.

For each file its only state; the part's nodes, elements as type and nodes, and results as [type, mapping, values], null
being undefined.
"""
import itertools
import json
import math

import h5py
import numpy as np

TYPES = {1: "point", 3: "beam", 5: "triangle", 9: "quadrilateral", 10: "tetrahedron", 12: "hexahedron", 13: "wedge", 14: "pyramid",
         21: "beam_3", 22: "triangle_6", 23: "quadrilateral_8", 24: "tetrahedron_10", 25: "hexahedron_20", 26: "wedge_15",
         27: "pyramid_13"}
WEDGES = {13: [0, 2, 1, 3, 5, 4], 26: [0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13]}
KINDS = {1: "scalar", 3: "vector", 6: "tensor", 9: "tensor"}
NO_RESULTS = ("Ids", "GlobalCellIds", "vtkGhostType", "Pair", "vX", "vY", "vZ")


def plain(values):
    return [None if math.isnan(v) else float(v) for v in np.ravel(values)]


def result(name, values, count, mapping):
    values = np.asarray(values[()], float).reshape(count, -1)
    kind = "displacement" if name in ("Displacement", "u") else KINDS[values.shape[1]]
    if values.shape[1] == 9:  # XX XY XZ YX YY YZ ZX ZY ZZ
        values = values[:, [0, 4, 8, 1, 5, 2]]
    return values, kind, mapping


def results(root, points, cells, kept):
    found = {}
    for group, count, mapping in (("PointData", points, "node"), ("CellData", cells, "element")):
        for name, values in root[group].items():
            if name not in NO_RESULTS:
                values, kind, _ = result(name, values, count, mapping)
                found[name + "/" + mapping] = [kind, mapping, plain(values if mapping == "node" else values[kept])]
    data = root["CellData"]
    if "vX" in data:
        found["v/element"] = ["vector", "element", plain(np.stack([data["v" + axis][()] for axis in "XYZ"], 1))]
    return found


def grid(root):
    elements, kept = [], []
    first_point, first_offset, first_id = 0, 0, 0
    ghosts = root["CellData/vtkGhostType"][()] if "CellData/vtkGhostType" in root else np.zeros(len(root["Types"]))
    types = iter(root["Types"][()])
    cell = 0
    for points, cells, ids in zip(root["NumberOfPoints"], root["NumberOfCells"], root["NumberOfConnectivityIds"]):
        offsets = root["Offsets"][first_offset:first_offset + cells + 1]
        own = root["Connectivity"][first_id:first_id + ids]
        for begin, end in zip(offsets[:-1], offsets[1:]):
            kind = next(types)
            nodes = [int(n) + int(first_point) for n in own[begin:end]]
            if not ghosts[cell]:
                elements.append([TYPES[kind]] + [nodes[i] for i in WEDGES.get(kind, range(len(nodes)))])
                kept.append(cell)
            cell += 1
        first_point, first_offset, first_id = first_point + points, first_offset + cells + 1, first_id + ids
    return root["Points"][()], elements, kept, cell


def image(root):
    extent = [int(i) for i in root.attrs["WholeExtent"]]
    direction = np.array(root.attrs.get("Direction", np.eye(3))).reshape(3, 3)
    ranges = [range(extent[2 * a], extent[2 * a + 1] + 1) for a in range(3)]
    points = [root.attrs["Origin"] + direction @ (np.array([i, j, k]) * root.attrs["Spacing"])
              for k, j, i in itertools.product(ranges[2], ranges[1], ranges[0])]
    nx, ny, nz = (len(r) for r in ranges)
    ghosts = root["CellData/vtkGhostType"][()].ravel() if "CellData/vtkGhostType" in root else None
    elements, kept, cell = [], [], 0
    for k, j, i in itertools.product(*(range(max(n - 1, 1)) for n in (nz, ny, nx))):
        def node(di, dj, dk):
            return ((k + dk) * ny + j + dj) * nx + i + di
        if ny == 1:
            element = ["quadrilateral", node(0, 0, 0), node(1, 0, 0), node(1, 0, 1), node(0, 0, 1)]
        else:
            element = ["hexahedron"] + [node(di, dj, dk) for dk in (0, 1) for di, dj in ((0, 0), (1, 0), (1, 1), (0, 1))]
        if ghosts is None or not ghosts[cell]:
            elements.append(element)
            kept.append(cell)
        cell += 1
    return np.array(points), elements, kept, cell


def states(name):
    with h5py.File(name) as file:
        root = file["VTKHDF"]
        points, elements, kept, cells = (image if root.attrs["Type"] == b"ImageData" else grid)(root)
        part = {"name": "", "nodes": plain(points), "elements": elements, "results": results(root, len(points), cells, kept)}
        if "PointData/Ids" in root:
            part["nodeIds"] = [int(i) for i in root["PointData/Ids"]]
            part["elementIds"] = [int(i) for i in root["CellData/GlobalCellIds"]]
        return [{"time": None, "parts": [part]}]


expected = {name: states(name) for name in ("zoo.vtkhdf", "pieces.vtkhdf", "image.vtkhdf", "flat.hdf")}
with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('],"', '],\n"') + "\n")
