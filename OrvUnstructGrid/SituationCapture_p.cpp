#include "OrvUnstructGrid/SituationCapture_p.h"

#include "OrvCore/PropertySetCollection.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/SituationReferences_p.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <cmath>

namespace orv::ug {
namespace {

constexpr const char* CAPTURED = "situation.";

constexpr const char* STATE = "situation.state";
constexpr const char* SHAPE = "situation.displacedShape";
constexpr const char* FRINGES = "situation.fringes";
constexpr const char* VECTORS = "situation.vectors";
constexpr const char* DEFORMATION = "situation.displacement";
constexpr const char* PART_FRINGES = "situation.partFringes";
constexpr const char* HIDDEN_PART = "situation.hiddenPart";
constexpr const char* CUTTING_PLANE = "situation.cuttingPlane";

constexpr const char* IS_DISPLACED = "isDisplaced";
constexpr const char* SCALE = "scale";
constexpr const char* POINT = "point";
constexpr const char* NORMAL = "normal";
constexpr const char* IS_VISIBLE = "isVisible";

bool isCaptured(const PropertySet& set) {
    return set.classType().find(CAPTURED) == 0;
}

PropertySet* append(const char* classType, PropertySetCollection* collection) {
    const PtrRef<PropertySet> set(new PropertySet(classType));
    collection->append(set.get());
    return set.get();
}

// Calls `use` for each set of that class type.
template <class Use>
void forEach(const char* classType, const PropertySetCollection& collection, Use use) {
    for (std::size_t i = 0; i < collection.count(); ++i) {
        const PropertySet& set = *collection.propertySet(i);
        if (set.classType() == classType) {
            use(set);
        }
    }
}

/// Appends what a model shows to a collection.
class ModelCapture {
public:
    ModelCapture(const UnstructGridModel& model, PropertySetCollection* collection)
        : m_model(model), m_spec(model.modelSpec()), m_directory(*model.dataSource()->directory()),
          m_parts(m_directory), m_collection(collection) {}

    void captureState() {
        StateReference::to(m_directory.findStateInfo(m_spec.stateId())).putInto(append(STATE, m_collection));
        PropertySet* shape = append(SHAPE, m_collection);
        shape->setValue(IS_DISPLACED, m_spec.isDisplaced());
        shape->setValue(SCALE, m_spec.displacementScale());
    }

    void captureResults() {
        putResult(SCALAR, m_spec.fringesResultId(), append(FRINGES, m_collection));
        putResult(VECTOR, m_spec.vectorResultId(), append(VECTORS, m_collection));
        putResult(DISPLACEMENT, m_spec.displacementResultId(), append(DEFORMATION, m_collection));
        for (const auto& [part, resultId] : m_spec.partFringesResultIds()) {
            if (PropertySet* set = appendPart(PART_FRINGES, part)) {
                putResult(SCALAR, resultId, set);
            }
        }
    }

    void captureHiddenParts() {
        for (const auto& part : m_spec.hiddenParts()) {
            appendPart(HIDDEN_PART, part);
        }
    }

    void captureCuttingPlanes() {
        for (std::size_t i = 0; i < m_model.cuttingPlaneCount(); ++i) {
            const CuttingPlane& plane = *m_model.cuttingPlane(i);
            PropertySet* set = append(CUTTING_PLANE, m_collection);
            set->setValue(POINT, plane.point());
            set->setValue(NORMAL, plane.normal());
            set->setValue(IS_VISIBLE, plane.isVisible());
            putResult(SCALAR, plane.mapScalarResultId(), set);
        }
    }

private:
    // A result that the directory does not know is not shown, so there is none to store.
    void putResult(ResultType type, int id, PropertySet* set) const {
        const ResultInfo info = m_directory.findResultInfo(type, id);
        if (info.isValid()) {
            ResultReference::to(info).putInto(set);
        }
    }

    // Null when there is no such part.
    PropertySet* appendPart(const char* classType, const std::pair<std::size_t, int>& part) const {
        PartReference reference;
        if (!m_parts.makeReference(part.first, part.second, &reference)) {
            return nullptr;
        }
        PropertySet* set = append(classType, m_collection);
        reference.putInto(set);
        return set;
    }

    const UnstructGridModel& m_model;
    const ModelSpec& m_spec;
    const DataSourceDirectory& m_directory;
    PartCatalogue m_parts;
    PropertySetCollection* m_collection;
};

/// Brings a model to show what is in a collection.
class ModelShow {
public:
    ModelShow(const PropertySetCollection& collection, UnstructGridModel* model, std::vector<Str>* missing)
        : m_collection(collection), m_model(*model), m_spec(model->modelSpec()),
          m_directory(*model->dataSource()->directory()), m_parts(m_directory), m_missing(*missing) {}

    // Without its state the model keeps the one that it shows, as it would show nothing otherwise.
    void showState(const PropertySet& set) {
        const StateReference reference = StateReference::from(set);
        const int earlier = m_spec.stateId();
        const int found = reference.findIn(m_directory);
        m_spec.clear();
        const bool isMissing = found == -1 && reference.id != -1;
        m_spec.setStateId(isMissing ? earlier : found);
        if (isMissing) {
            m_missing.push_back(reference.text());
        }
    }

    void showShape() {
        forEach(SHAPE, m_collection, [&](const PropertySet& set) {
            const double scale = set.valueOr(SCALE, 1.0);
            m_spec.setDisplaced(set.valueOr(IS_DISPLACED, false));
            m_spec.setDisplacementScale(std::isfinite(scale) ? scale : 1.0);
        });
    }

    void showResults() {
        forEach(FRINGES, m_collection,
                [&](const PropertySet& set) { m_spec.setFringesResultId(findResult(SCALAR, set)); });
        forEach(VECTORS, m_collection,
                [&](const PropertySet& set) { m_spec.setVectorResultId(findResult(VECTOR, set)); });
        forEach(DEFORMATION, m_collection,
                [&](const PropertySet& set) { m_spec.setDisplacementResultId(findResult(DISPLACEMENT, set)); });
        forEach(PART_FRINGES, m_collection, [&](const PropertySet& set) {
            const PartReference part = PartReference::from(set);
            const int partId = findPart(part);
            if (partId != -1) {
                m_spec.setPartFringesResultId(part.geometryIndex, partId, findResult(SCALAR, set));
            }
        });
    }

    void hideParts() {
        forEach(HIDDEN_PART, m_collection, [&](const PropertySet& set) {
            const PartReference part = PartReference::from(set);
            const int partId = findPart(part);
            if (partId != -1) {
                m_spec.setPartVisible(part.geometryIndex, partId, false);
            }
        });
    }

    void replaceCuttingPlanes() {
        while (m_model.cuttingPlaneCount() > 0) {
            m_model.removeCuttingPlane(m_model.cuttingPlaneCount() - 1);
        }
        forEach(CUTTING_PLANE, m_collection, [&](const PropertySet& set) {
            CuttingPlane* plane = m_model.addCuttingPlane();
            if (!plane->setPlane(set.valueOr(POINT, Vec3d()), set.valueOr(NORMAL, Vec3d(0, 0, 1)))) {
                m_missing.push_back("a cutting plane, which has no normal");
            }
            plane->setVisible(set.valueOr(IS_VISIBLE, true));
            plane->setMapScalarResultId(findResult(SCALAR, set));
        });
    }

private:
    int findResult(ResultType type, const PropertySet& set) {
        const ResultReference reference = ResultReference::from(set, type);
        if (reference.id == -1) {
            return -1;
        }
        const int found = reference.findIn(m_directory);
        if (found == -1) {
            m_missing.push_back(reference.text());
        }
        return found;
    }

    int findPart(const PartReference& reference) {
        const int found = m_parts.find(reference);
        if (found == -1) {
            m_missing.push_back(reference.text());
        }
        return found;
    }

    const PropertySetCollection& m_collection;
    UnstructGridModel& m_model;
    ModelSpec& m_spec;
    const DataSourceDirectory& m_directory;
    PartCatalogue m_parts;
    std::vector<Str>& m_missing;
};

} // namespace

void removeCapturedSets(PropertySetCollection* collection) {
    for (std::size_t i = collection->count(); i-- > 0;) {
        if (isCaptured(*collection->propertySet(i))) {
            collection->remove(i);
        }
    }
}

bool hasCapturedSets(const PropertySetCollection& collection) {
    for (std::size_t i = 0; i < collection.count(); ++i) {
        if (isCaptured(*collection.propertySet(i))) {
            return true;
        }
    }
    return false;
}

void captureModel(const UnstructGridModel& model, PropertySetCollection* collection) {
    if (!model.dataSource()) {
        return;
    }
    ModelCapture capture(model, collection);
    capture.captureState();
    capture.captureResults();
    capture.captureHiddenParts();
    capture.captureCuttingPlanes();
}

void applyToModel(const PropertySetCollection& collection, UnstructGridModel* model, std::vector<Str>* missing) {
    const PropertySet* state = collection.find(STATE);
    if (!state) {
        return;
    }
    if (!model->dataSource()) {
        missing->push_back("the model, as it has no data source");
        return;
    }
    ModelShow show(collection, model, missing);
    show.showState(*state);
    show.showShape();
    show.showResults();
    show.hideParts();
    show.replaceCuttingPlanes();
    model->refresh(nullptr, nullptr, 0);
}

} // namespace orv::ug
