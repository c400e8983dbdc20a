// What a test sees of the program beside its pages.
#include "witness.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <filesystem>

#include "link/link_engine.h"

namespace kestrel::testing {

int openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}

Witness::Witness() { qApp->installEventFilter(this); }

bool Witness::eventFilter(QObject* receiver, QEvent* event) {
    constexpr int LongestBoxMs = 10'000;  // one that nobody expects must not hold up the run for good
    constexpr int ErrorPanel = 4;
    constexpr int Lit = 6;
    if (auto* box = qobject_cast<QMessageBox*>(receiver); box && event->type() == QEvent::Show) {
        ++boxes;
        QTimer::singleShot(LongestBoxMs, box, [box] {
            ADD_FAILURE() << "nobody answers: " << box->text().toStdString();
            box->reject();
        });
    }
    const bool isOn = Link().statusBar && !Link().statusBar->Panels(1).Text.get().empty();
    const bool isLit = Link().statusBar && Link().statusBar->Panels(ErrorPanel).Picture == Lit;
    notices += isOn && !wasOn_ ? 1 : 0;
    errors += isLit && !wasLit_ ? 1 : 0;
    wasOn_ = isOn;
    wasLit_ = isLit;
    return false;
}

}  // namespace kestrel::testing
