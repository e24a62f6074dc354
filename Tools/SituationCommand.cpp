#include "Tools/SituationCommand.h"

#include "Tools/CommandError.h"
#include "Tools/DisplayText.h"
#include "Tools/JsonReports.h"
#include "Tools/Output.h"
#include "Tools/QuietLog.h"
#include "Tools/SituationPlaces.h"
#include "Tools/SituationReport.h"
#include "Tools/Table.h"

namespace orvapp {

namespace {

constexpr std::size_t DESCRIPTION_COLUMNS = 40;

SituationsReport reportOf(const std::vector<PlacedSituation>& situations) {
    SituationsReport report;
    for (const auto& [place, situation] : situations) {
        SituationRow row = {place,
                            situation->name().toStdString(),
                            situation->description().toStdString(),
                            situation->sourceModelFile().toStdString(),
                            {}};
        for (const auto& [key, value] : situation->allUserData()) {
            row.userData[key.toStdString()] = value.toStdString();
        }
        report.rows.push_back(row);
    }
    return report;
}

std::string situationsText(const SituationsReport& report) {
    Table table({{"Situation"}, {"Name"}, {"Model"}, {"Description"}});
    for (const SituationRow& row : report.rows) {
        table.addRow({row.place, row.name, row.file, shortened(row.description, DESCRIPTION_COLUMNS)});
    }
    return counted(report.rows.size(), "situation") + '\n' + (report.rows.empty() ? "" : table.text());
}

std::string numberedFolder(const std::string& folder, std::size_t number) {
    return folder + '/' + orv::Str("situation_%0").arg(int(number), 3, '0').toStdString();
}

} // namespace

void runSituationList(const SituationListOptions& options) {
    writeSituations(situationsAt(options.places), options.json);
}

void runSituationRename(const SituationRenameOptions& options) {
    if (!holdsSituation(options.folder)) {
        throw CommandError(options.folder + ": there is no situation in it");
    }
    const PlacedSituation placed = situationAt(options.folder);
    orv::ug::Situation* situation = placed.situation.get();
    orv::app::Situations* catalogue = orv::app::Situations::instance();
    catalogue->add(situation);
    const orv::Str description = options.description ? orv::Str(*options.description) : situation->description();
    const QuietLog quiet;
    if (!catalogue->updateSituationInfo(catalogue->situationIndex(situation), options.folder, options.name,
                                        description)) {
        throw CommandError("cannot write to the folder \"" + options.folder + '"');
    }
    writeSituations({placed}, options.json);
}

void runSituationExport(const SituationExportOptions& options) {
    const std::string& archive = options.places.back();
    const std::vector<std::string> places(options.places.begin(), options.places.end() - 1);
    std::vector<PlacedSituation> situations = situationsAt(places);
    writeArchive(situations, archive);
    for (std::size_t i = 0; i < situations.size(); ++i) {
        situations[i].place = archive + '|' + std::to_string(i + 1);
    }
    writeSituations(situations, options.json);
}

void runSituationImport(const SituationImportOptions& options) {
    std::vector<PlacedSituation> situations = situationsAt(options.archive);
    for (std::size_t i = 0; i < situations.size(); ++i) {
        situations[i].place = numberedFolder(options.folder, i + 1);
        writeSituation(*situations[i].situation, situations[i].place);
    }
    writeSituations(situations, options.json);
}

void runSituationRecover(const SituationRecoverOptions& options) {
    orv::app::Situations* catalogue = orv::app::Situations::instance();
    catalogue->setRecoveryFolder(options.folder);
    if (!catalogue->recoverySituationExists()) {
        throw CommandError(options.folder + ": there is nothing to recover");
    }
    const QuietLog quiet;
    PlacedSituation recovered = {options.folder, catalogue->loadRecovery()};
    if (!recovered.situation) {
        recovered = situationAt(options.folder); // which tells why not
    }
    if (!options.target.empty()) {
        writeSituation(*recovered.situation, options.target);
        recovered.place = options.target;
    }
    if (options.removes) {
        catalogue->removeRecovery();
    }
    writeSituations({recovered}, options.json);
}

void writeSituations(const std::vector<PlacedSituation>& situations, bool json) {
    const SituationsReport report = reportOf(situations);
    writeStandardOutput(json ? situationsJson(report) : situationsText(report));
}

} // namespace orvapp
