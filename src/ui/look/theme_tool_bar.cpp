#include "ui/look/theme_tool_bar.h"

#include <QToolBar>
#include <QToolButton>

namespace lore {
namespace {

/// Behind the controls that it follows on the screen.
void PutLast(const QToolBar& bar, QWidget* more) {
    QWidget* last = nullptr;
    for (QWidget* next = bar.nextInFocusChain(); next && next != &bar; next = next->nextInFocusChain())
        if (bar.isAncestorOf(next) && next != more && (next->focusPolicy() & Qt::TabFocus) != 0)
            last = next;
    if (last)
        QWidget::setTabOrder(last, more);
}

}  // namespace

void DressMoreButton(QToolBar& bar) {
    auto* const more = bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    if (!more)
        return;
    more->setAccessibleName(QObject::tr("More"));
    more->setToolTip(more->accessibleName());
    more->setFocusPolicy(Qt::TabFocus);
    // Once the controls around the bar are there.
    QObject::connect(&bar, &QToolBar::visibilityChanged, more, [&bar, more] { PutLast(bar, more); });
}

}  // namespace lore
