#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace lore {

/// What a colour is for. Text roles have a contrast of at least 4.5:1 on every ground they stand on, edges 3:1.
enum class ColorRole {
    Window,         ///< ground of windows, bars and panels
    Field,          ///< ground of edit fields, lists and trees
    Board,          ///< ground behind the cards
    Card,           ///< ground of a card
    Raised,         ///< ground of pills, chips, tiles and buttons
    Hover,          ///< the same under the mouse
    Text,           ///< on all of the above
    DimText,        ///< second-rank text on all of the above
    Accent,         ///< the one strong colour: rings, check marks, the default button
    AccentText,     ///< on Accent
    Link,           ///< links, on Card and Window
    Selection,      ///< ground of a selected row
    SelectionText,  ///< on Selection
    Edge,           ///< edges that show where a control is
    FaintEdge,      ///< decorative lines between things that are told apart anyway
    Warning,        ///< ground of the quiet bar that tells of a fault
    WarningText,    ///< on Warning
    Count_
};

enum class TextSize { Small, Body, Title, Display };

inline constexpr int kSpace = 4;  ///< all distances are multiples of this, in pixels
inline constexpr int kCardRadius = 8;
inline constexpr int kControlRadius = 6;

/// The colours and icons that drawing asks for.
class ThemeLook {
public:
    virtual ~ThemeLook() = default;
    virtual QColor Color(ColorRole role) const = 0;
    /// An icon by its file name without ".svg", drawn in a colour role, which follows the theme; sharp at every scale
    /// factor.
    virtual QIcon Icon(const QString& name, ColorRole role) const = 0;
    QIcon Icon(const QString& name) const { return Icon(name, ColorRole::Text); }
};

}  // namespace lore
