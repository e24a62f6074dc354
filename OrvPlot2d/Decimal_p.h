#pragma once

#include <cstdint>
#include <string>

namespace orv::plt {

/// The number digits * 10^exponent, exactly: what stands at a tick. Binary numbers would leave tails such as
/// 0.30000000000000004.
struct Decimal {
    std::int64_t digits = 0;
    int exponent = 0;

    bool operator==(const Decimal&) const = default;
};

/// The nearest double. Only for what a double can hold.
double toDouble(const Decimal& number);

/// Written out, with as many decimals as the exponent says and no others: {250, -2} is "2.50", {25, 1} is "250". The
/// minus sign is the typographic one, U+2212.
std::wstring plainText(const Decimal& number);

/// "10" with the exponent raised behind it.
std::wstring powerOfTenText(int exponent);

} // namespace orv::plt
