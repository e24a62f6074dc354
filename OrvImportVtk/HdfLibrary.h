#pragma once

#include <vtk_hdf5.h>

namespace orv::imp::cae {

/// While one lives, HDF5 prints no errors. From the first one on it does not either when the process ends: it does not
/// get rid of all that belongs to damaged files, and would tell so.
class HdfSilence {
public:
    HdfSilence();
    ~HdfSilence();

    HdfSilence(const HdfSilence&) = delete;
    HdfSilence& operator=(const HdfSilence&) = delete;

private:
    H5E_auto2_t m_function = nullptr;
    void* m_data = nullptr;
};

/// Something of HDF5's that has to be closed.
class HdfId {
public:
    HdfId(hid_t id, herr_t (*close)(hid_t)) : m_id(id), m_close(close) {}

    ~HdfId() {
        if (m_id >= 0) {
            m_close(m_id);
        }
    }

    HdfId(const HdfId&) = delete;
    HdfId& operator=(const HdfId&) = delete;

    operator hid_t() const {
        return m_id;
    }

private:
    hid_t m_id;
    herr_t (*m_close)(hid_t);
};

} // namespace orv::imp::cae
