#include "OrvUnstructGrid/ZtfxContainer_p.h"

#include "OrvUnstructGrid/Progress.h"
#include "OrvUnstructGrid/ZtfxSink_p.h"

#include <exception>
#include <utility>

namespace orv::ug {

struct ZtfxContainer::Entry {
    ZtfxContainer* owner;
    std::string name;
    bool isBare;
    Make make;
    bool isMade = false;
    std::uint64_t size = 0;
};

ZtfxContainer::ZtfxContainer() = default;

ZtfxContainer::~ZtfxContainer() = default;

void ZtfxContainer::setPassword(const std::string& password) {
    m_password = password;
}

void ZtfxContainer::setDeflateLevel(int level) {
    m_deflateLevel = level;
}

void ZtfxContainer::addEntry(const std::string& name, bool isBare, Make make) {
    m_entries.push_back(std::make_unique<Entry>(Entry{this, name, isBare, std::move(make)}));
}

bool ZtfxContainer::write(const Str& path, Progress* progress, Error* error) {
    m_progress = progress;
    ZtfxSink sink(path);
    zip_error_t problem;
    zip_error_init(&problem);
    zip_source_t* target = sink.makeSource();
    zip_t* zip = target ? zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, &problem) : nullptr;
    bool isWritten = zip;
    for (std::size_t i = 0; isWritten && i < m_entries.size(); ++i) {
        isWritten = addTo(zip, m_entries[i].get());
    }
    isWritten = isWritten && zip_close(zip) == 0;
    if (!isWritten) {
        const Str reason = zip ? zip_strerror(zip) : zip_error_strerror(&problem);
        const Str& known = m_problem.isEmpty() ? sink.problem() : m_problem.message();
        fail(error, known.isEmpty() ? "cannot write \"" + path + "\": " + reason : known);
        if (zip) {
            zip_discard(zip);
        } else {
            zip_source_free(target);
        }
    }
    zip_error_fini(&problem);
    return isWritten;
}

zip_int64_t ZtfxContainer::handle(void* entry, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    Entry* asked = static_cast<Entry*>(entry);
    return asked->owner->handle(asked, data, size, command);
}

zip_int64_t ZtfxContainer::handle(Entry* entry, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    switch (command) {
    case ZIP_SOURCE_STAT: {
        if (!entry->isMade && !make(entry)) {
            return -1;
        }
        auto* status = static_cast<zip_stat_t*>(data);
        zip_stat_init(status);
        status->size = entry->size;
        status->valid = ZIP_STAT_SIZE;
        return sizeof *status;
    }
    case ZIP_SOURCE_READ:
        return static_cast<zip_int64_t>(m_payload.read(static_cast<char*>(data), size));
    case ZIP_SOURCE_OPEN:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_READABLE;
    case ZIP_SOURCE_ERROR: {
        zip_error_t unmade;
        zip_error_init_with_code(&unmade, ZIP_ER_INTERNAL);
        const zip_int64_t told = zip_error_to_data(&unmade, data, size);
        zip_error_fini(&unmade);
        return told;
    }
    default:
        return -1;
    }
}

// The caller is C, which no exception may pass.
bool ZtfxContainer::make(Entry* entry) {
    try {
        if (!entry->make(&m_payload, &m_problem)) {
            return false;
        }
    } catch (const std::exception& exception) {
        return fail(&m_problem, Str("not enough memory to write '") + entry->name + "': " + exception.what());
    }
    entry->isMade = true;
    entry->size = m_payload.byteCount();
    const int percent = static_cast<int>(100 * ++m_madeCount / m_entries.size());
    if (m_progress && percent != m_percent) {
        m_progress->setPercent(percent);
    }
    m_percent = percent;
    return true;
}

bool ZtfxContainer::addTo(zip_t* zip, Entry* entry) {
    zip_source_t* source = zip_source_function(zip, &ZtfxContainer::handle, entry);
    const zip_int64_t index = source ? zip_file_add(zip, entry->name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    const auto place = static_cast<zip_uint64_t>(index);
    const bool deflates = m_deflateLevel > 0 && !entry->isBare;
    const bool encrypts = !m_password.empty() && !entry->isBare;
    return zip_set_file_compression(zip, place, deflates ? ZIP_CM_DEFLATE : ZIP_CM_STORE,
                                    static_cast<zip_uint32_t>(deflates ? m_deflateLevel : 0)) == 0 &&
           (!encrypts || zip_file_set_encryption(zip, place, ZIP_EM_AES_256, m_password.c_str()) == 0);
}

} // namespace orv::ug
