#pragma once

#include <QAbstractItemView>

#include "ui/look/focus_child.h"

namespace lore {

/// A list or tree that tells screen readers of its current row when they should hear of it. Qt's own ones say that the
/// focus is in a row that becomes the current one while something else has the focus, and say nothing of the current
/// row when they get the focus, or of its box when that is ticked.
template <typename View>
class QuietView : public View {
public:
    using View::View;

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
        if (this->hasFocus())
            View::currentChanged(current, previous);
        else                                                             // all but what would tell of a focus
            this->QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
    }

    void focusInEvent(QFocusEvent* event) override {
        View::focusInEvent(event);
        TellFocusChildSoon(*this);
    }

    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) override {
        View::dataChanged(first, last, roles);
        if (first == this->currentIndex() && roles.contains(Qt::CheckStateRole))
            TellFocusChildTicked(*this);
    }
};

}  // namespace lore
