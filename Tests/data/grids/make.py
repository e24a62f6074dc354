#!/usr/bin/python3
"""Makes the files of this folder with VTK's own writers: grids of all sorts as legacy and as XML files, in all encodings.
Needs python3-vtk9.

Then expect.py writes what another reader finds in them. Run both in this folder when a file is to change.
"""
import numpy as np
import vtk
from vtk.util.numpy_support import numpy_to_vtk

rng = np.random.default_rng(5)


def add(attributes, name, values):
    array = numpy_to_vtk(np.ascontiguousarray(values), deep=1)
    array.SetName(name)
    attributes.AddArray(array)


def fill(mesh):
    for attributes, count in ((mesh.GetPointData(), mesh.GetNumberOfPoints()), (mesh.GetCellData(), mesh.GetNumberOfCells())):
        add(attributes, "Temperature", np.round(rng.random(count), 3))
        add(attributes, "Flux", np.round(rng.random((count, 3)), 3).astype(np.float32))
        add(attributes, "Stress", np.round(rng.random((count, 6)), 3))
        add(attributes, "Number", np.arange(count, dtype=np.int32))
    return mesh


def points(places):
    array = vtk.vtkPoints()
    array.SetDataTypeToDouble()
    for place in places:
        array.InsertNextPoint(*place)
    return array


def solids(has_polyhedron=False):
    mesh = vtk.vtkUnstructuredGrid()
    mesh.SetPoints(points([(x, y, z) for z in (0, 1) for y in (0, 1) for x in (0, 1, 2)] + [(0.5, 0.5, 2)]))
    mesh.InsertNextCell(vtk.VTK_HEXAHEDRON, 8, [0, 1, 4, 3, 6, 7, 10, 9])
    mesh.InsertNextCell(vtk.VTK_TETRA, 4, [1, 2, 5, 8])
    mesh.InsertNextCell(vtk.VTK_PYRAMID, 5, [6, 7, 10, 9, 12])
    if has_polyhedron:
        faces = [3, 1, 2, 5, 3, 1, 2, 8, 3, 2, 5, 8, 3, 1, 5, 8]
        stream = vtk.vtkIdList()
        for number in [4] + faces:
            stream.InsertNextId(number)
        mesh.InsertNextCell(vtk.VTK_POLYHEDRON, stream)
    return fill(mesh)


def surface():
    mesh = vtk.vtkPolyData()
    mesh.SetPoints(points([(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (-0.5, 0.5, 0), (2, 0, 0), (2, 1, 0)]))
    for name, lists in (("Verts", [[6]]), ("Lines", [[0, 1]]), ("Polys", [[0, 1, 2, 3], [0, 3, 4]]), ("Strips", [[1, 5, 2]])):
        cells = vtk.vtkCellArray()
        for ids in lists:
            cells.InsertNextCell(len(ids), ids)
        getattr(mesh, "Set" + name)(cells)
    return fill(mesh)


def curved(first=0):
    mesh = vtk.vtkStructuredGrid()
    mesh.SetExtent(first, first + 2, 0, 1, 0, 1)
    mesh.SetPoints(points([(x + 0.25 * y, y + 0.125 * z, z) for z in (0, 1) for y in (0, 1) for x in range(first, first + 3)]))
    return fill(mesh)


def planes(first=0):
    mesh = vtk.vtkRectilinearGrid()
    mesh.SetExtent(first, first + 2, 0, 2, 0, 0)
    for axis, values in zip("XYZ", ([first, first + 1.5, first + 2], [0, 1, 4], [0.5])):
        array = vtk.vtkDoubleArray()
        for value in values:
            array.InsertNextValue(value)
        getattr(mesh, "Set%sCoordinates" % axis)(array)
    return fill(mesh)


def image(first=0):
    mesh = vtk.vtkImageData()
    mesh.SetExtent(first, first + 2, 0, 1, 0, 2)
    mesh.SetOrigin(10, 20, 30)
    mesh.SetSpacing(0.5, 0.25, 2)
    return fill(mesh)


def write(writer, mesh, name, **options):
    writer.SetFileName(name)
    for option, value in options.items():
        getattr(writer, option)(*([] if value is None else [value]))
    writer.SetInputData(mesh)
    assert writer.Write() == 1, name


LEGACY = {"surface": (surface, vtk.vtkPolyDataWriter), "curved": (curved, vtk.vtkStructuredGridWriter),
          "planes": (planes, vtk.vtkRectilinearGridWriter), "image": (image, vtk.vtkStructuredPointsWriter),
          "solids": (solids, vtk.vtkUnstructuredGridWriter)}
XML = {"surface": vtk.vtkXMLPolyDataWriter, "curved": vtk.vtkXMLStructuredGridWriter, "planes": vtk.vtkXMLRectilinearGridWriter,
       "image": vtk.vtkXMLImageDataWriter, "solids": vtk.vtkXMLUnstructuredGridWriter}
EXTENSIONS = {"surface": "vtp", "curved": "vts", "planes": "vtr", "image": "vti", "solids": "vtu"}
PIECES = {"curved": (curved, "StructuredGrid"), "planes": (planes, "RectilinearGrid"), "image": (image, "ImageData")}
ENCODINGS = {"inline": dict(SetDataModeToBinary=None, SetCompressorTypeToNone=None),
             "zlib": dict(SetDataModeToAppended=None, SetCompressorTypeToZLib=None),
             "lz4": dict(SetDataModeToBinary=None, SetCompressorTypeToLZ4=None, SetHeaderTypeToUInt64=None),
             "lzma": dict(SetDataModeToAppended=None, EncodeAppendedDataOff=None, SetCompressorTypeToLZMA=None, SetBlockSize=64),
             "raw64": dict(SetDataModeToAppended=None, EncodeAppendedDataOff=None, SetCompressorTypeToNone=None, SetHeaderTypeToUInt64=None),
             "big": dict(SetDataModeToAppended=None, EncodeAppendedDataOff=None, SetCompressorTypeToNone=None, SetByteOrderToBigEndian=None),
             "bigzlib": dict(SetDataModeToBinary=None, SetCompressorTypeToZLib=None, SetByteOrderToBigEndian=None)}

for name, (make, writer) in LEGACY.items():
    mesh = make()
    write(writer(), mesh, name + "_ascii.vtk", SetFileTypeToASCII=None)
    write(writer(), mesh, name + "_binary.vtk", SetFileTypeToBinary=None)
    write(writer(), mesh, name + "_old.vtk", SetFileTypeToASCII=None, SetFileVersion=42)
    write(writer(), mesh, name + "_old_binary.vtk", SetFileTypeToBinary=None, SetFileVersion=42)
    write(XML[name](), mesh, "%s.%s" % (name, EXTENSIONS[name]), SetDataModeToAscii=None)
    for encoding, options in ENCODINGS.items() if name == "solids" else [("raw64", ENCODINGS["raw64"]), ("zlib", ENCODINGS["zlib"])]:
        write(XML[name](), mesh, "%s_%s.%s" % (name, encoding, EXTENSIONS[name]), **options)
write(vtk.vtkUnstructuredGridWriter(), solids(True), "polyhedron.vtk", SetFileTypeToASCII=None)
write(vtk.vtkXMLUnstructuredGridWriter(), solids(True), "polyhedron.vtu", SetDataModeToAscii=None)

# Two pieces side by side, of which only the first one has "Flux".
for name, (make, kind) in PIECES.items():
    extension = EXTENSIONS[name]
    text = '<VTKFile type="P%s" version="1.0" byte_order="LittleEndian">\n <P%s WholeExtent="0 4 0 2 0 2" GhostLevel="0">\n' % (kind, kind)
    for i in range(2):
        mesh = make(2 * i)
        if i:
            mesh.GetPointData().RemoveArray("Flux")
        write(XML[name](), mesh, "%s_%d.%s" % (name, i, extension), SetDataModeToAscii=None)
        text += '  <Piece Extent="%d %d 0 2 0 2" Source="%s_%d.%s"/>\n' % (2 * i, 2 * i + 2, name, i, extension)
    open("%s.p%s" % (name, extension), "w").write(text + " </P%s>\n</VTKFile>\n" % kind)

# The same of lists, of which only the first one has "Flux" at its points and only the second one "Stress" at its cells.
def write_lists(name, make, kind):
    extension = EXTENSIONS[name]
    text = '<VTKFile type="P%s" version="1.0" byte_order="LittleEndian">\n <P%s GhostLevel="0">\n' % (kind, kind)
    for i in range(2):
        mesh = make()
        (mesh.GetCellData() if i == 0 else mesh.GetPointData()).RemoveArray("Stress" if i == 0 else "Flux")
        write(XML[name](), mesh, "%s_%d.%s" % (name, i, extension), SetDataModeToAscii=None)
        text += '  <Piece Source="%s_%d.%s"/>\n' % (name, i, extension)
    open("%s.p%s" % (name, extension), "w").write(text + " </P%s>\n</VTKFile>\n" % kind)


# What VTK's writers do not write, but its readers read.
open("attributes.vtk", "w").write("""# vtk DataFile Version 3.0
Written by hand
ASCII
DATASET POLYDATA
POINTS 3 float
0 0 0  1 0 0  0 1 0
POLYGONS 1 4
3 0 1 2
CELL_DATA 1
SCALARS material int
LOOKUP_TABLE default
7
POINT_DATA 3
SCALARS p double 1
LOOKUP_TABLE rainbow
0.5 1.5 2.5
LOOKUP_TABLE rainbow 2
0 0 0 1  1 1 1 1
VECTORS v float
1 2 3  4 5 6  7 8 9
NORMALS n float
0 0 1  0 0 1  0 0 1
TEXTURE_COORDINATES tc 2 float
0 0  1 0  0 1
TENSORS t double
1 2 3 2 4 5 3 5 6   0 0 0 0 0 0 0 0 0   1 0 0 0 1 0 0 0 1
COLOR_SCALARS c 3
0 0 1  0.5 0 0  1 1 1
FIELD more 2
pressure 1 3 float
10 20 30
pair 2 3 int
1 2 3 4 5 6
""")

write_lists("solids", solids, "UnstructuredGrid")
write_lists("surface", surface, "PolyData")
