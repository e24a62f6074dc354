#include "Tools/JsonReports.h"

#include "OrvCore/Defines.h"
#include "Tools/CurvesReport.h"
#include "Tools/EnvelopeReport.h"
#include "Tools/InfoReport.h"
#include "Tools/PickReport.h"
#include "Tools/SituationReport.h"
#include "Tools/ValuesReport.h"

#include <nlohmann/json.hpp>

namespace orvapp {

namespace {

using Json = nlohmann::ordered_json;

/// A name from a file may be broken UTF-8; it is mended rather than thrown about.
std::string text(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

Json numberOrNull(double value) {
    return value == orv::UNDEFINED_DOUBLE ? Json(nullptr) : Json(value);
}

template <class T>
Json valueOrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json extremeOrNull(const std::optional<Extreme>& extreme) {
    return extreme ? Json(extreme->value) : Json(nullptr);
}

template <class Row, class ToJson>
Json array(const std::vector<Row>& rows, ToJson toJson) {
    Json list = Json::array();
    for (const Row& row : rows) {
        list.push_back(toJson(row));
    }
    return list;
}

Json formatJson(const orv::imp::cae::FormatInfo& format) {
    Json extensions = Json::array();
    for (const orv::Str& extension : format.extensions.split(" ")) {
        extensions.push_back(extension.toStdString());
    }
    return {{"name", format.name.toStdString()},
            {"description", format.description.toStdString()},
            {"extensions", extensions},
            {"contents", format.contents.toStdString()},
            {"module", format.module.isEmpty() ? Json(nullptr) : Json(format.module.toStdString())},
            {"isThere", format.isThere}};
}

Json situationJson(const SituationRow& row) {
    Json userData = Json::object();
    for (const auto& [key, value] : row.userData) {
        userData[key] = value;
    }
    return {{"place", row.place},
            {"name", row.name},
            {"description", row.description},
            {"file", row.file},
            {"userData", userData}};
}

Json stateJson(const StateRow& state) {
    return {{"index", state.index},
            {"id", state.id},
            {"name", state.name},
            {"referenceType", state.referenceType},
            {"referenceValue", numberOrNull(state.referenceValue)}};
}

Json partJson(const PartRow& part) {
    Json types = Json::object();
    for (const auto& [type, count] : part.elementTypes) {
        types[type] = count;
    }
    return {{"index", part.index}, {"geometry", part.geometry}, {"id", part.id},        {"name", part.name},
            {"nodes", part.nodes}, {"elements", part.elements}, {"elementTypes", types}};
}

Json resultJson(const ResultRow& result) {
    return {{"index", result.index}, {"id", result.id},           {"name", result.name},
            {"type", result.type},   {"mapping", result.mapping}, {"custom", result.custom}};
}

Json rowJson(const ValuesRow& row) {
    return {{"state", row.state},
            {"part", row.part},
            {"component", row.component},
            {"count", row.statistics.count},
            {"undefined", row.statistics.undefined},
            {"min", extremeOrNull(row.statistics.min)},
            {"minAt", valueOrNull(row.minAt)},
            {"max", extremeOrNull(row.statistics.max)},
            {"maxAt", valueOrNull(row.maxAt)},
            {"average", valueOrNull(row.statistics.average)}};
}

Json envelopeExtremeJson(const std::optional<EnvelopeExtreme>& extreme) {
    return extreme ? Json{{"value", extreme->value},
                          {"state", extreme->state},
                          {"referenceType", extreme->referenceType},
                          {"referenceValue", numberOrNull(extreme->referenceValue)},
                          {"part", extreme->part},
                          {"at", extreme->at}}
                   : Json(nullptr);
}

Json envelopeRowJson(const EnvelopeRow& row) {
    return {{"component", row.component},
            {"count", row.count},
            {"undefined", row.undefined},
            {"min", envelopeExtremeJson(row.min)},
            {"max", envelopeExtremeJson(row.max)}};
}

Json pointJson(const orv::Vec3d& point) {
    return {point.x(), point.y(), point.z()};
}

Json curveJson(const CurveRow& curve) {
    Json json = {{"name", curve.name}, {"x", array(curve.x, numberOrNull)}, {"y", array(curve.y, numberOrNull)}};
    if (!curve.path.empty()) {
        json["path"] = array(curve.path, pointJson);
    }
    return json;
}

Json pickedItemJson(const PickedItem& item) {
    return {{"part", item.part},
            {"isSection", item.isSection},
            {"element", valueOrNull(item.element)},
            {"surface", valueOrNull(item.surface)},
            {"node", valueOrNull(item.node)},
            {"point", pointJson(item.point)},
            {"value", valueOrNull(item.value)},
            {"itemValue", valueOrNull(item.itemValue)}};
}

Json modelJson(const ModelReport& report) {
    Json model = {{"file", report.file}};
    if (!report.furtherFiles.empty()) {
        model["furtherFiles"] = report.furtherFiles;
    }
    if (report.caseId >= 0) {
        model["case"] = {{"id", report.caseId}, {"name", report.caseName}};
    }
    model.update({{"states", array(report.states, stateJson)},
                  {"stateGroups", report.stateGroups},
                  {"parts", array(report.parts, partJson)},
                  {"results", array(report.results, resultJson)},
                  {"warnings", report.warnings}});
    return model;
}

} // namespace

std::string infoJson(const std::vector<ModelReport>& reports) {
    return text({{"models", array(reports, modelJson)}});
}

std::string valuesJson(const ValuesReport& report) {
    return text({{"result", report.result}, {"rows", array(report.rows, rowJson)}});
}

std::string envelopeJson(const EnvelopeReport& report) {
    return text(
        {{"expression", report.expression}, {"states", report.states}, {"rows", array(report.rows, envelopeRowJson)}});
}

std::string curvesJson(const CurvesReport& report) {
    return text({{"result", report.result},
                 {"mapping", report.mapping},
                 {"x", report.xTitle},
                 {"curves", array(report.curves, curveJson)}});
}

std::string situationsJson(const SituationsReport& report) {
    return text(Json{{"situations", array(report.rows, situationJson)}});
}

std::string pickJson(const PickReport& report) {
    return text({{"state", report.state},
                 {"result", report.result.empty() ? Json(nullptr) : Json(report.result)},
                 {"item", report.item ? pickedItemJson(*report.item) : Json(nullptr)}});
}

std::string formatsJson(const std::vector<orv::imp::cae::FormatInfo>& formats) {
    return text(Json{{"formats", array(formats, formatJson)}});
}

} // namespace orvapp
