// What the frame shows while no page is open.
#include "qt/window/start_page.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/style/palette.h"

namespace kestrel::qt {

namespace {

constexpr int Columns = 4;
constexpr int TargetHeight = 40;
constexpr int NarrowestColumn = 190;
constexpr int WidestColumn = 280;
constexpr int Space = 16;

QFont boldOf(QFont font) {
    font.setWeight(QFont::DemiBold);
    return font;
}

bool opensPage(const MenuItem& entry) {
    const auto& tree = MenuTree();
    return std::any_of(tree.begin(), tree.end(),
                       [&entry](const MenuRow& row) { return row.page && row.line > 0 && row.name == entry.name(); });
}

}  // namespace

StartPage::StartPage(MainWindow& model, QWidget& area) : QScrollArea(&area), model_(model), line_(new QLabel) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    line_->setTextFormat(Qt::PlainText);
    line_->setWordWrap(true);
    line_->setFont(boldOf(font()));
    std::vector<QWidget*> blocks;
    fill(model.menuBar(), blocks);
    layOut(blocks);
    area.installEventFilter(this);
    refresh();
}

/// A block for each menu that has pages of its own; menus below it follow as blocks of theirs. Pages that stand in the
/// menu bar itself come last.
void StartPage::fill(MenuItem& group, std::vector<QWidget*>& blocks) {
    auto* block = new QWidget;
    auto* lines = new QVBoxLayout(block);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(2);
    if (&group != &model_.menuBar()) {
        auto* heading = new QLabel;
        heading->setFont(boldOf(font()));
        headings_.push_back({&group, heading});
        lines->addWidget(heading);
    }
    std::vector<QWidget*> below;
    for (const auto& entry : group.items()) {
        if (!entry->items().empty()) fill(*entry, below);
        if (!opensPage(*entry)) continue;
        auto* button = new QPushButton;
        button->setMinimumHeight(TargetHeight);
        connect(button, &QPushButton::clicked, this, [item = entry.get()] { deliver([item] { item->UserClick(); }); });
        targets_.push_back({entry.get(), button});
        lines->addWidget(button);
    }
    const bool isEmpty = lines->count() == (&group == &model_.menuBar() ? 0 : 1);
    if (isEmpty && &group != &model_.menuBar()) headings_.pop_back();
    const bool isRoot = &group == &model_.menuBar();
    if (isRoot) blocks.insert(blocks.end(), below.begin(), below.end());
    isEmpty ? delete block : blocks.push_back(block);
    if (!isRoot) blocks.insert(blocks.end(), below.begin(), below.end());
}

/// In columns of about the same height, in the order of the menus.
void StartPage::layOut(const std::vector<QWidget*>& blocks) {
    auto* contents = new QWidget;
    auto* all = new QVBoxLayout(contents);
    all->addWidget(line_);
    auto* row = new QHBoxLayout;
    row->setSpacing(Space);
    std::vector<QVBoxLayout*> columns;
    for (int i = 0; i < Columns; ++i) {
        auto* column = new QWidget;
        column->setMinimumWidth(NarrowestColumn);
        column->setMaximumWidth(WidestColumn);
        columns.push_back(new QVBoxLayout(column));
        columns.back()->setContentsMargins(0, 0, 0, 0);
        columns.back()->setSpacing(Space);
        row->addWidget(column, 1);
    }
    int whole = 0;
    for (const QWidget* block : blocks) whole += block->sizeHint().height() + Space;
    int above = 0;
    for (QWidget* block : blocks) {
        const int height = block->sizeHint().height() + Space;
        columns[static_cast<std::size_t>(std::min(Columns - 1, (above + height / 2) * Columns / whole))]->addWidget(
            block);
        above += height;
    }
    for (QVBoxLayout* column : columns) column->addStretch(1);
    all->addLayout(row);
    all->addStretch(1);
    setWidget(contents);
    contents->setAutoFillBackground(false);  // the toolkit has set it
}

void StartPage::refresh() {
    line_->setText(toQt(model_.Line.Text));
    for (const Heading& each : headings_) each.label->setText(toQt(each.entry->Caption));
    for (const Target& each : targets_) {
        const QString caption = toQt(each.entry->Caption).replace(u'&', QStringLiteral("&&"));
        if (each.button->text() != caption) each.button->setText(caption);
        each.button->setEnabled(each.entry->Enabled);
    }
}

bool StartPage::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize) setGeometry(static_cast<QWidget*>(object)->rect());
    return QScrollArea::eventFilter(object, event);
}

}  // namespace kestrel::qt
