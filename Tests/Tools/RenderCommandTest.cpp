#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Image.h"
#include "Tests/Support/ReferencePicture.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using orv::vis::ColorMap;
using orv::vis::Image;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::lines;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::ScratchFolder;
using orvtest::showsReference;
using orvtest::TinyFile;
using testing::MatchesRegex;

namespace {

const rvf::Color3ub WHITE = rvf::Color3::WHITE;

/// The last bit of a number may be another one elsewhere: that moves a colour by 1, and a border, where it falls on a
/// ray, by a ray's share of a pixel.
constexpr orvtest::PictureTolerance TOLERANCE = {3, 100};

/// Without anything but the plain colours of the map.
const std::vector<std::string> PLAIN = {"--no-edges", "--no-legend", "--no-light", "--size", "160x120"};

std::vector<std::string> joined(std::vector<std::string> a, const std::vector<std::string>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

class RenderCommand : public testing::Test {
protected:
    /// Draws with these arguments behind the name of the file. Gives what is printed.
    std::string draw(const std::string& file, const std::vector<std::string>& arguments,
                     const std::string& name = "a.png") const {
        const Outcome outcome = runOrvapp(joined({"render", file, folder / name}, arguments));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
        EXPECT_EQ(outcome.messages, "");
        return outcome.output;
    }

    Image read(const std::string& name = "a.png") const {
        Image image;
        orv::Str reason;
        EXPECT_TRUE(image.readPng(folder / name, &reason)) << reason;
        return image;
    }

    ScratchFolder folder;
};

/// How many pixels have a colour.
int countOf(const Image& image, const rvf::Color3ub& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.color(x, y) == color;
        }
    }
    return count;
}

bool isBorderOf(const Image& image, const rvf::Color3ub& color) {
    for (int x = 0; x < image.width(); ++x) {
        if (!(image.color(x, 0) == color) || !(image.color(x, image.height() - 1) == color)) {
            return false;
        }
    }
    for (int y = 0; y < image.height(); ++y) {
        if (!(image.color(0, y) == color) || !(image.color(image.width() - 1, y) == color)) {
            return false;
        }
    }
    return true;
}

TEST_F(RenderCommand, ShowsStressOfTheLastState) {
    const std::vector<std::string> text =
        lines(draw(bracketFile(), {"--result", "vonMises(STRESS)", "--size", "480x360"}));
    ASSERT_EQ(text.size(), 3U);
    EXPECT_EQ(text[0], "1 picture of 480 x 360 pixels, vonMises(STRESS)");
    EXPECT_THAT(text[1], MatchesRegex("  File +State +Minimum +Maximum"));
    EXPECT_THAT(text[2], MatchesRegex("  .*a\\.png  Step 1, increment 5, time 1 +0\\.048395 +313\\.606"));
    EXPECT_TRUE(showsReference(folder / "a.png", "pictures/bracket-mises", TOLERANCE));
}

TEST_F(RenderCommand, ShowsTheDisplacedShapeInBandsBeforeADarkBackground) {
    draw(bracketFile(), {"--result", "PE", "--deform", "DISPx10", "--view", "front", "--colors", "rainbow", "--bands",
                         "9", "--background", "#202840,black", "--size", "480x360"});
    EXPECT_TRUE(showsReference(folder / "a.png", "pictures/bracket-plastic", TOLERANCE));
}

TEST_F(RenderCommand, ShowsASection) {
    draw(bracketFile(), {"--result", "l2Norm(DISP)", "--cut", "y=5", "--size", "480x360"});
    EXPECT_TRUE(showsReference(folder / "a.png", "pictures/bracket-section", TOLERANCE));
}

TEST_F(RenderCommand, ShowsPartsInTheirColors) {
    const std::string text = draw(bracketFile(), {"--parallel", "--view", "1,-2,1", "--size", "320x240"});
    EXPECT_EQ(lines(text)[0], "1 picture of 320 x 240 pixels");
    EXPECT_THAT(lines(text)[1], MatchesRegex("  File +State"));
    EXPECT_TRUE(showsReference(folder / "a.png", "pictures/bracket-parts", TOLERANCE));
}

TEST_F(RenderCommand, ShowsUndefinedValuesInGrey) {
    const TinyFile tiny;
    draw(tiny.path(), {"--result", "extractComponent(DISP, 0)", "--view", "1,-1,-0.4", "--size", "480x360"});
    EXPECT_TRUE(showsReference(folder / "a.png", "pictures/tiny-undefined", TOLERANCE));
}

TEST_F(RenderCommand, PartsAndSectionsCanBeMixed) {
    draw(bracketFile(), joined({"--result", "l2Norm(DISP)", "--cut", "y=5"}, PLAIN), "section.png");
    draw(bracketFile(), joined({"--result", "l2Norm(DISP)", "--cut", "y=5", "--part", "STEEL"}, PLAIN), "both.png");
    draw(bracketFile(), joined({"--result", "l2Norm(DISP)", "--part", "STEEL"}, PLAIN), "part.png");
    // All without background around them are larger than the ones within; the aluminium is only in the section.
    EXPECT_NE(folder.read("section.png"), folder.read("both.png"));
    EXPECT_NE(folder.read("part.png"), folder.read("both.png"));
}

TEST_F(RenderCommand, ColorsGoOverTheRangeThatIsAskedFor) {
    // All stresses are above 0.04 and below 314: then all have the colour of one end.
    draw(bracketFile(), joined({"--result", "vonMises(STRESS)", "--range", "-2,-1"}, PLAIN));
    EXPECT_GT(countOf(read(), rvf::Color3ub(0xfd, 0xe7, 0x25)), 1000);
    draw(bracketFile(), joined({"--result", "vonMises(STRESS)", "--range", "400,500", "--colors", "rainbow"}, PLAIN));
    EXPECT_GT(countOf(read(), rvf::Color3ub(0, 0, 255)), 1000);
}

TEST_F(RenderCommand, BandsArePlainColors) {
    draw(bracketFile(), joined({"--result", "vonMises(STRESS)", "--colors", "rainbow", "--bands", "3"}, PLAIN));
    const Image image = read();
    int plain = countOf(image, WHITE);
    for (const rvf::Color3ub& band : {rvf::Color3ub(0, 0, 255), rvf::Color3ub(0, 255, 0), rvf::Color3ub(255, 0, 0)}) {
        EXPECT_GT(countOf(image, band), 20);
        plain += countOf(image, band);
    }
    // But for the silhouette, which is smoothed.
    EXPECT_GT(plain, 160 * 120 * 95 / 100);
}

TEST_F(RenderCommand, EdgesLegendAndLightAreThereUnlessSwitchedOff) {
    const std::vector<std::string> base = {"--result", "vonMises(STRESS)", "--size", "320x240"};
    draw(bracketFile(), base, "all.png");
    for (const char* flag : {"--no-edges", "--no-legend", "--no-light"}) {
        draw(bracketFile(), joined(base, {flag}), "less.png");
        EXPECT_NE(folder.read("all.png"), folder.read("less.png")) << flag;
    }
    // The word of the legend is in the upper left corner, where there is no model.
    draw(bracketFile(), joined(base, {"--no-legend"}));
    EXPECT_EQ(read("a.png").color(14, 100), WHITE);
    EXPECT_FALSE(read("all.png").color(14, 100) == WHITE);
}

TEST_F(RenderCommand, StatesHaveNames) {
    const std::string text = draw(bracketFile(), joined({"--result", "PE", "--state", "*increment 4,*"}, PLAIN));
    EXPECT_THAT(lines(text)[2], MatchesRegex("  .*a\\.png  Step 1, increment 4, time 0\\.8 .*"));
    EXPECT_EQ(failureOf(joined({"render", bracketFile(), folder / "b.png", "--state", "*increment [12]*"}, PLAIN)),
              "orvapp: " + bracketFile() +
                  ": \"*increment [12]*\" names 2 states, name one of them: \"Step 1, increment 1, time 0.2\", "
                  "\"Step 1, increment 2, time 0.4\"\n");
    EXPECT_FALSE(folder.has("b.png"));
}

TEST_F(RenderCommand, ASeriesHasOnePictureForEachState) {
    const std::vector<std::string> text =
        lines(draw(bracketFile(), joined({"--result", "PE", "--animate"}, PLAIN), "pe.PNG"));
    EXPECT_EQ(folder.names(),
              (std::vector<std::string>{"pe_0001.PNG", "pe_0002.PNG", "pe_0003.PNG", "pe_0004.PNG", "pe_0005.PNG"}));
    ASSERT_EQ(text.size(), 7U);
    EXPECT_EQ(text[0], "5 pictures of 160 x 120 pixels, PE");
    EXPECT_THAT(text[2], MatchesRegex("  .*pe_0001\\.PNG  Step 1, increment 1, time 0\\.2 +0 +0"));
    EXPECT_THAT(text[6], MatchesRegex("  .*pe_0005\\.PNG  Step 1, increment 5, time 1 +-0\\.00087804 +0\\.00429905"));
    // Nothing is plastic at first: all of it has the colour of 0 in the range of the last state, the widest.
    const rvf::Color3f zero = ColorMap().colorAt(0, -8.78040e-4, 4.29905e-3);
    const rvf::Color3ub zeroBytes(zero.rByte(), zero.gByte(), zero.bByte());
    EXPECT_GT(countOf(read("pe_0001.PNG"), zeroBytes), 1000);
    EXPECT_EQ(folder.read("pe_0001.PNG"), folder.read("pe_0002.PNG"));
    EXPECT_NE(folder.read("pe_0001.PNG"), folder.read("pe_0005.PNG"));
    EXPECT_GT(countOf(read("pe_0005.PNG"), zeroBytes), 500);
}

TEST_F(RenderCommand, ASeriesOfOneStateIsItsPicture) {
    draw(bracketFile(), joined({"--result", "PE", "--state", "*time 1"}, PLAIN), "one.png");
    draw(bracketFile(), joined({"--result", "PE", "--state", "*time 1", "--animate"}, PLAIN), "series.png");
    EXPECT_EQ(folder.read("one.png"), folder.read("series_0001.png"));
}

TEST_F(RenderCommand, ASeriesHasOneCameraThatSeesAllOfIt) {
    // The arm of 60 bends down by 24 and more in the last state.
    draw(bracketFile(), joined({"--deform", "DISPx30", "--view", "front", "--animate"}, PLAIN), "s.png");
    draw(bracketFile(), joined({"--deform", "DISPx30", "--view", "front", "--state", "*increment 1,*"}, PLAIN),
         "one.png");
    for (int i = 1; i <= 5; ++i) {
        const Image image = read("s_000" + std::to_string(i) + ".png");
        EXPECT_TRUE(isBorderOf(image, WHITE)) << i;
        EXPECT_LT(countOf(image, WHITE), 160 * 120 * 9 / 10) << i;
    }
    EXPECT_NE(folder.read("s_0001.png"), folder.read("one.png"));
    // The wall stands still: the same pixels show it in each picture.
    EXPECT_EQ(read("s_0001.png").color(0, 60), read("s_0005.png").color(0, 60));
}

TEST_F(RenderCommand, ProtectedFilesAreOpened) {
    const std::string password = folder.write("password", "secret\n");
    const std::string file = folder / "a.ztfx";
    ASSERT_EQ(runOrvapp({"convert", bracketFile(), file, "--password-file", password}).exitCode, 0);
    draw(file, joined({"--result", "PE", "--password-file", password}, PLAIN), "protected.png");
    draw(bracketFile(), joined({"--result", "PE"}, PLAIN), "open.png");
    EXPECT_EQ(folder.read("protected.png"), folder.read("open.png"));
}

TEST_F(RenderCommand, TellsWhatCannotBeShown) {
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    const TinyFile tiny;
    const std::string bracket = bracketFile() + ": ";
    const std::string out = folder / "a.png";
    const Case cases[] = {
        {{bracketFile(), "a.jpg"}, "a.jpg: the name of a picture has to end in .png"},
        {{bracketFile(), ".png"}, ".png: the name of a picture has to end in .png"},
        {{bracketFile(), out, "--result", "DISP"},
         "DISP is a displacement, and colours show a scalar: take l2Norm(DISP) or extractComponent(DISP, 0)"},
        {{bracketFile(), out, "--result", "STRESS"},
         "STRESS is a tensor, and colours show a scalar: take vonMises(STRESS) or extractComponent(STRESS, 0)"},
        {{bracketFile(), out, "--deform", "DISPLx2"},
         bracket + R"(there is no displacement "DISPL"; did you mean "DISP"? (displacements: "DISP"))"},
        {{bracketFile(), out, "--part", "STEL"},
         bracket + R"(there is no part "STEL"; did you mean "STEEL"? (parts: "STEEL", "ALUMINIUM"))"},
        {{bracketFile(), out, "--cut", "z=3000"},
         bracket + "there is nothing to be seen: no part is shown, and no plane meets one"},
        {{tiny.path(), out, "--result", "NDTEMP", "--deform", "DISP"},
         tiny.path() + R"(: no state has values of "NDTEMP" and "DISP")"},
        {{bracketFile(), folder / "no/a.png"},
         "cannot write \"" + folder / "no/a.png" + "\": No such file or directory"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(failureOf(joined({"render"}, c.arguments)), "orvapp: " + c.message + '\n');
    }
    const std::string states = failureOf({"render", tiny.path(), out, "--result", "NDTEMP", "--state", "*0.5*"});
    EXPECT_THAT(states, testing::HasSubstr("there are no values of \"NDTEMP\" in state \"*0.5*\", only in: \""));
    EXPECT_TRUE(folder.names().empty());
}

} // namespace
