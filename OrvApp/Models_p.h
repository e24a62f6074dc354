#pragma once

#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/Str.h"
#include "OrvImportCae/ReaderInfo.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/SimulationInfo.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class Error;
class Progress;
} // namespace orv::ug

namespace orv::app {

/// What stands behind Models.
class ModelsPrivate {
public:
    std::size_t count() const;
    ug::UnstructGridModel* current() const;
    ug::SimulationInfo currentInfo() const;
    void setCurrent(ug::UnstructGridModel* model);
    std::size_t currentIndex() const;
    void setCurrentIndex(std::size_t index);
    std::size_t indexOf(const ug::UnstructGridModel* model) const;
    ug::UnstructGridModel* get(std::size_t index) const;
    void add(ug::UnstructGridModel* model);
    /// Replaces an entry of the list, and nothing else. Asserts "index < count()".
    void set(std::size_t index, ug::UnstructGridModel* model);
    ug::SimulationInfo info(std::size_t index) const;

    ug::UnstructGridModel* open(const std::vector<Str>& filenames, const Str& password, ug::Error* error);
    bool openSecondary(const Str& filename, ug::Error* error);
    bool reopen(std::size_t index, const Str& filename, ug::Error* error);
    void close(std::size_t index);
    void closeAll();
    void setProgress(ug::Progress* progress);

    /// Who reads a file that is not open yet.
    enum class FileRoute {
        ZTFX, ///< ug::DataSourceZTFx
        ZTF,  ///< ug::DataSourceZTF
        CAE   ///< imp::cae::DataSourceCae
    };

    /// @param caeFormats what the importer reads: when "ztfx" is among it, those files are the importer's. It has no
    ///        say about "ztf"
    static FileRoute fileRoute(const Str& filename, const std::vector<imp::cae::ReaderInfo>& caeFormats);

    /// A new model with the file loaded; empty on failure and for an empty list. The list of models stays as it is.
    PtrRef<ug::UnstructGridModel> createFromFile(const std::vector<Str>& filenames, const Str& password,
                                                 ug::Error* error);

    /// Clears the model's spec, finds or opens the data source, and sets the first state and the default results. The
    /// spec is cleared also when the load then fails.
    bool loadFromFile(ug::UnstructGridModel* model, const std::vector<Str>& filenames, const Str& password,
                      ug::Error* error);

private:
    bool isUsedByAnother(const ug::DataSource* source, const ug::UnstructGridModel* model) const;
    void dropDataSource(const ug::DataSource* source);

    /// True when the name is open already, and then the model uses that data source.
    bool shareOpenedDataSource(ug::UnstructGridModel* model, const Str& filename) const;

    std::vector<PtrRef<ug::UnstructGridModel>> m_models;
    std::vector<PtrRef<ug::DataSource>> m_dataSources;
    std::vector<Str> m_openedFiles; ///< The names that the data sources were opened under, entry for entry.
    std::size_t m_currentIndex = UNDEFINED_SIZE_T;
    ug::Progress* m_progress = nullptr; ///< Of the data sources.
};

} // namespace orv::app
