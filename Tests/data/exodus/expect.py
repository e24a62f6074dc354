#!/usr/bin/python3
"""Writes what this folder's files hold as expected.json, in the form that vtk/expect.py tells, read by netCDF4."""
import json

import netCDF4
import numpy as np

TYPES = {("SHELL4", 4): "quadrilateral", ("TRI3", 3): "triangle", ("BAR2", 2): "beam", ("HEX27", 27): "hexahedron_20"}
HEX_20 = [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15]


def texts(file, name, count):
    rows = file[name][:] if name in file.variables else [[b""]] * count
    return [b"".join(row).split(b"\0")[0].decode().strip() for row in rows]


def coordinates(file):
    if "coord" in file.variables:
        axes = list(file["coord"][:])
    else:
        axes = [file["coord" + axis][:] for axis in "xyz" if "coord" + axis in file.variables]
    count = len(file.dimensions["num_nodes"])
    return np.stack(axes + [np.zeros(count)] * (3 - len(axes)), 1)


def polygons(nodes, counts):
    """Elements, and of which polygon each is a piece."""
    elements, sources, begin = [], [], 0
    for i, count in enumerate(counts):
        own = list(nodes[begin:begin + count])
        pieces = [own] if count == 4 else [[own[0], own[k], own[k + 1]] for k in range(1, count - 1)]
        elements += [["quadrilateral" if count == 4 else "triangle"] + piece for piece in pieces]
        sources += [i] * len(pieces)
        begin += count
    return elements, sources


def block_of(file, number):
    """Elements by numbers of nodes, all nodes, and the file's element of each."""
    connect = file.variables.get("connect%d" % number)
    kind = connect.elem_type if connect is not None else ""
    if kind == "NSIDED":
        elements, sources = polygons(connect[:], file["ebepecnt%d" % number][:])
        return elements, sorted(set(connect[:])), sources
    if connect is None or (kind, connect.shape[1]) not in TYPES:
        return [], [], []
    rows = [[row[i] for i in HEX_20] if kind == "HEX27" else list(row) for row in connect[:]]
    return [[TYPES[kind, connect.shape[1]]] + row for row in rows], sorted(set(connect[:].ravel())), list(range(len(rows)))


def exodus(path):
    file = netCDF4.Dataset(path)
    file.set_auto_mask(False)
    ids = file["eb_prop1"][:]
    names = texts(file, "eb_names", len(ids))
    points = coordinates(file)
    times = file["time_whole"][:] if file["time_whole"].shape[0] else [None]
    states, told = [], {}
    order = sorted(range(len(ids)), key=lambda b: ids[b])
    unique = []
    for b in order:
        name = names[b] or "Unnamed block ID: %d" % ids[b]
        told[name] = told.get(name, 0) + 1
        unique.append(name if told[name] == 1 else "%s (%d)" % (name, told[name]))
    for step, time in enumerate(times):
        parts = []
        for b, name in zip(order, unique):
            elements, nodes, sources = block_of(file, b + 1)
            place = {n: i for i, n in enumerate(nodes)}
            found = {}
            if "vals_nod_var1" in file.variables:
                found["T/node"] = ["scalar", "node", [float(file["vals_nod_var1"][step][n - 1]) for n in nodes]]
                values = file.variables.get("vals_elem_var1eb%d" % (b + 1))
                found["Damage/element"] = ["scalar", "element",
                                           [None if values is None else float(values[step][s]) for s in sources]]
            one = {"name": name, "nodes": [float(x) for n in nodes for x in points[n - 1]],
                   "elements": [[e[0]] + [place[n] for n in e[1:]] for e in elements], "results": found}
            parts.append(one)
        states.append({"time": None if time is None else float(time), "parts": parts})
    return states


names = ["zoo.e", "sevenside.exo", "rect.exo"]
with open("expected.json", "w") as out:
    out.write(json.dumps({name: exodus(name) for name in names}, separators=(",", ":")).replace('},{"name"', '},\n{"name"') + "\n")
