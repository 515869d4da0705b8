#pragma once

#include <QAbstractListModel>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/command_finder.h"
#include "ui/controls/ground_delegate.h"

namespace lore {

class Theme;

/// What the command bar has found, best first.
class CommandBarModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { DetailRole = Qt::UserRole, MarksRole, IconRole };

    /// How an item reads, asked for once it is shown.
    using TextOf = std::function<std::string(const FindableItem&)>;

    CommandBarModel(TextOf textOf, QObject* parent) : QAbstractListModel(parent), textOf_(std::move(textOf)) {}
    void Show(const CommandFinder& finder, const QString& typed);
    const FindableItem& ItemAt(int row) const { return rows_[static_cast<size_t>(row)].item; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Row {
        FindableItem item;
        std::vector<int> marks;
        mutable std::optional<std::string> text;
    };
    const std::string& TextOfRow(const Row& row) const;

    TextOf textOf_;
    std::vector<Row> rows_;
};

/// Draws a row: the icon of its kind, its text with the matching letters strong, and the detail at the right. A text
/// that is cut stands whole in the tool tip.
class CommandBarDelegate : public GroundDelegate {
    Q_OBJECT

public:
    CommandBarDelegate(const Theme& theme, QObject* parent) : GroundDelegate(parent), theme_(theme) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const Theme& theme_;
};

}  // namespace lore
