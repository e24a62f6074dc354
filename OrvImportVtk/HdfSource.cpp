#include "OrvImportVtk/HdfSource.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDataSet.h>
#include <vtkDataSetAttributes.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkIdTypeArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>
#include <numeric>
#include <type_traits>

namespace orv::imp::cae {
namespace {

constexpr const char* ROOT = "VTKHDF";
constexpr double LATEST_VERSION = 2; // The second changed nothing of grids and images without steps.
constexpr const char* NOT_IN_FILE = "its values are not in this file";
constexpr const char* ID_NAMES[] = {"GlobalIds", "GlobalPointIds", "GlobalCellIds"};

std::string pathOf(const std::string& name) {
    return std::string(ROOT) + "/" + name;
}

std::uint64_t product(std::span<const std::uint64_t> sizes) {
    std::uint64_t all = 1;
    for (const std::uint64_t size : sizes) {
        all *= size;
    }
    return all;
}

std::string textOf(const std::vector<std::uint64_t>& sizes) {
    std::string text;
    for (const std::uint64_t size : sizes) {
        text += (text.empty() ? "" : " x ") + std::to_string(size);
    }
    return text;
}

/// The numbers that a data set has for each item, 0 when it is not for them.
int componentCount(const HdfShape& shape, const std::vector<std::uint64_t>& items) {
    constexpr std::uint64_t MOST = 100;
    if (shape.sizes.size() < items.size() || !std::equal(items.begin(), items.end(), shape.sizes.begin())) {
        return 0;
    }
    const std::uint64_t count = product(std::span(shape.sizes).subspan(items.size()));
    return count <= MOST ? int(count) : 0;
}

/// Numbers that pieces have one after the other.
class Pieces {
public:
    struct Run {
        std::size_t piece;
        bool isFirst; ///< Of the piece.
        bool isLast;
        std::span<const long long> numbers;
    };

    /// @param counts of each piece
    explicit Pieces(const std::vector<long long>& counts) : m_counts(counts) {}

    /// Goes on with these numbers.
    template <class Take>
    bool each(std::span<const long long> numbers, Take take) {
        while (!numbers.empty()) {
            const std::size_t left = std::size_t(m_counts[m_piece]) - m_done;
            const std::size_t size = std::min(left, numbers.size());
            if (size > 0 && !take(Run{m_piece, m_done == 0, size == left, numbers.first(size)})) {
                return false;
            }
            numbers = numbers.subspan(size);
            m_done = size == left ? 0 : m_done + size;
            m_piece += size == left;
        }
        return true;
    }

private:
    const std::vector<long long>& m_counts;
    std::size_t m_piece = 0;
    std::size_t m_done = 0; ///< Of its numbers.
};

/// Copies numbers, adding to each, by steps that processors take several of at once. False when one is negative or not
/// below the count, which a Number can hold.
template <class Number>
bool copyShifted(std::span<const long long> numbers, std::uint64_t count, Number shift, Number* to) {
    using Bits = std::make_unsigned_t<Number>;
    std::uint64_t bits = 0;
    Number largest = 0;
    for (const long long number : numbers) {
        bits |= std::uint64_t(number);
        largest = std::max(largest, Number(number));
        *to++ = Number(Bits(number) + Bits(shift));
    }
    return bits <= std::uint64_t(std::numeric_limits<Number>::max()) && std::uint64_t(largest) < count;
}

template <class Array, class Number>
vtkSmartPointer<Array> readNumbers(const HdfFile& file, const std::string& path, int components, std::size_t items,
                                   ug::Error* error) {
    const auto array = vtkSmartPointer<Array>::New();
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(vtkIdType(items));
    const std::span<Number> values(array->GetPointer(0), items * std::size_t(components));
    return file.read(path, values, error) ? array : nullptr;
}

vtkSmartPointer<vtkDataArray> readReals(const HdfFile& file, const std::string& path, int components, std::size_t items,
                                        ug::Error* error) {
    const std::optional<HdfShape> shape = file.shape(path);
    if (shape && shape->isFloat) {
        return readNumbers<vtkFloatArray, float>(file, path, components, items, error);
    }
    return readNumbers<vtkDoubleArray, double>(file, path, components, items, error);
}

} // namespace

HdfSource::HdfSource() = default;
HdfSource::~HdfSource() = default;

bool HdfSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    m_file = std::make_unique<HdfFile>();
    if (!m_file->open(filename, error)) {
        return false;
    }
    double version[2] = {};
    const std::optional<std::string> type = m_file->text(ROOT, "Type");
    if (!type || !m_file->numbers(ROOT, "Version", version)) {
        return ug::fail(error, "is no VTKHDF file: it has no group VTKHDF with a Version and a Type");
    }
    if (!(version[0] >= 1 && version[0] <= LATEST_VERSION)) {
        char found[32] = {}; // Which any number has room in, infinite ones and those that are none, too.
        std::to_chars(std::begin(found), std::end(found), version[0]);
        return ug::fail(error, Str(std::string("is of version ") + found + " of the VTKHDF format, expected 1 or 2"));
    }
    m_isImage = *type == "ImageData";
    if (!m_isImage && *type != "UnstructuredGrid") {
        return ug::fail(error, Str("holds the type '" + *type + "', expected UnstructuredGrid or ImageData"));
    }
    if (m_file->hasGroup(pathOf("Steps"))) {
        return ug::fail(error, "has steps in time, which are not read from VTKHDF files");
    }
    if (!(m_isImage ? openImage(error) : openGrid(error))) {
        return false;
    }
    const bool hasPointArrays = listArrays(&m_points, contents);
    const bool hasCellArrays = listArrays(&m_cells, contents);
    if (m_isImage && !hasPointArrays && !hasCellArrays) { // Nothing else would vouch for its size.
        return ug::fail(error, "is an image without values");
    }
    contents->arrays = m_arrays;
    contents->parts = {std::string()};
    contents->steps = {vtkOnlyStep()};
    return true;
}

vtkSmartPointer<vtkDataObject> HdfSource::read(std::size_t, std::span<const std::size_t> arrays, ug::Error* error) {
    try {
        const vtkSmartPointer<vtkDataSet> mesh = m_isImage ? makeImage() : readGrid(error);
        if (!mesh || !readMarks(m_points, mesh->GetPointData(), error) ||
            !readMarks(m_cells, mesh->GetCellData(), error)) {
            return nullptr;
        }
        for (const std::size_t array : arrays) {
            if (!readArray(array, mesh, error)) {
                return nullptr;
            }
        }
        return mesh;
    } catch (const std::bad_alloc&) {
        ug::fail(error, "there is not enough memory for what it holds");
        return nullptr;
    }
}

void HdfSource::release() {}

bool HdfSource::openGrid(ug::Error* error) {
    long long points = 0;
    long long cells = 0;
    if (!readCounts("NumberOfPoints", &m_piecePoints, &points, error) ||
        !readCounts("NumberOfCells", &m_pieceCells, &cells, error) ||
        !readCounts("NumberOfConnectivityIds", &m_pieceIds, &m_idCount, error)) {
        return false;
    }
    const std::size_t pieces = m_piecePoints.size();
    if (pieces != m_pieceCells.size() || pieces != m_pieceIds.size()) {
        return ug::fail(error, "does not tell as many numbers of points, of cells and of points of cells");
    }
    m_points.sizes = {std::uint64_t(points)};
    m_cells.sizes = {std::uint64_t(cells)};
    return checkSize("Points", {std::uint64_t(points), 3}, error) && checkSize("Types", m_cells.sizes, error) &&
           checkSize("Offsets", {std::uint64_t(cells) + pieces}, error) &&
           checkSize("Connectivity", {std::uint64_t(m_idCount)}, error);
}

bool HdfSource::openImage(ug::Error* error) {
    constexpr double LARGEST = std::numeric_limits<int>::max() / 2;
    double extent[6] = {};
    if (!m_file->numbers(ROOT, "WholeExtent", extent) || !m_file->numbers(ROOT, "Origin", m_origin) ||
        !m_file->numbers(ROOT, "Spacing", m_spacing)) {
        return ug::fail(error, "is an image without WholeExtent, Origin or Spacing");
    }
    for (std::size_t axis = 3; axis-- > 0;) {
        const double first = extent[2 * axis];
        const double last = extent[2 * axis + 1];
        if (!(first >= -LARGEST && first <= last && last <= LARGEST)) {
            return ug::fail(error, "is an image of no extent");
        }
        const auto points = std::uint64_t(last - first) + 1;
        m_points.sizes.push_back(points);
        m_cells.sizes.push_back(std::max<std::uint64_t>(points - 1, 1));
        if (points > 1) {
            m_points.flatSizes.push_back(points);
            m_cells.flatSizes.push_back(points - 1);
        }
    }
    std::copy(std::begin(extent), std::end(extent), m_extent.begin());
    if (!m_file->numbers(ROOT, "Direction", m_direction)) {
        m_direction = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    }
    return true;
}

// Whether there is one that fits.
bool HdfSource::listArrays(Attributes* attributes, VtkContents* contents) {
    const std::string group = pathOf(attributes->group);
    const std::optional<std::string> ids = m_file->text(group, "GlobalIds");
    bool hasAny = false;
    const auto leaveOut = [contents](const std::string& name, const std::string& reason) {
        contents->warnings.push_back("array '" + name + "' is left out: " + reason);
    };
    for (const std::string& name : m_file->namesElsewhere(group)) {
        leaveOut(name, NOT_IN_FILE);
    }
    for (const std::string& name : m_file->names(group)) {
        const std::optional<HdfShape> shape = m_file->shape(group + "/" + name);
        if (!shape) {
            continue;
        }
        int components = componentCount(*shape, attributes->sizes);
        if (components == 0 && !attributes->flatSizes.empty()) {
            components = componentCount(*shape, attributes->flatSizes);
        }
        if (!shape->isThere || components == 0) {
            leaveOut(name, shape->isThere ? "it has " + textOf(shape->sizes) + " values for " +
                                                textOf(attributes->sizes) + " items"
                                          : NOT_IN_FILE);
            continue;
        }
        hasAny = true;
        const bool isOneNumber = shape->isNumeric && components == 1;
        if (name == vtkDataSetAttributes::GhostArrayName()) {
            attributes->hasGhosts = isOneNumber;
        } else if (isOneNumber &&
                   (name == ids || std::find(std::begin(ID_NAMES), std::end(ID_NAMES), name) != std::end(ID_NAMES))) {
            attributes->ids = name;
        } else {
            m_arrays.push_back({name, attributes->mapping, shape->isNumeric ? components : 0});
        }
    }
    return hasAny;
}

bool HdfSource::readCounts(const char* name, std::vector<long long>* counts, long long* total, ug::Error* error) const {
    const std::optional<HdfShape> shape = m_file->shape(pathOf(name));
    if (!shape || !shape->isThere || !shape->isNumeric || shape->sizes.size() != 1 || shape->sizes[0] == 0) {
        return ug::fail(error, Str(std::string("has no list ") + name));
    }
    counts->resize(shape->sizes[0]);
    if (!m_file->read(pathOf(name), std::span(*counts), error)) {
        return false;
    }
    for (const long long count : *counts) {
        if (count < 0 || count > std::numeric_limits<long long>::max() - *total) {
            return ug::fail(error,
                            Str(std::string("has the number ") + std::to_string(count) + " in its list " + name));
        }
        *total += count;
    }
    return true;
}

bool HdfSource::checkSize(const char* name, const std::vector<std::uint64_t>& expected, ug::Error* error) const {
    const std::optional<HdfShape> shape = m_file->shape(pathOf(name));
    if (!shape || !shape->isNumeric) {
        return ug::fail(error, Str(std::string("has no numbers called ") + name));
    }
    if (shape->sizes != expected || !shape->isThere) {
        return ug::fail(error, Str(std::string("has ") + (shape->isThere ? textOf(shape->sizes) : "not all of the") +
                                   " numbers called " + name + ", expected " + textOf(expected)));
    }
    return true;
}

vtkSmartPointer<vtkDataSet> HdfSource::readGrid(ug::Error* error) const {
    vtkNew<vtkUnstructuredGrid> grid;
    const vtkSmartPointer<vtkDataArray> coordinates = readReals(*m_file, pathOf("Points"), 3, m_points.sizes[0], error);
    if (!coordinates || !readCells(grid, error)) {
        return nullptr;
    }
    vtkNew<vtkPoints> points;
    points->SetData(coordinates);
    grid->SetPoints(points);
    return grid;
}

// VTK counts in 32 bits where that does: less goes through memory.
bool HdfSource::readCells(vtkUnstructuredGrid* grid, ug::Error* error) const {
    constexpr long long LARGEST = std::numeric_limits<std::int32_t>::max();
    const auto types =
        readNumbers<vtkUnsignedCharArray, unsigned char>(*m_file, pathOf("Types"), 1, m_cells.sizes[0], error);
    const bool areFew = std::max<long long>(m_idCount, static_cast<long long>(m_points.sizes[0])) <= LARGEST;
    vtkNew<vtkCellArray> cells;
    if (!types || !(areFew ? readLists<vtkTypeInt32Array>(cells, error) : readLists<vtkTypeInt64Array>(cells, error))) {
        return false;
    }
    grid->SetCells(types, cells);
    return true;
}

template <class Array>
bool HdfSource::readLists(vtkCellArray* cells, ug::Error* error) const {
    vtkNew<Array> offsets;
    vtkNew<Array> ids;
    offsets->SetNumberOfValues(vtkIdType(m_cells.sizes[0]) + 1);
    ids->SetNumberOfValues(m_idCount);
    if (!readOffsets(offsets->GetPointer(0), error) || !readIds(ids->GetPointer(0), error)) {
        return false;
    }
    cells->SetData(offsets.Get(), ids.Get());
    return true;
}

// They count from 0 in each piece, where there is one more than cells.
template <class Number>
bool HdfSource::readOffsets(Number* offsets, ug::Error* error) const {
    std::vector<long long> counts = m_pieceCells;
    std::for_each(counts.begin(), counts.end(), [](long long& count) { ++count; });
    Pieces pieces(counts);
    std::uint64_t firstId = 0;
    long long last = 0;
    bool isAscending = true;
    *offsets++ = 0;
    const auto take = [&](Pieces::Run run) {
        if (run.isFirst) {
            isAscending = run.numbers[0] == 0;
            run.numbers = run.numbers.subspan(1);
            last = 0;
        }
        for (const long long offset : run.numbers) {
            isAscending &= offset >= last;
            last = offset;
            *offsets++ = Number(firstId + std::uint64_t(offset)); // Damaged ones may be large.
        }
        firstId += run.isLast ? std::uint64_t(last) : 0;
        return (isAscending && (!run.isLast || last == m_pieceIds[run.piece])) ||
               ug::fail(error, Str("piece " + std::to_string(run.piece) + ": its Offsets do not ascend from 0 to " +
                                   std::to_string(m_pieceIds[run.piece])));
    };
    return m_file->readPieces(
        pathOf("Offsets"), m_cells.sizes[0] + counts.size(),
        [&](std::span<const long long> numbers) { return pieces.each(numbers, take); }, error);
}

// They count from 0 in each piece, too.
template <class Number>
bool HdfSource::readIds(Number* ids, ug::Error* error) const {
    Pieces pieces(m_pieceIds);
    std::vector<std::uint64_t> firstPoints(m_piecePoints.size());
    std::exclusive_scan(m_piecePoints.begin(), m_piecePoints.end(), firstPoints.begin(), std::uint64_t(0));
    const auto take = [&](const Pieces::Run& run) {
        const auto pointCount = std::uint64_t(m_piecePoints[run.piece]);
        if (!copyShifted(run.numbers, pointCount, Number(firstPoints[run.piece]), ids)) {
            const auto other = std::ranges::find_if(
                run.numbers, [pointCount](long long id) { return std::uint64_t(id) >= pointCount; });
            return ug::fail(error,
                            Str("piece " + std::to_string(run.piece) + ": its Connectivity has the point " +
                                std::to_string(*other) + ", and it has " + std::to_string(pointCount) + " points"));
        }
        ids += run.numbers.size();
        return true;
    };
    return m_file->readPieces(
        pathOf("Connectivity"), std::uint64_t(m_idCount),
        [&](std::span<const long long> numbers) { return pieces.each(numbers, take); }, error);
}

vtkSmartPointer<vtkDataSet> HdfSource::makeImage() const {
    vtkNew<vtkImageData> image;
    image->SetExtent(const_cast<int*>(m_extent.data()));
    image->SetOrigin(m_origin.data());
    image->SetSpacing(m_spacing.data());
    image->SetDirectionMatrix(m_direction.data());
    return image;
}

bool HdfSource::readMarks(const Attributes& attributes, vtkDataSetAttributes* into, ug::Error* error) const {
    const std::string group = pathOf(attributes.group) + "/";
    const std::size_t count = product(attributes.sizes);
    if (attributes.hasGhosts) {
        const char* name = vtkDataSetAttributes::GhostArrayName();
        const auto ghosts = readNumbers<vtkUnsignedCharArray, unsigned char>(*m_file, group + name, 1, count, error);
        if (!ghosts) {
            return false;
        }
        ghosts->SetName(name);
        into->AddArray(ghosts);
    }
    if (!attributes.ids.empty()) {
        const auto ids = readNumbers<vtkIdTypeArray, vtkIdType>(*m_file, group + attributes.ids, 1, count, error);
        if (!ids) {
            return false;
        }
        ids->SetName(attributes.ids.c_str());
        into->SetGlobalIds(ids);
    }
    return true;
}

bool HdfSource::readArray(std::size_t index, vtkDataSet* into, ug::Error* error) const {
    const CaeArray& array = m_arrays[index];
    const bool isOfPoints = array.mapping == ug::PER_NODE;
    const Attributes& attributes = isOfPoints ? m_points : m_cells;
    const vtkSmartPointer<vtkDataArray> values = readReals(*m_file, pathOf(attributes.group) + "/" + array.name,
                                                           array.componentCount, product(attributes.sizes), error);
    if (!values) {
        return false;
    }
    values->SetName(array.name.c_str());
    (isOfPoints ? static_cast<vtkDataSetAttributes*>(into->GetPointData()) : into->GetCellData())->AddArray(values);
    return true;
}

} // namespace orv::imp::cae
