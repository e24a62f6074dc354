#pragma once

#include <cstddef>

namespace rvf::internal {

/// A string literal as a template argument.
template <std::size_t N>
struct Literal {
    char text[N] = {};

    constexpr Literal(const char (&literal)[N]) {
        for (std::size_t i = 0; i < N; ++i) {
            text[i] = literal[i];
        }
    }
};

/// Cuts a compiler's file name down to "Folder/Unit": the last folder and the file's name without extension, so that
/// texts do not depend on where the library was built.
template <std::size_t N>
constexpr Literal<N> shortenSourcePath(const Literal<N>& file) {
    std::size_t begin = 0;
    std::size_t folder = 0;
    std::size_t end = N - 1;
    for (std::size_t i = 0; i + 1 < N; ++i) {
        if (file.text[i] == '/') {
            begin = folder;
            folder = i + 1;
            end = N - 1;
        } else if (file.text[i] == '.') {
            end = i;
        }
    }
    Literal<N> path = file;
    for (std::size_t i = 0; i < N; ++i) {
        path.text[i] = begin + i < end ? file.text[begin + i] : '\0';
    }
    return path;
}

template <Literal File>
inline constexpr auto sourcePathOf = shortenSourcePath(File);

} // namespace rvf::internal

/// The source path of the line it stands on: "LibCore/rvfAssert" in LibCore/rvfAssert.cpp. A `const char*` that lives
/// as long as the program.
#define RVF_SOURCE_PATH (::rvf::internal::sourcePathOf<::rvf::internal::Literal(__FILE__)>.text)
