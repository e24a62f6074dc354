#pragma once

#include "LibCore/rvfExport.h"
#include "LibUnstructGrid/VTOFileName.h"
#include "LibUnstructGrid/VTOString.h"

#include <cstdio>

/// The bits of an access mode.
enum VTFileAccessMode : unsigned int {
    VT_FILE_READ = 1,
    VT_FILE_WRITE = 2,
    VT_FILE_APPEND = 4,
    VT_FILE_TEXT = 8,            ///< Text; a file is binary without it.
    VT_FILE_CREATE = 16,         ///< With read and write: create, or truncate.
    VT_FILE_OPEN_OR_CREATE = 32, ///< Open without truncating, and create when it is missing.
    VT_FILE_UNICODE = 64         ///< Unicode text.
};

/// What VTFileAccess() and VTCheckFileAccess() ask for.
enum VTFileAccessType : int {
    VT_ACCESS_READ = 0,
    VT_ACCESS_WRITE = 1,
    VT_ACCESS_READ_WRITE = 2,
    VT_ACCESS_EXISTENCE = 3
};

/// A C stream with a name and a mode. Failures come back as counts and as false; nothing is logged.
///
/// Bad arguments and a stream that is not open are asserted, and the operation then does nothing and answers 0 or
/// false, but for what is told at Flush() and GetEof().
class ORV_API VTFile {
public:
    /// Opens nothing. `uiMode` is made of VTFileAccessMode bits. Asserts "IsValidAccessMode(uiMode)".
    VTFile(const VTString& sFileName, unsigned int uiMode);
    /// Closes the file.
    virtual ~VTFile();

    VTFile(const VTFile&) = delete;
    VTFile& operator=(const VTFile&) = delete;

    /// Opens the file, and closes it first when it is open.
    ///
    /// | bits                               | C mode |
    /// |------------------------------------|--------|
    /// | append, read                       | a+     |
    /// | append                             | a      |
    /// | read, write, create, open/create   | r+, and w+ when that fails |
    /// | read, write, create                | w+     |
    /// | read, write, with or without open/create | r+ |
    /// | write, open/create                 | r+, and w+ when that fails |
    /// | write                              | w      |
    /// | read                               | r      |
    ///
    /// The first row that fits counts. Open/create with read and write thus needs create as well, or a missing file
    /// stays missing. "t" or "b" is added, and ",ccs=UNICODE" for Unicode.
    /// Asserts "m_pFile == NULL" (when an override of Close() keeps the file open) and "IsValidAccessMode(m_uiMode)".
    /// @return false without a name, and when the file cannot be opened; the file is closed then.
    virtual bool Open();
    /// Does nothing for a closed file.
    virtual void Close();
    /// Reads `iNum` items of `iSize` bytes. Asserts "pBuf", "iNum > 0", "iSize > 0" and "m_pFile".
    /// @return the number of whole items read.
    virtual int Read(void* pBuf, int iSize, int iNum);
    /// Writes `iNum` items of `iSize` bytes, as they stand. Asserts as Read() does.
    /// @return the number of whole items written.
    virtual int Write(const void* pBuf, int iSize, int iNum);

    /// Asserts "m_pFile", and without a file it flushes all streams of the process, and answers for them.
    bool Flush();
    /// Asserts "m_pFile". See VTSetFilePosStart().
    bool SeekToBegin();
    /// Asserts "m_pFile". See VTSetFilePosEnd().
    bool SeekToEnd();
    /// Asserts "m_pFile". See VTSetFilePosFromCurrent().
    bool SeekFromCurrent(long long iOffset);
    /// Whether a read met the end of the file; true without a file. Asserts "m_pFile".
    bool GetEof();

    /// Whether a mode has at least one of the bits read, write and append, and no unknown bit.
    static bool IsValidAccessMode(unsigned int uiMode);

protected:
    FILE* m_pFile = nullptr;
    VTString m_sFileName;
    unsigned int m_uiMode;

private:
    static FILE* DoOpenFile(const VTString& sFileName, unsigned int uiMode);
};

/// A file of numbers that may be in the other byte order.
///
/// With the swap flag set, Read(), ReadVal() and WriteVal() turn each item round. Beware: Write() does not.
class ORV_API VTBinaryFile : public VTFile {
public:
    /// Opens nothing. Asserts "IsValidAccessMode(uiMode)".
    VTBinaryFile(const VTString& sFileName, unsigned int uiMode, bool bSwap);
    ~VTBinaryFile() override;

    /// Reads and swaps items. When the stream has an error before all have come, those that came are not swapped.
    int Read(void* pBuf, int iSize, int iNum) override;

    /// Read one number of 4 bytes. Assert "piVal" or "pfVal", and "m_pFile".
    /// @return false when it cannot be read.
    bool ReadVal(int* piVal);
    bool ReadVal(float* pfVal);
    /// Write one number of 4 bytes. Assert "m_pFile".
    /// @return false when it cannot be written.
    bool WriteVal(int iVal);
    bool WriteVal(float fVal);

    virtual void SetSwap(bool bSwap);
    virtual bool GetSwap() const;

private:
    bool ReadItem(void* pItem);
    bool WriteItem(unsigned char* pItem);

    bool m_bSwap;
};

/// Bytes in the file; 0 for a null stream, and when the system cannot tell.
ORV_API long long VTGetFileSize(FILE* pFile);

/// The position in the file, in bytes from its start. Asserts "pPosition".
/// @return false for a null stream, and for one without positions.
ORV_API bool VTGetFilePos(FILE* pFile, long long* pPosition);
/// Goes to a position as VTGetFilePos() gives it.
/// @return false for a null stream, and when the position cannot be reached.
ORV_API bool VTSetFilePos(FILE* pFile, long long iPosition);

/// Go to the start, to the end, or on by `iOffset` bytes. A file of 2147483647 bytes or more is asserted with
/// "iFileSize >= 0 && iFileSize < 2147483647", and gone to all the same.
/// @return false for a null stream, and when the position cannot be reached.
ORV_API bool VTSetFilePosStart(FILE* pFile);
ORV_API bool VTSetFilePosEnd(FILE* pFile);
ORV_API bool VTSetFilePosFromCurrent(FILE* pFile, long long iOffset);

/// Turns the bytes of each of `iNumItems` items round. Items of one byte, and of more than 32, stay as they are.
ORV_API void VTByteSwap(unsigned char* pData, unsigned int iItemSize, unsigned int iNumItems);

/// Whether there is a byte among the first 1024 that text does not have: below 32 other than tab, line feed and
/// carriage return, or 255. False for an empty file. The stream is at the start of the file afterwards.
ORV_API bool VTCheckBinary(FILE* pFile);

/// Whether a file is in the other byte order, told by its first integer, which has to lie from `iMin` to `iMax`.
///
/// Beware: a value that lies in the range both ways counts as swapped.
/// @return false when the integer cannot be read, and when it lies outside either way. The stream is at the start of
///         the file afterwards, unless the read failed.
ORV_API bool VTCheckSwap(FILE* pFile, int iMin, int iMax);

/// Whether an operation can work, also on a file yet to be made: a missing file may be written when its folder may, and
/// only VT_ACCESS_WRITE asks for that. Of a network path, with two backslashes in front, the folder only has to exist.
/// Asserts "szFileName".
ORV_API bool VTCheckFileAccess(const wchar_t* szFileName, VTFileAccessType type);

/// Whether what is there may be accessed in that way, by the system's `access`. False for another type.
/// Asserts "szFileName".
ORV_API bool VTFileAccess(const wchar_t* szFileName, VTFileAccessType type);
