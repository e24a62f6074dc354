#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/SurfacePathQuery.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

namespace orvtest {

/// The nodes and elements of a part to be.
struct Mesh {
    std::vector<orv::Vec3d> nodes;
    std::vector<orv::ug::ElementType> types;
    std::vector<std::uint32_t> connectivity;

    void addElement(orv::ug::ElementType type, const std::vector<std::uint32_t>& elementNodes) {
        types.push_back(type);
        connectivity.insert(connectivity.end(), elementNodes.begin(), elementNodes.end());
    }

    /// Moves all nodes.
    Mesh mapped(const std::function<orv::Vec3d(const orv::Vec3d&)>& map) const {
        Mesh mesh = *this;
        for (orv::Vec3d& node : mesh.nodes) {
            node = map(node);
        }
        return mesh;
    }

    std::vector<double> coordinates() const {
        std::vector<double> all;
        for (const orv::Vec3d& node : nodes) {
            all.insert(all.end(), {node.x(), node.y(), node.z()});
        }
        return all;
    }
};

/// Quadrilaterals in the plane z = 0, of size 1. Node (i, j) is at (i, j, 0) and has the index j * (columns + 1) + i;
/// element (i, j) has its first corner there and the index j * columns + i among all that are not left out.
inline Mesh plate(std::uint32_t columns, std::uint32_t rows, const std::set<std::uint32_t>& holes = {}) {
    Mesh mesh;
    for (std::uint32_t j = 0; j <= rows; ++j) {
        for (std::uint32_t i = 0; i <= columns; ++i) {
            mesh.nodes.emplace_back(i, j, 0);
            const std::uint32_t node = j * (columns + 1) + i;
            if (i < columns && j < rows && !holes.contains(j * columns + i)) {
                mesh.addElement(orv::ug::QUADRILATERAL, {node, node + 1, node + columns + 2, node + columns + 1});
            }
        }
    }
    return mesh;
}

/// Hexahedra of size 1. Node (i, j, k) is at that place and has the index (k * (ny + 1) + j) * (nx + 1) + i.
inline Mesh block(std::uint32_t nx, std::uint32_t ny, std::uint32_t nz) {
    Mesh mesh;
    auto nodeAt = [&](std::uint32_t i, std::uint32_t j, std::uint32_t k) { return (k * (ny + 1) + j) * (nx + 1) + i; };
    for (std::uint32_t k = 0; k <= nz; ++k) {
        for (std::uint32_t j = 0; j <= ny; ++j) {
            for (std::uint32_t i = 0; i <= nx; ++i) {
                mesh.nodes.emplace_back(i, j, k);
                if (i < nx && j < ny && k < nz) {
                    mesh.addElement(orv::ug::HEXAHEDRON,
                                    {nodeAt(i, j, k), nodeAt(i + 1, j, k), nodeAt(i + 1, j + 1, k), nodeAt(i, j + 1, k),
                                     nodeAt(i, j, k + 1), nodeAt(i + 1, j, k + 1), nodeAt(i + 1, j + 1, k + 1),
                                     nodeAt(i, j + 1, k + 1)});
                }
            }
        }
    }
    return mesh;
}

/// A model of one geometry and two states, 1 and 2, the first being current.
class PathModel {
public:
    explicit PathModel(const std::vector<Mesh>& meshes)
        : source(new orv::ug::DataSourceMemory(1)), model(new orv::ug::UnstructGridModel) {
        source->addGeometry();
        for (const Mesh& mesh : meshes) {
            orv::ug::DataPart* part = source->addPart(0, "part");
            part->nodes()->set(mesh.coordinates(), {});
            part->elements()->set(mesh.types, mesh.connectivity, {});
        }
        source->addState(orv::ug::StateInfo(1, "", orv::ug::StateInfo::TIME, 0));
        source->addState(orv::ug::StateInfo(2, "", orv::ug::StateInfo::TIME, 1));
        model->setDataSource(source.get());
        model->modelSpec().setStateId(1);
    }

    orv::ug::DataPart& part(std::size_t index) const {
        return *source->state(0)->geometry(0)->part(index);
    }

    /// On a part by its index.
    static orv::ug::HitItem node(std::size_t part, std::size_t index) {
        orv::ug::HitItem item;
        item.setStateId(1);
        item.setGeometryIndex(0);
        item.setItemIndex(part);
        item.setPartId(static_cast<int>(part) + 1);
        item.setNodeIndex(index);
        return item;
    }

    static orv::ug::HitItem element(std::size_t part, std::size_t index, std::size_t surface = 0) {
        orv::ug::HitItem item = node(part, orv::UNDEFINED_SIZE_T);
        item.setElementIndex(index);
        item.setElementLocalSurfaceIndex(surface);
        return item;
    }

    static orv::ug::HitItem coordinate(std::size_t part, std::size_t elementIndex, const orv::Vec3d& point) {
        orv::ug::HitItem item = element(part, elementIndex, orv::UNDEFINED_SIZE_T);
        item.setCoordinate(point);
        return item;
    }

    static orv::ug::HitItem onPlane(std::size_t plane, const orv::Vec3d& point) {
        orv::ug::HitItem item;
        item.setStateId(1);
        item.setItemType(orv::ug::HitItem::CUTTING_PLANE);
        item.setGeometryIndex(0);
        item.setItemIndex(plane);
        item.setCoordinate(point);
        return item;
    }

    /// A scalar in state 1, per node; the value of each by where it is.
    orv::ug::ResultInfo addField(const std::function<double(const orv::Vec3d&)>& field) {
        const orv::ug::ResultInfo info = source->addResult(orv::ug::SCALAR, "field", orv::ug::PER_NODE);
        for (std::size_t p = 0; p < source->state(0)->geometry(0)->partCount(); ++p) {
            std::vector<double> values;
            for (std::size_t n = 0; n < part(p).nodes()->nodeCount(); ++n) {
                values.push_back(field(part(p).nodes()->node(n)));
            }
            EXPECT_TRUE(source->setValues(1, info, 0, p, values, nullptr));
        }
        return info;
    }

    /// A scalar in state 1 with the values 0, 1, 2, ... on each part, and 1000 more on each next one.
    orv::ug::ResultInfo addCounting(orv::ug::ResultMapping mapping) {
        const orv::ug::ResultInfo info = source->addResult(orv::ug::SCALAR, "counting", mapping);
        for (std::size_t p = 0; p < source->state(0)->geometry(0)->partCount(); ++p) {
            std::vector<double> values(part(p).itemCount(mapping));
            for (std::size_t i = 0; i < values.size(); ++i) {
                values[i] = 1000.0 * static_cast<double>(p) + static_cast<double>(i);
            }
            EXPECT_TRUE(source->setValues(1, info, 0, p, values, nullptr));
        }
        return info;
    }

    std::vector<orv::Vec3d> path(orv::ug::SurfacePathQuery::PointType type,
                                 const std::vector<orv::ug::HitItem>& items) const {
        orv::ug::SurfacePathQuery query(model.get(), 0, type, items);
        std::vector<orv::Vec3d> points = {{7, 7, 7}};
        const bool isDone = query.generatePath(&points);
        EXPECT_EQ(isDone, !points.empty());
        return points;
    }

    orv::PtrRef<orv::ug::DataSourceMemory> source;
    orv::PtrRef<orv::ug::UnstructGridModel> model;
};

inline double lengthOf(const std::vector<orv::Vec3d>& path) {
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        length += (path[i] - path[i - 1]).length();
    }
    return length;
}

} // namespace orvtest
