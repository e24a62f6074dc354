#include "OrvImportVtk/VtkMessages.h"

#include <vtkLogger.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace orv::imp::cae {
namespace {

constexpr std::size_t MOST_MESSAGES = 3; // The first ones tell the cause, the others what follows from it.

// VTK's texts: "ERROR: In file, line 5\nvtkSomething (0x55d0): What is wrong.\n\n"
std::string essence(const std::string& message) {
    constexpr std::string_view HEADER_END = "): ";
    const std::size_t header = message.find(HEADER_END);
    std::string text = header == std::string::npos ? message : message.substr(header + HEADER_END.size());
    std::replace(text.begin(), text.end(), '\n', ' ');
    text.erase(text.find_last_not_of(" .") + 1);
    return text;
}

} // namespace

class MessageCatcher : public vtkOutputWindow {
public:
    static MessageCatcher* New();
    vtkTypeMacro(MessageCatcher, vtkOutputWindow)

        void DisplayErrorText(const char* text) override {
        m_hasErrors = true;
        std::string message = essence(text);
        if (message.starts_with("Algorithm ")) { // That it failed, and nothing of why.
            return;
        }
        if (m_errors.size() < MOST_MESSAGES && std::find(m_errors.begin(), m_errors.end(), message) == m_errors.end()) {
            m_errors.push_back(std::move(message));
        }
    }

    void DisplayText(const char*) override {}

    void DisplayWarningText(const char*) override {}

    void DisplayGenericWarningText(const char*) override {}

    void DisplayDebugText(const char*) override {}

    bool hasErrors() const {
        return m_hasErrors;
    }

    std::string errors() const {
        std::string all;
        for (const std::string& message : m_errors) {
            all += (all.empty() ? "" : "; ") + message;
        }
        return all;
    }

private:
    bool m_hasErrors = false;
    std::vector<std::string> m_errors;
};

vtkStandardNewMacro(MessageCatcher)

    VtkMessages::VtkMessages()
    : m_before(vtkOutputWindow::GetInstance()), m_verbosityBefore(vtkLogger::GetCurrentVerbosityCutoff()),
      m_catcher(vtkSmartPointer<MessageCatcher>::New()) {
    vtkOutputWindow::SetInstance(m_catcher);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

VtkMessages::~VtkMessages() {
    vtkOutputWindow::SetInstance(m_before);
    vtkLogger::SetStderrVerbosity(vtkLogger::Verbosity(m_verbosityBefore));
}

bool VtkMessages::hasErrors() const {
    return m_catcher->hasErrors();
}

std::string VtkMessages::errors() const {
    return m_catcher->errors();
}

} // namespace orv::imp::cae
