// Sorts and the search for distinct values on ten million ints, beside what the standard library offers.

#include "LibUnstructGrid/VTOSort.h"

#include "Benchmarks/Claims.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <unordered_set>
#include <vector>

namespace {

constexpr int itemCount = 10'000'000;

std::vector<int> makePattern(const std::string& name) {
    std::mt19937 engine(1);
    std::vector<int> list(itemCount);
    for (int i = 0; i < itemCount; ++i) {
        if (name == "random") {
            list[i] = static_cast<int>(engine());
        } else if (name == "sorted") {
            list[i] = i;
        } else if (name == "reversed") {
            list[i] = itemCount - i;
        } else {
            list[i] = static_cast<int>(engine() % 10);
        }
    }
    return list;
}

/// The list that is worked on, and the index list beside it.
std::vector<int> items;
std::vector<int> indexes(itemCount);
std::vector<float> floats;
std::vector<double> doubles;

void addSort(orvbench::Claims& claims, const std::string& pattern) {
    const auto prepare = [pattern] { items = makePattern(pattern); };
    claims.add("VTIntQSort(10M " + pattern + ")", 1.3, {prepare, [] { VTIntQSort(items.data(), itemCount); }},
               {prepare, [] { std::sort(items.begin(), items.end()); }});
}

/// An index sort of `keys`, which `prepare` fills.
template <typename T, typename Sort>
void addIndexSort(orvbench::Claims& claims, const std::string& name, std::vector<T>& keys,
                  const std::function<void()>& prepare, Sort sort) {
    claims.add(name, 1.5, {prepare, [&keys, sort] { sort(keys.data(), indexes.data(), itemCount); }},
               {prepare, [&keys] {
                    std::iota(indexes.begin(), indexes.end(), 0);
                    std::sort(indexes.begin(), indexes.end(), [&keys](int a, int b) { return keys[a] < keys[b]; });
                }});
}

/// Values that are multiples of `step`, in `buckets` buckets.
void addUnique(orvbench::Claims& claims, const std::string& name, int distinct, int step = 1, int buckets = 0) {
    const auto prepare = [distinct, step] {
        std::mt19937 engine(2);
        items.resize(itemCount);
        for (int& item : items) {
            item = static_cast<int>(engine() % static_cast<unsigned int>(distinct)) * step;
        }
    };
    claims.add(name, 1.0, {prepare, [buckets] { VTFindUniqueHash(items.data(), itemCount, buckets, indexes.data()); }},
               {prepare, [] {
                    std::unordered_set<int> set(items.begin(), items.end());
                    std::copy(set.begin(), set.end(), indexes.begin());
                }});
}

} // namespace

int main(int argc, char** argv) {
    orvbench::Claims claims;
    for (const char* pattern : {"random", "sorted", "reversed", "few distinct"}) {
        addSort(claims, pattern);
    }
    for (const std::string pattern : {"random", "sorted", "reversed", "few distinct"}) {
        addIndexSort(
            claims, "VTIntIndexQSort(10M " + pattern + ")", items, [pattern] { items = makePattern(pattern); },
            VTIntIndexQSort);
    }
    addIndexSort(
        claims, "VTIndexQSort(10M random floats)", floats,
        [] {
            const std::vector<int> list = makePattern("random");
            floats.assign(list.begin(), list.end());
        },
        [](const float* keys, int* list, int count) { VTIndexQSort(keys, list, count); });
    addIndexSort(
        claims, "VTIndexQSort(10M random doubles)", doubles,
        [] {
            const std::vector<int> list = makePattern("random");
            doubles.assign(list.begin(), list.end());
        },
        [](const double* keys, int* list, int count) { VTIndexQSort(keys, list, count); });
    addUnique(claims, "VTFindUniqueHash(10M of 10M values)", itemCount);
    addUnique(claims, "VTFindUniqueHash(10M of 1M values)", 1'000'000);
    addUnique(claims, "VTFindUniqueHash(10M of 100K values)", 100'000);
    addUnique(claims, "VTFindUniqueHash(10M of 100K values far apart, 200K buckets)", 100'000, 20'011, 200'000);
    addUnique(claims, "VTFindUniqueHash(10M of 10 values)", 10);
    return claims.run(argc, argv);
}
