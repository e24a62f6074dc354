#include "OrvImportVtk/CgnsValues.h"

#include <memory>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_DIMENSIONS = 3;

template <class Number>
void copyCore(const Number* from, const std::vector<std::int64_t>& sizes, const CgnsCounts& counts,
              const CgnsRind& rind, std::size_t stride, double* to) {
    std::array<std::size_t, MOST_DIMENSIONS> begin = {};
    std::array<std::size_t, MOST_DIMENSIONS> count = {1, 1, 1};
    std::array<std::size_t, MOST_DIMENSIONS> size = {1, 1, 1};
    for (std::size_t d = 0; d < counts.size(); ++d) {
        begin[d] = std::size_t(rind[2 * d]);
        count[d] = std::size_t(counts[d]);
        size[d] = std::size_t(sizes[d]);
    }
    for (std::size_t k = begin[2]; k < begin[2] + count[2]; ++k) {
        for (std::size_t j = begin[1]; j < begin[1] + count[1]; ++j) {
            const Number* row = from + (k * size[1] + j) * size[0] + begin[0];
            for (std::size_t i = 0; i < count[0]; ++i, to += stride) {
                *to = double(row[i]);
            }
        }
    }
}

template <class Number>
bool readAs(const CgnsTree& tree, const CgnsNode& node, const CgnsCounts& counts, const CgnsRind& rind,
            std::size_t stride, double* values, ug::Error* error) {
    const auto all = std::make_unique_for_overwrite<Number[]>(std::size_t(node.itemCount()));
    if (!tree.readItems(node, all.get(), error)) {
        return false;
    }
    copyCore(all.get(), node.sizes, counts, rind, stride, values);
    return true;
}

} // namespace

std::size_t cgnsItemCount(const CgnsCounts& counts) {
    std::size_t product = 1;
    for (const std::int64_t count : counts) {
        product *= std::size_t(count);
    }
    return product;
}

bool checkCgnsValues(const CgnsNode& node, const CgnsCounts& counts, const CgnsRind& rind, ug::Error* error) {
    bool isLarge = node.sizes.size() == counts.size() && counts.size() <= MOST_DIMENSIONS;
    for (std::size_t d = 0; isLarge && d < counts.size(); ++d) {
        isLarge = node.sizes[d] >= rind[2 * d] + counts[d];
    }
    return isLarge || ug::fail(error, Str("has an array '" + node.name + "' of another size"));
}

bool readCgnsValues(const CgnsTree& tree, const CgnsNode& node, const CgnsCounts& counts, const CgnsRind& rind,
                    std::size_t stride, double* values, ug::Error* error) {
    if (!checkCgnsValues(node, counts, rind, error)) {
        return false;
    }
    if (cgnsItemCount(counts) == 0) {
        return true;
    }
    if (node.type == "R8") {
        return stride == 1 && node.sizes == counts ? tree.readItems(node, values, error)
                                                   : readAs<double>(tree, node, counts, rind, stride, values, error);
    }
    if (node.type == "R4") {
        return readAs<float>(tree, node, counts, rind, stride, values, error);
    }
    if (node.type == "I4") {
        return readAs<std::int32_t>(tree, node, counts, rind, stride, values, error);
    }
    return node.type == "I8" ? readAs<std::int64_t>(tree, node, counts, rind, stride, values, error)
                             : ug::fail(error, Str("has an array '" + node.name + "' of the type '" + node.type + "'"));
}

} // namespace orv::imp::cae
