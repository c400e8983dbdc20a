// Turns a page's layout tree into widgets.
#include "qt/window/page_view.h"

#include <QEvent>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <vector>

#include "qt/views/bar_view.h"
#include "qt/views/field_view.h"
#include "qt/window/caption_looks.h"
#include "qt/window/focus_keeper.h"
#include "qt/window/page_builder.h"
#include "qt/window/page_head.h"

namespace kestrel::qt {

namespace {

/// What stands in the page: as wide and high as its window, or as its contents when the window is smaller.
class PageContents : public QWidget {
  public:
    std::vector<ViewBase*> views;
    FocusKeeper focus;
    CaptionLooks looks;

  protected:
    /// A control that is locked while it has the focus does not hand it on.
    bool focusNextPrevChild(bool next) override {
        const QWidget* focused = focusWidget();
        return (!focused || focused->isEnabled()) && QWidget::focusNextPrevChild(next);
    }
    bool event(QEvent* event) override {
        // Captions that changed ask for one layout together; they name other controls too.
        if (event->type() == QEvent::LayoutRequest) {
            for (ViewBase* view : views)
                if (view->bound()) view->renamed();
            // The scroll area keeps the request to itself; the window has to hear that its page needs another size.
            if (QWidget* viewport = parentWidget()) viewport->parentWidget()->updateGeometry();
        }
        return QWidget::event(event);
    }
    /// A click beside the controls leaves the one that has the focus.
    void mousePressEvent(QMouseEvent* event) override {
        setFocus(Qt::MouseFocusReason);
        QWidget::mousePressEvent(event);
    }
};

class PageView : public QScrollArea {
  public:
    explicit PageView(std::unique_ptr<PageContents> contents) : contents_(contents.get()) {
        setFrameShape(NoFrame);
        setWidget(contents.release());
        const bool anyFocus = std::any_of(contents_->views.begin(), contents_->views.end(), [](const ViewBase* view) {
            return view->widget().focusPolicy() & Qt::TabFocus;
        });
        // A page without anything to operate takes the focus itself, so that it can be scrolled by keys. Else what
        // stands behind the controls has it when the page opens, so that no key reaches a setting unasked.
        setFocusPolicy(anyFocus ? Qt::NoFocus : Qt::StrongFocus);
        if (anyFocus) contents_->setFocusPolicy(Qt::ClickFocus);
        if (anyFocus) contents_->setFocus();
    }
    QSize sizeHint() const override { return contents_->sizeHint(); }
    PageContents& contents() { return *contents_; }
    PageHead& head() { return *head_; }
    /// Makes the contents as wide as the window, or as their widest block; how high they are then follows from that.
    void fitContents() {
        const QSize room = maximumViewportSize();
        const int least = contents_->minimumSizeHint().width();
        const int below = least > room.width() ? horizontalScrollBar()->sizeHint().height() : 0;
        int width = std::max(room.width(), least);
        int height = contents_->layout()->totalMinimumHeightForWidth(width);
        if (height > room.height() - below) {
            width = std::max(room.width() - verticalScrollBar()->sizeHint().width(), least);
            height = contents_->layout()->totalMinimumHeightForWidth(width);
        }
        contents_->resize(width, std::max(room.height() - below, height));
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        head_->setGeometry(0, 0, width(), PageHead::Height);
        fitContents();
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        const bool handled = QScrollArea::eventFilter(object, event);
        if (object == contents_ && event->type() == QEvent::LayoutRequest) fitContents();
        return handled;
    }
    void focusInEvent(QFocusEvent* event) override {
        if (parentWidget()) setAccessibleName(parentWidget()->windowTitle());
        QScrollArea::focusInEvent(event);
    }

  private:
    PageContents* contents_;
    PageHead* head_ = new PageHead(*this);
};

/// A bar hands the keys to the field that stands beside it.
void joinFields(const std::vector<ViewBase*>& views) {
    for (ViewBase* view : views) {
        auto* const field = dynamic_cast<FieldView*>(view);
        if (!field) continue;
        for (ViewBase* other : views)
            if (auto* const bar = dynamic_cast<BarView*>(other); bar && bar->isBarOf(*field)) bar->setFocusProxy(field);
    }
}

/// Tab and Enter go down the columns.
void goDown(const std::vector<ViewBase*>& views, const std::vector<FieldView*>& columns) {
    for (ViewBase* view : views)
        if (auto* const field = dynamic_cast<FieldView*>(view)) field->goesOnByEnter();
    for (std::size_t i = 1; i < columns.size(); ++i) QWidget::setTabOrder(columns[i - 1], columns[i]);
}

}  // namespace

QWidget* buildPage(Window& window) {
    const Layout layout = window.Arrange();
    settleLayout(layout);
    auto contents = std::make_unique<PageContents>();
    auto* column = new QVBoxLayout(contents.get());
    column->setContentsMargins(LayoutSpacing, LayoutSpacing, LayoutSpacing, LayoutSpacing);
    BuiltLayout built = buildLayout(layout);
    column->addWidget(built.root, 1, built.growsDown ? Qt::Alignment() : Qt::AlignTop);
    contents->views = std::move(built.views);
    joinFields(contents->views);
    if (window.isSheet) goDown(contents->views, built.fieldsDown);
    for (ViewBase* view : contents->views) contents->focus.watch(view->widget());
    contents->looks.watch(contents->views);
    return new PageView(std::move(contents));
}

void showPageHead(QWidget* page, const Window& window) {
    static_cast<PageView*>(page)->head().show(window.FirstValues, !window.oldSince().empty());
}

void dropTyping(QWidget* page) {
    for (ViewBase* view : static_cast<PageView*>(page)->contents().views)
        if (view->bound()) view->dropTyping();
}

void layOut(QWidget* page) {
    for (QObject* child : page->children())
        if (child->isWidgetType()) layOut(static_cast<QWidget*>(child));
    if (QLayout* layout = page->layout()) layout->activate();
    if (auto* view = dynamic_cast<PageView*>(page)) view->fitContents();
}

void releaseModels(QWidget* page) {
    for (ViewBase* view : static_cast<PageView*>(page)->contents().views) view->release();
}

void dismissPage(QWidget* page) {
    releaseModels(page);
    page->hide();
    delete page;  // at once: the models are gone when this returns, and a widget that lives on would ask them its size
}

}  // namespace kestrel::qt
