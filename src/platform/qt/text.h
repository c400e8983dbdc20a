// Texts and paths between the logic and the toolkit.
// The logic holds UTF-8, Qt UTF-16.
#pragma once

#include <QString>
#include <filesystem>
#include <string>

namespace kestrel::qt {

inline QString toQt(const std::string& text) { return QString::fromStdString(text); }
inline QString pathToQt(const std::filesystem::path& path) { return QString::fromStdU16String(path.u16string()); }
inline std::filesystem::path toPath(const QString& path) { return path.toStdU16String(); }

}  // namespace kestrel::qt
