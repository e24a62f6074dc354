#include "OrvImportCae/DataSourceCae.h"

#include "OrvImportCae/CaeFileRelation.h"
#include "OrvImportCae/CaeModule.h"
#include "OrvImportCae/CaePieces.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/CaeReaders.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace orv::imp::cae {
namespace {

using ResultKey = std::pair<ug::ResultType, int>;

constexpr ug::ResultType TYPES[] = {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR};
constexpr const char* TYPE_NAMES[] = {"scalar", "vector", "displacement", "symmetric tensor"};

ResultKey keyOf(const ug::ResultInfo& info) {
    return {info.type(), info.id()};
}

Str typeName(const ug::ResultInfo& info) {
    return TYPE_NAMES[info.type() - 1];
}

Str nameWithoutFolder(const Str& filename) {
    const std::string name = filename.toStdString();
    return Str(name.substr(name.find_last_of('/') + 1)); // npos + 1 is 0.
}

std::vector<ug::ResultInfo> fileResults(const ug::DataSourceDirectory& directory, ug::ResultType type) {
    std::vector<ug::ResultInfo> infos = directory.resultInfos(type);
    std::erase_if(infos, [](const ug::ResultInfo& info) { return info.isCustom(); });
    return infos;
}

} // namespace

/// A file, and what its results are there, by what they are in the directory.
struct DataSourceCae::File {
    Str name;
    std::unique_ptr<CaeReader> reader;
    std::map<ResultKey, ug::ResultInfo> results;
};

DataSourceCae::DataSourceCae(int id) : DataSourceLazy(id) {}

DataSourceCae::~DataSourceCae() = default;

bool DataSourceCae::openFiles(const std::vector<Str>& filenames, ug::Error* error) {
    if (filenames.empty()) {
        return ug::fail(error, "no file to open is named");
    }
    if (!m_files.empty()) {
        return ug::fail(error, Str("cannot open \"") + filenames[0] + "\": this data source holds \"" +
                                   directory()->simulationInfo().filename() + "\" already");
    }
    ug::ProgressMeter::Work work(progressMeter());
    std::vector<CaeOpenFile> files;
    if (!openTogether(filenames, &files, error)) {
        return false;
    }
    for (CaeOpenFile& file : files) {
        install(std::move(file));
    }
    work.finish();
    return true;
}

void DataSourceCae::setFileRelation(FileRelation relation) {
    m_relation = relation;
}

bool DataSourceCae::openSecondaryFile(const Str& filename, ug::Error* error) {
    if (m_files.empty()) {
        return ug::fail(error, Str("cannot add \"") + filename + "\": no file is open that it could be added to");
    }
    ug::ProgressMeter::Work work(progressMeter());
    CaeOpenFile file;
    if (!openFile(filename, &file, error) || !file.contents.geometry->read(error)) {
        return false;
    }
    CaeOpenFile first{m_files[0]->name, nullptr, {}, {}};
    first.contents.geometry = m_geometry;
    first.contents.parts = directory()->partInfos(0);
    shareCaeMesh(first, &file);
    if (!file.meshDifference.isEmpty()) {
        return ug::fail(error, "cannot add \"" + filename + "\" to \"" + first.name +
                                   "\": its mesh is another one, as " + file.meshDifference);
    }
    install(std::move(file));
    work.finish();
    return true;
}

std::vector<ReaderInfo> DataSourceCae::supportedFormats() {
    std::vector<ReaderInfo> infos;
    for (const CaeReaderEntry& entry : caeReaders()) {
        infos.push_back({entry.description, entry.extensions});
    }
    return infos;
}

std::vector<FormatInfo> DataSourceCae::formats() {
    std::vector<FormatInfo> infos;
    for (const CaeReaderEntry& entry : caeReaders()) {
        const CaeModule* module = entry.module;
        infos.push_back({entry.name, entry.description, entry.extensions, entry.contents,
                         module ? Str(caeModuleFileName(*module)) : Str(), !module || !findCaeModule(*module).empty()});
    }
    return infos;
}

void DataSourceCae::beginLoad(const std::vector<ug::ResultInfo>& infos, const ug::DataState& state) {
    const StateSource& source = m_stateSources.at(state.id());
    std::vector<ug::ResultInfo> infosThere;
    for (const ug::ResultInfo& info : infos) {
        infosThere.push_back(source.file->results.at(keyOf(info)));
    }
    source.file->reader->beginLoad(infosThere, source.stateId);
}

void DataSourceCae::endLoad(const ug::DataState& state) {
    m_stateSources.at(state.id()).file->reader->endLoad();
}

bool DataSourceCae::readResult(const ug::ResultInfo& info, ug::DataState* state, ug::Error* error) {
    const StateSource& source = m_stateSources.at(state->id());
    std::vector<Str> warnings;
    const bool isRead = source.file->reader->readResult(source.file->results.at(keyOf(info)), source.stateId, info,
                                                        state, &warnings, error);
    for (const Str& warning : warnings) {
        directory()->addWarning(warning);
    }
    return isRead;
}

bool DataSourceCae::readScalars(const ug::ResultInfo& info, const ug::DataState& state, const ug::ScalarPlace& place,
                                std::span<double> values) {
    const StateSource& source = m_stateSources.at(state.id());
    return source.file->reader->readScalars(source.file->results.at(keyOf(info)), source.stateId, place, values);
}

bool DataSourceCae::openFile(const Str& filename, CaeOpenFile* file, ug::Error* error) {
    const CaeReaderEntry* entry = findCaeReader(filename, error);
    if (!entry) {
        return false;
    }
    file->name = filename;
    file->reader = createCaeReader(*entry, filename, error);
    if (!file->reader) {
        return false;
    }
    file->reader->setProgress(progressMeter());
    return file->reader->open(filename, &file->contents, error);
}

// One entry for each step, or a single one for all pieces.
bool DataSourceCae::openTogether(const std::vector<Str>& filenames, std::vector<CaeOpenFile>* files, ug::Error* error) {
    files->resize(filenames.size());
    for (std::size_t i = 0; i < filenames.size(); ++i) {
        CaeOpenFile& file = (*files)[i];
        const double count = double(filenames.size());
        const ug::ProgressMeter::Step step(progressMeter(), double(i) / count, double(i + 1) / count);
        if (!openFile(filenames[i], &file, error) || (filenames.size() > 1 && !file.contents.geometry->read(error))) {
            return false;
        }
        if (i > 0 && m_relation != FileRelation::PIECES) {
            shareCaeMesh((*files)[0], &file);
        }
        if (i > 1 && !file.meshDifference.isEmpty()) {
            shareCaeMesh((*files)[i - 1], &file);
        }
    }
    FileRelation relation = m_relation;
    if (!settleCaeRelation(*files, m_relation, &relation, error)) {
        return false;
    }
    if (relation == FileRelation::PIECES && files->size() > 1) {
        CaeOpenFile whole{filenames[0], std::make_unique<CaePieces>(std::move(*files)), {}, {}};
        whole.reader->setProgress(progressMeter());
        whole.reader->open(whole.name, &whole.contents, error);
        files->clear();
        files->push_back(std::move(whole));
    }
    return true;
}

// The first file brings heading and parts, and its results and states keep their ids.
void DataSourceCae::install(CaeOpenFile openFile) {
    const CaeContents& contents = openFile.contents;
    auto file = std::make_unique<File>(File{openFile.name, std::move(openFile.reader), {}});
    const bool isFirst = m_files.empty();
    if (isFirst) {
        m_geometry = contents.geometry;
        directory()->setSimulationInfo(ug::SimulationInfo(file->name, contents.title));
        directory()->addGeometryPartInfos(contents.parts);
    }
    for (const Str& warning : contents.warnings) {
        directory()->addWarning(warning);
    }
    const std::vector<ug::ResultInfo> results = addResults(contents.results, file.get());
    addStates(contents, results, file.get());
    directory()->setStateGroupInfos(isFirst ? contents.stateGroups : groupStates(directory()->stateInfos()));
    m_files.push_back(std::move(file));
}

std::vector<ug::ResultInfo> DataSourceCae::addResults(const std::vector<ug::ResultInfo>& infos, File* file) {
    std::vector<ug::ResultInfo> results;
    for (const ug::ResultInfo& info : infos) {
        const ug::ResultInfo result = m_files.empty() ? info : findOrName(info, file->name);
        if (!directory()->findResultInfo(result.type(), result.id()).isValid()) {
            directory()->addResultInfo(result);
        }
        file->results[keyOf(result)] = info;
        results.push_back(result);
    }
    return results;
}

// The result that the directory has under that name, or a new one.
ug::ResultInfo DataSourceCae::findOrName(const ug::ResultInfo& info, const Str& filename) {
    int largestId = 0;
    for (const ug::ResultInfo& known : fileResults(*directory(), info.type())) {
        largestId = std::max(largestId, known.id());
        if (known.name() == info.name() && known.resultMapping() == info.resultMapping()) {
            return known;
        }
    }
    for (const ug::ResultType type : TYPES) {
        for (const ug::ResultInfo& known : fileResults(*directory(), type)) {
            if (type != info.type() && known.name() == info.name()) {
                directory()->addWarning("\"" + filename + "\" has a " + typeName(info) + " '" + info.name() +
                                        "', which is a " + typeName(known) + " in what was open; both are kept");
            }
        }
    }
    return ug::ResultInfo(info.type(), largestId + 1, info.name(), info.resultMapping());
}

void DataSourceCae::addStates(const CaeContents& contents, const std::vector<ug::ResultInfo>& results, File* file) {
    std::set<Str> names;
    int largestId = 0;
    for (const ug::StateInfo& info : directory()->stateInfos()) {
        names.insert(info.name());
        largestId = std::max(largestId, info.id());
    }
    for (const CaeContents::State& state : contents.states) {
        ug::StateInfo info = state.info;
        if (!m_files.empty()) {
            const Str suffix = " (" + nameWithoutFolder(file->name) + ", state " + std::to_string(++largestId) + ")";
            const Str name = names.contains(info.name()) ? info.name() + suffix : info.name();
            info = ug::StateInfo(largestId, name, info.referenceType(), info.referenceValue());
        }
        addState(info, {state.geometry ? state.geometry : contents.geometry});
        m_stateSources[info.id()] = {file, state.info.id()};
        for (const std::size_t result : state.results) {
            directory()->setHasResult(info.id(), results[result]);
        }
    }
}

} // namespace orv::imp::cae
