#include "OrvUnstructGrid/DataPart.h"

#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfSourcePath.h"
#include "OrvCore/Convert.h"
#include "OrvUnstructGrid/Error.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orv::ug {

/// Nodes and elements that are still in their file, or could not be read from it.
struct DataPart::Unread {
    std::optional<Counts> counts;
    Read read; ///< Empty once it has failed.
    Error problem;
};

DataPart::DataPart(int partId) : m_partId(partId) {}

DataPart::~DataPart() = default;

int DataPart::partId() const {
    return m_partId;
}

void DataPart::setPartId(int partId) {
    m_partId = partId;
}

void DataPart::readLater(const Counts& counts, Read read) {
    m_unread = std::make_unique<Unread>(Unread{counts, std::move(read), {}});
}

void DataPart::readLater(Read read) {
    m_unread = std::make_unique<Unread>(Unread{std::nullopt, std::move(read), {}});
}

bool DataPart::read(Error* error) const {
    if (!m_unread) {
        return true;
    }
    if (m_unread->read) {
        const Read read = std::exchange(m_unread->read, nullptr);
        if (read(&m_nodes, &m_elements, &m_unread->problem)) {
            m_unread.reset();
            return true;
        }
        m_nodes = DataNodes();
        m_elements = DataElements();
    }
    return fail(error, m_unread->problem.message());
}

DataNodes* DataPart::nodes() {
    bringIn();
    return &m_nodes;
}

const DataNodes* DataPart::nodes() const {
    bringIn();
    return &m_nodes;
}

DataElements* DataPart::elements() {
    bringIn();
    return &m_elements;
}

const DataElements* DataPart::elements() const {
    bringIn();
    return &m_elements;
}

bool DataPart::isConsistent() const {
    bringIn();
    std::uint32_t largest = 0;
    for (std::uint32_t node : m_elements.connectivity()) {
        largest = std::max(largest, node);
    }
    return m_elements.connectivity().empty() || largest < m_nodes.nodeCount();
}

std::size_t DataPart::itemCount(ResultMapping mapping) const {
    switch (mapping) {
    case PER_NODE:
        return counts().nodes;
    case PER_ELEMENT:
        return counts().elements;
    case PER_ELEMENT_NODE:
        return counts().elementNodes;
    case PER_ELEMENT_SURFACE:
        return elements()->surfaceCount();
    case UNKNOWN_MAPPING:
        break;
    }
    return 0;
}

std::size_t DataPart::byteCount() const {
    return m_nodes.byteCount() + m_elements.byteCount();
}

// Nobody waits for the reason of a failure here, so it is logged.
void DataPart::bringIn() const {
    Error error;
    if (m_unread && m_unread->read && !read(&error)) {
        rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.ug");
        logger->error(orv::Convert::toRvfString(error.message()),
                      {RVF_SOURCE_PATH, "void orv::ug::DataPart::bringIn() const", "bringIn", __LINE__});
    }
}

DataPart::Counts DataPart::counts() const {
    if (m_unread && m_unread->read && m_unread->counts) {
        return *m_unread->counts;
    }
    bringIn();
    return {m_nodes.nodeCount(), m_elements.elementCount(), m_elements.connectivity().size()};
}

} // namespace orv::ug
