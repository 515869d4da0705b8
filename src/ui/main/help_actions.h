#pragma once

#include <QObject>
#include <filesystem>
#include <memory>
#include <string>

class QWidget;

namespace lore {

class CLorebinderApp;
class Theme;
class UpdateCheck;
class UpdateSource;
struct HelpWorld;

/// The commands of the menu "Help".
class HelpActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what boxes open above.
    HelpActions(CLorebinderApp& app, const Theme& theme, QWidget& window);
    ~HelpActions() override;

    /// The manual (empty if there is none), and what asks for updates (may be null).
    void SetUp(const std::filesystem::path& manual, UpdateSource* updates);
    /// `daily` for the check of the start, which speaks only of a newer version.
    void CheckForUpdates(bool daily);
    void ShowManual() const;
    void ShowTutorial() const;
    void ShowAbout() const;
    /// Opens a web page; what is none, or can't be opened, is told under this title.
    void OpenPage(const std::string& address, const char* title) const;

private:
    HelpWorld World() const;

    CLorebinderApp& app_;
    const Theme& theme_;
    QWidget& window_;
    std::filesystem::path manual_;
    std::unique_ptr<UpdateSource> source_;
    std::unique_ptr<UpdateCheck> updates_;
};

}  // namespace lore
