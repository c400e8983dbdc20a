// Shows folding frames below one another.
#include "qt/views/folding_view.h"

#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace kestrel::qt {

void FoldingView::userFold() {
    act([](Frame& frame) { static_cast<FoldingFrame&>(frame).UserFold(); });
}

void FoldingView::showState() {
    GroupView::showState();
    if (changed_) changed_();
}

FoldingColumn::FoldingColumn(int spacing) : lines_(new QVBoxLayout(this)) {
    lines_->setContentsMargins(0, 0, 0, 0);
    lines_->setSpacing(spacing);
}

void FoldingColumn::add(FoldingView& view) {
    auto* holder = new QWidget;
    auto* inside = new QVBoxLayout(holder);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(&view);
    auto* button = new QToolButton;
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setCheckable(true);
    button->setMinimumHeight(rowHeight(*this));
    connect(button, &QToolButton::clicked, this, [this, &view] {
        view.userFold();
        arrange();  // the button shows what holds
    });
    parts_.push_back({&view, button, holder});
    lines_->addWidget(button);
    lines_->addWidget(holder);
    view.whenChanged([this] { arrange(); });
    arrange();
}

void FoldingColumn::arrange() {
    int at = 0;
    for (const bool inUse : {true, false})
        for (const Part& part : parts_) {
            if (!part.view->bound() || part.view->inUse() != inUse) continue;
            const bool folded = part.view->folded();
            part.button->setText(part.view->spokenName());
            part.button->setArrowType(folded ? Qt::RightArrow : Qt::DownArrow);
            part.button->setChecked(!folded);
            part.button->setVisible(!inUse);
            part.holder->setVisible(!folded);
            for (QWidget* widget : {static_cast<QWidget*>(part.button), part.holder}) {
                if (lines_->indexOf(widget) != at) lines_->insertWidget(at, widget);
                ++at;
            }
        }
}

}  // namespace kestrel::qt
