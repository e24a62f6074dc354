#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOString.h"

#include <cstdarg>
#include <cstdio>
#include <cwchar>

namespace {

constexpr int NUMBER_BUFFER_LENGTH = 64;

} // namespace

VTString::VTString(int iValue) {
    if (SetBufferLength(NUMBER_BUFFER_LENGTH)) {
        std::swprintf(m_pdata, NUMBER_BUFFER_LENGTH, L"%d", iValue);
        UpdateStringLength();
    }
}

VTString::VTString(float fValue) : VTString(static_cast<double>(fValue)) {}

VTString::VTString(double dValue) {
    wchar_t szNumber[NUMBER_BUFFER_LENGTH];
    std::swprintf(szNumber, NUMBER_BUFFER_LENGTH, L"%g", dValue);
    Assign(szNumber, -1);
}

VTString VTString::Make(int iValue) {
    return MakeForm("%d", iValue);
}

VTString VTString::Make(unsigned int uiValue) {
    return MakeForm("%u", uiValue);
}

VTString VTString::Make(float fValue) {
    return MakeForm("%g", static_cast<double>(fValue));
}

VTString VTString::Make(double dValue) {
    return MakeForm("%g", dValue);
}

VTString VTString::MakeForm(const char* szFormat, ...) {
    RVF_ASSERT(VTString(szFormat).Find("%ls") == -1);
    va_list args;
    va_start(args, szFormat);
    VTString sText = MakeFormArgList(szFormat, args);
    va_end(args);
    return sText;
}

VTString VTString::MakeFormArgList(const char* szFormat, va_list args) {
    VTString sText;
    sText.FormatV(szFormat, args);
    return sText;
}

VTString VTString::MakeFormWide(const wchar_t* szFormat, ...) {
    RVF_ASSERT(VTString(szFormat).Find("%s") == -1);
    va_list args;
    va_start(args, szFormat);
    VTString sText = MakeFormArgListWide(szFormat, args);
    va_end(args);
    return sText;
}

VTString VTString::MakeFormArgListWide(const wchar_t* szFormat, va_list args) {
    VTString sText;
    sText.FormatV(szFormat, args);
    return sText;
}

// A formatter that fails may leave its buffer without a terminator, so the buffers begin as zeros.
void VTString::FormatV(const char* szFormat, va_list args) {
    char szBuffer[VT_MAX_FORMAT_LENGTH] = {};
    const int iNumWritten = std::vsnprintf(szBuffer, VT_MAX_FORMAT_LENGTH, szFormat, args);
    RVF_ASSERT(iNumWritten < (VT_MAX_FORMAT_LENGTH - 10));
    *this = VTString(szBuffer);
}

void VTString::FormatV(const wchar_t* szFormat, va_list args) {
    wchar_t szBuffer[VT_MAX_FORMAT_LENGTH] = {};
    const int iNumWritten = std::vswprintf(szBuffer, VT_MAX_FORMAT_LENGTH, szFormat, args);
    RVF_ASSERT(iNumWritten < (VT_MAX_FORMAT_LENGTH - 10));
    szBuffer[VT_MAX_FORMAT_LENGTH - 1] = L'\0';
    *this = szBuffer;
}
