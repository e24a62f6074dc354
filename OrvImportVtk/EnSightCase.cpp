#include "OrvImportVtk/EnSightCase.h"

#include "OrvCore/Str.h"
#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <numeric>
#include <sstream>
#include <string_view>

namespace orv::imp::cae {
namespace {

using Words = std::vector<std::string>;

struct Kind {
    std::string_view text;
    ug::ResultMapping mapping;
    int componentCount;
};

constexpr Kind KINDS[] = {
    {"scalar per node", ug::PER_NODE, 1},
    {"vector per node", ug::PER_NODE, 3},
    {"tensor symm per node", ug::PER_NODE, 6},
    {"tensor asym per node", ug::PER_NODE, 9},
    {"scalar per element", ug::PER_ELEMENT, 1},
    {"vector per element", ug::PER_ELEMENT, 3},
    {"tensor symm per element", ug::PER_ELEMENT, 6},
    {"tensor asym per element", ug::PER_ELEMENT, 9},
};

/// What becomes no result; the name stands so many words before the end, or else in front.
struct OtherKind {
    std::string_view text;
    std::size_t wordsBehind;
};

constexpr std::size_t IN_FRONT = 0;

constexpr OtherKind OTHER_KINDS[] = {
    {"constant per case", IN_FRONT}, {"constant per case file", 1},     {"constant per part", 1},
    {"scalar per measured node", 1}, {"vector per measured node", 1},   {"complex scalar per node", 3},
    {"complex vector per node", 3},  {"complex scalar per element", 3}, {"complex vector per element", 3},
};

constexpr std::string_view OTHER_GEOMETRY[] = {"measured", "match", "boundary", "rigid_body", "Vector_glyphs"};

constexpr std::string_view SECTIONS[] = {"FORMAT", "GEOMETRY", "VARIABLE",           "TIME",
                                         "FILE",   "MATERIAL", "BLOCK_CONTINUATION", "SCRIPTS"};

constexpr std::string_view COORDINATES_ONLY = "change_coords_only";
constexpr std::string_view PART_CHANGES = "changing_geometry_per_part";

// Blanks separate them, but not within quotes.
Words wordsOf(const std::string& text) {
    Words words;
    std::istringstream stream(text);
    while (stream >> std::ws && stream.peek() != std::istringstream::traits_type::eof()) {
        std::string word;
        if (stream.peek() == '"') {
            stream.get();
            std::getline(stream, word, '"');
        } else {
            stream >> word;
        }
        words.push_back(word);
    }
    return words;
}

std::string joined(const Words& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::optional<long> wholeNumber(const std::string& word) {
    std::int64_t number = 0;
    const bool isOne = readCaeInteger(word.data(), word.data() + word.size(), &number) &&
                       std::abs(number) <= std::numeric_limits<int>::max();
    return isOne ? std::optional<long>(number) : std::nullopt;
}

std::optional<double> realNumber(const std::string& word) {
    double number = 0.0;
    const bool isOne =
        !word.empty() && readCaeReal(word.data(), word.data() + word.size(), &number) && std::isfinite(number);
    return isOne ? std::optional<double>(number) : std::nullopt;
}

bool hasDigitsToFill(const std::string& name) {
    return name.find('*') != std::string::npos;
}

// Each run of stars becomes the number, with zeros in front if it is shorter.
std::string withNumber(const std::string& name, long number) {
    std::string filled;
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t end = std::min(name.find_first_not_of('*', i), name.size());
        if (end == i) {
            filled += name[i++];
            continue;
        }
        const std::string digits = std::to_string(number);
        filled += std::string(end - i > digits.size() ? end - i - digits.size() : 0, '0') + digits;
        i = end;
    }
    return filled;
}

} // namespace

/// Fills a case from its file, line after line.
class EnSightCaseParser {
public:
    EnSightCaseParser(const std::string& filename, EnSightCase* result, ug::Error* error)
        : m_filename(filename), m_folder(filename.substr(0, filename.find_last_of('/') + 1)), // npos + 1 is 0.
          m_case(*result), m_error(error) {}

    bool run() {
        std::ifstream file(m_filename, std::ios::binary);
        if (!file) {
            return ug::fail(m_error, "cannot be opened");
        }
        for (std::string line; std::getline(file, line);) {
            ++m_line;
            line.erase(std::min(line.find('#'), line.size()));
            if (!readLine(line)) {
                return false;
            }
        }
        return check();
    }

private:
    /// The list of numbers that is being read, which may go on for several lines.
    enum List { NONE, TIMES, NUMBERS, OTHERS };

    bool fail(const std::string& text) {
        return failAt(m_line, text);
    }

    bool failAt(std::size_t line, const std::string& text) {
        return ug::fail(m_error, Str("line " + std::to_string(line) + ": " + text));
    }

    bool failToFind(const std::string& what, const std::string& line) {
        return fail("expected " + what + ", found " + quotedForPeople(line));
    }

    bool readLine(const std::string& line) {
        const std::size_t colon = line.find(':');
        const std::string key = joined(wordsOf(line.substr(0, colon)));
        if (colon == std::string::npos) {
            return key.empty() || readSectionOrNumbers(key, line);
        }
        m_list = NONE;
        const Words words = wordsOf(line.substr(colon + 1));
        if (m_section == "MATERIAL" || m_section == "BLOCK_CONTINUATION" || m_section == "SCRIPTS") {
            return true;
        }
        if (words.empty() && key != "time values" && key != "filename numbers") {
            return failToFind("a name or number behind \"" + key + "\"", line);
        }
        return m_section == "FORMAT"     ? readFormat(key, words, line)
               : m_section == "GEOMETRY" ? readGeometry(key, words, line)
               : m_section == "VARIABLE" ? readVariable(key, words, line)
               : m_section == "TIME"     ? readTime(key, words, line)
               : m_section == "FILE"     ? readFile(key, words, line)
                                         : failToFind("the section FORMAT", line);
    }

    bool readSectionOrNumbers(const std::string& key, const std::string& line) {
        if (std::find(std::begin(SECTIONS), std::end(SECTIONS), key) != std::end(SECTIONS)) {
            m_section = key;
            m_list = NONE;
            if (key == "MATERIAL" || key == "BLOCK_CONTINUATION") {
                m_case.warnings.push_back("the section " + key + " is left out");
            }
            return true;
        }
        if (m_section == "MATERIAL" || m_section == "BLOCK_CONTINUATION" || m_section == "SCRIPTS") {
            return true;
        }
        return m_list != NONE
                   ? addToList(wordsOf(line), line)
                   : failToFind(m_section.empty() ? "the section FORMAT" : "a line of an EnSight Gold case", line);
    }

    bool readFormat(const std::string& key, const Words& words, const std::string& line) {
        m_isGold = key == "type" && joined(words) == "ensight gold";
        return m_isGold || failToFind("\"type: ensight gold\"", line);
    }

    bool readGeometry(const std::string& key, const Words& words, const std::string& line) {
        if (std::find(std::begin(OTHER_GEOMETRY), std::end(OTHER_GEOMETRY), key) != std::end(OTHER_GEOMETRY)) {
            m_case.warnings.push_back("the geometry '" + key + "' is left out");
            return true;
        }
        if (key != "model") {
            return failToFind("\"model: file\"", line);
        }
        if (std::find(words.begin(), words.end(), PART_CHANGES) != words.end()) {
            return fail("meshes with parts that change by themselves (" + std::string(PART_CHANGES) +
                        ") cannot be read");
        }
        const auto option = std::find(words.begin(), words.end(), COORDINATES_ONLY);
        if (option != words.end()) {
            const std::optional<long> step =
                option + 1 == words.end() ? std::optional<long>(0) : wholeNumber(option[1]);
            if (!step || *step < 0) {
                return failToFind("a step behind \"" + std::string(COORDINATES_ONLY) + "\"", line);
            }
            m_case.meshStepOfElements = std::size_t(*step);
        }
        return readFileName(Words(words.begin(), option), 1, &m_case.mesh) || failToFind("a file of the model", line);
    }

    // "[time set] [file set] name file" or, of a mesh, the same without the name.
    bool readFileName(const Words& words, std::size_t nameCount, EnSightFileName* file) {
        if (words.size() < nameCount || words.size() > nameCount + 2 || words.back().empty()) {
            return false;
        }
        int* const sets[] = {&file->timeSet, &file->fileSet};
        for (std::size_t i = 0; i + nameCount < words.size(); ++i) {
            const std::optional<long> number = wholeNumber(words[i]);
            if (!number || *number < 0) {
                return false;
            }
            *sets[i] = int(*number);
        }
        file->name = (words.back()[0] == '/' ? "" : m_folder) + words.back();
        file->line = m_line;
        return true;
    }

    bool readVariable(const std::string& key, const Words& words, const std::string& line) {
        for (const Kind& kind : KINDS) {
            if (key == kind.text) {
                EnSightVariable variable{words[words.size() - std::min<std::size_t>(words.size(), 2)],
                                         kind.mapping,
                                         kind.componentCount,
                                         {}};
                if (!readFileName(words, 2, &variable.file)) {
                    return failToFind("\"" + key + ": [time set] [file set] name file\"", line);
                }
                addVariable(std::move(variable));
                return true;
            }
        }
        for (const OtherKind& kind : OTHER_KINDS) {
            if (key == kind.text) {
                m_list = OTHERS;
                const std::size_t inFront = words.size() > 2 && wholeNumber(words[0]) && !realNumber(words[1]) ? 1 : 0;
                const std::size_t index = kind.wordsBehind != IN_FRONT && words.size() > kind.wordsBehind
                                              ? words.size() - 1 - kind.wordsBehind
                                              : inFront;
                m_case.warnings.push_back("variable '" + words[index] + "' is left out: it is a " + key);
                return true;
            }
        }
        return failToFind("the kind of a variable", line);
    }

    void addVariable(EnSightVariable variable) {
        const bool isKnown = std::any_of(m_case.variables.begin(), m_case.variables.end(), [&](const auto& known) {
            return known.name == variable.name && known.mapping == variable.mapping;
        });
        if (isKnown) {
            m_case.warnings.push_back("variable '" + variable.name + "' is left out: another one has its name");
        } else {
            m_case.variables.push_back(std::move(variable));
        }
    }

    bool readTime(const std::string& key, const Words& words, const std::string& line) {
        const std::optional<long> number = words.empty() ? std::nullopt : wholeNumber(words[0]);
        if (key == "time set") {
            if (!number || *number < 0 || m_case.findTimeSet(int(*number))) {
                return failToFind("the number of a time set that has not been there", line);
            }
            m_case.m_timeSets.push_back({int(*number), m_line});
            return true;
        }
        if (m_case.m_timeSets.empty()) {
            return failToFind("\"time set: number\"", line);
        }
        EnSightCase::TimeSet& set = m_case.m_timeSets.back();
        if (key == "time values" || key == "filename numbers") {
            m_list = key == "time values" ? TIMES : NUMBERS;
            return addToList(words, line);
        }
        if (key == "time values file" || key == "filename numbers file") {
            m_list = key == "time values file" ? TIMES : NUMBERS;
            return addFileToList(words[0], line);
        }
        if (!number || words.size() != 1) {
            return failToFind("a whole number", line);
        }
        if (key == "number of steps" && *number > 0) {
            set.stepCount = std::size_t(*number);
        } else if (key == "filename start number" && *number >= 0) {
            set.firstNumber = number;
        } else if (key == "filename increment") {
            set.increment = *number;
        } else if (key != "maximum time steps") {
            return failToFind("a line of a time set", line);
        }
        return true;
    }

    bool addToList(const Words& words, const std::string& line) {
        for (const std::string& word : words) {
            if (const std::optional<long> number = wholeNumber(word); m_list == NUMBERS && number && *number >= 0) {
                m_case.m_timeSets.back().numbers.push_back(*number);
            } else if (const std::optional<double> time = realNumber(word); m_list == TIMES && time) {
                m_case.m_timeSets.back().times.push_back(*time);
            } else if (m_list != OTHERS || !time) {
                return failToFind("numbers", line);
            }
        }
        return true;
    }

    bool addFileToList(const std::string& name, const std::string& line) {
        std::ifstream file((name.starts_with('/') ? "" : m_folder) + name);
        const Words words{std::istream_iterator<std::string>(file), {}};
        return !words.empty() ? addToList(words, name + ": " + joined(words)) : failToFind("a file of numbers", line);
    }

    bool readFile(const std::string& key, const Words& words, const std::string& line) {
        const std::optional<long> number = wholeNumber(words[0]);
        if (!number || *number < 0) {
            return failToFind("a whole number", line);
        }
        if (key == "file set" && !m_case.findFileSet(int(*number))) {
            m_case.m_fileSets.push_back({int(*number), {}});
            m_fileNumber.reset();
            return true;
        }
        if (key == "filename index") {
            m_fileNumber = number;
            return true;
        }
        if (key != "number of steps" || *number == 0 || m_case.m_fileSets.empty()) {
            return failToFind("a line of a file set", line);
        }
        m_case.m_fileSets.back().files.push_back({m_fileNumber, std::size_t(*number)});
        return true;
    }

    bool check() {
        if (!m_isGold || m_case.mesh.name.empty()) {
            return ug::fail(m_error, m_isGold ? "names no geometry" : "is no EnSight Gold case");
        }
        for (const EnSightCase::TimeSet& set : m_case.m_timeSets) {
            const auto has = [&](std::size_t count) { return count == set.stepCount; };
            if (set.stepCount == 0 || !has(set.times.size()) || !(set.numbers.empty() || has(set.numbers.size()))) {
                return failAt(set.line, "expected a time set of " + std::to_string(set.stepCount) + " steps, found " +
                                            std::to_string(set.times.size()) + " times and " +
                                            std::to_string(set.numbers.size()) + " numbers of files");
            }
        }
        return settle(&m_case.mesh) && std::all_of(m_case.variables.begin(), m_case.variables.end(),
                                                   [this](EnSightVariable& v) { return settle(&v.file); });
    }

    // Finds what a file depends on; one that is there once depends on nothing.
    bool settle(EnSightFileName* file) {
        const bool isNumbered = hasDigitsToFill(file->name);
        if (isNumbered && file->timeSet < 0 && !m_case.m_timeSets.empty()) {
            file->timeSet = m_case.m_timeSets[0].number;
        }
        const EnSightCase::TimeSet* times = m_case.findTimeSet(file->timeSet);
        const EnSightCase::FileSet* files = m_case.findFileSet(file->fileSet);
        if (!times && (file->timeSet >= 0 || isNumbered || files)) {
            return failAt(file->line, "expected a time set that the case file has");
        }
        if (!files && file->fileSet >= 0) {
            return failAt(file->line, "expected a file set that the case file has");
        }
        if (files) {
            const std::size_t steps =
                std::accumulate(files->files.begin(), files->files.end(), std::size_t(0),
                                [](std::size_t sum, const auto& one) { return sum + one.stepCount; });
            const bool hasNumbers =
                std::all_of(files->files.begin(), files->files.end(), [](const auto& one) { return one.number; });
            if (steps < times->stepCount || (isNumbered && !hasNumbers) || (!isNumbered && files->files.size() > 1)) {
                return failAt(file->line,
                              "expected a file set with files for " + std::to_string(times->stepCount) + " steps");
            }
        } else if (isNumbered && times->numbers.empty() && !times->firstNumber) {
            return failAt(file->line, "expected a time set with numbers of files");
        } else if (!isNumbered) {
            file->timeSet = -1;
        }
        return true;
    }

    std::string m_filename;
    std::string m_folder;
    EnSightCase& m_case;
    ug::Error* m_error;
    std::size_t m_line = 0;
    std::string m_section;
    List m_list = NONE;
    bool m_isGold = false;
    std::optional<long> m_fileNumber; ///< In a file set.
};

bool EnSightCase::read(const std::string& filename, ug::Error* error) {
    return EnSightCaseParser(filename, this, error).run();
}

// Those that nothing refers to count when there are no others: then they tell when the only mesh is.
std::vector<double> EnSightCase::times() const {
    std::vector<double> all;
    const auto add = [&](const TimeSet& set) { all.insert(all.end(), set.times.begin(), set.times.end()); };
    const auto addOf = [&](const EnSightFileName& file) {
        if (const TimeSet* set = findTimeSet(file.timeSet)) {
            add(*set);
        }
    };
    addOf(mesh);
    for (const EnSightVariable& variable : variables) {
        addOf(variable.file);
    }
    if (all.empty()) {
        std::for_each(m_timeSets.begin(), m_timeSets.end(), add);
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

EnSightPlace EnSightCase::meshPlace(double time) const {
    const TimeSet* set = findTimeSet(mesh.timeSet);
    if (!set) {
        return {mesh.name};
    }
    std::size_t best = std::size_t(std::min_element(set->times.begin(), set->times.end()) - set->times.begin());
    for (std::size_t step = 0; step < set->times.size(); ++step) {
        if (set->times[step] <= time && set->times[step] >= set->times[best]) {
            best = step;
        }
    }
    return placeOf(mesh, best);
}

EnSightPlace EnSightCase::meshPlaceOfStep(std::size_t step) const {
    const TimeSet* set = findTimeSet(mesh.timeSet);
    return set ? placeOf(mesh, std::min(step, set->stepCount - 1)) : EnSightPlace{mesh.name};
}

std::optional<EnSightPlace> EnSightCase::place(const EnSightVariable& variable, double time) const {
    const TimeSet* set = findTimeSet(variable.file.timeSet);
    if (!set) {
        return EnSightPlace{variable.file.name};
    }
    const auto found = std::find(set->times.begin(), set->times.end(), time);
    return found == set->times.end()
               ? std::nullopt
               : std::optional<EnSightPlace>(placeOf(variable.file, std::size_t(found - set->times.begin())));
}

bool EnSightCase::hasOneMesh() const {
    const TimeSet* set = findTimeSet(mesh.timeSet);
    return !set || set->stepCount == 1;
}

const EnSightCase::TimeSet* EnSightCase::findTimeSet(int number) const {
    const auto found =
        std::find_if(m_timeSets.begin(), m_timeSets.end(), [&](const TimeSet& set) { return set.number == number; });
    return found == m_timeSets.end() ? nullptr : &*found;
}

const EnSightCase::FileSet* EnSightCase::findFileSet(int number) const {
    const auto found =
        std::find_if(m_fileSets.begin(), m_fileSets.end(), [&](const FileSet& set) { return set.number == number; });
    return found == m_fileSets.end() ? nullptr : &*found;
}

EnSightPlace EnSightCase::placeOf(const EnSightFileName& file, std::size_t step) const {
    if (const FileSet* set = findFileSet(file.fileSet)) {
        std::size_t begin = 0;
        auto one = set->files.begin();
        for (; begin + one->stepCount <= step; ++one) {
            begin += one->stepCount;
        }
        return {withNumber(file.name, one->number.value_or(0)), step - begin};
    }
    const TimeSet& times = *findTimeSet(file.timeSet);
    return {withNumber(file.name, times.numbers.empty() ? *times.firstNumber + long(step) * times.increment
                                                        : times.numbers[step])};
}

} // namespace orv::imp::cae
