// The box in which a page or a setting is looked for.
#include "qt/window/search_box.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/views/view.h"
#include "qt/window/access_words.h"

namespace kestrel::qt {

namespace {

constexpr QSize UsualSize(520, 420);

QString lineOf(const Findable& each) {
    const QString page = toQt(each.pageCaption);
    return each.control.empty() ? page : toQt(each.control) + QStringLiteral("  –  ") + page;
}

}  // namespace

SearchBox::SearchBox(QWidget* parent, std::function<void(const Findable&, Control*)> opened)
    : QDialog(parent),
      opened_(std::move(opened)),
      all_(AllFindable()),
      line_(new QLineEdit(this)),
      list_(new QListWidget(this)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(accessWord(AccessWord::FindPage));
    line_->setAccessibleName(windowTitle());
    list_->setAccessibleName(windowTitle());
    auto* column = new QVBoxLayout(this);
    column->addWidget(line_);
    column->addWidget(list_, 1);
    line_->installEventFilter(this);
    list_->setFocusPolicy(Qt::NoFocus);
    connect(line_, &QLineEdit::textChanged, this, [this] { showMatches(); });
    connect(list_, &QListWidget::itemClicked, this, [this] { openChosen(); });
    resize(UsualSize);
    showMatches();
}

/// The list is worked from the line, which keeps the focus.
bool SearchBox::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(object, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QCoreApplication::sendEvent(list_, event);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            openChosen();
            return true;
        default:
            return QDialog::eventFilter(object, event);
    }
}

void SearchBox::showMatches() {
    found_ = Matching(all_, line_->text().toStdString());
    list_->clear();
    for (const Findable& each : found_) list_->addItem(lineOf(each));
    if (found_.empty()) list_->addItem(accessWord(AccessWord::NothingFound));
    for (int row = 0; row < list_->count(); ++row) list_->item(row)->setSizeHint(QSize(0, rowHeight(*list_)));
    if (!found_.empty()) list_->setCurrentRow(0);
}

void SearchBox::openChosen() {
    const int row = list_->currentRow();
    if (row < 0 || row >= static_cast<int>(found_.size())) return;
    const Findable chosen = found_[static_cast<std::size_t>(row)];
    close();
    deliver([&] { OpenFound(chosen, [chosen, opened = opened_](Control* control) { opened(chosen, control); }); });
}

}  // namespace kestrel::qt
