// Turns a page's layout tree into widgets.
#include "qt/window/page_view.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "qt/views/aligned_grid.h"
#include "qt/views/bar_view.h"
#include "qt/views/canvas_view.h"
#include "qt/views/field_view.h"
#include "qt/views/group_view.h"
#include "qt/views/label_view.h"
#include "qt/views/view_factory.h"
#include "qt/window/focus_keeper.h"
#include "qt/window/page_head.h"

namespace kestrel::qt {

namespace {

constexpr int Spacing = GridStep;
constexpr int FieldSpacing = 2 * GridStep;  ///< between fields whose bar stands below their caption and figure
constexpr int ListSpacing = 3 * GridStep;   ///< so that a figure is not read with the caption to its right

/// What stands in the page: as wide and high as its window, or as its contents when the window is smaller.
class PageContents : public QWidget {
  public:
    std::vector<ViewBase*> views;
    FocusKeeper focus;

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
        setWidgetResizable(true);
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

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        head_->setGeometry(0, 0, width(), PageHead::Height);
    }
    void focusInEvent(QFocusEvent* event) override {
        if (parentWidget()) setAccessibleName(parentWidget()->windowTitle());
        QScrollArea::focusInEvent(event);
    }

  private:
    PageContents* contents_;
    PageHead* head_ = new PageHead(*this);
};

bool grows(const QWidget& widget, Qt::Orientation direction) {
    if (const QLayout* layout = widget.layout()) return layout->expandingDirections() & direction;
    return widget.sizePolicy().expandingDirections() & direction;
}

/// Panels fill the width, so that their edges are in line.
bool holdsGroups(const QWidget& widget) {
    const auto children = widget.findChildren<QWidget*>();
    return std::any_of(children.begin(), children.end(),
                       [](const QWidget* child) { return dynamic_cast<const GroupView*>(child) != nullptr; });
}

/// How a child stands in a cell that is larger than it.
Qt::Alignment standing(const QWidget& widget, bool inRow) {
    Qt::Alignment result;
    const bool group = dynamic_cast<const GroupView*>(&widget) != nullptr;
    if (!grows(widget, Qt::Vertical) && !(group && inRow)) result |= widget.layout() ? Qt::AlignTop : Qt::AlignVCenter;
    const auto* label = dynamic_cast<const LabelView*>(&widget);
    if ((label && label->isFigure()) || dynamic_cast<const FieldView*>(&widget))
        result |= Qt::AlignRight;
    else if (!group && !holdsGroups(widget) && !grows(widget, Qt::Horizontal))
        result |= Qt::AlignLeft;
    return result;
}

bool isGrid(const Layout& layout) { return layout.kind == Layout::Kind::Grid; }
bool isColumn(const Layout& layout) { return layout.kind == Layout::Kind::Column; }
bool isGap(const Layout& layout) {
    // A bar without a trough is its field alone.
    const auto* bar = dynamic_cast<const ScrollBar*>(layout.control);
    return layout.kind == Layout::Kind::Gap || (bar && !bar->hasTrough() && bar->figure());
}
bool isCell(const Layout& layout) { return layout.kind == Layout::Kind::Control || layout.kind == Layout::Kind::Gap; }

bool allOf(const Layout& layout, bool (*is)(const Layout&)) {
    return std::all_of(layout.children.begin(), layout.children.end(), is);
}

/// A control, or a row of controls.
bool isLine(const Layout& layout) {
    return isCell(layout) || (layout.kind == Layout::Kind::Row && allOf(layout, isCell));
}

using GridStacks = std::map<int, std::shared_ptr<GridStack>>;

class Builder {
  public:
    /// `stacks`: the grids of the column that the layout stands in, by their number of columns.
    QWidget* build(const Layout& layout, GridStacks& stacks) {
        switch (layout.kind) {
            case Layout::Kind::Control:
                return &viewOf(*layout.control).widget();
            case Layout::Kind::Row:
                return box(layout, QBoxLayout::LeftToRight, stacks);
            case Layout::Kind::Column:
                return box(layout, QBoxLayout::TopToBottom, stacks);
            case Layout::Kind::Grid:
                return grid(layout, stacks);
            case Layout::Kind::Group:
                return group(layout, stacks);
            case Layout::Kind::Canvas:
                return canvas(layout);
            case Layout::Kind::Gap:
                return new QWidget;
        }
        return nullptr;
    }
    std::vector<ViewBase*> views;
    std::vector<FieldView*> fieldsDown;  ///< the fields of grids, column by column

  private:
    ViewBase& viewOf(Control& control) {
        views.push_back(makeView(control));
        return *views.back();
    }

    QWidget* box(const Layout& layout, QBoxLayout::Direction direction, GridStacks& stacks) {
        auto* widget = new QWidget;
        auto* lines = new QBoxLayout(direction, widget);
        lines->setContentsMargins(0, 0, 0, 0);
        const bool inRow = direction == QBoxLayout::LeftToRight;
        // Lines below one another stand as close as the rows of a grid; grids side by side are kept apart.
        if (inRow)
            lines->setSpacing(allOf(layout, isGrid) ? ListSpacing : Spacing);
        else
            lines->setSpacing(allOf(layout, isLine) ? 0 : Spacing);
        for (const Layout& child : layout.children) {
            if (child.kind == Layout::Kind::Gap) lines->addStretch(1);
            if (isGap(child)) continue;
            GridStacks own;  // what stands side by side is not in line with what stands above
            QWidget* cell = build(child, inRow ? own : stacks);
            lines->addWidget(cell, 0, standing(*cell, inRow));
        }
        return widget;
    }

    QWidget* grid(const Layout& layout, GridStacks& stacks) {
        const int columns = std::max(1, layout.columns);
        auto& stack = stacks[columns];
        if (!stack) stack = std::make_shared<GridStack>();
        auto* widget = new QWidget;
        auto* cells = new AlignedGrid(widget, stack);
        cells->setContentsMargins(0, 0, 0, 0);
        const auto any = [&layout](bool (*is)(const Layout&)) {
            return std::any_of(layout.children.begin(), layout.children.end(), is);
        };
        const bool composed = any(isColumn);
        cells->setHorizontalSpacing(composed ? FieldSpacing : any(isGrid) ? FieldSpacing : Spacing);
        cells->setVerticalSpacing(composed ? Spacing : 0);
        std::vector<std::vector<FieldView*>> fieldsOf(static_cast<std::size_t>(columns));
        for (std::size_t i = 0; i < layout.children.size(); ++i) {
            if (isGap(layout.children[i])) continue;
            const int column = static_cast<int>(i) % columns;
            GridStacks own;
            const std::size_t first = views.size();
            QWidget* cell = build(layout.children[i], own);
            auto& fields = fieldsOf[static_cast<std::size_t>(column)];
            for (std::size_t at = first; at < views.size(); ++at)
                if (auto* const field = dynamic_cast<FieldView*>(views[at])) fields.push_back(field);
            cells->addWidget(cell, static_cast<int>(i) / columns, column, standing(*cell, true));
            if (grows(*cell, Qt::Horizontal)) cells->setColumnStretch(column, 1000);
        }
        for (const auto& fields : fieldsOf) fieldsDown.insert(fieldsDown.end(), fields.begin(), fields.end());
        // What the cells have no use for stays at the end of the rows.
        cells->setColumnStretch(columns, 1);
        return widget;
    }

    QWidget* group(const Layout& layout, GridStacks& stacks) {
        auto& view = static_cast<GroupView&>(viewOf(*layout.control));
        QWidget* inside = build(layout.children.front(), stacks);
        view.setContents(inside, grows(*inside, Qt::Vertical));
        return &view;
    }

    QWidget* canvas(const Layout& layout) {
        GridStacks none;
        auto& view = static_cast<CanvasView&>(viewOf(*layout.control));
        for (std::size_t i = 0; i < layout.children.size(); ++i)
            view.place(build(layout.children[i], none), toQt(layout.places[i]));
        return &view;
    }
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
    Builder builder;
    auto contents = std::make_unique<PageContents>();
    auto* column = new QVBoxLayout(contents.get());
    column->setContentsMargins(Spacing, Spacing, Spacing, Spacing);
    GridStacks stacks;
    QWidget* root = builder.build(layout, stacks);
    column->addWidget(root, 1, grows(*root, Qt::Vertical) ? Qt::Alignment() : Qt::AlignTop);
    contents->views = std::move(builder.views);
    joinFields(contents->views);
    if (window.isSheet) goDown(contents->views, builder.fieldsDown);
    for (ViewBase* view : contents->views) contents->focus.watch(view->widget());
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
