// The machine under the program in tests.
#include "support/virtual_platform.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/errors.h"
#include "platform/window.h"

namespace kestrel::testing {

class VirtualTimer : public TimerBackend {
  public:
    VirtualTimer(VirtualPlatform& owner, std::function<void()> onExpiry)
        : owner_(owner), onExpiry_(std::make_shared<const std::function<void()>>(std::move(onExpiry))) {}
    ~VirtualTimer() override { VirtualTimer::stop(); }

    void start(int milliseconds) override {
        interval_ = Micros{milliseconds} * 1000;
        if (!running_) owner_.running_.push_back(this);
        running_ = true;
        queueUp();
    }
    void stop() override {
        if (running_) std::erase(owner_.running_, this);
        running_ = false;
    }
    void expire() {
        queueUp();
        const auto call = onExpiry_;  // the handler may take the timer away
        (*call)();
    }
    bool isBefore(const VirtualTimer& other) const {
        return due_ != other.due_ ? due_ < other.due_ : sequence_ < other.sequence_;
    }
    Micros due() const { return due_; }

  private:
    void queueUp() {
        due_ = owner_.now_ + interval_;
        sequence_ = owner_.sequence_++;
    }
    VirtualPlatform& owner_;
    std::shared_ptr<const std::function<void()>> onExpiry_;
    Micros interval_ = 0;
    Micros due_ = 0;
    long sequence_ = 0;
    bool running_ = false;
};

class VirtualSerial : public SerialControl {
  public:
    explicit VirtualSerial(VirtualPlatform& owner) : owner_(owner) { owner_.serial_ = this; }
    ~VirtualSerial() override { owner_.serial_ = nullptr; }

    void CommPort(int port) override {
        if (state_ != State::Closed) throw RunTimeError(error_number::SerialFirst, "The port is open");
        port_ = port;
    }
    bool PortOpen() const override { return state_ == State::Open; }
    void PortOpen(bool open) override {
        if (open && PortOpen()) throw RunTimeError(error_number::SerialPortInUse, "The port is already open");
        buffer_.clear();
        state_ = State::Closed;
        if (!open) return;
        if (const auto failure = owner_.openFailures.find(port_); failure != owner_.openFailures.end())
            throw RunTimeError(failure->second.first, failure->second.second);
        if (!line() || !line()->present())
            throw RunTimeError(error_number::SerialBadPort, owner_.portDevice(port_) + ": not there");
        line()->take(owner_.now_);
        state_ = State::Open;
        device_ = line()->changes();
        ++owner_.opened;
    }
    int InBufferCount() const override { return static_cast<int>(buffer_.size()); }
    Bytes Input() override {
        if (state_ == State::Closed) throw RunTimeError(error_number::SerialNotOpen, "The port is not open");
        return std::exchange(buffer_, {});
    }
    int CommEvent() const override {
        if (owner_.commEvents.empty()) return CommEventReceive;
        const int event = owner_.commEvents.front();
        owner_.commEvents.pop_front();
        return event;
    }

    Line* line() const {
        const auto found = owner_.lines.find(port_);
        return found == owner_.lines.end() ? nullptr : found->second;
    }
    /// Takes what has arrived; true when it is worth an event.
    bool collect() {
        if (!line()) return false;
        arrived_ = line()->take(owner_.now_);
        if (!PortOpen() || arrived_.empty()) return false;
        for (const auto byte : arrived_)
            if (buffer_.size() < InputBufferSize) buffer_.push_back(byte);
        return true;
    }
    bool isLost() const { return state_ == State::Lost; }
    bool isChanged() const { return PortOpen() && line()->changes() != device_; }
    /// Whether the device is gone from under the open port, which the program hears of with the next event.
    bool findsLoss() {
        if (PortOpen() && (!line()->present() || isChanged())) state_ = State::Lost;
        return isLost();
    }
    void tellLoss() {
        if (owner_.beforeLoss) owner_.beforeLoss();
        PortOpen(false);
        raiseLost();
    }
    void raise() const {
        if (owner_.beforeArrival) owner_.beforeArrival(arrived_);
        raiseComm();
    }

  protected:
    void write(const Bytes& bytes) override {
        if (state_ == State::Closed) throw RunTimeError(error_number::SerialNotOpen, "The port is not open");
        if (!findsLoss()) line()->send(owner_.now_, bytes);
    }

  private:
    enum class State { Closed, Open, Lost };
    static constexpr std::size_t InputBufferSize = 1024;
    VirtualPlatform& owner_;
    int port_ = 1;
    long device_ = 0;
    State state_ = State::Closed;
    Bytes buffer_;
    Bytes arrived_;  ///< in the last collection
};

VirtualPlatform::VirtualPlatform() { setPlatform(this); }

VirtualPlatform::~VirtualPlatform() { setPlatform(nullptr); }

bool VirtualPlatform::portOpen() const { return serial_ && serial_->PortOpen(); }

VirtualTimer* VirtualPlatform::nextTimer() const {
    const auto next = std::min_element(running_.begin(), running_.end(),
                                       [](const auto* one, const auto* other) { return one->isBefore(*other); });
    return next == running_.end() ? nullptr : *next;
}

std::optional<Micros> VirtualPlatform::nextArrival(Micros limit) const {
    if (!serial_ || !serial_->line()) return std::nullopt;
    if (serial_->isLost() || serial_->isChanged()) return now_ <= limit ? std::optional(now_) : std::nullopt;
    auto when = serial_->line()->nextArrival(limit);
    if (!when) return std::nullopt;
    when = std::max(*when, now_);
    return *when <= limit ? when : std::nullopt;
}

void VirtualPlatform::collect() {
    const bool arrived = serial_->collect();
    if (serial_->findsLoss())
        serial_->tellLoss();
    else if (arrived)
        serial_->raise();
}

bool VirtualPlatform::step() {
    // A far end that lives by itself never comes to an end: with no timer running time passes in pieces.
    constexpr Micros Piece = 1'000'000;
    const VirtualTimer* timer = nextTimer();
    const bool lineLives = serial_ && serial_->line() && serial_->line()->nextEvent();
    if (!timer && !lineLives) return false;
    const Micros limit = timer ? std::max(timer->due(), now_) : now_ + Piece;
    if (!stepUntil(limit)) now_ = limit;
    return true;
}

bool VirtualPlatform::stepUntil(Micros limit) {
    VirtualTimer* const timer = nextTimer();
    const bool timerIsDue = timer && timer->due() <= limit;
    const auto arrival = nextArrival(timerIsDue ? std::max(timer->due(), now_) : limit);
    if (!timerIsDue && !arrival) return false;
    if (timerIsDue && (!arrival || timer->due() <= *arrival)) {
        now_ = std::max(now_, timer->due());
        timer->expire();
    } else {
        now_ = *arrival;
        collect();
    }
    if (afterEvent) afterEvent();
    return true;
}

void VirtualPlatform::run(double milliseconds) { runUntil(now_ + static_cast<Micros>(milliseconds * 1000)); }

void VirtualPlatform::runUntil(Micros until) {
    while (stepUntil(until)) continue;
    now_ = std::max(now_, until);
}

void VirtualPlatform::install(const std::filesystem::path& realDirectory) {
    static std::map<std::filesystem::path, std::map<std::string, std::string>> installations;  // read once
    const auto [place, isNew] = installations.try_emplace(realDirectory);
    if (isNew)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(realDirectory)) {
            const std::string ending = entry.path().extension().generic_string();
            if (ending != ".inx" && ending != ".lng") continue;
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string name = entry.path().lexically_relative(realDirectory).generic_string();
            place->second[name].assign(std::istreambuf_iterator<char>(in), {});
        }
    for (const auto& [name, content] : place->second) put(name, content);
}

std::unique_ptr<TimerBackend> VirtualPlatform::makeTimer(std::function<void()> onExpiry) {
    return std::make_unique<VirtualTimer>(*this, std::move(onExpiry));
}

void VirtualPlatform::PumpEvents() {
    if (!step()) throw std::logic_error("The program waits, and nothing will ever happen");
}

LocalTime VirtualPlatform::localTime() const {
    if (wallClock) return *wallClock;
    constexpr Micros Minute = 60'000'000;
    const auto minutes = static_cast<int>(10 * 60 + now_ / Minute);
    return {2026, 3, 2, minutes / 60 % 24, minutes % 60};
}

void VirtualPlatform::BusyWait(int milliseconds) {
    now_ += Micros{milliseconds} * 1000;
    if (!serial_) return;
    serial_->collect();
    serial_->findsLoss();
}

std::unique_ptr<SerialControl> VirtualPlatform::makeSerialControl() { return std::make_unique<VirtualSerial>(*this); }

std::string VirtualPlatform::portTrouble(int port, PortTrouble trouble) {
    const std::map<PortTrouble, const char*> words = {{PortTrouble::NoBoard, ": no board answers"},
                                                      {PortTrouble::Gone, ": the port is gone"},
                                                      {PortTrouble::Closed, ": closed"}};
    return portDevice(port) + words.at(trouble);
}

Message::Answer VirtualPlatform::showMessage(const Message& message) {
    messages.push_back(message);
    if (whileMessageIsOpen) whileMessageIsOpen();
    if (answers.empty()) return Message::Answer::Ok;
    const Message::Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

void VirtualPlatform::showWindow(Window& window) {
    active_ = &window;
    shown.push_back(window.name());
    window.Form_Activate();
}

void VirtualPlatform::closeWindow(Window& window) {
    if (active_ == &window) active_ = nullptr;
}

std::vector<std::string> VirtualPlatform::listFiles(const std::filesystem::path& in, const std::string& ending) {
    std::vector<std::string> names;
    for (const auto& [path, content] : files) {
        const std::filesystem::path file(path);
        if (file.parent_path() == in && file.filename().generic_string().ends_with(ending))
            names.push_back(file.filename().generic_string());
    }
    return names;
}

std::string VirtualPlatform::readFile(const std::filesystem::path& file) {
    if (unreadable.contains(file.generic_string()))
        throw RunTimeError(error_number::FileAccess, file.generic_string() + ": no permission");
    const auto found = files.find(file.generic_string());
    if (found == files.end()) throw RunTimeError(error_number::FileNotFound, file.generic_string() + ": not there");
    return found->second;
}

void VirtualPlatform::writeFile(const std::filesystem::path& file, const std::string& content) {
    const bool isNewInAClosedDirectory =
        unwritable.contains(file.parent_path().generic_string()) && !files.contains(file.generic_string());
    if (unwritable.contains(file.generic_string()) || isNewInAClosedDirectory)
        throw RunTimeError(error_number::FileAccess, file.generic_string() + ": no permission");
    files[file.generic_string()] = content;
    written.push_back(file.generic_string());
}

void VirtualPlatform::startProgram(const std::filesystem::path& program) {
    if (!launcherIsThere) throw RunTimeError(error_number::FileNotFound, program.generic_string() + ": not there");
    started.push_back(program.generic_string());
}

std::string VirtualPlatform::shortDate(int day, int month, int year) const {
    return std::to_string(day) + "/" + std::to_string(month) + "/" + std::to_string(year);
}

}  // namespace kestrel::testing
