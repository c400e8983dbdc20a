// Linked into a program beside its main(): tells when its first frame window has been painted, and what memory it
// holds. The times are microseconds since the moment in KESTREL_BENCH_START; with KESTREL_BENCH_STAY (milliseconds) the
// program stays so long before it tells its memory and ends.
#include <QApplication>
#include <QMainWindow>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

long residentKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::atol(line.c_str() + 6);
    return 0;
}

long numberFrom(const char* variable) {
    const char* text = std::getenv(variable);
    return text ? std::atol(text) : 0;
}

void tellAndEnd(long micros) {
    std::printf("%ld %ld\n", micros, residentKilobytes());
    std::fflush(stdout);
    std::_Exit(0);
}

class PaintWatch : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched)) {
            qApp->removeEventFilter(this);
            QMetaObject::invokeMethod(
                this, [this] { painted(); }, Qt::QueuedConnection);
        }
        return false;
    }

  private:
    void painted() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const long micros =
            std::chrono::duration_cast<std::chrono::microseconds>(now).count() - numberFrom("KESTREL_BENCH_START");
        const auto stay = static_cast<int>(numberFrom("KESTREL_BENCH_STAY"));
        QTimer::singleShot(stay, this, [micros] { tellAndEnd(micros); });
    }
};

void watchFirstPaint() {
    auto* watch = new PaintWatch(qApp);
    qApp->installEventFilter(watch);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(watchFirstPaint)
