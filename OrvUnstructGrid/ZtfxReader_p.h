#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/ZtfxArchive_p.h"
#include "OrvUnstructGrid/ZtfxArrays_p.h"
#include "OrvUnstructGrid/ZtfxIndex_p.h"
#include "OrvUnstructGrid/ZtfxMeshes_p.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::ug {

/// Reads a ZTFx file: the list of its cases, then one of them.
class ZtfxReader {
public:
    explicit ZtfxReader(const Str& path);

    /// Reads the header and the list of the cases.
    bool open(const Str& password, Error* error);
    const std::vector<ZTFxCaseInfo>& cases() const;

    /// Fills the error with what was wanted and which cases there are. Always false.
    bool failWithoutCase(const Str& wanted, Error* error) const;

    /// Reads one case but for its meshes and the values of its results. Everything that the index says about them has
    /// been checked then, so that reading a mesh or a field can fail by the bytes of its arrays alone. How many items a
    /// result on surfaces has to have is only known with its mesh.
    bool openCase(std::size_t caseIndex, Error* error);
    const ZtfxCase& contents() const;

    /// The meshes of one state, which read themselves when they are needed. States with the same mesh share it.
    std::vector<PtrRef<DataGeometry>> geometries(std::size_t stateIndex) const;

    /// Reads a result into the state with that index, which has it and whose meshes have been read. A geometry without
    /// an array is left alone.
    bool readField(std::size_t stateIndex, const ResultInfo& info, DataState* state, Error* error) const;

    /// Reads neighbouring values of a scalar without the rest. False when they do not lie plainly in the file or
    /// cannot be read.
    bool readScalars(std::size_t stateIndex, const ResultInfo& info, const DataState& state, const ScalarPlace& place,
                     std::span<double> values);

private:
    const ZtfxField* findField(std::size_t stateIndex, const ResultInfo& info) const;
    bool checkField(const ZtfxState& state, const ZtfxField& field, Error* error) const;
    bool checkItems(const ZtfxArray& array, const ResultInfo& info, const DataGeometry& geometry, Error* error) const;
    bool readGeometryField(const ZtfxArray& array, const ResultInfo& info, const DataGeometry& geometry,
                           DataResult* result, Error* error) const;
    bool findOffset(const ZtfxArray& array, std::uint64_t* offset);

    std::shared_ptr<ZtfxArchive> m_archive;
    ZtfxIndexParser m_index;
    std::shared_ptr<const ZtfxArrays> m_arrays; ///< Null until a case is open.
    ZtfxCase m_case;
    ZtfxMeshes m_meshes;
    Str m_path;
    std::unordered_map<std::uint64_t, std::uint64_t> m_offsets; ///< By ids: where arrays begin in the file.
};

} // namespace orv::ug
