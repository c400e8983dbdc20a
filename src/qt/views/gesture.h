// One gesture of the user on a stepped control: a preview while it lasts, and one change at its end.
// A drag or a held button lasts until it is let go; steps that follow each other quickly are one gesture.
#pragma once

#include <QTimer>
#include <functional>
#include <optional>

namespace kestrel::qt {

class Gesture {
  public:
    /// Steps that come within this time of each other belong together; milliseconds.
    static constexpr int SettleTime = 250;

    /// `show` runs whenever the preview changes, `change` once at the end with the value that the user left; it returns
    /// whether that was taken at once.
    Gesture(std::function<void()> show, std::function<bool(int)> change);

    bool active() const { return preview_.has_value(); }
    /// The preview, or a value that is on its way to the model, or the given value when there is neither.
    int valueOr(int value) const { return preview_.value_or(handedOver_.value_or(value)); }

    /// A preview that lasts until commit() or cancel().
    void hold(int value);
    /// A preview that is committed when no other step follows within SettleTime.
    void step(int value);
    /// Lets a held preview end as a step does.
    void settle();
    void commit();
    void cancel();
    /// Its page closes: steps that were made count, what is still held does not.
    void finish();
    /// The model has taken what was handed over, or refused it.
    void taken() { handedOver_.reset(); }

  private:
    std::function<void()> show_;
    std::function<bool(int)> change_;
    std::optional<int> preview_;
    std::optional<int> handedOver_;
    QTimer settle_;
};

}  // namespace kestrel::qt
