// How the toolkit's own widgets are drawn.
#include "qt/style/look_style.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "qt/style/drawing.h"
#include "qt/style/group_box_style.h"
#include "qt/style/scroll_bar_style.h"
#include "qt/style/spin_box_style.h"
#include "qt/window/message_signs.h"
#include "qt/window/title_bar_style.h"

namespace kestrel::qt {

namespace {

/// Least height of what can be pressed, chosen or typed in.
constexpr int TargetHeight = 32;
constexpr int ListArrow = 28;
constexpr int FirstRepeatMs = 400;  ///< that an end is held before it steps on
constexpr int NextRepeatMs = 40;

/// The shape of a button or box stands a little inside its target, so that neighbours do not touch.
QRectF shapeIn(const QStyleOption& option) { return QRectF(option.rect).adjusted(3, 3, -3, -3); }

/// One of several buttons side by side in a box: the one that is down is filled.
void drawPosition(const QStyleOption& option, QPainter& painter) {
    if (!(option.state & (QStyle::State_On | QStyle::State_Sunken))) return;
    const bool enabled = option.state & QStyle::State_Enabled;
    const QColor edge = enabled ? colors().accent : colors().disabledText;
    drawShape(painter, QRectF(option.rect).adjusted(0, 3, 0, -3), CornerRadius, enabled ? edge : colors().panel, edge,
              2);
}

void drawButton(const QStyleOption& option, QPainter& painter) {
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool down = option.state & QStyle::State_Sunken;
    const bool hover = enabled && (option.state & QStyle::State_MouseOver);
    QColor face = enabled ? colors().button : colors().panel;
    if (down) face = colors().line;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    if (button && (button->features & QStyleOptionButton::Flat)) return drawPosition(option, painter);
    const bool byEnter = enabled && button && (button->features & QStyleOptionButton::DefaultButton);
    drawShape(painter, shapeIn(option), CornerRadius, face, hover || byEnter ? colors().text : colors().outline,
              byEnter ? 2 : 1);
}

void drawBox(const QStyleOption& option, QPainter& painter) {
    const bool enabled = option.state & QStyle::State_Enabled;
    drawShape(painter, shapeIn(option), CornerRadius, enabled ? colors().field : colors().panel, colors().outline);
    if (option.state & QStyle::State_HasFocus)
        drawShape(painter, option.rect, CornerRadius + 3, Qt::transparent, colors().accent, 2.0);
}

/// A list that opens: a button with an arrow.
void drawList(const QStyleOptionComboBox& list, QPainter& painter) {
    drawButton(list, painter);
    const bool enabled = list.state & QStyle::State_Enabled;
    drawArrow(painter, QRectF(list.rect).adjusted(list.rect.width() - ListArrow, 0, -4, 0), Arrow::Down,
              enabled ? colors().text : colors().line);
}

void drawProgress(const QStyleOption& option, QPainter& painter) {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option);
    if (!bar) return;
    constexpr int Thick = 8;
    const QRectF track(bar->rect.left() + 2, bar->rect.center().y() - Thick / 2.0, bar->rect.width() - 4, Thick);
    const QColor strength = bar->state & QStyle::State_Enabled ? colors().accent : colors().disabledText;
    drawShape(painter, track, Thick / 2.0, colors().field, colors().outline);
    if (bar->progress <= 0 || bar->maximum <= 0) return;
    const double filled = std::max<double>(Thick, track.width() * bar->progress / bar->maximum);
    drawShape(painter, {track.left(), track.top(), filled, track.height()}, Thick / 2.0, strength, strength);
}

void drawListFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const bool focus = widget && widget->hasFocus();
    drawShape(painter, option.rect, CornerRadius, Qt::transparent, focus ? colors().accent : colors().line, 2);
}

void drawFocus(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const QRectF ring = widget ? QRectF(widget->rect()) : QRectF(option.rect);
    const bool inItem = widget && QRectF(option.rect).width() < ring.width() * 0.6;
    drawShape(painter, inItem ? QRectF(option.rect) : ring, CornerRadius + 3, Qt::transparent, colors().accent, 2.0);
}

}  // namespace

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (element) {
        case PE_PanelButtonCommand:
        case PE_PanelButtonTool:
            drawButton(*option, *painter);
            break;
        case PE_PanelLineEdit:
            // The one in a field has the field's own box round it.
            if (!widget || !qobject_cast<const QAbstractSpinBox*>(widget->parentWidget())) drawBox(*option, *painter);
            break;
        case PE_FrameLineEdit:
            break;
        case PE_FrameWindow:
            drawShape(*painter, option->rect, 0, colors().window, colors().outline);
            break;
        case PE_Frame:
            drawListFrame(*option, *painter, widget);
            break;
        case PE_FrameFocusRect:
            drawFocus(*option, *painter, widget);
            break;
        default:
            painter->restore();
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    painter->restore();
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        element == CE_PushButtonLabel && button && (button->state & State_Enabled) &&
        (button->state & (State_On | State_Sunken)) && (button->features & QStyleOptionButton::Flat)) {
        QStyleOptionButton chosen(*button);
        chosen.palette.setColor(QPalette::ButtonText, colors().onAccent);
        return QProxyStyle::drawControl(element, &chosen, painter, widget);
    }
    if (element == CE_ProgressBar) return drawProgress(*option, *painter);
    if (element != CE_HeaderSection && element != CE_HeaderEmptyArea)
        return QProxyStyle::drawControl(element, option, painter, widget);
    painter->fillRect(option->rect, colors().panel);
    painter->fillRect(QRectF(option->rect.left(), option->rect.bottom(), option->rect.width(), 1), colors().outline);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    bool isDrawn = true;
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option); control == CC_ScrollBar && bar)
        drawScrollBar(*bar, *painter);
    else if (const auto* title = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
             control == CC_TitleBar && title)
        drawTitleBar(*title, *painter, *this, widget);
    else if (const auto* field = qstyleoption_cast<const QStyleOptionSpinBox*>(option); control == CC_SpinBox && field)
        drawSpinBox(*field, *painter, widget);
    else if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option); control == CC_ComboBox && list)
        drawList(*list, *painter);
    else if (const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
             control == CC_GroupBox && group)
        drawGroupBox(*group, *painter);
    else
        isDrawn = false;
    painter->restore();
    if (!isDrawn) QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const bool setsValue = widget && widget->objectName() == QLatin1String(BarWithEnds);
    if (control == CC_ScrollBar && bar) return setsValue ? barPart(*bar, part, *widget) : scrollBarPart(*bar, part);
    if (const auto* field = qstyleoption_cast<const QStyleOptionSpinBox*>(option); control == CC_SpinBox && field)
        return spinBoxPart(*field, part, widget);
    if (const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option); control == CC_GroupBox && group)
        return groupBoxPart(*group, part);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return option->rect.adjusted(GridStep, 0, -ListArrow, 0);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return 2 * GridStep;
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
        case PM_HeaderMargin:
            return GridStep;
        case PM_FocusFrameHMargin:
            return GridStep - 1;  // the toolkit adds one: the cells of a list stand below their heads
        case PM_TitleBarHeight:
            return TargetHeight;
        case PM_ScrollBarExtent:
            return 2 * GridStep;
        case PM_ScrollView_ScrollBarSpacing:
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_MenuItem) {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (item && item->menuItemType == QStyleOptionMenuItem::Separator) return result;
    }
    if (type == CT_MenuItem || type == CT_MenuBarItem || type == CT_PushButton || type == CT_LineEdit ||
        type == CT_ComboBox)
        result.setHeight(std::max(result.height(), TargetHeight));
    return result;
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon == SP_MessageBoxWarning) return warningSign();
    if (icon == SP_MessageBoxCritical) return troubleSign();
    return QProxyStyle::standardIcon(icon, option, widget);
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    switch (hint) {
        case SH_EtchDisabledText:
        case SH_WindowFrame_Mask:  // its rounded corners show stairs
            return 0;
        case SH_UnderlineShortcut:
            return 1;
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_SpinBox_ClickAutoRepeatThreshold:
            return FirstRepeatMs;
        case SH_SpinBox_ClickAutoRepeatRate:
            return NextRepeatMs;
        default:
            return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

}  // namespace kestrel::qt
