#include "OrvImportVtk/EnSightSource.h"

#include <vtkDataArray.h>
#include <vtkDataArrayCollection.h>
#include <vtkDataArraySelection.h>
#include <vtkDataObject.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace orv::imp::cae {
namespace {

struct Kind {
    std::string_view text;
    ug::ResultMapping mapping;
    int componentCount;
};

// VTK turns their six components, XX YY ZZ XY XZ YZ, into its own order, and so into ours.
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

constexpr std::string_view OTHER_KINDS[] = {
    "constant per case",       "constant per case file",  "scalar per measured node",   "vector per measured node",
    "complex scalar per node", "complex vector per node", "complex scalar per element", "complex vector per element"};

constexpr std::string_view SECTIONS[] = {"FORMAT", "GEOMETRY", "VARIABLE", "TIME", "FILE"};

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

bool areNumbers(const std::vector<std::string>& words) {
    return std::all_of(words.begin(), words.end(), [](const std::string& word) {
        char* end = nullptr;
        std::strtod(word.c_str(), &end);
        return *end == '\0';
    });
}

/// A case file. VTK's reader does not tell of what kind variables are, nor whether meshes change; and it runs into
/// nothing, or on and on, where a case file is not as it has to be.
class Case {
public:
    bool read(const std::string& filename, ug::Error* error) {
        std::ifstream file(filename);
        if (!file) {
            return ug::fail(error, "cannot be opened");
        }
        std::size_t number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            line.erase(std::min(line.find('#'), line.size()));
            if (!readLine(line)) {
                return ug::fail(error, Str("line " + std::to_string(number) +
                                           " is not one of an EnSight Gold case: \"" + line.substr(0, 60) + "\""));
            }
        }
        if (!m_isGold || !m_hasModel) {
            return ug::fail(error, m_isGold ? "names no geometry" : "is no EnSight Gold case");
        }
        if (m_timesMissing != 0 || (m_hasPatterns && !m_hasNumbers)) {
            return ug::fail(error, "does not tell all of its times, or the numbers of its files");
        }
        return true;
    }

    std::vector<VtkArray> arrays;
    std::vector<std::string> warnings;
    bool hasOneMesh = true;

private:
    bool readLine(const std::string& line) {
        const std::size_t colon = line.find(':');
        const std::string key = joined(wordsOf(line.substr(0, colon)));
        if (key.empty()) {
            return colon == std::string::npos;
        }
        if (colon == std::string::npos) {
            if (m_section == "TIME" && areNumbers(wordsOf(line))) {
                m_timesMissing -= long(wordsOf(line).size()) * m_isListingTimes;
                return true;
            }
            m_section = key;
            return std::find(std::begin(SECTIONS), std::end(SECTIONS), key) != std::end(SECTIONS);
        }
        const std::vector<std::string> words = wordsOf(line.substr(colon + 1));
        if (words.empty() && key != "time values" && key != "filename numbers") {
            return false;
        }
        return m_section == "FORMAT"     ? readFormat(key, words)
               : m_section == "GEOMETRY" ? readGeometry(key, words)
               : m_section == "VARIABLE" ? readVariable(key, words)
               : m_section == "TIME"     ? readTime(key, words)
                                         : m_section == "FILE";
    }

    bool readFormat(const std::string& key, const std::vector<std::string>& words) {
        m_isGold = key == "type" && joined(words) == "ensight gold";
        return m_isGold;
    }

    bool readGeometry(const std::string& key, const std::vector<std::string>& words) {
        if (key == "model") {
            m_hasModel = true;
            hasOneMesh = std::none_of(words.begin(), words.end(),
                                      [](const std::string& word) { return word.find('*') != std::string::npos; });
            m_hasPatterns = m_hasPatterns || !hasOneMesh;
        }
        return key == "model" || key == "measured" || key == "boundary";
    }

    // "kind: [time set] [file set] name file"
    bool readVariable(const std::string& key, const std::vector<std::string>& words) {
        if (words.size() < 2) {
            return false;
        }
        const std::string& name = words[words.size() - 2];
        m_hasPatterns = m_hasPatterns || words.back().find('*') != std::string::npos;
        for (const Kind& kind : KINDS) {
            if (key == kind.text) {
                arrays.push_back({name, kind.mapping, kind.componentCount});
                return true;
            }
        }
        warnings.push_back("variable '" + (key.starts_with("constant") ? words[0] : name) + "' is left out: it is a " +
                           key);
        return std::find(std::begin(OTHER_KINDS), std::end(OTHER_KINDS), key) != std::end(OTHER_KINDS);
    }

    bool readTime(const std::string& key, const std::vector<std::string>& words) {
        m_isListingTimes = key == "time values";
        m_hasNumbers = m_hasNumbers || key == "filename start number" || key == "filename numbers";
        if (key == "time set") {
            return areNumbers({words[0]});
        }
        if (key == "number of steps") {
            m_timesMissing += std::atol(words[0].c_str());
            return m_timesMissing > 0;
        }
        m_timesMissing -= m_isListingTimes ? long(words.size()) : 0;
        return areNumbers(words) && (m_isListingTimes || key == "filename numbers" || key == "filename start number" ||
                                     key == "filename increment");
    }

    std::string m_section;
    bool m_isGold = false;
    bool m_hasModel = false;
    bool m_hasPatterns = false; ///< Some name has numbers in it.
    bool m_hasNumbers = false;
    bool m_isListingTimes = false;
    long m_timesMissing = 0;
};

std::vector<double> timesOf(vtkDataArrayCollection* sets) {
    std::vector<double> times;
    for (int i = 0; sets && i < sets->GetNumberOfItems(); ++i) {
        vtkDataArray* set = sets->GetItem(i);
        for (vtkIdType t = 0; t < set->GetNumberOfTuples(); ++t) {
            times.push_back(set->GetComponent(t, 0));
        }
    }
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

} // namespace

bool EnSightSource::open(const std::string& filename, VtkContents* contents, ug::Error* error) {
    Case read;
    if (!read.read(filename, error)) {
        return false;
    }
    m_reader = vtkSmartPointer<vtkGenericEnSightReader>::New();
    m_reader->SetCaseFileName(filename.c_str());
    if (!updateVtk([this] { m_reader->UpdateInformation(); }, error)) {
        return false;
    }
    m_times = timesOf(m_reader->GetTimeSets());
    m_arrays = read.arrays;
    contents->steps = m_times.empty() ? std::vector{vtkOnlyStep()} : vtkTimeSteps(m_times);
    contents->arrays = m_arrays;
    contents->hasOneMesh = read.hasOneMesh;
    contents->warnings = read.warnings;
    return true;
}

vtkSmartPointer<vtkDataObject> EnSightSource::read(std::size_t step, std::span<const std::size_t> arrays,
                                                   ug::Error* error) {
    vtkDataArraySelection* points = m_reader->GetPointDataArraySelection();
    vtkDataArraySelection* cells = m_reader->GetCellDataArraySelection();
    points->DisableAllArrays();
    cells->DisableAllArrays();
    for (const std::size_t array : arrays) {
        (m_arrays[array].mapping == ug::PER_NODE ? points : cells)->EnableArray(m_arrays[array].name.c_str());
    }
    if (!m_times.empty()) {
        m_reader->SetTimeValue(m_times[step]);
    }
    return updateVtk([this] { m_reader->Update(); }, error) ? m_reader->GetOutputDataObject(0) : nullptr;
}

void EnSightSource::release() {
    m_reader->GetOutputDataObject(0)->ReleaseData();
}

} // namespace orv::imp::cae
