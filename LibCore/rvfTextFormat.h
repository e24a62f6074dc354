#pragma once

#include <string>

/// Numbers and placeholders in wide text, for String and orv::Str alike. Not installed.
namespace rvf::internal {

/// A number as `printf` writes it in the "C" locale, whatever the locale of the process: the decimal point is always a
/// point. `format` is one of e, E, f, F, g, G; any other is taken for g. A negative `precision` is the C library's own,
/// which is 6.
std::wstring formatNumber(double value, char format, int precision);

/// Fills up with `fillChar` to the width: in front for a positive width, behind for a negative one. A longer text stays
/// whole.
std::wstring padText(const std::wstring& text, int fieldWidth, wchar_t fillChar);

/// The same for the text of a number: zeros in front go between the sign and the digits.
std::wstring padNumber(const std::wstring& number, int fieldWidth, wchar_t fillChar);

/// Replaces every occurrence of the lowest-numbered placeholder by `value`. A placeholder is a percent sign with one
/// digit or two behind it, so "%10" is number 10 and never number 1 before a zero, and "%01" is number 1. Text without
/// a placeholder comes back as it is. What `value` contains is not looked into.
std::wstring replaceLowestPlaceholder(const std::wstring& text, const std::wstring& value);

/// Replaces every occurrence of `before`, from the left; nothing when it is empty. What has been put in is not searched
/// again. One pass, so that many replacements in a long text stay cheap.
std::wstring replaceAll(const std::wstring& text, const std::wstring& before, const std::wstring& after);

} // namespace rvf::internal
