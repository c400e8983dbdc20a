// Where the drawings of the installation lie, and how they are loaded.
// They are SVG files in the colours of the light palette, which are put into those of the look when they are loaded.
#pragma once

#include <QByteArray>
#include <QString>
#include <QSvgRenderer>
#include <filesystem>
#include <memory>

namespace kestrel::qt {

/// The folder of the drawings; until it is set, "pictures" beside the executable.
void setPictureFolder(const QString& folder);
/// Sets it to "pictures" in the directory if there is such a folder.
void usePicturesOf(const std::filesystem::path& directory);
QString pictureFile(const QString& stem);

/// The drawing's source in the colours of the look; empty when it cannot be read.
QByteArray pictureSource(const QString& stem);
/// The drawing with this stem, or null when it cannot be read.
std::unique_ptr<QSvgRenderer> loadPicture(const QString& stem);

}  // namespace kestrel::qt
