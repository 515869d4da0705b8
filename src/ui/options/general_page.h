#pragma once

#include <QWidget>
#include <optional>

#include "settings/option_pages.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace lore {

class Theme;

/// How a page asks for a font or a colour (red in the low byte); nothing when the user cancels.
struct OptionChoosers {
    std::function<std::optional<FontSetting>(const QString& title, const FontSetting& now, QWidget* parent)> font;
    std::function<std::optional<uint32_t>(const QString& title, uint32_t now, QWidget* parent)> color;
};
/// Those that open a dialog.
OptionChoosers DialogChoosers(const Theme& theme, SettingsStore& store);

/// The page "General".
class COptGeneralPg : public QWidget {
    Q_OBJECT

public:
    COptGeneralPg(OptionsWorld& world, Theme& theme, OptionChoosers choosers, QWidget* parent);

private:
    QWidget* MakeNotes();
    QWidget* MakeLook();
    QWidget* MakeWork();
    void AddSourceSize(QVBoxLayout& body, QWidget* parent);
    QPushButton* AddButton(QVBoxLayout& body, const char* name, const QString& text);
    void ChooseFont(const QString& title, FontSetting (GeneralPage::*now)() const,
                    void (GeneralPage::*set)(const FontSetting&));
    void ShowChoices();

    GeneralPage model_;
    Theme& theme_;
    OptionChoosers choosers_;
    QPushButton* editFont_ = nullptr;
    QPushButton* titleFont_ = nullptr;
    QPushButton* ground_ = nullptr;
    QLabel* editSample_ = nullptr;
    QLabel* titleSample_ = nullptr;
};

}  // namespace lore
