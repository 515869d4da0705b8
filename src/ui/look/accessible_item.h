#pragma once

#include <QAccessible>
#include <QWidget>
#include <unordered_map>

namespace lore {

/// What a widget draws itself, such as a card or a day, as a child of the widget that has no children of its own.
class AccessibleItem : public QAccessibleInterface {
public:
    AccessibleItem(QWidget& owner, QAccessible::Role role) : owner_(&owner), role_(role) {}

    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(owner_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return role_; }
    void setText(QAccessible::Text, const QString&) override {}

private:
    QWidget* owner_;
    QAccessible::Role role_;
};

/// An item that opens when it is pressed.
class AccessibleOpener : public AccessibleItem, public QAccessibleActionInterface {
public:
    using AccessibleItem::AccessibleItem;

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : AccessibleItem::interface_cast(type);
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && isValid())
            Open();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

protected:
    /// Whoever asks waits for the end of it: what may open a window is to be left for the next turn of the event loop.
    virtual void Open() = 0;
};

/// The items of a widget that somebody has asked for, by number; they go with it.
class AccessibleItems {
public:
    AccessibleItems() = default;
    AccessibleItems(const AccessibleItems&) = delete;
    AccessibleItems& operator=(const AccessibleItems&) = delete;
    ~AccessibleItems() {
        for (const auto& [number, id] : items_)
            QAccessible::deleteAccessibleInterface(id);
    }

    /// The item of that number; `make` gives a new one where there is none yet.
    template <typename Make>
    QAccessibleInterface* At(int number, Make make) {
        const auto [entry, isNew] = items_.try_emplace(number, 0);
        if (isNew)
            entry->second = QAccessible::registerAccessibleInterface(make());
        return QAccessible::accessibleInterface(entry->second);
    }
    /// -1 where it is none of them.
    int NumberOf(const QAccessibleInterface* item) const {
        for (const auto& [number, id] : items_)
            if (QAccessible::accessibleInterface(id) == item)
                return number;
        return -1;
    }

private:
    std::unordered_map<int, QAccessible::Id> items_;
};

}  // namespace lore
