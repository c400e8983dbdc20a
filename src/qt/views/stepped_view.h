// Shows a stepped switch: its positions as buttons side by side, or in a list that opens, where they are many or words.
// A position that no label stands for is shown as its number, marked as out of range.
#pragma once

#include <QButtonGroup>
#include <QComboBox>
#include <QStringList>

#include "platform/switches.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class SteppedView : public View<SteppedSwitch> {
  public:
    explicit SteppedView(SteppedSwitch& stepped);

    QAccessible::Role spokenRole() const override { return QAccessible::Slider; }
    bool isOnePiece() const override { return true; }
    QString valueInWords() const override;
    std::optional<Span> span() const override;
    void moveTo(int value) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    int top() const { return static_cast<int>(labels_.size()) - 1; }
    bool outOfRange() const { return !unread() && (position_ < 0 || position_ > top()); }
    /// The label of the position on show, or its number when it has none.
    QString positionText() const;
    void relabel();
    void rebuild();
    void addButtons();
    void addList();
    void showPosition();
    void stepBy(int amount);
    /// The user chose this one: a whole gesture by itself.
    void choose(int position);

    QButtonGroup* buttons_ = nullptr;
    QComboBox* list_ = nullptr;
    QStringList labels_;
    int position_ = 0;
    int wheelRest_ = 0;
};

}  // namespace kestrel::qt
