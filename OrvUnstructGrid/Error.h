#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

namespace orv::ug {

/// Why an operation on data failed, in words for the person who chose the data.
///
/// The caller makes one and passes its address; the operation that fails fills it. The text names the file, the place
/// in it and what was expected there. Operations take a null address to mean that nobody wants to know.
class ORV_API Error {
public:
    /// No failure so far: an empty text.
    Error() = default;

    const Str& message() const;
    bool isEmpty() const;

    /// Replaces the text.
    void setMessage(const Str& message);
    void clear();

private:
    Str m_message;
};

/// Fills `error` unless it is null. Always false, so that a failing operation can end with `return fail(...)`.
ORV_API bool fail(Error* error, const Str& message);

} // namespace orv::ug
