// Turns a page's layout tree into widgets.
// See page_view.h.
#include "platform/qt/page_view.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <vector>

#include "platform/qt/bar_view.h"
#include "platform/qt/canvas_view.h"
#include "platform/qt/group_view.h"
#include "platform/qt/label_view.h"
#include "platform/qt/view_factory.h"

namespace kestrel::qt {

namespace {

constexpr int Spacing = GridStep;

/// What stands in the page: as wide and high as its window, or as its contents when the window is smaller.
class PageContents : public QWidget {
  public:
    std::vector<ViewBase*> views;

  protected:
    bool event(QEvent* event) override {
        // Captions that changed ask for one layout together; they name other controls too.
        if (event->type() == QEvent::LayoutRequest)
            for (ViewBase* view : views)
                if (view->bound()) view->renamed();
        return QWidget::event(event);
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
        // A page without anything to operate takes the focus itself, so that it can be scrolled by keys.
        setFocusPolicy(anyFocus ? Qt::NoFocus : Qt::StrongFocus);
    }
    QSize sizeHint() const override { return contents_->sizeHint(); }
    PageContents& contents() { return *contents_; }

  private:
    PageContents* contents_;
};

bool grows(const QWidget& widget, Qt::Orientation direction) {
    if (const QLayout* layout = widget.layout()) return layout->expandingDirections() & direction;
    return widget.sizePolicy().expandingDirections() & direction;
}

/// How a child stands in a cell that is larger than it.
Qt::Alignment standing(const QWidget& widget, bool inRow) {
    Qt::Alignment result;
    const bool group = dynamic_cast<const GroupView*>(&widget) != nullptr;
    if (!grows(widget, Qt::Vertical) && !(group && inRow)) result |= widget.layout() ? Qt::AlignTop : Qt::AlignVCenter;
    if (const auto* label = dynamic_cast<const LabelView*>(&widget); label && label->isFigure())
        result |= Qt::AlignRight;
    else if (!widget.layout() && !grows(widget, Qt::Horizontal))
        result |= Qt::AlignLeft;
    return result;
}

class Builder {
  public:
    QWidget* build(const Layout& layout) {
        switch (layout.kind) {
            case Layout::Kind::Control:
                return &viewOf(*layout.control).widget();
            case Layout::Kind::Row:
                return box(layout, QBoxLayout::LeftToRight);
            case Layout::Kind::Column:
                return box(layout, QBoxLayout::TopToBottom);
            case Layout::Kind::Grid:
                return grid(layout);
            case Layout::Kind::Group:
                return group(layout);
            case Layout::Kind::Canvas:
                return canvas(layout);
            case Layout::Kind::Gap:
                return new QWidget;
        }
        return nullptr;
    }
    std::vector<ViewBase*> views;

  private:
    ViewBase& viewOf(Control& control) {
        views.push_back(makeView(control));
        return *views.back();
    }

    QWidget* box(const Layout& layout, QBoxLayout::Direction direction) {
        auto* widget = new QWidget;
        auto* lines = new QBoxLayout(direction, widget);
        lines->setContentsMargins(0, 0, 0, 0);
        lines->setSpacing(Spacing);
        const bool inRow = direction == QBoxLayout::LeftToRight;
        const Qt::Orientation along = inRow ? Qt::Horizontal : Qt::Vertical;
        bool filled = false;
        std::vector<QWidget*> cells;
        for (const Layout& child : layout.children) {
            if (child.kind == Layout::Kind::Gap) {
                lines->addStretch(1);
                filled = true;
                continue;
            }
            cells.push_back(build(child));
            lines->addWidget(cells.back(), 0, standing(*cells.back(), inRow));
            filled = filled || grows(*cells.back(), along);
        }
        // What is left over stays at the end, without asking for more.
        if (!filled) {
            lines->addItem(new QSpacerItem(0, 0));
            lines->setStretch(lines->count() - 1, 1);
        }
        joinBars(cells);
        return widget;
    }

    QWidget* grid(const Layout& layout) {
        auto* widget = new QWidget;
        auto* cells = new QGridLayout(widget);
        cells->setContentsMargins(0, 0, 0, 0);
        cells->setHorizontalSpacing(Spacing);
        cells->setVerticalSpacing(0);
        const int columns = std::max(1, layout.columns);
        std::vector<QWidget*> row;
        bool filled = false;
        for (std::size_t i = 0; i < layout.children.size(); ++i) {
            const int column = static_cast<int>(i) % columns;
            const int line = static_cast<int>(i) / columns;
            if (column == 0) row.clear();
            if (layout.children[i].kind != Layout::Kind::Gap) {
                row.push_back(build(layout.children[i]));
                cells->addWidget(row.back(), line, column, standing(*row.back(), true));
                if (grows(*row.back(), Qt::Horizontal)) {
                    cells->setColumnStretch(column, 1);
                    filled = true;
                }
            }
            joinBars(row);
        }
        if (!filled) cells->setColumnStretch(columns, 1);
        return widget;
    }

    QWidget* group(const Layout& layout) {
        auto& view = static_cast<GroupView&>(viewOf(*layout.control));
        QWidget* inside = build(layout.children.front());
        view.setContents(inside, grows(*inside, Qt::Vertical));
        return &view;
    }

    QWidget* canvas(const Layout& layout) {
        auto& view = static_cast<CanvasView&>(viewOf(*layout.control));
        for (std::size_t i = 0; i < layout.children.size(); ++i)
            view.place(build(layout.children[i]), toQt(layout.places[i]));
        return &view;
    }

    /// Tells each bar of a row which label shows its value: the next one, or else the one before it.
    static void joinBars(const std::vector<QWidget*>& row) {
        const LabelView* before = nullptr;
        BarView* open = nullptr;
        for (QWidget* cell : row) {
            if (const auto* label = dynamic_cast<LabelView*>(cell); label && label->isFigure()) {
                before = label;
                if (open) open->setValueLabel(label);
                open = nullptr;
            } else if (auto* bar = dynamic_cast<BarView*>(cell)) {
                bar->setValueLabel(before);
                open = bar;
            }
        }
    }
};

}  // namespace

QWidget* buildPage(Window& window) {
    const Layout layout = window.Arrange();
    settleLayout(layout);
    Builder builder;
    auto contents = std::make_unique<PageContents>();
    auto* column = new QVBoxLayout(contents.get());
    column->setContentsMargins(Spacing, Spacing, Spacing, Spacing);
    QWidget* root = builder.build(layout);
    column->addWidget(root, 1, grows(*root, Qt::Vertical) ? Qt::Alignment() : Qt::AlignTop);
    contents->views = std::move(builder.views);
    return new PageView(std::move(contents));
}

void endGestures(QWidget* page) {
    for (ViewBase* view : static_cast<PageView*>(page)->contents().views)
        if (view->bound()) view->endGesture();
}

void dismissPage(QWidget* page) {
    for (ViewBase* view : static_cast<PageView*>(page)->contents().views) view->release();
    page->hide();
    page->deleteLater();
}

}  // namespace kestrel::qt
