#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PropertySetCollection.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/SituationSelection.h"

#include <map>
#include <string>

namespace orv::vis {
class View;
}

namespace orv::ug {

class Error;
class UnstructGridModel;

/// A saved picture of what an application is showing. Make it with `new` and hold it in a PtrRef; SituationIo keeps it
/// in files.
///
/// What capture() stores are property sets whose class types begin with "situation.", in the property collection. Sets
/// of other class types, and the user data, belong to the application.
class ORV_API Situation : public RefCountedObject {
public:
    /// Empty: no name, no property collection, no user data.
    Situation();
    ~Situation() override;

    Situation(const Situation&) = delete;
    Situation& operator=(const Situation&) = delete;

    Str name() const;
    void setName(const Str& name);

    Str description() const;
    void setDescription(const Str& description);

    /// The file that the model was opened from; empty when none.
    Str sourceModelFile() const;
    void setSourceModelFile(const Str& path);

    /// Null until it is set, captured or read.
    PropertySetCollection* propertyCollection() const;
    /// Takes a reference; null lets go of the collection, and so of all that has been captured.
    void setPropertyCollection(PropertySetCollection* collection);

    /// What the application wants to keep with the situation. Good until it is replaced.
    const std::map<Str, Str>& allUserData() const;
    /// Replaces all entries.
    void setAllUserData(std::map<Str, Str> data);

    /// Stores what a model and a view show, in place of what an earlier capture has stored, and the source model file
    /// as the model's data source tells it. Makes a property collection when there is none. Name, description, user
    /// data and the application's own property sets stay; unknownXml() is forgotten, as it belongs to another picture.
    void capture(const UnstructGridModel& model, const vis::View& view);

    /// Shows in a model and a view what has been captured. The model needs the data source: open sourceModelFile()
    /// first; the view is not told to show the model. What was not captured stays as it is.
    ///
    /// States, results and parts are found by their id when it still has their name, otherwise by their name, and a
    /// state also by its reference value; where several fit, none is taken. Custom results count only as registered
    /// ones: their generator is not stored, so register them before. What is missing in the model does not keep the
    /// rest from being shown: without its state the model stays at the one that it shows, and a result that is missing
    /// is not shown.
    /// Asserts "model" and "view"; false behind a failed assertion.
    /// @param error told what is missing, by name; may be null
    /// @return false when something is missing, or when nothing has been captured, and then nothing has changed
    bool applyTo(UnstructGridModel* model, vis::View* view, Error* error) const;

    /// What was selected in the view. capture() and applyTo() ask the SelectionKeeper, where there is one; set it for a
    /// program that keeps its selections otherwise, behind capture(), which forgets what was there. Ids and indexes are
    /// kept as they are. Makes a property collection when there is none.
    void setSelection(const SituationSelection& selection);
    /// Empty when none was set, and when its property set makes no sense.
    SituationSelection selection() const;

    /// @name Kept by SituationIo
    /// @{

    /// The text of the file that the situation was read from, when there are elements or attributes in it that this
    /// version does not know; they are written again. Empty when there are none. It is no part of what a situation
    /// shows: one that gets name, description, file, properties and user data of another one has none of it.
    const std::string& unknownXml() const;
    void setUnknownXml(std::string text);
    /// @}

private:
    void makePropertyCollection();

    Str m_name;
    Str m_description;
    Str m_sourceModelFile;
    PtrRef<PropertySetCollection> m_propertyCollection;
    std::map<Str, Str> m_userData;
    std::string m_unknownXml;
};

} // namespace orv::ug
