#include "OrvUnstructGrid/Situation.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/SelectionKeeper.h"
#include "OrvUnstructGrid/SituationCapture_p.h"
#include "OrvUnstructGrid/SituationSelection_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <utility>

namespace orv::ug {
namespace {

constexpr std::size_t MOST_NAMED = 10;

bool failForMissing(const std::vector<Str>& missing, Error* error) {
    Str text = "cannot show again: ";
    for (std::size_t i = 0; i < missing.size() && i < MOST_NAMED; ++i) {
        text += (i > 0 ? ", " : "") + missing[i];
    }
    if (missing.size() > MOST_NAMED) {
        text += " and " + Str(std::to_string(missing.size() - MOST_NAMED)) + " more";
    }
    return fail(error, text + "; the rest of the situation is shown");
}

} // namespace

Situation::Situation() = default;

Situation::~Situation() = default;

Str Situation::name() const {
    return m_name;
}

void Situation::setName(const Str& name) {
    m_name = name;
}

Str Situation::description() const {
    return m_description;
}

void Situation::setDescription(const Str& description) {
    m_description = description;
}

Str Situation::sourceModelFile() const {
    return m_sourceModelFile;
}

void Situation::setSourceModelFile(const Str& path) {
    m_sourceModelFile = path;
}

PropertySetCollection* Situation::propertyCollection() const {
    return m_propertyCollection.get();
}

void Situation::setPropertyCollection(PropertySetCollection* collection) {
    m_propertyCollection = collection;
}

const std::map<Str, Str>& Situation::allUserData() const {
    return m_userData;
}

void Situation::setAllUserData(std::map<Str, Str> data) {
    m_userData = std::move(data);
}

void Situation::makePropertyCollection() {
    if (!m_propertyCollection) {
        m_propertyCollection = new PropertySetCollection;
    }
}

void Situation::capture(const UnstructGridModel& model, const vis::View& view) {
    makePropertyCollection();
    const DataSource* source = model.dataSource();
    m_sourceModelFile = source ? source->directory()->simulationInfo().filename() : Str();
    m_unknownXml.clear();
    removeCapturedSets(m_propertyCollection.get());
    captureModel(model, m_propertyCollection.get());
    captureView(view, m_propertyCollection.get());
    if (const SelectionKeeper* keeper = SelectionKeeper::instance()) {
        setSelection(keeper->selectionIn(view));
    }
}

bool Situation::applyTo(UnstructGridModel* model, vis::View* view, Error* error) const {
    RVF_ASSERT(model);
    RVF_ASSERT(view);
    if (!model || !view) {
        return false;
    }
    if (!m_propertyCollection || !hasCapturedSets(*m_propertyCollection)) {
        return fail(error, "nothing has been captured in this situation");
    }
    std::vector<Str> missing;
    applyToModel(*m_propertyCollection, model, &missing);
    applyToView(*m_propertyCollection, view, &missing);
    if (SelectionKeeper* keeper = SelectionKeeper::instance()) {
        keeper->select(selection(), view);
    }
    return missing.empty() || failForMissing(missing, error);
}

void Situation::setSelection(const SituationSelection& selection) {
    makePropertyCollection();
    putSelection(selection, m_propertyCollection.get());
}

SituationSelection Situation::selection() const {
    return m_propertyCollection ? selectionIn(*m_propertyCollection) : SituationSelection();
}

const std::string& Situation::unknownXml() const {
    return m_unknownXml;
}

void Situation::setUnknownXml(std::string text) {
    m_unknownXml = std::move(text);
}

} // namespace orv::ug
