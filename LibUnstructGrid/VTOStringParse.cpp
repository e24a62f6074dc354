#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOString.h"
#include "LibUnstructGrid/VTOString_p.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <cwctype>

namespace {

bool isSpace(wchar_t cChr) {
    return std::iswspace(static_cast<wint_t>(cChr)) != 0;
}

bool isControl(wchar_t cChr) {
    return std::iswcntrl(static_cast<wint_t>(cChr)) != 0;
}

bool isSpaceToTheEnd(const wchar_t* pszText) {
    while (*pszText != L'\0' && isSpace(*pszText)) {
        ++pszText;
    }
    return *pszText == L'\0';
}

bool isNumberCharacter(wchar_t cChr, bool bAllowD) {
    return VTCharacter::isDigit(cChr) || VTCharacter::isSign(cChr) || cChr == L'.' || cChr == L'e' || cChr == L'E' ||
           (bAllowD && (cChr == L'd' || cChr == L'D'));
}

const wchar_t* skipDigits(const wchar_t* pChr) {
    while (VTCharacter::isDigit(*pChr)) {
        ++pChr;
    }
    return pChr;
}

// An exponent counts with its digits only: in `2eggs` the number is 2.
const wchar_t* skipExponent(const wchar_t* pChr) {
    if (*pChr != L'e' && *pChr != L'E') {
        return pChr;
    }
    const wchar_t* pDigits = pChr + (VTCharacter::isSign(pChr[1]) ? 2 : 1);
    return VTCharacter::isDigit(*pDigits) ? skipDigits(pDigits) : pChr;
}

// Walks over text with one kind of escape, which does not nest.
class EscapeWalk {
public:
    EscapeWalk(wchar_t cStart, wchar_t cEnd) : m_cStart(cStart), m_cEnd(cEnd) {}

    // Whether `cChr` stands inside; the opening character does, the closing one does not.
    bool isInsideAt(wchar_t cChr) {
        m_bInside = m_bInside ? cChr != m_cEnd : cChr == m_cStart;
        return m_bInside;
    }

private:
    wchar_t m_cStart;
    wchar_t m_cEnd;
    bool m_bInside = false;
};

} // namespace

VTString VTString::GetFirstWord() {
    m_iSearchPos = 0;
    return GetNextWord();
}

VTString VTString::GetNextWord() {
    const int iLength = Length();
    const wchar_t* pszText = ~*this;
    while (m_iSearchPos < iLength && VTCharacter::isBlankOrTab(pszText[m_iSearchPos])) {
        ++m_iSearchPos;
    }
    if (m_iSearchPos >= iLength) {
        return VTString(VT_EMPTY_STRING);
    }
    const int iStart = m_iSearchPos;
    int iEnd = iStart;
    while (iEnd < iLength && !VTCharacter::isWordSeparator(pszText[iEnd])) {
        ++iEnd;
    }
    m_iSearchPos = iEnd + 1;
    while (iEnd > iStart && VTCharacter::isLineEnd(pszText[iEnd - 1])) {
        --iEnd;
    }
    return Piece(pszText + iStart, iEnd - iStart);
}

VTString VTString::GetWord(int iIndex) {
    VTString sWord = GetFirstWord();
    for (int i = 0; i < iIndex && !sWord.IsEmpty(); ++i) {
        sWord = GetNextWord();
    }
    return sWord;
}

VTString VTString::GetRest() {
    const int iLength = Length();
    if (m_iSearchPos >= iLength) {
        return VTString(VT_EMPTY_STRING);
    }
    const int iStart = m_iSearchPos;
    m_iSearchPos = iLength + 1;
    return Mid(iStart, -1);
}

int VTString::GetNumWords() const {
    int iWords = 0;
    wchar_t cPrevious = L' ';
    for (const wchar_t* pChr = ~*this; *pChr != L'\0'; ++pChr) {
        const bool bContent = !VTCharacter::isBlankOrTab(*pChr) && !VTCharacter::isLineEnd(*pChr);
        if (bContent && VTCharacter::isWordSeparator(cPrevious)) {
            ++iWords;
        }
        cPrevious = *pChr;
    }
    return iWords;
}

int VTString::GetNumLines() const {
    if (IsEmpty()) {
        return 0;
    }
    const int iLength = Length();
    const int iLineFeeds = static_cast<int>(std::count(m_pdata, m_pdata + iLength, L'\n'));
    return 1 + iLineFeeds - (m_pdata[iLength - 1] == L'\n' ? 1 : 0);
}

int VTString::CountNumberWords(bool bWithPoint) {
    int iNumbers = 0;
    m_iSearchPos = 0;
    while (m_iSearchPos < Length()) {
        const VTString sWord = GetNextWord();
        if (sWord.IsNumber(false) && (bWithPoint || sWord.Find(L'.') < 0)) {
            ++iNumbers;
        }
    }
    return iNumbers;
}

int VTString::GetNumInts() {
    return CountNumberWords(false);
}

int VTString::GetNumFloats() {
    return CountNumberWords(true);
}

bool VTString::IsAtEnd(bool* pbMore) {
    const bool bAtEnd = m_iSearchPos >= Length();
    if (pbMore) {
        *pbMore = !bAtEnd;
    }
    return bAtEnd;
}

// Cuts the token that ends at the separator at `iTokenPos`, or with the text when that is -1.
VTString VTString::TakeToken(int iTokenPos, int iSeparatorLength, bool* pbMore) {
    if (iTokenPos == -1) {
        iTokenPos = Length();
        if (pbMore) {
            *pbMore = false;
        }
    }
    RVF_ASSERT(iTokenPos >= m_iSearchPos);
    VTString sStr = Piece(m_pdata + m_iSearchPos, iTokenPos - m_iSearchPos);
    RVF_ASSERT(!sStr.IsNull());
    m_iSearchPos = iTokenPos + iSeparatorLength;
    return sStr;
}

VTString VTString::GetFirstToken(wchar_t cSeparator, bool* pbMore) {
    m_iSearchPos = 0;
    return GetNextToken(cSeparator, pbMore);
}

VTString VTString::GetNextToken(wchar_t cSeparator, bool* pbMore) {
    if (IsAtEnd(pbMore)) {
        return VTString();
    }
    const int iLength = Length();
    RVF_ASSERT(m_iSearchPos < iLength);
    const wchar_t* pFrom = m_pdata + m_iSearchPos;
    const wchar_t* pHit = std::wmemchr(pFrom, cSeparator, static_cast<std::size_t>(iLength - m_iSearchPos));
    return TakeToken(pHit ? static_cast<int>(pHit - m_pdata) : -1, 1, pbMore);
}

VTString VTString::GetFirstToken(const VTString& sSeparator, bool* pbMore) {
    m_iSearchPos = 0;
    return GetNextToken(sSeparator, pbMore);
}

VTString VTString::GetNextToken(const VTString& sSeparator, bool* pbMore) {
    const int iNumCharsInSeparator = sSeparator.Length();
    RVF_ASSERT(iNumCharsInSeparator > 0);
    if (IsAtEnd(pbMore)) {
        return VTString();
    }
    const int iLength = Length();
    RVF_ASSERT(m_iSearchPos < iLength);
    return TakeToken(Find(sSeparator, m_iSearchPos, true, true), iNumCharsInSeparator, pbMore);
}

VTString VTString::GetFirstToken(wchar_t cSeparator, wchar_t cStartEscape, wchar_t cEndEscape, bool* pbMore) {
    m_iSearchPos = 0;
    return GetNextToken(cSeparator, cStartEscape, cEndEscape, pbMore);
}

VTString VTString::GetNextToken(wchar_t cSeparator, wchar_t cStartEscape, wchar_t cEndEscape, bool* pbMore) {
    RVF_ASSERT(cSeparator != cStartEscape);
    RVF_ASSERT(cSeparator != cEndEscape);
    if (IsAtEnd(pbMore)) {
        return VTString();
    }
    const int iLength = Length();
    RVF_ASSERT(m_iSearchPos < iLength);
    EscapeWalk walk(cStartEscape, cEndEscape);
    int iTokenPos = -1;
    for (int i = m_iSearchPos; i < iLength; ++i) {
        if (!walk.isInsideAt(m_pdata[i]) && m_pdata[i] == cSeparator) {
            RVF_ASSERT(iTokenPos == -1);
            iTokenPos = i;
            break;
        }
    }
    return TakeToken(iTokenPos, 1, pbMore);
}

int VTString::GetNumTokens(wchar_t cSeparator, wchar_t cStartEscape, wchar_t cEndEscape) const {
    RVF_ASSERT(cSeparator != cStartEscape);
    RVF_ASSERT(cSeparator != cEndEscape);
    EscapeWalk walk(cStartEscape, cEndEscape);
    const wchar_t* pszText = ~*this;
    const int iLength = Length();
    int iTokens = 1;
    int iLastSeparator = -1;
    int iLastContent = -1;
    wchar_t cPrevious = L'\0';
    for (int i = 0; i < iLength; ++i) {
        const wchar_t cChr = pszText[i];
        if (walk.isInsideAt(cChr)) {
            iLastContent = i;
            continue;
        }
        if (cChr == cSeparator) {
            iTokens += cPrevious == cSeparator ? 0 : 1;
            iLastSeparator = i;
        } else if (!isControl(cChr)) {
            iLastContent = i;
        }
        cPrevious = cChr;
    }
    return iLastSeparator > iLastContent ? iTokens - 1 : iTokens;
}

int VTString::AsInt(int iDefault) const {
    int iValue = 0;
    return !IsEmpty() && std::swscanf(m_pdata, L" %d ", &iValue) == 1 ? iValue : iDefault;
}

long long VTString::AsInt64(long long iDefault) const {
    long long iValue = 0;
    return !IsEmpty() && std::swscanf(m_pdata, L" %lld ", &iValue) == 1 ? iValue : iDefault;
}

float VTString::AsFloat(float fDefault) const {
    return static_cast<float>(AsDouble(fDefault));
}

double VTString::AsDouble(double dDefault) const {
    if (IsEmpty()) {
        return dDefault;
    }
    wchar_t* pEnd = nullptr;
    const double dValue = std::wcstod(m_pdata, &pEnd);
    return pEnd != m_pdata && isSpaceToTheEnd(pEnd) ? dValue : dDefault;
}

float VTString::GetFirstFloat(int iStart) const {
    const int iLength = Length();
    const wchar_t* pText = ~*this;
    const wchar_t* pFrom = pText + std::clamp(iStart, 0, iLength);
    const wchar_t* pDigit = std::find_if(pFrom, pText + iLength, VTCharacter::isDigit);
    const wchar_t* pBegin = pDigit;
    if (pBegin > pFrom && pBegin[-1] == L'.') {
        --pBegin;
    }
    const wchar_t* pEnd = skipDigits(pDigit);
    if (pBegin == pDigit && *pEnd == L'.') {
        pEnd = skipDigits(pEnd + 1);
    }
    pEnd = skipExponent(pEnd);
    if (pBegin > pFrom && VTCharacter::isSign(pBegin[-1])) {
        --pBegin;
    }
    return Mid(static_cast<int>(pBegin - pText), static_cast<int>(pEnd - pBegin)).AsFloat();
}

bool VTString::AsBool(bool bDefault) const {
    if (IsBlank()) {
        return bDefault;
    }
    if (std::wcschr(L"1TYty", m_pdata[0])) {
        return true;
    }
    return std::wcschr(L"0FNfn", m_pdata[0]) ? false : bDefault;
}

bool VTString::IsNumber(bool bAllowD) const {
    if (IsEmpty()) {
        return false;
    }
    const wchar_t* pBegin = m_pdata;
    const wchar_t* pEnd = m_pdata + Length();
    while (pBegin != pEnd && isSpace(*pBegin)) {
        ++pBegin;
    }
    while (pEnd != pBegin && isSpace(pEnd[-1])) {
        --pEnd;
    }
    return std::all_of(pBegin, pEnd, [bAllowD](wchar_t cChr) { return isNumberCharacter(cChr, bAllowD); });
}
