#include "OrvUnstructGrid/ZtfxSink_p.h"

#include <cerrno>
#include <string_view>

namespace orv::ug {

ZtfxSink::ZtfxSink(const Str& path) : m_path(path) {
    zip_error_init(&m_error);
}

ZtfxSink::~ZtfxSink() {
    zip_error_fini(&m_error);
}

zip_source_t* ZtfxSink::makeSource() {
    return zip_source_function_create(&ZtfxSink::handle, this, nullptr);
}

const Str& ZtfxSink::problem() const {
    return m_problem;
}

zip_int64_t ZtfxSink::handle(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    return static_cast<ZtfxSink*>(self)->handle(data, size, command);
}

zip_int64_t ZtfxSink::handle(void* data, zip_uint64_t size, zip_source_cmd_t command) {
    switch (command) {
    case ZIP_SOURCE_STAT:
        // The container is always a new one.
        zip_error_set(&m_error, ZIP_ER_READ, ENOENT);
        return -1;
    case ZIP_SOURCE_BEGIN_WRITE:
        return resultOf(m_file.open(m_path, &m_problem));
    case ZIP_SOURCE_WRITE:
        return write(static_cast<const char*>(data), size);
    case ZIP_SOURCE_SEEK_WRITE:
        return seek(data, size);
    case ZIP_SOURCE_TELL_WRITE:
        return static_cast<zip_int64_t>(m_file.position());
    case ZIP_SOURCE_COMMIT_WRITE:
        return resultOf(m_file.commit(&m_problem));
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, size);
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_WRITABLE;
    default:
        zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

zip_int64_t ZtfxSink::write(const char* bytes, zip_uint64_t size) {
    m_file.write(std::string_view(bytes, size));
    if (m_file.hasFailed()) {
        // Which tells why, and commits nothing.
        return resultOf(m_file.commit(&m_problem));
    }
    return static_cast<zip_int64_t>(size);
}

// libzip goes back to complete an entry's header, and then to the end again.
zip_int64_t ZtfxSink::seek(void* data, zip_uint64_t size) {
    const zip_int64_t position = zip_source_seek_compute_offset(m_file.position(), m_file.size(), data, size, &m_error);
    if (position < 0) {
        return -1;
    }
    m_file.seek(static_cast<std::uint64_t>(position));
    return 0;
}

zip_int64_t ZtfxSink::resultOf(bool isDone) {
    if (!isDone) {
        zip_error_set(&m_error, ZIP_ER_WRITE, 0);
    }
    return isDone ? 0 : -1;
}

} // namespace orv::ug
