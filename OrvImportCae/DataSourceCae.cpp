#include "OrvImportCae/DataSourceCae.h"

#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/CaeReaders.h"

#include <utility>

namespace orv::imp::cae {

DataSourceCae::DataSourceCae(int id) : DataSourceLazy(id) {}

DataSourceCae::~DataSourceCae() = default;

bool DataSourceCae::openFiles(const std::vector<Str>& filenames, ug::Error* error) {
    if (filenames.empty()) {
        return ug::fail(error, "no file to open is named");
    }
    if (m_reader) {
        return ug::fail(error, Str("cannot open \"") + filenames[0] + "\": this data source holds \"" +
                                   directory()->simulationInfo().filename() + "\" already");
    }
    const CaeReaderEntry* entry = findCaeReader(filenames[0], error);
    if (!entry) {
        return false;
    }
    std::unique_ptr<CaeReader> reader = entry->create();
    CaeContents contents;
    if (!reader->open(filenames[0], &contents, error)) {
        return false;
    }
    for (std::size_t i = 1; i < filenames.size(); ++i) {
        if (!reader->openSecondary(filenames[i], error)) {
            return false;
        }
    }
    install(filenames[0], contents);
    m_reader = std::move(reader);
    return true;
}

bool DataSourceCae::openSecondaryFile(const Str& filename, ug::Error* error) {
    if (!m_reader) {
        return ug::fail(error, Str("cannot add \"") + filename + "\": no file is open that it could be added to");
    }
    return m_reader->openSecondary(filename, error);
}

std::vector<ReaderInfo> DataSourceCae::supportedFormats() {
    std::vector<ReaderInfo> infos;
    for (const CaeReaderEntry& entry : caeReaders()) {
        infos.push_back({entry.description, entry.extensions});
    }
    return infos;
}

bool DataSourceCae::readResult(const ug::ResultInfo& info, ug::DataState* state, ug::Error* error) {
    std::vector<Str> warnings;
    const bool isRead = m_reader->readResult(info, state, &warnings, error);
    for (const Str& warning : warnings) {
        directory()->addWarning(warning);
    }
    return isRead;
}

bool DataSourceCae::readScalars(const ug::ResultInfo& info, const ug::DataState& state, const ug::ScalarPlace& place,
                                std::span<double> values) {
    return m_reader->readScalars(info, state.id(), place, values);
}

void DataSourceCae::install(const Str& filename, const CaeContents& contents) {
    directory()->setSimulationInfo(ug::SimulationInfo(filename, contents.title));
    directory()->addGeometryPartInfos(contents.parts);
    for (const ug::ResultInfo& info : contents.results) {
        directory()->addResultInfo(info);
    }
    for (const CaeContents::State& state : contents.states) {
        addState(state.info, {contents.geometry});
        for (const std::size_t result : state.results) {
            directory()->setHasResult(state.info.id(), contents.results[result]);
        }
    }
    for (const ug::StateGroupInfo& group : contents.stateGroups) {
        directory()->addStateGroupInfo(group);
    }
    for (const Str& warning : contents.warnings) {
        directory()->addWarning(warning);
    }
}

} // namespace orv::imp::cae
