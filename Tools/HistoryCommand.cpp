#include "Tools/HistoryCommand.h"

#include "Tools/Choice.h"
#include "Tools/ItemIds.h"
#include "Tools/Names.h"
#include "Tools/PlotCommand.h"
#include "Tools/ProgressBar.h"

#include <algorithm>

namespace orvapp {

namespace {

/// Nodes or elements, and how messages speak of them.
struct Items {
    const char* word;
    orv::ug::ResultMapping mapping; ///< What gives them numbers.
    const std::vector<int>& ids;
};

Items itemsOf(const HistoryOptions& options) {
    return options.nodes.empty() ? Items{"element", orv::ug::PER_ELEMENT, options.elements}
                                 : Items{"node", orv::ug::PER_NODE, options.nodes};
}

/// A node or element in a part that has it.
struct Place {
    FilePart part;
    std::size_t index;
};

/// Values at nodes have no element, and the other way round.
void checkMapping(const PlotCommand& command, const Items& items) {
    const orv::ug::ResultMapping mapping = command.scalar().resultMapping();
    const bool isPerNode = mapping == orv::ug::PER_NODE;
    if (isPerNode == (items.mapping == orv::ug::PER_NODE)) {
        return;
    }
    const std::string name = nameOf(command.scalar());
    const std::string otherwise = isPerNode                         ? ", or toElementsArithmetic(" + name + ')'
                                  : mapping == orv::ug::PER_ELEMENT ? ", or toNodesArithmetic(" + name + ')'
                                                                    : "";
    refuse(command.file(), '"' + name + "\" has values at " + (isPerNode ? "nodes" : "elements") + ": ask with " +
                               (isPerNode ? "--node" : "--element") + otherwise);
}

const orv::ug::DataPart& meshOf(const ResultFile& file, const FilePart& part) {
    return *file.source()->state(0)->geometry(part.geometryIndex)->part(part.partIndex);
}

std::vector<Place> placesOf(const ResultFile& file, const std::vector<FilePart>& parts, const Items& items, int id) {
    std::vector<Place> places;
    for (const FilePart& part : parts) {
        const std::vector<int> ids = itemIds(meshOf(file, part), items.mapping);
        const auto found = std::find(ids.begin(), ids.end(), id);
        if (found != ids.end()) {
            places.push_back({part, std::size_t(found - ids.begin())});
        }
    }
    return places;
}

/// "(nodes: 1 to 938)"
std::string rangeText(const ResultFile& file, const std::vector<FilePart>& parts, const Items& items) {
    std::vector<int> all;
    for (const FilePart& part : parts) {
        const std::vector<int> ids = itemIds(meshOf(file, part), items.mapping);
        all.insert(all.end(), ids.begin(), ids.end());
    }
    if (all.empty()) {
        return "";
    }
    const auto [first, last] = std::minmax_element(all.begin(), all.end());
    return std::string(" (") + items.word + "s: " + std::to_string(*first) + " to " + std::to_string(*last) + ')';
}

std::vector<Place> findPlaces(const ResultFile& file, const Items& items, int id, const std::string& partPattern) {
    const std::vector<FilePart> all = file.parts();
    const std::vector<FilePart> parts = picked(all, choose(file, "part", namesOf(all), partPattern));
    std::vector<Place> places = placesOf(file, parts, items, id);
    if (places.empty()) {
        const std::string what = std::string("there is no ") + items.word + ' ' + std::to_string(id);
        std::vector<std::string> elsewhere;
        for (const Place& place : placesOf(file, all, items, id)) {
            elsewhere.push_back(place.part.name);
        }
        refuse(file, elsewhere.empty() ? what + rangeText(file, parts, items)
                                       : what + " in part \"" + partPattern + "\", only in: " + listed(elsewhere));
    }
    return places;
}

orv::ug::HitItem hitItem(const Place& place, const Items& items) {
    orv::ug::HitItem item;
    item.setGeometryIndex(place.part.geometryIndex);
    item.setItemIndex(place.part.partIndex);
    if (items.mapping == orv::ug::PER_NODE) {
        item.setNodeIndex(place.index);
    } else {
        item.setElementIndex(place.index);
    }
    return item;
}

/// The states that have the result, of those that a history is drawn over.
std::vector<std::size_t> drawnStates(const PlotCommand& command) {
    const orv::ug::DataSourceDirectory& directory = command.file().directory();
    std::vector<std::size_t> states = command.file().statesWith(command.scalar());
    const int current = orv::app::Models::instance()->current()->currentStateId();
    for (const orv::ug::StateGroupInfo& group : directory.stateGroupInfos()) {
        if (group.hasStateId(current)) {
            std::erase_if(states, [&](std::size_t i) { return !group.hasStateId(directory.stateInfo(i).id()); });
            break;
        }
    }
    return states;
}

/// A history leaves out what cannot be read without a word. Finds the word.
void requireReadable(const PlotCommand& command) {
    for (const std::size_t state : drawnStates(command)) {
        command.file().load(state, command.scalar());
        command.file().drop(command.scalar());
    }
}

/// What the curve is called.
std::string addCurve(PlotCommand* command, const Items& items, int id, const std::string& partPattern) {
    const ResultFile& file = command->file();
    std::string name = std::string(items.word) + ' ' + std::to_string(id);
    for (const Place& place : findPlaces(file, items, id, partPattern)) {
        orv::plt::Curve* curve = orv::app::Plots::instance()->addHistoryCurve(
            command->plotIndex(), hitItem(place, items), orv::app::Models::instance()->current(),
            command->scalar().id());
        if (curve) {
            if (curve->pointCount() < drawnStates(*command).size()) {
                requireReadable(*command);
            }
            name += file.parts().size() > 1 ? " (" + place.part.name + ')' : "";
            command->addCurve(curve, name, {});
            return name;
        }
    }
    requireReadable(*command);
    refuse(file, '"' + nameOf(command->scalar()) + "\" has no values at " + name);
}

} // namespace

void runHistory(const HistoryOptions& options) {
    const Items items = itemsOf(options);
    PlotCommand command(options.plot);
    checkMapping(command, items);
    const ResultFile& file = command.file();
    file.readMeshes();
    if (!options.state.empty()) {
        const std::vector<std::string> states = namesOf(file.directory().stateInfos());
        orv::app::States::instance()->setCurrentIndex(choose(file, "state", states, options.state).front());
    }
    std::string about;
    {
        ProgressBar bar(file.path());
        for (std::size_t i = 0; i < items.ids.size(); ++i) {
            bar.setPercent(int(100 * i / items.ids.size()));
            about = addCurve(&command, items, items.ids[i], options.plot.values.part);
        }
    }
    command.write(items.ids.size() > 1 ? std::to_string(items.ids.size()) + ' ' + items.word + 's' : about);
}

} // namespace orvapp
