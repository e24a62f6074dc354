#include "Tools/ConvertCommand.h"

#include "Tools/Choice.h"
#include "Tools/CommandError.h"
#include "Tools/DisplayText.h"
#include "Tools/Names.h"
#include "Tools/Output.h"
#include "Tools/PasswordFile.h"
#include "Tools/ProgressBar.h"
#include "Tools/ResultFile.h"
#include "Tools/Table.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

namespace orvapp {

namespace {

/// One case on its way from file to file.
struct Conversion {
    std::unique_ptr<ResultFile> file;
    int id;
    std::string name;
    orv::ug::WriteSelection selection;
};

std::string extensionOf(const std::string& path) {
    return orv::Str(std::filesystem::path(path).extension().string()).toLower().toStdString();
}

orv::ug::WriteSelection selectionOf(const ResultFile& file, const ConvertOptions& options) {
    orv::ug::WriteSelection selection;
    const std::vector<orv::ug::StateInfo> states = file.directory().stateInfos();
    for (const std::size_t i : chooseAny(file, "state", namesOf(states), options.states)) {
        selection.stateIds.push_back(states[i].id());
    }
    const std::vector<orv::ug::ResultInfo> results = file.results();
    selection.results = picked(results, chooseAny(file, "result", namesOf(results), options.results));
    const std::vector<FilePart> parts = file.parts();
    for (const FilePart& part : picked(parts, chooseAny(file, "part", namesOf(parts), options.parts))) {
        selection.partIds.push_back(file.directory().partInfos(part.geometryIndex)[part.partIndex].id());
    }
    return selection;
}

std::string nameFor(const FileCase& fileCase) {
    return fileCase.id >= 0 ? fileCase.name : std::filesystem::path(fileCase.path).stem().string();
}

std::vector<Conversion> openAll(const ConvertOptions& options, const std::string& password) {
    std::vector<Conversion> conversions;
    std::set<int> ids;
    for (std::size_t i = 0; i + 1 < options.files.size(); ++i) {
        for (const FileCase& fileCase : casesIn(options.files[i], password)) {
            auto file = std::make_unique<ResultFile>(fileCase.path, password);
            orv::ug::WriteSelection selection = selectionOf(*file, options);
            // A case keeps its id as long as no other one has it.
            int id = std::max(fileCase.id, 1);
            while (!ids.insert(id).second) {
                ++id;
            }
            conversions.push_back({std::move(file), id, nameFor(fileCase), std::move(selection)});
        }
    }
    return conversions;
}

void writeCases(const std::vector<Conversion>& conversions, const std::string& out, const ConvertOptions& options,
                const std::string& password) {
    orv::ug::ZTFxWriter writer;
    writer.setPassword(password);
    if (options.compress > 0) {
        writer.setCompression(orv::ug::ZTFxWriter::DEFLATED, options.compress);
    }
    orv::ug::Error error;
    BarProgress progress(out);
    for (const Conversion& conversion : conversions) {
        if (!writer.addCase(conversion.id, conversion.name, conversion.file->source(), conversion.selection, &error)) {
            throw CommandError(error.message().toStdString());
        }
    }
    if (!writer.write(out, &progress, &error)) {
        throw CommandError(error.message().toStdString());
    }
}

void writeText(const std::vector<Conversion>& conversions, const std::string& out) {
    if (conversions.size() > 1) {
        std::vector<std::string> paths;
        for (const Conversion& conversion : conversions) {
            paths.push_back(conversion.file->path());
        }
        throw CommandError(out + ": a .ztf file holds one case, choose one of " + listed(paths));
    }
    orv::ug::Error error;
    BarProgress progress(out);
    const Conversion& conversion = conversions.front();
    if (!orv::ug::ZTFWriter().write(conversion.file->source(), conversion.selection, out, &progress, &error)) {
        throw CommandError(error.message().toStdString());
    }
}

std::string convertedText(const std::vector<Conversion>& conversions, const std::string& out) {
    Table table({{"Case", Table::RIGHT},
                 {"Name"},
                 {"From"},
                 {"States", Table::RIGHT},
                 {"Results", Table::RIGHT},
                 {"Parts", Table::RIGHT}});
    for (const Conversion& conversion : conversions) {
        table.addRow({std::to_string(conversion.id), conversion.name, conversion.file->path(),
                      std::to_string(conversion.selection.stateIds.size()),
                      std::to_string(conversion.selection.results.size()),
                      std::to_string(conversion.selection.partIds.size())});
    }
    std::error_code ignored; // The size is a courtesy.
    return printable(out) + ", " + std::to_string(std::filesystem::file_size(out, ignored)) + " bytes\n" + table.text();
}

} // namespace

void runConvert(const ConvertOptions& options) {
    const std::string& out = options.files.back();
    const bool isText = extensionOf(out) == ".ztf";
    if (!isText && extensionOf(out) != ".ztfx") {
        throw CommandError(out + ": the name of the file to write has to end in .ztfx or .ztf");
    }
    const std::string password = readPassword(options.passwordFile);
    const std::vector<Conversion> conversions = openAll(options, password);
    if (isText) {
        writeText(conversions, out);
    } else {
        writeCases(conversions, out, options, password);
    }
    writeStandardOutput(convertedText(conversions, out));
}

} // namespace orvapp
