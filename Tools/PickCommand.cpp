#include "Tools/PickCommand.h"

#include "OrvCore/Defines.h"
#include "Tools/DisplayText.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/PickReport.h"
#include "Tools/ResultWords.h"
#include "Tools/Table.h"

#include <cmath>

namespace orvapp {

namespace {

std::optional<double> definedOrNone(double value) {
    return value == orv::UNDEFINED_DOUBLE || std::isnan(value) ? std::nullopt : std::optional(value);
}

orv::Ray rayOf(const PickOptions& options, const Picture& picture) {
    orv::Ray ray;
    if (options.at.empty()) {
        ray.setOrigin(parseVector(options.ray.at(0)));
        ray.setDirection(parseVector(options.ray.at(1)));
        return ray;
    }
    picture.fit();
    const Pixel pixel = parsePixel(options.at);
    return picture.view().camera()->rayThrough(pixel.x + 0.5, pixel.y + 0.5, picture.size().width,
                                               picture.size().height);
}

/// The number that the shape has where the ray meets it.
std::optional<double> valueSeen(const orv::ug::UnstructGridModel& model, const orv::Ray& ray) {
    orv::vis::RayHit hit;
    if (!model.scene()->intersect(ray, &hit)) {
        return std::nullopt;
    }
    return definedOrNone(scalarAt(model.shapes()[hit.mesh], hit));
}

/// At the node or in the element that was hit; averaged where an element has several numbers.
std::optional<double> valueOfItem(const Picture& picture, const orv::ug::HitItem& hit) {
    const orv::ug::ResultInfo& result = picture.result();
    const std::size_t index = result.resultMapping() == orv::ug::PER_NODE ? hit.nodeIndex() : hit.elementIndex();
    const std::vector<orv::ug::ResultsQueryItem> items = {{hit.itemIndex(), index}};
    std::vector<orv::ug::ResultsQueryResult> values;
    orv::ug::ResultsQuery query(picture.file().source());
    return query.scalars(result.id(), hit.stateId(), hit.geometryIndex(), &items, &values)
               ? definedOrNone(values.front().averageSubItemScalar())
               : std::nullopt;
}

std::string partNameOf(const Picture& picture, const orv::ug::HitItem& hit) {
    for (const orv::ug::PartInfo& part : picture.file().directory().partInfos(hit.geometryIndex())) {
        if (part.id() == hit.partId()) {
            return part.name().toStdString();
        }
    }
    return "";
}

void addItemOnPart(const Picture& picture, const orv::ug::HitItem& hit, PickedItem* item) {
    const orv::ug::DataState* state = picture.file().source()->currentState(&picture.model());
    const orv::ug::DataPart* part = state->geometry(hit.geometryIndex())->part(hit.itemIndex());
    item->element = part->elements()->elementId(hit.elementIndex());
    item->node = part->nodes()->nodeId(hit.nodeIndex());
    if (hit.elementLocalSurfaceIndex() != orv::UNDEFINED_SIZE_T) {
        item->surface = hit.elementLocalSurfaceIndex();
    }
    if (picture.result().isValid()) {
        item->itemValue = valueOfItem(picture, hit);
    }
}

std::optional<PickedItem> itemMetBy(const orv::Ray& ray, const Picture& picture) {
    orv::ug::HitItem hit;
    if (!picture.model().rayIntersect(ray, &hit)) {
        return std::nullopt;
    }
    PickedItem item;
    item.part = partNameOf(picture, hit);
    item.isSection = hit.itemType() == orv::ug::HitItem::CUTTING_PLANE;
    item.point = hit.coordinate();
    item.value = valueSeen(picture.model(), ray);
    if (!item.isSection) {
        addItemOnPart(picture, hit, &item);
    }
    return item;
}

template <class Number>
std::string numberText(const std::optional<Number>& number) {
    return number ? std::to_string(*number) : "-";
}

std::string valueText(const std::optional<double>& value) {
    return value ? briefNumber(*value) : "-";
}

std::string pickText(const PickOptions& options, const PickReport& report) {
    const std::string where =
        options.at.empty() ? "ray from " + options.ray[0] + " along " + options.ray[1] : "pixel " + options.at;
    const std::string head = where + ", state \"" + printable(report.state) + '"';
    if (!report.item) {
        return head + ": nothing is seen there\n";
    }
    const PickedItem& item = *report.item;
    std::vector<Table::Column> columns = {{"Part"},
                                          {"Element", Table::RIGHT},
                                          {"Surface", Table::RIGHT},
                                          {"Node", Table::RIGHT},
                                          {"X", Table::RIGHT},
                                          {"Y", Table::RIGHT},
                                          {"Z", Table::RIGHT}};
    std::vector<std::string> cells = {item.part + (item.isSection ? " (section)" : ""),
                                      numberText(item.element),
                                      numberText(item.surface),
                                      numberText(item.node),
                                      briefNumber(item.point.x()),
                                      briefNumber(item.point.y()),
                                      briefNumber(item.point.z())};
    if (!report.result.empty()) {
        columns.insert(columns.end(), {{"Value", Table::RIGHT}, {"at " + report.place, Table::RIGHT}});
        cells.insert(cells.end(), {valueText(item.value), valueText(item.itemValue)});
    }
    Table table(columns);
    table.addRow(cells);
    return head + (report.result.empty() ? "" : ", " + printable(report.result)) + '\n' + table.text();
}

} // namespace

void runPick(const PickOptions& options) {
    const Picture picture(options.picture);
    const std::size_t state = picture.onlyState();
    picture.show(state);
    PickReport report;
    report.state = picture.stateName(state);
    if (picture.result().isValid()) {
        report.result = picture.result().name().toStdString();
        report.place = placeWord(picture.result().resultMapping());
    }
    report.item = itemMetBy(rayOf(options, picture), picture);
    writeStandardOutput(options.json ? pickJson(report) : pickText(options, report));
}

} // namespace orvapp
