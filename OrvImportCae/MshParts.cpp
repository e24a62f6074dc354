#include "OrvImportCae/MshParts.h"

#include <compare>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr const char* DIMENSION_NAMES[] = {"point", "curve", "surface", "volume"};

/// What makes elements a part. In the order of parts.
struct PartKey {
    enum Kind { GROUP, ENTITY, NOTHING };

    int negativeDimension = 0;
    Kind kind = NOTHING;
    int tag = 0;

    auto operator<=>(const PartKey&) const = default;
};

PartKey keyOf(const MshOwner& owner, const MshSections& sections) {
    if (!owner.hasEntity && owner.physical == 0) {
        return PartKey();
    }
    MshEntity entity = owner.entity;
    int physical = owner.physical;
    auto facts = sections.entities.find(entity);
    const bool isPiece = facts != sections.entities.end() && facts->second.hasParent && facts->second.physical == 0 &&
                         facts->second.parent.dimension == entity.dimension;
    if (isPiece) {
        entity = facts->second.parent;
        facts = sections.entities.find(entity);
    }
    if (facts != sections.entities.end()) {
        physical = facts->second.physical;
    }
    return physical != 0 ? PartKey{-entity.dimension, PartKey::GROUP, physical}
                         : PartKey{-entity.dimension, PartKey::ENTITY, entity.tag};
}

std::string numberedName(const PartKey& key) {
    std::string kind = DIMENSION_NAMES[-key.negativeDimension];
    const std::string number = " " + std::to_string(key.tag);
    if (key.kind == PartKey::GROUP) {
        return "Physical " + kind + number;
    }
    kind[0] = char(kind[0] - 'a' + 'A');
    return kind + number;
}

std::string nameOf(const PartKey& key, const MshSections& sections, std::set<std::string>* taken) {
    if (key.kind == PartKey::NOTHING) {
        return "Elements";
    }
    const auto found = sections.physicalNames.find({-key.negativeDimension, key.tag});
    const bool hasName = key.kind == PartKey::GROUP && found != sections.physicalNames.end() && !found->second.empty();
    std::string name = hasName ? found->second : numberedName(key);
    if (!taken->insert(name).second) {
        name += " (" + numberedName(key) + ")";
        taken->insert(name);
    }
    return name;
}

} // namespace

MshParts makeMshParts(MshSections* sections) {
    std::map<PartKey, std::uint32_t> partOfKey;
    for (const MshOwner& owner : sections->owners) {
        partOfKey[keyOf(owner, *sections)] = 0;
    }
    MshParts parts;
    std::set<std::string> taken;
    for (auto& [key, part] : partOfKey) {
        part = std::uint32_t(parts.infos.size());
        parts.infos.emplace_back(int(part) + 1, Str(nameOf(key, *sections, &taken)));
    }
    std::vector<std::uint32_t> partOfOwner;
    for (const MshOwner& owner : sections->owners) {
        partOfOwner.push_back(partOfKey[keyOf(owner, *sections)]);
    }

    CaeElements elements = std::move(sections->elements);
    std::vector<std::uint32_t> elementCounts(parts.infos.size());
    parts.elementPlaces.reserve(elements.parts.size());
    for (std::uint32_t& part : elements.parts) {
        part = partOfOwner[part];
        parts.elementPlaces.push_back({part, elementCounts[part]++});
    }
    parts.elementIds = CaeIds(elements.ids);
    parts.nodeIds = std::move(sections->nodeIds);
    parts.geometry = makeCaeGeometry(parts.nodeIds, std::move(sections->coordinates), std::move(elements),
                                     parts.infos.size(), &parts.nodePlaces);
    return parts;
}

} // namespace orv::imp::cae
