// Shows a label: a caption as wide as its text, or a value in a place of fixed size.
// A label that can be clicked is a zone that takes the focus and is pressed like a button.
#pragma once

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class Brush;

class LabelView : public View<Label> {
  public:
    explicit LabelView(Label& label);

    /// Of a value label: its text. Of a caption the empty text, since the name says it. Of the chosen key that it is
    /// on.
    QString valueInWords() const override;
    QString spokenName() const override;
    QAccessible::Role spokenRole() const override;
    bool canPress() const override { return model().isClickable(); }
    void press() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    const QString& text() const { return text_; }
    /// A caption is drawn as what it names, though it is not locked itself.
    void lookLocked(bool locked);
    /// It shows a value, not a caption.
    bool isFigure() const { return model().role == Label::Role::Value; }

  protected:
    QString ownTip() const override;
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool isKey() const { return model().role == Label::Role::Key; }
    int widestFigures() const;
    QColor ink() const;
    QRectF keyShape() const;
    void drawKey(Brush& brush) const;

    QString text_;
    std::string shownCaption_;
    std::string shownWidest_;
    int foreColor_ = Label::DefaultColor;
    bool chosen_ = false;
    bool pressed_ = false;
    bool looksLocked_ = false;
};

}  // namespace kestrel::qt
