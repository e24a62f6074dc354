#include "OrvImportMed/MedFields.h"

#include "OrvCore/Defines.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace orv::imp::cae {
namespace {

constexpr med_field_type READABLE_TYPES[] = {MED_FLOAT64, MED_FLOAT32, MED_INT32, MED_INT64, MED_INT};

/// Reads the description of one field.
class FieldReader {
public:
    FieldReader(const MedFile& file, const std::vector<MedMesh>& meshes) : m_file(file), m_meshes(meshes) {}

    // False when the field is left out, for which obstacle() tells why, or is damaged.
    bool read(int index) {
        m_field = {"number " + std::to_string(index), 0, MED_FLOAT64, {}, "", {}};
        const med_int componentCount = MEDfieldnComponent(m_file.id(), index);
        if (componentCount < 1 || !m_file.fits(componentCount, MED_SNAME_SIZE)) {
            return refuse("it has " + std::to_string(componentCount) + " components");
        }
        MedText name(MED_NAME_SIZE);
        MedText mesh(MED_NAME_SIZE);
        MedText components(MED_SNAME_SIZE, std::size_t(componentCount));
        MedText units(MED_SNAME_SIZE, std::size_t(componentCount));
        MedText timeUnit(MED_SNAME_SIZE);
        med_bool isLocal = MED_FALSE;
        med_int stepCount = 0;
        MedChoice<med_field_type> type;
        if (MEDfieldInfo(m_file.id(), index, name, mesh, &isLocal, type, components, units, timeUnit, &stepCount) < 0) {
            return refuse("what it is cannot be read");
        }
        m_field.name = name.text();
        m_field.timeUnit = timeUnit.text();
        for (std::size_t i = 0; i < std::size_t(componentCount); ++i) {
            m_field.components.push_back(components.text(i));
        }
        return findMesh(mesh.text()) && setType(type) && readSteps(stepCount);
    }

    const MedField& field() const {
        return m_field;
    }

    const std::string& obstacle() const {
        return m_obstacle;
    }

    const std::set<std::string>& leftOut() const {
        return m_leftOut;
    }

private:
    bool refuse(const std::string& obstacle) {
        m_obstacle = obstacle;
        return false;
    }

    bool findMesh(const std::string& name) {
        const auto found =
            std::find_if(m_meshes.begin(), m_meshes.end(), [&](const MedMesh& m) { return m.name == name; });
        m_field.mesh = std::size_t(found - m_meshes.begin());
        return found != m_meshes.end() || refuse("its mesh '" + name + "' is not there");
    }

    bool setType(const MedChoice<med_field_type>& type) {
        for (const med_field_type readable : READABLE_TYPES) {
            if (type == readable) {
                m_field.type = readable;
                return true;
            }
        }
        return refuse("its numbers are of the unknown type " + std::to_string(type.number()));
    }

    bool readSteps(med_int count) {
        for (int i = 1; i <= count; ++i) {
            MedStep step{0, 0, 0, {}};
            if (MEDfieldComputingStepInfo(m_file.id(), m_field.name.c_str(), i, &step.number, &step.iteration,
                                          &step.time) < 0) {
                return refuse("its computation step " + std::to_string(i) + " cannot be read");
            }
            if (std::isnan(step.time)) {
                step.time = UNDEFINED_DOUBLE; // States are put in order by it.
            }
            addChunks(&step, MED_NODE, nullptr, m_meshes[m_field.mesh].nodeCount);
            for (const auto& [cell, cellCount] : m_meshes[m_field.mesh].cells) {
                addChunks(&step, MED_CELL, cell, cellCount);
                addChunks(&step, MED_NODE_ELEMENT, cell, cellCount);
            }
            m_field.steps.push_back(std::move(step));
        }
        return true;
    }

    void addChunks(MedStep* step, med_entity_type entity, const MedCell* cell, std::size_t mostRows) {
        MedText defaultProfile(MED_NAME_SIZE);
        MedText defaultLocalization(MED_NAME_SIZE);
        const int type = cell ? cell->type : MED_NONE;
        const med_int count = MEDfieldnProfile(m_file.id(), m_field.name.c_str(), step->number, step->iteration, entity,
                                               type, defaultProfile, defaultLocalization);
        for (int i = 1; i <= count; ++i) {
            MedText profile(MED_NAME_SIZE);
            MedText localization(MED_NAME_SIZE);
            med_int profileSize = 0;
            med_int pointCount = 0;
            const med_int rowCount = MEDfieldnValueWithProfile(m_file.id(), m_field.name.c_str(), step->number,
                                                               step->iteration, entity, type, i, MED_COMPACT_STMODE,
                                                               profile, &profileSize, localization, &pointCount);
            const MedChunk chunk{entity,
                                 cell,
                                 mappingOf(entity, cell, pointCount, localization.text()),
                                 std::size_t(std::max(pointCount, 0)),
                                 profile.text(),
                                 std::size_t(std::max(rowCount, 0))};
            const std::string obstacle = obstacleOf(chunk, rowCount, mostRows);
            if (obstacle.empty()) {
                step->chunks.push_back(chunk);
            } else {
                m_leftOut.insert(obstacle);
            }
        }
    }

    static ug::ResultMapping mappingOf(med_entity_type entity, const MedCell* cell, med_int pointCount,
                                       const std::string& localization) {
        if (!cell) {
            return pointCount == 1 ? ug::PER_NODE : ug::UNKNOWN_MAPPING;
        }
        if (entity == MED_NODE_ELEMENT || localization == MED_GAUSS_ELNO) {
            return pointCount == med_int(cell->nodeCount()) ? ug::PER_ELEMENT_NODE : ug::UNKNOWN_MAPPING;
        }
        return pointCount == 1 ? ug::PER_ELEMENT : ug::UNKNOWN_MAPPING;
    }

    std::string obstacleOf(const MedChunk& chunk, med_int rowCount, std::size_t mostRows) const {
        const std::string where = chunk.cell ? std::string("its cells ") + chunk.cell->name : "its nodes";
        if (chunk.mapping == ug::UNKNOWN_MAPPING) {
            return "the values at the " + std::to_string(chunk.pointCount) + " integration points of " + where;
        }
        if (rowCount < 0 || chunk.rowCount > mostRows || (chunk.profile.empty() && chunk.rowCount != mostRows)) {
            return "the values of " + std::to_string(rowCount) + " of " + where + ", of which there are " +
                   std::to_string(mostRows);
        }
        return "";
    }

    const MedFile& m_file;
    const std::vector<MedMesh>& m_meshes;
    MedField m_field;
    std::string m_obstacle;
    std::set<std::string> m_leftOut;
};

} // namespace

std::string MedField::place() const {
    return "field '" + name + "'";
}

bool readMedFields(const MedFile& file, const std::vector<MedMesh>& meshes, std::vector<MedField>* fields,
                   std::vector<std::string>* warnings, ug::Error* error) {
    const med_int count = MEDnField(file.id());
    if (count < 0) {
        return file.fail(error, "fields", "they cannot be counted");
    }
    for (int i = 1; i <= count; ++i) {
        FieldReader reader(file, meshes);
        const bool isRead = reader.read(i);
        const std::string place = file.name() + ": " + reader.field().place();
        if (!isRead) {
            warnings->push_back(place + " is left out: " + reader.obstacle());
            continue;
        }
        for (const std::string& what : reader.leftOut()) {
            warnings->push_back(place + ": " + what + " are left out");
        }
        fields->push_back(reader.field());
    }
    return true;
}

} // namespace orv::imp::cae
