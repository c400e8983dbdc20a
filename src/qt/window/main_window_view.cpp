// The frame window.
#include "qt/window/main_window_view.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QWindow>
#include <algorithm>

#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/views/pictures.h"
#include "qt/window/child_window.h"

namespace kestrel::qt {

namespace {

constexpr const char* WindowListEntry = "mnuWL";
constexpr QSize UsualSize(1366, 768);
/// Round a window by its title bar and edges; a guess, since a window has none before it is shown.
constexpr QSize UsualFrame(16, 48);
/// Screens that take longer show the window a little later; nothing else depends on it.
constexpr int LongestWaitForScreen = 500;

Extent toTwips(QSize size) { return {size.width() * TwipsPerPixel, size.height() * TwipsPerPixel}; }

}  // namespace

MainWindowView::MainWindowView(MainWindow& model)
    : model_(model),
      area_(new PageArea(loadPicture(QStringLiteral("background")))),
      menu_(model.menuBar(), *menuBar(), [this] { renamed(); }),
      status_(model.StatusBar1, model.Line, *statusBar(), [this] { start_->refresh(); }),
      start_(new StartPage(model, *area_->viewport())),
      windowList_(menu_.menuOf(WindowListEntry), *area_, [this] { closePages(); }),
      tabs_(new PageTabs(*area_)),
      commands_(*this, windowList_, *tabs_) {
    setCentralWidget(tabs_);
    resize(UsualSize.boundedTo(screen()->availableSize()));
    QObject::connect(area_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* child) { activated(child); });
    const auto* menuKey = new QShortcut(QKeySequence(Qt::Key_F10), this);
    QObject::connect(menuKey, &QShortcut::activated, this,
                     [this] { menuBar()->setActiveAction(menuBar()->actions().constFirst()); });
    model_.bind(this);
    controlChanged();
}

MainWindowView::~MainWindowView() {
    QObject::disconnect(area_, nullptr, this, nullptr);
    model_.unbind(this);
}

void MainWindowView::controlChanged() {
    const std::string& caption = model_.Caption;
    setWindowTitle(caption.empty() ? QCoreApplication::applicationName() : toQt(caption));
}

/// What follows the first appearance may keep the event loop busy for seconds: the window must not stand empty so long.
void MainWindowView::showPainted() {
    menu_.bringUpToDate();
    const QSize room = screen()->availableSize();
    const bool fits = room == room.expandedTo(UsualSize + UsualFrame);
    fits ? show() : showMaximized();
    const QDeadlineTimer end(LongestWaitForScreen);
    while (!windowHandle()->isExposed() && !end.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, LongestWaitForScreen);
}

void MainWindowView::paintChanges() {
    if (!isVisible()) return;
    menu_.bringUpToDate();
    status_.bringUpToDate();
    QCoreApplication::sendPostedEvents(statusBar(), QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
}

Extent MainWindowView::extent() const { return toTwips(size()); }

Extent MainWindowView::measure(Window& window) { return toTwips(childOf(window).fittingSize()); }

ChildWindow& MainWindowView::childOf(Window& window) {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const ChildWindow* child) { return &child->model() == &window; });
    if (found != children_.end()) return **found;
    ChildWindow& made = *children_.emplace_back(new ChildWindow(window, *area_));
    start_->setVisible(false);
    return made;
}

void MainWindowView::renamed() {
    status_.renamed();
    start_->refresh();
}

void MainWindowView::showWindow(Window& window) {
    ChildWindow& child = childOf(window);
    const bool isNew = !child.isVisible();
    isShowingPage_ = true;
    if (child.isMinimized())
        child.showNormal();
    else
        child.show();
    area_->setActiveSubWindow(&child);
    isShowingPage_ = false;
    front_ = &window;
    window.Form_Activate();
    child.settle();
    if (isNew) child.standBeside();
}

void MainWindowView::closeWindow(Window& window) {
    if (front_ == &window) front_ = nullptr;
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const ChildWindow* child) { return &child->model() == &window; });
    if (found == children_.end()) return;
    ChildWindow* const leaving = *found;
    children_.erase(found);
    leaving->dismiss();
    start_->setVisible(children_.empty());
}

bool MainWindowView::isMinimized(Window& window) { return childOf(window).isMinimized(); }

/// The user brought a page to the front, or the one that was there has gone.
void MainWindowView::activated(QMdiSubWindow* child) {
    if (isShowingPage_ || !child) return;
    const auto found = std::find(children_.begin(), children_.end(), child);
    if (found == children_.end() || &(*found)->model() == front_) return;
    front_ = &(*found)->model();
    deliver([this] { front_->UserActivate(); });
}

void MainWindowView::closePages() {
    for (QMdiSubWindow* child : area_->subWindowList()) child->close();
}

void MainWindowView::closeEvent(QCloseEvent* event) {
    event->ignore();  // the process ends, or what is due goes out first
    for (ChildWindow* child : children_) child->dropTyping();
    deliver([this] {
        if (userClose_) userClose_();
    });
}

}  // namespace kestrel::qt
