#pragma once

#include "Fuzz/Fuzzing.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvUnstructGrid/DataResultGroup.h"

#include <cstring>
#include <span>
#include <vector>

// What fuzz targets of readers have in common.

namespace orvfuzz {

/// Single values, where they can be read, are those of the whole result.
inline void readSingles(orv::imp::cae::CaeReader& reader, const orv::ug::ResultInfo& info, orv::ug::DataState& state) {
    const orv::ug::DataResult* result = state.results(state.geometry(0))->find(info);
    for (std::size_t p = 0; p < result->partCount(); ++p) {
        const std::span<const double> all = result->values(p)->span();
        for (std::size_t i = 0; i < all.size(); ++i) {
            double value = 0.0;
            if (reader.readScalars(info, state.id(), {0, p, i}, {&value, 1})) {
                expect(std::memcmp(&value, &all[i], sizeof value) == 0);
            }
        }
    }
}

/// A mesh can be read, and holds together then, or tells why not.
inline bool readMesh(const orv::ug::DataGeometry& geometry) {
    orv::ug::Error error;
    const bool isRead = geometry.read(&error);
    expect(isRead == error.isEmpty());
    for (std::size_t p = 0; isRead && p < geometry.partCount(); ++p) {
        expect(geometry.part(p)->isConsistent());
    }
    return isRead;
}

/// Each mesh and each result that a reader found can be read or tells why not.
inline void readEverything(orv::imp::cae::CaeReader& reader, const orv::imp::cae::CaeContents& contents) {
    expect(contents.parts.size() == contents.geometry->partCount());
    readMesh(*contents.geometry);
    for (const orv::imp::cae::CaeContents::State& described : contents.states) {
        const orv::PtrRef<orv::ug::DataGeometry>& geometry =
            described.geometry ? described.geometry : contents.geometry;
        if (!readMesh(*geometry)) {
            continue;
        }
        orv::ug::DataState state(described.info.id(), {geometry});
        for (const std::size_t result : described.results) {
            orv::ug::Error error;
            std::vector<orv::Str> warnings;
            const orv::ug::ResultInfo& info = contents.results.at(result);
            const bool isRead = reader.readResult(info, state.id(), info, &state, &warnings, &error);
            expect(isRead == error.isEmpty());
            if (isRead && info.type() == orv::ug::SCALAR) {
                readSingles(reader, info, state);
            }
        }
    }
}

} // namespace orvfuzz
