#include "soak/soak_world.h"

#include <algorithm>

#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kKeptActions = 40;

const std::vector<std::string>& Words() {
    static const std::vector<std::string> words = [] {
        std::vector<std::string> made{"lamp",
                                      "Fresnel",
                                      "fog",
                                      "keeper",
                                      "tower",
                                      "shoal",
                                      "K\xC3\xBCste",
                                      "lens",
                                      "{",
                                      "\\par",
                                      "~",
                                      "<b>",
                                      "&amp;",
                                      "\xE7\x81\xAF\xE5\x8F\xB0",
                                      "reef",
                                      "50%",
                                      "\"quay\"",
                                      "caf\xC3\xA9",
                                      "\xF0\x9F\x98\x80",
                                      "\xE2\x82\xAC"};
        for (int i = 1; i <= 60; ++i)
            made.push_back("word" + std::to_string(i));
        return made;
    }();
    return words;
}

}  // namespace

Soak::Soak(const std::filesystem::path& folder, uint64_t seed)
    : random_(seed), root_(folder / "root"), scratch_(folder / "scratch") {
    std::filesystem::create_directories(root_);
    std::filesystem::create_directories(scratch_);
    Start();
    ModelBook& main = books.emplace_back();
    main.record = app_->NoteBook().database;
}

void Soak::Start() {
    trash_ = std::make_unique<NoteBookTrash>(faults);
    app_ = std::make_unique<CLorebinderApp>(
        root_, AppPorts{prompts, progress, clock, guids, store, faults, nullptr, [](int) {},
                        [this](int highest) { return static_cast<int>(Below(static_cast<size_t>(highest) + 1)); }});
    app_->LoadOptions();
    app_->SelectStartNoteBook();
    app_->FinishStartup();
    commands_ = std::make_unique<WritingCommands>(*app_);
    calendar_.emplace(CalendarWorld{.eventFile = app_->Data().Events(),
                                    .reminderFile = app_->Data().Reminders(),
                                    .settings = app_->GetSettings(),
                                    .prompts = prompts,
                                    .progress = progress,
                                    .clock = clock,
                                    .guids = guids,
                                    .faults = faults,
                                    .server = server_,
                                    .question = question,
                                    .setup = {}});
}

void Soak::Restart() {
    app_->ExitInstance();
    calendar_.reset();
    commands_.reset();
    app_.reset();
    trash_.reset();
    Start();
    deletedBooks.clear();
    for (ModelBook& book : books) {
        book.undoables.clear();
        book.undoIsBlocked = false;
    }
}

/// Some minutes, so that notes of many days come about.
void Soak::Tick() {
    clock.now = clock.now.PlusSeconds(static_cast<int64_t>(1 + Below(600)));
}

std::string Soak::AnyWords() {
    const size_t count = Chance(1) ? 2000 : 1 + Below(40);
    std::string text = AnyOf(Words());
    for (size_t i = 1; i < count; ++i)
        text += (Chance(8) ? "\n" : " ") + AnyOf(Words());
    return FromUtf8(text + " " + Unique("text"));
}

std::string Soak::AnyName() {
    static const char* const names[] = {"Sea", "Coast", "Tower", "K\xFCste", "Lens", "Lamp",
                                        "Fog", "Reef",  "Quay",  "Deep",     "Top",  "\xE7\x81\xAF"};
    return Chance(70) ? names[Below(std::size(names))] : "Kind " + std::to_string(Below(30));
}

std::string Soak::AnyKeyWord() {
    static const char* const names[] = {"lamp", "Lamp", "fog \xFC", "light\xE2\x82\xAC", "very long key word"};
    return Chance(40) ? names[Below(std::size(names))] : "key" + std::to_string(Below(30));
}

Rgb Soak::AnyColor() {
    return Chance(20) ? 0
                      : MakeRgb(static_cast<uint8_t>(40 * (1 + Below(5))), static_cast<uint8_t>(100 * Below(3)), 20);
}

Path Soak::AnyPath() {
    const std::set<Path>& categories = Open().categories;
    Path path;
    if (!categories.empty() && Chance(85))
        path = AnyOf(categories);
    if (categories.size() < 60 && path.size() < 4 && Chance(15))
        path.push_back(AnyName());
    return path;
}

ModelBook& Soak::Open() {
    for (ModelBook& book : books)
        if (book.record.guid == app_->NoteBook().database.guid)
            return book;
    throw Difference("the open NoteBook isn't one of the model");
}

void Soak::Require(bool holds, const std::string& text) const {
    if (!holds)
        throw Difference(text);
}

void Soak::EndAction() {
    for (const Fault& fault : faults.faults)
        throw Difference("a fault was told: " + fault.what + ": " + fault.path + ": " + fault.reason);
    prompts = {};
    progress = {};
    faults.mended.clear();
    while (actions_.size() > kKeptActions)
        actions_.pop_front();
}

}  // namespace lore
