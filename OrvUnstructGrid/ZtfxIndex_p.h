#pragma once

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/PartInfo.h"
#include "OrvUnstructGrid/ResultInfo.h"
#include "OrvUnstructGrid/StateGroupInfo.h"
#include "OrvUnstructGrid/StateInfo.h"
#include "OrvUnstructGrid/ZtfxArray_p.h"
#include "OrvUnstructGrid/ZTFxCaseInfo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orv::ug {

// What stands in the two texts of a ZTFx file, the header and the index. Docs/formats.md describes both.

constexpr const char* ZTFX_HEADER_NAME = "ztfx.xml";
constexpr const char* ZTFX_INDEX_NAME = "index.xml";

/// In the place of an array's id: no array, so no items or only undefined ones. Ids count from 1.
constexpr std::uint64_t ZTFX_NO_ARRAY = 0;

/// The arrays of one part of a mesh, by their ids.
struct ZtfxPart {
    std::uint64_t coordinates = ZTFX_NO_ARRAY;
    std::uint64_t nodeIds = ZTFX_NO_ARRAY;
    std::uint64_t elementTypes = ZTFX_NO_ARRAY;
    std::uint64_t connectivity = ZTFX_NO_ARRAY;
    std::uint64_t elementIds = ZTFX_NO_ARRAY;

    auto operator<=>(const ZtfxPart&) const = default;
};

/// One geometry as states share it.
using ZtfxMesh = std::vector<ZtfxPart>;

/// The values of one result in one state.
struct ZtfxField {
    std::size_t result = 0;            ///< Index in ZtfxCase::results.
    std::vector<std::uint64_t> arrays; ///< One for each geometry.
};

struct ZtfxState {
    StateInfo info;
    std::vector<std::size_t> meshes; ///< For each geometry its index in ZtfxCase::meshes.
    std::vector<ZtfxField> fields;
};

struct ZtfxCase {
    ZTFxCaseInfo info;
    std::vector<Str> warnings;
    std::vector<std::vector<PartInfo>> geometries;
    std::vector<ZtfxMesh> meshes;
    std::vector<ResultInfo> results;
    std::vector<ZtfxState> states;
    std::vector<StateGroupInfo> groups;
};

struct ZtfxIndex {
    std::vector<ZtfxArray> arrays; ///< With ascending ids.
    std::vector<ZtfxCase> cases;
};

std::string makeZtfxHeader(bool isEncrypted);
std::string makeZtfxIndex(const ZtfxIndex& index);

/// False with a text when this is no header or one of a later format.
bool parseZtfxHeader(std::string text, const Str& path, bool* isEncrypted, Error* error);

/// Reads an index, the chosen case alone in full. All that one part of it says about another has been checked behind a
/// good answer: ids and indexes name what is there, ids are unique, lists that must be of the same length are.
class ZtfxIndexParser {
public:
    explicit ZtfxIndexParser(const Str& path);
    ~ZtfxIndexParser();

    bool parse(std::string text, Error* error);
    const std::vector<ZTFxCaseInfo>& cases() const;

    bool readArrays(std::vector<ZtfxArray>* arrays, Error* error) const;
    bool readCase(std::size_t caseIndex, ZtfxCase* contents, Error* error) const;

private:
    struct Document;

    Str m_path;
    std::unique_ptr<Document> m_document;
    std::vector<ZTFxCaseInfo> m_cases;
};

} // namespace orv::ug
