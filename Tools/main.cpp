#include "OrvApp/OrvApp.h"
#include "Tools/CommandLine.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// A descriptor that the caller has closed would be given to the next file that is opened, and tables would go into it.
void reserveStandardDescriptors() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

} // namespace

int main(int argc, char** argv) {
    reserveStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is seen when writing

    orv::Instance instance;
    orv::app::AppComponent::initialize(&instance);
    return orvapp::run(argc, argv);
}
