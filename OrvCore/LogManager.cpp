#include "OrvCore/LogManager.h"

namespace orv {

LogManager::LogManager(rvf::LogManager* manager) : m_manager(manager) {}

LogManager::~LogManager() = default;

rvf::LogManager* LogManager::internal_rvfLogManager() const {
    return m_manager.get();
}

} // namespace orv
