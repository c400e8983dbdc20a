// What the views of stepped switches share: a position among labelled ones, moved by keys, wheel or a menu.
// A position that no label stands for is shown as its number, marked as out of range.
#pragma once

#include <QStringList>

#include "platform/switches.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class SteppedView : public View<SteppedSwitch> {
  public:
    explicit SteppedView(SteppedSwitch& stepped);

    QString valueInWords() const override;
    std::optional<Span> span() const override;
    void moveTo(int value) override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    const QStringList& labels() const { return labels_; }
    int top() const { return static_cast<int>(labels_.size()) - 1; }
    /// As the model shows it.
    int position() const { return position_; }
    bool isChosen(int position) const { return !unread() && position == this->position(); }
    bool outOfRange() const { return !unread() && (position() < 0 || position() > top()); }
    /// The label of the position on show, or its number when it has none.
    QString positionText() const;
    int widestLabel() const;

    void stepBy(int amount);
    /// The user chose this one: a whole gesture by itself.
    void choose(int position);
    /// A menu of the labels, under the widget.
    void openMenu();

  private:
    QStringList labels_;
    int position_ = 0;
    int wheelRest_ = 0;
};

}  // namespace kestrel::qt
