#include "printsave/page_accessible.h"

#include <QAccessibleWidget>

#include "printsave/page_view.h"
#include "ui/look/accessible_item.h"

namespace lore {
namespace {

/// One page, named by its number. Its text is asked for only where somebody reads it.
class AccessiblePage : public AccessibleItem, public QAccessibleTextInterface {
public:
    AccessiblePage(PageView& view, int page) : AccessibleItem(view, QAccessible::Section), view_(&view), page_(page) {}

    bool isValid() const override { return page_ <= view_->PageCount(); }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : AccessibleItem::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? view_->PageName(page_) : QString();
    }
    QRect rect() const override { return view_->PageRect(page_).translated(view_->viewport()->mapToGlobal(QPoint())); }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = state.readOnly = state.multiLine = true;
        state.focused = view_->hasFocus() && view_->CurrentPage() == page_;
        const auto [first, last] = view_->VisiblePages();
        state.offscreen = page_ < first || page_ > last;
        return state;
    }

    QString text(int begin, int end) const override { return Text().mid(begin, end - begin); }
    int characterCount() const override { return static_cast<int>(Text().size()); }
    QString attributes(int, int* begin, int* end) const override {
        *begin = 0;
        *end = characterCount();
        return {};
    }
    // The preview has no caret and selects nothing.
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    int selectionCount() const override { return 0; }
    void selection(int, int* begin, int* end) const override { *begin = *end = 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    QRect characterRect(int) const override { return rect(); }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override { view_->SetCurrentPage(page_); }

private:
    QString Text() const { return isValid() ? view_->PageText(page_) : QString(); }

    PageView* view_;
    int page_;  // from 1
};

class AccessiblePages : public QAccessibleWidget {
public:
    explicit AccessiblePages(PageView& view) : QAccessibleWidget(&view, QAccessible::Document), view_(view) {}

    int childCount() const override { return view_.PageCount(); }
    QAccessibleInterface* child(int number) const override {
        if (number < 0 || number >= childCount())
            return nullptr;
        return pages_.At(number, [this, number] { return new AccessiblePage(view_, number + 1); });
    }
    int indexOfChild(const QAccessibleInterface* child) const override { return pages_.NumberOf(child); }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint point = view_.viewport()->mapFromGlobal(QPoint(x, y));
        const auto [first, last] = view_.VisiblePages();
        for (int page = first; page <= last; ++page)
            if (view_.PageRect(page).contains(point))
                return child(page - 1);
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override { return child(view_.CurrentPage() - 1); }

private:
    PageView& view_;
    mutable AccessibleItems pages_;  // by number, from 0
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    auto* const view = qobject_cast<PageView*>(object);
    return view ? new AccessiblePages(*view) : nullptr;
}

}  // namespace

void InstallPageAccessibility() {
    QAccessible::installFactory(MakeAccessible);
}

}  // namespace lore
