#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/SituationCommand.h"
#include "Tools/SituationPicture.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* SITUATION_FOOTER = R"(Examples:
  orvapp situation capture bracket.frd front --result 'vonMises(STRESS)' --view front
  orvapp situation list front side all.zip
  orvapp situation rename front "Load case 1" --description "as delivered"
  orvapp situation export front side all.zip
  orvapp situation apply 'all.zip|2' side.png
  orvapp situation import all.zip copies
  orvapp situation recover ~/.app/recovery rescued --remove

A situation is what a picture shows: the file of the model, its state, results, parts and sections, and camera, colours
and background. It is kept in a folder of its own, in a single file, or with others in an archive, which is a zip file;
'all.zip|2' is the second one in it. A place is any of these.

The JSON of all commands but apply has the keys
  {"situations": [{"place", "name", "description", "file", "userData": {}}]})";

void addJson(CLI::App* command, bool* json) {
    command->add_flag("--json", *json, "Print JSON for scripts in place of a table");
}

Command addCapture(CLI::App* situation) {
    auto options = std::make_shared<SituationCaptureOptions>();
    CLI::App* capture = situation->add_subcommand("capture", "Keep what orvapp render would draw");
    addPicture(capture, &options->picture);
    addLook(capture, &options->look);
    capture->add_option("FOLDER", options->folder, "The folder to make for the situation")->required()->type_name("");
    capture->add_option("--name", options->name, "Its name; otherwise that of the file")->type_name("TEXT");
    capture->add_option("--description", options->description, "What there is to say about it")->type_name("TEXT");
    capture->add_flag("--recovery", options->isRecovery, "For recovery, in place of an earlier one in the folder");
    addJson(capture, &options->json);
    capture->footer(expressionHelp());
    return {capture, [options] { runSituationCapture(*options); }};
}

Command addApply(CLI::App* situation) {
    auto options = std::make_shared<SituationApplyOptions>();
    CLI::App* apply = situation->add_subcommand("apply", "Draw the picture of a situation");
    apply->add_option("PLACE", options->place, "A folder, a file, or one in an archive")->required()->type_name("");
    apply->add_option("OUT", options->out, "The picture to write; its name ends in .png")->required()->type_name("");
    apply->add_option("--file", options->file, "The result file, when it is no longer where it was")->type_name("F");
    apply->add_option("--size", options->size, "Of the picture, in pixels; otherwise as when it was captured")
        ->type_name("WxH")
        ->check(understoodBy(parseSize));
    addPasswordFile(apply, &options->passwordFile);
    return {apply, [options] { runSituationApply(*options); }};
}

Command addList(CLI::App* situation) {
    auto options = std::make_shared<SituationListOptions>();
    CLI::App* list = situation->add_subcommand("list", "List the situations at some places");
    list->add_option("PLACE...", options->places, "Folders, files or archives")->required()->type_name("");
    addJson(list, &options->json);
    return {list, [options] { runSituationList(*options); }};
}

Command addRename(CLI::App* situation) {
    auto options = std::make_shared<SituationRenameOptions>();
    CLI::App* rename = situation->add_subcommand("rename", "Give the situation in a folder another name");
    rename->add_option("FOLDER", options->folder, "The folder of the situation")->required()->type_name("");
    rename->add_option("NAME", options->name, "The new name")->required()->type_name("");
    rename->add_option("--description", options->description, "A new description; otherwise the old one stays")
        ->type_name("TEXT");
    addJson(rename, &options->json);
    return {rename, [options] { runSituationRename(*options); }};
}

Command addExport(CLI::App* situation) {
    auto options = std::make_shared<SituationExportOptions>();
    CLI::App* command = situation->add_subcommand("export", "Write situations to an archive");
    command->add_option("PLACE... ARCHIVE", options->places, "Folders, files or archives, and the archive to write")
        ->required()
        ->expected(2, -1)
        ->type_name("");
    addJson(command, &options->json);
    return {command, [options] { runSituationExport(*options); }};
}

Command addImport(CLI::App* situation) {
    auto options = std::make_shared<SituationImportOptions>();
    CLI::App* command = situation->add_subcommand("import", "Make folders of the situations in an archive");
    command->add_option("ARCHIVE", options->archive, "The archive")->required()->type_name("");
    command->add_option("FOLDER", options->folder, "Where to make the folders situation_001 and so on")
        ->required()
        ->type_name("");
    addJson(command, &options->json);
    return {command, [options] { runSituationImport(*options); }};
}

Command addRecover(CLI::App* situation) {
    auto options = std::make_shared<SituationRecoverOptions>();
    CLI::App* recover = situation->add_subcommand("recover", "Tell, keep or remove what was left for recovery");
    recover->add_option("FOLDER", options->folder, "The recovery folder of an application")->required()->type_name("");
    recover->add_option("SITUATION", options->target, "A folder to keep the situation in")->type_name("");
    recover->add_flag("--remove", options->removes, "Delete the recovery behind that");
    addJson(recover, &options->json);
    return {recover, [options] { runSituationRecover(*options); }};
}

} // namespace

Command addSituation(CLI::App* program) {
    CLI::App* situation = program->add_subcommand("situation", "Keep what a picture shows, and show it again");
    situation->require_subcommand(1);
    situation->get_formatter()->label("SUBCOMMAND", "COMMAND ...");
    auto commands = std::make_shared<std::vector<Command>>();
    for (Command (*add)(CLI::App*) : {addCapture, addList, addApply, addRename, addExport, addImport, addRecover}) {
        commands->push_back(add(situation));
        commands->back().options->group("Commands");
    }
    situation->footer(SITUATION_FOOTER);
    const auto run = [commands] {
        for (const Command& command : *commands) {
            if (command.options->parsed()) {
                command.run();
            }
        }
    };
    return {situation, run, true};
}

} // namespace orvapp
