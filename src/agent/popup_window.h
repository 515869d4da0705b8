#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <utility>

#include "calendar/popup_agent.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollArea;

namespace lore {

class Theme;

/// The popups on the screen: a list of them once there are several, the chosen one in full, and what can be done about
/// it. It comes up without taking the keyboard from whatever the user types in. Closing it puts off all that it shows.
class PopupWindow : public QWidget {
    Q_OBJECT

public:
    /// @param open opens the main program for a popup
    PopupWindow(PopupAgent& agent, const Theme& theme, std::function<void(const Popup&)> open);

    /// Shows what is on the screen by now; hides without any. New popups bring the window up.
    void Refresh(size_t came);
    /// Once the event of the chosen popup has started, says so, and no longer offers to put it off until then.
    void FollowTime();
    /// Shows the window also where nothing waits, with the moment of the next popup.
    void BringUp();

signals:
    /// The user has dealt with a popup: other ones are on the screen now.
    void Changed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeList();
    void MakeText();
    void MakeButtons();
    QLabel* MakeLabel(const char* name);
    void FillList();
    void SetListRows(int most);
    void ShowChosen();
    void FillSnooze(const Popup& popup);
    void ShowNothing();
    const Popup* Chosen() const;
    void Snooze();
    void Open();
    void Dismiss();
    void PutOffAll();
    void Done();
    void Place();
    /// Grows as far as the chosen popup needs it, within the screen.
    void MakeRoom();
    void Restyle();

    PopupAgent& agent_;
    const Theme& theme_;
    std::function<void(const Popup&)> open_;
    QListWidget* list_ = nullptr;
    QLabel *bell_ = nullptr, *label_ = nullptr, *time_ = nullptr, *late_ = nullptr, *message_ = nullptr,
           *description_ = nullptr;
    QScrollArea* texts_ = nullptr;
    QComboBox* snoozeFor_ = nullptr;
    QPushButton *snooze_ = nullptr, *openButton_ = nullptr, *dismiss_ = nullptr, *dismissAll_ = nullptr;
    std::optional<PopupKey> chosen_;
    std::optional<std::pair<PopupKey, DateTime>> snoozeOf_;  // as it came; its choices the list of times holds
    bool isPlaced_ = false;
};

}  // namespace lore
