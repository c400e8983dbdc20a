// Shows the switches with two states: a toggle that slides, and a button with a lamp in it.
// A click or a key turns the model over; the view shows what the model then holds.
#pragma once

#include <QAbstractButton>

#include "platform/switches.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class TwoStateView : public View<ToggleSwitch, QAbstractButton> {
  public:
    explicit TwoStateView(ToggleSwitch& toggle);

    QAccessible::Role spokenRole() const override { return QAccessible::CheckBox; }
    QString valueInWords() const override;
    std::optional<bool> checked() const override;
    QString inWords(const std::string& text) const override;
    bool canPress() const override { return true; }
    void press() override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void keyPressEvent(QKeyEvent* event) override;

    bool active() const { return active_; }

  private:
    bool active_ = false;
};

class ToggleView : public TwoStateView {
  public:
    using TwoStateView::TwoStateView;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Drawn as an eye, crossed out while it conceals.
class RevealView : public TwoStateView {
  public:
    using TwoStateView::TwoStateView;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

class LedSwitchView : public TwoStateView {
  public:
    using TwoStateView::TwoStateView;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrel::qt
