#pragma once

#include "OrvVisualization/Model.h"

#include <list>
#include <memory>
#include <vector>

namespace orvtest {

/// The arrays of a shape.
struct Mesh {
    orv::vis::Shape::Kind kind = orv::vis::Shape::FACES;
    std::vector<double> coordinates;
    std::vector<std::uint32_t> corners;
    std::vector<std::uint32_t> faceOffsets;
    std::vector<std::uint8_t> edges;
    double radius = 0.0;
    std::vector<double> pointScalars;
    std::vector<double> primitiveScalars;
    rvf::Color3f color = {1.0F, 0.0F, 0.0F};

    orv::vis::Shape shape() const {
        return {kind, coordinates, corners, faceOffsets, edges, radius, pointScalars, primitiveScalars, color};
    }

    void move(const orv::Vec3d& by) {
        for (std::size_t i = 0; i < coordinates.size(); ++i) {
            coordinates[i] += by[i % 3];
        }
    }
};

/// A face of four corners at a height, its sides along x and y, counter-clockwise from the lower left.
inline Mesh rectangle(double left, double bottom, double right, double top, double z) {
    Mesh mesh;
    mesh.coordinates = {left, bottom, z, right, bottom, z, right, top, z, left, top, z};
    mesh.corners = {0, 1, 2, 0, 2, 3};
    mesh.faceOffsets = {0, 2};
    mesh.edges = {0b011, 0b110};
    return mesh;
}

/// A square of `count` by `count` faces from (0, 0) to (1, 1).
inline Mesh grid(std::uint32_t count) {
    Mesh mesh;
    mesh.faceOffsets = {0};
    for (std::uint32_t y = 0; y <= count; ++y) {
        for (std::uint32_t x = 0; x <= count; ++x) {
            mesh.coordinates.insert(mesh.coordinates.end(), {x / double(count), y / double(count), 0.0});
            if (x < count && y < count) {
                const std::uint32_t n = y * (count + 1) + x;
                mesh.corners.insert(mesh.corners.end(), {n, n + 1, n + count + 2, n, n + count + 2, n + count + 1});
                mesh.edges.insert(mesh.edges.end(), {0b011, 0b110});
                mesh.faceOffsets.push_back(std::uint32_t(mesh.edges.size()));
            }
        }
    }
    return mesh;
}

/// Shows the meshes it is given.
class ShapesModel : public orv::vis::Model {
public:
    void add(const Mesh& mesh) {
        m_meshes.push_back(mesh);
        m_scene.reset();
    }

    void setScalarTitle(const orv::Str& title) {
        m_title = title;
    }

    void failWith(const orv::Str& reason) {
        m_failure = reason;
    }

    bool updateShapes(orv::Str* reason) override {
        m_shapes.clear();
        m_scene.reset();
        if (!m_failure.isEmpty()) {
            if (reason) {
                *reason = m_failure;
            }
            return false;
        }
        m_scene = std::make_unique<orv::vis::RayScene>();
        for (const Mesh& mesh : m_meshes) {
            m_shapes.push_back(mesh.shape());
            switch (mesh.kind) {
            case orv::vis::Shape::FACES:
                m_scene->addFaces(mesh.coordinates, mesh.corners, mesh.faceOffsets);
                break;
            case orv::vis::Shape::TUBES:
                m_scene->addTubes(mesh.coordinates, mesh.corners, mesh.radius);
                break;
            case orv::vis::Shape::SPHERES:
                m_scene->addSpheres(mesh.coordinates, mesh.corners, mesh.radius);
                break;
            }
        }
        return m_scene->commit(reason);
    }

    std::span<const orv::vis::Shape> shapes() const override {
        return m_shapes;
    }

    const orv::vis::RayScene* scene() const override {
        return m_scene.get();
    }

    orv::Str scalarTitle() const override {
        return m_title;
    }

private:
    std::list<Mesh> m_meshes;
    std::vector<orv::vis::Shape> m_shapes;
    std::unique_ptr<orv::vis::RayScene> m_scene;
    orv::Str m_title;
    orv::Str m_failure;
};

} // namespace orvtest
