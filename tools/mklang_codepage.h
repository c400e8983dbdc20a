// Conversion between UTF-8 and Windows-1252, the single-byte code page of the .lng files.
// Strict one way, since the sources are ours; lenient the other way, since any file may be printed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrel::mklang {

// Nothing when the text is not valid UTF-8 or has a character outside the code page.
std::optional<std::string> toWindows1252(std::string_view utf8);

// Bytes without a meaning in the code page become U+FFFD.
std::string fromWindows1252(std::string_view bytes);

}  // namespace kestrel::mklang
