#include "Tools/ValuesCommand.h"

#include "Tools/DisplayText.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/PasswordFile.h"
#include "Tools/ResultFile.h"
#include "Tools/ResultWords.h"
#include "Tools/Table.h"
#include "Tools/ValuesCsv.h"
#include "Tools/ValuesReport.h"
#include "Tools/ValuesSelection.h"
#include "Tools/ValuesWalk.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace orvapp {

namespace {

std::vector<ValuesRow> rowsOf(const PartValues& part, const std::vector<std::string>& components) {
    std::vector<ValuesRow> rows;
    for (std::size_t i = 0; i < components.size(); ++i) {
        ValuesRow row{part.state.name().toStdString(),
                      part.part.name,
                      components[i],
                      componentStatistics(part.values, components.size(), i),
                      {},
                      {}};
        if (row.statistics.min) {
            row.minAt = part.ids[row.statistics.min->item];
            row.maxAt = part.ids[row.statistics.max->item];
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

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
    const ResultFile file(options.file, readPassword(options.passwordFile));
    reportValues(file, selectValues(file, options), options);
}

void reportValues(const ResultFile& file, const ValuesSelection& selection, const ValuesOptions& options) {
    const orv::ug::ResultInfo& result = selection.result;
    const std::vector<std::string> components = componentNames(result.type());
    std::optional<ValuesCsv> csv;
    if (!options.csv.empty()) {
        csv.emplace(options.csv, components);
    }
    ValuesReport report{result.name().toStdString(),
                        typeWord(result.type()),
                        mappingWord(result.resultMapping()),
                        placeWord(result.resultMapping()),
                        {}};
    walkValues(file, selection, [&](const PartValues& part) {
        if (csv) {
            csv->add(part.state.name().toStdString(), part.part.name, part.ids, part.values);
        }
        std::vector<ValuesRow> rows = rowsOf(part, components);
        std::move(rows.begin(), rows.end(), std::back_inserter(report.rows));
    });
    if (csv) {
        csv->commit();
    }
    if (options.csv != "-") {
        writeStandardOutput(options.json ? valuesJson(report) : valuesText(report));
    }
}

} // namespace orvapp
