#!/usr/bin/python3
"""Makes the files of this folder with VTK's own writers and meshio: python3-vtk9, python3-meshio.

Then expect.py writes what other readers find in them. Run both in this folder when a file is to change.
"""
import meshio
import numpy as np
import vtk
from vtk.util.numpy_support import numpy_to_vtk

rng = np.random.default_rng(11)

# Cells by their corners in meshio's order, which is the one of ours; mid nodes are added in the middle of edges.
EDGES = {
    "line3": [(0, 1)],
    "triangle6": [(0, 1), (1, 2), (2, 0)],
    "quad8": [(0, 1), (1, 2), (2, 3), (3, 0)],
    "tetra10": [(0, 1), (1, 2), (2, 0), (0, 3), (1, 3), (2, 3)],
    "hexahedron20": [(0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)],
    "wedge15": [(0, 1), (1, 2), (2, 0), (3, 4), (4, 5), (5, 3), (0, 3), (1, 4), (2, 5)],
    "pyramid13": [(0, 1), (1, 2), (2, 3), (3, 0), (0, 4), (1, 4), (2, 4), (3, 4)],
}
CORNERS = {
    "line": [(0, 0, 0), (1, 0, 0)],
    "triangle": [(0, 0, 0), (1, 0, 0), (0, 1, 0)],
    "quad": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0)],
    "tetra": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)],
    "hexahedron": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)],
    "wedge": [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (0, 1, 1)],
    "pyramid": [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0.5, 0.5, 1)],
}
VTK_ORDER = {"wedge": [0, 2, 1, 3, 5, 4], "wedge15": [0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13]}
VTK_TYPE = {
    "line": vtk.VTK_LINE, "triangle": vtk.VTK_TRIANGLE, "quad": vtk.VTK_QUAD, "tetra": vtk.VTK_TETRA,
    "hexahedron": vtk.VTK_HEXAHEDRON, "wedge": vtk.VTK_WEDGE, "pyramid": vtk.VTK_PYRAMID,
    "line3": vtk.VTK_QUADRATIC_EDGE, "triangle6": vtk.VTK_QUADRATIC_TRIANGLE, "quad8": vtk.VTK_QUADRATIC_QUAD,
    "tetra10": vtk.VTK_QUADRATIC_TETRA, "hexahedron20": vtk.VTK_QUADRATIC_HEXAHEDRON,
    "wedge15": vtk.VTK_QUADRATIC_WEDGE, "pyramid13": vtk.VTK_QUADRATIC_PYRAMID,
}


def points_of(kind, shift):
    corners = [np.array(p, float) + (shift, 0, 0) for p in CORNERS[kind.rstrip("0123456789")]]
    return corners + [(corners[a] + corners[b]) / 2 for a, b in EDGES.get(kind, [])]


def zoo():
    """One cell of each kind, side by side, and 6 numbers of every sort for each item."""
    points, cells = [], []
    for i, kind in enumerate(VTK_TYPE):
        own = points_of(kind, 2.0 * i)
        cells.append((kind, len(points), len(own)))
        points += own
    return np.array(points), cells


def add(attributes, name, values):
    array = numpy_to_vtk(np.ascontiguousarray(values), deep=1)
    array.SetName(name)
    attributes.AddArray(array)
    return array


def grid(points, cells):
    mesh = vtk.vtkUnstructuredGrid()
    places = vtk.vtkPoints()
    places.SetDataTypeToDouble()
    for p in points:
        places.InsertNextPoint(*p)
    mesh.SetPoints(places)
    for kind, first, count in cells:
        order = VTK_ORDER.get(kind, range(count))
        mesh.InsertNextCell(VTK_TYPE[kind], count, [first + i for i in order])
    return mesh


def fill(mesh, step=0):
    n, m = mesh.GetNumberOfPoints(), mesh.GetNumberOfCells()
    for attributes, count in ((mesh.GetPointData(), n), (mesh.GetCellData(), m)):
        add(attributes, "Temperature", np.round(rng.random(count) * 100, 3) + step)
        add(attributes, "Flux", np.round(rng.random((count, 3)), 3) + step)
        add(attributes, "Stress", np.round(rng.random((count, 6)), 3) + step)
    add(mesh.GetPointData(), "Displacement", np.round(rng.random((n, 3)), 3))
    half = np.round(rng.random((n, 3, 3)), 3)
    add(mesh.GetPointData(), "Strain", (half + half.transpose(0, 2, 1)).reshape(n, 9))
    add(mesh.GetPointData(), "Number", np.arange(n, dtype=np.int32))
    add(mesh.GetPointData(), "Pair", np.zeros((n, 2)))
    add(mesh.GetPointData(), "Four", np.zeros((n, 4)))
    holes = np.arange(n) + 0.5
    holes[::3] = np.nan
    add(mesh.GetPointData(), "Holes", holes)
    texts = vtk.vtkStringArray()
    texts.SetName("Remark")
    for i in range(m):
        texts.InsertNextValue("cell %d" % i)
    mesh.GetCellData().AddArray(texts)
    for attributes, count, first in ((mesh.GetPointData(), n, 101), (mesh.GetCellData(), m, 1001)):
        attributes.SetGlobalIds(add(attributes, "Ids", np.arange(first, first + count, dtype=np.int64)))
    return mesh


def write(writer, mesh, name, **options):
    writer.SetFileName(name)
    for option, value in options.items():
        getattr(writer, option)(value) if value is not None else getattr(writer, option)()
    writer.SetInputData(mesh)
    assert writer.Write() == 1, name


def block(shift, names):
    mesh = grid(np.array(points_of("hexahedron", shift)), [("hexahedron", 0, 8)])
    for name in names:
        add(mesh.GetPointData(), name, np.round(rng.random(8), 3))
    add(mesh.GetCellData(), "Damage", np.round(rng.random(1), 3))
    return mesh


def make_xml():
    points, cells = zoo()
    mesh = fill(grid(points, cells))
    writer = vtk.vtkXMLUnstructuredGridWriter
    write(writer(), mesh, "zoo_ascii.vtu", SetDataModeToAscii=None)
    write(writer(), mesh, "zoo_binary.vtu", SetDataModeToBinary=None)
    write(writer(), mesh, "zoo_raw.vtu", SetDataModeToAppended=None, EncodeAppendedDataOff=None, SetCompressorTypeToNone=None)

    # Another program's file.
    meshio.write("meshio.vtu", meshio.Mesh(
        np.concatenate([points_of("wedge", 0), points_of("hexahedron20", 2), points_of("tetra10", 4)]),
        [("wedge", np.array([range(6)])), ("hexahedron20", np.array([range(6, 26)])), ("tetra10", np.array([range(26, 36)]))],
        point_data={"u": np.round(rng.random((36, 3)), 3)}, cell_data={"p": [np.array([1.5]), np.array([2.5]), np.array([3.5])]}),
        binary=False)

    surface = vtk.vtkPolyData()
    places = vtk.vtkPoints()
    for p in ((0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (-0.5, 0.5, 0), (2, 0, 0), (2, 1, 0)):
        places.InsertNextPoint(*p)
    surface.SetPoints(places)
    for name, lists in (("Verts", [[6]]), ("Lines", [[0, 1, 5]]), ("Polys", [[0, 1, 2, 3, 4], [0, 1, 2, 3]]), ("Strips", [[1, 5, 2, 6]])):
        array = vtk.vtkCellArray()
        for ids in lists:
            array.InsertNextCell(len(ids), ids)
        getattr(surface, "Set" + name)(array)
    add(surface.GetPointData(), "height", np.arange(7.0))
    add(surface.GetCellData(), "colour", np.arange(5.0) + 10)
    write(vtk.vtkXMLPolyDataWriter(), surface, "surface.vtp", SetDataModeToAscii=None)

    tree = vtk.vtkMultiBlockDataSet()
    wing = vtk.vtkMultiBlockDataSet()
    for i, (name, arrays) in enumerate((("skin", ["p", "q"]), ("spar", ["p"]))):
        wing.SetBlock(i, block(2 * i, arrays))
        wing.GetMetaData(i).Set(vtk.vtkCompositeDataSet.NAME(), name)
    tree.SetBlock(0, wing)
    tree.GetMetaData(0).Set(vtk.vtkCompositeDataSet.NAME(), "wing")
    tree.SetBlock(1, block(5, ["q"]))
    tree.GetMetaData(1).Set(vtk.vtkCompositeDataSet.NAME(), "tail")
    write(vtk.vtkXMLMultiBlockDataWriter(), tree, "blocks.vtm", SetDataModeToAscii=None)

    # Two pieces with a ghost cell each: the one next to them in the other piece.
    row = [block(i, ["p"]) for i in range(4)]
    for i, (ids, ghost) in enumerate((((0, 1, 2), 2), ((1, 2, 3), 0))):
        append = vtk.vtkAppendFilter()
        for j in ids:
            append.AddInputData(row[j])
        append.Update()
        piece = append.GetOutput()
        marks = np.zeros(3, np.uint8)
        marks[ghost] = 1
        add(piece.GetCellData(), "vtkGhostType", marks)
        write(vtk.vtkXMLUnstructuredGridWriter(), piece, "row_%d.vtu" % i, SetDataModeToAscii=None)
    open("row.pvtu", "w").write("""<?xml version="1.0"?>
<VTKFile type="PUnstructuredGrid" version="0.1" byte_order="LittleEndian">
 <PUnstructuredGrid GhostLevel="1">
  <PPointData><PDataArray type="Float64" Name="p"/></PPointData>
  <PCellData><PDataArray type="Float64" Name="Damage"/><PDataArray type="UInt8" Name="vtkGhostType"/></PCellData>
  <PPoints><PDataArray type="Float64" NumberOfComponents="3"/></PPoints>
  <Piece Source="row_0.vtu"/><Piece Source="row_1.vtu"/>
 </PUnstructuredGrid>
</VTKFile>
""")

    # A series of two parts; the mesh moves and grows, and "q" is there in the second step only.
    for step, time in enumerate((0.25, 0.5)):
        write(vtk.vtkXMLUnstructuredGridWriter(), block(step, ["p", "q"] if step else ["p"]), "series_a%d.vtu" % step,
              SetDataModeToAscii=None)
    write(vtk.vtkXMLUnstructuredGridWriter(), block(7, ["p"]), "series_b.vtu", SetDataModeToAscii=None)
    open("series.pvd", "w").write("""<?xml version="1.0"?>
<VTKFile type="Collection" version="0.1">
 <Collection>
  <DataSet timestep="0.25" group="" part="0" file="series_a0.vtu"/>
  <DataSet timestep="0.5" group="" part="0" file="series_a1.vtu"/>
  <DataSet timestep="0.5" group="" part="1" file="series_b.vtu"/>
 </Collection>
</VTKFile>
""")


def make_legacy():
    points, cells = zoo()
    mesh = fill(grid(points, cells))
    mesh.GetCellData().RemoveArray("Remark")
    mesh.GetPointData().RemoveArray("Holes")  # VTK cannot read the "nan" that it writes.
    write(vtk.vtkUnstructuredGridWriter(), mesh, "zoo_ascii.vtk", SetFileTypeToASCII=None, SetHeader="A zoo of cells")
    write(vtk.vtkUnstructuredGridWriter(), mesh, "zoo_binary.vtk", SetFileTypeToBinary=None)
    image = vtk.vtkImageData()
    image.SetDimensions(3, 3, 2)
    add(image.GetPointData(), "density", np.arange(18.0))
    write(vtk.vtkStructuredPointsWriter(), image, "voxels.vtk", SetFileTypeToASCII=None)


def make_exodus():
    import netCDF4

    file = netCDF4.Dataset("bar.ex2", "w", format="NETCDF3_64BIT_OFFSET")
    file.title = "Two blocks of a bar"
    file.api_version, file.version = np.float32(8.03), np.float32(8.03)
    file.floating_point_word_size, file.file_size = np.int32(8), np.int32(1)
    for name, size in (("len_string", 33), ("len_line", 81), ("time_step", None), ("num_dim", 3), ("num_nodes", 26),
                       ("num_elem", 3), ("num_el_blk", 3), ("num_el_in_blk1", 1), ("num_nod_per_el1", 8),
                       ("num_el_in_blk2", 1), ("num_nod_per_el2", 8), ("num_el_in_blk3", 1), ("num_nod_per_el3", 15)):
        file.createDimension(name, size)
    nodal = ["DISPLX", "DISPLY", "DISPLZ", "sxx", "syy", "szz", "sxy", "syz", "szx", "TEMP", "LONE_X"]
    element = ["STRESSXX", "STRESSYY", "STRESSZZ", "STRESSXY", "STRESSYZ", "STRESSXZ", "Damage"]
    file.createDimension("num_nod_var", len(nodal))
    file.createDimension("num_elem_var", len(element))

    def texts(name, dimension, names):
        variable = file.createVariable(name, "S1", (dimension, "len_string"))
        for i, text in enumerate(names):
            variable[i] = netCDF4.stringtochar(np.array([text], "S33"))[0]

    texts("eb_names", "num_el_blk", ["core", "tip", "wedge"])
    texts("coor_names", "num_dim", ["x", "y", "z"])
    texts("name_nod_var", "num_nod_var", nodal)
    texts("name_elem_var", "num_elem_var", element)
    file.createVariable("eb_status", "i4", ("num_el_blk",))[:] = 1
    ids = file.createVariable("eb_prop1", "i4", ("num_el_blk",))
    ids.setncattr("name", "ID")
    ids[:] = [10, 20, 30]
    places = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1),
              (0, 0, 2), (1, 0, 2), (1, 1, 2)]
    # The second block stands on the first one and shares four nodes with it.
    points = np.array(places[:8] + [(0, 0, 2), (1, 0, 2), (1, 1, 2)] + [tuple(p) for p in points_of("wedge15", 3)])
    for axis in range(3):
        file.createVariable("coord" + "xyz"[axis], "f8", ("num_nodes",))[:] = points[:, axis]
    # Exodus has the mid nodes of the upright edges before those of the top.
    wedge = [12 + i for i in (0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11)]
    for number, (kind, nodes) in enumerate((("HEX", [range(1, 9)]), ("HEX", [[5, 6, 7, 8, 9, 10, 11, 8]]), ("WEDGE", [wedge]))):
        connect = file.createVariable("connect%d" % (number + 1), "i4",
                                      ("num_el_in_blk%d" % (number + 1), "num_nod_per_el%d" % (number + 1)))
        connect.elem_type = kind
        connect[:] = np.array([list(n) for n in nodes])
    file.createVariable("node_num_map", "i4", ("num_nodes",))[:] = np.arange(26) + 501
    file.createVariable("elem_num_map", "i4", ("num_elem",))[:] = [71, 72, 73]
    # The last block has no stresses.
    truth = np.ones((3, len(element)), int)
    truth[2, :6] = 0
    file.createVariable("elem_var_tab", "i4", ("num_el_blk", "num_elem_var"))[:] = truth
    file.createVariable("time_whole", "f8", ("time_step",))[:] = [0, 0.125, 1]
    for i in range(len(nodal)):
        file.createVariable("vals_nod_var%d" % (i + 1), "f8", ("time_step", "num_nodes"))[:] = np.round(rng.random((3, 26)), 3)
    for i in range(len(element)):
        for b in range(3):
            if truth[b, i]:
                file.createVariable("vals_elem_var%deb%d" % (i + 1, b + 1), "f8",
                                    ("time_step", "num_el_in_blk%d" % (b + 1)))[:] = np.round(rng.random((3, 1)), 3)
    file.close()

    # VTK's own writer, without times.
    write(vtk.vtkExodusIIWriter(), block(0, ["p"]), "static.exo")


def make_ensight():
    def lines(values, form="%12.5e\n"):
        return "".join(form % v for v in values)

    def geometry(scale, parts):
        text = "a frame\nof two parts\nnode id assign\nelement id assign\n"
        for number, (name, kind, own) in enumerate(parts):
            p = np.array(own) * scale
            text += "part\n%10d\n%s\ncoordinates\n%10d\n" % (number + 1, name, len(p))
            text += lines(p.T.ravel()) + "%s\n%10d\n" % (kind, 1) + "".join("%10d" % (i + 1) for i in range(len(p))) + "\n"
        return text

    parts = [("beam", "hexa8", points_of("hexahedron", 0)), ("plug", "penta6", points_of("wedge", 2)), ("cap", "hexa20", points_of("hexahedron20", 4))]

    def variable(on_nodes, components, step, left_out=()):
        text = "values\n"
        for number, (name, kind, own) in enumerate(parts):
            if name not in left_out:
                text += "part\n%10d\n%s\n" % (number + 1, "coordinates" if on_nodes else kind)
                text += lines(np.round(rng.random(components * (len(own) if on_nodes else 1)), 3) + step)
        return text

    head = "FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: %s\nVARIABLE\n"
    time = "TIME\ntime set: 1\nnumber of steps: 2\nfilename start number: 0\nfilename increment: 1\ntime values: 0.5 1.5\n"
    variables = [("scalar per node", "Temp", True, 1), ("vector per node", "Displacement", True, 3), ("tensor symm per node", "Stress", True, 6),
                 ("vector per element", "Flux", False, 3), ("tensor symm per element", "Strain", False, 6), ("scalar per element", "Damage", False, 1)]
    text = head % "frame.geo"
    for kind, name, on_nodes, components in variables:
        text += "%s: 1 %s frame_%s.*\n" % (kind, name, name)
        for step in range(2):
            open("frame_%s.%d" % (name, step), "w").write(variable(on_nodes, components, step, ("plug",) if name == "Temp" else ()))
    open("frame.case", "w").write(text + "constant per case: Load 7.5\n" + time)
    open("frame.geo", "w").write(geometry(1, parts))

    open("moving.case", "w").write(head % "1 moving.geo*" + "scalar per node: 1 Temp frame_Temp.*\n" + time)
    for step in range(2):
        open("moving.geo%d" % step, "w").write(geometry(1 + step, parts))

    # Binary, by VTK's own writer.
    mesh = block(0, ["p"])
    add(mesh.GetPointData(), "Velocity", np.round(rng.random((8, 3)), 3))
    add(mesh.GetCellData(), "BlockId", np.ones(1, np.int32))
    writer = vtk.vtkEnSightWriter()
    writer.SetFileName("binary")
    writer.SetInputData(mesh)
    writer.Write()
    writer.WriteCaseFile(1)


if __name__ == "__main__":
    make_xml()
    make_legacy()
    make_exodus()
    make_ensight()
