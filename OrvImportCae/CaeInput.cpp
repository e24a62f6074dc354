#include "OrvImportCae/CaeInput.h"

#include <cstring>

namespace orv::imp::cae {

CaeInput::CaeInput(const CaeFile& file, ug::Error* error) : m_file(file), m_error(error), m_buffer(BUFFER_SIZE) {
    m_at = m_end = m_buffer.data();
}

void CaeInput::seek(std::int64_t offset) {
    const std::int64_t inBuffer = offset - m_bufferOffset;
    if (inBuffer >= 0 && inBuffer <= m_end - m_buffer.data()) {
        m_at = m_buffer.data() + inBuffer;
        return;
    }
    m_bufferOffset = offset;
    m_at = m_end = m_buffer.data();
}

std::int64_t CaeInput::offset() const {
    return m_bufferOffset + (m_at - m_buffer.data());
}

bool CaeInput::fill(std::size_t count) {
    const std::size_t left = std::size_t(m_end - m_at);
    if (left >= count) {
        return true;
    }
    m_bufferOffset = offset();
    std::memmove(m_buffer.data(), m_at, left);
    const std::size_t got =
        m_file.read(m_bufferOffset + std::int64_t(left), m_buffer.data() + left, BUFFER_SIZE - left);
    m_at = m_buffer.data();
    m_end = m_at + left + got;
    return left + got >= count;
}

bool CaeInput::failAt(std::int64_t offset, const std::string& text) const {
    return m_file.fail(offset, text, m_error);
}

} // namespace orv::imp::cae
