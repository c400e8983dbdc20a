// The single-byte code page of the installation's text files, and UTF-8, in which the program holds texts.
// Lenient one way, since any file may be read; strict the other way, since the sources of the files are ours.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Text of an installation file as UTF-8; bytes that the code page leaves open become the replacement character. A file
/// that begins with a UTF-8 mark is taken as UTF-8 already.
std::string textOfInstallation(std::string_view bytes);
/// UTF-8 as bytes of the code page; nothing when it is not valid, or has a character that the code page lacks.
std::optional<std::string> bytesForInstallation(std::string_view utf8);

}  // namespace kestrel
