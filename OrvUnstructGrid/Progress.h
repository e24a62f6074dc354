#pragma once

#include "LibCore/rvfExport.h"

namespace orv::ug {

/// Told how far a long operation has come. An application derives from it to draw a bar.
class ORV_API Progress {
public:
    virtual ~Progress();

    /// @param percent 0 to 100. Called on the thread that runs the operation.
    virtual void setPercent(int percent) = 0;
};

} // namespace orv::ug
