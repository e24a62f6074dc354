#include "Tools/FormatsCommand.h"

#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::Outcome;
using orvtest::runOrvapp;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string dotted(const orv::imp::cae::FormatInfo& format) {
    std::string text;
    for (const orv::Str& extension : format.extensions.split(" ")) {
        text += (text.empty() ? "`." : " `.") + extension.toStdString() + '`';
    }
    return text;
}

} // namespace

TEST(FormatsCommand, ListsOurOwnFormatsAndThenTheOthers) {
    const Outcome outcome = runOrvapp({"formats"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    EXPECT_THAT(outcome.output, StartsWith("  Format"));
    EXPECT_LT(outcome.output.find(" ztfx "), outcome.output.find(" ztf "));
    EXPECT_LT(outcome.output.find(" ztf "), outcome.output.find(" frd "));
    EXPECT_THAT(outcome.output, HasSubstr("  CalculiX "));
    EXPECT_THAT(outcome.output, HasSubstr(" the library "));
}

TEST(FormatsCommand, JsonTellsTheSame) {
    const Outcome outcome = runOrvapp({"formats", "--json"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.messages;
    const Json all = Json::parse(outcome.output);
    const std::vector<orv::imp::cae::FormatInfo> formats = orvapp::readableFormats();
    ASSERT_EQ(all["formats"].size(), formats.size());
    const Json frd = all["formats"][2];
    EXPECT_EQ(frd["name"], "CalculiX");
    EXPECT_EQ(frd["description"], "CalculiX results");
    EXPECT_EQ(frd["extensions"], Json::array({"frd"}));
    EXPECT_EQ(frd["contents"], formats[2].contents.toStdString());
    EXPECT_TRUE(frd["module"].is_null());
    EXPECT_EQ(frd["isThere"], true);
}

// The table of the documentation is this one.
TEST(FormatsCommand, DocumentsListEachFormat) {
    const std::string document = orvtest::readWholeFile(orvtest::sourceFolder() + "/Docs/formats.md");
    for (const orv::imp::cae::FormatInfo& format : orvapp::readableFormats()) {
        const std::string row =
            "| " + format.name.toStdString() + " | " + dotted(format) + " | " + format.contents.toStdString() + " |";
        EXPECT_THAT(document, HasSubstr(row));
    }
}
