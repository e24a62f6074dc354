#include "LibUnstructGrid/VTOFileName.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>

namespace {

const wchar_t SEPARATOR = L'/';
const wchar_t BACKSLASH = L'\\';

bool isAnySeparator(wchar_t cChr) {
    return cChr == SEPARATOR || cChr == BACKSLASH;
}

int findLast(const VTString& sName, wchar_t cChr) {
    return sName.Find(cChr, -1, false, true);
}

int findLastSeparator(const VTString& sName) {
    return std::max(findLast(sName, SEPARATOR), findLast(sName, BACKSLASH));
}

bool endsWith(const VTString& sName, wchar_t cChr) {
    return !sName.IsEmpty() && sName.GetAt(sName.Length() - 1) == cChr;
}

void addDot(VTString* psExtension) {
    if (psExtension->GetAt(0) != L'.') {
        *psExtension = L"." + *psExtension;
    }
}

VTString repeated(const VTString& sText, int iCount) {
    VTString sAll(L"");
    for (int i = 0; i < iCount; ++i) {
        sAll += sText;
    }
    return sAll;
}

// Cuts at the last backslash, and tells what stands behind the last one then.
VTString cutLastComponent(VTString* psRest) {
    const int iCut = findLast(*psRest, BACKSLASH);
    psRest->Trunc(iCut);
    const int iCount = iCut - findLast(*psRest, BACKSLASH) - 1;
    return iCount < 0 ? VTString(VT_EMPTY_STRING) : psRest->Right(iCount);
}

// Takes drive or host, and the folder behind it, by which a shortened name begins.
VTString takeRoot(VTString* psFull) {
    VTString sRoot(L"");
    if (psFull->StartsWith(L"\\\\")) {
        sRoot = L"\\\\";
        *psFull = psFull->Mid(2);
    }
    sRoot += psFull->GetFirstToken(BACKSLASH);
    sRoot += VTString(BACKSLASH);
    sRoot += psFull->GetNextToken(BACKSLASH);
    return sRoot;
}

// The last folders of `sRest`, whose file name is left out, that together stay below `iRoom` characters.
VTString foldersThatFit(VTString sRest, int iRoom) {
    VTString sTail(L"");
    VTString sNext = cutLastComponent(&sRest);
    while (sTail.Length() + sNext.Length() < iRoom && !sNext.IsEmpty()) {
        // An integer, so that the joint shows as the digits of the backslash's code.
        sTail = sNext + VTString(static_cast<int>(BACKSLASH)) + sTail;
        sNext = cutLastComponent(&sRest);
    }
    return sTail;
}

} // namespace

VTString VTGetDirectorySeparator() {
    return VTString(SEPARATOR);
}

VTString VTGetFilePath(const VTString& sName, bool bIncludeSeparator) {
    const int iSeparator = findLast(sName, SEPARATOR);
    if (iSeparator < 0) {
        return VTString(VT_EMPTY_STRING);
    }
    VTString sPath = sName.GetSubString(0, bIncludeSeparator ? iSeparator : std::max(iSeparator - 1, 0));
    sPath.StripCharacter(L'"');
    return sPath;
}

VTString VTGetFileName(const VTString& sName, bool bIncludeExtension) {
    VTString sFileName(sName);
    const int iSeparator = findLast(sName, SEPARATOR);
    if (iSeparator >= 0) {
        sFileName = sName.Mid(iSeparator + 1);
        sFileName.StripCharacter(L'"');
    }
    const int iDot = findLast(sFileName, L'.');
    if (!bIncludeExtension && iDot > 0) {
        sFileName.Trunc(iDot);
    }
    return sFileName;
}

VTString VTCombinePathAndFileName(const VTString& sPath, const VTString& sName) {
    if (sPath.IsEmpty()) {
        return sName;
    }
    return endsWith(sPath, SEPARATOR) ? sPath + sName : sPath + VTString(SEPARATOR) + sName;
}

VTString VTGetAsNativePath(const VTString& sName) {
    VTString sNative(sName);
    sNative.Replace(BACKSLASH, SEPARATOR);
    return sNative;
}

bool VTCompareFileNames(VTString sFirst, VTString sSecond) {
    sFirst.Trim(false);
    sSecond.Trim(false);
    return VTGetAsNativePath(sFirst).Compare(VTGetAsNativePath(sSecond), -1) == 0;
}

VTString VTQuoteFileName(VTString sName) {
    sName.StripCharacter(L'"');
    sName.Trim(false);
    sName.Quote(L'"');
    return sName;
}

bool VTIsRelativePath(const VTString& sPathName) {
    if (sPathName.IsEmpty()) {
        return true;
    }
    RVF_ASSERT(sPathName.Length() > 0);
    return sPathName.GetAt(0) != SEPARATOR;
}

VTString VTGetFileExtension(const VTString& sName) {
    const VTString sFileName = VTGetFileName(sName, true);
    const int iDot = findLast(sFileName, L'.');
    return iDot < 0 ? VTString(VT_EMPTY_STRING) : sFileName.Mid(iDot);
}

bool VTRemoveFileExtension(VTString* psFileName) {
    RVF_ASSERT(psFileName);
    if (!psFileName) {
        return false;
    }
    const int iDot = findLast(*psFileName, L'.');
    const int iBackslash = findLast(*psFileName, BACKSLASH);
    const int iSeparator = iBackslash >= 0 ? iBackslash : findLast(*psFileName, SEPARATOR);
    if (iDot < 1 || iSeparator >= iDot) {
        return false;
    }
    psFileName->Trunc(iDot);
    return true;
}

void VTReplaceFileExtension(VTString* psFileName, VTString sExtension) {
    RVF_ASSERT(psFileName);
    if (!psFileName || sExtension.IsBlank() || !VTRemoveFileExtension(psFileName)) {
        return;
    }
    addDot(&sExtension);
    *psFileName += sExtension;
}

void VTSetFileExtension(VTString* psFileName, VTString sExtension, bool bForce) {
    RVF_ASSERT(psFileName);
    if (!psFileName || sExtension.IsBlank()) {
        return;
    }
    addDot(&sExtension);
    const VTString sOldExtension = VTGetFileExtension(*psFileName);
    if (sOldExtension.IsEmpty()) {
        *psFileName += sExtension;
    } else if (bForce || sOldExtension == sExtension) {
        VTReplaceFileExtension(psFileName, sExtension);
    } else {
        *psFileName += sExtension;
    }
}

VTString VTGetRelativeFilename(const VTString& sFile, const VTString& sBase) {
    if (VTIsRelativePath(sFile) || VTIsRelativePath(sBase)) {
        return sFile;
    }
    const wchar_t* pszFile = ~sFile;
    const wchar_t* pszBase = ~sBase;
    const int iMostCommon = std::min(findLastSeparator(sFile), findLastSeparator(sBase));
    int iCommon = static_cast<int>(std::mismatch(pszFile, pszFile + iMostCommon, pszBase).first - pszFile);
    if (iCommon < 2) {
        return sFile;
    }
    if (isAnySeparator(pszFile[iCommon])) {
        ++iCommon;
    }
    if (iCommon >= sFile.Length()) {
        return sFile;
    }
    const auto iSteps = std::count_if(pszBase + iCommon, pszBase + sBase.Length(), isAnySeparator);
    return repeated(L"../", static_cast<int>(iSteps)) + sFile.Mid(iCommon);
}

VTString VTGetAbsoluteFilename(const VTString& sFile, const VTString& sBase) {
    if (!VTIsRelativePath(sFile) || VTIsRelativePath(sBase)) {
        return sFile;
    }
    unsigned int uiSteps = 0;
    const VTString sBackslashStep(L"..\\");
    for (int iHit = sFile.Find(sBackslashStep); iHit >= 0; iHit = sFile.Find(sBackslashStep, iHit + 3)) {
        ++uiSteps;
    }
    // Does not end once it finds one; callers are told so.
    const VTString sStep(L"../");
    while (sFile.Find(sStep) >= 0) {
        ++uiSteps;
    }
    VTString sFolder = VTGetFilePath(sBase, false);
    for (unsigned int i = 0; i < uiSteps; ++i) {
        const int iSeparator = findLastSeparator(sFolder);
        if (iSeparator >= 0) {
            sFolder.Trunc(iSeparator);
        }
    }
    return sFolder + VTGetDirectorySeparator() + sFile.Mid(3 * static_cast<int>(uiSteps));
}

VTString VTGetFileDisplayName(const VTString& sFile, const VTString& sCurrentDir, int iMaxChars) {
    if (sFile.IsBlank()) {
        return VTString(VT_EMPTY_STRING);
    }
    VTString sFull(sFile);
    VTString sPath = VTGetFilePath(sFull, true);
    const VTString sName = VTGetFileName(sFull, true);
    if (!sCurrentDir.IsEmpty() && !sPath.IsEmpty() && !endsWith(sCurrentDir, BACKSLASH)) {
        sPath.Trunc(sPath.Length() - 1);
    }
    if (sPath == sCurrentDir) {
        return sName;
    }
    if (sFull.Length() < iMaxChars) {
        return sFull;
    }
    if (sName.Length() >= iMaxChars) {
        return sName;
    }

    const VTString sRoot = takeRoot(&sFull);
    const VTString sNext = sFull.GetNextToken(BACKSLASH);
    if (sNext.IsEmpty()) {
        return sName;
    }
    const VTString sDisplay = sRoot + L"\\...\\";
    const int iRoom = iMaxChars - sDisplay.Length() - sName.Length();
    if (iRoom <= 0) {
        return sDisplay + sName;
    }
    return sDisplay + foldersThatFit(sNext + VTString(BACKSLASH) + sFull.GetRest(), iRoom) + sName;
}
