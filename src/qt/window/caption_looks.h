// Lets a caption look as locked as what it names, so that there is one look of what cannot be changed.
#pragma once

#include <QObject>
#include <map>
#include <vector>

namespace kestrel::qt {

class LabelView;
class ViewBase;

class CaptionLooks : public QObject {
  public:
    /// The views live as long as this.
    void watch(const std::vector<ViewBase*>& views);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    std::map<const QObject*, LabelView*> captionOf_;  ///< by the widget that is operated
    std::map<LabelView*, std::vector<const QWidget*>> namedBy_;
};

}  // namespace kestrel::qt
