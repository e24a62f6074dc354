#include "Tools/EnvelopeCommand.h"

#include "OrvCore/Defines.h"
#include "Tools/DisplayText.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionResult.h"
#include "Tools/JsonReports.h"
#include "Tools/NumberText.h"
#include "Tools/Output.h"
#include "Tools/PasswordFile.h"
#include "Tools/ResultFile.h"
#include "Tools/ResultWords.h"
#include "Tools/Statistics.h"
#include "Tools/Table.h"
#include "Tools/ValuesCsv.h"
#include "Tools/ValuesWalk.h"

namespace orvapp {

namespace {

EnvelopeExtreme foundIn(const PartValues& part, const Extreme& extreme) {
    return {extreme.value,
            part.state.name().toStdString(),
            referenceTypeWord(part.state.referenceType()),
            part.state.referenceValue(),
            part.part.name,
            part.ids[extreme.item]};
}

void widen(EnvelopeRow* row, const PartValues& part, const Statistics& statistics) {
    row->count += statistics.count;
    row->undefined += statistics.undefined;
    if (statistics.min && (!row->min || statistics.min->value < row->min->value)) {
        row->min = foundIn(part, *statistics.min);
    }
    if (statistics.max && (!row->max || statistics.max->value > row->max->value)) {
        row->max = foundIn(part, *statistics.max);
    }
}

/// Calls add(row, "minimum" or "maximum", the extreme or nothing) for all there are.
template <class Add>
void forEachExtreme(const EnvelopeReport& report, Add add) {
    for (const EnvelopeRow& row : report.rows) {
        add(row, "minimum", row.min);
        add(row, "maximum", row.max);
    }
}

std::string referenceText(const EnvelopeExtreme& extreme) {
    return extreme.referenceValue == orv::UNDEFINED_DOUBLE
               ? "-"
               : extreme.referenceType + ' ' + briefNumber(extreme.referenceValue);
}

std::string undefinedText(const EnvelopeReport& report) {
    std::size_t undefined = 0;
    std::size_t count = 0;
    for (const EnvelopeRow& row : report.rows) {
        undefined += row.undefined;
        count += row.count;
    }
    return undefined == 0 ? "" : std::to_string(undefined) + " of " + counted(count, "value") + " undefined\n";
}

std::string envelopeText(const EnvelopeReport& report) {
    Table table({{"Component"},
                 {"Extreme"},
                 {"Value", Table::RIGHT},
                 {"State"},
                 {"Reference"},
                 {"Part"},
                 {"at " + report.place, Table::RIGHT}});
    forEachExtreme(report, [&](const EnvelopeRow& row, const char* name, const std::optional<EnvelopeExtreme>& found) {
        table.addRow(found ? std::vector<std::string>{row.component, name, briefNumber(found->value), found->state,
                                                      referenceText(*found), found->part, std::to_string(found->at)}
                           : std::vector<std::string>{row.component, name, "-", "-", "-", "-", "-"});
    });
    return printable(report.expression) + " (" + report.type + ", per " + report.mapping + ") over " +
           counted(report.states, "state") + '\n' + table.text() + undefinedText(report);
}

std::string envelopeCsv(const EnvelopeReport& report) {
    std::string text = "component,extreme,value,state,referenceType,referenceValue,part,id\n";
    forEachExtreme(report, [&](const EnvelopeRow& row, const char* name, const std::optional<EnvelopeExtreme>& found) {
        text += row.component + ',' + name + ',';
        if (found) {
            const bool hasReference = found->referenceValue != orv::UNDEFINED_DOUBLE;
            text += shortestNumber(found->value) + ',' + csvField(found->state) + ',' + found->referenceType + ',' +
                    (hasReference ? shortestNumber(found->referenceValue) : "") + ',' + csvField(found->part) + ',' +
                    std::to_string(found->at) + '\n';
        } else {
            text += ",,,,,\n";
        }
    });
    return text;
}

} // namespace

EnvelopeReport envelopeOf(const ResultFile& file, const ValuesSelection& selection) {
    const orv::ug::ResultInfo& result = selection.result;
    EnvelopeReport report{
        result.name().toStdString(),       typeWord(result.type()), mappingWord(result.resultMapping()),
        placeWord(result.resultMapping()), selection.states.size(), {}};
    for (const std::string& component : componentNames(result.type())) {
        report.rows.push_back({component});
    }
    walkValues(file, selection, [&](const PartValues& part) {
        for (std::size_t i = 0; i < report.rows.size(); ++i) {
            widen(&report.rows[i], part, componentStatistics(part.values, report.rows.size(), i));
        }
    });
    return report;
}

void runEnvelope(const EnvelopeOptions& options) {
    const Expression expression = parseExpression(options.expression);
    const ResultFile file(options.values.file, readPassword(options.values.passwordFile));
    const ExpressionResult built = buildResult(expression, file.results());
    const orv::ug::ResultInfo result = file.add(built.info, options.expression);
    const ValuesSelection selection = selectValues(file, result, options.values);
    std::optional<OutputFile> csv;
    if (!options.values.csv.empty()) {
        csv.emplace(options.values.csv);
    }
    const EnvelopeReport report = envelopeOf(file, selection);
    if (csv) {
        csv->write(envelopeCsv(report));
        csv->commit();
    }
    if (options.values.csv != "-") {
        writeStandardOutput(options.values.json ? envelopeJson(report) : envelopeText(report));
    }
}

} // namespace orvapp
