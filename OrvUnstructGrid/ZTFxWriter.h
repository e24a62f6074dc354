#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

#include <memory>
#include <vector>

namespace orv::ug {

class DataSource;
class Error;
class Progress;
struct WriteSelection;
struct ZtfxPlannedCase;

/// Writes cases of any data sources into one ZTFx file, which DataSourceZTFx reads.
///
/// @code
/// orv::ug::ZTFxWriter writer;
/// orv::ug::Error error;
/// if (!writer.addCase(3, "wing", source, {}, &error) || !writer.write("wing.ztfx", nullptr, &error)) {
///     std::cerr << error.message() << '\n';
/// }
/// @endcode
///
/// Meshes, and values that repeat between results, states and cases, are stored once. Reals are stored in 32 bits where
/// nothing is lost by it. Values are read back bit by bit as they were, and so are names, but for a zero character,
/// where a name ends. Custom results become ordinary ones, with new ids.
class ORV_API ZTFxWriter {
public:
    /// How the arrays lie in the file.
    enum Compression {
        STORED,  ///< As they are: the quickest to read, and single values are read by themselves.
        DEFLATED ///< Smaller. Results that were measured or computed hardly deflate.
    };

    ZTFxWriter();
    ~ZTFxWriter();

    ZTFxWriter(const ZTFxWriter&) = delete;
    ZTFxWriter& operator=(const ZTFxWriter&) = delete;

    /// Encrypts everything but the header by AES-256. The empty text, as at first, means that nothing is encrypted.
    /// The names of the entries, which are numbers, and their sizes stay visible.
    void setPassword(const Str& password);

    /// STORED until set.
    /// @param level of DEFLATED, from 1, the quickest, to 9, the smallest; others are taken for the nearest
    void setCompression(Compression compression, int level = 6);

    /// Appends a case to what write() will write. Takes a reference on the source, which has to stay as it is until
    /// then; its values are loaded one result of one state at a time, and what was not loaded before is dropped again.
    /// @param id not negative, and no other case's
    /// @param source not null
    /// @return false with a text when the id is not good or the selection names what the source does not have
    bool addCase(int id, const Str& name, DataSource* source, const WriteSelection& selection, Error* error);

    /// Writes all cases, as often as it is called. The file appears under its name when it is complete, in place of one
    /// that was there; until then, and after any failure, the old one is there. It is written beside it, as
    /// NAME.tmpPID-0, a file that stays behind only when the process dies.
    /// @param filename without a bar, behind which opening would look for the id of a case
    /// @param progress told the share of the entries that have been begun; may be null
    /// @return false with a text when there is no case, when a mesh or values cannot be loaded or when the file cannot
    /// be written
    bool write(const Str& filename, Progress* progress, Error* error) const;

private:
    std::vector<ZtfxPlannedCase> m_cases;
    Str m_password;
    int m_deflateLevel = 0; ///< 0 means STORED.
};

} // namespace orv::ug
