#pragma once

#include "OrvCore/FileReplacement_p.h"
#include "OrvCore/Str.h"

#include <zip.h>

namespace orv::ug {

/// The file that libzip writes a container to, and that takes its place when the container is complete.
class ZtfxSink {
public:
    explicit ZtfxSink(const Str& path);
    ~ZtfxSink();

    ZtfxSink(const ZtfxSink&) = delete;
    ZtfxSink& operator=(const ZtfxSink&) = delete;

    /// What zip_open_from_source() wants; null when memory is short. This object has to outlive it.
    zip_source_t* makeSource();

    /// Why the file cannot be written; empty when libzip has never heard of that.
    const Str& problem() const;

private:
    static zip_int64_t handle(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t handle(void* data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t write(const char* bytes, zip_uint64_t size);
    zip_int64_t seek(void* data, zip_uint64_t size);
    zip_int64_t resultOf(bool isDone);

    Str m_path;
    FileReplacement m_file;
    Str m_problem;
    zip_error_t m_error;
};

} // namespace orv::ug
