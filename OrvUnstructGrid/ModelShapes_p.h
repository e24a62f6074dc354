#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PlaneSection_p.h"
#include "OrvUnstructGrid/SectionWay_p.h"
#include "OrvUnstructGrid/ShapeScalars_p.h"
#include "OrvUnstructGrid/SurfaceTopology_p.h"
#include "OrvVisualization/Model.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace orv::ug {

class CuttingPlane;
class DataSource;
class DataState;
class Error;
class HitItem;
class ModelSpec;
class ResultInfo;

std::vector<int> geometryIdsOf(const DataState& state);

/// What a model has chosen to show.
struct ShownState {
    DataSource* source;
    DataState* state;
    const ModelSpec& spec;
    const std::vector<std::unique_ptr<CuttingPlane>>& planes;
};

/// The shapes of a model and the scene of them, made from its state and kept until something else is to be shown.
///
/// Surfaces are kept as long as a geometry is shown, so another state of the same geometry costs nothing, and one that
/// is displaced costs the scene alone.
class ModelShapes {
public:
    ModelShapes();
    ~ModelShapes();

    ModelShapes(const ModelShapes&) = delete;
    ModelShapes& operator=(const ModelShapes&) = delete;

    /// Brings coordinates, sections, shapes and scene up to date, loading the displacement when it is to be shown.
    /// Whatever fails leaves nothing to be shown.
    bool updateScene(const ShownState& shown, Error* error);

    /// Loads the scalars and puts them on the shapes. Call it behind updateScene().
    bool updateScalars(const ShownState& shown, Error* error);

    /// Nothing is shown, and the scene is null, until the next update.
    void clear();

    /// Makes the next update build displaced coordinates anew.
    void forgetDisplacements();

    std::span<const vis::Shape> shapes() const;
    const vis::RayScene* scene() const;
    /// The name of the scalar of the first shape that has one.
    const Str& scalarTitle() const;

    /// What a ray hits in the scene, in full but for the state.
    /// @param hit a default item
    bool intersect(const Ray& ray, HitItem* hit) const;

    /// Of the visible parts as they are shown. Made when it is first asked for, and kept as long as the scene; what
    /// depends on a geometry alone is kept as long as that.
    const SurfaceTopology& topology();

    /// What a cutting plane shows; nothing of a hidden one.
    std::vector<ShownSection> sectionsOf(std::size_t planeIndex) const;

private:
    using HiddenParts = std::set<std::pair<std::size_t, int>>;

    struct PlaneLook {
        std::size_t index;
        Vec3d point;
        Vec3d normal;

        bool operator==(const PlaneLook&) const = default;
    };

    /// All that the scene depends on.
    struct Look {
        std::vector<int> geometryIds;
        HiddenParts hiddenParts;
        std::vector<PlaneLook> planes;
        int displacedStateId = -1;
        int displacementResultId = -1;
        double displacementScale = 0.0;

        bool operator==(const Look&) const = default;
    };

    struct Geometry {
        explicit Geometry(DataGeometry* geometry);

        PtrRef<DataGeometry> data;
        std::shared_ptr<const void> keep;                ///< Shapes see its coordinates.
        std::vector<PartSurface> surfaces;               ///< One for each part.
        std::vector<std::unique_ptr<NodePieces>> pieces; ///< The same; null until a path is asked for.
    };

    struct Part {
        std::size_t geometryIndex;
        std::size_t index; ///< In the geometry.
        const DataPart* data;
        const PartSurface* surface;
        std::unique_ptr<NodePieces>* pieces;
        std::vector<double> displaced; ///< Empty when the part is not.

        std::span<const double> coordinates() const;
    };

    struct Section {
        std::size_t planeIndex;
        const Part* part;
        PlaneSection data;
    };

    /// Where a shape comes from.
    struct ShapeSource {
        const Part* part;
        const Section* section;                  ///< Null on the surface of the part.
        std::span<const std::uint32_t> elements; ///< One for each face, tube or sphere.
    };

    void showNothing();
    static Look lookOf(const ShownState& shown);

    void takeGeometries(DataState* state);
    bool displace(const ShownState& shown, Error* error);
    void cut(const Look& look);
    void addShapes(const ElementMesh& mesh, std::span<const double> coordinates, const ShapeSource& source);
    void makeShapes(const Look& look);
    double tubeRadius() const;
    bool makeScene(Error* error);
    static int scalarIdOf(const ShownState& shown, const ShapeSource& source);
    void setScalars(const ShownState& shown, const ResultInfo& info, std::size_t shapeIndex);
    void fillPartHit(const vis::RayHit& rayHit, HitItem* hit) const;

    std::optional<Look> m_look;
    std::map<int, std::unique_ptr<Geometry>> m_geometries; ///< By their ids.
    std::vector<Part> m_parts;
    std::vector<Section> m_sections;
    std::vector<vis::Shape> m_shapes;
    std::vector<ShapeSource> m_shapeSources; ///< One for each shape.
    std::vector<ShapeScalars> m_scalars;     ///< What had to be computed for each shape.
    std::unique_ptr<vis::RayScene> m_scene;
    std::unique_ptr<SurfaceTopology> m_topology; ///< Null until it is asked for.
    Str m_scalarTitle;
};

} // namespace orv::ug
