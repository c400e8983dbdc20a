// Moments in the life of the running program.
#include "moments.h"

#include <QAbstractButton>
#include <QApplication>
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

bool isWaiting() { return !Link().LinkIdle; }
bool isWriting() { return isWaiting() && !AnswersWithValue(Link().RequestBytes.Command); }
bool isErrorLit() { return Link().statusBar->Panels(4).Picture == 6; }

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

QString clickInBox(QMessageBox::StandardButton button) {
    const auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
    const QString text = box.text();
    QTest::mouseClick(box.button(button), Qt::LeftButton);
    return text;
}

void confirmBox() { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); }

}  // namespace kestrel::testing
