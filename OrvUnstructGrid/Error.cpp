#include "OrvUnstructGrid/Error.h"

namespace orv::ug {

const Str& Error::message() const {
    return m_message;
}

bool Error::isEmpty() const {
    return m_message.isEmpty();
}

void Error::setMessage(const Str& message) {
    m_message = message;
}

void Error::clear() {
    m_message = Str();
}

bool fail(Error* error, const Str& message) {
    if (error) {
        error->setMessage(message);
    }
    return false;
}

} // namespace orv::ug
