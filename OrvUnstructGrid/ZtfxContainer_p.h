#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ZtfxPayload_p.h"

#include <zip.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orv::ug {

class Progress;

/// A zip container in the making. Its entries are made one by one, each when its turn comes to be written.
class ZtfxContainer {
public:
    /// Makes the bytes of an entry, which have to stay good until the next one is made. False with a text.
    using Make = std::function<bool(ZtfxPayload* payload, Error* error)>;

    ZtfxContainer();
    ~ZtfxContainer();

    ZtfxContainer(const ZtfxContainer&) = delete;
    ZtfxContainer& operator=(const ZtfxContainer&) = delete;

    /// Empty means none.
    void setPassword(const std::string& password);
    /// 1 to 9, or 0 to store.
    void setDeflateLevel(int level);

    /// Entries are written in the order of their adding. A bare one is neither deflated nor encrypted.
    void addEntry(const std::string& name, bool isBare, Make make);

    /// Once per object. On failure false with a text, and a file that was there is as it was.
    bool write(const Str& path, Progress* progress, Error* error);

private:
    struct Entry;

    static zip_int64_t handle(void* entry, void* data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t handle(Entry* entry, void* data, zip_uint64_t size, zip_source_cmd_t command);
    bool make(Entry* entry);
    bool addTo(zip_t* zip, Entry* entry);

    std::string m_password;
    int m_deflateLevel = 0;
    std::vector<std::unique_ptr<Entry>> m_entries;
    ZtfxPayload m_payload; ///< Of the entry that was made last.
    std::size_t m_madeCount = 0;
    Progress* m_progress = nullptr;
    int m_percent = -1;
    Error m_problem; ///< Of an entry that could not be made.
};

} // namespace orv::ug
