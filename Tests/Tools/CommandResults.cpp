#include "Tests/Tools/CommandResults.h"

#include "Tests/Tools/Program.h"
#include "Tests/Tools/TinyFrd.h"

#include <gtest/gtest.h>

#include <sstream>

namespace orvtest {

nlohmann::ordered_json jsonOf(std::vector<std::string> arguments) {
    arguments.push_back("--json");
    const Outcome outcome = runOrvapp(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
    return nlohmann::ordered_json::parse(outcome.output);
}

std::string failureOf(const std::vector<std::string>& arguments) {
    const Outcome outcome = runOrvapp(arguments);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "");
    return outcome.messages;
}

std::vector<std::string> namesIn(const std::string& file, const std::string& list) {
    std::vector<std::string> names;
    const nlohmann::ordered_json info = jsonOf({"info", file});
    for (const nlohmann::ordered_json& row : info["models"][0][list]) {
        names.push_back(row["name"]);
    }
    return names;
}

std::vector<std::string> lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> all;
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (const char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == ',' && !isQuoted) {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

TinyFile::TinyFile() : m_path(m_folder.write("tiny.frd", tinyFrd())) {}

} // namespace orvtest
