// What a test sees of the program beside its pages: what it tells the user, and what it leaves behind.
// It looks at every event of the process.
#pragma once

#include <QObject>

namespace kestrel::testing {

int openDescriptors();

class Witness : public QObject {
  public:
    Witness();
    int notices = 0;  ///< how often the status bar began to speak of the port
    int boxes = 0;
    int errors = 0;  ///< how often the error lamp went on

    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    bool wasOn_ = false;
    bool wasLit_ = false;
};

}  // namespace kestrel::testing
