#pragma once

#include <string>
#include <string_view>

namespace tlm {

// Which file system's rules decide that two recent-file paths name the same file.
enum class PathStyle {
    Windows, // both separators, case ignored
    Posix,   // '/' only, case kept
};

#ifdef _WIN32
inline constexpr PathStyle NativePathStyle = PathStyle::Windows;
#else
inline constexpr PathStyle NativePathStyle = PathStyle::Posix;
#endif

// A lexical normal form: one separator between parts, "." parts gone, ".." taking out the part before
// it, no trailing separator. Under the Windows style '/' becomes '\' and letters are upper-cased, so
// equal forms mean the same file as far as text can tell. Nothing on disk is consulted.
std::u16string NormalizeRecentFilePath(std::u16string_view path, PathStyle style);

bool SameRecentFile(std::u16string_view left, std::u16string_view right, PathStyle style = NativePathStyle);

} // namespace tlm
