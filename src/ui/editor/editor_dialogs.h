#pragma once

#include <QSizeF>
#include <QString>
#include <optional>

class QWidget;

namespace lore {

/// Where a link leads and the words that show it. An empty target takes the link away.
struct LinkChoice {
    QString target;
    QString text;
};
/// Asks for a link; `textNeeded` when nothing is selected that could show it. Nothing when cancelled.
std::optional<LinkChoice> AskLink(QWidget* parent, const LinkChoice& now, bool textNeeded);

struct TableChoice {
    int rows = 3;
    int columns = 3;
};
std::optional<TableChoice> AskTable(QWidget* parent);

/// Asks for the size of a picture in pixels; its shape stays. Nothing when cancelled or left as it was.
std::optional<QSizeF> AskPictureSize(QWidget* parent, const QSizeF& now, int widest);

}  // namespace lore
