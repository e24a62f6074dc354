#include "OrvPlot2d/PlotWriter.h"

#include "Tests/OrvPlot2d/PlotSamples.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/FileSizeLimit.h"
#include "Tests/Support/OrdinaryUser.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <regex>

using namespace orv;
using namespace orv::plt;
using orvtest::makePlot;
using orvtest::mapped;
using orvtest::Numbers;
using orvtest::ScratchFolder;
using orvtest::spaced;

namespace {

const std::string PNG_START = "\x89PNG\r\n\x1A\n";

PtrRef<OverlayPlot> samplePlot() {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "Time", "Stress");
    plot->addCurve("Node 1", {0, 1, 2, 3, 4}, {1, 3, UNDEFINED_DOUBLE, 2, 4});
    plot->addCurve("Node 2", {0, 1, 2, 3, 4}, {4, 3, 2, 1, 0});
    return plot;
}

class PlotWriterTest : public testing::Test {
protected:
    bool write(const std::string& name, int width = 400, int height = 300) {
        reason = Str();
        return PlotWriter::write(plot.get(), folder / name, width, height, &reason);
    }

    std::string written(const std::string& name, int width = 400, int height = 300) {
        EXPECT_TRUE(write(name, width, height)) << reason;
        return folder.read(name);
    }

    /// The elements of a kind with a text in their style.
    std::vector<pugi::xml_node> elements(const std::string& svg, const char* kind, const std::string& style) {
        EXPECT_TRUE(document.load_string(svg.c_str()));
        std::vector<pugi::xml_node> found;
        for (const pugi::xpath_node& node : document.select_nodes((std::string("//") + kind).c_str())) {
            if (std::string(node.node().attribute("style").value()).find(style) != std::string::npos) {
                found.push_back(node.node());
            }
        }
        return found;
    }

    ScratchFolder folder;
    PtrRef<OverlayPlot> plot = samplePlot();
    Str reason;
    pugi::xml_document document;
};

// The second colour, A01830, as Cairo writes colours in SVG: 160, 24 and 48 of 255 in percent.
const std::string SECOND_COLOUR = "stroke:rgb(62.745098%,9.411765%,18.823529%)";
const std::string FIRST_COLOUR = "stroke:rgb(6.27451%,12.156863%,36.078431%)";

TEST_F(PlotWriterTest, SvgIsAsLargeAsAskedFor) {
    ASSERT_TRUE(document.load_string(written("a.svg").c_str()));
    const pugi::xml_node svg = document.child("svg");
    EXPECT_STREQ(svg.attribute("xmlns").value(), "http://www.w3.org/2000/svg");
    EXPECT_STREQ(svg.attribute("width").value(), "400px");
    EXPECT_STREQ(svg.attribute("height").value(), "300px");
    EXPECT_STREQ(svg.attribute("viewBox").value(), "0 0 400 300");
}

TEST_F(PlotWriterTest, SvgHasOnePathForEachCurve) {
    const std::string svg = written("a.svg");
    // One for the curve and one for its key in the legend.
    const std::vector<pugi::xml_node> first = elements(svg, "path", FIRST_COLOUR);
    ASSERT_EQ(first.size(), 2u);
    const std::string path = first[0].attribute("d").value();
    EXPECT_EQ(std::count(path.begin(), path.end(), 'M'), 2) << "a line on each side of the gap";
    EXPECT_EQ(std::count(path.begin(), path.end(), 'L'), 2);
    const std::vector<pugi::xml_node> second = elements(svg, "path", SECOND_COLOUR);
    ASSERT_EQ(second.size(), 2u);
    EXPECT_NE(std::string(second[0].attribute("style").value()).find("stroke-dasharray"), std::string::npos);
}

TEST_F(PlotWriterTest, SvgNeedsNoFonts) {
    const std::string svg = written("a.svg");
    EXPECT_TRUE(elements(svg, "text", "").empty());
    EXPECT_EQ(svg.find("font"), std::string::npos);
}

TEST_F(PlotWriterTest, SvgOfAMillionPointsIsSmall) {
    const Numbers x = spaced(0, 1, 1000000);
    plot->addCurve("noise", x, mapped(x, [](double t) { return std::sin(1e7 * t); }));
    EXPECT_LT(written("a.svg").size(), 300000u);
    EXPECT_LT(written("a.svg", 5000, 4000).size(), 300000u);
}

TEST_F(PlotWriterTest, PdfIsOnePageAsLargeAsTheSvg) {
    const std::string pdf = written("a.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF-1."));
    EXPECT_TRUE(pdf.ends_with("%%EOF\n"));
    const std::regex page("/Type\\s*/Page[^s]");
    EXPECT_EQ(std::distance(std::sregex_iterator(pdf.begin(), pdf.end(), page), {}), 1);
    EXPECT_TRUE(std::regex_search(pdf, std::regex("/Count\\s+1\\s")));
    // 400 x 300 pixels of 1/96 inch in points of 1/72.
    EXPECT_TRUE(std::regex_search(pdf, std::regex("/MediaBox\\s*\\[\\s*0\\s+0\\s+300\\s+225\\s*\\]")));
    EXPECT_EQ(pdf.find("Font"), std::string::npos);
}

TEST_F(PlotWriterTest, PdfHasNoDate) {
    EXPECT_EQ(written("a.pdf").find("Date"), std::string::npos);
}

TEST_F(PlotWriterTest, PngIsAsLargeAsAskedFor) {
    const std::string png = written("a.png", 641, 333);
    ASSERT_TRUE(png.starts_with(PNG_START));
    // Width and height are the numbers of four bytes behind the start, the length and the name of the first chunk.
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\x81\0\0\x01\x4D", 8));
}

TEST_F(PlotWriterTest, CsvHasTheNumbers) {
    EXPECT_EQ(written("a.csv"), "Time,Node 1: Stress,Node 2: Stress\n0,1,4\n1,3,3\n2,,2\n3,2,1\n4,4,0\n");
}

TEST_F(PlotWriterTest, CsvCanBeHadWithoutAFile) {
    EXPECT_EQ(PlotWriter::csv(plot.get()), written("a.csv"));
    orvtest::AssertRecorder recorder;
    EXPECT_EQ(PlotWriter::csv(nullptr), "");
    EXPECT_EQ(recorder.take(), (std::vector<orvtest::FailedAssert>{{"OrvPlot2d/PlotWriter", "plot", std::nullopt}}));
}

TEST_F(PlotWriterTest, TheSamePlotGivesTheSameBytes) {
    for (const std::string end : {".svg", ".png", ".pdf", ".csv"}) {
        const std::string first = written("first" + end);
        written("other.svg", 800, 600);
        EXPECT_EQ(written("second" + end), first) << end;
    }
}

TEST_F(PlotWriterTest, TheLocaleDoesNotMatter) {
    const std::string svg = written("a.svg");
    const std::string csv = written("a.csv");
    const std::string earlier = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, name)) {
            EXPECT_EQ(written("a.svg"), svg) << name;
            EXPECT_EQ(written("a.csv"), csv) << name;
        }
    }
    std::setlocale(LC_ALL, earlier.c_str());
}

TEST_F(PlotWriterTest, TheEndOfTheNameMayBeInCapitals) {
    EXPECT_TRUE(written("a.PNG").starts_with(PNG_START));
    EXPECT_TRUE(written("a.tar.Pdf").starts_with("%PDF"));
}

TEST_F(PlotWriterTest, OtherEndsAreRefused) {
    for (const std::string name : {"a.bmp", "a", "svg", "a.svg.gz", "a.svg "}) {
        EXPECT_FALSE(write(name));
        EXPECT_EQ(reason, Str("cannot write \"" + folder / name +
                              "\": plots are written to names that end with \".svg\", \".png\", \".pdf\" or \".csv\""));
    }
    EXPECT_TRUE(folder.names().empty());
    EXPECT_FALSE(PlotWriter::write(plot.get(), "", 400, 300, nullptr));
}

TEST_F(PlotWriterTest, SizesHaveLimits) {
    const std::string start = "cannot write \"" + folder / "a.png" + "\": a picture of ";
    const std::string end = " pixels is not between 200 x 150 and 10000 x 10000";
    EXPECT_FALSE(write("a.png", 199, 300));
    EXPECT_EQ(reason, Str(start + "199 x 300" + end));
    EXPECT_FALSE(write("a.png", 400, 149));
    EXPECT_EQ(reason, Str(start + "400 x 149" + end));
    EXPECT_FALSE(write("a.png", 10001, 300));
    EXPECT_EQ(reason, Str(start + "10001 x 300" + end));
    EXPECT_FALSE(write("a.png", 400, 10001));
    EXPECT_EQ(reason, Str(start + "400 x 10001" + end));
    EXPECT_FALSE(write("a.svg", -1, 300));
    EXPECT_FALSE(write("a.pdf", 400, 0));
    EXPECT_TRUE(folder.names().empty());
    EXPECT_TRUE(write("a.svg", 200, 150));
    EXPECT_TRUE(write("a.svg", 10000, 10000));
    EXPECT_TRUE(write("a.csv", 0, 0)) << "a table has no size";
}

TEST_F(PlotWriterTest, APlotWithoutAFontIsWrittenWithTheNormalOne) {
    const std::string expected = [&] {
        plot = makePlot("Title", "x", "y");
        return written("a.svg");
    }();
    plot = new OverlayPlot(nullptr);
    plot->setTitle("Title");
    plot->axisSettings()->setXAxisTitle("x");
    plot->axisSettings()->setYAxisTitle("y");
    EXPECT_EQ(written("a.svg"), expected);
}

TEST_F(PlotWriterTest, APlotIsNeeded) {
    orvtest::AssertRecorder recorder;
    plot = nullptr;
    EXPECT_FALSE(write("a.svg"));
    EXPECT_EQ(recorder.take(), (std::vector<orvtest::FailedAssert>{{"OrvPlot2d/PlotWriter", "plot", std::nullopt}}));
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(PlotWriterTest, ReplacesAnOlderFile) {
    folder.write("a.csv", "something much longer than the table that takes its place, by far and without any doubt\n");
    EXPECT_TRUE(written("a.csv").starts_with("Time,"));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a.csv"});
}

TEST_F(PlotWriterTest, FoldersThatCannotBeWrittenToAreTold) {
    EXPECT_FALSE(write("missing/a.svg"));
    EXPECT_EQ(reason, Str("cannot write \"" + folder / "missing/a.svg" + "\": No such file or directory"));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_TRUE(orvtest::holdsForAnOrdinaryUser([&] {
        return !write("a.svg") && reason == Str("cannot write \"" + folder / "a.svg" + "\": Permission denied");
    }));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(PlotWriterTest, WhatIsNoFileIsRefused) {
    std::filesystem::create_directory(folder / "a.svg");
    EXPECT_FALSE(write("a.svg"));
    EXPECT_EQ(reason, Str("cannot write \"" + folder / "a.svg" + "\": Is a directory"));
    std::filesystem::create_symlink("/dev/full", folder / "full.svg");
    EXPECT_FALSE(write("full.svg"));
    EXPECT_EQ(reason, Str("cannot write \"" + folder / "full.svg" + "\": Not a regular file"));
}

TEST_F(PlotWriterTest, AFullDiskLeavesTheOlderFile) {
    for (const std::string name : {"a.svg", "a.png", "a.pdf"}) {
        folder.write(name, "old");
        {
            const orvtest::FileSizeLimit limit(1000);
            EXPECT_FALSE(write(name)) << name;
        }
        EXPECT_EQ(reason, Str("cannot write \"" + folder / name + "\": File too large"));
        EXPECT_EQ(folder.read(name), "old");
    }
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.pdf", "a.png", "a.svg"}));
}

} // namespace
