#include "online/online_notebook_choice.h"

#include <algorithm>

#include "base/text.h"
#include "online/service_call.h"

namespace lore {

namespace {
constexpr size_t kLongestName = 44;  // characters
constexpr char kInvalidName[] = "Invalid NoteBook Name";
}  // namespace

void OnlineNoteBookChoice::SelectId(int32_t id) {
    const auto found = std::find_if(noteBooks_.begin(), noteBooks_.end(),
                                    [&](const NoteBookInfo& info) { return info.databaseID == id; });
    selected_ = found == noteBooks_.end() ? -1 : static_cast<int>(found - noteBooks_.begin());
}

bool OnlineNoteBookChoice::IsTaken(const std::string& name) const {
    return std::any_of(noteBooks_.begin(), noteBooks_.end(),
                       [&](const NoteBookInfo& info) { return EqualNoCase(info.name, name); });
}

std::optional<std::string> OnlineNoteBookChoice::AskName() {
    std::string name;
    while (const auto typed = world_.prompts.AskText("New NoteBook Name", "Create Online NoteBook", name)) {
        name = CleanText(Trim(*typed));
        const size_t length = CharacterCount(name);
        if (length == 0 || length > kLongestName)
            world_.prompts.Message("NoteBook name must not be empty and must be less than 45 characters.", kInvalidName,
                                   PromptIcon::Warning);
        else if (IsTaken(name))
            world_.prompts.Message("There is already a NoteBook with this name.", kInvalidName, PromptIcon::Warning);
        else
            return name;
    }
    return std::nullopt;
}

bool OnlineNoteBookChoice::Create() {
    const std::optional<std::string> name = AskName();
    if (!name)
        return false;
    auto called = CallServiceOnce(world_, "Contacting LorebinderOnline Server....",
                                  [&](DesktopCommService& service, const std::stop_token& stop) {
                                      return service.CreateNewNoteBook(world_.settings.Text(Option::SyncGUID), *name,
                                                                       onlyUnlinked_, stop);
                                  });
    if (!called.Ok())
        return false;
    NoteBooksInfo info = std::move(called.result).value_or(NoteBooksInfo{});
    if (!info.foundUser || info.newNoteBookID <= 0) {
        world_.prompts.Message(
            "There was an error in creating your NoteBook, please contact support if problem persists.",
            "NoteBook Creation Error", PromptIcon::Warning);
        return false;
    }
    noteBooks_ = std::move(info.noteBooksList);
    SelectId(info.newNoteBookID);
    return true;
}

bool OnlineNoteBookChoice::Accept() {
    if (selected_ >= 0)
        return true;
    world_.prompts.Message("Please Select a NoteBook.", "No NoteBook Selected", PromptIcon::Warning);
    return false;
}

}  // namespace lore
