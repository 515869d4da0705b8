#pragma once

#include "ui/controls/ground_delegate.h"

namespace lore {

class Theme;

/// Draws an entry of a panel: its name, behind a swatch where it is a colour, and the counts at the right in a
/// second-rank colour.
class PanelDelegate : public GroundDelegate {
    Q_OBJECT

public:
    explicit PanelDelegate(const Theme& theme, QObject* parent = nullptr);
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const Theme& theme_;
};

}  // namespace lore
