#pragma once

#include <string>

#include <vtkSmartPointer.h>

class vtkXMLReader;

namespace orv::imp::cae {

/// A reader of VTK's for a file of one mesh in XML, by the file's extension: vtu, vtp, vts, vtr or vti. VTK itself
/// takes the numbers that tell sizes on trust; this one looks at them before it lets VTK make room for anything, and
/// reads the arrays itself. It passes over the faces of polyhedra and over all fields but "TimeValue".
/// @return null for another extension
vtkSmartPointer<vtkXMLReader> makeXmlReader(const std::string& filename);

} // namespace orv::imp::cae
