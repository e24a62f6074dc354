#pragma once

#include "LibCore/rvfExport.h"
#include "LibCore/rvfLogManager.h"
#include "LibCore/rvfObject.h"
#include "LibCore/rvfRef.h"

namespace orv {

/// The log manager as applications and components pass it around. Counted by the core's references, rvf::ref.
class ORV_API LogManager : public rvf::Object {
public:
    /// Takes a reference on `manager`. Null is possible, but a component that is handed such a manager asserts.
    explicit LogManager(rvf::LogManager* manager);
    ~LogManager() override;
    LogManager(const LogManager&) = delete;
    LogManager& operator=(const LogManager&) = delete;

    /// The core's log manager behind this one; null when it was made from null.
    rvf::LogManager* internal_rvfLogManager() const;

private:
    rvf::ref<rvf::LogManager> m_manager;
};

} // namespace orv
