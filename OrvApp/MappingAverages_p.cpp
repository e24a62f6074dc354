#include "OrvApp/MappingAverages_p.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <vector>

namespace orv::app {
namespace {

/// Calls `work` with the dimension as a constant, so that the loops over components unroll.
template <class Work>
void withConstantDimension(std::size_t dimension, Work work) {
    switch (dimension) {
    case 1:
        return work(std::integral_constant<std::size_t, 1>());
    case 3:
        return work(std::integral_constant<std::size_t, 3>());
    case 6:
        return work(std::integral_constant<std::size_t, 6>());
    }
}

template <std::size_t Dimension>
void averageNodes(const ElementNodeLists& lists, const ItemsToAverage& items, double* out) {
    const std::uint32_t* offsets = lists.offsets.data();
    const std::uint32_t* nodes = lists.nodes.data();
    const std::size_t elementCount = lists.elementCount();
    for (std::size_t e = 0; e < elementCount; ++e, out += Dimension) {
        const std::uint32_t begin = offsets[e];
        const std::uint32_t end = offsets[e + 1];
        std::array<double, Dimension> sum = {};
        for (std::uint32_t i = begin; i < end; ++i) {
            const double* item = items.values + nodes[i] * items.stride;
            for (std::size_t c = 0; c < Dimension; ++c) {
                sum[c] += item[c];
            }
        }
        const double count = end - begin;
        for (std::size_t c = 0; c < Dimension; ++c) {
            out[c] = sum[c] / count;
        }
    }
}

template <std::size_t Dimension>
void addToNodes(const ElementNodeLists& lists, const ItemsToAverage& items, double* touches, double* out) {
    const std::uint32_t* offsets = lists.offsets.data();
    const std::uint32_t* nodes = lists.nodes.data();
    const std::size_t elementCount = lists.elementCount();
    const double* item = items.values;
    for (std::size_t e = 0; e < elementCount; ++e, item += items.stride) {
        for (std::uint32_t i = offsets[e]; i < offsets[e + 1]; ++i) {
            const std::size_t node = nodes[i];
            touches[node] += 1.0;
            for (std::size_t c = 0; c < Dimension; ++c) {
                out[node * Dimension + c] += item[c];
            }
        }
    }
}

template <std::size_t Dimension>
void divideByTouches(const std::vector<double>& touches, double* out) {
    for (double count : touches) {
        if (count != 0.0) {
            for (std::size_t c = 0; c < Dimension; ++c) {
                out[c] /= count;
            }
        }
        out += Dimension;
    }
}

} // namespace

void averageNodesOfElements(const ElementNodeLists& lists, const ItemsToAverage& nodeItems, double* elementValues) {
    withConstantDimension(nodeItems.dimension,
                          [&](auto dimension) { averageNodes<dimension>(lists, nodeItems, elementValues); });
}

void averageElementsAroundNodes(const ElementNodeLists& lists, const ItemsToAverage& elementItems,
                                std::size_t nodeCount, double* nodeValues) {
    std::vector<double> touches(nodeCount, 0.0);
    std::fill_n(nodeValues, nodeCount * elementItems.dimension, 0.0);
    withConstantDimension(elementItems.dimension, [&](auto dimension) {
        addToNodes<dimension>(lists, elementItems, touches.data(), nodeValues);
        divideByTouches<dimension>(touches, nodeValues);
    });
}

} // namespace orv::app
