// Moments in the life of the running program.
#include "moments.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "link/link_engine.h"

namespace kestrel::testing {

namespace {
constexpr int LookEveryMs = 5;
}

bool isIdentifying() { return Link().LinkSetup && Link().Comm1 && Link().Comm1->PortOpen(); }
bool isRunning() { return Link().Timer1.Enabled; }
bool isBoxOpen() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; }

void when(QObject& context, const std::function<bool()>& isTime, const std::function<void()>& act) {
    auto* look = new QTimer(&context);
    QObject::connect(look, &QTimer::timeout, look, [=] {
        if (!isTime()) return;
        look->stop();
        look->deleteLater();
        act();
    });
    look->start(LookEveryMs);
}

void confirmBox() { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); }

}  // namespace kestrel::testing
