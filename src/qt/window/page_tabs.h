// A bar of tabs above the pages, one for each that is open. It shows only when the user asks for it.
#pragma once

#include <QMdiSubWindow>
#include <QPointer>
#include <QTabBar>
#include <QVBoxLayout>

#include "qt/window/page_area.h"

namespace kestrel::qt {

class PageTabs : public QWidget {
  public:
    /// Puts the bar above the area, which becomes its child.
    explicit PageTabs(PageArea& area);

    bool areShown() const { return !tabs_->isHidden(); }
    void show(bool shown) { tabs_->setVisible(shown); }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    /// Brings the tabs in line with the windows: their order, titles and which is in front.
    void follow();
    void followSoon();

    PageArea& area_;
    QTabBar* tabs_;
    QList<QPointer<QMdiSubWindow>> windows_;
    bool isFollowing_ = false;
    bool isAsked_ = false;
};

}  // namespace kestrel::qt
