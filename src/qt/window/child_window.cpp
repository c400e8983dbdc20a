// One page in the frame window.
#include "qt/window/child_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QStyle>
#include <QToolTip>

#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/window/page_area.h"
#include "qt/window/page_view.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int BesideTitle = 160;  ///< width of the icon and the buttons in the title bar

}  // namespace

ChildWindow::ChildWindow(Window& model, PageArea& area) : model_(&model), area_(area), page_(buildPage(model)) {
    setWidget(page_);
    for (QAction* command : systemMenu()->actions()) command->setShortcuts({});  // the menu of windows has them
    setFocusPolicy(Qt::TabFocus);  // a click on the title bar, such as on the cross, leaves no control
    area.addSubWindow(this);
    hide();
    model.bind(this);
    controlChanged();
    fit();
}

ChildWindow::~ChildWindow() {
    if (model_) model_->unbind(this);
}

QSize ChildWindow::fittingSize() const {
    const int title = fontMetrics().horizontalAdvance(windowTitle()) + BesideTitle;
    const QSize room = area_.viewport()->size();
    QSize size = sizeHint().expandedTo({title, 0});
    if (size.height() > room.height()) size.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return size.boundedTo(room);
}

void ChildWindow::settle() {
    layOut(page_);
    fit();
    layOut(page_);
}

void ChildWindow::standBeside() {
    if (!isMaximized() && !isMinimized()) move(area_.besideOthers(*this));
}

void ChildWindow::dismiss() {
    model_->unbind(this);
    model_ = nullptr;
    if (page_) releaseModels(page_);
    setWidget(nullptr);
    if (page_) dismissPage(page_);
    area_.removeSubWindow(this);
    hide();
    deleteLater();
}

void ChildWindow::controlChanged() {
    QString title = toQt(model_->Caption);
    if (const std::string& since = model_->oldSince(); !since.empty())
        title += QStringLiteral(" – ") + word(Word::ValuesFrom).arg(toQt(since));
    if (windowTitle() != title) {
        setWindowTitle(title);
        fit();
    }
    showPageHead(page_, *model_);
    page_->setEnabled(!model_->closing());
    place();
}

/// Where the program wants the window; it moves there again only when the program has changed its mind, since the user
/// may have moved it meanwhile.
void ChildWindow::place() {
    const QPoint wanted(model_->Left / TwipsPerPixel, model_->Top / TwipsPerPixel);
    if (wanted == placedAt_ && isVisible()) return;
    placedAt_ = wanted;
    move(area_.reachable(wanted, size()));
}

/// Takes the size that the texts need, unless that is what it has been given before: the user may have resized it.
void ChildWindow::fit() {
    if (isMinimized()) return;
    const QSize fitting = fittingSize();
    if (fitting == fitted_) return;
    fitted_ = fitting;
    if (isMaximized()) return;
    resize(fitting);
    move(area_.reachable(pos(), size()));
}

bool ChildWindow::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && model_) return showTip(static_cast<QHelpEvent&>(*event));
    const bool handled = QMdiSubWindow::event(event);
    if (event->type() == QEvent::LayoutRequest && model_) fit();
    return handled;
}

/// Of the title alone: what stands on the page has its own.
bool ChildWindow::showTip(const QHelpEvent& event) {
    const bool onTitle = page_ && event.pos().y() < page_->y();
    QToolTip::showText(event.globalPos(), onTitle ? toQt(model_->ToolTip) : QString(), this);
    return true;
}

void ChildWindow::dropTyping() { qt::dropTyping(page_); }

void ChildWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!model_ || model_->closing()) return;
    dropTyping();
    deliver([this] { model_->UserClose(); });
}

}  // namespace kestrel::qt
