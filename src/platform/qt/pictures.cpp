// Where the drawings of the installation lie.
// See pictures.h.
#include "platform/qt/pictures.h"

#include <QCoreApplication>
#include <QFile>

namespace kestrel::qt {

namespace {

QString& folderSet() {
    static QString folder;
    return folder;
}

}  // namespace

void setPictureFolder(const QString& folder) { folderSet() = folder; }

QString pictureFile(const QString& stem) {
    const QString folder =
        folderSet().isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/pictures") : folderSet();
    return folder + u'/' + stem + QStringLiteral(".svg");
}

std::unique_ptr<QSvgRenderer> loadPicture(const QString& stem) {
    const QString file = pictureFile(stem);
    if (!QFile::exists(file)) return nullptr;
    auto renderer = std::make_unique<QSvgRenderer>(file);
    if (!renderer->isValid()) return nullptr;
    return renderer;
}

}  // namespace kestrel::qt
