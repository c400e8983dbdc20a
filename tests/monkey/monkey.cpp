// A user who does anything at all.
#include "monkey.h"

#include <unistd.h>

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "link/link_engine.h"
#include "platform/platform.h"
#include "qt/io/deliver.h"
#include "shell/main_window.h"

namespace kestrel::qt::testing {

namespace {

constexpr const char* WayOut = "smnuExit";
constexpr int ActEveryMs = 5;
constexpr unsigned PatienceSeconds = 60;  ///< with a program that does nothing more; sanitizers are slow

const std::vector<Qt::Key> Keys = {Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Up,        Qt::Key_Down,   Qt::Key_Left,
                                   Qt::Key_Right,  Qt::Key_Home,    Qt::Key_End,       Qt::Key_PageUp, Qt::Key_PageDown,
                                   Qt::Key_Return, Qt::Key_Enter,   Qt::Key_Space,     Qt::Key_Escape, Qt::Key_Plus,
                                   Qt::Key_Minus,  Qt::Key_Delete,  Qt::Key_Backspace, Qt::Key_F1,     Qt::Key_F5,
                                   Qt::Key_F6,     Qt::Key_F10,     Qt::Key_A,         Qt::Key_M};
const std::vector<Qt::KeyboardModifiers> Modifiers = {Qt::NoModifier,    Qt::NoModifier,      Qt::NoModifier,
                                                      Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
const std::vector<const char*> Texts = {"0", "7", "12", "0,5", "0.5", "-1", "99999999999", "abc", " ", "1e9"};

}  // namespace

Monkey::Monkey(QWidget& window, unsigned seed, int seconds) : window_(window), random_(seed) {
    actSoon();
    QTimer::singleShot(seconds * 1000, this, [this] {
        std::printf("%ld acts\n", acts_);
        EndProcess(0);
    });
}

void Monkey::actSoon() {
    QTimer::singleShot(ActEveryMs, this, [this] {
        actSoon();
        act();
    });
}

void Monkey::act() {
    alarm(PatienceSeconds);
    ++acts_;
    MDIForm1().entry(WayOut).Enabled = false;
    QWidget* const popup = QApplication::activePopupWidget();
    if (popup && number(0, 4) == 0) return QTest::keyClick(popup, Qt::Key_Escape);
    switch (number(0, 19)) {
        case 0:
            return choose();
        case 1:
            return resize();
        case 2:
            return turnTheWheel();
        case 3:
            return type();
        case 4:
        case 5:
        case 6:
        case 7:
        case 8:
            return press();
        default:
            return clickOrDrag();
    }
}

QWidget* Monkey::target() {
    QWidget* top = QApplication::activePopupWidget();
    if (!top) top = QApplication::activeModalWidget();
    if (!top) top = &window_;
    QList<QWidget*> seen;
    for (QWidget* each : top->findChildren<QWidget*>())
        if (each->isVisible() && each->isEnabled()) seen.push_back(each);
    return seen.isEmpty() ? top : anyOf(seen);
}

void Monkey::clickOrDrag() {
    const QPointer<QWidget> widget = target();
    const QPoint from(number(0, widget->width()), number(0, widget->height()));
    const auto button = number(0, 9) == 0 ? Qt::RightButton : Qt::LeftButton;
    if (number(0, 9) == 0) return QTest::mouseDClick(widget, button, anyOf(Modifiers), from);
    QTest::mousePress(widget, button, anyOf(Modifiers), from);
    const QPoint to = number(0, 3) == 0 ? QPoint(number(-20, 400), number(-20, 50)) : from;
    if (widget && to != from) QTest::mouseMove(widget, to);
    if (widget) QTest::mouseRelease(widget, button, Qt::NoModifier, to);
}

void Monkey::press() {
    QWidget* widget = QApplication::activePopupWidget();
    if (!widget) widget = QApplication::focusWidget();
    if (!widget) widget = target();
    QTest::keyClick(widget, anyOf(Keys), anyOf(Modifiers));
}

void Monkey::type() {
    if (QWidget* widget = QApplication::focusWidget()) QTest::keyClicks(widget, QString::fromLatin1(anyOf(Texts)));
}

void Monkey::turnTheWheel() {
    QWidget* widget = target();
    const QPoint at(number(0, widget->width()), number(0, widget->height()));
    QWheelEvent wheel(at, widget->mapToGlobal(at), {}, {0, number(-3, 3) * 120}, Qt::NoButton, anyOf(Modifiers),
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
}

/// An entry of the menu: a page, a language, a port.
void Monkey::choose() {
    if (QApplication::activeModalWidget()) return;
    MainWindow& main = MDIForm1();
    const int what = number(0, 9);
    MenuItem& entry = what == 0   ? main.smnuLingue(number(0, MainWindow::LanguageEntries - 1))
                      : what == 1 ? main.mnuCox(number(1, PortCount))
                                  : main.entry(anyOf(MenuTree()).name);
    deliver([&] { entry.UserClick(); });
}

void Monkey::resize() {
    if (number(0, 4) == 0)
        window_.showMaximized();
    else
        window_.setGeometry(number(0, 200), number(0, 200), number(200, 1600), number(150, 1000));
}

}  // namespace kestrel::qt::testing
