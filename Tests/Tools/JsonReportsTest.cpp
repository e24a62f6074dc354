#include "Tools/JsonReports.h"

#include "OrvCore/Defines.h"
#include "Tools/CurvesReport.h"
#include "Tools/EnvelopeReport.h"
#include "Tools/InfoReport.h"
#include "Tools/ValuesReport.h"

#include <gtest/gtest.h>

#include <limits>

#include <nlohmann/json.hpp>

using namespace orvapp;

namespace {

/// On one line and with its keys in their order.
std::string compact(const std::string& json) {
    return nlohmann::ordered_json::parse(json).dump();
}

} // namespace

TEST(JsonReports, InfoHasTheseKeysInThisOrder) {
    ModelReport report;
    report.file = "a.frd";
    report.title = "not told";
    report.states = {{0, 1, "time 0.5", "time", 0.5}, {1, 4, "odd", "state", orv::UNDEFINED_DOUBLE}};
    report.stateGroups = {{1}, {4}};
    report.parts = {{0, 0, 7, "STEEL", 8, 3, {{"tetrahedron", 2}, {"hexahedron", 1}}}};
    report.results = {{0, 5, "DISP", "displacement", "node", false, 2}, {1, 9, "a + b", "scalar", "element", true, 1}};
    report.warnings = {"The end is missing."};
    EXPECT_EQ(compact(infoJson({report})),
              R"({"models":[{"file":"a.frd","states":[)"
              R"({"index":0,"id":1,"name":"time 0.5","referenceType":"time","referenceValue":0.5},)"
              R"({"index":1,"id":4,"name":"odd","referenceType":"state","referenceValue":null}],)"
              R"("stateGroups":[[1],[4]],)"
              R"("parts":[{"index":0,"geometry":0,"id":7,"name":"STEEL","nodes":8,"elements":3,)"
              R"("elementTypes":{"tetrahedron":2,"hexahedron":1}}],)"
              R"("results":[)"
              R"({"index":0,"id":5,"name":"DISP","type":"displacement","mapping":"node","custom":false},)"
              R"({"index":1,"id":9,"name":"a + b","type":"scalar","mapping":"element","custom":true}],)"
              R"("warnings":["The end is missing."]}]})");
}

TEST(JsonReports, EmptyListsAreLists) {
    EXPECT_EQ(compact(infoJson({ModelReport()})),
              R"({"models":[{"file":"","states":[],"stateGroups":[],"parts":[],"results":[],"warnings":[]}]})");
    EXPECT_EQ(compact(valuesJson(ValuesReport())), R"({"result":"","rows":[]})");
}

TEST(JsonReports, ValuesHaveTheseKeysInThisOrder) {
    ValuesReport report;
    report.result = "DISP";
    report.rows.push_back({"time 1", "STEEL", "X", {5, 1, Extreme{-0.25, 2}, Extreme{4, 0}, 1.5}, 12, 7});
    report.rows.push_back({"time 1", "TIN", "X", {1, 1, {}, {}, {}}, {}, {}});
    EXPECT_EQ(compact(valuesJson(report)),
              R"({"result":"DISP","rows":[)"
              R"({"state":"time 1","part":"STEEL","component":"X","count":5,"undefined":1,)"
              R"("min":-0.25,"minAt":12,"max":4.0,"maxAt":7,"average":1.5},)"
              R"({"state":"time 1","part":"TIN","component":"X","count":1,"undefined":1,)"
              R"("min":null,"minAt":null,"max":null,"maxAt":null,"average":null}]})");
}

TEST(JsonReports, EnvelopesHaveTheseKeysInThisOrder) {
    EnvelopeReport report;
    report.expression = "A+B";
    report.states = 3;
    report.rows.push_back({"X", 5, 1, EnvelopeExtreme{-0.25, "time 1", "time", 1, "STEEL", 7}, {}});
    report.rows.back().max = EnvelopeExtreme{4, "odd", "state", orv::UNDEFINED_DOUBLE, "TIN", 8};
    report.rows.push_back({"Y"});
    EXPECT_EQ(
        compact(envelopeJson(report)),
        R"({"expression":"A+B","states":3,"rows":[{"component":"X","count":5,"undefined":1,)"
        R"("min":{"value":-0.25,"state":"time 1","referenceType":"time","referenceValue":1.0,"part":"STEEL","at":7},)"
        R"("max":{"value":4.0,"state":"odd","referenceType":"state","referenceValue":null,"part":"TIN","at":8}},)"
        R"({"component":"Y","count":0,"undefined":0,"min":null,"max":null}]})");
}

TEST(JsonReports, CurvesHaveTheseKeysInThisOrder) {
    CurvesReport report{"A+B", "node", "Length", {}};
    report.curves.push_back({"node 7", {0, 1.5}, {2, orv::UNDEFINED_DOUBLE}});
    report.curves.push_back({"time 1", {}, {}, {{1, 2, 3}, {4, 5, 6.5}}});
    EXPECT_EQ(
        compact(curvesJson(report)),
        R"({"result":"A+B","mapping":"node","x":"Length","curves":[{"name":"node 7","x":[0.0,1.5],"y":[2.0,null]},)"
        R"({"name":"time 1","x":[],"y":[],"path":[[1.0,2.0,3.0],[4.0,5.0,6.5]]}]})");
}

TEST(JsonReports, InfinityIsNull) {
    ValuesReport report;
    const double infinity = std::numeric_limits<double>::infinity();
    report.rows.push_back({"s", "p", "value", {1, 0, Extreme{infinity, 0}, Extreme{infinity, 0}, infinity}, 3, 3});
    const auto row = nlohmann::json::parse(valuesJson(report))["rows"][0];
    EXPECT_TRUE(row["min"].is_null() && row["max"].is_null() && row["average"].is_null());
    EXPECT_EQ(row["minAt"], 3);
}

TEST(JsonReports, BrokenTextIsMended) {
    ModelReport report;
    report.title = "";
    report.file = "b\xFFg";
    EXPECT_EQ(nlohmann::json::parse(infoJson({report}))["models"][0]["file"], "b\xEF\xBF\xBDg"); // U+FFFD
}

TEST(JsonReports, EndWithALineEnd) {
    EXPECT_EQ(infoJson({ModelReport()}).back(), '\n');
    EXPECT_EQ(valuesJson(ValuesReport()).back(), '\n');
}
