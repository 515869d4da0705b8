#pragma once

#include <QLabel>

class QAbstractItemView;

namespace lore {

/// A dimmed text in the middle of a list, as long as the list has no rows: what goes there, or why there is nothing.
/// Screen readers have it as the description of the list.
class EmptyLine : public QLabel {
    Q_OBJECT

public:
    /// `list` has its model, and owns this.
    explicit EmptyLine(QAbstractItemView& list, const QString& text = {});

    void SetText(const QString& text);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Follow();

    QAbstractItemView& list_;
};

}  // namespace lore
