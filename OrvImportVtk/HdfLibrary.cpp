#include "OrvImportVtk/HdfLibrary.h"

namespace orv::imp::cae {
namespace {

/// One that is made after HDF5 has been started goes before HDF5 ends.
class SilentEnd {
public:
    SilentEnd() {
        H5open();
    }

    ~SilentEnd() {
        H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    }

    SilentEnd(const SilentEnd&) = delete;
    SilentEnd& operator=(const SilentEnd&) = delete;
};

} // namespace

HdfSilence::HdfSilence() {
    static const SilentEnd silentEnd;
    H5Eget_auto2(H5E_DEFAULT, &m_function, &m_data);
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
}

HdfSilence::~HdfSilence() {
    H5Eset_auto2(H5E_DEFAULT, m_function, m_data);
}

} // namespace orv::imp::cae
