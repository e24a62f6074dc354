#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Image.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using Json = nlohmann::ordered_json;
using orv::vis::ColorMap;
using orv::vis::Image;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::jsonOf;
using orvtest::lines;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::ScratchFolder;
using orvtest::TinyFile;
using testing::ElementsAre;
using testing::MatchesRegex;

namespace {

Json pickIn(const std::string& file, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"pick", file});
    return jsonOf(std::move(arguments));
}

void expectPoint(const Json& point, double x, double y, double z) {
    ASSERT_EQ(point.size(), 3U);
    EXPECT_NEAR(point[0], x, 1e-12);
    EXPECT_NEAR(point[1], y, 1e-12);
    EXPECT_NEAR(point[2], z, 1e-12);
}

// The face y = 0 of the tetrahedron has the nodes 11 at the origin, 12 at x = 1 and 14 at z = 1, with -1, 2.5 and 1.5:
// at (0.2, 0, 0.2) that is 0.6 * -1 + 0.2 * 2.5 + 0.2 * 1.5. It is the element's surface number 1.
TEST(PickCommand, TellsWhatARayMeets) {
    const TinyFile tiny;
    const Json pick = pickIn(tiny.path(), {"--result", "extractComponent(DISP, 0)", "--ray", "0.2,-5,0.2", "0,1,0"});
    EXPECT_EQ(pick["state"], orvtest::namesIn(tiny.path(), "states")[0]);
    EXPECT_EQ(pick["result"], "extractComponent(DISP, 0)");
    const Json& item = pick["item"];
    EXPECT_EQ(item["part"], "STEEL, hard");
    EXPECT_EQ(item["isSection"], false);
    EXPECT_EQ(item["element"], 50);
    EXPECT_EQ(item["surface"], 1);
    EXPECT_EQ(item["node"], 11);
    expectPoint(item["point"], 0.2, 0, 0.2);
    EXPECT_NEAR(item["value"], 0.2, 1e-12);
    EXPECT_EQ(item["itemValue"], -1);
}

TEST(PickCommand, MissingValuesAreNull) {
    // The face z = 0 has node 13, which has no displacement.
    const TinyFile tiny;
    const Json pick = pickIn(tiny.path(), {"--result", "extractComponent(DISP, 0)", "--ray", "0.2,0.6,-5", "0,0,1"});
    EXPECT_EQ(pick["item"]["surface"], 0);
    EXPECT_EQ(pick["item"]["node"], 13);
    EXPECT_TRUE(pick["item"]["value"].is_null());
    EXPECT_TRUE(pick["item"]["itemValue"].is_null());
}

TEST(PickCommand, MeetsTheShapeAsItIsShown) {
    // At twice the displacement the corners of the face y = 0 are at x = -2 and 6 below, and 3 above.
    const TinyFile tiny;
    const std::vector<std::string> ray = {"--ray", "2,-5,0.5", "0,1,0"};
    EXPECT_TRUE(pickIn(tiny.path(), {"--state", "*0.5*", ray[0], ray[1], ray[2]})["item"].is_null());
    const Json pick = pickIn(tiny.path(), {"--deform", "DISPx2", ray[0], ray[1], ray[2]});
    EXPECT_TRUE(pick["result"].is_null());
    expectPoint(pick["item"]["point"], 2, 0, 0.5);
    EXPECT_EQ(pick["item"]["node"], 14); // 1.1 away, the next ones 4.03
    EXPECT_TRUE(pick["item"]["value"].is_null());
}

TEST(PickCommand, SectionsHaveNeitherElementNorNode) {
    const TinyFile tiny;
    const Json pick = pickIn(tiny.path(), {"--result", "NDTEMP", "--cut", "z=0.5", "--ray", "0.1,0.1,5", "0,0,-1"});
    const Json& item = pick["item"];
    EXPECT_EQ(item["isSection"], true);
    EXPECT_EQ(item["part"], "STEEL, hard");
    EXPECT_TRUE(item["element"].is_null());
    EXPECT_TRUE(item["surface"].is_null());
    EXPECT_TRUE(item["node"].is_null());
    expectPoint(item["point"], 0.1, 0.1, 0.5);
    EXPECT_NEAR(item["value"], 20, 1e-12);
    EXPECT_TRUE(item["itemValue"].is_null());
}

TEST(PickCommand, ValuesOfElementsAreTheirOwn) {
    // The arithmetic mean of the four nodes, 20 each.
    const TinyFile tiny;
    const Json pick = pickIn(tiny.path(), {"--result", "toElementsArithmetic(NDTEMP)", "--ray", "0.2,-5,0.2", "0,1,0"});
    EXPECT_EQ(pick["item"]["value"], 20);
    EXPECT_EQ(pick["item"]["itemValue"], 20);
}

TEST(PickCommand, TellsTheNodeOfARealModel) {
    // Node 352 is at (0, 0, 60), by the columns of the file.
    const double expected = orvtest::readBlock(bracketFile(), 5, "STRESS").at(352)[0];
    const Json pick = pickIn(bracketFile(), {"--result", "extractComponent(STRESS, 0)", "--ray", "0,0,100", "0,0,-1"});
    EXPECT_EQ(pick["item"]["part"], "STEEL");
    EXPECT_EQ(pick["item"]["node"], 352);
    EXPECT_EQ(pick["item"]["itemValue"], expected);
    EXPECT_NEAR(pick["item"]["value"], expected, 1e-12);
    expectPoint(pick["item"]["point"], 0, 0, 60);
}

TEST(PickCommand, TableShowsTheSameRounded) {
    const TinyFile tiny;
    const Outcome outcome =
        runOrvapp({"pick", tiny.path(), "--result", "extractComponent(DISP, 0)/3", "--ray", "0.2,-5,0.2", "0,1,0"});
    EXPECT_EQ(outcome.exitCode, 0);
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 3U);
    EXPECT_THAT(text[0],
                MatchesRegex("ray from 0.2,-5,0.2 along 0,1,0, state \".*0\\.5\", extractComponent\\(DISP, 0\\)/3"));
    EXPECT_THAT(text[1], MatchesRegex("  Part +Element +Surface +Node +X +Y +Z +Value +at node"));
    EXPECT_THAT(text[2], MatchesRegex("  STEEL, hard +50 +1 +11 +0\\.2 +0 +0\\.2 +0\\.0666667 +-0\\.333333"));
}

TEST(PickCommand, NothingIsNoMistake) {
    const Json pick = pickIn(bracketFile(), {"--result", "PE", "--at", "799,0"});
    EXPECT_EQ(pick["result"], "PE");
    EXPECT_TRUE(pick["item"].is_null());
    const Outcome outcome = runOrvapp({"pick", bracketFile(), "--at", "799,0"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "pixel 799,0, state \"Step 1, increment 5, time 1\": nothing is seen there\n");
    // A ray without a direction.
    EXPECT_TRUE(pickIn(bracketFile(), {"--ray", "0,0,100", "0,0,0"})["item"].is_null());
}

/// The colours of a pixel and its neighbours are far from each other: a silhouette, which is smoothed.
bool isSmooth(const Image& image, int x, int y) {
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const rvf::Color3ub a = image.color(x, y);
            const rvf::Color3ub b = image.color(x + dx, y + dy);
            if (std::max({std::abs(a.r() - b.r()), std::abs(a.g() - b.g()), std::abs(a.b() - b.b())}) > 40) {
                return false;
            }
        }
    }
    return true;
}

TEST(PickCommand, APixelHasTheColorOfItsValue) {
    const ScratchFolder folder;
    const std::vector<std::string> look = {"--result", "l2Norm(DISP)", "--deform", "DISPx10", "--view",
                                           "1,-2,0.7", "--no-legend",  "--size",   "160x120"};
    std::vector<std::string> render = {"render", bracketFile(), folder / "a.png", "--no-edges", "--no-light"};
    render.insert(render.end(), {"--range", "0,0.8"});
    render.insert(render.end(), look.begin(), look.end());
    ASSERT_EQ(runOrvapp(render).exitCode, 0);
    Image image;
    ASSERT_TRUE(image.readPng(folder / "a.png", nullptr));
    const ColorMap colors;
    int seen = 0;
    int unseen = 0;
    for (int y = 8; y < 120; y += 13) {
        for (int x = 9; x < 160; x += 17) {
            if (!isSmooth(image, x, y)) {
                continue;
            }
            std::vector<std::string> pick = look;
            pick.insert(pick.end(), {"--at", std::to_string(x) + ',' + std::to_string(y)});
            const Json item = pickIn(bracketFile(), pick)["item"];
            if (item.is_null()) {
                EXPECT_EQ(image.color(x, y), rvf::Color3ub(255, 255, 255)) << x << ' ' << y;
                ++unseen;
            } else {
                const rvf::Color3f expected = colors.colorAt(item["value"], 0, 0.8);
                EXPECT_NEAR(image.color(x, y).r(), expected.rByte(), 1) << x << ' ' << y;
                EXPECT_NEAR(image.color(x, y).g(), expected.gByte(), 1) << x << ' ' << y;
                EXPECT_NEAR(image.color(x, y).b(), expected.bByte(), 1) << x << ' ' << y;
                ++seen;
            }
        }
    }
    EXPECT_GT(seen, 5);
    EXPECT_GT(unseen, 5);
}

TEST(PickCommand, RefusesWhatRenderRefuses) {
    EXPECT_EQ(failureOf({"pick", bracketFile(), "--at", "1,1", "--result", "DISP"}),
              "orvapp: DISP is a displacement, and colours show a scalar: take l2Norm(DISP) or "
              "extractComponent(DISP, 0)\n");
    EXPECT_EQ(failureOf({"pick", bracketFile(), "--at", "1,1", "--cut", "z=3000"}),
              "orvapp: " + bracketFile() + ": there is nothing to be seen: no part is shown, and no plane meets one\n");
}

} // namespace
