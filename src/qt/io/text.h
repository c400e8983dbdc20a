// Texts and paths between the logic and the toolkit.
// The logic holds UTF-8, Qt UTF-16.
#pragma once

#include <QString>
#include <filesystem>
#include <string>

namespace kestrel::qt {

inline QString toQt(const std::string& text) { return QString::fromStdString(text); }
inline std::filesystem::path toPath(const QString& path) { return path.toStdU16String(); }

/// Whether the name, which to the system is mere bytes, is one in its encoding.
bool isText(const std::filesystem::path& path);
/// A run-time error, number 76, that names the path when it is none.
QString pathToQt(const std::filesystem::path& path);

}  // namespace kestrel::qt
