#!/usr/bin/python3
"""Writes what this folder's cases hold as expected.json, by a reader of EnSight Gold of its own (python3-numpy): ASCII
files as lists of words, binary ones by their layout. Cases that only differ in the form of their files must be alike.

expected.json is as that of ../vtk: for each case its states; for each state its time and parts; for each part the name,
nodes, elements as type and nodes, and results as [type, mapping, values], null being undefined.
"""
import json
import math
import os
import re

import numpy as np

TYPES = {"point": ("point", 1), "bar2": ("beam", 2), "bar3": ("beam_3", 3), "tria3": ("triangle", 3), "tria6": ("triangle_6", 6),
         "quad4": ("quadrilateral", 4), "quad8": ("quadrilateral_8", 8), "tetra4": ("tetrahedron", 4), "tetra10": ("tetrahedron_10", 10),
         "pyramid5": ("pyramid", 5), "pyramid13": ("pyramid_13", 13), "penta6": ("wedge", 6), "penta15": ("wedge_15", 15),
         "hexa8": ("hexahedron", 8), "hexa20": ("hexahedron_20", 20)}
KINDS = {"scalar": ("scalar", 1), "vector": ("vector", 3), "tensor symm": ("tensor", 6), "tensor asym": ("tensor", 9)}
ORDERS = {1: [0], 3: [0, 1, 2], 6: [0, 1, 2, 3, 5, 4], 9: [0, 4, 8, 1, 5, 2]}


class Ascii:
    def __init__(self, data):
        self.lines = [line for line in data.decode().split("\n") if not line.startswith("#")]
        self.words = []

    def text(self):
        assert not self.words
        return self.lines.pop(0).strip() if self.lines else ""

    def numbers(self, count, kind):
        while len(self.words) < count:
            self.words += self.lines.pop(0).split()
        found, self.words = self.words[:count], self.words[count:]
        return np.array([kind(word) for word in found])

    def ints(self, count):
        return self.numbers(count, int)

    def floats(self, count):
        return self.numbers(count, float)


class Binary:
    def __init__(self, data, is_fortran, order):
        self.data, self.is_fortran, self.order, self.at = data, is_fortran, order, 0

    def take(self, size):
        mark = 4 if self.is_fortran else 0
        found = self.data[self.at + mark:self.at + mark + size]
        self.at += size + 2 * mark
        return found

    def text(self):
        return self.take(80).split(b"\0")[0].decode(errors="replace").strip()

    def ints(self, count):
        return np.frombuffer(self.take(4 * count), self.order + "i4")

    def floats(self, count):
        return np.frombuffer(self.take(4 * count), self.order + "f4").astype(float)


def open_file(path, form, step):
    data = open(path, "rb").read()
    if form == "ascii":
        if step is not None:
            data = data.split(b"BEGIN TIME STEP\n")[step + 1].split(b"END TIME STEP")[0]
        return Ascii(data)
    if step is not None:
        begin = [m.start() for m in re.finditer(b"BEGIN TIME STEP", data)][step] + 80
        end = [m.start() for m in re.finditer(b"END TIME STEP", data)][step]
        data = data[begin + 4:end - 4] if form == "fortran" else data[begin:end]
    return Binary(data, form == "fortran", ">" if form == "big" else "<")


def form_of(path):
    head = open(path, "rb").read(84)
    if b"Fortran" in head:
        return "fortran"
    if not head.startswith(b"C Binary"):
        return "ascii"
    data = open(path, "rb").read()
    return "little" if data[re.search(b"part[ \0]{76}", data).end()] else "big"


def mesh_of(path, step, form):
    file = open_file(path, form, step)
    if form != "ascii" and step in (None,):
        file.text()
    file.text(), file.text()
    node_ids, element_ids = file.text().split()[-1], file.text().split()[-1]
    parts, word = [], file.text()
    if word == "extents":
        [file.floats(2) for _ in range(3)] if form == "ascii" else file.floats(6)
        word = file.text()
    while word == "part":
        part = {"number": int(file.ints(1)[0]), "name": file.text(), "elements": [], "sections": [], "is_block": False}
        word = file.text()
        if word.startswith("block"):
            word = block(file, part, word, form)
            parts.append(part)
            continue
        assert word == "coordinates", word
        count = int(file.ints(1)[0])
        if node_ids in ("given", "ignore"):
            ids = file.ints(count)
            if node_ids == "given":
                part["nodeIds"] = [int(n) for n in ids]
        part["nodes"] = np.stack([file.floats(count) for _ in range(3)], 1)
        word, ids = file.text(), []
        while word and word != "part":
            count = int(file.ints(1)[0])
            if element_ids in ("given", "ignore"):
                ids += list(file.ints(count))
            part["sections"].append((word, count))
            part["elements"] += elements_of(file, word, count)
            word = file.text()
        # Elements that are left out or split lose their numbers.
        if element_ids == "given" and all(len(e) == 1 and e[0] for e in part["elements"]):
            part["elementIds"] = [int(n) for n in ids]
        parts.append(part)
    return parts


def elements_of(file, kind, count):
    """For each element of the file those that it becomes."""
    if kind == "nfaced":
        faces = file.ints(count)
        for size in file.ints(int(sum(faces))) if isinstance(file, Ascii) else [sum(file.ints(int(sum(faces))))]:
            file.ints(int(size))
        return [[]] * count
    if kind == "nsided":
        sizes = file.ints(count)
        nodes = [int(n) - 1 for n in file.ints(int(sum(sizes)))]
        ends = np.cumsum(sizes)
        polygons = [nodes[end - size:end] for size, end in zip(sizes, ends)]
        return [[["triangle", p[0], p[i - 1], p[i]] for i in range(2, len(p))] if len(p) != 4 else [["quadrilateral"] + p] for p in polygons]
    name, width = TYPES[kind.replace("g_", "")]
    nodes = file.ints(count * width).reshape(count, width) - 1
    return [[] if kind.startswith("g_") else [[name] + [int(n) for n in row]] for row in nodes]


def block(file, part, keyword, form):
    size = [int(n) for n in file.ints(3)]
    if "range" in keyword:
        limits = file.ints(6)
        size = [int(limits[2 * a + 1] - limits[2 * a] + 1) for a in range(3)]
    count = int(np.prod(size))
    if "uniform" in keyword:
        origin, step = file.floats(3), file.floats(3)
        axes = [origin[a] + step[a] * np.arange(size[a]) for a in range(3)]
    elif "rectilinear" in keyword:
        axes = [file.floats(n) for n in size]
    else:
        axes = None
        part["nodes"] = np.stack([file.floats(count) for _ in range(3)], 1)
    if axes:
        part["nodes"] = np.array([(x, y, z) for z in axes[2] for y in axes[1] for x in axes[0]])
    visible = file.ints(count) != 0 if "iblanked" in keyword else np.ones(count, bool)
    cells = [max(n - 1, 1) for n in size]
    ghosts = np.zeros(int(np.prod(cells)), int)
    word = file.text()
    while word in ("ghost_flags", "node_ids"):
        if word == "ghost_flags":
            ghosts = file.ints(len(ghosts))
        else:
            part["nodeIds"] = [int(n) for n in file.ints(count)]
        word = file.text()
    part["is_block"] = True
    for k in range(cells[2]):
        for j in range(cells[1]):
            for i in range(cells[0]):
                ring = [(0, 0), (1, 0), (1, 1), (0, 1)]
                nodes = [i + a + size[0] * (j + b + size[1] * (k + c)) for c in range(2 if size[2] > 1 else 1) for a, b in ring]
                is_there = all(visible[nodes]) and not ghosts[len(part["elements"])]
                kind = "hexahedron" if size[2] > 1 else "quadrilateral"
                part["elements"].append([[kind] + nodes] if is_there else [])
    return word


def values_of(path, step, form, width, on_nodes, parts):
    file = open_file(path, form, step)
    file.text()
    found = {p["number"]: np.full((len(p["nodes"]) if on_nodes else len(p["elements"]), width), np.nan) for p in parts}
    known, seen = {p["number"]: p for p in parts}, set()
    word = file.text()
    while word == "part":
        number = int(file.ints(1)[0])
        seen.add(number)
        word = file.text()
        while word and word not in ("part", "END TIME STEP"):
            key = word.split()[0]
            first, count = 0, len(found[number])
            if key not in ("coordinates", "block"):
                for section, count in known[number]["sections"]:
                    if section == key:
                        break
                    first += count
            undefined = file.floats(1)[0] if word.endswith("undef") else None
            items = np.arange(count)
            if word.endswith("partial"):
                items = file.ints(int(file.ints(1)[0])) - 1
            values = np.stack([file.floats(len(items)) for _ in range(width)], 1)
            if undefined is not None:
                values = np.where(values == undefined, np.nan, values)
            found[number][first + items] = values
            word = file.text()
    return {number: values[:, ORDERS[width]] for number, values in found.items()}


def plain(values):
    return [None if math.isnan(v) else float(v) for v in np.ravel(values)]


def words_of(line):
    return [a or b for a, b in re.findall(r'"([^"]*)"|(\S+)', line)]


class Case:
    """What a case file says, as far as the cases of this folder go."""

    def __init__(self, path):
        self.folder, self.variables, self.times, self.files = os.path.dirname(path), [], {}, {}
        section, last = "", None
        for line in open(path):
            line = line.split("#")[0].strip()
            if not line:
                continue
            if line in ("FORMAT", "GEOMETRY", "VARIABLE", "TIME", "FILE", "MATERIAL", "SCRIPTS"):
                section, last = line, None
                continue
            key, _, rest = line.partition(":")
            words = words_of(rest)
            if ":" not in line:
                if last is not None:
                    last += words_of(line)
            elif section == "GEOMETRY" and key == "model":
                self.model = [w for w in words if w != "change_coords_only"]
                self.only_coordinates = "change_coords_only" in words
            elif section == "VARIABLE" and "complex" not in key and "constant" not in key and "measured" not in key:
                self.variables.append((key, words))
            elif section == "TIME":
                if key == "time set":
                    current = self.times.setdefault(int(words[0]), {"times": [], "numbers": [], "start": [0], "increment": [1]})
                else:
                    last = current.setdefault({"time values": "times", "filename numbers": "numbers", "number of steps": "steps",
                                               "filename start number": "start", "filename increment": "increment"}[key], [])
                    if key in ("filename start number", "filename increment"):
                        last.clear()
                    last += words
            elif section == "FILE":
                if key == "file set":
                    current = self.files.setdefault(int(words[0]), [])
                    index = None
                elif key == "filename index":
                    index = int(words[0])
                else:
                    current += [(index, i) for i in range(int(words[0]))]

    def place(self, words, step):
        """Of the words of a line that end with the file, at a step of its time set."""
        name = os.path.join(self.folder, words[-1])
        number, in_file = None, None
        sets = [int(w) for w in words[:-1]]
        if len(sets) > 1:
            number, in_file = self.files[sets[1]][step]
        elif "*" in name:
            times = self.times[sets[0] if sets else 1]
            number = int(times["numbers"][step]) if times["numbers"] else int(times["start"][0]) + step * int(times["increment"][0])
        return re.sub(r"\*+", lambda m: str(number).zfill(len(m.group())), name), in_file

    def times_of(self, words):
        """Those of the files; None when there is one for all times."""
        sets = [int(w) for w in words[:-1]]
        if "*" not in words[-1] and len(sets) < 2:
            return None
        return [float(t) for t in self.times[sets[0] if sets else 1]["times"]]


def states_of(path):
    case = Case(path)
    all_times = set(case.times_of(case.model) or [])
    for _, words in case.variables:
        all_times |= set(case.times_of(words[:-2] + words[-1:]) or [])
    states = []
    for time in sorted(all_times) or [None]:
        mesh_times = case.times_of(case.model)
        step = max(i for i, t in enumerate(mesh_times) if t <= time) if mesh_times else 0
        file, in_file = case.place(case.model, step)
        form = form_of(file)
        parts = mesh_of(file, in_file, form)
        if case.only_coordinates:
            for own, whole in zip(parts, mesh_of(*case.place(case.model, 0), form)):
                own["elements"], own["sections"] = whole["elements"], whole["sections"]
        found = [{} for _ in parts]
        for key, words in case.variables:
            sort, mapping = key.rsplit(" per ", 1)
            kind, width = KINDS[sort]
            times = case.times_of(words[:-2] + words[-1:])
            if times and time not in times:
                continue
            name = words[-2]
            kind = "displacement" if name in ("U", "Displacement") else kind
            file, in_file = case.place(words[:-2] + words[-1:], times.index(time) if times else 0)
            values = values_of(file, in_file, form, width, mapping == "node", parts)
            for one, part in zip(found, parts):
                own = values[part["number"]]
                if mapping == "element":
                    own = np.array([row for row, becomes in zip(own, part["elements"]) for _ in becomes])
                one[name + "/" + mapping] = [kind, mapping, plain(own)]
        states.append({"time": time, "parts": [
            {"name": part["name"], "nodes": plain(part["nodes"]), "elements": [e for becomes in part["elements"] for e in becomes], "results": one,
             **{key: part[key] for key in ("nodeIds", "elementIds") if key in part}} for part, one in zip(parts, found)]})
    return states


CASES = {"zoo_ascii.case": ["zoo_little.case", "zoo_big.case", "zoo_fortran.case"],
         "single_ascii.case": ["single_little.case", "single_fortran.case"],
         "blocks_ascii.case": ["blocks_little.case", "blocks_fortran.case"],
         "coordinates.case": [], "foam_ascii/cavity.case": [], "foam_binary/cavity.case": [], "foam_nodes/cavity.case": []}


def is_alike(a, b):
    if isinstance(a, dict):
        return a.keys() == b.keys() and all(is_alike(a[key], b[key]) for key in a)
    if isinstance(a, list):
        return len(a) == len(b) and all(is_alike(x, y) for x, y in zip(a, b))
    return abs(a - b) < 1e-5 if isinstance(a, float) else a == b


expected = {}
for case, others in CASES.items():
    expected[case] = states_of(case)
    for other in others:
        assert is_alike(states_of(other), expected[case]), other
        expected[other] = case

with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
