#pragma once

#include <QList>
#include <QWidget>

#include "edit/category_assignment.h"

class QComboBox;
class QScrollArea;
class QTabBar;
class QVBoxLayout;

namespace lore {

class Theme;

/// The category paths of the note: a tab for each set, and on it one box a level.
class CategoryPanel : public QWidget {
    Q_OBJECT

public:
    CategoryPanel(CategoryAssignment& paths, const Theme& theme, QWidget* parent = nullptr);

    /// The set in sight, 1 to 3.
    int ActiveSet() const;
    QTabBar* Tabs() const { return tabs_; }
    QComboBox* BoxAt(int level) const { return boxes_[level]; }
    int BoxCount() const { return static_cast<int>(boxes_.size()); }

signals:
    void Changed();

private:
    void Rebuild();
    void FillBox(QComboBox& box, size_t level);
    void Choose(size_t level, int index);

    CategoryAssignment& paths_;
    const Theme& theme_;
    QTabBar* tabs_;
    QScrollArea* scroll_;
    QVBoxLayout* list_;
    QList<QComboBox*> boxes_;
};

}  // namespace lore
