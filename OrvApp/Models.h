#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/SimulationInfo.h"

#include <cstddef>
#include <vector>

namespace orv::ug {
class Error;
class Progress;
class UnstructGridModel;
} // namespace orv::ug

namespace orv::app {

class ModelsPrivate;

/// The open models of the process, in the order of adding, and which of them is the current one.
///
/// States, Parts and Results speak of the current model only. Models that were opened under the same name share one
/// data source, which lives until the last of them is closed. The pointers that come back do not own: a model lives as
/// long as it is listed, or longer where the caller holds it in a PtrRef.
///
/// An index is a position in the list. UNDEFINED_SIZE_T as the current index means that no model is current. A literal
/// 0 stands for an index and for a null pointer alike: write 0ul where an operation takes either.
///
/// One thread at a time.
class ORV_API Models : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Models* instance();

    std::size_t count() const;

    /// Null when there are no models or none is current.
    ug::UnstructGridModel* current() const;

    /// The simulation record of the current model; an undefined record when none is current.
    /// Asserts "currentModel", "source" and "dir": a model without a data source has no record, and asking for it is a
    /// programming error without a defined answer.
    ug::SimulationInfo currentInfo() const;

    /// Null selects nothing. Asserts "index != orv::UNDEFINED_SIZE_T" for a model that is not listed; behind the failed
    /// assertion no model is current. The Parts index stays as it is.
    void setCurrent(ug::UnstructGridModel* model);

    std::size_t currentIndex() const;

    /// Asserts "index < count() || index == orv::UNDEFINED_SIZE_T". The value stands even when the assertion has
    /// failed. The Parts index stays as it is.
    void setCurrentIndex(std::size_t index);

    /// The first position of this pointer; UNDEFINED_SIZE_T when it is not listed.
    std::size_t indexOf(const ug::UnstructGridModel* model) const;

    /// Asserts "index < count()"; no defined answer behind a failed assertion.
    ug::UnstructGridModel* get(std::size_t index) const;

    /// Appends a model, takes a reference on it and makes it current; resets the Parts index to the model's first part,
    /// or to none when it has no parts. A null model is not refused, and a model may be listed twice.
    /// @return the model's index
    std::size_t add(ug::UnstructGridModel* model);

    /// The simulation record of a model.
    /// Asserts "index < count()", "model", "source" and "dir"; no defined answer behind a failed assertion.
    ug::SimulationInfo info(std::size_t index) const;
    ug::SimulationInfo info(const ug::UnstructGridModel* model) const;

    /// Opens a file and adds it as the current model.
    ///
    /// The name decides who reads it, in this order:
    /// 1. A name that has been opened and not closed since, letter by letter the same, shares the data source: nothing
    ///    is read, and the password is not looked at.
    /// 2. Extension "ztfx" in any case, with whatever behind it: ug::DataSourceZTFx, unless an importer reads that
    ///    extension. A bar and a number behind it ("a.ztfx|7") choose the case with that id; otherwise the first case
    ///    is opened.
    /// 3. Extension "ztf" in any case, and nothing behind it: ug::DataSourceZTF.
    /// 4. Everything else: imp::cae::DataSourceCae, the only one that gets to see all names of a list.
    ///
    /// The extension is what stands behind the last dot of the whole name, also when that dot is in a folder's name.
    ///
    /// The model starts at the first state of the file with its default results. A file without states is an error that
    /// is told through the log, not through `error`. Such a file's data source stays listed: opening it again fails
    /// alike without a look at the file, until closeAll().
    ///
    /// @param filenameArr the primary file first. Without a password asserts "filenameArr.size() > 0"; an empty list
    ///        opens nothing
    /// @param password only for "ztfx"
    /// @param error handed on to the data source, which tells there why it refuses the file
    /// @return the new model; null on failure, and then neither the list nor the current index has changed
    ug::UnstructGridModel* open(const Str& filename, ug::Error* error);
    ug::UnstructGridModel* open(const Str& filename, const Str& password, ug::Error* error);
    ug::UnstructGridModel* open(const std::vector<Str>& filenameArr, ug::Error* error);
    ug::UnstructGridModel* open(const std::vector<Str>& filenameArr, const Str& password, ug::Error* error);

    /// Adds a further result file to the current model, which must come from imp::cae::DataSourceCae: others are an
    /// error that is told through the log. Asserts "model != __null"; no defined answer behind a failed assertion.
    /// @return false on failure
    bool openSecondary(const Str& filename, ug::Error* error);

    /// Loads a file into a model that is listed already. The model keeps its place, no current index changes, and it
    /// starts at the file's first state. There is no password here.
    ///
    /// A name that is open already, the model's own included, reads nothing: it sets the model back to its first state.
    /// The earlier data source stays listed under its name, until closeAll() or until another model on it is closed.
    ///
    /// Asserts "index < count()"; no defined answer behind a failed assertion.
    /// @return false on failure. A model whose file was refused keeps its data source, but its spec is cleared; when
    ///         the file has no states, the model has no data source any more
    bool reopen(std::size_t index, const Str& filename, ug::Error* error);
    bool reopen(ug::UnstructGridModel* model, const Str& filename, ug::Error* error);

    /// Takes a model off the list, and drops its data source when no other model uses it.
    ///
    /// The current index is clamped to the new count and otherwise stays: closing a model in front of the current one,
    /// or the current one itself, makes its successor current. When no model is current, closing any of several makes
    /// the last remaining one current, and closing the only one asserts "m_currentIndex == 0", which does no harm.
    /// Nothing else is told: the Parts index keeps its value.
    ///
    /// A model that is listed twice does not count as a second user of its data source, which is dropped although the
    /// other entry still points at it.
    ///
    /// Asserts "index < count()"; no defined outcome behind a failed assertion.
    void close(std::size_t index);
    /// Asserts "index != orv::UNDEFINED_SIZE_T" for a model that is not listed.
    void close(ug::UnstructGridModel* model);

    /// Closes the current model, if there is one. Always true.
    bool closeCurrent();

    /// Takes all models off the list, and drops all data sources and the names that they were opened under. The Parts
    /// index keeps its value.
    void closeAll();

    /// Told how far the opens and loads of all data sources of this catalogue have come, as
    /// ug::DataSource::setProgress() says; null, as at first, for nobody. Not owned: take it back before it goes. A
    /// data source that the catalogue lets go of tells nobody any more. This is not the Progress of AppComponent.
    void setProgress(ug::Progress* progress);

private:
    Models();
    ~Models() override;

    internal::PimplPointerHolder<ModelsPrivate> m_private;
};

} // namespace orv::app
