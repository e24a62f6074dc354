#!/usr/bin/python3
"""Makes the files of this folder, which are opened several at a time, with VTK's own writers and netCDF4: python3-vtk9,
python3-netcdf4. What they hold is simple enough to be told by the tests.

rank0, rank1    a hexahedron each, side by side, at time 0.5: "p" is 100 * rank + node, "damage" is 7.5 in rank 1 only
late            the first hexahedron at time 2, as a tetrahedron
move_1 to _3    a tetrahedron that grows by a tenth, without times: "T" is 10 * number + node
bar.e.2.0, .1   blocks "core" and "tip" of a bar that was cut across, at times 0 and 0.25: "TEMP" is
                1000 * step + 100 * rank + node, "Damage" of an element 10 * step + rank, in rank 1 only of "tip"
"""
import netCDF4
import numpy as np
import vtk
from vtk.util.numpy_support import numpy_to_vtk

CUBE = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)]
CORNER = [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)]


def add(attributes, name, values):
    array = numpy_to_vtk(np.array(values, float), deep=1)
    array.SetName(name)
    attributes.AddArray(array)


def write(name, kind, points, node_values, cell_values=(), time=None):
    mesh = vtk.vtkUnstructuredGrid()
    places = vtk.vtkPoints()
    places.SetDataTypeToDouble()
    for p in points:
        places.InsertNextPoint(*p)
    mesh.SetPoints(places)
    mesh.InsertNextCell(kind, len(points), range(len(points)))
    for array, values in node_values:
        add(mesh.GetPointData(), array, values)
    for array, values in cell_values:
        add(mesh.GetCellData(), array, values)
    if time is not None:
        add(mesh.GetFieldData(), "TimeValue", [time])
    writer = vtk.vtkXMLUnstructuredGridWriter()
    writer.SetFileName(name)
    writer.SetDataModeToAscii()
    writer.SetInputData(mesh)
    writer.Write()


def write_exodus(rank):
    file = netCDF4.Dataset("bar.e.2.%d" % rank, "w", format="NETCDF3_64BIT_OFFSET")
    file.title = "A bar cut across"
    file.api_version, file.version = np.float32(8.03), np.float32(8.03)
    file.floating_point_word_size, file.file_size = np.int32(8), np.int32(1)
    for name, size in (("len_string", 33), ("len_line", 81), ("time_step", None), ("num_dim", 3), ("num_nodes", 12),
                       ("num_elem", 2), ("num_el_blk", 2), ("num_el_in_blk1", 1), ("num_nod_per_el1", 8),
                       ("num_el_in_blk2", 1), ("num_nod_per_el2", 8), ("num_nod_var", 1), ("num_elem_var", 1)):
        file.createDimension(name, size)

    def texts(name, dimension, names):
        variable = file.createVariable(name, "S1", (dimension, "len_string"))
        for i, text in enumerate(names):
            variable[i] = netCDF4.stringtochar(np.array([text], "S33"))[0]

    texts("eb_names", "num_el_blk", ["core", "tip"])
    texts("coor_names", "num_dim", ["x", "y", "z"])
    texts("name_nod_var", "num_nod_var", ["TEMP"])
    texts("name_elem_var", "num_elem_var", ["Damage"])
    file.createVariable("eb_status", "i4", ("num_el_blk",))[:] = 1
    ids = file.createVariable("eb_prop1", "i4", ("num_el_blk",))
    ids.setncattr("name", "ID")
    ids[:] = [1, 2]
    points = np.array(CUBE + [(x, y, z + 1) for x, y, z in CUBE[4:]], float) + (rank, 0, 0)
    for axis in range(3):
        file.createVariable("coord" + "xyz"[axis], "f8", ("num_nodes",))[:] = points[:, axis]
    for block, nodes in enumerate((range(1, 9), range(5, 13))):
        connect = file.createVariable("connect%d" % (block + 1), "i4",
                                      ("num_el_in_blk%d" % (block + 1), "num_nod_per_el%d" % (block + 1)))
        connect.elem_type = "HEX"
        connect[:] = np.array([list(nodes)])
    file.createVariable("node_num_map", "i4", ("num_nodes",))[:] = np.arange(12) + 1 + 12 * rank
    file.createVariable("elem_num_map", "i4", ("num_elem",))[:] = [1 + 2 * rank, 2 + 2 * rank]
    blocks = (1, 2) if rank == 0 else (2,)
    file.createVariable("elem_var_tab", "i4", ("num_el_blk", "num_elem_var"))[:] = [[int(b in blocks)] for b in (1, 2)]
    file.createVariable("time_whole", "f8", ("time_step",))[:] = [0, 0.25]
    file.createVariable("vals_nod_var1", "f8", ("time_step", "num_nodes"))[:] = \
        [[1000 * step + 100 * rank + i for i in range(12)] for step in range(2)]
    for b in blocks:
        file.createVariable("vals_elem_var1eb%d" % b, "f8", ("time_step", "num_el_in_blk%d" % b))[:] = \
            [[10 * step + rank] for step in range(2)]
    file.close()


for rank in range(2):
    write("rank%d.vtu" % rank, vtk.VTK_HEXAHEDRON, [(x + rank, y, z) for x, y, z in CUBE],
          [("p", [100 * rank + i for i in range(8)])], [("damage", [7.5])] if rank else [], 0.5)
    write_exodus(rank)
write("late.vtu", vtk.VTK_TETRA, CORNER, [("p", range(4))], (), 2)
for number in range(1, 4):
    scale = 1 + 0.1 * (number - 1)
    write("move_%d.vtu" % number, vtk.VTK_TETRA, [(x * scale, y * scale, z * scale) for x, y, z in CORNER],
          [("T", [10 * number + i for i in range(4)])])
