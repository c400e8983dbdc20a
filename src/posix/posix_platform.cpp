// The machine under a program without a window.
#include "posix/posix_platform.h"

#include <langinfo.h>
#include <poll.h>

#include <algorithm>
#include <ctime>

#include "language/port_words.h"
#include "posix/files.h"

namespace kestrel::posix {

namespace {

constexpr auto LongestWait = std::chrono::hours(1);

timespec lengthUntil(Clock::time_point until) {
    const auto left = std::clamp<Clock::duration>(until - Clock::now(), Clock::duration::zero(), LongestWait);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {static_cast<time_t>(seconds.count()),
            static_cast<long>(std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds).count())};
}

}  // namespace

PosixPlatform::PosixPlatform(Setup setup) : setup_(std::move(setup)), locale_(newlocale(LC_ALL_MASK, "", nullptr)) {
    if (!locale_) locale_ = newlocale(LC_ALL_MASK, "C", nullptr);
}

PosixPlatform::~PosixPlatform() { freelocale(locale_); }

std::unique_ptr<TimerBackend> PosixPlatform::makeTimer(std::function<void()> onExpiry) {
    return std::make_unique<PosixTimer>(timers_, std::move(onExpiry));
}

void PosixPlatform::wait(Clock::time_point until) {
    const timespec length = lengthUntil(until);
    pollfd line{descriptor_, POLLIN, 0};
    const bool listens = open_ && !open_->isLost();
    if (ppoll(&line, listens ? 1 : 0, &length, &signals_.whileWaiting()) > 0) open_->collect();
}

/// What came on the line goes before a time-out that has run out meanwhile.
void PosixPlatform::PumpEvents() {
    if (!open_ || !open_->hasNews()) wait(timers_.next());
    if (open_ && open_->hasNews()) return open_->tell();
    timers_.runOut();
}

void PosixPlatform::BusyWait(int milliseconds) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (Clock::now() < end) wait(end);
}

std::unique_ptr<SerialControl> PosixPlatform::makeSerialControl() {
    if (setup_.simulated) return setup_.simulated();
    return std::make_unique<SerialPort>([this](int) { return setup_.device; },
                                        [this](SerialPort& port, int descriptor) {
                                            open_ = descriptor < 0 ? nullptr : &port;
                                            descriptor_ = descriptor;
                                        });
}

std::string PosixPlatform::portDevice(int /*port*/) { return setup_.device; }

std::string PosixPlatform::portTrouble(int port, PortTrouble trouble) {
    const PortWord word = trouble == PortTrouble::NoBoard ? PortWord::NoBoard
                          : trouble == PortTrouble::Gone  ? PortWord::Gone
                                                          : PortWord::Closed;
    return portDevice(port) + ": " + portWord(word);
}

void PosixPlatform::changeDirectory(const std::filesystem::path& directory) { enterDirectory(directory); }

std::vector<std::string> PosixPlatform::listFiles(const std::filesystem::path& directory, const std::string& ending) {
    return listFilesEnding(directory, ending);
}

std::string PosixPlatform::readFile(const std::filesystem::path& file) { return readWholeFile(file); }

void PosixPlatform::writeFile(const std::filesystem::path& file, const std::string& content) {
    writeWholeFile(file, content);
}

std::string PosixPlatform::decimalSeparator() const { return nl_langinfo_l(RADIXCHAR, locale_); }

std::string PosixPlatform::shortDate(int day, int month, int year) const {
    std::tm date{};
    date.tm_mday = day;
    date.tm_mon = month - 1;
    date.tm_year = year - 1900;
    std::string format = nl_langinfo_l(D_FMT, locale_);
    std::ranges::replace(format, 'y', 'Y');
    char text[64];
    return std::string(text, strftime_l(text, sizeof text, format.c_str(), &date, locale_));
}

}  // namespace kestrel::posix
