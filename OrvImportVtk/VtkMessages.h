#pragma once

#include <string>

#include <vtkSmartPointer.h>

class vtkOutputWindow;

namespace orv::imp::cae {

class MessageCatcher;

/// While one lives, what VTK would print on the console is kept here in its place. They may be nested; the latest one
/// gets the messages.
class VtkMessages {
public:
    VtkMessages();
    ~VtkMessages();

    VtkMessages(const VtkMessages&) = delete;
    VtkMessages& operator=(const VtkMessages&) = delete;

    bool hasErrors() const;

    /// The errors so far on one line, without the places in VTK's sources; empty when there are none. Of many only the
    /// first few.
    std::string errors() const;

private:
    vtkSmartPointer<vtkOutputWindow> m_before;
    int m_verbosityBefore; ///< Of VTK's log on standard error.
    vtkSmartPointer<MessageCatcher> m_catcher;
};

} // namespace orv::imp::cae
