// Linked beside the program's main(): once the boards are known it opens a page and a bare child window in turn.
// Prints the median time of each from the call to the painted window, in microseconds, and ends.
#include <QApplication>
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
#include "shell/windows.h"

namespace {

constexpr int Rounds = 21;
constexpr int PollMs = 50;
constexpr const char* Page = "FrmTempi";

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
    std::nth_element(times.begin(), times.begin() + Rounds / 2, times.end());
    return times[Rounds / 2];
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
    std::printf("%.0f %.0f\n", median(page), median(bare));
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
