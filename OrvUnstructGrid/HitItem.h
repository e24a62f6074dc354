#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Defines.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>

namespace orv::ug {

/// What a ray hit, see UnstructGridModel::rayIntersect(). A value.
class ORV_API HitItem {
public:
    enum ItemType {
        PART = 0,         ///< The surface of a part.
        CUTTING_PLANE = 1 ///< The section that a cutting plane shows.
    };

    /// Nothing: every id is -1, every index and the coordinate are undefined, the type is PART.
    HitItem() = default;

    int stateId() const;
    void setStateId(int stateId);

    std::size_t geometryIndex() const;
    void setGeometryIndex(std::size_t index);

    /// Of the part that was hit or, in a section, that is cut there.
    int partId() const;
    void setPartId(int partId);

    ItemType itemType() const;
    void setItemType(ItemType type);

    /// Of a part its index in its geometry, of a cutting plane its index in the model.
    std::size_t itemIndex() const;
    void setItemIndex(std::size_t index);

    /// In the part; undefined on a cutting plane, whose itemIndex() names no part to look in.
    std::size_t nodeIndex() const;
    void setNodeIndex(std::size_t index);

    /// In the part; undefined on a cutting plane.
    std::size_t elementIndex() const;
    void setElementIndex(std::size_t index);

    /// Which surface of the element, as elementSurface() counts; undefined on beams, points and cutting planes.
    std::size_t elementLocalSurfaceIndex() const;
    void setElementLocalSurfaceIndex(std::size_t index);

    /// Where the ray hit, on the shape as it is shown. UNDEFINED_VECTOR when nothing was.
    Vec3d coordinate() const;
    void setCoordinate(const Vec3d& coordinate);

private:
    int m_stateId = -1;
    int m_partId = -1;
    ItemType m_itemType = PART;
    std::size_t m_geometryIndex = UNDEFINED_SIZE_T;
    std::size_t m_itemIndex = UNDEFINED_SIZE_T;
    std::size_t m_nodeIndex = UNDEFINED_SIZE_T;
    std::size_t m_elementIndex = UNDEFINED_SIZE_T;
    std::size_t m_elementLocalSurfaceIndex = UNDEFINED_SIZE_T;
    Vec3d m_coordinate = UNDEFINED_VECTOR;
};

} // namespace orv::ug
