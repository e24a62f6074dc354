#include "LibUnstructGrid/VTOSortHash.h"

#include "LibUnstructGrid/VTOArrayInt.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/Support/AssertStopper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <set>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::PortableRandom;

namespace {

std::vector<std::size_t>* recordedSizes = nullptr;
bool outOfPools = false;
bool outOfTables = false;

} // namespace

// Where pools and tables come from: the two forms of operator new[], and calloc(). The linker leads them here.
extern "C" {

void* __real__Znam(std::size_t size);
void* __real__ZnamRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag);
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap__Znam(std::size_t size) {
    if (recordedSizes) {
        recordedSizes->push_back(size);
    }
    return __real__Znam(size);
}

void* __wrap__ZnamRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) {
    if (recordedSizes) {
        recordedSizes->push_back(size);
    }
    return outOfPools ? nullptr : __real__ZnamRKSt9nothrow_t(size, tag);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    if (recordedSizes) {
        recordedSizes->push_back(count * size);
    }
    return outOfTables ? nullptr : __real_calloc(count, size);
}
}

namespace {

const std::string source = "LibUnstructGrid/VTOSortHash";
const std::string bucketCheck = "iHashIndex >= 0 && iHashIndex < m_iHashSize";
const std::string maximumCheck = "(m_iMaxElements == -1) || (m_iNewHashIndex < m_iMaxElements)";

/// Sizes of the arrays that are allocated in `call`, in order.
template <typename Call>
std::vector<std::size_t> allocations(Call call) {
    std::vector<std::size_t> sizes;
    sizes.reserve(100);
    recordedSizes = &sizes;
    call();
    recordedSizes = nullptr;
    return sizes;
}

std::size_t pool(std::size_t elements) {
    return elements * sizeof(VTHashElement);
}

std::vector<int> bucket(const VTHash& hash, int index) {
    std::vector<int> values;
    for (const VTHashElement* element = hash.GetBucket(index); element; element = element->pNext) {
        values.push_back(element->iValue);
    }
    return values;
}

constexpr std::size_t hundredBuckets = 100 * sizeof(VTHashElement*);

TEST(Hash, ElementStartsAtZero) {
    const VTHashElement element;
    EXPECT_EQ(element.iValue, 0);
    EXPECT_EQ(element.pNext, nullptr);
}

TEST(Hash, KnownMaximumBuildsAllPools) {
    struct Row {
        int maximum;
        std::vector<std::size_t> pools;
    };
    const Row rows[] = {{25000, {pool(10000), pool(10000), pool(5000)}},
                        {10000, {pool(10000)}},
                        {10001, {pool(10000), pool(1)}},
                        {9999, {pool(9999)}},
                        {1, {pool(1)}}};
    for (const Row& row : rows) {
        VTHash hash;
        std::vector<std::size_t> expected = row.pools;
        expected.insert(expected.begin(), hundredBuckets);
        EXPECT_EQ(allocations([&] { hash.Init(row.maximum, 100); }), expected) << row.maximum;
        EXPECT_TRUE(allocations([&] {
                        for (int i = 0; i < row.maximum; ++i) {
                            hash.Insert(i);
                        }
                    }).empty())
            << "no allocation after that";
        std::size_t count = 0;
        for (int i = 0; i < 100; ++i) {
            count += bucket(hash, i).size();
        }
        EXPECT_EQ(count, static_cast<std::size_t>(row.maximum));
    }
}

TEST(Hash, UnknownMaximumBuildsPoolsOnDemand) {
    VTHash hash;
    EXPECT_EQ(allocations([&] { hash.Init(-1, 100); }), (std::vector{hundredBuckets}));
    EXPECT_EQ(allocations([&] { hash.Insert(7); }), (std::vector{pool(10000)}));
    EXPECT_TRUE(allocations([&] {
                    for (int i = 1; i < 10000; ++i) {
                        hash.Insert(7);
                    }
                }).empty());
    const VTHashElement* first = hash.GetBucket(7);
    EXPECT_EQ(allocations([&] { hash.Insert(7); }), (std::vector{pool(10000)}));
    EXPECT_EQ(hash.GetBucket(7)->pNext, first) << "elements stay where they are";
}

TEST(Hash, LastInsertedIsFirstInTheChain) {
    VTHash hash;
    hash.Init(-1, 10);
    for (int value : {1, 2, 1, 21, 11}) {
        hash.Insert(value);
    }
    EXPECT_EQ(bucket(hash, 1), (std::vector<int>{11, 21, 1, 1})) << "equal values are stored again";
    EXPECT_EQ(bucket(hash, 2), (std::vector<int>{2}));
    EXPECT_EQ(hash.GetBucket(3), nullptr);
    hash.Insert(3, 1);
    EXPECT_EQ(bucket(hash, 3), (std::vector<int>{1})) << "a bucket of the caller's choice";
}

TEST(Hash, BucketValuesReplaceAnArray) {
    AssertRecorder recorder;
    VTHash hash;
    hash.Init(10, 4);
    for (int value : {1, 5, 9, 2}) {
        hash.Insert(value);
    }
    VTIntArray values = VTIntArray::Make(77, 78);
    EXPECT_TRUE(hash.GetBucketValues(1, &values));
    EXPECT_EQ(values, VTIntArray::Make(9, 5, 1));
    EXPECT_TRUE(hash.GetBucketValues(3, &values));
    EXPECT_EQ(values.GetNumItems(), 0);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_FALSE(hash.GetBucketValues(99, nullptr));
    EXPECT_EQ(recorder.take(), failedIn(source, {"paiValues"}));
}

TEST(Hash, BucketsAreChecked) {
    VTHash hash;
    hash.Init(10, 4);
    VTIntArray values = VTIntArray::Make(77);
    for (int index : {-1, 4}) {
        EXPECT_EQ(assertsUntil(1, [&] { hash.GetBucket(index); }), failedIn(source, {bucketCheck}));
        EXPECT_EQ(assertsUntil(1, [&] { hash.GetBucketValues(index, &values); }), failedIn(source, {bucketCheck}));
        EXPECT_EQ(values.GetNumItems(), 0) << "emptied before the check";
        EXPECT_EQ(assertsUntil(1, [&] { hash.Insert(index, 7); }), failedIn(source, {bucketCheck}));
    }
    EXPECT_EQ(assertsUntil(1, [&] { hash.Insert(-3); }), failedIn(source, {bucketCheck})) << "-3 % 4 is -3";
}

TEST(Hash, NewHashHasNothing) {
    VTHash hash;
    EXPECT_EQ(assertsUntil(3, [&] { hash.Insert(0, 1); }), failedIn(source, {"m_ppTable", bucketCheck, maximumCheck}));
    EXPECT_EQ(assertsUntil(1, [&] { hash.GetBucket(0); }), failedIn(source, {bucketCheck}));
}

TEST(Hash, FullHashIsAssertedAndGoesOn) {
    AssertRecorder recorder;
    VTHash hash;
    hash.Init(10000, 1);
    for (int i = 0; i < 10000; ++i) {
        hash.Insert(i);
    }
    EXPECT_TRUE(recorder.take().empty());
    // The pools are full, so the one element too many gets a new pool.
    EXPECT_EQ(allocations([&] { hash.Insert(77); }), (std::vector{pool(10000)}));
    EXPECT_EQ(recorder.take(), failedIn(source, {maximumCheck}));
    EXPECT_EQ(hash.GetBucket(0)->iValue, 77);
}

TEST(Hash, MaximumOfZeroIsAssertedAtTheFirstInsert) {
    AssertRecorder recorder;
    VTHash hash;
    hash.Init(0, 10);
    EXPECT_EQ(allocations([&] { hash.Insert(3); }), (std::vector{pool(10000)}));
    EXPECT_EQ(recorder.take(), failedIn(source, {maximumCheck}));
    EXPECT_EQ(bucket(hash, 3), (std::vector<int>{3}));
}

TEST(HashDeathTest, NoBucketsMakeNoTable) {
    VTHash hash;
    EXPECT_TRUE(allocations([&] { hash.Init(0, 0); }).empty());
    EXPECT_EQ(assertsUntil(3, [&] { hash.Insert(0, 1); }), failedIn(source, {"m_ppTable", bucketCheck, maximumCheck}));
#if defined(__x86_64__)
    EXPECT_DEATH(hash.Insert(1), "") << "a remainder by zero";
#endif
}

TEST(Hash, OutOfMemoryDropsAll) {
    AssertRecorder recorder;
    VTHash hash;
    hash.Init(-1, 10);
    for (int i = 0; i < 10000; ++i) {
        hash.Insert(i);
    }
    outOfPools = true;
    hash.Insert(1);
    outOfPools = false;
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(recorder.takeUntil(1, [&] { hash.GetBucket(1); }), failedIn(source, {bucketCheck})) << "no buckets left";
    hash.Init(-1, 10);
    hash.Insert(1);
    EXPECT_EQ(bucket(hash, 1), (std::vector<int>{1}));
}

TEST(Hash, NoMemoryForTheTablePassesThrough) {
    VTHash hash;
    outOfTables = true;
    EXPECT_THROW(hash.Init(-1, 10), std::bad_alloc);
    outOfTables = false;
    hash.Init(-1, 10);
    hash.Insert(1);
    EXPECT_EQ(bucket(hash, 1), (std::vector<int>{1}));
}

TEST(Hash, InitAndCleanStartAnew) {
    VTHash hash;
    hash.Init(5, 10);
    hash.Insert(3);
    hash.Init(-1, 4);
    EXPECT_EQ(hash.GetBucket(3), nullptr);
    EXPECT_EQ(assertsUntil(1, [&] { hash.GetBucket(4); }), failedIn(source, {bucketCheck}));
    hash.Insert(7);
    EXPECT_EQ(bucket(hash, 3), (std::vector<int>{7}));
    hash.Clean();
    EXPECT_EQ(assertsUntil(1, [&] { hash.GetBucket(0); }), failedIn(source, {bucketCheck}));
    EXPECT_EQ(assertsUntil(3, [&] { hash.Insert(0, 1); }), failedIn(source, {"m_ppTable", bucketCheck, maximumCheck}));
    hash.Clean();
    // The count starts anew as well: with that of before, the fifth would be one too many.
    hash.Init(5, 1);
    AssertRecorder recorder;
    for (int i = 0; i < 5; ++i) {
        hash.Insert(i);
    }
    EXPECT_TRUE(recorder.take().empty());
}

// Three buckets: 5 goes to bucket 2 and 7 to bucket 1.
TEST(FindUniqueHash, ComesOutBucketByBucket) {
    const int values[] = {5, 5, 7};
    int unique[3] = {0, 0, 77};
    EXPECT_EQ(VTFindUniqueHash(values, 3, 0, unique), 2);
    EXPECT_EQ(unique[0], 7);
    EXPECT_EQ(unique[1], 5);
    EXPECT_EQ(unique[2], 77);
    EXPECT_EQ(VTFindUniqueHash(values, 3, 0, nullptr), 2);
}

TEST(FindUniqueHash, TableSizeIsTheArgumentWhenItIsSmaller) {
    const int values[] = {5, 5, 7, 2};
    struct Row {
        int hashSize;
        std::vector<int> unique;
    };
    // Buckets of 4: 5 in 1, 2 in 2, 7 in 3. Of 2: 2 in 0, then 5 and 7, ascending. Of 3: 7 in 1, then 2 and 5.
    const Row rows[] = {{0, {5, 2, 7}}, {-1, {5, 2, 7}}, {4, {5, 2, 7}}, {5, {5, 2, 7}},
                        {1, {2, 5, 7}}, {2, {2, 5, 7}},  {3, {7, 2, 5}}};
    for (const Row& row : rows) {
        std::vector<int> unique(3);
        EXPECT_EQ(VTFindUniqueHash(values, 4, row.hashSize, unique.data()), 3);
        EXPECT_EQ(unique, row.unique) << row.hashSize;
    }
}

TEST(FindUniqueHash, EmptyListHasNone) {
    AssertRecorder recorder;
    int unique = 77;
    EXPECT_EQ(VTFindUniqueHash(nullptr, 0, 0, &unique), 0);
    EXPECT_EQ(VTFindUniqueHash(nullptr, -3, 5, &unique), 0);
    EXPECT_EQ(unique, 77);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(FindUniqueHash, NegativeValuesHaveNoBucket) {
    const int values[] = {3, -1};
    EXPECT_EQ(assertsUntil(1, [&] { VTFindUniqueHash(values, 2, 0, nullptr); }), failedIn(source, {bucketCheck}));
}

// Six values share the one bucket, so the first links of its chain do not hold them all, and repetitions get in.
TEST(FindUniqueHash, LongChainsHaveTheirRepetitionsSorted) {
    const int values[] = {6, 5, 4, 3, 2, 1, 6, 5, 4, 3, 2, 1};
    int unique[6] = {};
    EXPECT_EQ(VTFindUniqueHash(values, 12, 1, unique), 6);
    EXPECT_TRUE(std::equal(unique, unique + 6, std::vector<int>{1, 2, 3, 4, 5, 6}.begin()));
}

TEST(FindUniqueHash, FindsWhatASetFinds) {
    PortableRandom random(121);
    for (int round = 0; round < 30; ++round) {
        std::vector<int> values(random.integer(1, 3000));
        const int top = random.integer(0, 5000);
        for (int& value : values) {
            value = random.integer(0, top);
        }
        const std::set<int> expected(values.begin(), values.end());
        std::vector<int> unique(expected.size());
        const int count = static_cast<int>(values.size());
        ASSERT_EQ(VTFindUniqueHash(values.data(), count, random.integer(0, count), unique.data()),
                  static_cast<int>(expected.size()));
        std::sort(unique.begin(), unique.end());
        ASSERT_TRUE(std::equal(unique.begin(), unique.end(), expected.begin(), expected.end()));
    }
}

} // namespace
