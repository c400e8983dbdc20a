// The machine under the program, for people.
#include "qt/io/qt_platform.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDate>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QProcess>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/errors.h"
#include "qt/io/files.h"
#include "qt/io/port_trouble.h"
#include "qt/io/qt_serial_port.h"
#include "qt/io/qt_timer.h"
#include "qt/io/text.h"
#include "qt/window/main_window_view.h"
#include "qt/window/words.h"
#include "shell/main_window.h"

namespace kestrel::qt {

namespace {
/// A wait that delivers no event looks at the ports this often.
constexpr qint64 WaitSlice = 10;
}  // namespace

QtPlatform::QtPlatform(Setup setup)
    : setup_(std::move(setup)),
      portDevices_(setup_.devices),
      timers_(std::make_shared<TimerQueue>()),
      decimalSeparator_(QLocale::system().decimalPoint().toStdString()) {}
QtPlatform::~QtPlatform() = default;

std::unique_ptr<TimerBackend> QtPlatform::makeTimer(std::function<void()> onExpiry) {
    return std::make_unique<QtTimer>(timers_, std::move(onExpiry));
}

void QtPlatform::PumpEvents() { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); }

void QtPlatform::BusyWait(int milliseconds) {
    const QDeadlineTimer end(milliseconds, Qt::PreciseTimer);
    while (!end.hasExpired()) {
        if (mainWindow_) mainWindow_->paintChanges();
        const auto slice = static_cast<int>(std::clamp<qint64>(end.remainingTime(), 1, WaitSlice));
        if (ports_.empty()) QThread::msleep(static_cast<unsigned long>(slice));
        for (QtSerialPort* port : ports_) port->collect(slice);
    }
}

std::unique_ptr<SerialControl> QtPlatform::makeSerialControl() {
    if (setup_.simulated) return setup_.simulated();
    auto port = std::make_unique<QtSerialPort>(QtSerialPort::Surroundings{
        [this](int number) { return deviceOf(number); }, [this](QtSerialPort& gone) { std::erase(ports_, &gone); }});
    ports_.push_back(port.get());
    return port;
}

std::string QtPlatform::portDevice(int port) {
    const std::string device = deviceOf(port);
    return device.empty() ? word(Word::NoDevice).toStdString() : device;
}

std::string QtPlatform::portTrouble(int port, PortTrouble trouble) {
    return portTroubleText(portDevice(port), trouble);
}

std::string QtPlatform::deviceOf(int port) {
    return setup_.simulated ? SimulatedDevice : portDevices_.device(port, serialDevices);
}

Message::Answer QtPlatform::showMessage(const Message& message) {
    if (setup_.isUnattended) return printMessage(message);
    const auto demo = setup_.demo.isEmpty() ? std::function<void()>() : [this] { openDemo(); };
    return boxes_.ask(message, mainWindow_.get(), demo);
}

/// The program ends for it: two windows of the same look would be taken for each other.
void QtPlatform::openDemo() {
    if (QProcess::startDetached(setup_.demo.first(), setup_.demo.mid(1))) endProcess(0);
}

MainWindowView& QtPlatform::mainWindow() {
    if (!mainWindow_) mainWindow_ = std::make_unique<MainWindowView>(MDIForm1());
    return *mainWindow_;
}

void QtPlatform::showMainWindow() { mainWindow().showPainted(); }
Extent QtPlatform::mainWindowExtent() { return mainWindow().extent(); }
Extent QtPlatform::measure(Window& window) { return mainWindow().measure(window); }
void QtPlatform::showWindow(Window& window) { mainWindow().showWindow(window); }
void QtPlatform::closeWindow(Window& window) { mainWindow().closeWindow(window); }
bool QtPlatform::isMinimized(Window& window) { return mainWindow().isMinimized(window); }
Window* QtPlatform::activeWindow() { return mainWindow().activeWindow(); }

void QtPlatform::copyText(const std::string& text) { QGuiApplication::clipboard()->setText(toQt(text)); }

std::string QtPlatform::programName() const {
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName().toStdString();
}

std::filesystem::path QtPlatform::configurationDirectory() const {
    const auto& beside = setup_.directory;
    return !setup_.isOfTheSystem && canBeWritten(beside / (programName() + ".ini")) ? beside : userDirectory();
}

std::optional<std::filesystem::path> QtPlatform::familyDirectory() const {
    return setup_.isOfTheSystem ? std::nullopt : Platform::familyDirectory();
}

void QtPlatform::changeDirectory(const std::filesystem::path& directory) { enterDirectory(directory); }

std::vector<std::string> QtPlatform::listFiles(const std::filesystem::path& directory, const std::string& ending) {
    return listFilesEnding(directory, ending);
}

std::string QtPlatform::readFile(const std::filesystem::path& file) { return readWholeFile(file); }

void QtPlatform::writeFile(const std::filesystem::path& file, const std::string& content) {
    writeWholeFile(file, content);
}

void QtPlatform::startProgram(const std::filesystem::path& program) {
    if (!QProcess::startDetached(pathToQt(program), {}, pathToQt(program.parent_path())))
        throw RunTimeError(error_number::FileNotFound, pathToQt(program).toStdString() + ": cannot be started");
}

/// The quick way out works from inside any nested loop, where destructors cannot run.
void QtPlatform::endProcess(int status) {
    for (QtSerialPort* port : ports_) port->PortOpen(false);
    std::fflush(nullptr);
    std::_Exit(status);
}

std::string QtPlatform::shortDate(int day, int month, int year) const {
    const QLocale locale = QLocale::system();
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QStringLiteral("yyyy"))) format.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    return locale.toString(QDate(year, month, day), format).toStdString();
}

}  // namespace kestrel::qt
