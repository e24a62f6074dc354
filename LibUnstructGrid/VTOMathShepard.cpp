#include "LibUnstructGrid/VTOMathShepard.h"

#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOMathCompare.h"
#include "LibUnstructGrid/VTOMathRound.h"

#include <algorithm>

namespace {

constexpr int maxNeighbours = 16;

/// What is interpolated, and where it goes.
class Fields {
public:
    Fields(const double* pdValues, const VTVector* pVectorValues, double* pdResult, VTVector* pVectorResult)
        : m_pdValues(pdResult ? pdValues : nullptr), m_pVectorValues(pVectorResult ? pVectorValues : nullptr),
          m_pdResult(pdResult), m_pVectorResult(pVectorResult) {}

    void Clear() {
        if (m_pdResult) {
            *m_pdResult = 0.0;
        }
        if (m_pVectorResult) {
            m_pVectorResult->SetZero();
        }
    }

    void Copy(std::size_t node) {
        if (m_pdValues) {
            *m_pdResult = m_pdValues[node];
        }
        if (m_pVectorValues) {
            *m_pVectorResult = m_pVectorValues[node];
        }
    }

    void Add(std::size_t node, double fWeight) {
        if (m_pdValues) {
            *m_pdResult += m_pdValues[node] * fWeight;
        }
        if (m_pVectorValues) {
            *m_pVectorResult += m_pVectorValues[node] * fWeight;
        }
    }

private:
    const double* m_pdValues;
    const VTVector* m_pVectorValues;
    double* m_pdResult;
    VTVector* m_pVectorResult;
};

double weightDistance(const VTVector& from, const VTVector& to, int iPower) {
    const VTVector difference = to - from;
    const double fL2Dist =
        VTSquared(difference.x, false) + VTSquared(difference.y, false) + VTSquared(difference.z, false);
    return iPower == 1 ? fL2Dist : VTSquared(fL2Dist, false);
}

template <typename Index, typename NodeAt>
void interpolate(NodeAt nodeAt, const Index* pIndices, int iNumIndices, int iPower, const VTVector& point,
                 Fields fields) {
    fields.Clear();
    const int iNumNeighbours = std::min(iNumIndices, maxNeighbours);
    double distances[maxNeighbours];
    double fSum = 0.0;
    for (int i = 0; i < iNumNeighbours; ++i) {
        const auto node = static_cast<std::size_t>(pIndices[i]);
        distances[i] = weightDistance(point, nodeAt(node), iPower);
        if (VTFeqZero(distances[i])) {
            fields.Copy(node);
            return;
        }
        fSum += 1.0 / distances[i];
    }
    for (int i = 0; i < iNumNeighbours; ++i) {
        fields.Add(static_cast<std::size_t>(pIndices[i]), 1.0 / (distances[i] * fSum));
    }
}

} // namespace

void VTShepard3D(const VTVector* pNodes, const int* piIndices, int iNumIndices, const double* pdValues,
                 const VTVector* pVectorValues, int iPower, const VTVector* pPoint, double* pdResult,
                 VTVector* pVectorResult) {
    if (!pNodes || !piIndices || !pPoint) {
        return;
    }
    interpolate([pNodes](std::size_t node) { return pNodes[node]; }, piIndices, iNumIndices, iPower, *pPoint,
                Fields(pdValues, pVectorValues, pdResult, pVectorResult));
}

void VTShepard3D(const rvf::Array<rvf::Vector3<float>>* pNodes, const unsigned int* puiIndices, int iNumIndices,
                 const double* pdValues, const VTVector* pVectorValues, int iPower, const VTVector* pPoint,
                 double* pdResult, VTVector* pVectorResult) {
    if (!pNodes || !puiIndices || !pPoint) {
        return;
    }
    const auto nodeAt = [pNodes](std::size_t node) {
        const rvf::Vector3<float>& coordinate = (*pNodes)[node];
        return VTVector(coordinate.x(), coordinate.y(), coordinate.z());
    };
    interpolate(nodeAt, puiIndices, iNumIndices, iPower, *pPoint,
                Fields(pdValues, pVectorValues, pdResult, pVectorResult));
}
