#include "Tools/InfoCommand.h"

#include "Tools/DisplayText.h"
#include "Tools/InfoReport.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/PasswordFile.h"
#include "Tools/ResultFile.h"
#include "Tools/ResultWords.h"
#include "Tools/Table.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvapp {

namespace {

std::vector<StateRow> stateRows(const ResultFile& file) {
    std::vector<StateRow> rows;
    for (const orv::ug::StateInfo& state : file.directory().stateInfos()) {
        rows.push_back({rows.size(), state.id(), state.name().toStdString(), referenceTypeWord(state.referenceType()),
                        state.referenceValue()});
    }
    return rows;
}

std::vector<std::vector<int>> stateGroups(const ResultFile& file) {
    std::vector<std::vector<int>> groups;
    for (const orv::ug::StateGroupInfo& group : file.directory().stateGroupInfos()) {
        std::vector<int>& ids = groups.emplace_back();
        for (std::size_t i = 0; i < group.stateCount(); ++i) {
            ids.push_back(group.stateId(i));
        }
    }
    return groups;
}

std::vector<std::pair<std::string, std::size_t>> elementTypes(const orv::ug::DataElements& elements) {
    std::array<std::size_t, orv::ug::ELEMENT_TYPE_COUNT> counts{};
    for (const orv::ug::ElementType type : elements.types()) {
        ++counts[type];
    }
    std::vector<std::pair<std::string, std::size_t>> types;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] > 0) {
            types.emplace_back(orv::ug::elementTypeInfo(orv::ug::ElementType(i)).name, counts[i]);
        }
    }
    return types;
}

std::vector<PartRow> partRows() {
    const orv::app::Parts* parts = orv::app::Parts::instance();
    std::vector<PartRow> rows;
    for (std::size_t i = 0; i < parts->count(); ++i) {
        orv::ug::DataPart* part = parts->get(i);
        rows.push_back({i, parts->geometryIndex(i), part->partId(), parts->info(i).name().toStdString(),
                        part->nodes()->nodeCount(), part->elements()->elementCount(), elementTypes(*part->elements())});
    }
    return rows;
}

std::vector<ResultRow> resultRows(const ResultFile& file) {
    std::vector<ResultRow> rows;
    for (const orv::ug::ResultInfo& result : file.results()) {
        rows.push_back({rows.size(), result.id(), result.name().toStdString(), typeWord(result.type()),
                        mappingWord(result.resultMapping()), result.isCustom(), file.statesWith(result).size()});
    }
    return rows;
}

ModelReport modelReport(const ResultFile& file, const FileCase& fileCase) {
    file.readMeshes();
    ModelReport report;
    report.caseId = fileCase.id;
    report.caseName = fileCase.name;
    report.file = file.directory().simulationInfo().filename().toStdString();
    report.title = file.directory().simulationInfo().title().toStdString();
    report.states = stateRows(file);
    report.stateGroups = stateGroups(file);
    report.parts = partRows();
    report.results = resultRows(file);
    for (const orv::Str& warning : file.directory().warnings()) {
        report.warnings.push_back(warning.toStdString());
    }
    return report;
}

/// The position of the group that a state is in; nothing when it is in none.
std::string groupText(const ModelReport& report, int stateId) {
    for (std::size_t i = 0; i < report.stateGroups.size(); ++i) {
        const std::vector<int>& ids = report.stateGroups[i];
        if (std::find(ids.begin(), ids.end(), stateId) != ids.end()) {
            return std::to_string(i);
        }
    }
    return "";
}

std::string statesText(const ModelReport& report) {
    const bool hasGroups = !report.stateGroups.empty();
    std::vector<Table::Column> columns = {
        {"Index", Table::RIGHT}, {"Id", Table::RIGHT}, {"Name"}, {"Kind"}, {"Value", Table::RIGHT}};
    if (hasGroups) {
        columns.push_back({"Group", Table::RIGHT});
    }
    Table table(std::move(columns));
    for (const StateRow& state : report.states) {
        std::vector<std::string> cells = {std::to_string(state.index), std::to_string(state.id), state.name,
                                          state.referenceType, exactNumber(state.referenceValue)};
        if (hasGroups) {
            cells.push_back(groupText(report, state.id));
        }
        table.addRow(std::move(cells));
    }
    return counted(report.states.size(), "state") + '\n' + table.text();
}

std::string elementTypesText(const PartRow& part) {
    std::string text;
    for (const auto& [type, count] : part.elementTypes) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + ' ' + type;
    }
    return text;
}

std::string partsText(const ModelReport& report) {
    Table table({{"Index", Table::RIGHT},
                 {"Geometry", Table::RIGHT},
                 {"Id", Table::RIGHT},
                 {"Name"},
                 {"Nodes", Table::RIGHT},
                 {"Elements", Table::RIGHT},
                 {"Element types"}});
    for (const PartRow& part : report.parts) {
        table.addRow({std::to_string(part.index), std::to_string(part.geometry), std::to_string(part.id), part.name,
                      std::to_string(part.nodes), std::to_string(part.elements), elementTypesText(part)});
    }
    return counted(report.parts.size(), "part") + '\n' + table.text();
}

std::string resultsText(const ModelReport& report) {
    Table table(
        {{"Index", Table::RIGHT}, {"Id", Table::RIGHT}, {"Name"}, {"Type"}, {"Per"}, {"In states", Table::RIGHT}});
    for (const ResultRow& result : report.results) {
        table.addRow({std::to_string(result.index), std::to_string(result.id), result.name, result.type, result.mapping,
                      std::to_string(result.states)});
    }
    return counted(report.results.size(), "result") + '\n' + table.text();
}

std::string infoText(const ModelReport& report) {
    std::string text = "File   " + printable(report.file);
    text += report.furtherFiles.empty() ? "\n" : " and " + std::to_string(report.furtherFiles.size()) + " more\n";
    if (report.caseId >= 0) {
        text += "Case   " + std::to_string(report.caseId) + "  " + printable(report.caseName) + '\n';
    }
    if (!report.title.empty()) {
        text += "Title  " + printable(report.title) + '\n';
    }
    return text + '\n' + statesText(report) + '\n' + partsText(report) + '\n' + resultsText(report);
}

std::string infoText(const std::vector<ModelReport>& reports) {
    std::string text;
    for (const ModelReport& report : reports) {
        text += (text.empty() ? "" : "\n") + infoText(report);
    }
    return text;
}

} // namespace

void runInfo(const InfoOptions& options) {
    const std::string password = readPassword(options.passwordFile);
    std::vector<ModelReport> reports;
    InputFiles files = options.file;
    const bool isOne = files.further.empty();
    for (const FileCase& fileCase :
         isOne ? casesIn(files.first, password) : std::vector<FileCase>{{files.first, -1, ""}}) {
        files.first = fileCase.path;
        const ResultFile file(files, password);
        reports.push_back(modelReport(file, fileCase));
        reports.back().furtherFiles = files.further;
    }
    writeStandardOutput(options.json ? infoJson(reports) : infoText(reports));
}

} // namespace orvapp
