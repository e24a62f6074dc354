#!/usr/bin/python3
"""Makes zoo.e of this folder, a file of NetCDF-4, with netCDF4 (python3-netcdf4): solids of second order with nodes in
the middle of faces, polygons, a block without elements, and one whose elements are of no known type.

The others are PETSc's (Debian's libpetsc3.18-dev-examples, share/petsc/datafiles/meshes; BSD licence), written by Cubit:
sevenside.exo in the classic format and rect.exo, there Rect-tri3.exo, in that of 64-bit offsets.

Then expect.py writes what other readers find in them. Run both in this folder when a file is to change.
"""
import itertools

import netCDF4
import numpy as np

rng = np.random.default_rng(3)


def hex27():
    """Exodus: corners, edges of the bottom, upright ones, those of the top, the middle, and the faces."""
    corners = [(0, 0, 0), (2, 0, 0), (2, 2, 0), (0, 2, 0), (0, 0, 2), (2, 0, 2), (2, 2, 2), (0, 2, 2)]
    edges = [(0, 1), (1, 2), (2, 3), (3, 0), (0, 4), (1, 5), (2, 6), (3, 7), (4, 5), (5, 6), (6, 7), (7, 4)]
    points = corners + [tuple((a + b) / 2 for a, b in zip(corners[i], corners[j])) for i, j in edges]
    return points + sorted(set(itertools.product((0, 1, 2), repeat=3)) - set(points))


def main():
    file = netCDF4.Dataset("zoo.e", "w", format="NETCDF4")
    file.title = "A zoo of blocks"
    file.api_version, file.version = np.float32(8.03), np.float32(8.03)
    file.floating_point_word_size, file.file_size = np.int32(8), np.int32(1)
    points = hex27() + [(x, y, 5) for x, y in ((0, 0), (1, 0), (2, 0), (2, 1), (1, 1), (0, 1), (0, 2), (3, 0), (3, 1))]
    blocks = [(40, "solid", "HEX27", np.array([range(1, 28)])),
              (30, "", "NSIDED", [[28, 29, 32, 33], [29, 30, 31, 32, 34], [30, 35, 36]]),
              (20, "twin", "TRI3", np.array([[33, 32, 34], [28, 29, 33]])),
              (10, "twin", "WHATEVER5", np.array([[1, 2, 3, 4, 5]])),
              (50, "none", "", None)]
    for name, size in (("len_string", 33), ("time_step", None), ("num_dim", 3), ("num_nodes", len(points)),
                       ("num_elem", 7), ("num_el_blk", len(blocks)), ("num_nod_var", 1), ("num_elem_var", 1)):
        file.createDimension(name, size)

    def texts(name, dimension, names):
        variable = file.createVariable(name, "S1", (dimension, "len_string"))
        variable[:] = netCDF4.stringtochar(np.array(names, "S33"))

    texts("eb_names", "num_el_blk", [name for _, name, _, _ in blocks])
    texts("name_nod_var", "num_nod_var", ["T"])
    texts("name_elem_var", "num_elem_var", ["Damage"])
    file.createVariable("eb_prop1", "i8", ("num_el_blk",))[:] = [number for number, _, _, _ in blocks]
    for axis in range(3):
        file.createVariable("coord" + "xyz"[axis], "f4", ("num_nodes",))[:] = np.array(points)[:, axis]
    file.createVariable("elem_num_map", "i8", ("num_elem",))[:] = np.arange(7) + 101
    file.createVariable("time_whole", "f8", ("time_step",))[:] = [1, 1]  # Load steps of the same time.
    file.createVariable("vals_nod_var1", "f8", ("time_step", "num_nodes"), zlib=True)[:] = np.round(rng.random((2, len(points))), 3)
    for b, (_, _, kind, elements) in enumerate(blocks):
        number = str(b + 1)
        if elements is None:
            continue
        file.createDimension("num_el_in_blk" + number, len(elements))
        if kind == "NSIDED":
            file.createDimension("num_nod_per_el" + number, sum(len(e) for e in elements))
            connect = file.createVariable("connect" + number, "i8", ("num_nod_per_el" + number,))
            connect[:] = [n for e in elements for n in e]
            file.createVariable("ebepecnt" + number, "i4", ("num_el_in_blk" + number,))[:] = [len(e) for e in elements]
        else:
            file.createDimension("num_nod_per_el" + number, elements.shape[1])
            connect = file.createVariable("connect" + number, "i8", ("num_el_in_blk" + number, "num_nod_per_el" + number))
            connect[:] = elements
        connect.elem_type = kind
        if kind != "TRI3":
            values = file.createVariable("vals_elem_var1eb" + number, "f8", ("time_step", "num_el_in_blk" + number))
            values[:] = np.round(rng.random((2, len(elements))), 3)
    file.close()


main()
