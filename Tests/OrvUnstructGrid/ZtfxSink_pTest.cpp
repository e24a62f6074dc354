// A writing that is cut short, by a full disk or by the end of the process, leaves the old file as it was.

#include "OrvUnstructGrid/ZtfxSink_p.h"

#include "Tests/OrvUnstructGrid/ZtfxFiles.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

using namespace orv::ug;
using orv::PtrRef;

namespace {

constexpr std::size_t NODES = 50000;

/// A scalar of 400 kB in each of 10 states. Something may happen when that of one state is read.
class DisturbedSource : public DataSourceLazy {
public:
    DisturbedSource(int state, std::function<void()> happen)
        : DataSourceLazy(1), m_state(state), m_happen(std::move(happen)) {
        PtrRef<DataGeometry> geometry(new DataGeometry);
        geometry->addPart(1)->nodes()->set(std::vector<double>(3 * NODES, 0.5), {});
        directory()->addGeometryPartInfos({PartInfo(1, "part")});
        const ResultInfo info(SCALAR, 1, "t", PER_NODE);
        directory()->addResultInfo(info);
        for (int id = 1; id <= 10; ++id) {
            addState(StateInfo(id, "", StateInfo::TIME, id), {geometry});
            directory()->setHasResult(id, info);
        }
    }

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error*) override {
        if (state->id() == m_state) {
            m_happen();
        }
        DataPartValues* values = state->results(state->geometry(0))->findOrAdd(info)->values(0);
        values->allocate(NODES);
        std::fill_n(values->values(), NODES, 0.1 * state->id());
        return true;
    }

private:
    int m_state;
    std::function<void()> m_happen;
};

class ZtfxSinkTest : public testing::Test {
protected:
    ZtfxSinkTest() {
        orvtest::writeZtfx(PtrRef<DataSource>(new DisturbedSource(0, {})).get(), path);
        old = folder.read("a.ztfx");
    }

    bool write(DataSource* source, Error* error) {
        ZTFxWriter writer;
        return writer.addCase(0, "new", source, {}, error) && writer.write(path, nullptr, error);
    }

    orvtest::ScratchFolder folder;
    const std::string path = folder / "a.ztfx";
    std::string old;
};

TEST_F(ZtfxSinkTest, AFullDiskLeavesTheOldFile) {
    PtrRef<DataSource> source(new DisturbedSource(0, {}));
    // In the first array, in the middle, and in the list of entries at the end.
    for (const std::size_t limit : {std::size_t(1000), std::size_t(1000000), old.size() - 100}) {
        Error error;
        {
            const orvtest::FileSizeLimit full(limit);
            EXPECT_FALSE(write(source.get(), &error));
        }
        EXPECT_EQ(error.message(), ("cannot write \"" + path + "\": File too large").c_str());
        EXPECT_EQ(folder.read("a.ztfx"), old);
        EXPECT_EQ(folder.names(), std::vector<std::string>{"a.ztfx"});
    }
    Error error;
    EXPECT_TRUE(write(source.get(), &error)) << error.message();
    EXPECT_EQ(orvtest::openZtfx(path)->cases()[0].name, "new");
}

TEST_F(ZtfxSinkTest, AKilledProcessLeavesTheOldFile) {
    for (const int state : {1, 5, 10}) {
        const pid_t child = ::fork();
        if (child == 0) {
            PtrRef<DataSource> source(new DisturbedSource(state, [] { ::kill(::getpid(), SIGKILL); }));
            write(source.get(), nullptr);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(folder.read("a.ztfx"), old);
        orvtest::expectSame(PtrRef<DataSource>(new DisturbedSource(0, {})).get(), orvtest::openZtfx(path).get());
        // What it had begun lies beside it, under its own number.
        EXPECT_TRUE(folder.has("a.ztfx.tmp" + std::to_string(child) + "-0"));
    }
    PtrRef<DataSource> source(new DisturbedSource(0, {}));
    Error error;
    EXPECT_TRUE(write(source.get(), &error)) << error.message();
    EXPECT_EQ(orvtest::openZtfx(path)->cases()[0].name, "new");
}

// The limits of the older form of containers: 65535 entries.
TEST_F(ZtfxSinkTest, ManyEntriesFit) {
    PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "part")->nodes()->set({0, 0, 0}, {});
    const int stateCount = 6600, resultCount = 10;
    for (int id = 0; id < stateCount; ++id) {
        source->addState(StateInfo(id, "", StateInfo::TIME, id));
    }
    const auto valueOf = [](int state, int result) { return 0.1 * state + 1000.0 * result; };
    for (int result = 1; result <= resultCount; ++result) {
        const ResultInfo info = source->addResult(SCALAR, "t", PER_NODE);
        for (int id = 0; id < stateCount; ++id) {
            ASSERT_TRUE(source->setValues(id, info, 0, 0, std::vector<double>{valueOf(id, result)}, nullptr));
        }
    }
    orvtest::writeZtfx(source.get(), path);
    const PtrRef<DataSourceZTFx> read = orvtest::openZtfx(path);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->stateCount(), 6600u);
    for (const int id : {0, 1, 3276, 6552, 6553, 6554, stateCount - 1}) {
        for (const int result : {1, 5, resultCount}) {
            const ResultInfo info = read->directory()->findScalarResultInfo(result);
            std::vector<double> value(1);
            ASSERT_TRUE(read->copyScalars(id, info, {}, value, nullptr));
            EXPECT_EQ(value[0], valueOf(id, result));
            orvtest::load(read.get(), id, info);
            EXPECT_EQ(read->state(id)->results(read->state(id)->geometry(0))->find(info)->values(0)->values()[0],
                      valueOf(id, result));
        }
    }
}

} // namespace
