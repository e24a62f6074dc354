#include "OrvImportVtk/EnSightSource.h"

#include "OrvImportVtk/EnSightValues.h"
#include "OrvImportVtk/VtkPieces.h"

#include <vtkCompositeDataSet.h>
#include <vtkInformation.h>
#include <vtkMultiBlockDataSet.h>
#include <vtkNew.h>
#include <vtkPointSet.h>

#include <algorithm>

namespace orv::imp::cae {
namespace {

bool readParts(const EnSightPlace& place, bool isWhole, std::vector<EnSightPart>* parts,
               std::optional<EnSightFile::Form>* form, ug::Error* error) {
    const std::unique_ptr<EnSightFile> file = EnSightFile::openMesh(place, error);
    if (!file || !readEnSightMesh(file.get(), isWhole, parts)) {
        return false;
    }
    *form = file->form();
    return true;
}

} // namespace

bool EnSightSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    if (!m_case.read(filename, error)) {
        return false;
    }
    m_times = m_case.times();
    contents->steps = m_times.empty() ? std::vector{vtkOnlyStep()} : vtkTimeSteps(m_times);
    contents->hasOneMesh = m_case.hasOneMesh() || contents->steps.size() == 1;
    contents->warnings = m_case.warnings;
    m_times.resize(contents->steps.size(), 0.0);
    for (const EnSightVariable& variable : m_case.variables) {
        CaeArray array{variable.name, variable.mapping, variable.componentCount};
        for (std::size_t step = 0; step < m_times.size(); ++step) {
            if (m_case.place(variable, m_times[step])) {
                array.steps.push_back(step);
            }
        }
        if (array.steps.size() == m_times.size()) {
            array.steps.clear();
        }
        contents->arrays.push_back(std::move(array));
    }
    std::vector<EnSightPart> parts;
    std::optional<EnSightFile::Form> form;
    if (!readParts(m_case.meshPlace(m_times[0]), false, &parts, &form, error)) {
        return false;
    }
    VtkNames names;
    for (const EnSightPart& part : parts) {
        contents->parts.push_back(names.makeUnique(part.name));
    }
    return true;
}

vtkSmartPointer<vtkDataObject> EnSightSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                   ug::Error* error) {
    std::vector<EnSightPart> parts;
    const std::optional<EnSightFile::Form> form = readMesh(m_times[step], &parts, error);
    if (!form) {
        return nullptr;
    }
    for (const std::size_t array : arrays) {
        const EnSightVariable& variable = m_case.variables[array];
        const std::optional<EnSightPlace> place = m_case.place(variable, m_times[step]);
        if (!place) {
            continue;
        }
        const std::unique_ptr<EnSightFile> file = EnSightFile::openVariable(*place, *form, error);
        if (!file || !readEnSightValues(file.get(), variable, parts)) {
            return nullptr;
        }
    }
    vtkNew<vtkMultiBlockDataSet> output;
    for (unsigned int i = 0; i < parts.size(); ++i) {
        output->SetBlock(i, parts[i].data);
        output->GetMetaData(i)->Set(vtkCompositeDataSet::NAME(), parts[i].name.c_str());
    }
    return output;
}

// Nothing is kept between reads.
void EnSightSource::release() {}

std::optional<EnSightFile::Form> EnSightSource::readMesh(double time, std::vector<EnSightPart>* parts,
                                                         ug::Error* error) const {
    std::optional<EnSightFile::Form> form;
    const EnSightPlace place = m_case.meshPlace(time);
    if (!readParts(place, true, parts, &form, error) || !m_case.meshStepOfElements) {
        return form;
    }
    std::vector<EnSightPart> whole;
    if (!readParts(m_case.meshPlaceOfStep(*m_case.meshStepOfElements), true, &whole, &form, error)) {
        return std::nullopt;
    }
    if (!takeEnSightElements(whole, parts)) {
        ug::fail(error, Str(place.filename + ": expected as many nodes as the mesh has that the elements come from"));
        return std::nullopt;
    }
    return form;
}

} // namespace orv::imp::cae
