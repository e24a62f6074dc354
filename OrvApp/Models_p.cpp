#include "OrvApp/Models_p.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/AppLog_p.h"
#include "OrvApp/Parts.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataSourceZTF.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"

#include <algorithm>

namespace orv::app {
namespace {

constexpr int dataSourceId = 1;

const ug::DataSource* dataSourceOf(const ug::UnstructGridModel* model) {
    return model ? model->dataSource() : nullptr;
}

/// What stands behind the last dot, a folder's dot included, in lower case; empty without a dot.
Str extensionOf(const Str& filename) {
    const std::wstring name = filename.toStdWString();
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos ? Str() : filename.subStr(dot + 1, Str::npos).toLower();
}

/// The source gets the whole name in either case, so that the list of opened files tells the cases of one file apart.
bool openZtfxCase(ug::DataSourceZTFx* source, const Str& filename, ug::Error* error) {
    const std::vector<Str> pieces = filename.split("|");
    if (pieces.size() == 2) {
        return source->openCaseById(filename, pieces[1].toInt(0), error);
    }
    return source->openCase(filename, 0, error);
}

PtrRef<ug::DataSource> openZtfx(const Str& filename, const Str& password, ug::Progress* progress, ug::Error* error) {
    PtrRef<ug::DataSourceZTFx> source = new ug::DataSourceZTFx(dataSourceId);
    source->setProgress(progress);
    source->setPassword(password);
    if (!openZtfxCase(source.get(), filename, error)) {
        return nullptr;
    }
    return source;
}

PtrRef<ug::DataSource> openZtf(const Str& filename, ug::Progress* progress, ug::Error* error) {
    PtrRef<ug::DataSourceZTF> source = new ug::DataSourceZTF(dataSourceId);
    source->setProgress(progress);
    if (!source->openFile(filename, error)) {
        return nullptr;
    }
    return source;
}

PtrRef<ug::DataSource> openCae(const std::vector<Str>& filenames, ug::Progress* progress, ug::Error* error) {
    PtrRef<imp::cae::DataSourceCae> source = new imp::cae::DataSourceCae(dataSourceId);
    source->setProgress(progress);
    if (!source->openFiles(filenames, error)) {
        return nullptr;
    }
    return source;
}

PtrRef<ug::DataSource> openDataSource(const std::vector<Str>& filenames, const Str& password, ug::Progress* progress,
                                      ug::Error* error) {
    const Str& filename = filenames[0];
    switch (ModelsPrivate::fileRoute(filename, imp::cae::DataSourceCae::supportedFormats())) {
    case ModelsPrivate::FileRoute::ZTFX:
        return openZtfx(filename, password, progress, error);
    case ModelsPrivate::FileRoute::ZTF:
        return openZtf(filename, progress, error);
    case ModelsPrivate::FileRoute::CAE:
        break;
    }
    return openCae(filenames, progress, error);
}

} // namespace

std::size_t ModelsPrivate::count() const {
    return m_models.size();
}

ug::UnstructGridModel* ModelsPrivate::current() const {
    if (m_models.empty() || m_currentIndex == UNDEFINED_SIZE_T) {
        return nullptr;
    }
    return get(m_currentIndex);
}

ug::SimulationInfo ModelsPrivate::currentInfo() const {
    if (m_models.empty() || m_currentIndex == UNDEFINED_SIZE_T) {
        return ug::SimulationInfo();
    }
    const ug::UnstructGridModel* currentModel = current();
    RVF_ASSERT(currentModel);
    const ug::DataSource* source = currentModel->dataSource();
    RVF_ASSERT(source);
    const ug::DataSourceDirectory* dir = source->directory();
    RVF_ASSERT(dir);
    return dir->simulationInfo();
}

void ModelsPrivate::setCurrent(ug::UnstructGridModel* model) {
    if (!model) {
        setCurrentIndex(UNDEFINED_SIZE_T);
        return;
    }
    const std::size_t index = indexOf(model);
    RVF_ASSERT_MSG(index != orv::UNDEFINED_SIZE_T, "Model not found : cannot set it as current.");
    setCurrentIndex(index);
}

std::size_t ModelsPrivate::currentIndex() const {
    return m_currentIndex;
}

void ModelsPrivate::setCurrentIndex(std::size_t index) {
    RVF_ASSERT(index < count() || index == orv::UNDEFINED_SIZE_T);
    m_currentIndex = index;
}

std::size_t ModelsPrivate::indexOf(const ug::UnstructGridModel* model) const {
    for (std::size_t i = 0; i < m_models.size(); ++i) {
        if (m_models[i].get() == model) {
            return i;
        }
    }
    return UNDEFINED_SIZE_T;
}

ug::UnstructGridModel* ModelsPrivate::get(std::size_t index) const {
    RVF_ASSERT(index < count());
    return m_models[index].get();
}

void ModelsPrivate::add(ug::UnstructGridModel* model) {
    m_models.push_back(model);
    setCurrentIndex(count() - 1);

    // The one place that resets the Parts index on its own initiative.
    Parts* parts = Parts::instance();
    const std::size_t partCount = parts->count();
    parts->setCurrentIndex(UNDEFINED_SIZE_T);
    if (partCount > 0) {
        parts->setCurrentIndex(0);
    }
}

void ModelsPrivate::set(std::size_t index, ug::UnstructGridModel* model) {
    RVF_ASSERT(index < count());
    m_models[index] = model;
}

ug::SimulationInfo ModelsPrivate::info(std::size_t index) const {
    RVF_ASSERT(index < count());
    const ug::UnstructGridModel* model = m_models[index].get();
    RVF_ASSERT(model);
    const ug::DataSource* source = model->dataSource();
    RVF_ASSERT(source);
    const ug::DataSourceDirectory* dir = source->directory();
    RVF_ASSERT(dir);
    return dir->simulationInfo();
}

ug::UnstructGridModel* ModelsPrivate::open(const std::vector<Str>& filenames, const Str& password, ug::Error* error) {
    PtrRef<ug::UnstructGridModel> model = createFromFile(filenames, password, error);
    if (!model) {
        return nullptr;
    }
    add(model.get());
    return model.get();
}

bool ModelsPrivate::openSecondary(const Str& filename, ug::Error* error) {
    ug::UnstructGridModel* model = current();
    RVF_ASSERT(model != NULL);
    auto* source = dynamic_cast<imp::cae::DataSourceCae*>(model->dataSource());
    if (!source) {
        logError("Cannot add result file to model. This is only valid for Cae data sources.",
                 {RVF_SOURCE_PATH, "bool orv::app::ModelsPrivate::openSecondary(const orv::Str &, orv::ug::Error *)",
                  "openSecondary", __LINE__});
        return false;
    }
    return source->openSecondaryFile(filename, error);
}

bool ModelsPrivate::reopen(std::size_t index, const Str& filename, ug::Error* error) {
    RVF_ASSERT(index < count());
    ug::UnstructGridModel* model = get(index);
    if (!model) {
        return false;
    }
    return loadFromFile(model, {filename}, Str(), error);
}

void ModelsPrivate::close(std::size_t index) {
    RVF_ASSERT(index < count());
    const ug::UnstructGridModel* model = m_models[index].get();
    const ug::DataSource* source = dataSourceOf(model);
    if (!isUsedByAnother(source, model)) {
        dropDataSource(source);
    }
    m_models.erase(m_models.begin() + index);

    if (m_models.empty()) {
        RVF_ASSERT(m_currentIndex == 0);
        m_currentIndex = UNDEFINED_SIZE_T;
    } else if (m_currentIndex >= count()) {
        m_currentIndex = count() - 1;
    }
}

void ModelsPrivate::closeAll() {
    for (const PtrRef<ug::DataSource>& source : m_dataSources) {
        source->setProgress(nullptr);
    }
    m_models.clear();
    m_dataSources.clear();
    m_openedFiles.clear();
    m_currentIndex = UNDEFINED_SIZE_T;
}

void ModelsPrivate::setProgress(ug::Progress* progress) {
    m_progress = progress;
    for (const PtrRef<ug::DataSource>& source : m_dataSources) {
        source->setProgress(progress);
    }
}

PtrRef<ug::UnstructGridModel> ModelsPrivate::createFromFile(const std::vector<Str>& filenames, const Str& password,
                                                            ug::Error* error) {
    if (filenames.empty()) {
        return nullptr;
    }
    PtrRef<ug::UnstructGridModel> model = new ug::UnstructGridModel;
    if (!loadFromFile(model.get(), filenames, password, error)) {
        return nullptr;
    }
    return model;
}

bool ModelsPrivate::loadFromFile(ug::UnstructGridModel* model, const std::vector<Str>& filenames, const Str& password,
                                 ug::Error* error) {
    const Str filename = filenames[0];
    model->modelSpec().clear();
    if (!shareOpenedDataSource(model, filename)) {
        PtrRef<ug::DataSource> source = openDataSource(filenames, password, m_progress, error);
        if (!source) {
            return false;
        }
        model->setDataSource(source.get());
        m_dataSources.push_back(source);
        m_openedFiles.push_back(filename);
    }

    const std::vector<ug::StateInfo> states = model->dataSource()->directory()->stateInfos();
    if (states.empty()) {
        model->setDataSource(nullptr);
        // The doubled negative stays: it is the text that people search their logs for.
        logError("Cannot not load model. There are no states in the file.",
                 {RVF_SOURCE_PATH,
                  "bool orv::app::ModelsPrivate::loadFromFile(orv::ug::UnstructGridModel *, "
                  "const std::vector<orv::Str> &, const orv::Str &, orv::ug::Error *)",
                  "loadFromFile", __LINE__});
        return false;
    }
    model->modelSpec().setStateId(states[0].id());
    model->modelSpec().setDefaultResults();
    return true;
}

ModelsPrivate::FileRoute ModelsPrivate::fileRoute(const Str& filename,
                                                  const std::vector<imp::cae::ReaderInfo>& caeFormats) {
    const Str extension = extensionOf(filename);
    const bool caeReadsZtfx = std::any_of(caeFormats.begin(), caeFormats.end(), [](const imp::cae::ReaderInfo& reader) {
        return reader.extensions.find("ztfx", 0) != Str::npos;
    });
    if (!caeReadsZtfx && extension.subStr(0, 4) == "ztfx") {
        return FileRoute::ZTFX;
    }
    return extension == "ztf" ? FileRoute::ZTF : FileRoute::CAE;
}

bool ModelsPrivate::isUsedByAnother(const ug::DataSource* source, const ug::UnstructGridModel* model) const {
    return std::any_of(m_models.begin(), m_models.end(), [&](const PtrRef<ug::UnstructGridModel>& other) {
        return other.get() != model && dataSourceOf(other.get()) == source;
    });
}

void ModelsPrivate::dropDataSource(const ug::DataSource* source) {
    for (std::size_t i = 0; i < m_dataSources.size(); ++i) {
        if (m_dataSources[i].get() == source) {
            m_dataSources[i]->setProgress(nullptr);
            m_dataSources.erase(m_dataSources.begin() + i);
            m_openedFiles.erase(m_openedFiles.begin() + i);
            return;
        }
    }
}

bool ModelsPrivate::shareOpenedDataSource(ug::UnstructGridModel* model, const Str& filename) const {
    bool found = false;
    for (std::size_t i = 0; i < m_openedFiles.size(); ++i) {
        if (m_openedFiles[i] == filename) {
            model->setDataSource(m_dataSources[i].get());
            found = true;
        }
    }
    return found;
}

} // namespace orv::app
