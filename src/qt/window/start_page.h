// What the frame shows while no page is open: what is on the line, and all pages by group as large targets.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <vector>

#include "shell/main_window.h"

namespace kestrel::qt {

class StartPage : public QScrollArea {
  public:
    /// The model outlives it.
    StartPage(MainWindow& model, QWidget& area);

    /// Takes captions, flags and the state of the line as they now are.
    void refresh();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    struct Target {
        MenuItem* entry;
        QPushButton* button;
    };
    struct Heading {
        MenuItem* entry;
        QLabel* label;
    };

    void fill(MenuItem& group, std::vector<QWidget*>& blocks);
    void layOut(const std::vector<QWidget*>& blocks);

    MainWindow& model_;
    QLabel* line_;
    std::vector<Target> targets_;
    std::vector<Heading> headings_;
};

}  // namespace kestrel::qt
