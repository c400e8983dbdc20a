// Shows a table of texts with column heads.
// Its size does not follow its rows: rows that arrive lay nothing out anew.
#pragma once

#include <QTreeWidget>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class ListTableView : public View<ListView, QTreeWidget> {
  public:
    explicit ListTableView(ListView& list);

    void renamed() override;
    QAccessible::Role spokenRole() const override { return QAccessible::Table; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void showState() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void fitColumns();
    /// The last column takes what is left, and more when its texts need it.
    void fitLastColumn();

    std::vector<std::string> heads_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace kestrel::qt
