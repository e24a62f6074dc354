#pragma once

#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/DataSourceZTFx.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/WriteSelection.h"
#include "OrvUnstructGrid/ZTFxWriter.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <bit>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace orvtest {

/// A double with these bits: how a NaN with a payload is made without any arithmetic that would change it.
inline double fromBits(std::uint64_t bits) {
    return std::bit_cast<double>(bits);
}

/// The values that are easily lost on the way through a file.
inline const std::vector<double>& delicateValues() {
    using Limits = std::numeric_limits<double>;
    static const std::vector<double> values = {
        0.0,
        -0.0,
        1.0 / 3.0,
        orv::UNDEFINED_DOUBLE,
        -orv::UNDEFINED_DOUBLE,
        Limits::infinity(),
        -Limits::infinity(),
        Limits::denorm_min(),
        Limits::min(),
        fromBits(0x7ff8000000000000), // quiet, without a payload
        fromBits(0xfff8000000012345), // quiet, negative, with one
        fromBits(0x7ff4000000000001), // signalling
        static_cast<double>(std::numeric_limits<float>::max()),
        1e300,
        -2.5,
    };
    return values;
}

inline void fillWithElement(orv::ug::DataPart* part, orv::ug::ElementType type, bool withIds) {
    const std::size_t nodeCount = orv::ug::elementTypeInfo(type).nodeCount;
    std::vector<double> coordinates;
    std::vector<std::uint32_t> connectivity;
    std::vector<int> nodeIds;
    for (std::size_t node = 0; node < nodeCount; ++node) {
        const double x = 0.1 * static_cast<double>(node) + static_cast<double>(type);
        coordinates.insert(coordinates.end(), {x, -x, 1.0 / (1.0 + x)});
        connectivity.push_back(static_cast<std::uint32_t>(nodeCount - 1 - node));
        nodeIds.push_back(static_cast<int>(1000 - 7 * node));
    }
    part->nodes()->set(coordinates, withIds ? nodeIds : std::vector<int>());
    part->elements()->set({type}, connectivity, withIds ? std::vector<int>{-5} : std::vector<int>());
}

/// Every type of elements, with and without numbers; every type of results on every mapping; every delicate value;
/// empty parts; states of every kind of reference; names in many scripts.
inline orv::PtrRef<orv::ug::DataSourceMemory> richSource() {
    using namespace orv::ug;
    orv::PtrRef<orv::ug::DataSourceMemory> source(new orv::ug::DataSourceMemory(1));
    source->directory()->setSimulationInfo(SimulationInfo("/data/../wing.frd", "Wing \"7\" <test> & more"));
    source->directory()->addWarning("The file ends at line 12");
    source->addGeometry();
    source->addGeometry();
    source->addPart(0, "");
    for (int type = 0; type < ELEMENT_TYPE_COUNT; ++type) {
        DataPart* part = source->addPart(0, elementTypeInfo(static_cast<ElementType>(type)).name);
        fillWithElement(part, static_cast<ElementType>(type), type % 2 == 1);
    }
    source->addPart(0, "nodes alone")->nodes()->set({1, 2, 3, 4, 5, 6}, {});
    const char* const names[] = {"\xe7\xbf\xbc",
                                 "\xd0\x9a\xd1\x80\xd1\x8b\xd0\xbb\xd0\xbe",
                                 "\xd8\xac\xd9\x86\xd8\xa7\xd8\xad",
                                 "\xf0\x9f\x9b\xa9",
                                 "a\tb\nc\r\x01\x1f\x7f",
                                 " <&>\"' ",
                                 "%1|%2\\/.."};
    for (const char* name : names) {
        fillWithElement(source->addPart(1, name), QUADRILATERAL, false);
    }
    source->addState(StateInfo(7, names[0], StateInfo::TIME, 1.0 / 3.0));
    source->addState(StateInfo(0, names[1], StateInfo::FREQUENCY, -0.0));
    source->addState(StateInfo(2147483647, "", StateInfo::LOAD_CASE, orv::UNDEFINED_DOUBLE));
    source->addState(StateInfo(9, "nan", static_cast<StateInfo::ReferenceType>(3), fromBits(0xfff8000000012345)));
    source->directory()->addStateGroupInfo(StateGroupInfo({0, 7}));
    source->directory()->addStateGroupInfo(StateGroupInfo({2147483647}));
    std::size_t next = 0;
    for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        for (const ResultMapping mapping : {PER_NODE, PER_ELEMENT, PER_ELEMENT_NODE, PER_ELEMENT_SURFACE}) {
            const ResultInfo info = source->addResult(type, names[next % std::size(names)], mapping);
            // In some states only; in the last one of the parts only.
            for (std::size_t s = 0; s < source->stateCount(); ++s) {
                const DataState* state = source->state(s);
                for (std::size_t g = 0; (s + next) % 3 > 0 && g < 2; ++g) {
                    for (std::size_t p = s == 3 ? 5 : 0; p < state->geometry(g)->partCount(); ++p) {
                        std::vector<double> values(state->geometry(g)->part(p)->itemCount(mapping) *
                                                   doublesPerItem(type));
                        for (double& value : values) {
                            // One of the states is exact in 32 bits.
                            value = s == 2 ? 0.25 * static_cast<double>(next)
                                           : delicateValues()[next % delicateValues().size()];
                            ++next;
                        }
                        EXPECT_TRUE(source->setValues(state->id(), info, g, p, values, nullptr));
                    }
                }
            }
            ++next;
        }
    }
    ResultInfo derived(SCALAR, 100, "derived", PER_NODE);
    derived.setBaseResult(2, SYMMETRIC_TENSOR);
    source->directory()->addResultInfo(derived);
    return source;
}

/// Two hexahedra with numbers, and on them `t`, which 32 bits hold, and `v`, which they do not, in two states.
inline orv::PtrRef<orv::ug::DataSourceMemory> smallModel() {
    using namespace orv::ug;
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    DataPart* part = source->addPart(0, "part");
    fillWithCubes(part, 2, 0.1);
    const std::span<const double> coordinates = part->nodes()->coordinates();
    std::vector<int> nodeIds(part->nodes()->nodeCount(), 7);
    part->nodes()->set({coordinates.begin(), coordinates.end()}, nodeIds);
    const std::span<const std::uint32_t> connectivity = part->elements()->connectivity();
    part->elements()->set({HEXAHEDRON, HEXAHEDRON}, {connectivity.begin(), connectivity.end()}, {8, 9});
    const ResultInfo t = source->addResult(SCALAR, "t", PER_NODE), v = source->addResult(VECTOR, "v", PER_ELEMENT);
    for (int id = 1; id <= 2; ++id) {
        source->addState(StateInfo(id, "step", StateInfo::TIME, id));
        std::vector<double> ts(12, 0.5 * id), vs(6, 0.1 * id);
        EXPECT_TRUE(source->setValues(id, t, 0, 0, ts, nullptr));
        EXPECT_TRUE(source->setValues(id, v, 0, 0, vs, nullptr));
    }
    source->directory()->addStateGroupInfo(StateGroupInfo({1, 2}));
    return source;
}

inline bool haveSameBits(std::span<const double> a, std::span<const double> b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

template <class Value>
bool areEqual(std::span<const Value> a, std::span<const Value> b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

inline void expectSamePart(const orv::ug::DataPart& a, const orv::ug::DataPart& b) {
    EXPECT_EQ(a.partId(), b.partId());
    EXPECT_TRUE(haveSameBits(a.nodes()->coordinates(), b.nodes()->coordinates()));
    EXPECT_TRUE(areEqual(a.nodes()->ids(), b.nodes()->ids()));
    EXPECT_TRUE(areEqual(a.elements()->types(), b.elements()->types()));
    EXPECT_TRUE(areEqual(a.elements()->connectivity(), b.elements()->connectivity()));
    EXPECT_TRUE(areEqual(a.elements()->ids(), b.elements()->ids()));
}

inline void expectSameResults(const std::vector<orv::ug::ResultInfo>& a, const std::vector<orv::ug::ResultInfo>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i], b[i]);
        EXPECT_EQ(a[i].name(), b[i].name());
        EXPECT_EQ(a[i].resultMapping(), b[i].resultMapping());
        EXPECT_EQ(a[i].baseResultId(), b[i].baseResultId());
        EXPECT_EQ(a[i].baseResultType(), b[i].baseResultType());
    }
}

inline void load(orv::ug::DataSource* source, int stateId, const orv::ug::ResultInfo& info) {
    orv::ug::DataStateSpec spec;
    spec.setResultIds({info});
    orv::ug::Error error;
    auto* interface = dynamic_cast<orv::ug::DataSourceInterface*>(source);
    EXPECT_TRUE(!interface || interface->loadDataState(stateId, spec, &error)) << error.message();
}

inline void expectSameValues(orv::ug::DataSource* a, orv::ug::DataSource* b, std::size_t state,
                             const orv::ug::ResultInfo& info) {
    load(a, a->state(state)->id(), info);
    load(b, b->state(state)->id(), info);
    for (std::size_t g = 0; g < a->state(state)->geometryCount(); ++g) {
        const orv::ug::DataResult* inA = a->state(state)->results(a->state(state)->geometry(g))->find(info);
        const orv::ug::DataResult* inB = b->state(state)->results(b->state(state)->geometry(g))->find(info);
        ASSERT_TRUE(inA && inB);
        ASSERT_EQ(inA->partCount(), inB->partCount());
        for (std::size_t p = 0; p < inA->partCount(); ++p) {
            EXPECT_TRUE(haveSameBits(inA->values(p)->span(), inB->values(p)->span())) << "part " << p;
        }
    }
}

inline void expectSameStates(orv::ug::DataSource* a, orv::ug::DataSource* b) {
    using namespace orv::ug;
    ASSERT_EQ(a->stateCount(), b->stateCount());
    for (std::size_t s = 0; s < a->stateCount(); ++s) {
        SCOPED_TRACE("state at " + std::to_string(s));
        const StateInfo inA = a->directory()->stateInfo(s), inB = b->directory()->stateInfo(s);
        EXPECT_EQ(inA.id(), inB.id());
        EXPECT_EQ(inA.name(), inB.name());
        EXPECT_EQ(inA.referenceType(), inB.referenceType());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(inA.referenceValue()),
                  std::bit_cast<std::uint64_t>(inB.referenceValue()));
        ASSERT_EQ(a->state(s)->geometryCount(), b->state(s)->geometryCount());
        for (std::size_t g = 0; g < a->state(s)->geometryCount(); ++g) {
            ASSERT_EQ(a->state(s)->geometry(g)->partCount(), b->state(s)->geometry(g)->partCount());
            for (std::size_t p = 0; p < a->state(s)->geometry(g)->partCount(); ++p) {
                SCOPED_TRACE("part " + std::to_string(p));
                expectSamePart(*a->state(s)->geometry(g)->part(p), *b->state(s)->geometry(g)->part(p));
            }
        }
        for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
            for (const ResultInfo& info : a->directory()->resultInfos(type)) {
                SCOPED_TRACE("result " + std::to_string(type) + ":" + std::to_string(info.id()));
                EXPECT_EQ(a->directory()->hasResult(inA.id(), info), b->directory()->hasResult(inA.id(), info));
                if (a->directory()->hasResult(inA.id(), info)) {
                    expectSameValues(a, b, s, info);
                }
            }
        }
    }
}

/// All but the name of the file.
inline void expectSame(orv::ug::DataSource* a, orv::ug::DataSource* b) {
    using namespace orv::ug;
    const DataSourceDirectory *inA = a->directory(), *inB = b->directory();
    EXPECT_EQ(inA->simulationInfo().title(), inB->simulationInfo().title());
    EXPECT_EQ(inA->warnings(), inB->warnings());
    ASSERT_EQ(inA->geometryCountPerState(), inB->geometryCountPerState());
    for (std::size_t g = 0; g < inA->geometryCountPerState(); ++g) {
        ASSERT_EQ(inA->partInfos(g).size(), inB->partInfos(g).size());
        for (std::size_t p = 0; p < inA->partInfos(g).size(); ++p) {
            EXPECT_EQ(inA->partInfos(g)[p].id(), inB->partInfos(g)[p].id());
            EXPECT_EQ(inA->partInfos(g)[p].name(), inB->partInfos(g)[p].name());
        }
    }
    for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        expectSameResults(inA->resultInfos(type), inB->resultInfos(type));
    }
    const std::vector<StateGroupInfo> groupsA = inA->stateGroupInfos(), groupsB = inB->stateGroupInfos();
    ASSERT_EQ(groupsA.size(), groupsB.size());
    for (std::size_t i = 0; i < groupsA.size(); ++i) {
        ASSERT_EQ(groupsA[i].stateCount(), groupsB[i].stateCount());
        for (std::size_t k = 0; k < groupsA[i].stateCount(); ++k) {
            EXPECT_EQ(groupsA[i].stateId(k), groupsB[i].stateId(k));
        }
    }
    expectSameStates(a, b);
}

/// Writes one source as case 3 named "wing".
inline void writeZtfx(orv::ug::DataSource* source, const std::string& path, const char* password = "",
                      orv::ug::ZTFxWriter::Compression compression = orv::ug::ZTFxWriter::STORED) {
    orv::ug::ZTFxWriter writer;
    orv::ug::Error error;
    writer.setPassword(password);
    writer.setCompression(compression);
    EXPECT_TRUE(writer.addCase(3, "wing", source, {}, &error)) << error.message();
    EXPECT_TRUE(writer.write(path, nullptr, &error)) << error.message();
}

/// The first case of a file; null when it does not open, which is a failure of the test.
inline orv::PtrRef<orv::ug::DataSourceZTFx> openZtfx(const std::string& path, const char* password = "") {
    orv::PtrRef<orv::ug::DataSourceZTFx> source(new orv::ug::DataSourceZTFx(1));
    orv::ug::Error error;
    source->setPassword(password);
    const bool isOpen = source->openCase(path, 0, &error);
    EXPECT_TRUE(isOpen) << error.message();
    return isOpen ? source : nullptr;
}

/// What the open says that must fail.
inline std::string refusal(const std::string& path, const char* password = "") {
    orv::PtrRef<orv::ug::DataSourceZTFx> source(new orv::ug::DataSourceZTFx(1));
    orv::ug::Error error;
    source->setPassword(password);
    EXPECT_FALSE(source->openCase(path, 0, &error));
    EXPECT_EQ(source->stateCount(), 0u);
    EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
    return error.message().toStdString();
}

/// The entries of a zip container in memory, to be changed and written again.
struct ZipEntries {
    struct Entry {
        std::string name;
        std::string bytes;
        bool isDeflated = false;
        bool isEncrypted = false;
        std::size_t packedSize = 0;
    };

    std::vector<Entry> entries;

    static ZipEntries read(const std::string& path, const char* password = nullptr) {
        ZipEntries read;
        zip_t* zip = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
        EXPECT_TRUE(zip);
        for (zip_int64_t i = 0; zip && i < zip_get_num_entries(zip, 0); ++i) {
            zip_stat_t status;
            zip_stat_index(zip, i, 0, &status);
            Entry entry = {status.name, std::string(status.size, '\0'), status.comp_method == ZIP_CM_DEFLATE,
                           status.encryption_method == ZIP_EM_AES_256, status.comp_size};
            zip_file_t* file = zip_fopen_index_encrypted(zip, i, 0, password);
            EXPECT_TRUE(file);
            EXPECT_EQ(zip_fread(file, entry.bytes.data(), entry.bytes.size()), zip_int64_t(status.size));
            zip_fclose(file);
            read.entries.push_back(entry);
        }
        zip_discard(zip);
        return read;
    }

    void write(const std::string& path, const char* password = nullptr) const {
        zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        for (const Entry& entry : entries) {
            zip_source_t* source = zip_source_buffer(zip, entry.bytes.data(), entry.bytes.size(), 0);
            const zip_int64_t index = zip_file_add(zip, entry.name.c_str(), source, 0);
            EXPECT_GE(index, 0);
            zip_set_file_compression(zip, index, entry.isDeflated ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0);
            if (entry.isEncrypted) {
                zip_file_set_encryption(zip, index, ZIP_EM_AES_256, password);
            }
        }
        EXPECT_EQ(zip_close(zip), 0);
    }

    Entry* find(const std::string& name) {
        for (Entry& entry : entries) {
            if (entry.name == name) {
                return &entry;
            }
        }
        ADD_FAILURE() << "no entry " << name;
        return &entries.front();
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const Entry& entry : entries) {
            names.push_back(entry.name);
        }
        return names;
    }

    /// Replaces a text in an entry, which has to be there.
    void replace(const std::string& name, const std::string& before, const std::string& after) {
        std::string& bytes = find(name)->bytes;
        const std::size_t at = bytes.find(before);
        ASSERT_NE(at, std::string::npos) << before << " in " << bytes;
        bytes.replace(at, before.size(), after);
    }
};

} // namespace orvtest
