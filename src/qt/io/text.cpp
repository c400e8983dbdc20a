// Texts and paths between the logic and the toolkit.
#include "qt/io/text.h"

#include <system_error>

#include "platform/errors.h"

namespace kestrel::qt {

bool isText(const std::filesystem::path& path) {
    try {
        static_cast<void>(path.u16string());
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

QString pathToQt(const std::filesystem::path& path) {
    if (!isText(path))
        throw RunTimeError(error_number::PathNotFound, path.string() + ": no valid name in this system's encoding");
    return QString::fromStdU16String(path.u16string());
}

}  // namespace kestrel::qt
