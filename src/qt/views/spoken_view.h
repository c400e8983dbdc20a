// What a screen reader learns of a view: a name that no other control of its page has, role, value in the page's own
// scale, and in its description what it shows in words and where that stands between the user and the board.
#pragma once

#include <QAccessibleWidget>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

/// What the view is called: its name on the page, or what it says of itself.
QString nameOf(const ViewBase& view);
/// The name on its page; empty where the view shows a caption or a frame, or stands on no page that is open.
QString nameOnPage(const ViewBase& view);
/// What it shows, with its state; of a drawing, what is lit and shown on it.
QString shownInWords(const ViewBase& view);

class SpokenView : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit SpokenView(ViewBase& view) : QAccessibleWidget(&view.widget(), view.spokenRole()), view_(view) {}

    bool isValid() const override { return QAccessibleWidget::isValid() && view_.bound(); }
    int childCount() const override { return view_.isOnePiece() ? 0 : QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override;
    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override { return scaled(span().value); }
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override { return scaled(span().highest); }
    QVariant minimumValue() const override { return scaled(span().lowest); }
    QVariant minimumStepSize() const override { return steps(span().step); }

    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

  private:
    ViewBase::Span span() const { return view_.span().value_or(ViewBase::Span{}); }
    /// The scale in which the page writes the numbers of a bar; that of other controls is their own.
    BarScale scale() const;
    double scaled(int value) const { return steps(value + scale().offset); }
    double steps(int count) const;

    ViewBase& view_;
};

}  // namespace kestrel::qt
