// A bar of tabs above the pages.
#include "qt/window/page_tabs.h"

#include <QEvent>

namespace kestrel::qt {

PageTabs::PageTabs(PageArea& area) : area_(area), tabs_(new QTabBar(this)) {
    tabs_->setTabsClosable(true);
    tabs_->setDocumentMode(true);
    tabs_->setExpanding(false);
    tabs_->setFocusPolicy(Qt::NoFocus);
    tabs_->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(&area, 1);
    area.viewport()->installEventFilter(this);
    connect(&area, &QMdiArea::subWindowActivated, this, [this] { followSoon(); });
    connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) {
        QMdiSubWindow* const chosen = windows_.value(tab);
        if (isFollowing_ || !chosen || !area_.subWindowList().contains(chosen)) return;  // it is about to go
        if (chosen->isMinimized()) chosen->showNormal();
        area_.setActiveSubWindow(chosen);
    });
    connect(tabs_, &QTabBar::tabCloseRequested, this, [this](int tab) {
        if (QMdiSubWindow* const chosen = windows_.value(tab)) chosen->close();
    });
}

/// Pages come and go as children of the viewport; their titles follow the language.
bool PageTabs::eventFilter(QObject* object, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::ChildAdded || type == QEvent::ChildRemoved || type == QEvent::WindowTitleChange) followSoon();
    return QWidget::eventFilter(object, event);
}

void PageTabs::followSoon() {
    if (isAsked_) return;
    isAsked_ = true;
    QMetaObject::invokeMethod(
        this, [this] { follow(); }, Qt::QueuedConnection);
}

void PageTabs::follow() {
    isAsked_ = false;
    isFollowing_ = true;
    windows_.clear();
    for (QMdiSubWindow* window : area_.subWindowList()) windows_ += window;
    while (tabs_->count() > windows_.size()) tabs_->removeTab(tabs_->count() - 1);
    for (int i = 0; i < windows_.size(); ++i) {
        windows_[i]->removeEventFilter(this);
        windows_[i]->installEventFilter(this);
        if (i == tabs_->count()) tabs_->addTab({});
        const QString title = windows_[i]->windowTitle().replace(u'&', QStringLiteral("&&"));
        if (tabs_->tabText(i) != title) tabs_->setTabText(i, title);
    }
    tabs_->setCurrentIndex(static_cast<int>(windows_.indexOf(area_.currentSubWindow())));
    isFollowing_ = false;
}

}  // namespace kestrel::qt
