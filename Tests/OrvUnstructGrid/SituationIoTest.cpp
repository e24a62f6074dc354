#include "OrvUnstructGrid/SituationIo.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Situation.h"
#include "Tests/OrvUnstructGrid/Situations.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv;
using namespace orv::ug;
using orvtest::described;
using orvtest::ScratchFolder;

namespace {

/// A situation with something of each kind in it.
PtrRef<Situation> fullSituation() {
    const PtrRef<Situation> situation(new Situation);
    situation->setName("Flügel \\ 翼 \"крыло\" <&>");
    situation->setDescription("First line\nsecond\tline\r\n \x01 end ");
    situation->setSourceModelFile("C:\\data\\wing.frd");
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    const PtrRef<PropertySet> camera(new PropertySet("camera"));
    camera->setValue("integer", std::numeric_limits<int>::min());
    camera->setValue("tenth", 0.1);
    camera->setValue("undefined", UNDEFINED_DOUBLE);
    camera->setValue("minus zero", -0.0);
    camera->setValue("least", std::numeric_limits<double>::denorm_min());
    camera->setValue("yes", true);
    camera->setValue("no", false);
    camera->setValue("text", Str("\u007f\u2028\uffff"));
    camera->setValue("vector", Vec3d(1.0 / 3.0, -1e300, 5e-324));
    camera->setValue("numbers", std::vector<double>{1, 2.5, UNDEFINED_DOUBLE});
    camera->setValue("none", std::vector<double>{});
    camera->setValue("", Str());
    collection->append(camera.get());
    collection->append(PtrRef<PropertySet>(new PropertySet("")).get());
    collection->append(camera.get());
    situation->setPropertyCollection(collection.get());
    situation->setAllUserData({{"", ""}, {"ключ", "значение"}, {"lines", "a\nb"}});
    return situation;
}

TEST(SituationIo, BringsBackAllThatWasWritten) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation = fullSituation();
    Error error;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder / "a/b", &error)) << error.message();
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readFolder(read.get(), folder / "a/b", &error)) << error.message();
    EXPECT_EQ(described(*read), described(*situation));
}

TEST(SituationIo, HasTheSameTextInAFileOfItsOwn) {
    const ScratchFolder folder;
    const PtrRef<Situation> situation = fullSituation();
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    ASSERT_TRUE(SituationIo::writeArchiveFile(situation.get(), folder / "single"));
    EXPECT_EQ(folder.read("single"), folder.read("Situation.xml"));
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readArchiveFile(read.get(), folder / "single"));
    EXPECT_EQ(described(*read), described(*situation));
}

} // namespace
