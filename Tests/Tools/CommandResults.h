#pragma once

#include "Tests/Support/ScratchFolder.h"

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace orvtest {

/// Runs a command that succeeds, with `--json` behind it, and gives what it prints.
nlohmann::ordered_json jsonOf(std::vector<std::string> arguments);

/// Runs a command that fails with 1 and prints nothing on standard output. Gives its messages.
std::string failureOf(const std::vector<std::string>& arguments);

/// The names in one list of `orvapp info`.
std::vector<std::string> namesIn(const std::string& file, const std::string& list);

std::vector<std::string> lines(const std::string& text);

/// The fields of a line of CSV, without quotes around them; none of our names has a quote in it.
std::vector<std::string> fieldsOf(const std::string& line);

/// tinyFrd() as a file.
class TinyFile {
public:
    TinyFile();

    const std::string& path() const {
        return m_path;
    }

private:
    ScratchFolder m_folder;
    std::string m_path;
};

} // namespace orvtest
