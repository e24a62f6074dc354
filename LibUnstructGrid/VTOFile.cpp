#include "LibUnstructGrid/VTOFile.h"

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfString.h"
#include "LibIo/rvfFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace {

constexpr unsigned int MAX_SWAPPED_ITEM_SIZE = 32;
constexpr unsigned int NUMBER_SIZE = 4;
static_assert(sizeof(int) == NUMBER_SIZE && sizeof(float) == NUMBER_SIZE);

struct OpenMode {
    const wchar_t* szBase;
    bool bRetry;
};

OpenMode baseModeOf(unsigned int uiMode) {
    const bool bRead = (uiMode & VT_FILE_READ) != 0;
    const bool bWrite = (uiMode & VT_FILE_WRITE) != 0;
    const bool bCreate = (uiMode & VT_FILE_CREATE) != 0;
    const bool bOpenOrCreate = (uiMode & VT_FILE_OPEN_OR_CREATE) != 0;
    if ((uiMode & VT_FILE_APPEND) != 0) {
        return {bRead ? L"a+" : L"a", false};
    }
    if (bRead && bWrite) {
        return bCreate && !bOpenOrCreate ? OpenMode{L"w+", false} : OpenMode{L"r+", bCreate};
    }
    if (bWrite) {
        return bOpenOrCreate ? OpenMode{L"r+", true} : OpenMode{L"w", false};
    }
    return {bRead ? L"r" : L"", false};
}

bool isTextByte(unsigned char byte) {
    return byte == '\t' || byte == '\n' || byte == '\r' || (byte >= 32 && byte < 255);
}

bool seek(FILE* pFile, long long iOffset, int iOrigin) {
    const long long iFileSize = VTGetFileSize(pFile);
    RVF_ASSERT(iFileSize >= 0 && iFileSize < 2147483647);
    return pFile && ::fseeko(pFile, static_cast<off_t>(iOffset), iOrigin) == 0;
}

} // namespace

VTFile::VTFile(const VTString& sFileName, unsigned int uiMode) : m_sFileName(sFileName), m_uiMode(uiMode) {
    RVF_ASSERT(IsValidAccessMode(uiMode));
}

VTFile::~VTFile() {
    VTFile::Close();
}

bool VTFile::Open() {
    Close();
    RVF_ASSERT(m_pFile == NULL);
    RVF_ASSERT(IsValidAccessMode(m_uiMode));
    if (m_sFileName.IsEmpty()) {
        return false;
    }
    m_pFile = DoOpenFile(m_sFileName, m_uiMode);
    return m_pFile != nullptr;
}

FILE* VTFile::DoOpenFile(const VTString& sFileName, unsigned int uiMode) {
    RVF_ASSERT(!sFileName.IsBlank());
    RVF_ASSERT(IsValidAccessMode(uiMode));
    const OpenMode mode = baseModeOf(uiMode);
    VTString sMode(mode.szBase);
    RVF_ASSERT(!sMode.IsBlank());
    sMode += (uiMode & VT_FILE_TEXT) != 0 ? L"t" : L"b";
    if ((uiMode & VT_FILE_UNICODE) != 0) {
        sMode += L",ccs=UNICODE";
    }
    FILE* pFile = rvf::File::fopen(sFileName, sMode);
    if (!pFile && mode.bRetry) {
        sMode.Replace(L'r', L'w');
        pFile = rvf::File::fopen(sFileName, sMode);
    }
    return pFile;
}

void VTFile::Close() {
    if (m_pFile) {
        std::fclose(m_pFile);
        m_pFile = nullptr;
    }
}

int VTFile::Read(void* pBuf, int iSize, int iNum) {
    RVF_ASSERT(pBuf);
    RVF_ASSERT(iNum > 0);
    RVF_ASSERT(iSize > 0);
    RVF_ASSERT(m_pFile);
    if (!pBuf || iNum <= 0 || iSize <= 0 || !m_pFile) {
        return 0;
    }
    return static_cast<int>(std::fread(pBuf, static_cast<std::size_t>(iSize), static_cast<std::size_t>(iNum), m_pFile));
}

int VTFile::Write(const void* pBuf, int iSize, int iNum) {
    RVF_ASSERT(pBuf);
    RVF_ASSERT(iNum > 0);
    RVF_ASSERT(iSize > 0);
    RVF_ASSERT(m_pFile);
    if (!pBuf || iNum <= 0 || iSize <= 0 || !m_pFile) {
        return 0;
    }
    return static_cast<int>(
        std::fwrite(pBuf, static_cast<std::size_t>(iSize), static_cast<std::size_t>(iNum), m_pFile));
}

bool VTFile::Flush() {
    RVF_ASSERT(m_pFile);
    return std::fflush(m_pFile) != -1;
}

bool VTFile::SeekToBegin() {
    RVF_ASSERT(m_pFile);
    return VTSetFilePosStart(m_pFile);
}

bool VTFile::SeekToEnd() {
    RVF_ASSERT(m_pFile);
    return VTSetFilePosEnd(m_pFile);
}

bool VTFile::SeekFromCurrent(long long iOffset) {
    RVF_ASSERT(m_pFile);
    return VTSetFilePosFromCurrent(m_pFile, iOffset);
}

bool VTFile::GetEof() {
    RVF_ASSERT(m_pFile);
    return !m_pFile || std::feof(m_pFile) != 0;
}

bool VTFile::IsValidAccessMode(unsigned int uiMode) {
    const unsigned int uiAccess = VT_FILE_READ | VT_FILE_WRITE | VT_FILE_APPEND;
    const unsigned int uiKnown = 2 * VT_FILE_UNICODE - 1;
    return (uiMode & uiAccess) != 0 && uiMode <= uiKnown;
}

VTBinaryFile::VTBinaryFile(const VTString& sFileName, unsigned int uiMode, bool bSwap)
    : VTFile(sFileName, uiMode), m_bSwap(bSwap) {}

VTBinaryFile::~VTBinaryFile() = default;

int VTBinaryFile::Read(void* pBuf, int iSize, int iNum) {
    const int iDone = VTFile::Read(pBuf, iSize, iNum);
    if (iDone <= 0 || (iDone < iNum && std::ferror(m_pFile))) {
        return iDone;
    }
    if (m_bSwap) {
        VTByteSwap(static_cast<unsigned char*>(pBuf), static_cast<unsigned int>(iSize),
                   static_cast<unsigned int>(iDone));
    }
    return iDone;
}

bool VTBinaryFile::ReadItem(void* pItem) {
    if (!pItem || !m_pFile || std::fread(pItem, NUMBER_SIZE, 1, m_pFile) != 1) {
        return false;
    }
    if (m_bSwap) {
        VTByteSwap(static_cast<unsigned char*>(pItem), NUMBER_SIZE, 1);
    }
    return true;
}

bool VTBinaryFile::ReadVal(int* piVal) {
    RVF_ASSERT(piVal);
    RVF_ASSERT(m_pFile);
    return ReadItem(piVal);
}

bool VTBinaryFile::ReadVal(float* pfVal) {
    RVF_ASSERT(pfVal);
    RVF_ASSERT(m_pFile);
    return ReadItem(pfVal);
}

bool VTBinaryFile::WriteItem(unsigned char* pItem) {
    if (m_bSwap) {
        VTByteSwap(pItem, NUMBER_SIZE, 1);
    }
    return m_pFile && std::fwrite(pItem, NUMBER_SIZE, 1, m_pFile) == 1;
}

bool VTBinaryFile::WriteVal(int iVal) {
    RVF_ASSERT(m_pFile);
    return WriteItem(reinterpret_cast<unsigned char*>(&iVal));
}

bool VTBinaryFile::WriteVal(float fVal) {
    RVF_ASSERT(m_pFile);
    return WriteItem(reinterpret_cast<unsigned char*>(&fVal));
}

void VTBinaryFile::SetSwap(bool bSwap) {
    m_bSwap = bSwap;
}

bool VTBinaryFile::GetSwap() const {
    return m_bSwap;
}

long long VTGetFileSize(FILE* pFile) {
    struct stat result;
    return pFile && ::fstat(::fileno(pFile), &result) == 0 ? static_cast<long long>(result.st_size) : 0;
}

bool VTGetFilePos(FILE* pFile, long long* pPosition) {
    RVF_ASSERT(pPosition);
    if (!pFile || !pPosition) {
        return false;
    }
    const off_t position = ::ftello(pFile);
    if (position < 0) {
        return false;
    }
    *pPosition = static_cast<long long>(position);
    return true;
}

bool VTSetFilePos(FILE* pFile, long long iPosition) {
    return pFile && ::fseeko(pFile, static_cast<off_t>(iPosition), SEEK_SET) == 0;
}

bool VTSetFilePosStart(FILE* pFile) {
    return seek(pFile, 0, SEEK_SET);
}

bool VTSetFilePosEnd(FILE* pFile) {
    return seek(pFile, 0, SEEK_END);
}

bool VTSetFilePosFromCurrent(FILE* pFile, long long iOffset) {
    return seek(pFile, iOffset, SEEK_CUR);
}

void VTByteSwap(unsigned char* pData, unsigned int iItemSize, unsigned int iNumItems) {
    if (iItemSize <= 1 || iItemSize > MAX_SWAPPED_ITEM_SIZE) {
        return;
    }
    for (unsigned int i = 0; i < iNumItems; ++i, pData += iItemSize) {
        std::reverse(pData, pData + iItemSize);
    }
}

bool VTCheckBinary(FILE* pFile) {
    if (!pFile) {
        return false;
    }
    unsigned char bytes[1024];
    std::rewind(pFile);
    const std::size_t count = std::fread(bytes, 1, sizeof bytes, pFile);
    std::rewind(pFile);
    return !std::all_of(bytes, bytes + count, isTextByte);
}

bool VTCheckSwap(FILE* pFile, int iMin, int iMax) {
    int iValue = 0;
    if (!pFile) {
        return false;
    }
    std::rewind(pFile);
    if (std::fread(&iValue, sizeof iValue, 1, pFile) != 1) {
        return false;
    }
    std::rewind(pFile);
    VTByteSwap(reinterpret_cast<unsigned char*>(&iValue), sizeof iValue, 1);
    return iValue >= iMin && iValue <= iMax;
}

bool VTCheckFileAccess(const wchar_t* szFileName, VTFileAccessType type) {
    RVF_ASSERT(szFileName);
    if (!szFileName) {
        return false;
    }
    if (VTFileAccess(szFileName, VT_ACCESS_EXISTENCE)) {
        return type == VT_ACCESS_EXISTENCE || VTFileAccess(szFileName, type);
    }
    if (type != VT_ACCESS_WRITE) {
        return false;
    }
    VTString sFolder = VTGetFilePath(szFileName, true);
    if (sFolder.IsBlank()) {
        sFolder = L".";
    }
    const bool bNetwork = sFolder.StartsWith(L"\\\\");
    return VTFileAccess(~sFolder, bNetwork ? VT_ACCESS_EXISTENCE : type);
}

bool VTFileAccess(const wchar_t* szFileName, VTFileAccessType type) {
    RVF_ASSERT(szFileName);
    const int aiSystemModes[] = {R_OK, W_OK, R_OK | W_OK, F_OK};
    if (!szFileName || type < VT_ACCESS_READ || type > VT_ACCESS_EXISTENCE) {
        return false;
    }
    return ::access(rvf::String(szFileName).toUtf8().ptr(), aiSystemModes[type]) == 0;
}
