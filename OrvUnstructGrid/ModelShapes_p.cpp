#include "OrvUnstructGrid/ModelShapes_p.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/LoadedResults_p.h"
#include "OrvUnstructGrid/ModelSpec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

/// The radius of tubes and spheres, by the diagonal of the box about all nodes.
constexpr double radiusShare = 0.002;

/// What parts without scalars are told apart by, light enough for shading.
rvf::Color3f partColor(std::size_t partIndex) {
    static const rvf::Color3f colors[] = {{0.70F, 0.75F, 0.82F}, {0.85F, 0.75F, 0.60F}, {0.67F, 0.81F, 0.67F},
                                          {0.84F, 0.67F, 0.67F}, {0.75F, 0.69F, 0.84F}, {0.64F, 0.81F, 0.83F}};
    return colors[partIndex % std::size(colors)];
}

std::vector<double> displacedCoordinates(std::span<const double> coordinates, std::span<const double> displacements,
                                         double scale) {
    std::vector<double> displaced(coordinates.begin(), coordinates.end());
    for (std::size_t i = 0; i < displaced.size(); i += 3) {
        const double* d = &displacements[i];
        if (std::find(d, d + 3, UNDEFINED_DOUBLE) == d + 3) {
            for (std::size_t j = 0; j < 3; ++j) {
                displaced[i + j] += scale * d[j];
            }
        }
    }
    return displaced;
}

double squaredDistance(const double* point, const Vec3d& other) {
    const Vec3d difference = Vec3d(point[0], point[1], point[2]) - other;
    return difference * difference;
}

} // namespace

std::vector<int> geometryIdsOf(const DataState& state) {
    std::vector<int> ids;
    ids.reserve(state.geometryCount());
    for (std::size_t g = 0; g < state.geometryCount(); ++g) {
        ids.push_back(state.geometry(g)->id());
    }
    return ids;
}

ModelShapes::ModelShapes() = default;

ModelShapes::~ModelShapes() = default;

ModelShapes::Geometry::Geometry(DataGeometry* geometry) : data(geometry), keep(geometry->keep()) {
    for (std::size_t p = 0; p < geometry->partCount(); ++p) {
        surfaces.push_back(surfaceOf(*geometry->part(p)));
    }
    pieces.resize(surfaces.size());
}

std::span<const double> ModelShapes::Part::coordinates() const {
    return displaced.empty() ? data->nodes()->coordinates() : displaced;
}

bool ModelShapes::updateScene(const ShownState& shown, Error* error) {
    Look look = lookOf(shown);
    if (m_look == look) {
        return true;
    }
    showNothing();
    if (!shown.state->readGeometries(error)) {
        return false;
    }
    takeGeometries(shown.state);
    if (!displace(shown, error)) {
        return false;
    }
    cut(look);
    makeShapes(look);
    if (!makeScene(error)) {
        showNothing();
        return false;
    }
    m_look = std::move(look);
    return true;
}

ModelShapes::Look ModelShapes::lookOf(const ShownState& shown) {
    Look look;
    look.geometryIds = geometryIdsOf(*shown.state);
    look.hiddenParts = shown.spec.hiddenParts();
    for (std::size_t i = 0; i < shown.planes.size(); ++i) {
        const CuttingPlane& plane = *shown.planes[i];
        if (plane.isVisible()) {
            look.planes.push_back({i, plane.point(), plane.normal()});
        }
    }
    if (shown.spec.isDisplaced() && shown.spec.displacementResultId() != -1) {
        look.displacedStateId = shown.state->id();
        look.displacementResultId = shown.spec.displacementResultId();
        look.displacementScale = shown.spec.displacementScale();
    }
    return look;
}

void ModelShapes::takeGeometries(DataState* state) {
    std::map<int, std::unique_ptr<Geometry>> earlier = std::move(m_geometries);
    m_geometries.clear();
    m_parts.clear();
    for (std::size_t g = 0; g < state->geometryCount(); ++g) {
        DataGeometry* geometry = state->geometry(g);
        std::unique_ptr<Geometry>& entry = m_geometries[geometry->id()];
        if (!entry) {
            std::unique_ptr<Geometry>& kept = earlier[geometry->id()];
            entry = kept ? std::move(kept) : std::make_unique<Geometry>(geometry);
        }
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            m_parts.push_back({g, p, geometry->part(p), &entry->surfaces[p], &entry->pieces[p], {}});
        }
    }
}

bool ModelShapes::displace(const ShownState& shown, Error* error) {
    const int id = shown.spec.isDisplaced() ? shown.spec.displacementResultId() : -1;
    const ResultInfo info = shown.source->directory()->findResultInfo(DISPLACEMENT, id);
    if (!info.isValid() || info.resultMapping() != PER_NODE) {
        return true;
    }
    if (!loadResults(shown.source, shown.state, {info}, error)) {
        return false;
    }
    for (Part& part : m_parts) {
        const std::span<const double> values = loadedValues(*shown.state, info, part.geometryIndex, part.index);
        if (!values.empty()) {
            part.displaced = displacedCoordinates(part.coordinates(), values, shown.spec.displacementScale());
        }
    }
    return true;
}

void ModelShapes::cut(const Look& look) {
    m_sections.clear();
    for (const PlaneLook& plane : look.planes) {
        for (const Part& part : m_parts) {
            m_sections.push_back(
                {plane.index, &part, sectionOf(*part.data, part.coordinates(), plane.point, plane.normal)});
        }
    }
}

void ModelShapes::addShapes(const ElementMesh& mesh, std::span<const double> coordinates, const ShapeSource& source) {
    auto add = [&](vis::Shape::Kind kind, std::span<const std::uint32_t> corners,
                   std::span<const std::uint32_t> elements) {
        if (elements.empty()) {
            return;
        }
        vis::Shape shape;
        shape.kind = kind;
        shape.coordinates = coordinates;
        shape.corners = corners;
        shape.color = partColor(source.part->index);
        if (kind == vis::Shape::FACES) {
            shape.faceOffsets = mesh.faceOffsets;
            shape.edges = mesh.edges;
        }
        m_shapes.push_back(shape);
        m_shapeSources.push_back({source.part, source.section, elements});
    };
    add(vis::Shape::FACES, mesh.corners, mesh.faceElements);
    add(vis::Shape::TUBES, mesh.tubeEnds, mesh.tubeElements);
    add(vis::Shape::SPHERES, mesh.spherePoints, mesh.sphereElements);
}

void ModelShapes::makeShapes(const Look& look) {
    for (const Part& part : m_parts) {
        if (look.hiddenParts.count({part.geometryIndex, part.data->partId()}) == 0) {
            addShapes(*part.surface, part.coordinates(), {&part, nullptr, {}});
        }
    }
    for (const Section& section : m_sections) {
        addShapes(section.data, section.data.coordinates, {section.part, &section, {}});
    }
    auto isThick = [](const vis::Shape& shape) { return shape.kind != vis::Shape::FACES; };
    if (std::any_of(m_shapes.begin(), m_shapes.end(), isThick)) {
        const double radius = tubeRadius();
        for (vis::Shape& shape : m_shapes) {
            shape.radius = isThick(shape) ? radius : 0.0;
        }
    }
}

double ModelShapes::tubeRadius() const {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Vec3d lower(infinity, infinity, infinity);
    Vec3d upper = -lower;
    for (const Part& part : m_parts) {
        const std::span<const double> coordinates = part.data->nodes()->coordinates();
        for (std::size_t i = 0; i < coordinates.size(); ++i) {
            if (std::isfinite(coordinates[i])) {
                lower[i % 3] = std::min(lower[i % 3], coordinates[i]);
                upper[i % 3] = std::max(upper[i % 3], coordinates[i]);
            }
        }
    }
    const double diagonal = (upper - lower).length();
    return diagonal > 0.0 && std::isfinite(diagonal) ? radiusShare * diagonal : radiusShare;
}

bool ModelShapes::makeScene(Error* error) {
    auto scene = std::make_unique<vis::RayScene>();
    for (const vis::Shape& shape : m_shapes) {
        switch (shape.kind) {
        case vis::Shape::FACES:
            scene->addFaces(shape.coordinates, shape.corners, shape.faceOffsets);
            break;
        case vis::Shape::TUBES:
            scene->addTubes(shape.coordinates, shape.corners, shape.radius);
            break;
        case vis::Shape::SPHERES:
            scene->addSpheres(shape.coordinates, shape.corners, shape.radius);
            break;
        }
    }
    Str reason;
    if (!scene->commit(&reason)) {
        return fail(error, reason);
    }
    m_scene = std::move(scene);
    return true;
}

bool ModelShapes::updateScalars(const ShownState& shown, Error* error) {
    const DataSourceDirectory& directory = *shown.source->directory();
    std::vector<ResultInfo> infos;
    for (const ShapeSource& source : m_shapeSources) {
        infos.push_back(directory.findScalarResultInfo(scalarIdOf(shown, source)));
    }
    if (!loadResults(shown.source, shown.state, infos, error)) {
        showNothing();
        return false;
    }
    m_scalars.assign(m_shapes.size(), {});
    m_scalarTitle = Str();
    for (std::size_t i = 0; i < m_shapes.size(); ++i) {
        setScalars(shown, infos[i], i);
    }
    return true;
}

int ModelShapes::scalarIdOf(const ShownState& shown, const ShapeSource& source) {
    return source.section
               ? shown.planes[source.section->planeIndex]->mapScalarResultId()
               : shown.spec.effectiveFringesResultId(source.part->geometryIndex, source.part->data->partId());
}

void ModelShapes::setScalars(const ShownState& shown, const ResultInfo& info, std::size_t shapeIndex) {
    const ShapeSource& source = m_shapeSources[shapeIndex];
    vis::Shape& shape = m_shapes[shapeIndex];
    shape.pointScalars = {};
    shape.primitiveScalars = {};
    const PartScalars scalars = {info.resultMapping(),
                                 loadedValues(*shown.state, info, source.part->geometryIndex, source.part->index)};
    if (scalars.values.empty()) {
        return;
    }
    const DataPart& part = *source.part->data;
    if (!source.section && scalars.mapping == PER_NODE) {
        shape.pointScalars = scalars.values;
    } else {
        ShapeScalars& computed = m_scalars[shapeIndex];
        if (source.section) {
            computed = scalarsOfSection(scalars, part, source.section->data, source.elements);
        } else if (shape.kind == vis::Shape::FACES) {
            computed = scalarsOfFaces(scalars, part, *source.part->surface);
        } else {
            computed = scalarsOfLines(scalars, part, source.elements);
        }
        shape.pointScalars = computed.ofPoints;
        shape.primitiveScalars = computed.ofPieces;
    }
    if (m_scalarTitle.isEmpty() && !(shape.pointScalars.empty() && shape.primitiveScalars.empty())) {
        m_scalarTitle = info.name();
    }
}

void ModelShapes::showNothing() {
    m_look.reset();
    m_topology.reset();
    m_scene.reset();
    m_shapes.clear();
    m_shapeSources.clear();
    m_scalarTitle = Str();
}

void ModelShapes::clear() {
    showNothing();
    m_scalars.clear();
    m_sections.clear();
    m_parts.clear();
    m_geometries.clear();
}

void ModelShapes::forgetDisplacements() {
    if (m_look && m_look->displacementResultId != -1) {
        m_look.reset();
    }
}

std::span<const vis::Shape> ModelShapes::shapes() const {
    return m_shapes;
}

const vis::RayScene* ModelShapes::scene() const {
    return m_scene.get();
}

const Str& ModelShapes::scalarTitle() const {
    return m_scalarTitle;
}

bool ModelShapes::intersect(const Ray& ray, HitItem* hit) const {
    vis::RayHit rayHit;
    if (!m_scene || !m_scene->intersect(ray, &rayHit)) {
        return false;
    }
    const ShapeSource& source = m_shapeSources[rayHit.mesh];
    hit->setGeometryIndex(source.part->geometryIndex);
    hit->setPartId(source.part->data->partId());
    hit->setCoordinate(rayHit.point);
    if (source.section) {
        hit->setItemType(HitItem::CUTTING_PLANE);
        hit->setItemIndex(source.section->planeIndex);
    } else {
        fillPartHit(rayHit, hit);
    }
    return true;
}

void ModelShapes::fillPartHit(const vis::RayHit& rayHit, HitItem* hit) const {
    const ShapeSource& source = m_shapeSources[rayHit.mesh];
    const vis::Shape& shape = m_shapes[rayHit.mesh];
    const std::size_t element = source.elements[rayHit.primitive];
    hit->setItemIndex(source.part->index);
    hit->setElementIndex(element);
    std::span<const std::uint32_t> nodes;
    if (shape.kind == vis::Shape::FACES) {
        // All nodes of a face are corners of its triangles, which the ray has just been through.
        const std::size_t first = shape.faceOffsets[rayHit.primitive];
        nodes = shape.corners.subspan(3 * first, 3 * (shape.faceOffsets[rayHit.primitive + 1] - first));
        hit->setElementLocalSurfaceIndex(source.part->surface->faceSurfaces[rayHit.primitive]);
    } else {
        nodes = source.part->data->elements()->nodeIndexes(element);
    }
    double least = std::numeric_limits<double>::infinity();
    for (const std::uint32_t node : nodes) {
        const double distance = squaredDistance(&shape.coordinates[3 * std::size_t(node)], rayHit.point);
        if (distance < least) {
            least = distance;
            hit->setNodeIndex(node);
        }
    }
}

const SurfaceTopology& ModelShapes::topology() {
    if (!m_topology) {
        std::vector<TopologyPart> parts;
        for (const Part& part : m_parts) {
            if (m_look->hiddenParts.count({part.geometryIndex, part.data->partId()}) > 0) {
                continue;
            }
            if (!*part.pieces) {
                *part.pieces = std::make_unique<NodePieces>(*part.surface, part.data->nodes()->nodeCount());
            }
            parts.push_back(
                {part.geometryIndex, part.index, part.data, part.surface, part.pieces->get(), part.coordinates()});
        }
        m_topology = std::make_unique<SurfaceTopology>(std::move(parts));
    }
    return *m_topology;
}

std::vector<ShownSection> ModelShapes::sectionsOf(std::size_t planeIndex) const {
    std::vector<ShownSection> sections;
    for (const Section& section : m_sections) {
        if (section.planeIndex == planeIndex) {
            sections.push_back({section.part->geometryIndex, section.part->index, section.part->data, &section.data});
        }
    }
    return sections;
}

} // namespace orv::ug
