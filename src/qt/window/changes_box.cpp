// The list of what the user has changed in this run.
#include "qt/window/changes_box.h"

#include <QHeaderView>
#include <QShortcut>
#include <QVBoxLayout>

#include "link/history.h"
#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/views/view.h"
#include "qt/window/access_words.h"
#include "qt/window/words.h"
#include "shell/put_back.h"

namespace kestrel::qt {

namespace {

constexpr QSize UsualSize(820, 360);

QString inWords(const PastChange& change, const std::string& text) {
    return change.isTwoState ? word(text == "1" ? Word::On : Word::Off) : toQt(text);
}

QString stateOf(const PastChange& change) {
    if (IsPutBack(change)) return accessWord(AccessWord::IsPutBack);
    return accessWord(static_cast<AccessWord>(static_cast<int>(AccessWord::Confirmed) + static_cast<int>(change.fate)));
}

QStringList rowOf(const PastChange& change) {
    return {toQt(change.time),           toQt(change.pageCaption), toQt(change.control), inWords(change, change.before),
            inWords(change, change.now), stateOf(change)};
}

}  // namespace

ChangesBox::ChangesBox(QWidget* parent)
    : QDialog(parent), list_(new QTreeWidget(this)), empty_(new QLabel(this)), putBack_(new QPushButton(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(accessWord(AccessWord::ShowChanges));
    list_->setAccessibleName(windowTitle());
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    QStringList heads;
    for (const AccessWord head : {AccessWord::Time, AccessWord::Page, AccessWord::Setting, AccessWord::Before,
                                  AccessWord::After, AccessWord::State})
        heads += accessWord(head);
    list_->setHeaderLabels(heads);
    empty_->setText(accessWord(AccessWord::NoChanges));
    putBack_->setText(accessWord(AccessWord::PutBack));
    auto* column = new QVBoxLayout(this);
    column->addWidget(list_, 1);
    column->addWidget(empty_);
    column->addWidget(putBack_, 0, Qt::AlignRight);
    connect(putBack_, &QPushButton::clicked, this, [this] { putChosenBack(); });
    connect(list_, &QTreeWidget::itemSelectionChanged, this,
            [this] { putBack_->setEnabled(!list_->selectedItems().isEmpty()); });
    const auto* back = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z), this);
    connect(back, &QShortcut::activated, this, [] { deliver(PutBackLast); });
    resize(UsualSize);
    OnHistory([this] { showChanges(); });
    showChanges();
}

ChangesBox::~ChangesBox() { OnHistory(nullptr); }

/// The newest stands above; what was chosen stays so.
void ChangesBox::showChanges() {
    const auto& all = PastChanges();
    const QTreeWidgetItem* const before = list_->currentItem();
    const int chosen = before ? before->data(0, Qt::UserRole).toInt() : 0;
    list_->clear();
    for (auto change = all.rbegin(); change != all.rend(); ++change) {
        auto* item = new QTreeWidgetItem(list_, rowOf(*change));
        item->setData(0, Qt::UserRole, change->number);
        item->setSizeHint(0, QSize(0, rowHeight(*list_)));
        if (change->number == chosen || (chosen == 0 && change == all.rbegin())) list_->setCurrentItem(item);
    }
    for (int i = 0; i + 1 < list_->columnCount(); ++i) list_->resizeColumnToContents(i);
    empty_->setVisible(all.empty());
    putBack_->setEnabled(!list_->selectedItems().isEmpty());
}

void ChangesBox::putChosenBack() {
    const QTreeWidgetItem* const item = list_->currentItem();
    if (!item) return;
    const int number = item->data(0, Qt::UserRole).toInt();
    deliver([number] { PutBack(number); });
}

}  // namespace kestrel::qt
