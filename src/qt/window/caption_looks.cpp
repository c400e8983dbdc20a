// Lets a caption look as locked as what it names.
#include "qt/window/caption_looks.h"

#include <QEvent>
#include <QWidget>
#include <algorithm>

#include "platform/basic_controls.h"
#include "platform/switches.h"
#include "qt/views/label_view.h"

namespace kestrel::qt {

namespace {

/// What only shows is no less readable for being locked.
bool isOperated(const Control& control) {
    return dynamic_cast<const Movable*>(&control) || dynamic_cast<const ToggleSwitch*>(&control) ||
           dynamic_cast<const TextBox*>(&control);
}

}  // namespace

void CaptionLooks::watch(const std::vector<ViewBase*>& views) {
    std::map<const Control*, LabelView*> labels;
    for (ViewBase* view : views)
        if (auto* const label = dynamic_cast<LabelView*>(view); label && !label->isFigure())
            labels[view->shown()] = label;
    for (ViewBase* view : views) {
        if (!isOperated(*view->shown())) continue;
        const auto label = labels.find(view->shown()->caption());
        if (label == labels.end()) continue;
        captionOf_[&view->widget()] = label->second;
        namedBy_[label->second].push_back(&view->widget());
        view->widget().installEventFilter(this);
    }
    for (const auto& [label, named] : namedBy_)
        label->lookLocked(
            std::none_of(named.begin(), named.end(), [](const QWidget* each) { return each->isEnabled(); }));
}

bool CaptionLooks::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::EnabledChange)
        if (const auto caption = captionOf_.find(object); caption != captionOf_.end()) {
            const auto& named = namedBy_[caption->second];
            caption->second->lookLocked(
                std::none_of(named.begin(), named.end(), [](const QWidget* each) { return each->isEnabled(); }));
        }
    return QObject::eventFilter(object, event);
}

}  // namespace kestrel::qt
