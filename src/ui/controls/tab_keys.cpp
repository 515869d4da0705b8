#include "ui/controls/tab_keys.h"

#include <QEvent>
#include <QTabBar>
#include <QTabWidget>

namespace lore {

namespace {

class TabKeys : public QObject {
public:
    explicit TabKeys(QTabWidget& tabs) : QObject(&tabs), tabs_(tabs) { tabs.tabBar()->installEventFilter(this); }
    bool eventFilter(QObject* bar, QEvent* event) override {
        if (event->type() != QEvent::Shortcut)
            return false;
        if (bar->event(event))
            EnterPage();
        return true;
    }

private:
    /// A page without controls leaves the focus with its tab.
    void EnterPage() {
        const QWidget* const page = tabs_.currentWidget();
        QWidget* next = tabs_.tabBar();
        do
            next = next->nextInFocusChain();
        while (next != tabs_.tabBar() && !(page->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
                                           (next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus));
        next->setFocus(Qt::ShortcutFocusReason);
    }

    QTabWidget& tabs_;
};

}  // namespace

void LeadTabKeys(QTabWidget& tabs) {
    new TabKeys(tabs);
}

}  // namespace lore
