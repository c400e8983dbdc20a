// The list of what the user has changed in this run, each with the figure before, and a button that puts it back.
// It shows the model of link/history and keeps nothing.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace kestrel::qt {

class ChangesBox : public QDialog {
  public:
    explicit ChangesBox(QWidget* parent);
    ~ChangesBox() override;

  private:
    void showChanges();
    void putChosenBack();

    QTreeWidget* list_;
    QLabel* empty_;
    QPushButton* putBack_;
};

}  // namespace kestrel::qt
