#!/usr/bin/python3
"""Writes what this folder's files hold as expected.json, by a parser that shares nothing with the reader's: it cuts a file
into words and goes by them.

For each file its states; for each state its time and parts; for each part the name, nodes, elements as type and nodes,
and results as [type, mapping, values], null being undefined.
"""
import itertools
import json
import math
import re

import numpy as np

WORD = re.compile(r'"[^"\n]*"|\'[^\'\n]*\'|#[^\n]*|[=()\[\]]|[^\s,=()\[\]"\'#]+')
RECORDS = ("TITLE", "VARIABLES", "ZONE", "TEXT", "GEOMETRY", "DATASETAUXDATA")
FE = {"LINESEG": ("beam", 2), "TRIANGLE": ("triangle", 3), "QUADRILATERAL": ("quadrilateral", 4), "TETRAHEDRON": ("tetrahedron", 4),
      "BRICK": ("hexahedron", 8)}


def number(word):
    word = word.upper().replace("D", "E")
    if word == "NAN":
        return math.nan
    return float(re.sub(r"(?<=[\d.])([+-])", r"e\1", word))


def values_of(words):
    for word in words:
        times, _, value = word.rpartition("*")
        yield from [value] * int(times or 1)


def parse(path):
    """The file's records as lists of words."""
    records, line_begin = [], True
    text = open(path).read()
    position = 0
    for match in WORD.finditer(text):
        word = match.group()
        line_begin = text.rfind("\n", 0, match.start()) >= position - 1 or not records
        position = match.end()
        if word.startswith("#"):
            continue
        if line_begin and word.upper() in RECORDS:
            records.append([word.upper()])
        else:
            records[-1].append(word)
    return records


def bare(word):
    return word[1:-1] if word[0] in "\"'" else word


def variables_of(words, count):
    """'( [ 2-3 ] = X )' as pairs of indexes and values."""
    chosen, inside, value_next = [], None, False
    for word in words:
        if word == "[":
            inside = []
        elif word == "]":
            chosen.append([inside, None])
            inside = None
        elif word == "=":
            value_next = True
        elif word in "()":
            pass
        elif inside is not None:
            first, _, last = word.partition("-")
            inside += range(int(first) - 1, int(last or first))
        elif value_next:
            chosen[-1][1] = word
            value_next = False
        else:
            times, _, value = word.rpartition("*")
            begin = sum(len(c[0]) for c in chosen)
            chosen.append([list(range(begin, begin + int(times or 1))), value])
    return chosen


def zone_of(words, variables, zones):
    header, i = {}, 1
    while i < len(words) and re.match("[A-Za-z]", words[i]) and words[i].upper() != "NAN":
        key = words[i].upper()
        i += 2 if key == "AUXDATA" else 1
        assert words[i] == "=", words[i - 1:i + 2]
        if words[i + 1] in "([":
            depth, begin = 0, i + 1
            while True:
                i += 1
                depth += words[i] in "([" and 1 or words[i] in ")]" and -1
                if depth == 0:
                    break
            header[key] = words[begin:i + 1]
        else:
            i += 1
            header[key] = words[i]
        i += 1
    numbers = values_of(words[i:])
    count = len(variables)
    cell_centred = [False] * count
    for indexes, value in variables_of(header.get("VARLOCATION", []), count):
        for v in indexes:
            cell_centred[v] = value == "CELLCENTERED"
    kind = header.get("ET", header.get("ZONETYPE", "ORDERED")).upper().replace("FE", "")
    packing = header.get("DATAPACKING", header.get("F", "BLOCK" if any(cell_centred) else "POINT")).upper().replace("FE", "")
    sizes = [int(header.get(axis, 1)) for axis in "IJK"]
    if kind == "ORDERED":
        nodes, cells = math.prod(sizes), math.prod(max(s - 1, 1) for s in sizes)
    else:
        nodes, cells = int(header.get("N", header.get("NODES"))), int(header.get("E", header.get("ELEMENTS")))
    columns = [None] * count
    other = set()
    for indexes, value in variables_of(header.get("PASSIVEVARLIST", []), count):
        other.update(indexes)
    for indexes, value in variables_of(header.get("VARSHARELIST", []), count):
        other.update(indexes)
        for v in indexes:
            columns[v] = zones[int(value or len(zones)) - 1]["columns"][v]
    own = [v for v in range(count) if v not in other]
    if packing == "BLOCK":
        for v in own:
            columns[v] = (cell_centred[v], [number(next(numbers)) for _ in range(cells if cell_centred[v] else nodes)])
    else:
        table = [[number(next(numbers)) for _ in own] for _ in range(nodes)]
        for place, v in enumerate(own):
            columns[v] = (False, [row[place] for row in table])
    if kind == "ORDERED":
        elements = ordered(sizes)
    elif "CONNECTIVITYSHAREZONE" in header:
        elements = zones[int(header["CONNECTIVITYSHAREZONE"]) - 1]["elements"]
    else:
        name, width = FE[kind]
        elements = [collapsed(name, [int(next(numbers)) - 1 for _ in range(width)]) for _ in range(cells)]
    assert next(numbers, None) is None
    axes = {axis_of(v): i for i, v in enumerate(variables) if axis_of(v) is not None}
    points = np.array([columns[axes[a]][1] if a in axes else [0.0] * nodes for a in range(3)]).T
    for element in elements:
        if element[0] == "wedge":
            n = [points[i] for i in element[1:]]
            if np.linalg.det([n[1] - n[0], n[2] - n[0], n[3] - n[0]]) < 0:
                element[1:] = [element[i] for i in (1, 3, 2, 4, 6, 5)]
    return {"title": bare(header["T"]) if "T" in header else "Zone %d" % (len(zones) + 1), "columns": columns, "elements": elements,
            "nodes": nodes, "cells": cells, "time": float(header["SOLUTIONTIME"]) if "SOLUTIONTIME" in header else None,
            "strand": int(header.get("STRANDID", 0))}


CORNERS = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)]
# Lists of corners that fall together, and the order of those that are left.
BRICKS = [("tetrahedron", [(2, 3), (4, 5, 6, 7)], (0, 1, 2, 4)), ("pyramid", [(4, 5, 6, 7)], (0, 1, 2, 3, 4)), ("wedge", [(2, 3), (6, 7)], (0, 1, 2, 4, 5, 6))]


def rotations():
    """By matrices: permuted axes with signs, where that is no mirror."""
    for axes in itertools.permutations(range(3)):
        for signs in itertools.product((1, -1), repeat=3):
            matrix = np.zeros((3, 3))
            matrix[range(3), axes] = signs
            if np.linalg.det(matrix) > 0:
                yield [CORNERS.index(tuple(int(c) for c in np.round(matrix @ (np.array(p) - 0.5) + 0.5))) for p in CORNERS]


def collapsed(name, n):
    if name == "hexahedron":
        for kind, same, order in BRICKS:
            fits = [[r[i] for i in order] for r in rotations() if all(len({n[r[i]] for i in group}) == 1 for group in same)]
            if fits:
                return [kind] + [n[i] for i in min(fits)]
    if name == "quadrilateral" and n[2] == n[3]:
        return ["triangle"] + n[:3]
    return [name] + n


def ordered(sizes):
    ni, nj, nk = sizes
    elements = []
    for k in range(max(nk - 1, 1)):
        for j in range(max(nj - 1, 1)):
            for i in range(max(ni - 1, 1)):
                def node(di, dj, dk):
                    return i + di + ni * (j + dj + nj * (k + dk))
                if min(sizes) > 1:
                    elements.append(["hexahedron"] + [node(*d, e) for e in (0, 1) for d in ((0, 0), (1, 0), (1, 1), (0, 1))])
                elif nk == 1 and nj > 1:
                    elements.append(["quadrilateral"] + [node(*d, 0) for d in ((0, 0), (1, 0), (1, 1), (0, 1))])
                elif nj == 1 and nk > 1:
                    elements.append(["quadrilateral"] + [node(d, 0, e) for d, e in ((0, 0), (1, 0), (1, 1), (0, 1))])
                else:
                    elements.append(["beam", i, i + 1] if ni > 1 else ["point", 0])
    return elements


def plain(values):
    return [None if math.isnan(v) else v for v in values]


GROUPS = {"Displacement": ("displacement", ["DisplacementX", "DisplacementY", "DisplacementZ"]), "Velocity": ("vector", ["VelocityX", "VelocityY", "VelocityZ"]),
          "Momentum": ("vector", ["MomentumX", "MomentumY", "MomentumZ"]), "s": ("tensor", ["sxx", "syy", "szz", "sxy", "syz", "szx"])}


def axis_of(variable):
    name = re.split(r"[ (\[,]", variable.lower())[0].replace("coordinate", "")
    return "xyz".index(name) if name in ("x", "y", "z") else None


def part_of(zone, name, variables, there):
    """`there` are the (variable, is of cells) that the state has."""
    axes = {axis_of(v): i for i, v in enumerate(variables) if axis_of(v) is not None}
    points = []
    for n in range(zone["nodes"] if zone else 0):
        points += [zone["columns"][axes[a]][1][n] if a in axes else 0.0 for a in range(3)]
    results = {}
    grouped = {m: g for g, (_, members) in GROUPS.items() for m in members}
    for variable, of_cells in there:
        group = grouped.get(variable)
        kind, members = GROUPS[group] if group else ("scalar", [variable])
        columns = [zone["columns"][variables.index(m)] if zone else None for m in members]
        count = (zone["cells"] if of_cells else zone["nodes"]) if zone else 0
        columns = [c[1] if c and c[0] == of_cells else [math.nan] * count for c in columns]
        mapping = "element" if of_cells else "node"
        results[(group or variable) + "/" + mapping] = [kind, mapping, plain([c[i] for i in range(count) for c in columns])]
    return {"name": name, "nodes": points, "elements": zone["elements"] if zone else [], "results": results}


def states_of(path):
    zones, variables = [], []
    for record in parse(path):
        if record[0] == "VARIABLES":
            variables = [bare(w) for w in record[2:]]
        elif record[0] == "ZONE":
            zones.append(zone_of(record, variables, zones))
    strands = any(z["strand"] > 0 for z in zones)
    moving = [z["time"] is not None and (z["strand"] > 0 or not strands) for z in zones]
    times = sorted({z["time"] for z, m in zip(zones, moving) if m}) or [None]
    parts, seen = {}, {}
    for i, (zone, is_moving) in enumerate(zip(zones, moving)):
        if not is_moving:
            parts[("static", i)] = (zone["title"], {t: zone for t in times})
            continue
        at = (zone["strand"], zone["time"])
        seen[at] = seen.get(at, 0) + 1
        parts.setdefault((zone["strand"], seen[at]), (zone["title"], {}))[1][zone["time"]] = zone
    names, states = {}, []
    unique = []
    for title, _ in parts.values():
        names[title] = names.get(title, 0) + 1
        unique.append(title if names[title] == 1 else "%s (%d)" % (title, names[title]))
    for time in times:
        own = [zones_at.get(time) for _, zones_at in parts.values()]
        there = {(v, z["columns"][i][0]) for z in own if z for i, v in enumerate(variables) if z["columns"][i] and axis_of(v) is None}
        states.append({"time": time, "parts": [part_of(z, n, variables, sorted(there)) for n, z in zip(unique, own)]})
    return states


FILES = ("duct.tec", "meshio_solids.tec", "meshio_shells.tec", "meshio_tets.dat", "meshio_triangle.tec", "ordered.dat", "elements.tp", "times.tec", "still.tec")
with open("expected.json", "w") as out:
    expected = {name: states_of(name) for name in FILES}
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
