// Any bytes as an HDF5 file: the check of all that holds it together ends, with or without a text.

#include "Fuzz/Fuzzing.h"
#include "OrvImportCae/Hdf5Check.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace orv;
using orvfuzz::expect;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const orvfuzz::MemoryFile file({reinterpret_cast<const char*>(data), size});
    ug::Error error;
    const bool isGood = imp::cae::checkHdf5File(file.name(), &error);
    expect(isGood == error.isEmpty());
    return 0;
}
