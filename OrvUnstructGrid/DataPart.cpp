#include "OrvUnstructGrid/DataPart.h"

#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfSourcePath.h"
#include "OrvCore/Convert.h"
#include "OrvUnstructGrid/Error.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orv::ug {

/// Nodes and elements that were left in their file.
struct DataPart::Source {
    enum Stage { UNREAD, BEING_READ, THERE, FAILED };

    std::optional<Counts> counts;
    Read read;
    Stage stage = UNREAD;
    Error problem = {};
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
    m_source = std::make_unique<Source>(Source{counts, std::move(read)});
}

void DataPart::readLater(Read read) {
    m_source = std::make_unique<Source>(Source{std::nullopt, std::move(read)});
}

// Whoever reads a part may ask for all parts of its geometry.
bool DataPart::read(Error* error) const {
    if (m_source && m_source->stage == Source::UNREAD) {
        m_source->stage = Source::BEING_READ;
        const bool isRead = m_source->read(&m_nodes, &m_elements, &m_source->problem);
        m_source->stage = isRead ? Source::THERE : Source::FAILED;
        if (!isRead) {
            m_nodes = DataNodes();
            m_elements = DataElements();
        }
    }
    return !m_source || m_source->stage != Source::FAILED || fail(error, m_source->problem.message());
}

void DataPart::giveBack() {
    if (m_source && m_source->stage == Source::THERE) {
        m_source->counts = counts();
        m_source->stage = Source::UNREAD;
        m_nodes = DataNodes();
        m_elements = DataElements();
    }
}

std::size_t DataPart::bytesToGiveBack() const {
    return m_source && m_source->stage == Source::THERE ? byteCount() : 0;
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
    if (m_source && m_source->stage == Source::UNREAD && !read(&error)) {
        rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.ug");
        logger->error(orv::Convert::toRvfString(error.message()),
                      {RVF_SOURCE_PATH, "void orv::ug::DataPart::bringIn() const", "bringIn", __LINE__});
    }
}

DataPart::Counts DataPart::counts() const {
    if (m_source && m_source->stage == Source::UNREAD && m_source->counts) {
        return *m_source->counts;
    }
    bringIn();
    return {m_nodes.nodeCount(), m_elements.elementCount(), m_elements.connectivity().size()};
}

} // namespace orv::ug
