#include "OrvCore/InitializationOptions_p.h"

namespace orv {

rvf::Assert::FailedAction
InitializationOptionsPrivate::toRvfFailedAssertAction(InitializationOptions::FailedAssertAction action) {
    switch (action) {
    case InitializationOptions::PLATFORM_DEFAULT:
        return rvf::Assert::PLATFORM_DEFAULT;
    case InitializationOptions::CONTINUE:
        return rvf::Assert::CONTINUE;
    case InitializationOptions::ABORT:
        return rvf::Assert::ABORT;
    case InitializationOptions::BREAK:
        return rvf::Assert::BREAK;
    }
    // The application layer makes this check in its start-up, and its reports name this file from there.
    rvf::Assert::handleFailedAssert("OrvApp/../OrvCore/InitializationOptions_p", __LINE__, nullptr,
                                    "Unhandled initialization options failed assert action");
    return rvf::Assert::PLATFORM_DEFAULT;
}

} // namespace orv
