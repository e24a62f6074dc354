#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/ModelSpec.h"
#include "OrvVisualization/Model.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

class CuttingPlane;
class DataSource;
class DataState;
class Error;
class HitItem;
class ModelShapes;
class Progress;
class SurfacePathQuery;

/// A data source seen through a spec: what an application opens, lists, shows and picks in.
///
/// What is shown of each visible part of the current state are the faces of volumes that only one of its elements has,
/// both sides of shells, beams as tubes and points as spheres, whose radius is 0.002 of the diagonal of the box about
/// all nodes; and the sections of the visible cutting planes. Faces with mid-side nodes are drawn through these. A
/// part's own faces count, so parts that touch are both closed.
///
/// Surfaces are kept as long as the geometry is the same: do not fill the parts of a geometry anew once it has been
/// shown, but replace the geometry.
class ORV_API UnstructGridModel : public vis::Model {
public:
    /// Without a data source and cutting planes.
    UnstructGridModel();
    ~UnstructGridModel() override;

    UnstructGridModel(const UnstructGridModel&) = delete;
    UnstructGridModel& operator=(const UnstructGridModel&) = delete;

    /// Null until set.
    DataSource* dataSource();
    const DataSource* dataSource() const;
    /// Takes a reference; null lets go of the source. The ModelSpec stays as it is.
    void setDataSource(DataSource* source);

    /// The same object on each call.
    ModelSpec& modelSpec();
    const ModelSpec& modelSpec() const;

    /// The state id of the ModelSpec, -1 when none.
    int currentStateId() const;

    /// The frame of the current state that is shown; states have one frame, so 0.
    std::size_t currentFrameIndex() const;

    /// The number of cutting planes; 0 at first.
    std::size_t cuttingPlaneCount() const;
    /// The model keeps it alive. Asserts "index < cuttingPlaneCount()"; null behind a failed assertion.
    CuttingPlane* cuttingPlane(std::size_t index) const;
    /// Appends a plane through the origin, across z; the model owns it.
    CuttingPlane* addCuttingPlane();
    /// Deletes a plane; later ones move up by one. Asserts "index < cuttingPlaneCount()".
    void removeCuttingPlane(std::size_t index);

    /// Finds what a ray hits first, in the current state as it is shown. Any point of the surface that is visible from
    /// the ray's origin is hit by a ray aimed at it, wherever the model is; a ray from inside hits the surface from
    /// behind. Of things at the same place the first part goes first, and parts go before sections.
    ///
    /// On a part, HitItem::nodeIndex() is the node of the surface that was hit, or of the beam or point, that is
    /// nearest to the hit. On a section, node and element
    /// stay undefined, geometryIndex() and partId() tell what is cut there.
    /// @param hit written only when something is hit; may be null
    /// @return false when nothing is hit, there is no current state, or its mesh or the displacement to show cannot be
    ///         loaded
    bool rayIntersect(const Ray& ray, HitItem* hit) const;

    /// Loads what the ModelSpec and the cutting planes want to show and makes the shapes of it. Cheap when nothing has
    /// changed but values of scalars.
    ///
    /// Each part shows ModelSpec::effectiveFringesResultId(), each section CuttingPlane::mapScalarResultId(): per node
    /// as it is; per element on its faces; per element and node averaged at the nodes, in sections interpolated in each
    /// element; per element and surface on the surfaces, in sections averaged over the element. A result that the
    /// state lacks is not shown. The shape is displaced by ModelSpec::displacementResultId() when that is switched on
    /// and the state has it per node; a node without a displacement stays where it is.
    /// @return false, with nothing to be shown, when there is no data source or it has no such state, or when its mesh
    ///         or a result cannot be loaded
    bool updateShapes(Str* reason) override;
    /// Parts first, in the order of geometries and parts, then the sections, plane by plane. Parts without scalars are
    /// told apart by their colours.
    std::span<const vis::Shape> shapes() const override;
    const vis::RayScene* scene() const override;
    /// The name of the scalar of the first shape that shows one.
    Str scalarTitle() const override;

    /// Brings the model up to date after a change of its spec. Values are loaded when somebody asks for them, so
    /// without a Progress all that is to be done here is to see whether the state exists, and to forget where
    /// displacements have led: call it when the values of the displacement that is shown have been written anew.
    ///
    /// With a Progress what is to be shown is loaded now, as updateShapes() does, and the Progress, not that of the
    /// data source, is told how far the reads have come.
    /// @param error told when it fails; may be null
    /// @param progress told percents that rise, and 100 on success; may be null
    /// @param options 0; there are none yet
    /// @return false when there is no data source or it has no such state; with a Progress also when something that is
    ///         to be shown cannot be loaded
    virtual bool refresh(Error* error, Progress* progress, unsigned int options);

private:
    friend class SurfacePathQuery;

    /// Up to date; null when nothing can be shown.
    ModelShapes* currentShapes() const;
    DataState* findCurrentState(Error* error) const;
    bool updateScene(Error* error) const;
    bool updateScalars(Error* error);
    bool loadShown(Progress* progress, Error* error);

    PtrRef<DataSource> m_dataSource;
    ModelSpec m_modelSpec;
    std::vector<std::unique_ptr<CuttingPlane>> m_cuttingPlanes;
    std::unique_ptr<ModelShapes> m_shapes; ///< What const functions may bring up to date.
};

} // namespace orv::ug
