#include "OrvImportVtk/CgnsIndex.h"

#include "OrvImportVtk/CgnsZone.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::int64_t MOST_STEPS = 1'000'000;

/// Reads one base.
class BaseReader {
public:
    BaseReader(const CgnsTree& tree, CgnsBase* base, CgnsLeftOut* leftOut)
        : m_tree(tree), m_base(*base), m_leftOut(leftOut) {}

    bool read(const CgnsNode& node, ug::Error* error) {
        m_base.name = node.name;
        std::vector<CgnsNode> children;
        return readDimensions(node, error) && m_tree.readChildren(node, &children, error) &&
               readTimes(children, error) && readZones(children, error);
    }

private:
    bool readDimensions(const CgnsNode& node, ug::Error* error) {
        std::vector<std::int64_t> dimensions;
        if (node.type != "I4" || !m_tree.readIntegers(node, &dimensions, error) || dimensions.size() != 2) {
            return ug::fail(error, "does not tell its dimensions");
        }
        if (dimensions[0] < 1 || dimensions[0] > dimensions[1] || dimensions[1] < 2 || dimensions[1] > 3) {
            return ug::fail(error, Str("has cells of " + std::to_string(dimensions[0]) + " dimensions in " +
                                       std::to_string(dimensions[1])));
        }
        m_base.cellDimension = int(dimensions[0]);
        m_base.physicalDimension = int(dimensions[1]);
        return true;
    }

    bool readTimes(const std::vector<CgnsNode>& children, ug::Error* error) {
        bool isFirst = true;
        for (const CgnsNode& child : children) {
            if (child.label == "BaseIterativeData_t") {
                if (!isFirst || !readTimes(child, error)) {
                    return ug::fail(error, Str("'" + child.name + "' does not tell its times"));
                }
                isFirst = false;
            }
        }
        if (std::adjacent_find(m_base.times.begin(), m_base.times.end(), std::greater_equal()) != m_base.times.end() ||
            !std::all_of(m_base.times.begin(), m_base.times.end(), [](double time) { return std::isfinite(time); })) {
            return ug::fail(error, "has times that do not ascend");
        }
        return true;
    }

    // Without times the iterations are the times, and without those the steps.
    bool readTimes(const CgnsNode& node, ug::Error* error) {
        std::vector<std::int64_t> counts;
        std::vector<CgnsNode> children;
        if (node.type != "I4" || !m_tree.readIntegers(node, &counts, error) || counts[0] < 1 ||
            counts[0] > MOST_STEPS || !m_tree.readChildren(node, &children, error)) {
            return false;
        }
        std::vector<std::int64_t> iterations;
        for (const CgnsNode& child : children) {
            const bool isArray = child.label == "DataArray_t";
            if ((isArray && child.name == "TimeValues" && !m_tree.readReals(child, &m_base.times, error)) ||
                (isArray && child.name == "IterationValues" &&
                 (child.type != "I4" || !m_tree.readIntegers(child, &iterations, error)))) {
                return false;
            }
        }
        if (iterations.empty()) {
            for (std::int64_t i = 0; i < counts[0]; ++i) {
                iterations.push_back(i);
            }
        }
        if (m_base.times.empty()) {
            m_base.times.assign(iterations.begin(), iterations.end());
        }
        return m_base.times.size() == std::size_t(counts[0]) && iterations.size() == std::size_t(counts[0]);
    }

    bool readZones(const std::vector<CgnsNode>& children, ug::Error* error) {
        for (const CgnsNode& child : children) {
            if (child.label != "Zone_t") {
                continue;
            }
            CgnsZone zone;
            if (!readCgnsZone(m_tree, child, m_base, &zone, m_leftOut, error)) {
                return false;
            }
            m_base.zones.push_back(std::move(zone));
        }
        return true;
    }

    const CgnsTree& m_tree;
    CgnsBase& m_base;
    CgnsLeftOut* m_leftOut;
};

} // namespace

bool readCgnsIndex(const CgnsTree& tree, std::vector<CgnsBase>* bases, CgnsLeftOut* leftOut, ug::Error* error) {
    CgnsNode root;
    std::vector<CgnsNode> nodes;
    if (!tree.findRoot(&root, error) || !tree.readChildren(root, &nodes, error)) {
        return false;
    }
    for (const CgnsNode& node : nodes) {
        if (node.label != "CGNSBase_t") {
            continue;
        }
        CgnsBase base;
        ug::Error reason;
        if (!BaseReader(tree, &base, leftOut).read(node, &reason)) {
            return ug::fail(error, Str("base '" + node.name + "': ") + reason.message());
        }
        bases->push_back(std::move(base));
    }
    return !bases->empty() || ug::fail(error, "is no CGNS file, or has no base");
}

} // namespace orv::imp::cae
