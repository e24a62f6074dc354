#include "OrvImportVtk/CgnsArrays.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t NONE = std::size_t(-1);

/// The arrays that share a name but for its ending.
struct Vector {
    std::string name;
    std::array<std::size_t, 3> components = {NONE, NONE, NONE};
    int sum = 0; ///< Of the components' numbers, from 1.
};

// 1 to 3 by the ending, which is taken from the name; 0 when it has none.
int takeComponent(std::string* name) {
    constexpr std::string_view CAPITALS = "XYZ";
    constexpr std::string_view SMALLS = "xyz";
    if (const std::size_t capital = CAPITALS.find(name->back()); capital != std::string_view::npos) {
        name->pop_back();
        return int(capital) + 1;
    }
    const std::size_t small = SMALLS.find(name->back());
    if (small == std::string_view::npos || name->size() < 2 || (*name)[name->size() - 2] != '_') {
        return 0;
    }
    name->resize(name->size() - 2);
    return int(small) + 1;
}

std::vector<Vector> findVectors(const std::vector<CgnsArray>& arrays) {
    std::vector<Vector> vectors;
    for (std::size_t a = 0; a < arrays.size(); ++a) {
        std::string name = arrays[a].name;
        const int component = takeComponent(&name);
        if (component == 0) {
            continue;
        }
        auto vector = std::find_if(vectors.begin(), vectors.end(), [&](const Vector& v) { return v.name == name; });
        if (vector == vectors.end()) {
            vector = vectors.insert(vector, Vector{name});
        }
        vector->components[std::size_t(component - 1)] = a;
        vector->sum += component;
    }
    return vectors;
}

bool isWhole(const Vector& vector, int dimension) {
    return std::none_of(vector.components.begin(), vector.components.begin() + dimension,
                        [](std::size_t component) { return component == NONE; });
}

bool areOfOneType(const Vector& vector, int dimension, const std::vector<CgnsArray>& arrays) {
    return std::all_of(vector.components.begin(), vector.components.begin() + dimension, [&](std::size_t component) {
        return arrays[component].type == arrays[vector.components[0]].type;
    });
}

} // namespace

bool joinCgnsArrays(const std::vector<CgnsArray>& arrays, ug::ResultMapping mapping, int physicalDimension,
                    std::vector<CaeArray>* joined, std::vector<std::string>* lost, ug::Error* error) {
    const int sumOfAll = physicalDimension == 3 ? 6 : 3;
    std::vector<bool> isTaken(arrays.size());
    for (const Vector& vector : findVectors(arrays)) {
        const bool isName = std::any_of(arrays.begin(), arrays.end(),
                                        [&](const CgnsArray& array) { return array.name == vector.name; });
        const bool isJoined = vector.sum == sumOfAll && !isName;
        if (isJoined && !isWhole(vector, physicalDimension)) {
            return ug::fail(error, Str("does not tell which arrays are components of '" + vector.name + "'"));
        }
        if (physicalDimension == 2 && vector.components[2] != NONE) {
            isTaken[vector.components[2]] = true;
            lost->push_back(arrays[vector.components[2]].name);
        }
        if (!isJoined || !areOfOneType(vector, physicalDimension, arrays)) {
            continue;
        }
        CaeArray array{vector.name, mapping, 3};
        for (int d = 0; d < physicalDimension; ++d) {
            const std::size_t component = vector.components[std::size_t(d)];
            isTaken[component] = true;
            array.componentNames.push_back(arrays[component].name);
        }
        std::string stem = vector.name;
        if (physicalDimension == 2 && takeComponent(&stem) == 0) { // A row of a tensor is not a vector.
            array.componentNames.clear();
        }
        joined->push_back(std::move(array));
    }
    for (std::size_t a = 0; a < arrays.size(); ++a) {
        if (!isTaken[a]) {
            joined->push_back({arrays[a].name, mapping, 1});
        }
    }
    return true;
}

} // namespace orv::imp::cae
