#pragma once

#include "settings/user_dictionary.h"
#include "ui/controls/dialog_frame.h"

class QLineEdit;
class QListWidget;

namespace lore {

/// The user's own words: to add, to change in place with F2, to delete.
class UserDictionaryDialog : public DialogFrame {
    Q_OBJECT

public:
    UserDictionaryDialog(UserDictionary& words, SettingsStore& store, QWidget* parent);

private:
    void AddWord();
    void RemoveWord();
    void ChangeWord(int row);
    void Refill(int row);

    UserDictionary& words_;
    QLineEdit* word_ = nullptr;
    QPushButton* add_ = nullptr;
    QPushButton* delete_ = nullptr;
    QListWidget* list_ = nullptr;
};

}  // namespace lore
