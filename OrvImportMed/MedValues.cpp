#include "OrvImportMed/MedValues.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::uint32_t NO_ROW = std::numeric_limits<std::uint32_t>::max();

/// A chunk's values, and for each node or cell of the mesh its row among them.
struct Table {
    std::vector<double> values; ///< Component after component, in it row after row, in it point after point.
    std::vector<std::uint32_t> rows;
};

/// Where values of a point are among them, and which ones go to an item.
struct Layout {
    const std::vector<int>& columns;
    std::size_t pointCount; ///< Of each row.
    std::size_t columnSize;
};

void copyPoint(const double* point, const Layout& layout, double* item) {
    for (const int column : layout.columns) {
        *item++ = column == MedColumns::ZERO ? 0.0 : point[std::size_t(column) * layout.columnSize];
    }
}

/// Reads chunks of one step of a field.
class ChunkReader {
public:
    ChunkReader(const MedFile& file, const MedField& field, const MedStep& step)
        : m_file(file), m_field(field), m_step(step) {}

    bool read(const MedChunk& chunk, std::size_t entityCount, Table* table, ug::Error* error) const {
        return readRows(chunk, entityCount, &table->rows, error) && readNumbers(chunk, &table->values, error);
    }

private:
    bool fail(ug::Error* error, const std::string& what) const {
        return m_file.fail(error, m_field.place(), what);
    }

    bool readRows(const MedChunk& chunk, std::size_t entityCount, std::vector<std::uint32_t>* rows,
                  ug::Error* error) const {
        rows->assign(entityCount, NO_ROW);
        if (chunk.profile.empty()) {
            for (std::size_t i = 0; i < entityCount; ++i) {
                (*rows)[i] = std::uint32_t(i);
            }
            return true;
        }
        const std::string name = "its profile '" + chunk.profile + "'";
        if (!m_file.hasExtent("/PROFILS/" + chunk.profile + "/PFL", chunk.rowCount)) {
            return fail(error, name + " has not the expected " + std::to_string(chunk.rowCount) + " numbers");
        }
        std::vector<med_int> numbers(chunk.rowCount);
        if (MEDprofileRd(m_file.id(), chunk.profile.c_str(), numbers.data()) < 0) {
            return fail(error, name + " cannot be read");
        }
        for (std::size_t row = 0; row < numbers.size(); ++row) {
            if (numbers[row] < 1 || std::size_t(numbers[row]) > entityCount) {
                return fail(error, name + " names number " + std::to_string(numbers[row]) + ", expected 1 to " +
                                       std::to_string(entityCount));
            }
            (*rows)[std::size_t(numbers[row]) - 1] = std::uint32_t(row);
        }
        return true;
    }

    bool readNumbers(const MedChunk& chunk, std::vector<double>* values, ug::Error* error) const {
        switch (m_field.type) {
        case MED_FLOAT32:
            return readNumbersAs<med_float32>(chunk, values, error);
        case MED_INT32:
            return readNumbersAs<med_int32>(chunk, values, error);
        case MED_INT64:
            return readNumbersAs<med_int64>(chunk, values, error);
        case MED_INT:
            return readNumbersAs<med_int>(chunk, values, error);
        default:
            return readNumbersAs<med_float64>(chunk, values, error);
        }
    }

    template <class Number>
    bool readNumbersAs(const MedChunk& chunk, std::vector<double>* values, ug::Error* error) const {
        const std::size_t rowSize = chunk.pointCount * m_field.components.size();
        if (!m_file.fits(std::int64_t(chunk.rowCount), rowSize * sizeof(Number))) {
            return fail(error, "its values are more than the file holds");
        }
        std::vector<Number> numbers(chunk.rowCount * rowSize);
        if (!numbers.empty() &&
            MEDfieldValueWithProfileRd(m_file.id(), m_field.name.c_str(), m_step.number, m_step.iteration, chunk.entity,
                                       chunk.cell ? chunk.cell->type : MED_NONE, MED_COMPACT_STMODE,
                                       chunk.profile.c_str(), MED_NO_INTERLACE, MED_ALL_CONSTITUENT,
                                       reinterpret_cast<unsigned char*>(numbers.data())) < 0) {
            return fail(error, "its values in step " + std::to_string(m_step.number) + " cannot be read");
        }
        if constexpr (std::is_same_v<Number, double>) {
            *values = std::move(numbers);
        } else {
            values->assign(numbers.begin(), numbers.end());
        }
        return true;
    }

    const MedFile& m_file;
    const MedField& m_field;
    const MedStep& m_step;
};

void copyNodes(const Table& table, const MedPart& part, const Layout& layout, double* item) {
    for (const std::uint32_t node : part.nodes) {
        if (const std::uint32_t row = table.rows[node]; row != NO_ROW) {
            copyPoint(&table.values[row], layout, item);
        }
        item += layout.columns.size();
    }
}

// The items of a run: one for each element, or one for each of its nodes.
void copyRun(const Table& table, const MedRun& run, const Layout& layout, bool isPerElementNode, double* item) {
    const std::size_t perElement = isPerElementNode ? ug::elementTypeInfo(run.cell->elementType).nodeCount : 1;
    for (const std::uint32_t element : run.elements) {
        if (const std::uint32_t row = table.rows[element]; row != NO_ROW) {
            const double* points = &table.values[row * layout.pointCount];
            for (std::size_t i = 0; i < perElement; ++i) {
                const std::size_t point = isPerElementNode ? run.order[i] : 0;
                copyPoint(points + point, layout, item + i * layout.columns.size());
            }
        }
        item += perElement * layout.columns.size();
    }
}

void copyCells(const Table& table, const MedChunk& chunk, const MedPart& part, const Layout& layout, double* item) {
    const bool isPerElementNode = chunk.mapping == ug::PER_ELEMENT_NODE;
    for (const MedRun& run : part.runs) {
        if (run.cell == chunk.cell) {
            copyRun(table, run, layout, isPerElementNode, item);
        }
        const std::size_t perElement = isPerElementNode ? ug::elementTypeInfo(run.cell->elementType).nodeCount : 1;
        item += run.elements.size() * perElement * layout.columns.size();
    }
}

// Of each component.
double numberCount(const MedStep& step, ug::ResultMapping mapping) {
    double count = 0;
    for (const MedChunk& chunk : step.chunks) {
        count += chunk.mapping == mapping ? double(chunk.pointCount) * double(chunk.rowCount) : 0;
    }
    return count;
}

} // namespace

bool readMedValues(const MedFile& file, const MedMeshes& meshes, const MedField& field, const MedStep& step,
                   ug::ResultMapping mapping, const std::vector<int>& columns, std::span<const std::size_t> itemCounts,
                   ug::DataResult* result, ug::ProgressMeter* progress, ug::Error* error) {
    for (std::size_t i = 0; i < meshes.parts.size(); ++i) {
        if (meshes.parts[i].mesh == field.mesh) {
            result->values(i)->allocate(itemCounts[i]);
            result->values(i)->fillUndefined();
        }
    }
    const ChunkReader reader(file, field, step);
    const MedMesh& mesh = meshes.meshes[field.mesh];
    const double allNumbers = numberCount(step, mapping);
    double numbersRead = 0;
    for (const MedChunk& chunk : step.chunks) {
        if (chunk.mapping != mapping) {
            continue;
        }
        Table table;
        if (!reader.read(chunk, chunk.cell ? mesh.cellCount(chunk.cell->type) : mesh.nodeCount, &table, error)) {
            return false;
        }
        const Layout layout{columns, chunk.pointCount, chunk.pointCount * chunk.rowCount};
        for (std::size_t i = 0; i < meshes.parts.size(); ++i) {
            if (meshes.parts[i].mesh != field.mesh) {
                continue;
            }
            double* values = result->values(i)->values();
            if (chunk.cell) {
                copyCells(table, chunk, meshes.parts[i], layout, values);
            } else {
                copyNodes(table, meshes.parts[i], layout, values);
            }
        }
        numbersRead += double(layout.columnSize);
        if (progress) {
            progress->tell(numbersRead / allNumbers);
        }
    }
    return true;
}

} // namespace orv::imp::cae
