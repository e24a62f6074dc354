#include "LibCore/rvfAssert.h"
#include "LibUnstructGrid/VTOString.h"
#include "LibUnstructGrid/VTOString_p.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <string>

namespace {

bool isTrimmed(wchar_t cChr, bool bControlToo) {
    if (static_cast<int>(cChr) < 0) {
        return false;
    }
    const wint_t iChr = static_cast<wint_t>(cChr);
    return std::iswspace(iChr) || (bControlToo && std::iswcntrl(iChr));
}

} // namespace

VTString VTString::GetSubString(int iStart, int iEnd) const {
    const int iLength = Length();
    const int iLast = iEnd < 0 ? iLength - 1 : iEnd;
    if (iStart < 0 || iStart >= iLength || iLast < iStart || iLast >= iLength) {
        return VTString(VT_EMPTY_STRING);
    }
    return Mid(iStart, iLast - iStart + 1);
}

VTString VTString::Mid(int iStart, int iCount) const {
    const int iLength = Length();
    if (iStart < 0 || iStart >= iLength) {
        return VTString(VT_EMPTY_STRING);
    }
    const int iRest = iLength - iStart;
    return Piece(m_pdata + iStart, iCount < 0 ? iRest : std::min(iCount, iRest));
}

VTString VTString::Left(int iCount) const {
    return Mid(0, iCount);
}

VTString VTString::Right(int iCount) const {
    return Mid(std::max(Length() - iCount, 0), iCount);
}

void VTString::Trunc(int iPos) {
    SetAt(iPos, L'\0');
}

bool VTString::Trunc(wchar_t cChr, int iStart, bool bForward) {
    const int iPos = Find(cChr, iStart, bForward, true);
    if (iPos < 0) {
        return false;
    }
    Trunc(iPos);
    return true;
}

bool VTString::Trunc(char cChr, int iStart, bool bForward) {
    return Trunc(static_cast<wchar_t>(cChr), iStart, bForward);
}

bool VTString::Trunc(const VTString& sWhat, int iStart, bool bForward) {
    const int iPos = Find(sWhat, iStart, bForward, true);
    if (iPos < 0) {
        return false;
    }
    Trunc(iPos);
    return true;
}

void VTString::ToLower() {
    std::transform(m_pdata, m_pdata + Length(), m_pdata, VTCharacter::toLower);
}

void VTString::ToUpper() {
    std::transform(m_pdata, m_pdata + Length(), m_pdata, VTCharacter::toUpper);
}

VTString VTString::AsLower() const {
    VTString sText(*this);
    sText.ToLower();
    return sText;
}

VTString VTString::AsUpper() const {
    VTString sText(*this);
    sText.ToUpper();
    return sText;
}

void VTString::Capitalize() {
    wchar_t cPrevious = L' ';
    wchar_t* pEnd = m_pdata + Length();
    for (wchar_t* pChr = m_pdata; pChr != pEnd; ++pChr) {
        *pChr = cPrevious == L' ' ? VTCharacter::toUpper(*pChr) : VTCharacter::toLower(*pChr);
        cPrevious = *pChr;
    }
}

void VTString::DeCaptitalize() {
    ToLower();
    if (!IsEmpty()) {
        m_pdata[0] = VTCharacter::toUpper(m_pdata[0]);
    }
}

void VTString::CutFront(int iCount) {
    if (iCount > 0) {
        std::copy(m_pdata + iCount, m_pdata + Length() + 1, m_pdata);
        m_iStringLength -= iCount;
    }
}

void VTString::CutAt(int iLength) {
    m_pdata[iLength] = L'\0';
    m_iStringLength = iLength;
}

bool VTString::TrimLeft(bool bControlToo) {
    if (IsNull()) {
        return bControlToo;
    }
    const int iLength = Length();
    int iCut = 0;
    while (iCut < iLength && isTrimmed(m_pdata[iCut], bControlToo)) {
        ++iCut;
    }
    CutFront(iCut);
    return iCut > 0;
}

bool VTString::TrimRight(bool bControlToo) {
    if (IsNull()) {
        return bControlToo;
    }
    const int iLength = Length();
    int iEnd = iLength;
    while (iEnd > 0 && isTrimmed(m_pdata[iEnd - 1], bControlToo)) {
        --iEnd;
    }
    CutAt(iEnd);
    return iEnd < iLength;
}

bool VTString::Trim(bool bControlToo) {
    const bool bLeft = TrimLeft(bControlToo);
    const bool bRight = TrimRight(bControlToo);
    return bLeft || bRight;
}

VTString VTString::AsTrimmed() const {
    VTString sText(*this);
    sText.Trim(false);
    return sText;
}

int VTString::StripCharacter(wchar_t cChr) {
    RVF_ASSERT(cChr != '\0');
    if (IsNull()) {
        return 0;
    }
    const int iSrc = Length();
    const int iDst = static_cast<int>(std::remove(m_pdata, m_pdata + iSrc, cChr) - m_pdata);
    if (iDst == iSrc) {
        return 0;
    }
    RVF_ASSERT(iSrc < m_iBufferLength);
    RVF_ASSERT(iDst < iSrc);
    CutAt(iDst);
    return iSrc - iDst;
}

void VTString::Nicify() {
    Trim(false);
    if (IsEmpty()) {
        return;
    }
    wchar_t* pEnd = m_pdata + Length();
    std::replace(m_pdata, pEnd, L'\t', L' ');
    pEnd =
        std::unique(m_pdata, pEnd, [](wchar_t cFirst, wchar_t cSecond) { return cFirst == L' ' && cSecond == L' '; });
    CutAt(static_cast<int>(pEnd - m_pdata));
}

int VTString::Replace(const VTString& sWhat, const VTString& sWith, int iMaxCount, bool bCaseSensitive) {
    const int iLength = Length(); // Also refreshes it: Find() would count it anew at each hit.
    std::wstring sNew;
    int iReplaced = 0;
    int iCopied = 0;
    int iHit = Find(sWhat, 0, true, bCaseSensitive);
    while (iHit >= 0) {
        sNew.append(m_pdata + iCopied, m_pdata + iHit).append(~sWith);
        iCopied = iHit + sWhat.Length();
        ++iReplaced;
        iHit = iReplaced == iMaxCount ? -1 : Find(sWhat, iCopied, true, bCaseSensitive);
    }
    if (iReplaced > 0) {
        sNew.append(m_pdata + iCopied, m_pdata + iLength);
        Assign(sNew.c_str(), static_cast<int>(sNew.size()));
    }
    return iReplaced;
}

int VTString::Replace(wchar_t cWhat, wchar_t cWith, int iMaxCount, bool bCaseSensitive) {
    const wchar_t cWhatLower = VTCharacter::toLower(cWhat);
    const int iLength = Length();
    int iReplaced = 0;
    for (int i = 0; i < iLength && (iMaxCount <= 0 || iReplaced < iMaxCount); ++i) {
        const bool bHit = bCaseSensitive ? m_pdata[i] == cWhat : VTCharacter::toLower(m_pdata[i]) == cWhatLower;
        if (bHit) {
            m_pdata[i] = cWith;
            ++iReplaced;
        }
    }
    UpdateStringLength();
    return iReplaced;
}

void VTString::Quote(wchar_t cQuote) {
    const int iLength = Length();
    const bool bFront = iLength == 0 || m_pdata[0] != cQuote;
    const bool bBehind = iLength == 0 || m_pdata[iLength - 1] != cQuote;
    const VTString sQuote(cQuote);
    if (bFront) {
        const VTString sQuoted = sQuote + *this;
        Assign(~sQuoted, -1);
    }
    if (bBehind) {
        *this += sQuote;
    }
}

bool VTString::Unquote(wchar_t cQuote, bool bRequireEnd) {
    if (IsNull()) {
        return false;
    }
    VTString sText(*this);
    sText.Trim(true);
    if (sText.IsBlank() || sText.m_pdata[0] != cQuote) {
        return false;
    }
    const int iLast = sText.Length() - 1;
    const bool bClosed = iLast > 0 && sText.m_pdata[iLast] == cQuote;
    if (bClosed) {
        sText.CutAt(iLast);
    }
    Assign(sText.m_pdata + 1, -1);
    return bClosed || !bRequireEnd;
}

bool VTString::Pad(int iLength, wchar_t cPad, bool bAtEnd, bool bTruncate) {
    RVF_ASSERT(iLength >= 0);
    const int iCurrLength = Length();
    if (iCurrLength == iLength) {
        return true;
    }
    if (iCurrLength > iLength) {
        if (bTruncate) {
            Trunc(iLength + 1);
        }
        return true;
    }
    RVF_ASSERT(iCurrLength < iLength);
    const int iNumPadChars = iLength - iCurrLength;
    RVF_ASSERT(iNumPadChars > 0);
    VTString sPadString;
    if (!sPadString.SetBufferLength(iNumPadChars + 1)) {
        return false;
    }
    std::fill_n(sPadString.m_pdata, iNumPadChars, cPad);
    sPadString.UpdateStringLength();
    RVF_ASSERT(sPadString.Length() + iCurrLength == iLength);
    if (bAtEnd) {
        *this += sPadString;
    } else {
        const VTString sPadded = sPadString + *this;
        Assign(~sPadded, -1);
    }
    return true;
}
