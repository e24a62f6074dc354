#include "Tools/Arguments.h"

#include "Tools/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

using orv::Vec3d;

namespace orvapp {
namespace {

/// What a function says to an argument that it does not understand.
template <class Parse>
std::string refusal(Parse parse, const std::string& text) {
    try {
        parse(text);
    } catch (const CommandError& error) {
        return error.what();
    }
    ADD_FAILURE() << '"' << text << "\" is understood";
    return "";
}

TEST(Arguments, SizesAreTwoNumbers) {
    EXPECT_EQ(parseSize("800x600").width, 800);
    EXPECT_EQ(parseSize("800x600").height, 600);
    EXPECT_EQ(parseSize("1x32768").height, 32768);
    for (const char* text : {"", "x", "800", "800x", "x600", "800x600x1", "800X600", "8e2x600", " 800x600", "800 x 600",
                             "99999999999x1", "800,600"}) {
        EXPECT_EQ(refusal(parseSize, text), '"' + std::string(text) + "\" is not a size such as 800x600");
    }
    for (const char* text : {"0x600", "800x0", "-800x600", "32769x1", "8193x8192"}) {
        EXPECT_EQ(refusal(parseSize, text), std::string("a picture has from 1 to 32768 pixels on each side and at most "
                                                        "67108864 in all, not ") +
                                                text);
    }
}

TEST(Arguments, PixelsAreTwoWholeNumbers) {
    EXPECT_EQ(parsePixel("120,45").x, 120);
    EXPECT_EQ(parsePixel("120,45").y, 45);
    EXPECT_EQ(parsePixel("-1,0").x, -1);
    for (const char* text : {"", "120", "120,", "120,4.5", "120;45", "1,2,3"}) {
        EXPECT_EQ(refusal(parsePixel, text), '"' + std::string(text) + "\" is not a pixel such as 120,45");
    }
}

TEST(Arguments, VectorsAreThreeNumbers) {
    EXPECT_EQ(parseVector("1,0,-2.5"), Vec3d(1, 0, -2.5));
    EXPECT_EQ(parseVector("1e3,-.5,0"), Vec3d(1000, -0.5, 0));
    for (const char* text : {"", "1,2", "1,2,3,4", "1,2,", "a,b,c", "1,2,inf", "nan,0,0", "1,2,1e999", "1, 2,3"}) {
        EXPECT_EQ(refusal(parseVector, text), '"' + std::string(text) + "\" is not three numbers such as 1,0,-2.5");
    }
}

TEST(Arguments, ViewsHaveNamesOrDirections) {
    const double third = 1 / std::sqrt(3.0);
    struct Case {
        const char* text;
        Vec3d toEye;
    };
    const Case cases[] = {
        {"iso", {third, -third, third}},
        {"front", {0, -1, 0}},
        {"back", {0, 1, 0}},
        {"left", {-1, 0, 0}},
        {"right", {1, 0, 0}},
        {"top", {0, 0, 1}},
        {"bottom", {0, 0, -1}},
        {"0,3,-4", {0, 0.6, -0.8}},
    };
    for (const Case& c : cases) {
        EXPECT_NEAR((parseViewpoint(c.text).toEye - c.toEye).length(), 0.0, 1e-15) << c.text;
    }
    EXPECT_EQ(parseViewpoint("front").up, Vec3d(0, 0, 1));
    EXPECT_EQ(parseViewpoint("top").up, Vec3d(0, 1, 0));
    EXPECT_EQ(parseViewpoint("0,3,-4").up, Vec3d(0, 0, 1));
    const std::string rest =
        R"( ("iso", "front", "back", "left", "right", "top", "bottom" or the direction of the eye such as 1,-2,0.5))";
    EXPECT_EQ(refusal(parseViewpoint, "bak"), R"("bak" is not a view; did you mean "back"?)" + rest);
    EXPECT_EQ(refusal(parseViewpoint, "0,0,0"), R"("0,0,0" is not a view)" + rest);
}

TEST(Arguments, PlanesHaveAnAxisOrANormal) {
    EXPECT_EQ(parsePlane("x=2.5").point, Vec3d(2.5, 0, 0));
    EXPECT_EQ(parsePlane("x=2.5").normal, Vec3d(1, 0, 0));
    EXPECT_EQ(parsePlane("y=-1").point, Vec3d(0, -1, 0));
    EXPECT_EQ(parsePlane("y=-1").normal, Vec3d(0, 1, 0));
    EXPECT_EQ(parsePlane("z=0").normal, Vec3d(0, 0, 1));
    EXPECT_EQ(parsePlane("1,2,3:0,-2,5").point, Vec3d(1, 2, 3));
    EXPECT_EQ(parsePlane("1,2,3:0,-2,5").normal, Vec3d(0, -2, 5));
    for (const char* text : {"", "x", "x=", "w=1", "=1", "x=a", "1,2,3", "1,2,3:0,0,0", "1,2:3,4,5", "x=1:y=2"}) {
        EXPECT_EQ(refusal(parsePlane, text), '"' + std::string(text) +
                                                 "\" is not a plane such as z=2.5, or a point and a normal such as "
                                                 "0,0,2.5:0,0,1");
    }
}

TEST(Arguments, DeformationsMayHaveAScale) {
    struct Case {
        const char* text;
        const char* result;
        double scale;
    };
    for (const Case& c : {Case{"DISP", "DISP", 1}, Case{"DISPx25", "DISP", 25}, Case{"DISPx-0.5", "DISP", -0.5},
                          Case{"xx2", "x", 2}, Case{"DISPx", "DISPx", 1}, Case{"DISPx2m", "DISPx2m", 1},
                          Case{"DISPxinf", "DISPxinf", 1}, Case{"x2", "x2", 1}, Case{"1st movex3", "1st move", 3}}) {
        EXPECT_EQ(parseDeformation(c.text).result, c.result);
        EXPECT_EQ(parseDeformation(c.text).scale, c.scale) << c.text;
    }
    EXPECT_EQ(refusal(parseDeformation, ""), R"("" is not a displacement and a scale such as DISPx25)");
}

TEST(Arguments, RangesGoUp) {
    EXPECT_EQ(parseRange("-1.5,2e3"), std::make_pair(-1.5, 2000.0));
    for (const char* text : {"", "1", "1,1", "2,1", "0,inf", "0,1,2", "a,b"}) {
        EXPECT_EQ(refusal(parseRange, text),
                  '"' + std::string(text) + "\" is not a range such as 0,355, the smaller number first");
    }
}

TEST(Arguments, ColorMapsHaveNames) {
    EXPECT_EQ(parseColors("viridis"), orv::vis::ColorMap::Kind::VIRIDIS);
    EXPECT_EQ(parseColors("rainbow"), orv::vis::ColorMap::Kind::RAINBOW);
    EXPECT_EQ(refusal(parseColors, "Rainbow"),
              R"("Rainbow" is not a colour map; did you mean "rainbow"? ("viridis", "rainbow"))");
}

TEST(Arguments, FilesAreASeriesOrPieces) {
    using orv::imp::cae::FileRelation;
    EXPECT_EQ(parseFileRelation("series"), FileRelation::STEPS);
    EXPECT_EQ(parseFileRelation("pieces"), FileRelation::PIECES);
    EXPECT_EQ(refusal(parseFileRelation, "steps"), R"("steps" is not what files can be ("series", "pieces"))");
}

TEST(Arguments, BackgroundsAreOneColorOrTwo) {
    using rvf::Color3f;
    EXPECT_EQ(parseBackground("white"), std::make_pair(Color3f(1, 1, 1), Color3f(1, 1, 1)));
    EXPECT_EQ(parseBackground("#ff8000,black"), std::make_pair(Color3f(1, 128 / 255.0F, 0), Color3f(0, 0, 0)));
    EXPECT_EQ(parseBackground("#0000FF").first, Color3f(0, 0, 1));
    EXPECT_EQ(parseBackground("grey").first, Color3f(rvf::Color3::GRAY));
    for (const char* text : {"", "#12345", "#1234567", "#gg0000", "#-00001", "123456"}) {
        EXPECT_EQ(refusal(parseBackground, text),
                  '"' + std::string(text) + "\" is not a colour (\"white\", \"grey\", \"black\" or \"#rrggbb\")");
    }
    EXPECT_EQ(refusal(parseBackground, "white,blak"),
              R"("blak" is not a colour; did you mean "black"? ("white", "grey", "black" or "#rrggbb"))");
    EXPECT_EQ(refusal(parseBackground, "white,grey,black"),
              R"("white,grey,black" is not one colour, or two with a comma between them)");
}

} // namespace
} // namespace orvapp
