#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/print_records.h"

namespace lore {

namespace {

class CategoriesCommand : public Command {
public:
    const char* Name() const override { return "categories"; }
    const char* Help() const override { return "Shows the category forest with the numbers of notes"; }
    void Declare(CLI::App& app) override {
        app.add_option("--set", set_, "Count only this category set")
            ->check(CLI::Range(1, kSetCount))
            ->type_name("N")
            ->transform(DecimalNumber());
    }
    ExitStatus Run(Session& session) override {
        OpenNoteBook book;
        if (!session.Load(book))
            return ExitStatus::NothingFound;
        if (session.Json()) {
            Json list = Json::array();
            for (const CProCategoryTree& root : book.categories.Roots())
                list.push_back(Node(root));
            PrintJson(list);
        } else {
            for (const CProCategoryTree& root : book.categories.Roots())
                PrintNode(root, 0);
        }
        return ExitStatus::Done;
    }

private:
    Json Node(const CProCategoryTree& tree) const {
        Json json = {{"id", tree.id}, {"parentID", tree.parentID}, {"name", JsonText(tree.name)}};
        for (int set = 1; set <= kSetCount; ++set) {
            if (SelectsSet(set_, set - 1))
                json["notes" + std::to_string(set)] = tree.notes[static_cast<size_t>(set - 1)].Count();
        }
        Json children = Json::array();
        for (const CProCategoryTree& child : tree.children)
            children.push_back(Node(child));
        json["children"] = std::move(children);
        return json;
    }
    void PrintNode(const CProCategoryTree& tree, int level) const {
        std::printf("%*s%s  (%zu)\n", level * 2, "", Shown(tree.name).c_str(), tree.GetNotes(set_).Count());
        for (const CProCategoryTree& child : tree.children)
            PrintNode(child, level + 1);
    }

    int set_ = kAllSets;
};

/// What KeyWordsCommand and ColorsCommand do: each entry of a list of the NoteBook with its notes.
template <typename EntriesOf, typename ToJson, typename ToLine>
ExitStatus ListEntries(Session& session, EntriesOf entriesOf, ToJson toJson, ToLine toLine) {
    OpenNoteBook book;
    if (!session.Load(book))
        return ExitStatus::NothingFound;
    PrintRecords(session, entriesOf(book), toJson,
                 [&](const auto& entry) { return toLine(entry) + "  (" + std::to_string(entry.notes.Count()) + ")"; });
    return ExitStatus::Done;
}

class KeyWordsCommand : public Command {
public:
    const char* Name() const override { return "keywords"; }
    const char* Help() const override { return "Lists the key words with their notes"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        return ListEntries(
            session, [](const OpenNoteBook& book) -> const auto& { return book.keyWords.Entries(); },
            [](const CKeyWord& word) {
                return Json{{"name", JsonText(word.name)}, {"notes", JsonIds(word.notes)}};
            },
            [](const CKeyWord& word) { return word.name; });
    }
};

class ColorsCommand : public Command {
public:
    const char* Name() const override { return "colors"; }
    const char* Help() const override { return "Lists the border colours with their notes"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        return ListEntries(
            session, [](const OpenNoteBook& book) -> const auto& { return book.colors.Entries(); },
            [](const CSearchColor& entry) {
                return Json{{"id", entry.id}, {"color", JsonColor(entry.color)}, {"notes", JsonIds(entry.notes)}};
            },
            [](const CSearchColor& entry) {
                return std::to_string(entry.id) + "  " + std::to_string(RedOf(entry.color)) + "," +
                       std::to_string(GreenOf(entry.color)) + "," + std::to_string(BlueOf(entry.color));
            });
    }
};

}  // namespace

void AddClassifyCommands(Commands& commands) {
    commands.push_back(std::make_unique<CategoriesCommand>());
    commands.push_back(std::make_unique<KeyWordsCommand>());
    commands.push_back(std::make_unique<ColorsCommand>());
}

}  // namespace lore
