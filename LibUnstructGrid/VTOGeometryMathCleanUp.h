#pragma once

#include "LibCore/rvfExport.h"

class VTVector;

// Polygon meshes after nodes have been merged.

/// Makes polygons that name equal nodes name one of them. The nodes stay, used or not; of `piPolygons`, the
/// `iNumConnects` node indexes of all polygons, those that are replaced change.
///
/// Equal means VTVectorsEqual(), a relative comparison of each component. The nodes are sorted by x, y and z, and
/// neighbours are compared: a run of equal ones becomes its first, which need not be the lowest index. As only
/// neighbours are compared, nodes that are nearly equal and sort apart are not found, and a run may creep beyond the
/// tolerance from its first to its last.
///
/// The indexes must lie within the nodes. Takes two lists of an int per node and hardly more time than the sort. When
/// there is no memory for them, std::bad_alloc goes to the caller and the polygons stay. Asserts "piPolygons &&
/// pNodes", "iNumConnects >= 0 && iNumNodes >= 0".
ORV_API void VTRemoveDuplicatedNodes(int* piPolygons, int iNumConnects, const VTVector* pNodes, int iNumNodes);

/// The same for nodes less than `dTolerance` apart. With a tolerance of 0 none are, not even those at the same place.
/// The nodes are sorted by the three components that `piSortOrder` lists, the most significant first.
ORV_API void VTRemoveDuplicatedNodes(int* piPolygons, int iNumConnects, const VTVector* pNodes, int iNumNodes,
                                     double dTolerance, const int* piSortOrder);

/// Copies a polygon and returns its vertex count, or 0, with nothing written, when it has collapsed.
///
/// Without the flag a polygon has collapsed when all its nodes are the same or there are fewer than 2, and any other is
/// copied as it is. With the flag each node equal to the one before it is dropped, around the end as well: 1, 1, 2, 3,
/// 1 becomes 1, 2, 3. So 2 is the least count of what is left, an edge.
///
/// `piRetConn` needs room for `iNumConn` indexes. It may be `piConn` or stand before it in the same array. Asserts
/// "piConn && piRetConn", "iNumConn >= 0".
ORV_API int VTCleanCollapsedPolygon(const int* piConn, int iNumConn, bool bRemoveRepeats, int* piRetConn);

/// Does so for a list of polygons, in place: collapsed ones disappear, and what is left moves to the front of both
/// lists. Returns whether either count has changed.
///
/// `iNumConnects` is the sum of the vertex counts. It is not checked and serves the answer alone. Allocates nothing.
/// Asserts "piConn && pubNumPolyVerts", "piNumRetConnects && piNumRetPolygons", "iNumConnects >= 0 && iNumPolygons >=
/// 0".
ORV_API bool VTCleanCollapsedPolygons(int* piConn, int iNumConnects, unsigned char* pubNumPolyVerts, int iNumPolygons,
                                      bool bRemoveRepeats, int* piNumRetConnects, int* piNumRetPolygons);
