#include "ui/look/flat_style.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <algorithm>

#include "ui/look/theme_look.h"

namespace lore {
namespace {

constexpr int kScrollBarExtent = 3 * kSpace;
constexpr int kShortestHandle = 8 * kSpace;
constexpr int kIndicator = 14, kIcon = 16, kLargeIcon = 24, kMessageIcon = 48;
/// Up to this height of a line the sizes of icons and indicators stand as they are.
constexpr int kUsualLine = 20;

/// A size that stands beside text: larger beside large letters.
int BesideText(int size, const QStyleOption* option, const QWidget* widget) {
    const QFontMetrics letters = option ? option->fontMetrics : widget ? widget->fontMetrics() : QFontMetrics(QFont());
    return std::max(size, qRound(double(size) * letters.height() / kUsualLine));
}

/// What an arrow and its room are wider beside large letters.
int MoreForArrow(const QStyleOption* option, const QWidget* widget) {
    return BesideText(kIcon, option, widget) - kIcon;
}

bool Has(const QStyleOption& option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

bool IsHot(const QStyleOption& option) {
    return Has(option, QStyle::State_Enabled) && Has(option, QStyle::State_MouseOver);
}

QRectF Inside(const QRect& rect, double by = 0.5) {
    return QRectF(rect).adjusted(by, by, -by, -by);
}

/// The arrow grows towards the text, which gives way.
QRect PartOfComboBox(const QRect& usual, bool isArrow, Qt::LayoutDirection direction, int more) {
    if (direction == Qt::RightToLeft)
        return usual.adjusted(isArrow ? 0 : more, 0, isArrow ? more : 0, 0);
    return usual.adjusted(isArrow ? -more : 0, 0, isArrow ? 0 : -more, 0);
}

}  // namespace

FlatStyle::FlatStyle(const ThemeLook& theme) : QProxyStyle(QStringLiteral("Fusion")), theme_(theme) {}

void FlatStyle::FillRound(QPainter& painter, const QRectF& rect, double radius, ColorRole ground) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme_.Color(ground));
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

void FlatStyle::FillRound(QPainter& painter, const QRectF& rect, double radius, ColorRole ground,
                          ColorRole edge) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme_.Color(edge));
    painter.setBrush(theme_.Color(ground));
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

void FlatStyle::DrawButton(const QStyleOption& option, QPainter& painter) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool strong = button && button->features.testFlag(QStyleOptionButton::DefaultButton);
    const bool down = Has(option, State_Sunken) || Has(option, State_On);
    const bool enabled = Has(option, State_Enabled);
    painter.save();
    if (!enabled)
        painter.setOpacity(0.55);
    if (strong && enabled)
        FillRound(painter, Inside(option.rect), kControlRadius, ColorRole::Accent, ColorRole::Accent);
    else
        FillRound(painter, Inside(option.rect), kControlRadius,
                  down || IsHot(option) ? ColorRole::Hover : ColorRole::Raised, ColorRole::Edge);
    painter.restore();
}

void FlatStyle::DrawToolButton(const QStyleOption& option, QPainter& painter) const {
    const bool down = Has(option, State_Sunken);
    if (Has(option, State_On))
        FillRound(painter, Inside(option.rect), kControlRadius, ColorRole::Selection);
    else if (down || IsHot(option))
        FillRound(painter, Inside(option.rect), kControlRadius, ColorRole::Hover);
    else if (!Has(option, State_AutoRaise))
        FillRound(painter, Inside(option.rect), kControlRadius, ColorRole::Raised, ColorRole::Edge);
}

void FlatStyle::DrawField(const QStyleOption& option, QPainter& painter, bool filled) const {
    const bool focus = Has(option, State_HasFocus) && Has(option, State_Enabled);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(filled ? QBrush(theme_.Color(ColorRole::Field)) : QBrush(Qt::NoBrush));
    painter.setPen(QPen(theme_.Color(focus ? ColorRole::Accent : ColorRole::Edge), focus ? 2 : 1));
    painter.drawRoundedRect(Inside(option.rect, focus ? 1.0 : 0.5), kControlRadius, kControlRadius);
    painter.restore();
}

void FlatStyle::DrawCheckMark(const QStyleOption& option, QPainter& painter, bool round) const {
    const bool on = Has(option, State_On) || Has(option, State_NoChange);
    const QRectF box = Inside(option.rect, 1.5);
    const double radius = round ? box.width() / 2 : kSpace / 2.0;
    painter.save();
    if (!Has(option, State_Enabled))
        painter.setOpacity(0.5);
    FillRound(painter, box, radius, on ? ColorRole::Accent : ColorRole::Field,
              on ? ColorRole::Accent : ColorRole::Edge);
    if (on) {
        painter.setRenderHint(QPainter::Antialiasing);
        QPen pen(theme_.Color(ColorRole::AccentText), box.width() / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        const auto at = [&box](double x, double y) {
            return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
        };
        if (Has(option, State_NoChange))
            painter.drawLine(at(0.28, 0.5), at(0.72, 0.5));
        else if (round)
            painter.drawEllipse(box.center(), box.width() / 10, box.width() / 10);
        else
            painter.drawPolyline(QPolygonF{at(0.24, 0.52), at(0.43, 0.71), at(0.77, 0.31)});
    }
    painter.restore();
}

void FlatStyle::DrawFocusRing(const QStyleOption& option, QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme_.Color(ColorRole::Accent), 2));
    painter.drawRoundedRect(Inside(option.rect, 1), kControlRadius, kControlRadius);
    painter.restore();
}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
            return DrawButton(*option, *painter);
        case PE_PanelButtonTool:
            return DrawToolButton(*option, *painter);
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (frame && frame->lineWidth <= 0)
                return painter->fillRect(option->rect, theme_.Color(ColorRole::Field));
            return DrawField(*option, *painter, true);
        }
        case PE_FrameLineEdit:
            return DrawField(*option, *painter, false);
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            return DrawCheckMark(*option, *painter, false);
        case PE_IndicatorRadioButton:
            return DrawCheckMark(*option, *painter, true);
        case PE_FrameFocusRect:
            return DrawFocusRing(*option, *painter);
        case PE_FrameDefaultButton:
        case PE_FrameStatusBarItem:
        case PE_PanelStatusBar:
        case PE_FrameTabBarBase:
            return;
        case PE_PanelScrollAreaCorner:
            return painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        case PE_FrameMenu:
            painter->setPen(theme_.Color(ColorRole::Edge));
            return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        case PE_Frame:
        case PE_FrameTabWidget:
        case PE_FrameGroupBox:
            painter->setPen(theme_.Color(ColorRole::FaintEdge));
            return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        default:
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void FlatStyle::DrawTab(const QStyleOption& option, QPainter& painter) const {
    const bool active = Has(option, State_Selected);
    if (!active && IsHot(option))
        FillRound(painter, Inside(option.rect, 2), kControlRadius, ColorRole::Hover);
    QRect line = option.rect;
    line.setTop(line.bottom() - (active ? 2 : 0));
    painter.fillRect(line, theme_.Color(active ? ColorRole::Accent : ColorRole::FaintEdge));
}

void FlatStyle::DrawHeader(const QStyleOption& option, QPainter& painter) const {
    painter.fillRect(option.rect, theme_.Color(IsHot(option) ? ColorRole::Hover : ColorRole::Window));
    painter.setPen(theme_.Color(ColorRole::FaintEdge));
    painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter.drawLine(option.rect.topRight(), option.rect.bottomRight());
}

void FlatStyle::DrawProgress(const QStyleOption& option, QPainter& painter) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option);
    const int height = std::min(option.rect.height(), 2 * kSpace);
    QRectF track(option.rect.left(), option.rect.center().y() - height / 2.0, option.rect.width(), height);
    FillRound(painter, track, height / 2.0, ColorRole::Hover);
    if (!bar || bar->maximum <= bar->minimum)
        return;
    const double share = double(bar->progress - bar->minimum) / (bar->maximum - bar->minimum);
    track.setWidth(std::max<double>(height, track.width() * std::clamp(share, 0.0, 1.0)));
    FillRound(painter, track, height / 2.0, ColorRole::Accent);
}

void FlatStyle::DrawLabel(const QStyleOptionButton& button, QPainter& painter, const QWidget* widget) const {
    QStyleOptionButton label(button);
    if (label.features.testFlag(QStyleOptionButton::DefaultButton) && Has(label, State_Enabled))
        label.palette.setColor(QPalette::ButtonText, theme_.Color(ColorRole::AccentText));
    if (label.icon.isNull() || label.text.isEmpty() || label.features.testFlag(QStyleOptionButton::HasMenu))
        return QProxyStyle::drawControl(CE_PushButtonLabel, &label, &painter, widget);
    // Fusion leaves the same few pixels between icon and word beside letters of any size.
    const int gap = BesideText(kSpace, &label, widget), icon = label.iconSize.width();
    const int word = label.fontMetrics.size(Qt::TextShowMnemonic, label.text).width();
    QRect place(0, 0, icon + gap + word, label.rect.height());
    place.moveCenter(label.rect.center());
    QStyleOptionButton part(label);
    part.text.clear();
    part.rect = visualRect(label.direction, label.rect, QRect(place.topLeft(), QSize(icon, place.height())));
    QProxyStyle::drawControl(CE_PushButtonLabel, &part, &painter, widget);
    label.icon = QIcon();
    label.rect = visualRect(label.direction, label.rect, place.adjusted(icon + gap, 0, 0, 0));
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, &painter, widget);
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
        case CE_TabBarTabShape:
            return DrawTab(*option, *painter);
        case CE_HeaderSection:
            return DrawHeader(*option, *painter);
        case CE_MenuItem: {
            const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            if (!entry || entry->menuItemType != QStyleOptionMenuItem::Separator || !entry->text.isEmpty())
                break;
            const int middle = option->rect.center().y();
            painter->setPen(theme_.Color(ColorRole::FaintEdge));
            return painter->drawLine(option->rect.left() + kSpace, middle, option->rect.right() - kSpace, middle);
        }
        case CE_ToolBar:
            painter->fillRect(option->rect, theme_.Color(ColorRole::Window));
            painter->setPen(theme_.Color(ColorRole::FaintEdge));
            return painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
        case CE_Splitter:
            return painter->fillRect(option->rect, theme_.Color(ColorRole::FaintEdge));
        case CE_ProgressBarGroove:
            return;
        case CE_ProgressBarContents:
            return DrawProgress(*option, *painter);
        case CE_PushButtonLabel:
            if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
                return DrawLabel(*button, *painter, widget);
            break;
        default:
            break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::DrawArrow(QPainter& painter, const QString& icon, const QRect& room, int side, bool enabled) const {
    QRect square(0, 0, side, side);
    square.moveCenter(room.center());
    theme_.Icon(icon, ColorRole::DimText)
        .paint(&painter, square, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
}

void FlatStyle::DrawComboBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(&option);
    if (!box || box->editable || !box->frame) {
        DrawField(option, painter, true);
    } else {
        FillRound(painter, Inside(option.rect), kControlRadius, IsHot(option) ? ColorRole::Hover : ColorRole::Raised,
                  ColorRole::Edge);
        if (Has(option, State_HasFocus) && Has(option, State_KeyboardFocusChange))
            DrawFocusRing(option, painter);
    }
    const QRect arrow = subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
    const int side = std::min(BesideText(kIcon, &option, widget), arrow.height());
    DrawArrow(painter, QStringLiteral("chevron-down"), arrow, side, Has(option, State_Enabled));
}

void FlatStyle::DrawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(&option);
    if (box && !box->frame)
        painter.fillRect(option.rect, theme_.Color(ColorRole::Field));
    else
        DrawField(option, painter, true);
    if (!box || box->buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    for (const bool up : {true, false}) {
        const SubControl part = up ? SC_SpinBoxUp : SC_SpinBoxDown;
        const QRect room = subControlRect(CC_SpinBox, &option, part, widget);
        const bool enabled =
            Has(option, State_Enabled) &&
            box->stepEnabled.testFlag(up ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled);
        if (enabled && IsHot(option) && option.activeSubControls.testFlag(part))
            FillRound(painter, Inside(room), kSpace / 2.0, ColorRole::Hover);
        // The arrow itself is only a quarter of its icon high.
        const int side = std::min(BesideText(kIcon, &option, widget), room.width());
        DrawArrow(painter, up ? QStringLiteral("chevron-up") : QStringLiteral("chevron-down"), room, side, enabled);
    }
}

void FlatStyle::DrawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    painter.fillRect(option.rect, option.palette.color(QPalette::Window));
    if (!bar || bar->maximum <= bar->minimum)
        return;
    const QRect handle = subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
    const bool hot = (IsHot(option) || Has(option, State_Sunken)) && option.activeSubControls == SC_ScrollBarSlider;
    const QRectF pill = Inside(handle, hot ? 2 : 3);
    FillRound(painter, pill, std::min(pill.width(), pill.height()) / 2, hot ? ColorRole::DimText : ColorRole::Edge);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    if (control == CC_ComboBox)
        return DrawComboBox(*option, *painter, widget);
    if (control == CC_SpinBox)
        return DrawSpinBox(*option, *painter, widget);
    if (control == CC_ScrollBar)
        return DrawScrollBar(*option, *painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect FlatStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ComboBox && (part == SC_ComboBoxArrow || part == SC_ComboBoxEditField))
        return PartOfComboBox(QProxyStyle::subControlRect(control, option, part, widget), part == SC_ComboBoxArrow,
                              option->direction, MoreForArrow(option, widget));
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const bool lying = bar->orientation == Qt::Horizontal;
    const int length = lying ? bar->rect.width() : bar->rect.height();
    const double range = double(bar->maximum) - bar->minimum;
    int handle = range > 0 ? static_cast<int>(length * (bar->pageStep / (range + bar->pageStep))) : length;
    handle = std::clamp(handle, std::min(kShortestHandle, length), length);
    const int start =
        sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - handle, bar->upsideDown);
    int from = 0, to = 0;
    switch (part) {
        case SC_ScrollBarGroove:
            to = length;
            break;
        case SC_ScrollBarSlider:
            from = start;
            to = start + handle;
            break;
        case SC_ScrollBarSubPage:
            to = start;
            break;
        case SC_ScrollBarAddPage:
            from = start + handle;
            to = length;
            break;
        default:
            return {};
    }
    const QRect rect =
        lying ? QRect(from, 0, to - from, bar->rect.height()) : QRect(0, from, bar->rect.width(), to - from);
    return visualRect(bar->direction, bar->rect, rect.translated(bar->rect.topLeft()));
}

QRect FlatStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect usual = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element != SE_LineEditContents || !frame || frame->lineWidth <= 0)
        return usual;
    return usual.adjusted(kSpace, 0, -kSpace, 0);  // the ring of the focus stays clear of the letters
}

/// What a list's frame and arrow leave of its width is for the text.
int FlatStyle::BesideChoice(const QStyleOption* option, const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (!box)
        return 0;
    QStyleOptionComboBox wide(*box);
    wide.rect = QRect(0, 0, 1000, 100);
    return wide.rect.width() - subControlRect(CC_ComboBox, &wide, SC_ComboBoxEditField, widget).width();
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
        case CT_PushButton: {
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            const bool hasBoth = button && !button->icon.isNull() && !button->text.isEmpty();
            const int more = hasBoth ? BesideText(kSpace, option, widget) - kSpace : 0;
            return size + QSize(4 * kSpace + more, 2 * kSpace);
        }
        case CT_ComboBox: {
            const QSize usual = size + QSize(kSpace + MoreForArrow(option, widget), kSpace);
            // Texts are measured without the blank at the sides of their letters.
            return usual.expandedTo(QSize(contents.width() + BesideChoice(option, widget) + 2 * kSpace, 0));
        }
        case CT_SpinBox:  // a date has an arrow of the same kind
            return size + QSize(MoreForArrow(option, widget), 0);
        case CT_LineEdit:
            return size + QSize(3 * kSpace, kSpace);
        case CT_ToolButton:
        case CT_MenuItem:
            return size + QSize(kSpace, kSpace);
        default:
            return size;
    }
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const auto besideText = [&](int size) {
        return std::max(QProxyStyle::pixelMetric(metric, option, widget), BesideText(size, option, widget));
    };
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return besideText(kIndicator);
        case PM_SmallIconSize:
        case PM_ButtonIconSize:
            return besideText(kIcon);
        case PM_ToolBarIconSize:
        case PM_ListViewIconSize:
            return besideText(kLargeIcon);
        case PM_MessageBoxIconSize:
            return besideText(kMessageIcon);
        case PM_ScrollBarExtent:
            return kScrollBarExtent;
        case PM_ScrollBarSliderMin:
            return kShortestHandle;
        case PM_SplitterWidth:
            return 1;
        case PM_ButtonDefaultIndicator:
            return 0;
        case PM_ToolBarExtensionExtent:
            return 6 * kSpace;
        case PM_TabBarTabHSpace:
            return 5 * kSpace;
        case PM_TabBarTabVSpace:
            return 4 * kSpace;
        case PM_ToolBarItemSpacing:
        case PM_ToolBarItemMargin:
            return kSpace;
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return 2 * kSpace;
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return 3 * kSpace;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
    if (hint == SH_EtchDisabledText || hint == SH_ScrollView_FrameOnlyAroundContents)
        return 0;
    if (hint == SH_ScrollBar_Transient || hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

QIcon FlatStyle::standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const {
    switch (standard) {
        case SP_MessageBoxInformation:
            return theme_.Icon(QStringLiteral("info"), ColorRole::Accent);
        case SP_MessageBoxQuestion:
            return theme_.Icon(QStringLiteral("circle-question-mark"), ColorRole::Accent);
        case SP_MessageBoxWarning:
            return theme_.Icon(QStringLiteral("triangle-alert"), ColorRole::Text);
        case SP_MessageBoxCritical:
            return theme_.Icon(QStringLiteral("circle-alert"), ColorRole::Text);
        case SP_LineEditClearButton:
            return theme_.Icon(QStringLiteral("x"), ColorRole::DimText);
        case SP_ToolBarHorizontalExtensionButton:
            return theme_.Icon(QStringLiteral("ellipsis"), ColorRole::Text);
        default:
            return QProxyStyle::standardIcon(standard, option, widget);
    }
}

}  // namespace lore
