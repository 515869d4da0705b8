#include "ui/controls/empty_line.h"

#include <QAbstractItemView>
#include <QEvent>

#include "ui/look/theme_look.h"

namespace lore {

EmptyLine::EmptyLine(QAbstractItemView& list, const QString& text) : QLabel(text, list.viewport()), list_(list) {
    setObjectName("emptyLine");
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::PlaceholderText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(kSpace);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    list.viewport()->installEventFilter(this);
    const QAbstractItemModel* const model = list.model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyLine::Follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyLine::Follow);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyLine::Follow);
    Follow();
}

void EmptyLine::SetText(const QString& text) {
    setText(text);
    Follow();
}

bool EmptyLine::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(list_.viewport()->rect());
    return QLabel::eventFilter(watched, event);
}

void EmptyLine::Follow() {
    const bool isEmpty = list_.model()->rowCount() == 0 && !text().isEmpty();
    list_.setAccessibleDescription(isEmpty ? text() : QString());
    setVisible(isEmpty);
}

}  // namespace lore
