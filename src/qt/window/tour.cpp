// The tour.
#include "qt/window/tour.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPixmap>
#include <cstdio>
#include <system_error>

#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "platform/errors.h"
#include "platform/platform.h"
#include "qt/io/files.h"
#include "qt/io/text.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "shell/main_window.h"
#include "shell/windows.h"

namespace kestrel::qt {

namespace {

constexpr qint64 LongestWaitMs = 30000;
constexpr qint64 RestMs = 300;
constexpr QSize WindowSize(1366, 768);

/// Records that the open page subscribes to and that no board has answered yet, those included that stand in no file.
int missingRecords() {
    int missing = 0;
    for (int bank = 0; bank < Banks; ++bank)
        for (int number = 1; number < ParamRecords; ++number) {
            const std::uint8_t flags = ParamFlags(bank, number);
            if ((flags & flag::Watched) && !(flags & flag::Valid)) ++missing;
        }
    return missing;
}

void save(const QPixmap& picture, const std::filesystem::path& directory, const std::string& name) {
    const std::filesystem::path file = directory / (name + ".png");
    if (!picture.save(pathToQt(file)))
        throw RunTimeError(error_number::FileAccess, pathToQt(file).toStdString() + ": cannot be written");
}

/// Lets the scan come round, so that each page is filled as the first one is.
void restBetweenPages() {
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(RestMs)) platform().PumpEvents();
}

/// Opens the page as the menu does; it stays open. True if it was filled in time.
bool visit(const MenuRow& row, MainWindowView& window, const std::filesystem::path& directory) {
    ClosePages();
    restBetweenPages();
    QElapsedTimer clock;
    clock.start();
    MDIForm1().entry(row.name).UserClick();
    while (missingRecords() > 0 && !clock.hasExpired(LongestWaitMs)) platform().PumpEvents();
    const qint64 elapsed = clock.elapsed();
    Page* const page = FindLoadedPage(row.page);
    if (!page) throw RunTimeError(error_number::NoSuchElement, std::string(row.page) + " did not open");
    // The last values may have asked for another layout, and that for another size of the window.
    QCoreApplication::sendPostedEvents();
    save(window.childOf(*page).grab(), directory, page->name());
    const int missing = missingRecords();
    std::printf("%-16s %8ld %8lld", row.page, page->arrivals(), static_cast<long long>(elapsed));
    if (missing > 0) std::printf("  %d values did not come", missing);
    std::printf("\n");
    return missing == 0;
}

}  // namespace

void prepareTourDirectory(const std::filesystem::path& directory) {
    pathToQt(directory);  // or nothing is made at all
    std::error_code trouble;
    std::filesystem::create_directories(directory, trouble);
    if (trouble) throw RunTimeError(error_number::PathNotFound, directory.string() + ": " + trouble.message());
    const std::filesystem::path trial = directory / "tour.tmp";
    writeWholeFile(trial, {});
    std::filesystem::remove(trial, trouble);
}

bool runTour(MainWindowView& window, const std::filesystem::path& directory) {
    window.resize(WindowSize);
    std::printf("%-16s %8s %8s\n", "page", "values", "ms");
    bool allFilled = true;
    for (const MenuRow& row : MenuTree())
        if (row.page && PageIsRegistered(row.page)) allFilled = visit(row, window, directory) && allFilled;
    save(window.grab(), directory, "MDIForm1");
    std::fflush(stdout);
    return allFilled;
}

}  // namespace kestrel::qt
