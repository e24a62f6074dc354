#include "OrvApp/OrvApp.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::ScratchFolder;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Arguments = std::vector<std::string>;

class SituationPicture : public testing::Test {
protected:
    static Arguments joined(Arguments a, const Arguments& b) {
        a.insert(a.end(), b.begin(), b.end());
        return a;
    }

    /// Small, so that many are drawn in a moment.
    static Arguments small(const Arguments& options) {
        return joined({"--size", "120x90"}, options);
    }

    std::string rendered(const Arguments& options) {
        const Outcome outcome = runOrvapp(joined({"render", bracketFile(), folder / "render.png"}, small(options)));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
        return folder.read("render.png");
    }

    Json captured(const Arguments& options) {
        return orvtest::jsonOf(
            joined({"situation", "capture", bracketFile(), situation}, small(options)))["situations"][0];
    }

    std::string applied(const std::string& place, const Arguments& options = {}) {
        const Outcome outcome = runOrvapp(joined({"situation", "apply", place, folder / "apply.png"}, options));
        EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
        EXPECT_EQ(outcome.messages, "");
        return folder.read("apply.png");
    }

    std::string refusalOf(const Arguments& arguments) {
        return failureOf(joined({"situation"}, arguments));
    }

    ScratchFolder folder;
    const std::string situation = folder / "situation";
};

TEST_F(SituationPicture, IsTheSameAsWithoutASituation) {
    const Arguments pictures[] = {
        {},
        {"--result", "vonMises(STRESS)"},
        {"--result", "vonMises(STRESS)/355", "--state", "*time 1", "--view", "front"},
        {"--result", "PE", "--deform", "DISPx10", "--colors", "rainbow", "--bands", "7", "--parallel"},
        {"--result", "l2Norm(DISP)", "--cut", "y=5", "--range", "0,0.5"},
        {"--part", "STEEL", "--background", "grey,#102030", "--no-edges", "--no-light", "--view", "1,2,-0.3"},
        {"--result", "PE", "--no-legend"},
    };
    std::string earlier;
    for (const Arguments& options : pictures) {
        const std::string picture = rendered(options);
        EXPECT_FALSE(picture == earlier);
        captured(options);
        EXPECT_TRUE(applied(situation) == picture) << testing::PrintToString(options);
        std::filesystem::remove_all(situation);
        earlier = picture;
    }
}

TEST_F(SituationPicture, ComesFromAnArchiveAndAFileToo) {
    const Arguments options = {"--result", "vonMises(STRESS)", "--view", "top"};
    captured(options);
    const std::string archive = folder / "all.zip";
    ASSERT_EQ(runOrvapp({"situation", "export", situation, archive}).exitCode, 0);
    EXPECT_TRUE(applied(archive) == rendered(options));
    EXPECT_TRUE(applied(archive + "|1") == rendered(options));
    EXPECT_TRUE(applied(situation + "/Situation.xml") == rendered(options));
}

TEST_F(SituationPicture, MayHaveAnotherSizeAndAnotherFile) {
    captured({"--result", "PE", "--parallel"});
    applied(situation, {"--size", "60x45"});
    // The numbers of width and height stand behind 16 bytes of a PNG file, the highest byte first.
    EXPECT_EQ(folder.read("apply.png").substr(16, 8), std::string("\0\0\0\x3C\0\0\0\x2D", 8));
    const std::string same = applied(situation);
    std::filesystem::copy(bracketFile(), folder / "moved.frd");
    EXPECT_TRUE(applied(situation, {"--file", folder / "moved.frd"}) == same);
}

TEST_F(SituationPicture, CaptureTellsWhatItKeeps) {
    const Json row = captured({"--result", "vonMises(STRESS)", "--name", "\u7ffc", "--description", "as delivered"});
    EXPECT_EQ(row, (Json{{"place", situation},
                         {"name", "\u7ffc"},
                         {"description", "as delivered"},
                         {"file", bracketFile()},
                         {"userData", {{"orvapp.result", "vonMises(STRESS)"}, {"orvapp.size", "120x90"}}}}));
    EXPECT_EQ(orvtest::jsonOf({"situation", "list", situation})["situations"][0], row);
    std::filesystem::remove_all(situation);
    const Json plain = captured({"--result", "PE"});
    EXPECT_EQ(plain["name"], "bracket");
    EXPECT_EQ(plain["description"], "");
    EXPECT_EQ(plain["userData"], (Json{{"orvapp.size", "120x90"}}));
}

TEST_F(SituationPicture, CaptureLeavesASituationThatIsThere) {
    captured({});
    const std::string text = folder.read("situation/Situation.xml");
    EXPECT_EQ(refusalOf({"capture", bracketFile(), situation}),
              "orvapp: " + situation + ": there is a situation in it already\n");
    EXPECT_EQ(folder.read("situation/Situation.xml"), text);
}

TEST_F(SituationPicture, ARecoveryReplacesTheOneBefore) {
    EXPECT_EQ(captured({"--result", "PE", "--recovery"})["name"], "Recovery");
    const Arguments options = {"--result", "vonMises(STRESS)", "--deform", "DISPx20"};
    captured(joined(options, {"--recovery"}));
    EXPECT_TRUE(applied(situation) == rendered(options));
    EXPECT_EQ(orvtest::jsonOf({"situation", "recover", situation})["situations"][0]["name"], "Recovery");
    EXPECT_EQ(refusalOf({"capture", bracketFile(), folder.write("file", "") + "/below", "--recovery"}),
              "orvapp: cannot write to the folder \"" + folder / "file/below" + "\"\n");
}

TEST_F(SituationPicture, WhatIsMissingIsTold) {
    captured({"--result", "PE"});
    EXPECT_EQ(refusalOf({"apply", situation, folder / "a.jpg"}),
              "orvapp: " + folder / "a.jpg" + ": the name of a picture has to end in .png\n");
    const orvtest::TinyFile tiny;
    EXPECT_THAT(refusalOf({"apply", situation, folder / "a.png", "--file", tiny.path()}),
                StartsWith("orvapp: " + situation + ": "));
    EXPECT_THAT(refusalOf({"apply", situation, folder / "a.png", "--file", folder / "missing.frd"}),
                HasSubstr("missing.frd"));
    EXPECT_THAT(refusalOf({"apply", folder / "missing", folder / "a.png"}), HasSubstr("missing"));
    EXPECT_FALSE(folder.has("a.png"));
}

TEST_F(SituationPicture, OneWithoutAModelNeedsAFile) {
    const orv::PtrRef<orv::ug::Situation> empty(new orv::ug::Situation);
    ASSERT_TRUE(orv::ug::SituationIo::writeFolder(empty.get(), situation));
    EXPECT_EQ(refusalOf({"apply", situation, folder / "a.png"}),
              "orvapp: " + situation + ": the situation names no file of a model, name one with --file\n");
    EXPECT_THAT(refusalOf({"apply", situation, folder / "a.png", "--file", bracketFile()}),
                StartsWith("orvapp: " + situation + ": "));
}

} // namespace
