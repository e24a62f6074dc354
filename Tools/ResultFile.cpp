#include "Tools/ResultFile.h"

#include "OrvImportCae/DataSourceCae.h"
#include "Tools/CommandError.h"
#include "Tools/Output.h"
#include "Tools/ProgressBar.h"
#include "Tools/QuietLog.h"

#include <algorithm>

namespace orvapp {

namespace {

/// Has the catalogue's opens shown on a terminal.
class ShownOpening {
public:
    explicit ShownOpening(const std::string& label) : m_bar(label) {
        orv::app::Models::instance()->setProgress(&m_bar);
    }

    ~ShownOpening() {
        orv::app::Models::instance()->setProgress(nullptr);
    }

    ShownOpening(const ShownOpening&) = delete;
    ShownOpening& operator=(const ShownOpening&) = delete;

    orv::ug::Progress* progress() {
        return &m_bar;
    }

private:
    BarProgress m_bar;
};

// By the extension, as an open finds its reader.
orv::Str extensionOf(const std::string& path) {
    return orv::Str(path.substr(std::min(path.rfind('.'), path.size()))).toLower();
}

bool mayHaveCases(const std::string& path) {
    return extensionOf(path).subStr(0, 5) == ".ztfx";
}

// The catalogue leaves it to the files what they are to each other.
orv::ug::UnstructGridModel* openAs(orv::imp::cae::FileRelation relation, const std::vector<orv::Str>& names,
                                   orv::ug::Progress* progress, orv::ug::Error* error) {
    const orv::PtrRef<orv::imp::cae::DataSourceCae> source(new orv::imp::cae::DataSourceCae(1));
    source->setFileRelation(relation);
    source->setProgress(progress);
    const bool isOpen = source->openFiles(names, error);
    source->setProgress(nullptr);
    if (!isOpen || source->stateCount() == 0) {
        return nullptr;
    }
    const orv::PtrRef<orv::ug::UnstructGridModel> model(new orv::ug::UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(source->state(0)->id());
    model->modelSpec().setDefaultResults();
    orv::app::Models::instance()->add(model.get());
    return model.get();
}

orv::ug::UnstructGridModel* openModel(const InputFiles& files, const std::string& password) {
    const QuietLog quiet;
    ShownOpening shown("Reading " + files.first);
    orv::ug::Error error;
    std::vector<orv::Str> names = {files.first};
    names.insert(names.end(), files.further.begin(), files.further.end());
    const bool isOwnFormat = mayHaveCases(files.first) || extensionOf(files.first) == ".ztf";
    if (names.size() > 1 && isOwnFormat) {
        throw CommandError(files.first +
                           ": a file of OrvApp is opened alone; only those of other programs go together");
    }
    const bool isTold = files.relation != orv::imp::cae::FileRelation::FROM_CONTENTS;
    orv::ug::UnstructGridModel* model = names.size() > 1 && isTold
                                            ? openAs(files.relation, names, shown.progress(), &error)
                                            : orv::app::Models::instance()->open(names, password, &error);
    if (!model) {
        throw CommandError(error.isEmpty()
                               ? files.first + ": there are no states in this file, so no results to look at"
                               : error.message().toStdString());
    }
    return model;
}

} // namespace

std::vector<FileCase> casesIn(const std::string& path, const std::string& password) {
    const std::size_t bar = path.find('|');
    const std::string file = path.substr(0, bar);
    const orv::PtrRef<orv::ug::DataSourceZTFx> source(new orv::ug::DataSourceZTFx(1));
    source->setPassword(password);
    if (!mayHaveCases(file) || !source->openCase(file, 0, nullptr)) {
        return {{path, -1, ""}};
    }
    std::vector<FileCase> cases;
    for (const orv::ug::ZTFxCaseInfo& info : source->cases()) {
        if (bar == std::string::npos || info.id == orv::Str(path.substr(bar + 1)).toInt(0)) {
            const bool needsId = source->cases().size() > 1;
            cases.push_back({needsId ? file + '|' + std::to_string(info.id) : path, info.id, info.name.toStdString()});
        }
    }
    return cases.empty() ? std::vector<FileCase>{{path, -1, ""}} : cases;
}

ResultFile::ResultFile(const InputFiles& files, const std::string& password)
    : m_path(files.first), m_source(openModel(files, password)->dataSource()) {}

ResultFile::~ResultFile() {
    for (const orv::Str& warning : directory().warnings()) {
        writeMessage("warning: " + warning.toStdString());
    }
}

const std::string& ResultFile::path() const {
    return m_path;
}

orv::ug::DataSource* ResultFile::source() const {
    return m_source;
}

const orv::ug::DataSourceDirectory& ResultFile::directory() const {
    return *m_source->directory();
}

std::vector<orv::ug::ResultInfo> ResultFile::results() const {
    std::vector<orv::ug::ResultInfo> all;
    for (const auto type : {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::SYMMETRIC_TENSOR, orv::ug::DISPLACEMENT}) {
        const std::vector<orv::ug::ResultInfo> ofType = directory().resultInfos(type);
        all.insert(all.end(), ofType.begin(), ofType.end());
    }
    return all;
}

void ResultFile::readMeshes() const {
    orv::ug::Error error;
    if (!m_source->state(0)->readGeometries(&error)) {
        throw CommandError(error.message().toStdString());
    }
}

std::vector<FilePart> ResultFile::parts() const {
    std::vector<FilePart> parts;
    for (std::size_t geometry = 0; geometry < directory().geometryCountPerState(); ++geometry) {
        std::size_t index = 0;
        for (const orv::ug::PartInfo& info : directory().partInfos(geometry)) {
            parts.push_back({geometry, index++, info.name().toStdString()});
        }
    }
    return parts;
}

std::vector<std::size_t> ResultFile::statesWith(const orv::ug::ResultInfo& result) const {
    const std::vector<orv::ug::StateInfo> states = directory().stateInfos();
    std::vector<std::size_t> indexes;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (directory().hasResult(states[i].id(), result)) {
            indexes.push_back(i);
        }
    }
    return indexes;
}

orv::ug::DataState* ResultFile::load(std::size_t stateIndex, const orv::ug::ResultInfo& result) const {
    orv::app::States::instance()->setCurrentIndex(stateIndex);
    orv::ug::DataState* state = orv::app::States::instance()->current();

    // Results::currentDataPart... would load as well, but keeps the reason of a failure to itself.
    auto* loader = dynamic_cast<orv::ug::DataSourceInterface*>(m_source);
    orv::ug::DataStateSpec spec;
    spec.setResultIds({result});
    orv::ug::Error error;
    if (loader && !loader->loadDataState(state->id(), spec, &error)) {
        throw CommandError(error.message().toStdString());
    }
    return state;
}

orv::ug::ResultInfo ResultFile::add(const orv::ug::ResultInfo& result, const std::string& name) const {
    if (!result.isCustom()) {
        return result;
    }
    orv::app::Results::instance()->add(result, name);
    return directory().findResultInfo(result.type(), result.id());
}

void ResultFile::drop(const orv::ug::ResultInfo& result) const {
    for (const orv::ug::ResultInfo& base : directory().customResultBaseDependencies(result)) {
        m_source->dropResult(base);
    }
    m_source->dropResult(result);
}

} // namespace orvapp
