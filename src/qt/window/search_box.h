// The box in which a page or a setting is looked for by a part of its name.
// Enter opens what is chosen, the arrows choose, Escape closes.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <functional>
#include <vector>

#include "shell/search.h"

namespace kestrel::qt {

class SearchBox : public QDialog {
  public:
    /// `opened` runs when the page has been opened, with the control that was chosen or null.
    SearchBox(QWidget* parent, std::function<void(const Findable&, Control*)> opened);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void showMatches();
    void openChosen();

    std::function<void(const Findable&, Control*)> opened_;
    const std::vector<Findable> all_;
    std::vector<Findable> found_;
    QLineEdit* line_;
    QListWidget* list_;
};

}  // namespace kestrel::qt
