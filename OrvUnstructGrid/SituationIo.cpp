#include "OrvUnstructGrid/SituationIo.h"

#include "LibCore/rvfAssert.h"
#include "OrvCore/FileReplacement_p.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/SituationXml_p.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <sys/stat.h>

namespace orv::ug {
namespace {

bool failToOpen(const Str& file, const Str& reason, Error* error) {
    return fail(error, "cannot open \"" + file + "\": " + reason);
}

bool failForLackOfFolder(Error* error) {
    return fail(error, "no folder is named: a situation needs one");
}

Str mainFileOf(const Str& folder) {
    return folder + "/" + SituationIo::MAIN_FILENAME;
}

// One byte more than a situation may have is enough to see that there are too many.
bool readText(const Str& file, std::string* text, Error* error) {
    const std::string name = file.toStdString();
    struct stat status = {};
    // Asked before the file is opened: opening a pipe would wait for a writer.
    if (::stat(name.c_str(), &status) != 0) {
        return failToOpen(file, std::strerror(errno), error);
    }
    if (!S_ISREG(status.st_mode)) {
        return failToOpen(file, S_ISDIR(status.st_mode) ? "Is a directory" : "Not a regular file", error);
    }
    std::ifstream stream(name, std::ios::binary);
    if (!stream) {
        return failToOpen(file, std::strerror(errno), error);
    }
    text->resize(std::min<std::size_t>(std::size_t(status.st_size), LONGEST_SITUATION_XML + 1));
    stream.read(text->data(), std::streamsize(text->size()));
    text->resize(std::size_t(stream.gcount()));
    return true;
}

bool composeText(const Situation* situation, const Str& file, std::string* text, Error* error) {
    RVF_ASSERT(situation);
    return situation && writeSituationXml(*situation, file, text, error);
}

bool makeFolder(const Str& folder, Error* error) {
    std::error_code problem;
    std::filesystem::create_directories(folder.toStdString(), problem);
    return !problem || fail(error, "cannot make the folder \"" + folder + "\": " + problem.message());
}

bool writeText(const std::string& text, const Str& file, Error* error) {
    FileReplacement replacement;
    Str reason;
    if (!replacement.open(file, &reason)) {
        return fail(error, reason);
    }
    replacement.write(text);
    return replacement.commit(&reason) || fail(error, reason);
}

} // namespace

bool SituationIo::writeFolder(const Situation* situation, const Str& folder, Error* error) {
    if (folder.isEmpty()) {
        return failForLackOfFolder(error);
    }
    const Str file = mainFileOf(folder);
    std::string text;
    return composeText(situation, file, &text, error) && makeFolder(folder, error) && writeText(text, file, error);
}

bool SituationIo::readFolder(Situation* situation, const Str& folder, Error* error) {
    return folder.isEmpty() ? failForLackOfFolder(error) : readArchiveFile(situation, mainFileOf(folder), error);
}

bool SituationIo::writeArchiveFile(const Situation* situation, const Str& file, Error* error) {
    std::string text;
    return composeText(situation, file, &text, error) && writeText(text, file, error);
}

bool SituationIo::readArchiveFile(Situation* situation, const Str& file, Error* error) {
    RVF_ASSERT(situation);
    std::string text;
    return situation && readText(file, &text, error) && readSituationXml(text, file, situation, error);
}

} // namespace orv::ug
