// Where the drawings of the installation lie.
#include "qt/views/pictures.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>

#include "qt/io/text.h"
#include "qt/style/palette.h"

namespace kestrel::qt {

namespace {

QString& folderSet() {
    static QString folder;
    return folder;
}

/// Puts the colours of the look in the place of those of the light palette, in which the drawings are made.
QByteArray inLook(QByteArray drawing) {
    constexpr int Length = 7;  // of a colour such as #1b2127
    QHash<QByteArray, QByteArray> looks;
    for (QColor Colors::*const role :
         {&Colors::window, &Colors::panel, &Colors::field, &Colors::text, &Colors::quietText, &Colors::line,
          &Colors::outline, &Colors::accent, &Colors::lit})
        looks.insert((lightColors.*role).name().toLatin1(), (colors().*role).name().toLatin1());
    for (auto at = drawing.indexOf('#'); at >= 0; at = drawing.indexOf('#', at + 1)) {
        const auto look = looks.constFind(drawing.mid(at, Length));
        if (look != looks.constEnd()) drawing.replace(at, Length, *look);
    }
    return drawing;
}

}  // namespace

void usePicturesOf(const std::filesystem::path& directory) {
    std::error_code ignored;
    const auto folder = directory / "pictures";
    if (isText(folder) && std::filesystem::is_directory(folder, ignored)) setPictureFolder(pathToQt(folder));
}

void setPictureFolder(const QString& folder) { folderSet() = folder; }

QString pictureFile(const QString& stem) {
    const QString folder =
        folderSet().isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/pictures") : folderSet();
    return folder + u'/' + stem + QStringLiteral(".svg");
}

QByteArray pictureSource(const QString& stem) {
    QFile file(pictureFile(stem));
    return file.open(QIODevice::ReadOnly) ? inLook(file.readAll()) : QByteArray();
}

std::unique_ptr<QSvgRenderer> loadPicture(const QString& stem) {
    auto renderer = std::make_unique<QSvgRenderer>(pictureSource(stem));
    if (!renderer->isValid()) return nullptr;
    return renderer;
}

}  // namespace kestrel::qt
