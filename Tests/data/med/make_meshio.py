"""Writes a MED file as meshio does: names of its own, fields without names of components. See make_med.sh."""

import meshio
import numpy

points = numpy.array([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0], [2, 0, 0]], dtype=float)
cells = [("triangle", numpy.array([[1, 4, 2]])), ("quad", numpy.array([[0, 1, 2, 3]]))]
mesh = meshio.Mesh(
    points,
    cells,
    point_data={"moved": 0.1 * numpy.arange(15.0).reshape(5, 3), "heat": numpy.arange(5.0)},
    cell_data={"load": [numpy.array([7.5]), numpy.array([8.5])]},
)
meshio.write("meshio.med", mesh, file_format="med")
