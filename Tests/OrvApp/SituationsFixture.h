#pragma once

#include "OrvApp/Situations.h"
#include "OrvApp/Situations_p.h"
#include "OrvUnstructGrid/Situation.h"
#include "OrvUnstructGrid/SituationIo.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/OrvUnstructGrid/Situations.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/ScratchFolder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace orvtest {

/// Where thousands of files can be written and synced in no time, if there is such a place.
inline std::string quickFolder() {
    return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
}

/// Starts with an empty list, no recovery folder, an empty scratch folder, and a logger that lets everything pass.
class SituationsTest : public CatalogueTest {
protected:
    SituationsTest() : m_earlierLevel(logger()->level()) {
        situations->removeAll();
        situations->setRecoveryFolder("");
        logger()->setLevel(rvf::Logger::LEVEL_INFO);
    }

    ~SituationsTest() override {
        logger()->setLevel(m_earlierLevel);
    }

    static rvf::Logger* logger() {
        return rvf::LogManager::instance()->logger("orv.comp.app");
    }

    /// A model at a state, and a view; both become current.
    void addModelAndView(int stateId = 1) {
        orv::app::Models::instance()->add(modelOn(MemoryModel().source.get(), stateId).get());
        orv::app::Views::instance()->add();
    }

    /// What a capture of the current model and view stores.
    static std::string describedCapture() {
        const orv::PtrRef<orv::ug::Situation> situation(new orv::ug::Situation);
        situation->capture(*orv::app::Models::instance()->current(), *orv::app::Views::instance()->current());
        return described(*situation);
    }

    /// A situation with a collection, which knows itself by its name in all it has.
    static orv::PtrRef<orv::ug::Situation> situationNamed(const std::string& name) {
        const orv::PtrRef<orv::ug::Situation> situation(new orv::ug::Situation);
        situation->setName(name);
        situation->setDescription("description of " + name);
        situation->setSourceModelFile(name + ".frd");
        situation->setPropertyCollection(new orv::PropertySetCollection);
        const orv::PtrRef<orv::PropertySet> properties(new orv::PropertySet("own"));
        properties->setValue("name", orv::Str(name));
        situation->propertyCollection()->append(properties.get());
        situation->setAllUserData({{"name", name}});
        return situation;
    }

    /// What is in a situation folder; "none" when it cannot be read.
    static std::string describedFolder(const std::string& folderPath) {
        const orv::PtrRef<orv::ug::Situation> situation(new orv::ug::Situation);
        return orv::ug::SituationIo::readFolder(situation.get(), folderPath) ? described(*situation) : "none";
    }

    static LogMessage message(int level, const std::string& text, const std::string& function,
                              const std::string& shortFunction) {
        return {level, "orv.comp.app", text, "OrvApp/Situations_p", function, shortFunction};
    }

    orv::app::Situations* situations = orv::app::Situations::instance();
    ScratchFolder folder;

private:
    int m_earlierLevel;
};

} // namespace orvtest
