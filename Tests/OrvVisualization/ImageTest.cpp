#include "OrvVisualization/Image.h"

#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

using namespace orv;
using namespace orv::vis;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using orvtest::ScratchFolder;
using testing::ElementsAre;
using testing::StartsWith;

namespace {

using Format = Image::Format;

/// Every pixel another one.
Image gradient(Format format) {
    Image image(7, 5, format);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            image.setPixel(x, y, rvf::Color3ub(std::uint8_t(x * 30), std::uint8_t(y * 50), std::uint8_t(x * y)),
                           std::uint8_t(x * 36 + y));
        }
    }
    return image;
}

bool areEqual(const Image& a, const Image& b) {
    return a.width() == b.width() && a.height() == b.height() && a.format() == b.format() &&
           std::equal(a.bytes().begin(), a.bytes().end(), b.bytes().begin(), b.bytes().end());
}

std::string fixture(const std::string& name) {
    return orvtest::testDataFolder() + "/png/" + name;
}

/// Why a picture cannot be read; it has to stay as it was.
std::string readProblem(const std::string& path) {
    const Image before = gradient(Format::RGBA);
    Image image = before;
    Str reason;
    EXPECT_FALSE(image.readPng(path, &reason));
    EXPECT_TRUE(areEqual(image, before));
    return reason.toStdString();
}

TEST(Image, HasNoPixelsAtFirst) {
    const Image image;
    EXPECT_TRUE(image.isEmpty());
    EXPECT_EQ(image.width(), 0);
    EXPECT_EQ(image.height(), 0);
    EXPECT_TRUE(image.bytes().empty());
    EXPECT_FALSE(image.contains(0, 0));
}

TEST(Image, IsBlackAndWithAlphaTransparent) {
    const Image opaque(3, 2);
    EXPECT_EQ(opaque.format(), Format::RGB);
    EXPECT_EQ(opaque.channelCount(), 3);
    EXPECT_EQ(opaque.bytes().size(), 18U);
    EXPECT_EQ(opaque.color(2, 1), rvf::Color3ub(0, 0, 0));
    EXPECT_EQ(opaque.alpha(2, 1), 255);
    const Image clear(3, 2, Format::RGBA);
    EXPECT_EQ(clear.channelCount(), 4);
    EXPECT_EQ(clear.bytes().size(), 24U);
    EXPECT_EQ(clear.alpha(2, 1), 0);
}

TEST(Image, SizesHaveLimits) {
    EXPECT_TRUE(Image::isValidSize(1, 1));
    EXPECT_TRUE(Image::isValidSize(32768, 1));
    EXPECT_TRUE(Image::isValidSize(1, 32768));
    EXPECT_TRUE(Image::isValidSize(8192, 8192));
    EXPECT_FALSE(Image::isValidSize(8193, 8192));
    EXPECT_FALSE(Image::isValidSize(32769, 1));
    EXPECT_FALSE(Image::isValidSize(1, 32769));
    EXPECT_FALSE(Image::isValidSize(0, 1));
    EXPECT_FALSE(Image::isValidSize(1, 0));
    EXPECT_FALSE(Image::isValidSize(-1, -1));
    EXPECT_FALSE(Image::isValidSize(2147483647, 2147483647));
}

TEST(Image, ImpossibleSizesAreAMistake) {
    AssertRecorder asserts;
    const Image image(0, 5);
    EXPECT_TRUE(image.isEmpty());
    EXPECT_EQ(image.width(), 0);
    EXPECT_EQ(image.height(), 0);
    EXPECT_THAT(asserts.take(), ElementsAre(FailedAssert{"OrvVisualization/Image", "isValidSize(width, height)", {}}));
}

TEST(Image, PixelsLieRowByRowFromTheTop) {
    Image image(3, 2, Format::RGBA);
    image.setPixel(1, 1, rvf::Color3ub(10, 20, 30), 40);
    const std::span<const std::uint8_t> bytes = std::as_const(image).bytes();
    EXPECT_EQ(bytes[16], 10);
    EXPECT_EQ(bytes[17], 20);
    EXPECT_EQ(bytes[18], 30);
    EXPECT_EQ(bytes[19], 40);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 0), 20);
    EXPECT_EQ(image.row(1) + 4, &image.bytes()[16]);
    EXPECT_EQ(image.color(1, 1), rvf::Color3ub(10, 20, 30));
    EXPECT_EQ(image.alpha(1, 1), 40);
}

TEST(Image, PixelsWithoutAlphaAreOpaque) {
    Image image(2, 2);
    image.setPixel(0, 1, rvf::Color3ub(10, 20, 30), 40);
    EXPECT_EQ(image.color(0, 1), rvf::Color3ub(10, 20, 30));
    EXPECT_EQ(image.alpha(0, 1), 255);
    EXPECT_EQ(image.color(1, 1), rvf::Color3ub(0, 0, 0));
}

TEST(Image, PixelsOutsideAreAMistake) {
    Image image(3, 2);
    const std::pair<int, int> outside[] = {{-1, 0}, {3, 0}, {0, -1}, {0, 2}};
    for (const auto& [x, y] : outside) {
        AssertRecorder asserts;
        EXPECT_EQ(image.color(x, y), rvf::Color3ub(0, 0, 0));
        EXPECT_EQ(image.alpha(x, y), 0);
        image.setPixel(x, y, rvf::Color3ub(1, 2, 3));
        const FailedAssert expected{"OrvVisualization/Image", "contains(x, y)", {}};
        EXPECT_THAT(asserts.take(), ElementsAre(expected, expected, expected));
    }
    EXPECT_TRUE(areEqual(image, Image(3, 2)));
}

TEST(Image, IsFilled) {
    Image image(3, 2, Format::RGBA);
    image.fill(rvf::Color3ub(1, 2, 3), 4);
    for (int i = 0; i < 24; ++i) {
        EXPECT_EQ(image.bytes()[std::size_t(i)], i % 4 + 1);
    }
    Image opaque(2, 2);
    opaque.fill(rvf::Color3ub(1, 2, 3));
    EXPECT_EQ(opaque.color(1, 1), rvf::Color3ub(1, 2, 3));
}

TEST(Image, ComesBackFromItsFile) {
    ScratchFolder folder;
    for (Format format : {Format::RGB, Format::RGBA}) {
        const Image written = gradient(format);
        Str reason;
        ASSERT_TRUE(written.writePng(folder / "a.png", &reason)) << reason;
        Image read;
        ASSERT_TRUE(read.readPng(folder / "a.png", &reason)) << reason;
        EXPECT_TRUE(areEqual(written, read));
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
}

TEST(Image, SameBytesMakeTheSameFile) {
    ScratchFolder folder;
    ASSERT_TRUE(gradient(Format::RGB).writePng(folder / "a.png", nullptr));
    ASSERT_TRUE(gradient(Format::RGB).writePng(folder / "b.png", nullptr));
    EXPECT_EQ(folder.read("a.png"), folder.read("b.png"));
}

TEST(Image, WritesNothingWithoutPixels) {
    ScratchFolder folder;
    Str reason;
    EXPECT_FALSE(Image().writePng(folder / "a.png", &reason));
    EXPECT_EQ(reason, "cannot write \"" + Str(folder / "a.png") + "\": the picture has no pixels");
    EXPECT_TRUE(folder.names().empty());
}

TEST(Image, TellsWhyItCannotBeWritten) {
    ScratchFolder folder;
    Str reason;
    EXPECT_FALSE(Image(1, 1).writePng(folder / "no/a.png", &reason));
    EXPECT_EQ(reason, "cannot write \"" + Str(folder / "no/a.png") + "\": No such file or directory");
    EXPECT_FALSE(Image(1, 1).writePng(folder.path(), &reason));
    EXPECT_EQ(reason, "cannot write \"" + Str(folder.path()) + "\": Is a directory");
    EXPECT_FALSE(Image(1, 1).writePng(folder / "no/a.png", nullptr));
}

TEST(Image, ReadsGreyAndPalettes) {
    Image image;
    Str reason;
    ASSERT_TRUE(image.readPng(fixture("grey.png"), &reason)) << reason;
    EXPECT_EQ(image.format(), Format::RGB);
    EXPECT_EQ(image.color(0, 0), rvf::Color3ub(0, 0, 0));
    EXPECT_EQ(image.color(1, 0), rvf::Color3ub(128, 128, 128));
    ASSERT_TRUE(image.readPng(fixture("palette.png"), &reason)) << reason;
    EXPECT_EQ(image.format(), Format::RGBA);
    EXPECT_EQ(image.color(0, 0), rvf::Color3ub(200, 100, 50));
    EXPECT_EQ(image.alpha(0, 0), 255);
    EXPECT_EQ(image.color(1, 0), rvf::Color3ub(10, 20, 30));
    EXPECT_EQ(image.alpha(1, 0), 64);
}

TEST(Image, RefusesSizesBeforeItTakesMemory) {
    EXPECT_EQ(readProblem(fixture("wide.png")),
              "cannot read \"" + fixture("wide.png") + "\": a picture of 70000 x 2 is too large");
    EXPECT_EQ(readProblem(fixture("many.png")),
              "cannot read \"" + fixture("many.png") + "\": a picture of 30000 x 30000 is too large");
}

TEST(Image, RefusesWhatIsNoPicture) {
    ScratchFolder folder;
    EXPECT_EQ(readProblem(folder / "no.png"), "cannot read \"" + folder / "no.png" + "\": No such file or directory");
    EXPECT_EQ(readProblem(folder.path()), "cannot read \"" + folder.path() + "\": Is a directory");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(readProblem(folder / "pipe"), "cannot read \"" + folder / "pipe" + "\": Not a regular file");
    const std::string start = "cannot read \"" + folder / "a.png" + "\": ";
    folder.write("a.png", "");
    EXPECT_THAT(readProblem(folder / "a.png"), StartsWith(start));
    folder.write("a.png", "This is a text and no picture, however long it is.");
    EXPECT_EQ(readProblem(folder / "a.png"), start + "Not a PNG file");
    EXPECT_FALSE(Image().readPng(folder / "no.png", nullptr));
}

TEST(Image, RefusesWhatIsCutOff) {
    ScratchFolder folder;
    ASSERT_TRUE(gradient(Format::RGB).writePng(folder / "whole.png", nullptr));
    const std::string whole = folder.read("whole.png");
    const std::size_t behindPixels = whole.find("IEND") - 8;
    for (std::size_t size = 0; size < behindPixels; ++size) {
        folder.write("a.png", whole.substr(0, size));
        EXPECT_THAT(readProblem(folder / "a.png"), StartsWith("cannot read \"")) << size;
    }
}

TEST(Image, SurvivesDamage) {
    ScratchFolder folder;
    ASSERT_TRUE(gradient(Format::RGBA).writePng(folder / "whole.png", nullptr));
    const std::string whole = folder.read("whole.png");
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = char(damaged[i] ^ 0x55);
        folder.write("a.png", damaged);
        Image image;
        Str reason;
        // Some bytes matter to nobody; then the picture is the one that was written.
        if (image.readPng(folder / "a.png", &reason)) {
            EXPECT_TRUE(areEqual(image, gradient(Format::RGBA))) << i;
        } else {
            EXPECT_THAT(reason.toStdString(), StartsWith("cannot read \"")) << i;
        }
    }
}

} // namespace
