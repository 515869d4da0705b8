#include "ui/calendar/event_tool_tip.h"

#include "calendar/event_text.h"
#include "ui/look/qt_text.h"

namespace lore {

// Without a tag the toolkit would show escaped letters as they are.
QString EventToolTip(const CTmEvent& event) {
    return QStringLiteral("<p style='white-space:pre-wrap'>") + ToQString(HoverText(event)).toHtmlEscaped() +
           QStringLiteral("</p>");
}

}  // namespace lore
