#include "OrvImportCae/CaeModule.h"

#include "OrvCore/Instance.h"
#include "OrvImportCae/CaeModuleEntry.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <dlfcn.h>

namespace orv::imp::cae {
namespace {

std::string versionText(unsigned int version) {
    return std::to_string(version >> 16) + '.' + std::to_string(version >> 8 & 0xff) + '.' +
           std::to_string(version & 0xff);
}

std::string folderOfThisLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&findCaeModule), &info) == 0 || !info.dli_fname) {
        return std::string();
    }
    std::error_code failed;
    const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, failed);
    return failed ? std::string() : file.parent_path().string();
}

bool failMissing(const CaeModule& module, ug::Error* error) {
    std::string folders;
    for (const std::string& folder : caeModuleFolders()) {
        folders += (folders.empty() ? "" : " and ") + folder;
    }
    return ug::fail(error, Str("its reader is in " + caeModuleFileName(module) + ", which is not in " + folders +
                               "; build OrvApp with -D" + module.option + "=ON, which takes the package " +
                               module.buildPackage));
}

// The text of the loader begins with the name of the file that it could not open.
bool failLoading(const CaeModule& module, const std::string& path, ug::Error* error) {
    const char* reason = dlerror();
    return ug::fail(error, Str("its reader is in " + path + ", which cannot be loaded; install the package " +
                               module.package + (reason ? std::string(" (") + reason + ')' : "")));
}

template <class Function>
Function* symbol(void* library, const char* name) {
    return reinterpret_cast<Function*>(dlsym(library, name));
}

// Opened once more, an open one is the same and costs next to nothing.
void* openModule(const CaeModule& module, ug::Error* error) {
    const std::string path = findCaeModule(module);
    if (path.empty()) {
        failMissing(module, error);
        return nullptr;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        failLoading(module, path, error);
        return nullptr;
    }
    const auto version = symbol<decltype(orvModuleVersion)>(library, "orvModuleVersion");
    if (!version || version() != Instance::HEADER_VERSION) {
        ug::fail(error, Str("its reader is in " + path + ", which is " +
                            (version ? "of version " + versionText(version()) + " and not of this library's, " +
                                           versionText(Instance::HEADER_VERSION)
                                     : std::string("no module of this library"))));
        dlclose(library);
        return nullptr;
    }
    return library;
}

} // namespace

std::string caeModuleFileName(const CaeModule& module) {
    return std::string("libOrvImport") + module.name + ".so";
}

std::vector<std::string> caeModuleFolders() {
    std::vector<std::string> folders;
    if (const char* path = std::getenv("ORV_MODULE_PATH")) {
        std::istringstream list(path);
        for (std::string folder; std::getline(list, folder, ':');) {
            if (!folder.empty()) {
                folders.push_back(folder);
            }
        }
    }
    folders.push_back(folderOfThisLibrary());
    return folders;
}

std::string findCaeModule(const CaeModule& module) {
    for (const std::string& folder : caeModuleFolders()) {
        std::error_code failed;
        const std::filesystem::path path = std::filesystem::path(folder) / caeModuleFileName(module);
        if (std::filesystem::is_regular_file(path, failed)) {
            return path.string();
        }
    }
    return std::string();
}

std::unique_ptr<CaeReader> createReaderOfModule(const CaeModule& module, const char* readerName, ug::Error* error) {
    void* library = openModule(module, error);
    if (!library) {
        return nullptr;
    }
    const auto create = symbol<decltype(orvCreateReader)>(library, "orvCreateReader");
    std::unique_ptr<CaeReader> reader(create ? create(readerName) : nullptr);
    if (!reader) {
        ug::fail(error, Str(findCaeModule(module) + " has no reader for " + readerName));
    }
    return reader;
}

} // namespace orv::imp::cae
