#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSourceLazy.h"
#include "OrvUnstructGrid/ZTFxCaseInfo.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace orv::ug {

class ZtfxReader;

/// A data source for the library's own file format with several cases in one file, extension "ztfx", which ZTFxWriter
/// writes.
///
/// Opening reads the structure of one case, and checks what it says against the sizes in the container. A mesh is read
/// when something needs it, as a first load does; values come when they are named, and single values by themselves, and
/// without a mesh, where the file holds them neither deflated nor encrypted. The file stays open, so a file that is
/// written anew under the same name does not disturb this source. Every array is checked against its checksum when it
/// is read whole: loadDataState() refuses a state with a damaged mesh, with a text, as it does damaged values.
///
/// An object opens one case. A failed open leaves it as it was, and it may try again.
class ORV_API DataSourceZTFx : public DataSourceLazy {
public:
    explicit DataSourceZTFx(int id);
    ~DataSourceZTFx() override;

    /// Kept for the open that follows; the empty text means none. A file that is not protected opens with any.
    void setPassword(const Str& password);

    /// Opens the case at that index of the file. A bar in the name and all behind it are not part of the path.
    /// @return false with a text when the file cannot be read, has no such case, is protected by another password, or
    ///         when this source is open already
    bool openCase(const Str& filename, std::size_t caseIndex, Error* error);

    /// Opens the case with that id. The name may carry a bar and the id behind it, which are not part of the path; the
    /// simulation record gives the name with them, so that it opens the same case again.
    bool openCaseById(const Str& filename, int caseId, Error* error);

    /// The cases of the file that is open, in its order; none before.
    const std::vector<ZTFxCaseInfo>& cases() const;

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override;
    bool readScalars(const ResultInfo& info, const DataState& state, const ScalarPlace& place,
                     std::span<double> values) override;

private:
    template <class FindCase>
    bool open(const Str& filename, const Str& wanted, FindCase findCase, Error* error);
    void install(const Str& filename);

    Str m_password;
    std::vector<ZTFxCaseInfo> m_cases;
    std::unique_ptr<ZtfxReader> m_reader;
};

} // namespace orv::ug
