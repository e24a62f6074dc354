#!/usr/bin/python3
"""Makes the files of this folder with h5py (python3-h5py), after VTK's description of its HDF files.

No program in Debian 12 writes such files. VTK's own reader has to take them, where it can. Then expect.py writes what
h5py finds in them. Run both in this folder when a file is to change.
"""
import os
import sys

import h5py
import numpy as np
import vtk

sys.path.insert(0, "../vtk")
from make import VTK_ORDER, VTK_TYPE, points_of, zoo  # noqa: E402

rng = np.random.default_rng(12)


def numbers(*shape):
    return np.round(rng.random(shape), 3)


def create(name, kind, version=(1, 0), **options):
    file = h5py.File(name, "w", **options)
    root = file.create_group("VTKHDF")
    root.attrs["Version"] = np.array(version, "i8")
    root.attrs.create("Type", kind, dtype=h5py.string_dtype("ascii", len(kind)))
    for group in ("PointData", "CellData"):
        root.create_group(group)
    return file, root


def write_pieces(root, pieces, whole=np.int64, real=np.float64, **options):
    """Pieces are (points, cells), and cells (kind, points)."""
    counts = [[len(points), len(cells), sum(len(ids) for _, ids in cells)] for points, cells in pieces]
    for i, name in enumerate(("NumberOfPoints", "NumberOfCells", "NumberOfConnectivityIds")):
        root[name] = np.array([c[i] for c in counts], np.int64)
    offsets, ids, types = [], [], []
    for _, cells in pieces:
        offsets += [0] + list(np.cumsum([len(own) for _, own in cells]))
        for kind, own in cells:
            ids += [own[i] for i in VTK_ORDER.get(kind, range(len(own)))]
            types.append(VTK_TYPE[kind])
    root.create_dataset("Points", data=np.concatenate([points for points, _ in pieces]).astype(real), **options)
    root.create_dataset("Offsets", data=np.array(offsets, whole), **options)
    root.create_dataset("Connectivity", data=np.array(ids, whole), **options)
    root.create_dataset("Types", data=np.array(types, np.uint8), **options)


def check(name, points, cells):
    reader = vtk.vtkHDFReader()
    reader.SetFileName(name)
    reader.Update()
    mesh = reader.GetOutputDataObject(0)
    assert (mesh.GetNumberOfPoints(), mesh.GetNumberOfCells()) == (points, cells), name


def make_zoo():
    """A cell of each kind, and arrays of all sorts."""
    points, cells = zoo()
    n, m = len(points), len(cells)
    file, root = create("zoo.vtkhdf", b"UnstructuredGrid", libver="latest")
    write_pieces(root, [(points, [(kind, list(range(first, first + count))) for kind, first, count in cells])])
    for group, count in (("PointData", n), ("CellData", m)):
        data = root[group]
        data["Temperature"] = numbers(count).astype(np.float32)
        data["Flux"] = numbers(count, 3)
        data["Stress"] = numbers(count, 6)
    half = numbers(n, 3, 3)
    data = root["PointData"]
    data["Displacement"] = numbers(n, 3)
    data["Strain"] = (half + half.transpose(0, 2, 1)).reshape(n, 9)
    data["Number"] = np.arange(n, dtype=np.int32)
    data["Pair"] = np.zeros((n, 2), np.int8)
    data["Holes"] = np.where(np.arange(n) % 3 == 0, np.nan, np.arange(n) + 0.5)
    data["Ids"] = np.arange(101, 101 + n)
    data.attrs.create("GlobalIds", b"Ids", dtype=h5py.string_dtype("ascii", 3))
    for axis in "XYZ":
        root["CellData"]["v" + axis] = numbers(m)
    root["CellData"]["GlobalCellIds"] = np.arange(1001, 1001 + m, dtype=np.int32)
    root.create_group("FieldData")["Load"] = np.array([7.5])
    file.close()
    check("zoo.vtkhdf", n, m)


def make_pieces():
    """Two pieces with a ghost cell each, the one next to them in the other piece; packed, of a later version."""
    file, root = create("pieces.vtkhdf", b"UnstructuredGrid", version=(2, 1))
    packed = {"chunks": True, "compression": "gzip", "shuffle": True}
    pieces = []
    for ids in ((0, 1, 2), (1, 2, 3)):
        points = np.concatenate([points_of("hexahedron", i) for i in ids] + [points_of("wedge", 6)])
        cells = [("hexahedron", list(range(8 * i, 8 * i + 8))) for i in range(3)]
        pieces.append((points, cells + ([("wedge", list(range(24, 30)))] if ids[0] else [])))
    write_pieces(root, pieces, np.int32, np.float32, **packed)
    root["PointData"].create_dataset("p", data=numbers(60), **packed)
    root["PointData"].create_dataset("Tensor", data=numbers(60, 3, 3), chunks=(7, 3, 2), compression="gzip")
    root["CellData"].create_dataset("Damage", data=numbers(7).astype(">f8"), **packed)
    root["CellData"].create_dataset("vtkGhostType", data=np.array([0, 0, 1, 1, 0, 0, 0], np.uint8), **packed)
    file.close()


def make_images():
    """A turned image of 4 x 3 x 2 points with a hidden cell, and a flat one, whose arrays leave out the flat direction."""
    file, root = create("image.vtkhdf", b"ImageData")
    root.attrs["WholeExtent"] = np.array([1, 4, 0, 2, -1, 0], np.int32)
    root.attrs["Origin"] = [10.0, 20.0, 30.0]
    root.attrs["Spacing"] = [1.0, 0.5, 0.25]
    root.attrs["Direction"] = [0.0, -1, 0, 1, 0, 0, 0, 0, 1]
    root["PointData"]["density"] = numbers(2, 3, 4)
    root["PointData"]["u"] = numbers(2, 3, 4, 3)
    root["CellData"]["Stress"] = numbers(1, 2, 3, 6)
    marks = np.zeros((1, 2, 3), np.uint8)
    marks[0, 1, 2] = 32
    root["CellData"]["vtkGhostType"] = marks
    file.close()

    file, root = create("flat.hdf", b"ImageData", libver="latest")
    root.attrs["WholeExtent"] = np.array([0, 2, 0, 0, 0, 1], np.int64)
    root.attrs["Origin"] = np.array([0, 0, 0], np.float32)
    root.attrs["Spacing"] = [1.0, 1.0, 2.0]
    root["PointData"]["height"] = numbers(2, 3)
    root["CellData"]["colour"] = np.array([[3, 4]], np.int16)
    file.close()


def main():
    make_zoo()
    make_pieces()
    make_images()
    for name in sorted(os.listdir(".")):
        print(os.path.getsize(name), name)


if __name__ == "__main__":
    main()
