#pragma once

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfExport.h"

#include <cstdarg>
#include <cstdlib>

namespace rvf {
class String;
}

/// The text behind every null VTString.
inline constexpr wchar_t VT_EMPTY_STRING[] = L"";

/// Room of the buffer that formatted texts are written to, in characters. Formatted texts of 3990 characters and more
/// are reported as a failed assertion.
inline constexpr int VT_MAX_FORMAT_LENGTH = 4000;

/// The foundation's wide text: mutable, zero-terminated, with a cursor for walking it word by word or token by token.
///
/// Positions and counts are `int`, counted from 0 in characters; -1 means not found. A default string is *null*: it has
/// no buffer. An *empty* string has a buffer that holds the terminator alone. Both are IsEmpty(), yet they are not
/// equal to each other. Where this page says "the empty text", an empty string is meant, not a null one.
///
/// Buffers are exact: a string holds no spare room unless SetBufferLength() made it, or the text was made shorter in
/// place.
///
/// The cursor is 0 in a new string, also in a copy. Assignment by `=` and FormatV() put it back to 0; no other change
/// of the text moves it. The word operations and the token operations share it.
///
/// White space and control characters are those of the C library (`iswspace`, `iswcntrl`) in the current locale. Case
/// follows the narrow `toupper` and `tolower`: a character above 255 has no case here, and in a UTF-8 locale none above
/// 127 has.
///
/// Reading a character outside the buffer gives 0, and writing one changes nothing, both after a failed assertion.
///
/// A string is for one thread at a time, also where a method is const: see ShortChar().
class ORV_API VTString {
public:
    /// @name Construction and assignment
    /// @{

    /// A null string.
    VTString();
    /// A copy of the characters; a null pointer gives a null string.
    VTString(const wchar_t* pszText);
    /// A copy of the characters, without the cursor and without spare room. A null string gives a null string.
    VTString(const VTString& sOther);
    /// Converts by `mbstowcs` in the current locale. A null pointer, and a text that the locale cannot read, give a
    /// null string.
    VTString(const char* pszText);
    /// The number as "%d", in a buffer of 64 characters. A `char` comes here as well: VTString('a') is the text 97.
    VTString(int iValue);
    /// The text of that one character; the character 0 gives the empty text.
    VTString(wchar_t cChr);
    /// The number as "%g", so with six significant digits.
    VTString(float fValue);
    /// The number as "%g", so with six significant digits.
    VTString(double dValue);
    /// The same text; never null.
    VTString(const rvf::String& sText);
    ~VTString() {
        std::free(m_pdata);
        delete[] m_pszShortChar;
    }

    /// The same text. A null string gives an empty one: the core's texts have no null.
    operator rvf::String() const;

    /// Assign(sOther, -1), and the cursor goes back to 0. Assigning a string to itself cuts its buffer to size.
    VTString& operator=(const VTString& sOther);
    /// Assign(pszText, -1), and the cursor goes back to 0.
    VTString& operator=(const wchar_t* pszText);

    /// Takes the first `iCount` characters of `pszText`, all of them when `iCount` is negative, into a new buffer of
    /// exactly that size. `pszText` may point into this very string. A null `pszText` makes the string null. A
    /// terminator within the first `iCount` characters ends the text there, but the buffer has room for all. The cursor
    /// stays. When there is no memory, "m_pdata" is asserted and the string becomes null.
    void Assign(const wchar_t* pszText, int iCount = -1);
    /// @}

    /// @name State
    /// @{

    /// Whether there is no buffer. Asserts the invariants of the fields.
    bool IsNull() const {
        if (m_pdata) {
            RVF_ASSERT(m_iBufferLength > 0);
            RVF_ASSERT(m_iStringLength >= -1);
            return false;
        }
        RVF_ASSERT(m_iBufferLength == 0);
        RVF_ASSERT(m_iStringLength == 0 || m_iStringLength == -1);
        return true;
    }
    /// Whether there are no characters: null, or a buffer that begins with the terminator.
    bool IsEmpty() const;
    /// Whether the text is empty or all of it is blanks, tabs, line feeds and carriage returns.
    bool IsBlank() const;

    /// Characters before the terminator. Counts each time while the length is not known, that is after SetAt(), Trunc()
    /// or GetBuffer(), until an operation that is not const refreshes it.
    int Length() const {
        return m_iStringLength >= 0 ? m_iStringLength : CountCharacters();
    }
    /// Characters before the terminator. Refreshes the length when it is not known.
    int Length() {
        if (m_iStringLength < 0) {
            UpdateStringLength();
        }
        return m_iStringLength;
    }
    /// Counts the characters anew. Needed only after SetBufferLength() cut the text, or after writing through an old
    /// GetBuffer() pointer.
    void UpdateStringLength();
    /// @}

    /// @name Comparison, by character code
    /// @{

    /// Both null, or both with a buffer and the same text. A null string does not equal an empty one.
    bool operator==(const VTString& sOther) const;
    bool operator!=(const VTString& sOther) const;
    /// By character code; null and empty count as the same here, and come before every other text.
    bool operator<(const VTString& sOther) const;
    bool operator>(const VTString& sOther) const;

    /// Negative, 0 or positive as this text comes before `sOther`, is the same, or comes after it, over the first
    /// `iCharCount` characters, or all with -1. Null comes before empty: 0 when both are null, 1 when only the other
    /// one is, -1 when only this one is, whatever `iCharCount` says. Asserts "iCharCount >= -1".
    int Compare(const VTString& sOther, int iCharCount = -1) const;
    /// The same without case; always -1, 0 or 1.
    int CompareNoCase(const VTString& sOther, int iCharCount = -1) const;

    /// Every text but a null one starts with the empty text; only a null string starts with a null string.
    bool StartsWith(const VTString& sOther) const;
    bool StartsWithNoCase(const VTString& sOther) const;
    /// No text contains an empty one.
    bool Contains(const VTString& sOther) const;
    bool ContainsNoCase(const VTString& sOther) const;
    /// @}

    /// @name Search
    /// @{

    /// Position of `sWhat`, looked for at `iStart` first and then upward, or downward to 0. An `iStart` of -1 is the
    /// last place where `sWhat` fits, so a forward search from -1 can match at the very end only.
    /// @return -1 when there is no match, when either text is empty, when `iStart` is outside, and when `sWhat` does
    /// not
    ///         fit at `iStart`, also when searching downward.
    int Find(const VTString& sWhat, int iStart = 0, bool bForward = true, bool bCaseSensitive = true) const;
    /// Position of `cChr`; an `iStart` of -1 is the last character.
    int Find(wchar_t cChr, int iStart = 0, bool bForward = true, bool bCaseSensitive = true) const;
    /// Counts `cChr` from `iStart` to that end of the text; -1 is the last character. 0 when `iStart` is outside.
    int FindAll(wchar_t cChr, int iStart = 0, bool bForward = true) const;
    /// Position of the first digit, or of the "-" or "+" right before it; -1 when there is no digit. A decimal point
    /// before the digit is not seen.
    int FindFirstNumber() const;
    /// @}

    /// @name Access
    /// @{

    /// The character at a position from 0 to Length(), where the terminator stands. Asserts "iPos >= 0",
    /// "iPos < m_iBufferLength" and "iPos <= Length()".
    wchar_t GetAt(int iPos) const;
    wchar_t operator[](int iPos) const;
    /// Replaces a character; the terminator may only be written over by itself. Writing a 0 cuts the text there. The
    /// length is forgotten. Asserts "iPos >= 0", "iPos < m_iBufferLength" and
    /// "iPos < Length() || (cChr == '\0' && iPos == Length())".
    void SetAt(int iPos, wchar_t cChr);

    /// The characters, never null. Valid until the string changes.
    const wchar_t* operator~() const {
        return m_pdata ? m_pdata : VT_EMPTY_STRING;
    }
    /// The buffer to write to, null for a null string. The length is forgotten; the caller keeps the text terminated
    /// within GetBufferLength(), if need be by ZeroTerminate().
    wchar_t* GetBuffer();
    /// Room of the buffer in characters, terminator included; 0 for a null string.
    int GetBufferLength() const {
        return m_iBufferLength;
    }
    /// Makes room for `iLength` characters, terminator included, and keeps the characters that fit. Reserving room
    /// first is what lets `+=` append in place. Cutting below the text's length leaves Length() as it was: call
    /// UpdateStringLength() then, before anything else. A null string gets an empty buffer.
    /// Asserts "iLength > 0".
    /// @return false when there is no memory, with the string unchanged.
    bool SetBufferLength(int iLength);
    /// Cuts the buffer to the size of the text.
    void TrimBuffer();
    /// Makes sure that the buffer holds a terminator: writes one in the last place when there is none. The length is
    /// known again.
    /// @return the position of the first terminator; -1 for a null string.
    int ZeroTerminate();

    /// A narrow copy by `wcstombs` in the current locale, up to the first character that the locale cannot write. The
    /// copy belongs to the string: the next call of ShortChar() on it, const as it is marked, frees it, and other
    /// changes of the string do not follow into it.
    /// @return null for a null string.
    const char* ShortChar() const;
    /// Writes a narrow text of at most `iSize` bytes and a zero at `pszString[iSize]`: `pszString` needs room for
    /// `iSize + 1` bytes. What the locale cannot write ends the text. Asserts "pszString".
    void GetShortChar(char* pszString, int iSize) const;
    /// @}

    /// @name Building
    /// @{

    /// Appends. In place when the buffer has room, and the length is known; otherwise the buffer becomes as large as
    /// the text needs, no larger. An empty right side changes nothing: a null string stays null.
    VTString& operator+=(const VTString& sOther);
    VTString& operator+=(const wchar_t* pszText);
    /// Both texts in a row; never null. Asserts "tmpstr" when there is no memory, and gives a null string then.
    friend ORV_API VTString operator+(const VTString& sFirst, const VTString& sSecond);
    /// @}

    /// @name Substrings
    /// @{

    /// The characters from `iStart` to `iEnd`, both included; a negative `iEnd` is the last character. The empty text
    /// unless both lie in the text in this order.
    VTString GetSubString(int iStart, int iEnd = -1) const;
    /// `iCount` characters from `iStart` on, or as many as there are; a negative `iCount` takes all. The empty text
    /// when `iStart` is outside the text.
    VTString Mid(int iStart, int iCount = -1) const;
    /// The first `iCount` characters, all when `iCount` is negative.
    VTString Left(int iCount) const;
    /// The last `iCount` characters; the empty text when `iCount` is negative.
    VTString Right(int iCount) const;

    /// Cuts the text at a position, as SetAt(iPos, 0).
    void Trunc(int iPos);
    /// Cuts the text where Find() with case hits.
    /// @return false when there is no hit, with the text unchanged.
    bool Trunc(wchar_t cChr, int iStart = 0, bool bForward = true);
    bool Trunc(char cChr, int iStart = 0, bool bForward = true);
    bool Trunc(const VTString& sWhat, int iStart = 0, bool bForward = true);
    /// @}

    /// @name Case and clean-up
    /// @{

    void ToLower();
    void ToUpper();
    VTString AsLower() const;
    VTString AsUpper() const;
    /// Upper case for the first character and for each one behind a blank, lower case for all others.
    void Capitalize();
    /// Upper case for the first character, lower case for all others. The name tells otherwise, and is spelled so.
    void DeCaptitalize();

    /// Removes white space in front, with `bControlToo` control characters as well. A negative character stops it.
    /// @return whether something was removed; for a null string, `bControlToo`.
    bool TrimLeft(bool bControlToo = false);
    /// The same at the end.
    bool TrimRight(bool bControlToo = false);
    /// The same at both ends.
    bool Trim(bool bControlToo = false);
    /// A copy after Trim(false).
    VTString AsTrimmed() const;

    /// Removes each `cChr`. Asserts "cChr != '\0'".
    /// @return how many there were.
    int StripCharacter(wchar_t cChr);
    /// Trim(false), tabs to blanks, then each run of blanks to one.
    void Nicify();

    /// Replaces `sWhat` from the front on, `iMaxCount` times at most, without limit when that is not positive.
    /// @return how many were replaced.
    int Replace(const VTString& sWhat, const VTString& sWith, int iMaxCount = 0, bool bCaseSensitive = true);
    /// The same for one character, in place. Replacing by the character 0 cuts the text.
    int Replace(wchar_t cWhat, wchar_t cWith, int iMaxCount = 0, bool bCaseSensitive = true);

    /// Puts `cQuote` in front unless the text starts with it, and behind unless it ends with it. An empty text gets
    /// both; the text of `cQuote` alone stays as it is.
    void Quote(wchar_t cQuote = L'"');
    /// Takes the quotes off, with white space and control characters around them. A text that does not begin with
    /// `cQuote` stays as it is. An opening quote comes off without a closing one too, also when `bRequireEnd` makes the
    /// answer false: the text is changed then.
    /// @return whether there was an opening quote and, with `bRequireEnd`, a closing one.
    bool Unquote(wchar_t cQuote = L'"', bool bRequireEnd = false);

    /// Fills the text up to `iLength` characters with `cPad`, behind or in front. With `bTruncate` a longer text is
    /// cut, but to `iLength + 1` characters: one more than asked. Asserts "iLength >= 0".
    /// @return false when there is no memory.
    bool Pad(int iLength, wchar_t cPad = L' ', bool bAtEnd = true, bool bTruncate = false);
    /// @}

    /// @name Words
    /// A word ends at a blank, a tab or a comma, or with the text. Blanks and tabs in front of it are skipped, commas
    /// are not: `a,,b` has the words a, an empty one and b, and `a ,b` too. Line feeds and carriage returns do not end
    /// a word, they are only cut from its end. An empty word may thus stand before the last word; behind the last word
    /// only empty ones come.
    /// @{

    /// Moves the cursor to 0 and takes the next word.
    VTString GetFirstWord();
    /// The word from the cursor on. The cursor goes behind it, past one separator. The empty text when no word is left.
    VTString GetNextWord();
    /// The word number `iIndex`, counted from 0. The first empty word ends the count and is what comes back then.
    VTString GetWord(int iIndex);
    /// The text from the cursor on, and the cursor goes behind it as behind a last word; the empty text when there is
    /// none.
    VTString GetRest();
    /// Counts the places where a word begins: behind a blank, tab, comma or the start, at any character that is no
    /// blank, tab, line feed or carriage return. A comma behind a comma counts, so this can be more than GetNextWord()
    /// delivers.
    int GetNumWords() const;
    /// 1 and one for each line feed, but none for a line feed at the end. 0 for an empty text.
    int GetNumLines() const;
    /// How many words have no "." and are IsNumber(false). Leaves the cursor at the end.
    int GetNumInts();
    /// How many words are IsNumber(false), with or without a ".". Leaves the cursor at the end.
    int GetNumFloats();
    /// @}

    /// @name Tokens
    /// A token is the text between two separators; two separators in a row have an empty one between them, and a
    /// separator at the very end has none behind it. `pbMore`, which may be null, tells whether a separator ended this
    /// token; so it is true for the last token of a text that ends in a separator.
    /// @{

    /// Moves the cursor to 0 and takes the next token.
    VTString GetFirstToken(wchar_t cSeparator, bool* pbMore = nullptr);
    /// The token from the cursor on, and the cursor goes behind its separator. A null string, with `*pbMore` false,
    /// when the cursor is at the end of the text.
    VTString GetNextToken(wchar_t cSeparator, bool* pbMore = nullptr);

    /// The same with a whole text as separator. Asserts "iNumCharsInSeparator > 0"; an empty separator never matches.
    VTString GetFirstToken(const VTString& sSeparator, bool* pbMore = nullptr);
    VTString GetNextToken(const VTString& sSeparator, bool* pbMore = nullptr);

    /// The same, but a separator between `cStartEscape` and `cEndEscape`, quotes or brackets, does not count. Escapes
    /// do not nest, and stay in the token. Asserts "cSeparator != cStartEscape" and "cSeparator != cEndEscape".
    VTString GetFirstToken(wchar_t cSeparator, wchar_t cStartEscape, wchar_t cEndEscape, bool* pbMore = nullptr);
    VTString GetNextToken(wchar_t cSeparator, wchar_t cStartEscape, wchar_t cEndEscape, bool* pbMore = nullptr);

    /// Counts tokens, but not as the walk does: a run of separators counts once; trailing separators, with nothing but
    /// control characters behind, do not count; an empty text has 1 token. `a,,b` has 2 here and 3 in the walk. An
    /// escape character of 0 never matches. Asserts "cSeparator != cStartEscape" and "cSeparator != cEndEscape".
    int GetNumTokens(wchar_t cSeparator, wchar_t cStartEscape = L'\0', wchar_t cEndEscape = L'\0') const;
    /// @}

    /// @name Numbers
    /// A text that cannot be read gives the default, and so does an empty one.
    /// @{

    /// By `swscanf`: what follows the number is not looked at, so `12abc` is 12.
    int AsInt(int iDefault = 0) const;
    long long AsInt64(long long iDefault = 0) const;
    /// By `wcstod`: only white space may follow the number, so `12abc` is the default.
    float AsFloat(float fDefault = 0.0f) const;
    double AsDouble(double dDefault = 0.0) const;
    /// The first number at or behind `iStart`: the first digit with the point and the sign before it, and the fraction
    /// and the exponent behind it. 0 when there is none.
    float GetFirstFloat(int iStart = 0) const;
    /// By the first character alone: one of `1TYty` is true, one of `0FNfn` is false, any other gives the default, a
    /// blank too.
    bool AsBool(bool bDefault = false) const;
    /// Whether all characters are of those that numbers are made of: digits and `.eE+-`, with `bAllowD` also `dD`.
    /// Their order is not looked at: `1e+-` passes. White space is allowed at both ends, not inside. False when empty;
    /// a text of white space alone passes.
    bool IsNumber(bool bAllowD = false) const;
    /// @}

    /// @name Formatting
    /// @{

    static VTString Make(int iValue);
    static VTString Make(unsigned int uiValue);
    /// As "%g".
    static VTString Make(float fValue);
    static VTString Make(double dValue);

    /// As `sprintf`. Texts go in narrow, as "%s": asserts "VTString(szFormat).Find("%ls") == -1". The result is read
    /// back in the current locale, and is null when that fails.
    static VTString MakeForm(const char* szFormat, ...) __attribute__((format(printf, 1, 2)));
    static VTString MakeFormArgList(const char* szFormat, va_list args) __attribute__((format(printf, 1, 0)));
    /// As `swprintf`. Texts go in wide, as "%ls": asserts "VTString(szFormat).Find("%s") == -1".
    static VTString MakeFormWide(const wchar_t* szFormat, ...);
    static VTString MakeFormArgListWide(const wchar_t* szFormat, va_list args);

    /// Sets the string to the formatted text, and the cursor back to 0. A text of 3990 characters and more is asserted
    /// with "iNumWritten < (VT_MAX_FORMAT_LENGTH - 10)", and cut at VT_MAX_FORMAT_LENGTH - 1. The wide form answers a
    /// text that does not fit at all with a negative count: then it is cut in silence.
    void FormatV(const char* szFormat, va_list args) __attribute__((format(printf, 2, 0)));
    void FormatV(const wchar_t* szFormat, va_list args);
    /// @}

private:
    bool MakeBuffer(int iLength);
    static VTString Piece(const wchar_t* pszText, int iCount);
    int CountCharacters() const;
    void Append(const wchar_t* pszText, int iCount);
    void CutFront(int iCount);
    void CutAt(int iLength);
    VTString TakeToken(int iTokenPos, int iSeparatorLength, bool* pbMore);
    bool IsAtEnd(bool* pbMore);
    int CountNumberWords(bool bWithPoint);

    wchar_t* m_pdata = nullptr;
    int m_iStringLength = 0; // -1: not known
    int m_iBufferLength = 0;
    int m_iSearchPos = 0;
    mutable char* m_pszShortChar = nullptr;
};
