#include "app/update_check.h"

#include <array>
#include <charconv>

#include "app/open_rules.h"
#include "base/record_file.h"
#include "base/text.h"

namespace lore {

namespace {

constexpr char kTitle[] = "Check for program updates";
constexpr double kLowestVersion = 1, kHighestVersion = 1000;
constexpr double kShift = 10.0;
constexpr size_t kLongestNotice = 1000;

}  // namespace

std::optional<UpdateNews> ReadUpdateNews(std::string_view text) {
    const std::string_view version = Trim(TakeLine(text));
    if (version.empty() || version.find_first_not_of("0123456789.") != std::string_view::npos)
        return std::nullopt;
    UpdateNews news;
    news.version = ParseDouble(version);
    if (news.version < kLowestVersion || news.version > kHighestVersion)
        return std::nullopt;
    const std::string_view page = Trim(TakeLine(text));
    if (JudgeLink(page) == OpenVerdict::Open && page.starts_with("http"))
        news.page = page;
    news.notice = CleanText(Trim(text.substr(0, kLongestNotice)));
    return news;
}

std::string ShownVersion(double version) {
    // With a point in every language.
    std::array<char, 32> text{};
    char* const end =
        std::to_chars(text.data(), text.data() + text.size(), version - kShift, std::chars_format::fixed, 2).ptr;
    return std::string(text.data(), end);
}

bool UpdateCheck::IsDue() const {
    return world_.settings.Int(Option::CheckForUpdates) > 0 && !world_.settings.Text(Option::UpdateAddress).empty() &&
           world_.settings.Int(Option::UpdateCheck) != world_.clock.Now().Day();
}

void UpdateCheck::RunDaily() {
    if (IsDue())
        Ask(false);
}

void UpdateCheck::Run() {
    if (!world_.settings.Text(Option::UpdateAddress).empty())
        return Ask(true);
    world_.prompts.Message(
        "No address that tells of new versions is set. It is the value \"UpdateAddress\" in the section \"Options\" of "
        "the settings file; set it while Lorebinder is closed.",
        kTitle, PromptIcon::Information);
}

void UpdateCheck::Ask(bool tellAll) {
    if (!world_.source || running_)
        return;
    running_ = true;
    world_.source->Fetch(world_.settings.Text(Option::UpdateAddress),
                         [this, tellAll](const UpdateReply& reply) { Answer(reply, tellAll); });
}

void UpdateCheck::Answer(const UpdateReply& reply, bool tellAll) {
    running_ = false;
    world_.settings.Set(Option::UpdateCheck, int32_t{world_.clock.Now().Day()});
    world_.settings.Save(world_.store, Option::UpdateCheck);
    FlushTold(world_.store, world_.faults);
    const std::optional<UpdateNews> news = reply.ok ? ReadUpdateNews(reply.text) : std::nullopt;
    if (news && news->version > kDataVersion)
        return TellNewer(*news);
    if (!tellAll)
        return;
    if (news)
        world_.prompts.Message("You have the newest version, " + ShownVersion(kDataVersion) + ".", kTitle,
                               PromptIcon::Information);
    else
        world_.prompts.Message("Lorebinder could not find out whether there is a newer version.\n\n" +
                                   (reply.ok ? "The answer from that address names no version." : reply.reason),
                               kTitle, PromptIcon::Warning);
}

void UpdateCheck::TellNewer(const UpdateNews& news) {
    std::string text =
        "Version " + ShownVersion(news.version) + " is there. You have version " + ShownVersion(kDataVersion) + ".";
    if (!news.notice.empty())
        text += "\n\n" + news.notice;
    if (news.page.empty())
        return world_.prompts.Message(text, kTitle, PromptIcon::Information);
    if (world_.prompts.Ask(text + "\n\nDo you wish to open its page " + news.page + " now?", kTitle) ==
        PromptAnswer::Yes)
        world_.openPage(news.page);
}

}  // namespace lore
