// Keeps the focus with a control that is locked for a while.
// Otherwise it would go on to the next control, and the user's next key would change what was never meant.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace kestrel::qt {

class FocusKeeper : public QObject {
  public:
    void watch(QWidget& control) { control.installEventFilter(this); }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QPointer<QWidget> locked_;  ///< had the focus when it was locked
};

}  // namespace kestrel::qt
