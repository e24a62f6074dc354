#include "OrvImportVtk/XmlReaders.h"

#include "OrvImportCae/CaeReaders.h"
#include "OrvImportVtk/VtkVectorArray.h"
#include "OrvImportVtk/XmlArrays.h"

#include <vtkBitArray.h>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPoints.h>
#include <vtkPointSet.h>
#include <vtkTypeInt32Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLDataElement.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>
#include <set>
#include <string_view>
#include <vector>

namespace orv::imp::cae {
namespace {

bool isCalled(vtkXMLDataElement* element, std::string_view name) {
    const char* value = element->GetAttribute("Name");
    return value && value == name;
}

vtkXMLDataElement* findArray(vtkXMLDataElement* parent, std::string_view name) {
    for (int i = 0; parent && i < parent->GetNumberOfNestedElements(); ++i) {
        if (isCalled(parent->GetNestedElement(i), name)) {
            return parent->GetNestedElement(i);
        }
    }
    return nullptr;
}

template <class IsWanted>
std::vector<vtkXMLDataElement*> arraysOf(vtkXMLDataElement* list, IsWanted isWanted) {
    std::vector<vtkXMLDataElement*> arrays;
    for (int i = 0; list && i < list->GetNumberOfNestedElements(); ++i) {
        if (isWanted(list->GetNestedElement(i)) != 0) {
            arrays.push_back(list->GetNestedElement(i));
        }
    }
    return arrays;
}

bool isAlike(vtkXMLDataElement* array, vtkXMLDataElement* other) {
    return std::ranges::all_of(std::array{"Name", "type", "NumberOfComponents"}, [&](const char* name) {
        const char* value = array->GetAttribute(name);
        const char* otherValue = other->GetAttribute(name);
        return value && otherValue ? std::strcmp(value, otherValue) == 0 : value == otherValue;
    });
}

// VTK asks each array for the names of its components, one by one.
bool areComponentsFew(vtkXMLDataElement* root, ug::Error* error) {
    constexpr int MOST_COMPONENTS = 1 << 16;
    std::vector<vtkXMLDataElement*> left = {root};
    while (!left.empty()) {
        vtkXMLDataElement* element = left.back();
        left.pop_back();
        int count = 0;
        if (element->GetScalarAttribute("NumberOfComponents", count) && count > MOST_COMPONENTS) {
            return XmlArrays::fail(element,
                                   "expected at most " + std::to_string(MOST_COMPONENTS) + " components, found " +
                                       std::to_string(count),
                                   error);
        }
        for (int i = 0; i < element->GetNumberOfNestedElements(); ++i) {
            left.push_back(element->GetNestedElement(i));
        }
    }
    return true;
}

/// What all five kinds have in common. A failure is told once, and VTK is let go on with zeros, as it forgets to delete
/// things when it is told of one.
template <class Base>
class CheckedReader : public Base {
protected:
    /// Whether all that VTK is about to make room for can be in the file.
    virtual bool check(ug::Error* error) = 0;

    /// Whether values that have been read, so many from an index on, can be used.
    virtual bool areSound(vtkXMLDataElement*, vtkDataArray*, vtkIdType, vtkIdType, ug::Error*) {
        return true;
    }

    int ReadVTKFile(vtkXMLDataElement* root) override {
        ug::Error error;
        m_arrays = std::make_unique<XmlArrays>(); // VTK's parser begins anew whenever other arrays are asked for.
        if (!areComponentsFew(root, &error) || !m_arrays->open(this->FileName, this->XMLParser, &error)) {
            vtkErrorMacro(<< error.message().toStdString());
            return 0;
        }
        return Base::ReadVTKFile(root);
    }

    int ReadPrimaryElement(vtkXMLDataElement* element) override {
        const int isRead = Base::ReadPrimaryElement(element);
        ug::Error error;
        if (!checkTime(&error)) {
            vtkErrorMacro(<< error.message().toStdString());
            return 0;
        }
        return isRead;
    }

    void ReadXMLData() override {
        ug::Error error;
        this->FieldDataElement = nullptr;
        m_hasFailed = false;
        if (check(&error)) {
            Base::ReadXMLData();
        } else {
            tellFailure(error);
        }
    }

    int ReadArrayValues(vtkXMLDataElement* element, vtkIdType arrayIndex, vtkAbstractArray* array, vtkIdType first,
                        vtkIdType count, vtkXMLReader::FieldType type) override {
        auto* numbers = vtkDataArray::SafeDownCast(array);
        if (!numbers || vtkBitArray::SafeDownCast(array)) {
            return Base::ReadArrayValues(element, arrayIndex, array, first, count, type);
        }
        ug::Error error;
        const bool hasPlace = arrayIndex >= 0 && count >= 0 && arrayIndex <= numbers->GetNumberOfValues() - count;
        if (!m_hasFailed && !(hasPlace && readValues(element, arrayIndex, numbers, first, count, type, &error) &&
                              areSound(element, numbers, arrayIndex, count, &error))) {
            tellFailure(error);
        }
        if (m_hasFailed && hasPlace && count > 0) {
            std::memset(numbers->GetVoidPointer(arrayIndex), 0,
                        std::size_t(count) * std::size_t(numbers->GetDataTypeSize()));
        }
        return 1;
    }

    /// The arrays of a piece's points and cells that are to be read.
    bool checkData(int piece, std::int64_t pointCount, std::int64_t cellCount, ug::Error* error) {
        const auto isWantedOfPoints = [this](vtkXMLDataElement* array) { return this->PointDataArrayIsEnabled(array); };
        const auto isWantedOfCells = [this](vtkXMLDataElement* array) { return this->CellDataArrayIsEnabled(array); };
        return checkArrays(arraysOf(this->PointDataElements[piece], isWantedOfPoints),
                           arraysOf(this->PointDataElements[0], isWantedOfPoints), pointCount, error) &&
               checkArrays(arraysOf(this->CellDataElements[piece], isWantedOfCells),
                           arraysOf(this->CellDataElements[0], isWantedOfCells), cellCount, error);
    }

    /// The coordinates of a piece's points.
    bool checkPoints(vtkXMLDataElement* points, std::int64_t count, ug::Error* error) {
        vtkXMLDataElement* array =
            points && points->GetNumberOfNestedElements() > 0 ? points->GetNestedElement(0) : nullptr;
        if (count == 0) {
            return true;
        }
        int width = 0;
        if (!array || !array->GetScalarAttribute("NumberOfComponents", width) || width != 3) {
            return ug::fail(error, "expected points of three components, found none");
        }
        return m_arrays->hasRoom(array, count, error);
    }

    XmlArrays& arrays() {
        return *m_arrays;
    }

    /// Tells how far one array has come.
    XmlBytes::Tell teller() {
        return [this](double share) {
            const float* range = this->ProgressRange;
            this->UpdateProgressDiscrete(range[0] + float(share) * (range[1] - range[0]));
        };
    }

    bool hasFailed() const {
        return m_hasFailed;
    }

    void tellFailure(const ug::Error& error) {
        m_hasFailed = true;
        vtkErrorMacro(<< error.message().toStdString());
    }

private:
    // Of the fields nothing but the time is left for VTK.
    bool checkTime(ug::Error* error) {
        vtkXMLDataElement* fields = this->FieldDataElement;
        vtkXMLDataElement* time = findArray(fields, "TimeValue");
        for (int i = fields ? fields->GetNumberOfNestedElements() - 1 : -1; i >= 0; --i) {
            if (fields->GetNestedElement(i) != time) {
                fields->RemoveNestedElement(fields->GetNestedElement(i));
            }
        }
        vtkIdType count = 0;
        return !time || !time->GetScalarAttribute("NumberOfTuples", count) || m_arrays->hasRoom(time, count, error);
    }

    // VTK makes the arrays of the first piece, each name once, and takes those of a piece for them in turn.
    bool checkArrays(const std::vector<vtkXMLDataElement*>& arrays, const std::vector<vtkXMLDataElement*>& first,
                     std::int64_t count, ug::Error* error) {
        std::set<std::string_view> names;
        for (std::size_t i = 0; i < arrays.size(); ++i) {
            if (i >= first.size() || !isAlike(arrays[i], first[i])) {
                return XmlArrays::fail(arrays[i], "expected the arrays of the first piece, found another one", error);
            }
            if (!names.insert(arrays[i]->GetAttribute("Name")).second) {
                return XmlArrays::fail(arrays[i], "expected another name, found that of two arrays", error);
            }
            if (!m_arrays->hasRoom(arrays[i], count, error)) {
                return false;
            }
        }
        return arrays.size() == first.size() || XmlArrays::fail(first[arrays.size()], "not found in a piece", error);
    }

    bool readValues(vtkXMLDataElement* element, vtkIdType arrayIndex, vtkDataArray* array, vtkIdType first,
                    vtkIdType count, vtkXMLReader::FieldType type, ug::Error* error) {
        // What VTK calls so it also gives another meaning when it has read it.
        const bool isGhostLevel = isCalled(element, "vtkGhostLevels");
        if (XmlArrays::isText(element) || isGhostLevel) {
            return Base::ReadArrayValues(element, arrayIndex, array, first, count, type) != 0 ||
                   XmlArrays::fail(element,
                                   "byte " + std::to_string(element->GetXMLByteIndex()) + ": expected " +
                                       std::to_string(count) + " values, found fewer",
                                   error);
        }
        const bool isRead = m_arrays->read(element, first, count, std::size_t(array->GetDataTypeSize()),
                                           array->GetVoidPointer(arrayIndex), teller(), error);
        array->Modified();
        return isRead;
    }

    std::unique_ptr<XmlArrays> m_arrays;
    bool m_hasFailed = false;
};

constexpr std::string_view CELL_LISTS[] = {"Cells", "Verts", "Lines", "Strips", "Polys"};

bool isOfCells(vtkXMLDataElement* array) {
    vtkXMLDataElement* parent = array->GetParent();
    return parent && std::find(std::begin(CELL_LISTS), std::end(CELL_LISTS), std::string_view(parent->GetName())) !=
                         std::end(CELL_LISTS);
}

bool isOfSingleIntegers(vtkXMLDataElement* array) {
    int type = 0;
    int width = 1;
    array->GetScalarAttribute("NumberOfComponents", width);
    return width == 1 && array->GetAttribute("type") && array->GetWordTypeAttribute("type", type) &&
           type != VTK_FLOAT && type != VTK_DOUBLE && type != VTK_BIT && type != VTK_STRING;
}

template <class Number>
bool isAscending(const Number* numbers, vtkIdType count, std::int64_t* last) {
    bool isRight = true;
    for (vtkIdType i = 0; i < count; ++i) {
        const auto number = std::int64_t(numbers[i]);
        isRight &= number >= *last;
        *last = number;
    }
    return isRight;
}

/// Meshes that list their points and the points of their cells.
template <class Base>
class ListReader : public CheckedReader<Base> {
protected:
    bool checkCells(vtkXMLDataElement* cells, std::int64_t count, bool haveTypes, ug::Error* error) {
        return count == 0 ||
               (checkNumbers(cells, "offsets", count, error) && checkNumbers(cells, "connectivity", 0, error) &&
                (!haveTypes || checkNumbers(cells, "types", count, error)));
    }

    // VTK makes room for as many nodes as the last offset tells, and writes beyond it when others are larger.
    bool areSound(vtkXMLDataElement* element, vtkDataArray* array, vtkIdType first, vtkIdType count,
                  ug::Error* error) override {
        if (!isCalled(element, "offsets") || !isOfCells(element)) {
            return true;
        }
        bool areRight = false;
        std::int64_t nodeCount = 0;
        switch (array->GetDataType()) {
            vtkTemplateMacro(
                areRight = isAscending(static_cast<const VTK_TT*>(array->GetVoidPointer(first)), count, &nodeCount));
        }
        vtkXMLDataElement* nodes = this->FindDataArrayWithName(element->GetParent(), "connectivity");
        return (areRight && this->arrays().hasRoom(nodes, nodeCount, nullptr)) || failWithOffsets(element, error);
    }

    static bool failWithOffsets(vtkXMLDataElement* offsets, ug::Error* error) {
        return XmlArrays::fail(offsets, "the offsets of the cells are damaged", error);
    }

private:
    bool checkNumbers(vtkXMLDataElement* cells, const char* name, std::int64_t count, ug::Error* error) {
        vtkXMLDataElement* array = cells ? this->FindDataArrayWithName(cells, name) : nullptr;
        if (!array || !isOfSingleIntegers(array)) {
            return ug::fail(error, Str("expected the " + std::string(name) + " of cells as whole numbers, found none"));
        }
        return this->arrays().hasRoom(array, count, error);
    }
};

/// Passes over the faces of polyhedra, too, which become no elements: VTK does not survive faces that are damaged.
class GridReader : public ListReader<vtkXMLUnstructuredGridReader> {
public:
    static GridReader* New();

protected:
    int ReadPiece(vtkXMLDataElement* piece) override {
        const int isRead = vtkXMLUnstructuredGridReader::ReadPiece(piece);
        vtkXMLDataElement* cells = isRead ? CellElements[Piece] : nullptr;
        for (const char* name : {"faces", "faceoffsets"}) {
            while (vtkXMLDataElement* array = findArray(cells, name)) {
                array->SetAttribute("Name", "passed over");
            }
        }
        return isRead;
    }

    // VTK's own would have to be copied.
    void SetupOutputData() override {
        vtkXMLUnstructuredGridReader::SetupOutputData();
        vtkPoints* points = vtkPointSet::SafeDownCast(GetCurrentOutput())->GetPoints();
        if (points && points->GetDataType() == VTK_DOUBLE) {
            points->SetData(VtkPlaces::make(3, 3 * std::size_t(points->GetNumberOfPoints())));
        }
    }

    // The cells of the usual files go past VTK, for which they are larger numbers and several copies of them.
    int ReadPieceData() override {
        if (!hasPlainCells()) {
            return vtkXMLUnstructuredGridReader::ReadPieceData();
        }
        const float whole[2] = {ProgressRange[0], ProgressRange[1]};
        constexpr int STEPS = 2;
        SetProgressRange(whole, 0, STEPS);
        if (!vtkXMLUnstructuredDataReader::ReadPieceData()) {
            return 0;
        }
        SetProgressRange(whole, 1, STEPS);
        ug::Error error;
        if (!hasFailed() && !readCells(&error)) {
            tellFailure(error);
        }
        return 1;
    }

    bool check(ug::Error* error) override {
        for (int piece = 0; piece < NumberOfPieces; ++piece) {
            if (!checkPoints(PointElements[piece], NumberOfPoints[piece], error) ||
                !checkCells(CellElements[piece], NumberOfCells[piece], true, error) ||
                !checkData(piece, NumberOfPoints[piece], NumberOfCells[piece], error)) {
                return false;
            }
        }
        return true;
    }

private:
    // One piece, and numbers that have room in 32 bits.
    bool hasPlainCells() {
        vtkXMLDataElement* cells = CellElements[Piece];
        return NumberOfPieces == 1 && NumberOfCells[Piece] > 0 &&
               NumberOfCells[Piece] < std::numeric_limits<std::int32_t>::max() &&
               XmlArrays::hasIndexes(FindDataArrayWithName(cells, "offsets")) &&
               XmlArrays::hasIndexes(FindDataArrayWithName(cells, "connectivity")) &&
               FindDataArrayWithName(cells, "types")->GetAttribute("type") == std::string_view("UInt8");
    }

    bool readCells(ug::Error* error) {
        vtkXMLDataElement* cells = CellElements[Piece];
        vtkXMLDataElement* ends = FindDataArrayWithName(cells, "offsets");
        vtkXMLDataElement* points = FindDataArrayWithName(cells, "connectivity");
        const vtkIdType cellCount = NumberOfCells[Piece];
        vtkNew<vtkTypeInt32Array> offsets;
        offsets->SetNumberOfValues(cellCount + 1);
        offsets->SetValue(0, 0);
        if (!arrays().readIndexes(ends, cellCount, offsets->GetPointer(1), teller(), error)) {
            return false;
        }
        const std::int64_t pointCount = offsets->GetValue(cellCount);
        if (!std::is_sorted(offsets->GetPointer(0), offsets->GetPointer(0) + cellCount + 1) ||
            !arrays().hasRoom(points, pointCount, nullptr)) {
            return failWithOffsets(ends, error);
        }
        const auto connectivity = VtkIndexes::make(1, std::size_t(pointCount));
        if (!arrays().readIndexes(points, pointCount, connectivity->GetPointer(0), teller(), error)) {
            return false;
        }
        auto* grid = vtkUnstructuredGrid::SafeDownCast(GetCurrentOutput());
        grid->GetCells()->SetData(offsets.Get(), connectivity.Get());
        return ReadArrayValues(FindDataArrayWithName(cells, "types"), 0, grid->GetCellTypesArray(), 0, cellCount,
                               vtkXMLReader::OTHER) != 0;
    }
};

vtkStandardNewMacro(GridReader);

class SurfaceReader : public ListReader<vtkXMLPolyDataReader> {
public:
    static SurfaceReader* New();

protected:
    bool check(ug::Error* error) override {
        std::int64_t all = 0;
        for (int piece = 0; piece < NumberOfPieces; ++piece) {
            const vtkIdType counts[] = {NumberOfVerts[piece], NumberOfLines[piece], NumberOfStrips[piece],
                                        NumberOfPolys[piece]};
            if (!checkPoints(PointElements[piece], NumberOfPoints[piece], error) ||
                !checkCells(VertElements[piece], counts[0], false, error) ||
                !checkCells(LineElements[piece], counts[1], false, error) ||
                !checkCells(StripElements[piece], counts[2], false, error) ||
                !checkCells(PolyElements[piece], counts[3], false, error)) {
                return false;
            }
            const std::int64_t cellCount = std::accumulate(std::begin(counts), std::end(counts), std::int64_t(0));
            if (!checkData(piece, NumberOfPoints[piece], cellCount, error)) {
                return false;
            }
            all += cellCount;
        }
        // VTK counts them so.
        return all <= std::numeric_limits<int>::max() ||
               ug::fail(error, Str("expected at most 2147483647 cells of a surface, found " + std::to_string(all)));
    }
};

vtkStandardNewMacro(SurfaceReader);

// Of nodes from one to another in each of three directions. Of very many just a number as large.
std::int64_t countOf(const int* extent, bool ofCells) {
    constexpr std::int64_t MOST = std::int64_t(1) << 40; // Sums of these are numbers, too.
    std::int64_t count = 1;
    for (int axis = 0; axis < 3; ++axis) {
        const std::int64_t steps = std::int64_t(extent[2 * axis + 1]) - extent[2 * axis];
        const std::int64_t own = std::max<std::int64_t>(ofCells ? std::max<std::int64_t>(steps, 1) : steps + 1, 0);
        count = own != 0 && count > MOST / own ? MOST : count * own;
    }
    return count;
}

/// Grids of lines, rows and layers of nodes.
template <class Base>
class StructuredReader : public CheckedReader<Base> {
protected:
    /// Whether the file tells where the nodes of a piece are.
    virtual bool checkPlaces(int piece, const int* extent, ug::Error* error) = 0;

    /// Whether it does so for each single one.
    virtual bool areNodesListed() const {
        return false;
    }

    bool check(ug::Error* error) override {
        constexpr std::int64_t MOST_UNLISTED_NODES = std::int64_t(1) << 25; // Unless the file is larger.
        std::int64_t nodeCount = 0;
        std::int64_t unlistedCount = 0;
        for (int piece = 0; piece < this->NumberOfPieces; ++piece) {
            const int* extent = this->PieceExtents + 6 * piece;
            const std::int64_t own = countOf(extent, false);
            if (!checkPlaces(piece, extent, error) || !this->checkData(piece, own, countOf(extent, true), error)) {
                return false;
            }
            nodeCount += own;
            unlistedCount += areNodesListed() || haveAnyValues(piece, extent) ? 0 : own;
        }
        const std::int64_t whole = countOf(this->WholeExtent, false);
        if (whole > nodeCount) {
            return ug::fail(error, Str("expected " + std::to_string(whole) + " nodes of a grid, found pieces of " +
                                       std::to_string(nodeCount)));
        }
        return unlistedCount <= std::max(this->arrays().fileSize(), MOST_UNLISTED_NODES) ||
               ug::fail(error, Str("expected at most " + std::to_string(MOST_UNLISTED_NODES) +
                                   " nodes of a grid without values, found " + std::to_string(unlistedCount)));
    }

private:
    // One array for all of its nodes or cells shows that a grid is as large as it tells.
    bool haveAnyValues(int piece, const int* extent) {
        const auto haveAny = [&](vtkXMLDataElement* list, std::int64_t count) {
            for (int i = 0; list && i < list->GetNumberOfNestedElements(); ++i) {
                if (this->arrays().hasRoom(list->GetNestedElement(i), count, nullptr)) {
                    return true;
                }
            }
            return false;
        };
        return haveAny(this->PointDataElements[piece], countOf(extent, false)) ||
               haveAny(this->CellDataElements[piece], countOf(extent, true));
    }
};

class CurvedGridReader : public StructuredReader<vtkXMLStructuredGridReader> {
public:
    static CurvedGridReader* New();

protected:
    bool checkPlaces(int piece, const int* extent, ug::Error* error) override {
        return checkPoints(PointElements[piece], countOf(extent, false), error);
    }

    bool areNodesListed() const override {
        return true;
    }
};

vtkStandardNewMacro(CurvedGridReader);

class PlanesReader : public StructuredReader<vtkXMLRectilinearGridReader> {
public:
    static PlanesReader* New();

protected:
    bool checkPlaces(int piece, const int* extent, ug::Error* error) override {
        constexpr int AXES = 3;
        vtkXMLDataElement* coordinates = CoordinateElements[piece];
        for (int axis = 0; axis < AXES && countOf(extent, false) > 0; ++axis) {
            const std::int64_t count = std::int64_t(extent[2 * axis + 1]) - extent[2 * axis] + 1;
            if (!coordinates || coordinates->GetNumberOfNestedElements() < AXES) {
                return ug::fail(error, "expected coordinates on three axes, found none");
            }
            if (!arrays().hasRoom(coordinates->GetNestedElement(axis), count, error)) {
                return false;
            }
        }
        return true;
    }
};

vtkStandardNewMacro(PlanesReader);

class ImageReader : public StructuredReader<vtkXMLImageDataReader> {
public:
    static ImageReader* New();

protected:
    bool checkPlaces(int, const int*, ug::Error*) override {
        return true;
    }
};

vtkStandardNewMacro(ImageReader);

template <class Reader>
vtkSmartPointer<vtkXMLReader> make() {
    return vtkSmartPointer<Reader>::New();
}

struct Kind {
    const char* extension;
    vtkSmartPointer<vtkXMLReader> (*make)();
};

constexpr Kind KINDS[] = {
    {"vtu", make<GridReader>},   {"vtp", make<SurfaceReader>}, {"vts", make<CurvedGridReader>},
    {"vtr", make<PlanesReader>}, {"vti", make<ImageReader>},
};

} // namespace

vtkSmartPointer<vtkXMLReader> makeXmlReader(const std::string& filename) {
    const std::string extension = fileExtension(filename);
    for (const Kind& kind : KINDS) {
        if (extension == kind.extension) {
            return kind.make();
        }
    }
    return nullptr;
}

} // namespace orv::imp::cae
