// The single-byte code page of the installation's text files, and UTF-8, in which the program holds texts.
// Bytes that the code page leaves open become the replacement character.
#pragma once

#include <string>

namespace kestrel {

/// Text of an installation file as UTF-8. A file that begins with a UTF-8 mark is taken as UTF-8 already.
std::string textOfInstallation(const std::string& bytes);
/// UTF-8 as bytes of the code page; a character that the code page lacks becomes "?".
std::string bytesForInstallation(const std::string& utf8);

}  // namespace kestrel
