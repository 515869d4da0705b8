#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/prompts.h"
#include "ports/update_source.h"
#include "settings/settings.h"

namespace lore {

/// What the text at the update address says.
struct UpdateNews {
    double version = 0;  ///< the newest data version, such as 11.60
    std::string page;    ///< web address with more; empty if none is given
    std::string notice;  ///< words to show, may be empty
};
/// The text: the version in the first line, a web address in the second, which may be empty, then the notice. Nothing
/// for a text that doesn't begin with a version.
std::optional<UpdateNews> ReadUpdateNews(std::string_view text);

/// A data version as users read it, such as "1.56" for 11.56.
std::string ShownVersion(double version);

/// What the check works with. All outlive it; without a source nothing is asked.
struct UpdateWorld {
    Settings& settings;
    SettingsStore& store;
    Prompts& prompts;
    FaultNotice& faults;
    Clock& clock;
    UpdateSource* source = nullptr;
    std::function<void(const std::string& address)> openPage = [](const std::string&) {};
};

/// Asks the configured address for the newest version. Without an address nothing is ever asked.
class UpdateCheck {
public:
    explicit UpdateCheck(UpdateWorld world) : world_(std::move(world)) {}

    /// At the start: asks if the user wants it, at most once a day, and speaks only of a newer version.
    void RunDaily();
    /// From the menu: asks and tells what came out.
    void Run();
    bool IsRunning() const { return running_; }

private:
    void Ask(bool tellAll);
    void Answer(const UpdateReply& reply, bool tellAll);
    void TellNewer(const UpdateNews& news);
    bool IsDue() const;

    UpdateWorld world_;
    bool running_ = false;
};

}  // namespace lore
