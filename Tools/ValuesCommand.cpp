#include "Tools/ValuesCommand.h"

#include "Tools/DisplayText.h"
#include "Tools/ItemIds.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/ProgressBar.h"
#include "Tools/ResultFile.h"
#include "Tools/ResultWords.h"
#include "Tools/Table.h"
#include "Tools/ValuesCsv.h"
#include "Tools/ValuesReport.h"
#include "Tools/ValuesSelection.h"

#include <optional>
#include <utility>

namespace orvapp {

namespace {

/// Goes through the states and parts, one after the other, and collects what there is to say about them.
class ValuesWalk {
public:
    ValuesWalk(const ResultFile& file, const ValuesSelection& selection, ValuesCsv* csv)
        : m_file(file), m_selection(selection), m_csv(csv), m_components(componentNames(selection.result.type())) {}

    void addState(std::size_t stateIndex) {
        orv::ug::DataState* state = m_file.load(stateIndex, m_selection.result);
        const std::string name = m_file.directory().findStateInfo(state->id()).name().toStdString();
        for (const FilePart& part : m_selection.parts) {
            addPart(*state, name, part);
        }
        m_file.drop(m_selection.result);
    }

    std::vector<ValuesRow> takeRows() {
        return std::move(m_rows);
    }

private:
    void addPart(orv::ug::DataState& state, const std::string& stateName, const FilePart& filePart) {
        const orv::ug::DataGeometry* geometry = state.geometry(filePart.geometryIndex);
        const orv::ug::DataResult* result = state.results(geometry)->find(m_selection.result);
        const orv::ug::DataPartValues* values = result ? result->values(filePart.partIndex) : nullptr;
        const std::vector<int> ids = itemIds(*geometry->part(filePart.partIndex), m_selection.result.resultMapping());
        if (!values || values->itemCount() != ids.size()) {
            return;
        }
        if (m_csv) {
            m_csv->add(stateName, filePart.name, ids, values->span());
        }
        for (std::size_t i = 0; i < m_components.size(); ++i) {
            ValuesRow row{stateName,
                          filePart.name,
                          m_components[i],
                          componentStatistics(values->span(), m_components.size(), i),
                          {},
                          {}};
            if (row.statistics.min) {
                row.minAt = ids[row.statistics.min->item];
                row.maxAt = ids[row.statistics.max->item];
            }
            m_rows.push_back(std::move(row));
        }
    }

    const ResultFile& m_file;
    const ValuesSelection& m_selection;
    ValuesCsv* m_csv;
    std::vector<std::string> m_components;
    std::vector<ValuesRow> m_rows;
};

std::string valueText(const std::optional<Extreme>& extreme) {
    return extreme ? briefNumber(extreme->value) : "-";
}

std::string placeText(const std::optional<int>& place) {
    return place ? std::to_string(*place) : "-";
}

std::string valuesText(const ValuesReport& report) {
    const std::string place = "at " + report.place;
    Table table({{"State"},
                 {"Part"},
                 {"Component"},
                 {"Count", Table::RIGHT},
                 {"Undefined", Table::RIGHT},
                 {"Minimum", Table::RIGHT},
                 {place, Table::RIGHT},
                 {"Maximum", Table::RIGHT},
                 {place, Table::RIGHT},
                 {"Average", Table::RIGHT}});
    for (const ValuesRow& row : report.rows) {
        const Statistics& statistics = row.statistics;
        table.addRow({row.state, row.part, row.component, std::to_string(statistics.count),
                      std::to_string(statistics.undefined), valueText(statistics.min), placeText(row.minAt),
                      valueText(statistics.max), placeText(row.maxAt),
                      statistics.average ? briefNumber(*statistics.average) : "-"});
    }
    return printable(report.result) + " (" + report.type + ", per " + report.mapping + ")\n" + table.text();
}

} // namespace

void runValues(const ValuesOptions& options) {
    const ResultFile file(options.file);
    const ValuesSelection selection = selectValues(file, options);
    const orv::ug::ResultInfo& result = selection.result;

    std::optional<ValuesCsv> csv;
    if (!options.csv.empty()) {
        csv.emplace(options.csv, componentNames(result.type()));
    }
    ValuesReport report{result.name().toStdString(),
                        typeWord(result.type()),
                        mappingWord(result.resultMapping()),
                        placeWord(result.resultMapping()),
                        {}};
    ValuesWalk walk(file, selection, csv ? &*csv : nullptr);
    {
        ProgressBar progress("Reading " + report.result);
        for (std::size_t i = 0; i < selection.states.size(); ++i) {
            progress.setPercent(int(100 * i / selection.states.size()));
            walk.addState(selection.states[i]);
        }
    }
    report.rows = walk.takeRows();
    if (csv) {
        csv->commit();
    }
    if (options.csv != "-") {
        writeStandardOutput(options.json ? valuesJson(report) : valuesText(report));
    }
}

} // namespace orvapp
