#!/usr/bin/python3
"""Writes what this folder's cases hold as expected.json, read from their ASCII files without VTK. The form is that of
../vtk/expect.py. cavity_binary and cavity_gz hold what cavity does.
"""
import json
import math
import os
import re

import numpy as np

SIZES = {"Scalar": 1, "Vector": 3, "SphericalTensor": 1, "SymmTensor": 6, "Tensor": 9}
OURS = {6: [0, 3, 5, 1, 4, 2], 9: [0, 4, 8, 1, 5, 2]}  # OpenFOAM's are XX XY XZ YY YZ ZZ and row by row.
DISPLACEMENTS = ("D", "pointD", "pointDisplacement", "cellDisplacement")


class Words:
    """The words of a file, and its dictionaries: numbers, texts, lists; {"uniform": value} and {"list": values}."""

    def __init__(self, path):
        self.path = path
        text = re.sub(r"/\*.*?\*/|//[^\n]*", "", open(path).read(), flags=re.S)
        self.words = re.findall(r'"[^"]*"|[{}();\[\]]|[A-Za-z]\w*\([^\s()]*\)|[^\s{}();\[\]"]+', text)
        self.at = 0

    def next(self):
        self.at += 1
        return self.words[self.at - 1]

    def peek(self):
        return self.words[self.at] if self.at < len(self.words) else None

    def number(self, word):
        try:
            return float(word)
        except ValueError:
            return word.strip('"')

    def items(self):
        """Up to the bracket that closes the list."""
        found = []
        while (word := self.next()) != ")":
            found.append(self.items() if word == "(" else self.number(word))
        return found

    def counted(self):
        """A list behind its count, as 5(1 2 3 4 5) or 5{1}."""
        count = int(self.next())
        if self.next() == "{":
            value = self.next()
            value = self.items() if value == "(" else float(value)
            self.next()
            return [value] * count
        return self.items()

    def value(self, scopes):
        found = None
        while (word := self.next()) != ";":
            if word == "uniform":
                word = self.next()
                found = {"uniform": self.items() if word == "(" else float(word)}
            elif word == "nonuniform":
                if not re.match(r"\d", self.peek()):
                    self.next()
                found = {"list": self.counted()}
            elif word.startswith("$"):
                found = next(scope[word[1:]] for scope in reversed(scopes) if word[1:] in scope)
            elif word == "(":
                found = self.items()
            elif word != "[" and found is None:
                found = self.number(word)
        return found

    def dictionary(self, scopes=(), end=None):
        own = {}
        while (key := self.peek()) is not None and key != end:
            self.next()
            if key == "#include":
                own.update(Words(os.path.join(os.path.dirname(self.path), self.next().strip('"'))).dictionary())
            elif self.peek() == "{":
                self.next()
                own[key.strip('"')] = self.dictionary((*scopes, own), "}")
                self.next()
            else:
                own[key.strip('"')] = self.value((*scopes, own))
        return own

    def header(self):
        self.next()
        self.next()
        own = self.dictionary(end="}")
        self.next()
        return own


def labels(path):
    words = Words(path)
    words.header()
    return [int(v) for v in words.counted()]


def mesh_file(case, region, times, name):
    """That of the last of these times that has one."""
    for time in reversed(["constant", *times]):
        path = os.path.join(case, time, region, "polyMesh", name)
        if os.path.exists(path):
            return path
    return None


class Mesh:
    def __init__(self, case, region, times):
        words = Words(mesh_file(case, region, times, "points"))
        words.header()
        self.points = np.array(words.counted(), float)
        words = Words(mesh_file(case, region, times, "faces"))
        words.header()
        words.next(), words.next()
        self.faces = []
        while words.peek() != ")":
            self.faces.append([int(p) for p in words.counted()])
        self.owner = labels(mesh_file(case, region, times, "owner"))
        self.neighbour = labels(mesh_file(case, region, times, "neighbour"))
        words = Words(mesh_file(case, region, times, "boundary"))
        words.header()
        words.next(), words.next()
        self.patches = {name: (int(p["startFace"]), int(p["nFaces"])) for name, p in words.dictionary(end=")").items()}
        self.build()

    def build(self):
        """Elements with the cell of each; polyhedra leave most of their pieces to the end."""
        cells = [[] for _ in range(max(self.owner + self.neighbour) + 1)]
        for face in range(len(self.faces)):
            cells[self.owner[face]].append(face)
            if face < len(self.neighbour):
                cells[self.neighbour[face]].append(face)
        self.elements, self.cells, self.centres = [], [], []
        rest = []
        for cell, faces in enumerate(cells):
            pieces = self.shape(cell, sorted(faces))
            self.elements.append(pieces[0])
            self.cells.append(cell)
            rest += [(piece, cell) for piece in pieces[1:]]
        self.elements += [piece for piece, _ in rest]
        self.cells += [cell for _, cell in rest]

    def inward(self, cell, face):
        """The points of a face, from its first one, counter-clockwise when they are seen from inside of the cell."""
        points = self.faces[face]
        return points[:1] + points[:0:-1] if self.owner[face] == cell else points

    def shape(self, cell, faces):
        sizes = sorted(len(self.faces[f]) for f in faces)
        if sizes in ([4] * 6, [3, 3, 4, 4, 4]):
            base = self.inward(cell, next(f for f in faces if len(self.faces[f]) == sizes[0]))
            edges = {(a, b) for f in faces for a, b in zip(self.faces[f], self.faces[f][1:] + self.faces[f][:1])}
            edges |= {(b, a) for a, b in edges}
            top = [next(b for a, b in edges if a == point and b not in base) for point in base]
            return [["hexahedron" if len(base) == 4 else "wedge"] + base + top]
        if sizes in ([3] * 4, [3] * 4 + [4]):
            base = self.inward(cell, next(f for f in faces if len(self.faces[f]) == sizes[-1]))
            apex = next(p for f in faces for p in self.faces[f] if p not in base)
            return [["tetrahedron" if len(base) == 3 else "pyramid"] + base + [apex]]
        return self.split(cell, faces)

    def split(self, cell, faces):
        """Every face in quadrilaterals, and a triangle when the number of its points is odd, with the middle."""
        corners = sorted({p for f in faces for p in self.faces[f]})
        apex = len(self.points) + len(self.centres)
        self.centres.append(corners)
        pieces = []
        for face in faces:
            points = self.faces[face]
            if len(points) % 2 and len(points) > 3 and self.is_straight(points[-2], points[-1], points[0]):
                points = points[-1:] + points[:-1]  # Or the triangle would be flat.
            own = self.owner[face] == cell
            for i in range(1, len(points) - 1, 2):
                piece = points[i:i + 3]
                piece = points[:1] + (piece[::-1] if own else piece)
                pieces.append(["pyramid" if len(piece) == 4 else "tetrahedron"] + piece + [apex])
        return pieces

    def is_straight(self, a, b, c):
        one, other = self.points[a] - self.points[b], self.points[c] - self.points[b]
        return one @ other < -0.999 * np.linalg.norm(one) * np.linalg.norm(other)

    def with_centres(self, values):
        return np.concatenate([values] + [values[corners].mean(0)[None] for corners in self.centres])

    def patch(self, name):
        """Its points, and its elements with the face of each among the patch's."""
        start, count = self.patches[name]
        points, elements, sources = [], [], []
        for face in range(start, start + count):
            for point in self.faces[face]:
                if point not in points:
                    points.append(point)
            own = [points.index(point) for point in self.faces[face]]
            if len(own) <= 4:
                pieces = [[{3: "triangle", 4: "quadrilateral"}[len(own)]] + own]
            else:
                pieces = [["triangle", own[0], own[i - 1], own[i]] for i in range(2, len(own))]
            elements += pieces
            sources += [face - start] * len(pieces)
        return points, elements, sources


def expand(value, count, size):
    values = [value["uniform"]] * count if "uniform" in value else value["list"]
    return np.array(values, float).reshape(count, size)


def patch_entry(boundary, name):
    """The exact one, or the last that fits."""
    if name in boundary:
        return boundary[name]
    return [entry for key, entry in boundary.items() if re.fullmatch(key, name)][-1]


def field(path, mesh):
    """Its key, kind, mapping and the values on the mesh and on each patch, by name; "" is the mesh."""
    words = Words(path)
    header = words.header()
    match = re.fullmatch("(vol|point)(%s)Field(::Internal)?" % "|".join(SIZES), header["class"])
    if not match:
        return None
    size = SIZES[match[2]]
    body = words.dictionary()
    on_points = match[1] == "point"
    cells = max(mesh.owner + mesh.neighbour) + 1
    inside = expand(body["value" if match[3] else "internalField"], len(mesh.points) if on_points else cells, size)
    values = {"": mesh.with_centres(inside) if on_points else inside[mesh.cells]}
    for name, (start, count) in mesh.patches.items():
        if count == 0:
            continue
        entry = {"type": "none"} if match[3] else patch_entry(body["boundaryField"], name)
        points, _, sources = mesh.patch(name)
        if "value" in entry:
            own = expand(entry["value"], len(points) if on_points else count, size)
        elif entry["type"] == "noSlip":
            own = np.zeros((count, size))
        else:
            own = inside[points] if on_points else inside[[mesh.owner[f] for f in range(start, start + count)]]
        values[name] = own if on_points else own[sources]
    kind = {1: "scalar", 3: "displacement" if header["object"] in DISPLACEMENTS else "vector"}.get(size, "tensor")
    return header["object"], kind, "node" if on_points else "element", \
        {name: own[:, OURS[size]] if size in OURS else own for name, own in values.items()}


def plain(values):
    return [None if math.isnan(v) else round(float(v), 10) for v in np.ravel(values)]


def regions_of(case):
    found = [name for name in sorted(os.listdir(case + "/constant")) if os.path.exists(case + "/constant/" + name + "/polyMesh/faces")]
    return [("", "")] if not found else [(name, name + "/") for name in found]


def read(case):
    times = sorted((name for name in os.listdir(case) if re.fullmatch(r"[\d.]+", name)), key=float)
    states = []
    for number, time in enumerate(times):
        parts = []
        for region, prefix in regions_of(case):
            mesh = Mesh(case, region, times[:number + 1])
            own = {"": {"name": prefix + "internalMesh", "nodes": plain(mesh.with_centres(mesh.points)), "elements": mesh.elements, "results": {}}}
            for name in mesh.patches:
                points, elements, _ = mesh.patch(name)
                if elements:
                    own[name] = {"name": prefix + "boundary/" + name, "nodes": plain(mesh.points[points]), "elements": elements, "results": {}}
            folder = os.path.join(case, time, region)
            for name in sorted(os.listdir(folder)):
                path = os.path.join(folder, name)
                if not os.path.isfile(path) or "FoamFile" not in open(path).read():
                    continue
                if found := field(path, mesh):
                    key, kind, mapping, values = found
                    for part, numbers in values.items():
                        own[part]["results"][key + "/" + mapping] = [kind, mapping, plain(numbers)]
            parts += own.values()
        states.append({"time": float(time), "parts": parts})
    return states


def complete(states):
    """A result that only some parts of a state have is undefined on the others."""
    widths = {"scalar": 1, "vector": 3, "displacement": 3, "tensor": 6}
    for state in states:
        every = {key: found for part in state["parts"] for key, found in part["results"].items()}
        for part in state["parts"]:
            for key, (kind, mapping, _) in every.items():
                items = len(part["nodes"]) // 3 if mapping == "node" else len(part["elements"])
                part["results"].setdefault(key, [kind, mapping, [None] * widths[kind] * items])
    return states


expected = {name + "/" + name + ".foam": complete(read(name)) for name in ("cavity", "plate", "moving", "cells", "regions")}
for form in ("cavity_binary", "cavity_gz"):
    expected[form + "/" + form + ".foam"] = "cavity/cavity.foam"

with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
