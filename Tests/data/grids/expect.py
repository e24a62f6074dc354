#!/usr/bin/python3
"""Writes what this folder's files hold as expected.json, read without VTK (python3-numpy, python3-lz4): legacy files by
their sections, XML files by ElementTree, zlib, lz4 and lzma. Files that only differ in their encoding must be alike.

expected.json is as that of ../vtk.
"""
import base64
import json
import lzma
import math
import re
import xml.etree.ElementTree as ElementTree
import zlib

import lz4.block
import numpy as np

TYPES = {1: "point", 3: "beam", 5: "triangle", 9: "quadrilateral", 10: "tetrahedron", 12: "hexahedron", 14: "pyramid"}
LEGACY_TYPES = {"float": "f4", "double": "f8", "int": "i4", "vtktypeint64": "i8", "unsigned_char": "u1"}
XML_TYPES = {"Float32": "f4", "Float64": "f8", "Int32": "i4", "Int64": "i8", "UInt8": "u1", "UInt32": "u4"}
FULL = [0, 4, 8, 1, 5, 2]


def plain(values):
    return [None if math.isnan(v) else float(v) for v in np.ravel(values)]


def results_of(points, cells, cell_of):
    found = {}
    for arrays, mapping in ((points, "node"), (cells, "element")):
        for name, values in arrays.items():
            kind = {1: "scalar", 3: "vector", 6: "tensor", 9: "tensor"}.get(values.shape[1])
            values = values[:, FULL] if values.shape[1] == 9 else values
            if kind:
                found[name + "/" + mapping] = [kind, mapping, plain(values if mapping == "node" else values[cell_of])]
    return found


def elements_of(cells):
    """Elements of cells, as type and nodes, and which cell each is."""
    elements, cell_of = [], []
    for i, (kind, nodes) in enumerate(cells):
        if kind in TYPES:
            elements.append([TYPES[kind]] + [int(n) for n in nodes])
            cell_of.append(i)
    return elements, cell_of


def grid_cells(size):
    used = [max(n - 1, 1) for n in size]
    cells = []
    for k in range(used[2]):
        for j in range(used[1]):
            for i in range(used[0]):
                nodes = [i + a + size[0] * (j + b + size[1] * (k + c)) for c in range(2 if size[2] > 1 else 1) for a, b in ((0, 0), (1, 0), (1, 1), (0, 1))]
                cells.append((12 if size[2] > 1 else 9, nodes))
    return cells


def part(name, nodes, cells, points, values):
    elements, cell_of = elements_of(cells)
    return {"name": name, "nodes": plain(nodes), "elements": elements, "results": results_of(points, values, cell_of)}


def box(axes):
    return [(x, y, z) for z in axes[2] for y in axes[1] for x in axes[0]]


def surface_cells(lists):
    kinds = {"verts": {1: 1}, "lines": {2: 3}, "polys": {3: 5, 4: 9}, "strips": {3: 5}}
    return [(kinds[name][len(nodes)], nodes) for name in ("verts", "lines", "polys", "strips") for nodes in lists.get(name, [])]


class Legacy:
    def __init__(self, path):
        self.data, self.at = open(path, "rb").read(), 0
        self.is_old = self.line()[-3] < "5"
        self.line()
        self.is_binary = self.line() == "BINARY"

    def line(self):
        end = self.data.index(b"\n", self.at)
        text, self.at = self.data[self.at:end].decode(), end + 1
        return text.strip()

    def word(self):
        match = re.compile(rb"\s*(\S*)").match(self.data, self.at)
        self.at = match.end()
        return match.group(1).decode()

    def values(self, count, kind):
        if not self.is_binary:
            return np.array([float(self.word()) for _ in range(count)])
        self.line()
        width = int(LEGACY_TYPES[kind][1])
        found = np.frombuffer(self.data[self.at:self.at + count * width], ">" + LEGACY_TYPES[kind])
        self.at += count * width
        return found.astype(float)

    def lists(self):
        first, second = int(self.word()), int(self.word())
        if self.is_old:
            numbers, cells = [int(n) for n in self.values(second, "int")], []
            while numbers:
                cells.append(numbers[1:numbers[0] + 1])
                numbers = numbers[numbers[0] + 1:]
            return cells
        assert self.word() == "OFFSETS"
        offsets = [int(n) for n in self.values(first, self.word())]
        assert self.word() == "CONNECTIVITY"
        nodes = [int(n) for n in self.values(second, self.word())]
        return [nodes[a:b] for a, b in zip(offsets, offsets[1:])]

    def read(self):
        lists, target, axes, arrays, types = {}, None, [], {"POINT_DATA": {}, "CELL_DATA": {}}, None
        while word := self.word():
            if word == "DATASET":
                kind = self.word()
            elif word == "POINTS":
                count = int(self.word())
                nodes = self.values(3 * count, self.word()).reshape(count, 3)
            elif word == "CELLS":
                lists = self.lists()
            elif word == "CELL_TYPES":
                types = [int(n) for n in self.values(int(self.word()), "int")]
            elif word in ("VERTICES", "LINES", "POLYGONS", "TRIANGLE_STRIPS"):
                lists[{"VERTICES": "verts", "LINES": "lines", "POLYGONS": "polys", "TRIANGLE_STRIPS": "strips"}[word]] = self.lists()
            elif word == "DIMENSIONS":
                size = [int(self.word()) for _ in range(3)]
            elif word == "SPACING":
                spacing = [float(self.word()) for _ in range(3)]
            elif word == "ORIGIN":
                origin = [float(self.word()) for _ in range(3)]
            elif word.endswith("_COORDINATES") and word[0] in "XYZ":
                count = int(self.word())
                axes.append(self.values(count, self.word()))
            elif word in ("POINT_DATA", "CELL_DATA"):
                target, items = arrays[word], int(self.word())
            elif word == "SCALARS":
                name, sort = self.word(), self.word()
                width = int(self.line() or 1)
                assert self.word() == "LOOKUP_TABLE"
                self.word()
                target[name] = self.values(items * width, sort).reshape(items, width)
            elif word == "LOOKUP_TABLE":
                self.word()
                self.values(4 * int(self.word()), "unsigned_char")
            elif word in ("VECTORS", "NORMALS", "TENSORS"):
                name, width = self.word(), 9 if word == "TENSORS" else 3
                target[name] = self.values(items * width, self.word()).reshape(items, width)
            elif word == "TEXTURE_COORDINATES":
                name, width = self.word(), int(self.word())
                target[name] = self.values(items * width, self.word()).reshape(items, width)
            elif word == "COLOR_SCALARS":
                name, width = self.word(), int(self.word())
                target[name] = np.floor(self.values(items * width, "unsigned_char") * 255 + 0.5).reshape(items, width)
            elif word == "FIELD":
                self.word()
                for _ in range(int(self.word())):
                    while (name := self.word()) == "METADATA":
                        self.metadata()
                    width, count = int(self.word()), int(self.word())
                    target[name] = self.values(width * count, self.word()).reshape(count, width)
            elif word == "METADATA":
                self.metadata()
            else:
                raise ValueError(word)
        if kind in ("STRUCTURED_POINTS", "RECTILINEAR_GRID"):
            axes = axes or [origin[a] + spacing[a] * np.arange(size[a]) for a in range(3)]
            nodes = box(axes)
        cells = surface_cells(lists) if kind == "POLYDATA" else list(zip(types, lists)) if kind == "UNSTRUCTURED_GRID" else grid_cells(size)
        return part("", nodes, cells, arrays["POINT_DATA"], arrays["CELL_DATA"])

    def metadata(self):
        self.line()
        while self.line():
            pass


class Xml:
    def __init__(self, path):
        data = open(path, "rb").read()
        self.appended = None
        if (begin := data.find(b"<AppendedData")) >= 0:
            mark = data.index(b"_", begin)
            self.is_raw = b'encoding="raw"' in data[begin:mark]
            self.appended = data[mark + 1:data.rindex(b"</AppendedData>")]
            data = data[:begin] + b"</VTKFile>"
        self.root = ElementTree.fromstring(data)
        self.order = ">" if self.root.get("byte_order") == "BigEndian" else "<"
        self.head = np.dtype(self.order + ("u8" if self.root.get("header_type") == "UInt64" else "u4"))
        self.unpack = {None: None, "vtkZLibDataCompressor": lambda block, size: zlib.decompress(block),
                       "vtkLZMADataCompressor": lambda block, size: lzma.decompress(block),
                       "vtkLZ4DataCompressor": lambda block, size: lz4.block.decompress(block, size)}[self.root.get("compressor")]

    def bytes_of(self, data, is_raw):
        size = self.head.itemsize
        def take(begin, count):
            """Bytes of a text in base64 that begins anew, or of the data itself; and where the text goes on."""
            if is_raw:
                return data[begin:begin + count], begin + count
            length = (count + 2) // 3 * 4
            return base64.b64decode(data[begin:begin + length]), begin + length
        if not self.unpack:
            count = int(np.frombuffer(take(0, size)[0][:size], self.head)[0])
            return data[size:size + count] if is_raw else base64.b64decode(data[:(size + count + 2) // 3 * 4])[size:]
        blocks = int(np.frombuffer(take(0, size)[0][:size], self.head)[0])
        head, at = take(0, size * (3 + blocks))
        numbers = np.frombuffer(head[:size * (3 + blocks)], self.head)
        sizes = numbers[3:]
        packed, _ = take(at, int(sum(sizes)))
        ends = np.cumsum(sizes)
        return b"".join(self.unpack(packed[int(e - s):int(e)], int(numbers[1])) for s, e in zip(sizes, ends))

    def values(self, array):
        width = int(array.get("NumberOfComponents", 1))
        if array.get("format") == "ascii":
            return np.array([float(w) for w in array.text.split()]).reshape(-1, width)
        if array.get("format") == "appended":
            data = self.bytes_of(self.appended[int(array.get("offset")):], self.is_raw)
        else:
            data = self.bytes_of("".join(array.text.split()).encode(), False)
        return np.frombuffer(data, self.order + XML_TYPES[array.get("type")]).astype(float).reshape(-1, width)

    def arrays(self, node):
        return {a.get("Name"): self.values(a) for a in node} if node is not None else {}

    def lists(self, node):
        found = self.arrays(node)
        ends = [int(n) for n in found["offsets"].ravel()]
        nodes = [int(n) for n in found["connectivity"].ravel()]
        return [nodes[a:b] for a, b in zip([0] + ends, ends)], found

    def read(self, name=""):
        mesh = self.root[0]
        piece = mesh.find("Piece")
        limits = [int(n) for n in piece.get("Extent", "0 0 0 0 0 0").split()]
        size = [limits[2 * a + 1] - limits[2 * a] + 1 for a in range(3)]
        if mesh.tag == "ImageData":
            origin, spacing = ([float(n) for n in mesh.get(key).split()] for key in ("Origin", "Spacing"))
            nodes = box([origin[a] + spacing[a] * (limits[2 * a] + np.arange(size[a])) for a in range(3)])
        elif mesh.tag == "RectilinearGrid":
            nodes = box([self.values(a).ravel() for a in piece.find("Coordinates")])
        else:
            nodes = self.values(piece.find("Points")[0])
        if mesh.tag == "UnstructuredGrid":
            lists, found = self.lists(piece.find("Cells"))
            cells = list(zip([int(n) for n in found["types"].ravel()], lists))
        elif mesh.tag == "PolyData":
            cells = surface_cells({tag.lower(): self.lists(piece.find(tag))[0] for tag in ("Verts", "Lines", "Polys", "Strips")})
        else:
            cells = grid_cells(size)
        return part(name, nodes, cells, self.arrays(piece.find("PointData")), self.arrays(piece.find("CellData")))


def at_no_time(*parts):
    every = {}
    for one in parts:
        every.update(one["results"])
    for one in parts:  # What only some parts have is undefined on the others.
        for key, found in every.items():
            width = {"scalar": 1, "vector": 3, "tensor": 6}[found[0]]
            count = len(one["elements"]) if found[1] == "element" else len(one["nodes"]) // 3
            one["results"].setdefault(key, found[:2] + [[None] * width * count])
    return [{"time": None, "parts": list(parts)}]


def is_alike(a, b):
    if isinstance(a, dict):
        return a.keys() == b.keys() and all(is_alike(a[key], b[key]) for key in a)
    if isinstance(a, list):
        return len(a) == len(b) and all(is_alike(x, y) for x, y in zip(a, b))
    return abs(a - b) < 1e-6 if isinstance(a, float) else a == b


EXTENSIONS = {"surface": "vtp", "curved": "vts", "planes": "vtr", "image": "vti", "solids": "vtu"}
expected = {}
for name, extension in EXTENSIONS.items():
    whole = "%s.%s" % (name, extension)
    expected[whole] = at_no_time(Xml(whole).read())
    encodings = ("inline", "zlib", "lz4", "lzma", "raw64", "big", "bigzlib") if name == "solids" else ("raw64", "zlib")
    others = ["%s_%s.%s" % (name, encoding, extension) for encoding in encodings]
    for other in others:
        assert is_alike(at_no_time(Xml(other).read()), expected[whole]), other
    legacy = ["%s_%s.vtk" % (name, form) for form in ("ascii", "binary", "old", "old_binary")]
    for other in legacy:
        assert is_alike(at_no_time(Legacy(other).read()), expected[whole]), other
    expected.update({other: whole for other in others + legacy})
expected["polyhedron.vtu"] = at_no_time(Xml("polyhedron.vtu").read())
expected["polyhedron.vtk"] = at_no_time(Legacy("polyhedron.vtk").read())
expected["attributes.vtk"] = at_no_time(Legacy("attributes.vtk").read())
for name in EXTENSIONS:
    extension = EXTENSIONS[name]
    expected["%s.p%s" % (name, extension)] = at_no_time(*[Xml("%s_%d.%s" % (name, i, extension)).read("%s_%d" % (name, i)) for i in range(2)])

with open("expected.json", "w") as out:
    out.write(json.dumps(expected, separators=(",", ":")).replace('},{"name"', '},\n{"name"').replace('},"', '},\n"').replace('],"', '],\n"') + "\n")
