#include "LibUnstructGrid/VTOString.h"

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfString.h"
#include "LibUnstructGrid/VTORvfConvertApi.h"
#include "LibUnstructGrid/VTOString_p.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <functional>
#include <limits>
#include <string_view>

namespace {

int lengthOf(const wchar_t* pszText) {
    return static_cast<int>(std::wcslen(pszText));
}

int lengthWithin(const wchar_t* pszText, int iCount) {
    return static_cast<int>(::wcsnlen(pszText, static_cast<std::size_t>(iCount)));
}

// The C allocator, as realloc() moves the pages of a large text instead of its characters: appending stays linear
// although buffers are exact.
wchar_t* allocate(std::size_t count) {
    return static_cast<wchar_t*>(std::malloc(count * sizeof(wchar_t)));
}

bool equalNoCase(const wchar_t* pszFirst, const wchar_t* pszSecond, int iCount) {
    return std::equal(pszFirst, pszFirst + iCount, pszSecond, [](wchar_t cFirst, wchar_t cSecond) {
        return VTCharacter::toUpper(cFirst) == VTCharacter::toUpper(cSecond);
    });
}

int foundAt(std::size_t pos) {
    return pos == std::wstring_view::npos ? -1 : static_cast<int>(pos);
}

} // namespace

VTString::VTString() = default;

VTString::VTString(const wchar_t* pszText) {
    Assign(pszText, -1);
}

VTString::VTString(const VTString& sOther) {
    Assign(sOther.m_pdata, -1);
}

VTString::VTString(const char* pszText) {
    const std::size_t count = pszText ? std::mbstowcs(nullptr, pszText, 0) : static_cast<std::size_t>(-1);
    if (count == static_cast<std::size_t>(-1) || !SetBufferLength(static_cast<int>(count) + 1)) {
        return;
    }
    std::mbstowcs(m_pdata, pszText, count + 1);
    m_iStringLength = static_cast<int>(count);
}

VTString::VTString(wchar_t cChr) {
    Assign(&cChr, 1);
}

VTString::VTString(const rvf::String& sText) : VTString(VTRvfConvertApi::toVTString(sText)) {}

VTString::operator rvf::String() const {
    return VTRvfConvertApi::toString(*this);
}

VTString& VTString::operator=(const VTString& sOther) {
    Assign(sOther.m_pdata, -1);
    m_iSearchPos = 0;
    return *this;
}

VTString& VTString::operator=(const wchar_t* pszText) {
    Assign(pszText, -1);
    m_iSearchPos = 0;
    return *this;
}

// A new buffer for so many characters and the terminator; what was held before is forgotten.
bool VTString::MakeBuffer(int iLength) {
    m_pdata = allocate(static_cast<std::size_t>(iLength) + 1);
    RVF_ASSERT(m_pdata);
    m_iBufferLength = m_pdata ? iLength + 1 : 0;
    return m_pdata != nullptr;
}

void VTString::Assign(const wchar_t* pszText, int iCount) {
    wchar_t* pOld = m_pdata; // pszText may point into it
    m_pdata = nullptr;
    m_iStringLength = 0;
    m_iBufferLength = 0;
    if (pszText) {
        const int iTaken = iCount < 0 ? lengthOf(pszText) : iCount;
        const int iLength = iCount < 0 ? iTaken : lengthWithin(pszText, iCount);
        if (MakeBuffer(iTaken)) {
            std::copy_n(pszText, iLength, m_pdata);
            std::fill(m_pdata + iLength, m_pdata + m_iBufferLength, L'\0');
            m_iStringLength = iLength;
        }
    }
    std::free(pOld);
}

// A text of characters among which there is no terminator, as those of a string's own text: nothing is counted.
VTString VTString::Piece(const wchar_t* pszText, int iCount) {
    VTString sPiece;
    if (sPiece.MakeBuffer(iCount)) {
        std::copy_n(pszText, iCount, sPiece.m_pdata);
        sPiece.m_pdata[iCount] = L'\0';
        sPiece.m_iStringLength = iCount;
    }
    return sPiece;
}

bool VTString::IsEmpty() const {
    return IsNull() || m_pdata[0] == L'\0';
}

bool VTString::IsBlank() const {
    const wchar_t* pszText = ~*this;
    while (VTCharacter::isBlankOrTab(*pszText) || VTCharacter::isLineEnd(*pszText)) {
        ++pszText;
    }
    return *pszText == L'\0';
}

int VTString::CountCharacters() const {
    return lengthOf(~*this);
}

void VTString::UpdateStringLength() {
    m_iStringLength = CountCharacters();
    RVF_ASSERT(m_iStringLength == 0 || m_iStringLength < m_iBufferLength);
}

bool VTString::operator==(const VTString& sOther) const {
    if (m_pdata && sOther.m_pdata) {
        return std::wcscmp(m_pdata, sOther.m_pdata) == 0;
    }
    return !m_pdata && !sOther.m_pdata;
}

bool VTString::operator!=(const VTString& sOther) const {
    return !(*this == sOther);
}

bool VTString::operator<(const VTString& sOther) const {
    if (IsEmpty() || sOther.IsEmpty()) {
        return IsEmpty() && !sOther.IsEmpty();
    }
    return std::wcscmp(m_pdata, sOther.m_pdata) < 0;
}

bool VTString::operator>(const VTString& sOther) const {
    return sOther < *this;
}

int VTString::Compare(const VTString& sOther, int iCharCount) const {
    RVF_ASSERT(iCharCount >= -1);
    if (!m_pdata || !sOther.m_pdata) {
        return (m_pdata ? 1 : 0) - (sOther.m_pdata ? 1 : 0);
    }
    if (iCharCount < 0) {
        return std::wcscmp(m_pdata, sOther.m_pdata);
    }
    return std::wcsncmp(m_pdata, sOther.m_pdata, static_cast<std::size_t>(iCharCount));
}

int VTString::CompareNoCase(const VTString& sOther, int iCharCount) const {
    RVF_ASSERT(iCharCount >= -1);
    if (!m_pdata || !sOther.m_pdata) {
        return (m_pdata ? 1 : 0) - (sOther.m_pdata ? 1 : 0);
    }
    const int iLimit = iCharCount == -1 ? std::numeric_limits<int>::max() : iCharCount;
    for (int i = 0; i < iLimit; ++i) {
        const wchar_t cThis = VTCharacter::toUpper(m_pdata[i]);
        const wchar_t cOther = VTCharacter::toUpper(sOther.m_pdata[i]);
        if (cThis == L'\0' || cOther == L'\0') {
            return cThis == cOther ? 0 : cThis != L'\0' ? 1 : -1;
        }
        if (cThis != cOther) {
            return cThis >= cOther ? 1 : -1;
        }
    }
    return 0;
}

bool VTString::StartsWith(const VTString& sOther) const {
    return Compare(sOther, sOther.Length()) == 0;
}

bool VTString::StartsWithNoCase(const VTString& sOther) const {
    return CompareNoCase(sOther, sOther.Length()) == 0;
}

bool VTString::Contains(const VTString& sOther) const {
    return Find(sOther, 0, true, true) >= 0;
}

bool VTString::ContainsNoCase(const VTString& sOther) const {
    return Find(sOther, 0, true, false) >= 0;
}

int VTString::Find(const VTString& sWhat, int iStart, bool bForward, bool bCaseSensitive) const {
    const int iLength = Length();
    const int iWhatLength = sWhat.Length();
    const int iLast = iLength - iWhatLength;
    const int iFirst = iStart == -1 ? iLast : iStart;
    if (iLength == 0 || iWhatLength == 0 || iFirst < 0 || iFirst > iLast) {
        return -1;
    }
    if (bCaseSensitive) {
        const std::wstring_view text(m_pdata, static_cast<std::size_t>(iLength));
        const std::wstring_view what(sWhat.m_pdata, static_cast<std::size_t>(iWhatLength));
        const std::size_t first = static_cast<std::size_t>(iFirst);
        return foundAt(bForward ? text.find(what, first) : text.rfind(what, first));
    }
    for (int i = iFirst; i >= 0 && i <= iLast; i += bForward ? 1 : -1) {
        if (equalNoCase(m_pdata + i, sWhat.m_pdata, iWhatLength)) {
            return i;
        }
    }
    return -1;
}

int VTString::Find(wchar_t cChr, int iStart, bool bForward, bool bCaseSensitive) const {
    const int iLength = Length();
    const int iFirst = iStart == -1 ? iLength - 1 : iStart;
    if (iFirst < 0 || iFirst >= iLength) {
        return -1;
    }
    if (bCaseSensitive) {
        const std::wstring_view text(m_pdata, static_cast<std::size_t>(iLength));
        const std::size_t first = static_cast<std::size_t>(iFirst);
        return foundAt(bForward ? text.find(cChr, first) : text.rfind(cChr, first));
    }
    const wchar_t cLower = VTCharacter::toLower(cChr);
    for (int i = iFirst; i >= 0 && i < iLength; i += bForward ? 1 : -1) {
        if (VTCharacter::toLower(m_pdata[i]) == cLower) {
            return i;
        }
    }
    return -1;
}

int VTString::FindAll(wchar_t cChr, int iStart, bool bForward) const {
    const int iLength = Length();
    const int iFirst = iStart == -1 ? iLength - 1 : iStart;
    if (iFirst < 0 || iFirst >= iLength) {
        return 0;
    }
    const wchar_t* pBegin = bForward ? m_pdata + iFirst : m_pdata;
    const wchar_t* pEnd = bForward ? m_pdata + iLength : m_pdata + iFirst + 1;
    return static_cast<int>(std::count(pBegin, pEnd, cChr));
}

int VTString::FindFirstNumber() const {
    const wchar_t* pBegin = ~*this;
    const wchar_t* pEnd = pBegin + Length();
    const wchar_t* pDigit = std::find_if(pBegin, pEnd, VTCharacter::isDigit);
    if (pDigit == pEnd) {
        return -1;
    }
    const int iDigit = static_cast<int>(pDigit - pBegin);
    return iDigit > 0 && VTCharacter::isSign(pDigit[-1]) ? iDigit - 1 : iDigit;
}

wchar_t VTString::GetAt(int iPos) const {
    RVF_ASSERT(iPos >= 0);
    RVF_ASSERT(iPos < m_iBufferLength);
    RVF_ASSERT(iPos <= Length());
    return iPos >= 0 && iPos < m_iBufferLength ? m_pdata[iPos] : L'\0';
}

wchar_t VTString::operator[](int iPos) const {
    return GetAt(iPos);
}

void VTString::SetAt(int iPos, wchar_t cChr) {
    RVF_ASSERT(iPos >= 0);
    RVF_ASSERT(iPos < m_iBufferLength);
    RVF_ASSERT(iPos < Length() || (cChr == '\0' && iPos == Length()));
    if (iPos >= 0 && iPos < m_iBufferLength) {
        m_pdata[iPos] = cChr;
    }
    m_iStringLength = -1;
}

wchar_t* VTString::GetBuffer() {
    m_iStringLength = -1;
    return m_pdata;
}

bool VTString::SetBufferLength(int iLength) {
    RVF_ASSERT(iLength > 0);
    if (iLength == m_iBufferLength) {
        return true;
    }
    wchar_t* pNew = iLength > 0 ? allocate(static_cast<std::size_t>(iLength)) : nullptr;
    if (!pNew) {
        return false;
    }
    // Room behind the text is zero, so a null string becomes an empty one.
    const int iKept = std::min(iLength, m_iBufferLength);
    std::copy_n(m_pdata, iKept, pNew);
    std::fill(pNew + iKept, pNew + iLength, L'\0');
    pNew[iLength - 1] = L'\0';
    std::free(m_pdata);
    m_pdata = pNew;
    m_iBufferLength = iLength;
    return true;
}

void VTString::TrimBuffer() {
    Assign(m_pdata, -1);
}

int VTString::ZeroTerminate() {
    if (IsNull() || m_iBufferLength == 0) {
        return -1;
    }
    wchar_t* pEnd = m_pdata + m_iBufferLength - 1;
    wchar_t* pZero = std::find(m_pdata, pEnd, L'\0');
    *pZero = L'\0';
    m_iStringLength = static_cast<int>(pZero - m_pdata);
    return m_iStringLength;
}

const char* VTString::ShortChar() const {
    delete[] m_pszShortChar;
    m_pszShortChar = nullptr;
    if (IsNull()) {
        return nullptr;
    }
    std::size_t count = std::wcstombs(nullptr, m_pdata, 0);
    if (count == static_cast<std::size_t>(-1)) {
        count = static_cast<std::size_t>(Length()) * MB_CUR_MAX;
    }
    m_pszShortChar = new char[count + 1]();
    std::wcstombs(m_pszShortChar, m_pdata, count);
    return m_pszShortChar;
}

void VTString::GetShortChar(char* pszString, int iSize) const {
    RVF_ASSERT(pszString);
    if (!pszString) {
        return;
    }
    std::memset(pszString, 0, static_cast<std::size_t>(iSize));
    std::wcstombs(pszString, ~*this, static_cast<std::size_t>(iSize));
    pszString[iSize] = '\0';
}

VTString& VTString::operator+=(const VTString& sOther) {
    Append(~sOther, sOther.Length());
    return *this;
}

VTString& VTString::operator+=(const wchar_t* pszText) {
    if (pszText) {
        Append(pszText, lengthOf(pszText));
    }
    return *this;
}

void VTString::Append(const wchar_t* pszText, int iCount) {
    if (iCount == 0) {
        return;
    }
    const bool bFits = m_iStringLength >= 0 && m_iStringLength + iCount < m_iBufferLength;
    if (!bFits) {
        if (m_iStringLength < 0 || m_iStringLength >= m_iBufferLength) {
            UpdateStringLength();
        }
        const int iNeeded = m_iStringLength + iCount + 1;
        const std::less<const wchar_t*> before;
        const bool bInside = !before(pszText, m_pdata) && before(pszText, m_pdata + m_iBufferLength);
        const std::ptrdiff_t offset = bInside ? pszText - m_pdata : 0;
        void* tmpstr = std::realloc(m_pdata, static_cast<std::size_t>(iNeeded) * sizeof(wchar_t));
        RVF_ASSERT(tmpstr);
        if (!tmpstr) {
            return;
        }
        m_pdata = static_cast<wchar_t*>(tmpstr);
        m_iBufferLength = iNeeded;
        if (bInside) {
            pszText = m_pdata + offset;
        }
    }
    std::copy_n(pszText, iCount, m_pdata + m_iStringLength);
    m_iStringLength += iCount;
    m_pdata[m_iStringLength] = L'\0';
}

VTString operator+(const VTString& sFirst, const VTString& sSecond) {
    const int iFirst = sFirst.Length();
    const int iSecond = sSecond.Length();
    VTString sResult;
    wchar_t* tmpstr = allocate(static_cast<std::size_t>(iFirst) + static_cast<std::size_t>(iSecond) + 1);
    RVF_ASSERT(tmpstr);
    if (tmpstr) {
        std::copy_n(~sFirst, iFirst, tmpstr);
        std::copy_n(~sSecond, iSecond, tmpstr + iFirst);
        tmpstr[iFirst + iSecond] = L'\0';
        sResult.m_pdata = tmpstr;
        sResult.m_iStringLength = iFirst + iSecond;
        sResult.m_iBufferLength = iFirst + iSecond + 1;
    }
    return sResult;
}
