#include "OrvUnstructGrid/SituationSelection_p.h"

#include "OrvCore/PropertySetCollection.h"

#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

constexpr const char* SELECTION = "situation.selection";
constexpr const char* ITEM_TYPE = "itemType";
constexpr const char* IS_MULTI = "isMultiSelectionEnabled";
constexpr const char* COORDINATES = "coordinates";

/// A field of a hit item as a number.
struct Field {
    const char* key;
    double (*get)(const HitItem& item);
    bool (*set)(double number, HitItem* item);
};

double toNumber(std::size_t index) {
    return index == UNDEFINED_SIZE_T ? UNDEFINED_DOUBLE : double(index);
}

bool toIndex(double number, std::size_t* index) {
    constexpr double END = 9007199254740992.0; // From there on, doubles leave whole numbers out.
    const bool isDefined = number != UNDEFINED_DOUBLE;
    const bool isGood = !isDefined || (number >= 0.0 && number < END && std::floor(number) == number);
    *index = isDefined && isGood ? std::size_t(number) : UNDEFINED_SIZE_T;
    return isGood;
}

bool toInt(double number, int* value) {
    const bool isGood = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max() &&
                        std::floor(number) == number;
    *value = isGood ? int(number) : -1;
    return isGood;
}

template <std::size_t (HitItem::*get)() const>
double indexOf(const HitItem& item) {
    return toNumber((item.*get)());
}

template <void (HitItem::*set)(std::size_t)>
bool setIndex(double number, HitItem* item) {
    std::size_t index = 0;
    const bool isGood = toIndex(number, &index);
    (item->*set)(index);
    return isGood;
}

template <int (HitItem::*get)() const>
double idOf(const HitItem& item) {
    return (item.*get)();
}

template <void (HitItem::*set)(int)>
bool setId(double number, HitItem* item) {
    int id = 0;
    const bool isGood = toInt(number, &id);
    (item->*set)(id);
    return isGood;
}

double typeOf(const HitItem& item) {
    return item.itemType();
}

bool setType(double number, HitItem* item) {
    int type = 0;
    const bool isGood = toInt(number, &type) && (type == HitItem::PART || type == HitItem::CUTTING_PLANE);
    item->setItemType(isGood ? HitItem::ItemType(type) : HitItem::PART);
    return isGood;
}

constexpr Field FIELDS[] = {
    {"stateIds", idOf<&HitItem::stateId>, setId<&HitItem::setStateId>},
    {"geometryIndexes", indexOf<&HitItem::geometryIndex>, setIndex<&HitItem::setGeometryIndex>},
    {"partIds", idOf<&HitItem::partId>, setId<&HitItem::setPartId>},
    {"itemTypes", typeOf, setType},
    {"itemIndexes", indexOf<&HitItem::itemIndex>, setIndex<&HitItem::setItemIndex>},
    {"nodeIndexes", indexOf<&HitItem::nodeIndex>, setIndex<&HitItem::setNodeIndex>},
    {"elementIndexes", indexOf<&HitItem::elementIndex>, setIndex<&HitItem::setElementIndex>},
    {"elementLocalSurfaceIndexes", indexOf<&HitItem::elementLocalSurfaceIndex>,
     setIndex<&HitItem::setElementLocalSurfaceIndex>},
};

using Numbers = std::vector<double>;

const Numbers* findNumbers(const PropertySet& set, const char* key) {
    return std::get_if<Numbers>(set.value(key));
}

bool readItems(const PropertySet& set, std::vector<HitItem>* items) {
    const Numbers* coordinates = findNumbers(set, COORDINATES);
    if (!coordinates || coordinates->size() % 3 != 0) {
        return false;
    }
    items->resize(coordinates->size() / 3);
    for (std::size_t i = 0; i < items->size(); ++i) {
        const double* xyz = coordinates->data() + 3 * i;
        (*items)[i].setCoordinate({xyz[0], xyz[1], xyz[2]});
    }
    for (const Field& field : FIELDS) {
        const Numbers* numbers = findNumbers(set, field.key);
        if (!numbers || numbers->size() != items->size()) {
            return false;
        }
        for (std::size_t i = 0; i < items->size(); ++i) {
            if (!field.set((*numbers)[i], &(*items)[i])) {
                return false;
            }
        }
    }
    return true;
}

void removeSelections(PropertySetCollection* collection) {
    for (std::size_t i = collection->count(); i-- > 0;) {
        if (collection->propertySet(i)->classType() == SELECTION) {
            collection->remove(i);
        }
    }
}

} // namespace

void putSelection(const SituationSelection& selection, PropertySetCollection* collection) {
    const PtrRef<PropertySet> set(new PropertySet(SELECTION));
    set->setValue(ITEM_TYPE, selection.itemType);
    set->setValue(IS_MULTI, selection.isMultiSelectionEnabled);
    for (const Field& field : FIELDS) {
        Numbers numbers;
        for (const HitItem& item : selection.items) {
            numbers.push_back(field.get(item));
        }
        set->setValue(field.key, numbers);
    }
    Numbers coordinates;
    for (const HitItem& item : selection.items) {
        const Vec3d at = item.coordinate();
        coordinates.insert(coordinates.end(), {at.x(), at.y(), at.z()});
    }
    set->setValue(COORDINATES, coordinates);
    removeSelections(collection);
    collection->append(set.get());
}

SituationSelection selectionIn(const PropertySetCollection& collection) {
    SituationSelection selection;
    const PropertySet* set = collection.find(SELECTION);
    if (!set || !readItems(*set, &selection.items)) {
        return {};
    }
    selection.itemType = set->valueOr(ITEM_TYPE, 0);
    selection.isMultiSelectionEnabled = set->valueOr(IS_MULTI, false);
    return selection;
}

} // namespace orv::ug
