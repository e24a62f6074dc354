#include "OrvImportCae/CaeParts.h"

#include <algorithm>
#include <utility>

namespace orv::imp::cae {
namespace {

class GeometryBuilder {
public:
    GeometryBuilder(const CaeIds& nodeIds, std::vector<double> coordinates, CaeElements elements)
        : m_nodeIds(nodeIds), m_coordinates(std::move(coordinates)), m_elements(std::move(elements)),
          m_indexInPart(nodeIds.ids().size(), CaeIds::NONE) {}

    PtrRef<ug::DataGeometry> run(std::size_t partCount, CaeNodePlaces* nodePlaces) {
        PtrRef<ug::DataGeometry> geometry(new ug::DataGeometry());
        sortElements(partCount);
        for (std::size_t i = 0; i < partCount; ++i) {
            buildPart(i, geometry->addPart(int(i) + 1));
        }
        *nodePlaces = CaeNodePlaces(m_nodeIds.ids().size(), m_partNodes);
        return geometry;
    }

private:
    // Brings the elements of each part together, in the order of the file. One part's are together already.
    void sortElements(std::size_t partCount) {
        m_partBegins.assign(partCount + 1, 0);
        if (partCount < 2) {
            m_partBegins.back() = m_elements.types.size();
            return;
        }
        for (const std::uint32_t part : m_elements.parts) {
            ++m_partBegins[part + 1];
        }
        for (std::size_t i = 1; i < m_partBegins.size(); ++i) {
            m_partBegins[i] += m_partBegins[i - 1];
        }
        std::vector<std::size_t> ends(m_partBegins.begin(), m_partBegins.end() - 1);
        m_elementOrder.resize(m_elements.types.size());
        m_nodeBegins.resize(m_elements.types.size());
        std::uint32_t nodeBegin = 0;
        for (std::size_t i = 0; i < m_elements.types.size(); ++i) {
            m_elementOrder[ends[m_elements.parts[i]]++] = std::uint32_t(i);
            m_nodeBegins[i] = nodeBegin;
            nodeBegin += ug::elementTypeInfo(m_elements.types[i]).nodeCount;
        }
    }

    void buildPart(std::size_t partIndex, ug::DataPart* part) {
        std::vector<ug::ElementType> types;
        std::vector<int> ids;
        std::vector<std::uint32_t> connectivity;
        takeElements(partIndex, &types, &ids, &connectivity);
        std::vector<std::uint32_t> nodes = usedNodes(connectivity);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            m_indexInPart[nodes[i]] = std::uint32_t(i);
        }
        for (std::uint32_t& node : connectivity) {
            node = m_indexInPart[node];
        }
        for (const std::uint32_t node : nodes) {
            m_indexInPart[node] = CaeIds::NONE;
        }
        part->elements()->set(std::move(types), std::move(connectivity), std::move(ids));
        setNodes(nodes, part->nodes());
        m_partNodes.push_back(std::move(nodes));
    }

    void takeElements(std::size_t partIndex, std::vector<ug::ElementType>* types, std::vector<int>* ids,
                      std::vector<std::uint32_t>* connectivity) {
        if (m_elementOrder.empty()) {
            *types = std::move(m_elements.types);
            *ids = std::move(m_elements.ids);
            *connectivity = std::move(m_elements.connectivity);
            return;
        }
        const std::size_t begin = m_partBegins[partIndex];
        const std::size_t end = m_partBegins[partIndex + 1];
        types->reserve(end - begin);
        ids->reserve(end - begin);
        std::size_t nodeCount = 0;
        for (std::size_t i = begin; i < end; ++i) {
            types->push_back(m_elements.types[m_elementOrder[i]]);
            ids->push_back(m_elements.ids[m_elementOrder[i]]);
            nodeCount += ug::elementTypeInfo(types->back()).nodeCount;
        }
        connectivity->reserve(nodeCount);
        for (std::size_t i = begin; i < end; ++i) {
            const auto nodes = m_elements.connectivity.begin() + m_nodeBegins[m_elementOrder[i]];
            connectivity->insert(connectivity->end(), nodes,
                                 nodes + ug::elementTypeInfo((*types)[i - begin]).nodeCount);
        }
    }

    // By ascending number. Uses m_indexInPart as the mark of nodes seen, and leaves it so.
    std::vector<std::uint32_t> usedNodes(const std::vector<std::uint32_t>& connectivity) {
        std::vector<std::uint32_t> nodes;
        for (const std::uint32_t node : connectivity) {
            if (m_indexInPart[node] == CaeIds::NONE) {
                m_indexInPart[node] = 0;
                nodes.push_back(node);
            }
        }
        const std::span<const int> ids = m_nodeIds.ids();
        if (m_nodeIds.isAscending() && nodes.size() > ids.size() / 8) {
            // Most nodes: going through all of them is quicker than sorting.
            nodes.clear();
            for (std::size_t i = 0; i < ids.size(); ++i) {
                if (m_indexInPart[i] != CaeIds::NONE) {
                    nodes.push_back(std::uint32_t(i));
                }
            }
            return nodes;
        }
        std::sort(nodes.begin(), nodes.end(), [ids](std::uint32_t a, std::uint32_t b) { return ids[a] < ids[b]; });
        return nodes;
    }

    void setNodes(const std::vector<std::uint32_t>& nodes, ug::DataNodes* dataNodes) {
        std::vector<int> ids(nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            ids[i] = m_nodeIds.ids()[nodes[i]];
        }
        const bool hasAll = nodes.size() == m_nodeIds.ids().size() && m_nodeIds.isAscending();
        if (hasAll && m_partBegins.size() == 2) {
            dataNodes->set(std::move(m_coordinates), std::move(ids));
            return;
        }
        std::vector<double> coordinates(3 * nodes.size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            std::copy_n(&m_coordinates[3 * std::size_t(nodes[i])], 3, &coordinates[3 * i]);
        }
        dataNodes->set(std::move(coordinates), std::move(ids));
    }

    const CaeIds& m_nodeIds;
    std::vector<double> m_coordinates;
    CaeElements m_elements;
    std::vector<std::uint32_t> m_indexInPart;
    std::vector<std::size_t> m_partBegins;     // Into m_elementOrder.
    std::vector<std::uint32_t> m_elementOrder; // By part; empty when there is but one.
    std::vector<std::uint32_t> m_nodeBegins;   // Where each element's nodes begin in the connectivity.
    std::vector<std::vector<std::uint32_t>> m_partNodes;
};

} // namespace

CaeNodePlaces::CaeNodePlaces(std::size_t nodeCount, const std::vector<std::vector<std::uint32_t>>& partNodes) {
    const bool hasAll = partNodes.size() == 1 && partNodes[0].size() == nodeCount;
    if (hasAll && std::is_sorted(partNodes[0].begin(), partNodes[0].end())) {
        return;
    }
    m_begins.assign(nodeCount + 2, 0);
    // Counted two places ahead, so that filling leaves each begin where it belongs.
    for (const std::vector<std::uint32_t>& nodes : partNodes) {
        for (const std::uint32_t node : nodes) {
            ++m_begins[std::size_t(node) + 2];
        }
    }
    for (std::size_t i = 1; i < m_begins.size(); ++i) {
        m_begins[i] += m_begins[i - 1];
    }
    m_places.resize(m_begins.back());
    for (std::size_t part = 0; part < partNodes.size(); ++part) {
        for (std::size_t i = 0; i < partNodes[part].size(); ++i) {
            m_places[m_begins[std::size_t(partNodes[part][i]) + 1]++] = {std::uint32_t(part), std::uint32_t(i)};
        }
    }
}

bool CaeNodePlaces::isIdentity() const {
    return m_begins.empty();
}

PtrRef<ug::DataGeometry> makeCaeGeometry(const CaeIds& nodeIds, std::vector<double> coordinates, CaeElements elements,
                                         std::size_t partCount, CaeNodePlaces* nodePlaces) {
    return GeometryBuilder(nodeIds, std::move(coordinates), std::move(elements)).run(partCount, nodePlaces);
}

} // namespace orv::imp::cae
