// Linked beside the program's main(): once the boards are known it opens a page and a bare child window in turn, and
// then lets a value arrive on each of 25 open pages, and a text on each of as many windows with labels of fixed size.
// Prints four times in microseconds and ends: of the page and the bare window from the call to the painted window,
// medians; of the processor for the value and the text until they are painted.
#include <QApplication>
#include <QEventLoop>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "pages/registry.h"
#include "platform/basic_controls.h"
#include "platform/layout.h"
#include "shell/windows.h"
#include "tests/support/processor_time.h"

namespace {

constexpr int Rounds = 21;
constexpr int PollMs = 50;
constexpr const char* Page = "FrmTempi";
constexpr std::size_t PagesOpen = 25;
constexpr std::size_t Ticks = 800;
constexpr int TickMs = 5;
constexpr int SettleMs = 60'000;  ///< until all pages have been read

double microsUntilPainted(const std::function<void()>& open) {
    const auto from = std::chrono::steady_clock::now();
    open();
    QApplication::sendPostedEvents();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - from).count();
}

/// As many labels and bars in as many groups as the page has.
QWidget* bareContents() {
    auto* widget = new QWidget;
    auto* column = new QGridLayout(widget);
    for (const int bars : {7, 1}) {
        auto* group = new QGroupBox(QStringLiteral("group"));
        auto* grid = new QGridLayout(group);
        for (int row = 0; row < bars; ++row) {
            grid->addWidget(new QLabel(QStringLiteral("caption of a bar")), row, 0);
            grid->addWidget(new QScrollBar(Qt::Horizontal), row, 1);
            grid->addWidget(new QLabel(QStringLiteral("25.5")), row, 2);
        }
        column->addWidget(group);
    }
    return widget;
}

double median(std::vector<double>& times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// Processor time of the event loop while something happens every `TickMs`.
double microsPerTick(const std::function<void(std::size_t)>& happen) {
    std::size_t ticks = 0;
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        happen(ticks);
        if (++ticks == Ticks) loop.quit();
    });
    timer.start(TickMs);
    const double before = kestrel::testing::processorSeconds();
    loop.exec();
    return (kestrel::testing::processorSeconds() - before) * 1e6 / Ticks;
}

/// Of one page, whose value has come.
kestrel::Label* readFigureOf(kestrel::Page& page) {
    kestrel::Label* found = nullptr;
    kestrel::eachControl(page.Arrange(), [&found](kestrel::Control& control) {
        auto* const label = dynamic_cast<kestrel::Label*>(&control);
        if (label && label->role == kestrel::Label::Role::Value && !label->unread()) found = label;
    });
    return found;
}

std::vector<kestrel::Label*> readFigures() {
    std::vector<kestrel::Label*> figures;
    for (kestrel::Page* page : kestrel::LoadedPages())
        if (kestrel::Label* const figure = readFigureOf(*page)) figures.push_back(figure);
    return figures;
}

double microsPerValue(QMdiArea& area) {
    for (const auto& [name, make] : kestrel::AllPages()) kestrel::ShowPage(name);
    QEventLoop untilRead;
    QTimer::singleShot(SettleMs, &untilRead, &QEventLoop::quit);
    untilRead.exec();
    std::vector<kestrel::Label*> figures = readFigures();
    figures.resize(std::min(figures.size(), PagesOpen));
    if (figures.size() < PagesOpen) std::fprintf(stderr, "figures on %zu pages\n", figures.size());
    area.tileSubWindows();
    QApplication::processEvents();
    const double idle = microsPerTick([](std::size_t) {});
    const double result = microsPerTick([&](std::size_t tick) {
        figures[tick % figures.size()]->Caption = tick / figures.size() % 2 == 0 ? "1" : "2";
    });
    kestrel::ClosePages();
    QApplication::processEvents();
    return result - idle;
}

double microsPerBareText(QMdiArea& area) {
    std::vector<QLabel*> labels;
    for (std::size_t i = 0; i < PagesOpen; ++i) {
        QWidget* const contents = bareContents();
        QMdiSubWindow* const child = area.addSubWindow(contents);
        labels.push_back(contents->findChildren<QLabel*>().last());
        child->show();
        labels.back()->setFixedSize(labels.back()->sizeHint());
    }
    area.tileSubWindows();
    QApplication::processEvents();
    const double idle = microsPerTick([](std::size_t) {});
    return microsPerTick([&](std::size_t tick) {
               labels[tick % PagesOpen]->setText(tick / PagesOpen % 2 == 0 ? QStringLiteral("1") : QStringLiteral("2"));
           }) -
           idle;
}

void measure(QMdiArea& area) {
    std::vector<double> page;
    std::vector<double> bare;
    for (int i = 0; i < Rounds; ++i) {
        page.push_back(microsUntilPainted([] { kestrel::ShowPage(Page); }));
        kestrel::ClosePages();
        QMdiSubWindow* child = nullptr;
        bare.push_back(microsUntilPainted([&] {
            child = area.addSubWindow(bareContents());
            child->show();
        }));
        child->close();
        QApplication::processEvents();
    }
    const double value = microsPerValue(area);
    std::printf("%.0f %.0f %.1f %.1f\n", median(page), median(bare), value, microsPerBareText(area));
    std::fflush(stdout);
    std::_Exit(0);
}

QMdiArea* areaOfPages() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* area = window->findChild<QMdiArea*>()) return area;
    return nullptr;
}

void waitForBoards() {
    auto* poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, qApp, [poll] {
        QMdiArea* area = areaOfPages();
        if (!area || !kestrel::Link().Timer1.Enabled) return;
        poll->stop();
        measure(*area);
    });
    poll->start(PollMs);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(waitForBoards)
