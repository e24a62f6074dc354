#include "OrvImportCae/CaeFileRelation.h"

#include "LibCore/rvfBoundingBox.h"
#include "OrvImportCae/CaeMeshDifference.h"
#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace orv::imp::cae {
namespace {

using Files = std::vector<CaeOpenFile>;

// Of the smaller box, in each direction. Neighbours touch, or have a row of elements in common.
constexpr double OVERLAP_OF_STEPS = 0.5;

CaeMesh meshOf(const CaeOpenFile& file) {
    return {file.name, file.contents.geometry.get(), file.contents.parts};
}

Str quoted(const CaeOpenFile& file) {
    return "\"" + file.name + "\"";
}

Str valueText(const ug::StateInfo& info) {
    constexpr const char* NAMES[] = {"time", "frequency", "load case"};
    return info.referenceValue() == UNDEFINED_DOUBLE
               ? Str("no value")
               : Str(std::string("the ") + NAMES[info.referenceType()] + ' ' + caeNumberText(info.referenceValue()));
}

bool isSameState(const ug::StateInfo& a, const ug::StateInfo& b) {
    const bool areBothNaN = std::isnan(a.referenceValue()) && std::isnan(b.referenceValue());
    return a.referenceType() == b.referenceType() && (a.referenceValue() == b.referenceValue() || areBothNaN);
}

/// "there are 2 parts in "b" and 1 in "a""
auto tellBetween(const CaeOpenFile& further, const CaeOpenFile& open) {
    return [&further, &open](const Str& subject, const Str& inFurther, const Str& inOpen) {
        return subject + inFurther + " in " + quoted(further) + " and " + inOpen + " in " + quoted(open);
    };
}

/// The first difference between the states of two files, in words; empty when they are the same.
Str tellStateDifference(const CaeOpenFile& further, const CaeOpenFile& open) {
    const std::vector<CaeContents::State>& ours = further.contents.states;
    const std::vector<CaeContents::State>& theirs = open.contents.states;
    const auto tell = tellBetween(further, open);
    if (ours.size() != theirs.size()) {
        return tell("there are ", Str(std::to_string(ours.size()) + " states"), Str(std::to_string(theirs.size())));
    }
    for (std::size_t s = 0; s < ours.size(); ++s) {
        if (!isSameState(ours[s].info, theirs[s].info)) {
            return tell(Str("state " + std::to_string(s + 1) + " has "), valueText(ours[s].info),
                        valueText(theirs[s].info));
        }
    }
    return Str();
}

/// Why the files do not bring states of their own each; empty when they do.
Str tellSharedState(const Files& files) {
    std::map<std::pair<int, double>, const CaeOpenFile*> owners;
    for (const CaeOpenFile& file : files) {
        if (file.contents.states.empty()) {
            return "there are no states in " + quoted(file);
        }
        for (const CaeContents::State& state : file.contents.states) {
            const double value = state.info.referenceValue();
            if (value == UNDEFINED_DOUBLE || std::isnan(value)) {
                return "a state in " + quoted(file) + " has no value";
            }
            const auto [owner, isNew] = owners.try_emplace({state.info.referenceType(), value}, &file);
            if (!isNew && owner->second != &file) {
                return valueText(state.info) + " is in " + quoted(file) + " and in " + quoted(*owner->second);
            }
        }
    }
    return Str();
}

/// Where the parts of a step are others than those of the first one; empty when they are the same. A part that is alone
/// may have any name, as that is often the file's.
Str tellPartDifference(const CaeOpenFile& further, const CaeOpenFile& open) {
    const std::vector<ug::PartInfo>& ours = further.contents.parts;
    const std::vector<ug::PartInfo>& theirs = open.contents.parts;
    const auto tell = tellBetween(further, open);
    if (ours.size() != theirs.size()) {
        return tell(Str("there are "), Str(std::to_string(ours.size()) + " parts"), Str(std::to_string(theirs.size())));
    }
    for (std::size_t p = 0; ours.size() > 1 && p < ours.size(); ++p) {
        if (!(ours[p].name() == theirs[p].name())) {
            return tell(Str("part " + std::to_string(p + 1) + " is "), "'" + ours[p].name() + "'",
                        "'" + theirs[p].name() + "'");
        }
    }
    return Str();
}

bool isWithoutValues(const CaeOpenFile& file) {
    return std::all_of(file.contents.states.begin(), file.contents.states.end(),
                       [](const auto& state) { return state.info.referenceValue() == UNDEFINED_DOUBLE; });
}

bool hasSameCells(const ug::DataGeometry& a, const ug::DataGeometry& b) {
    bool isSame = a.partCount() == b.partCount();
    for (std::size_t p = 0; isSame && p < a.partCount(); ++p) {
        const ug::DataElements& ours = *a.part(p)->elements();
        const ug::DataElements& theirs = *b.part(p)->elements();
        isSame = a.part(p)->nodes()->nodeCount() == b.part(p)->nodes()->nodeCount() &&
                 std::ranges::equal(ours.types(), theirs.types()) &&
                 std::ranges::equal(ours.connectivity(), theirs.connectivity());
    }
    return isSame;
}

rvf::BoundingBox boxOf(const ug::DataGeometry& geometry) {
    rvf::BoundingBox box;
    for (std::size_t p = 0; p < geometry.partCount(); ++p) {
        const std::span<const double> places = geometry.part(p)->nodes()->coordinates();
        for (std::size_t i = 0; i + 2 < places.size(); i += 3) {
            box.add(rvf::Vector3<double>(places[i], places[i + 1], places[i + 2]));
        }
    }
    return box;
}

bool areAtTheSamePlace(const rvf::BoundingBox& a, const rvf::BoundingBox& b) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double overlap = std::min(a.max()[axis], b.max()[axis]) - std::max(a.min()[axis], b.min()[axis]);
        const double size = std::min(a.max()[axis] - a.min()[axis], b.max()[axis] - b.min()[axis]);
        if (!(overlap >= OVERLAP_OF_STEPS * size)) {
            return false;
        }
    }
    return a.isValid() && b.isValid();
}

// Each file has the elements of the one before it, on nodes that have moved but not gone elsewhere.
bool isMovingMesh(const Files& files) {
    for (std::size_t i = 1; i < files.size(); ++i) {
        const ug::DataGeometry& before = *files[i - 1].contents.geometry;
        const ug::DataGeometry& now = *files[i].contents.geometry;
        if (!hasSameCells(now, before) || !areAtTheSamePlace(boxOf(now), boxOf(before))) {
            return false;
        }
    }
    return true;
}

const CaeOpenFile* findOtherMesh(const Files& files) {
    const auto found = std::ranges::find_if(files, [](const auto& file) { return !file.meshDifference.isEmpty(); });
    return found != files.end() ? &*found : nullptr;
}

bool areAllMeshesOthers(const Files& files) {
    return std::all_of(files.begin() + 1, files.end(), [](const auto& file) { return !file.meshDifference.isEmpty(); });
}

/// The first text of the files behind the first one that is not empty.
template <class Tell>
Str firstDifference(const Files& files, Tell tell, const CaeOpenFile** file) {
    for (std::size_t i = 1; i < files.size(); ++i) {
        const Str text = tell(files[i], files[0]);
        if (!text.isEmpty()) {
            *file = &files[i];
            return text;
        }
    }
    return Str();
}

bool findRelation(const Files& files, FileRelation* relation, ug::Error* error) {
    const CaeOpenFile* other = findOtherMesh(files);
    if (!other) {
        *relation = FileRelation::STEPS;
        return true;
    }
    const CaeOpenFile* file = nullptr;
    const Str stateDifference = firstDifference(files, tellStateDifference, &file);
    if (stateDifference.isEmpty()) {
        const bool isMoving = isWithoutValues(files[0]) && isMovingMesh(files);
        *relation = areAllMeshesOthers(files) && !isMoving ? FileRelation::PIECES : FileRelation::STEPS;
        return true;
    }
    const Str sharedState = tellSharedState(files);
    *relation = FileRelation::STEPS;
    return sharedState.isEmpty() ||
           ug::fail(error, "cannot open " + quoted(files[0]) + " together with " + quoted(*file) +
                               ": their meshes are not the same, as " + other->meshDifference +
                               "; nor are they pieces with the same states, as " + stateDifference +
                               "; nor steps with states of their own, as " + sharedState);
}

} // namespace

void shareCaeMesh(const CaeOpenFile& earlier, CaeOpenFile* file) {
    const Str difference = tellMeshDifference(meshOf(*file), meshOf(earlier));
    if (difference.isEmpty()) {
        file->reader->adoptGeometry(earlier.contents.geometry);
        file->contents.geometry = earlier.contents.geometry;
        file->meshDifference = Str();
    } else if (file->meshDifference.isEmpty()) {
        file->meshDifference = difference;
    }
}

bool settleCaeRelation(const std::vector<CaeOpenFile>& files, FileRelation wanted, FileRelation* relation,
                       ug::Error* error) {
    *relation = wanted;
    if (wanted == FileRelation::FROM_CONTENTS && !findRelation(files, relation, error)) {
        return false;
    }
    const bool arePieces = *relation == FileRelation::PIECES;
    const CaeOpenFile* file = nullptr;
    const Str difference = firstDifference(files, arePieces ? tellStateDifference : tellPartDifference, &file);
    return difference.isEmpty() ||
           ug::fail(error, "cannot add " + quoted(*file) + " to " + quoted(files[0]) + " as a " +
                               (arePieces ? "piece: " : "further step: ") + difference);
}

} // namespace orv::imp::cae
