#include "notes/filter_panels.h"

#include <gtest/gtest.h>
#include <random>

#include "bibliography/source_builder.h"
#include "classify/forest_builder.h"

namespace lore {
namespace {

/// History (Ships, Lights (Lenses)), Law, <UNASSIGNED>, with notes 1 to 6.
CProCategoryList SmallForest() {
    CProCategoryList forest;
    forest.AddRoot(Node(1, "History", {Node(2, "Ships"), Node(3, "Lights", {Node(4, "Lenses")})}));
    forest.AddRoot(Node(5, "Law"));
    forest.AddRoot(Node(kUnassignedID, kUnassignedName));
    forest.LinkAll();
    const int32_t filed[][3] = {{1, 0, 0}, {2, 3, 0}, {4, 0, 5}, {4, 4, 0}, {0, 0, 0}, {3, 1, 0}};
    for (int32_t note = 1; note <= 6; ++note)
        for (int set = 1; set <= 3; ++set)
            forest.IndexNote(note, CProCategoryTree(filed[note - 1][set - 1], ""), set);
    return forest;
}

std::vector<std::string> Captions(const FilterPanel& panel) {
    std::vector<std::string> captions;
    for (const int position : panel.Shown())
        captions.push_back(std::string(static_cast<size_t>(panel.Entries()[static_cast<size_t>(position)].level), '-') +
                           panel.Caption(position));
    return captions;
}

using Lines = std::vector<std::string>;

TEST(FilterPanels, CountTheNotesOfCategoriesInTheSetInView) {
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(SmallForest(), 1));
    panel.CountNotes({4, 1, 99});
    EXPECT_EQ(Captions(panel), (Lines{"History (2/5)", "-Ships (0/1)", "-Lights (1/3)", "--Lenses (1/2)", "Law (0/0)",
                                      "<UNASSIGNED> (0/1)"}));
    panel.SetEntries(CategoryEntries(SmallForest(), 3));
    EXPECT_EQ(panel.Caption(4), "Law (0/1)");
    EXPECT_EQ(panel.Caption(5), "<UNASSIGNED> (2/5)");
    panel.SetEntries(CategoryEntries(SmallForest(), kAllSets));
    EXPECT_EQ(Captions(panel), (Lines{"History (2/5)", "-Ships (0/1)", "-Lights (1/4)", "--Lenses (1/2)", "Law (0/1)",
                                      "<UNASSIGNED> (0/1)"}));
    panel.CountNotes({});
    EXPECT_EQ(panel.Counts(0), "0/5");
}

TEST(FilterPanels, GatherByLevel) {
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(SmallForest(), 1));
    EXPECT_EQ(panel.NotesOf(0, PanelScope::OnlyInEntries), (LongList{2, 3, 4, 6}));
    EXPECT_EQ(panel.NotesOf(3, PanelScope::OnlyInEntries), LongList{});
    panel.SetEntries(CategoryEntries(SmallForest(), kAllSets));
    // Note 6 is filed at this level in one set and below it in another.
    EXPECT_EQ(panel.NotesOf(0, PanelScope::OnlyAtLevel), (LongList{1}));
    EXPECT_EQ(panel.NotesOf(2, PanelScope::OnlyAtLevel), (LongList{6, 2}));
    EXPECT_EQ(panel.NotesOf(5, PanelScope::All), (LongList{5}));
}

/// The notes of a category that no category below it holds.
LongList OnlyIn(const CProCategoryTree& node, int set) {
    LongList below;
    const auto gather = [&](const auto& self, const CProCategoryTree& above) -> void {
        for (const CProCategoryTree& child : above.children) {
            for (int s = 1; s <= kSetCount; ++s)
                if (SelectsSet(set, s - 1))
                    below.Merge(child.notes[static_cast<size_t>(s - 1)]);
            self(self, child);
        }
    };
    gather(gather, node);
    LongList only;
    for (const int32_t note : node.GetNotes(set))
        if (!below.Contains(note))
            only.AddTail(note);
    return only;
}

TEST(FilterPanels, AgreeWithTheForestOnEveryCategory) {
    std::mt19937 random(6);
    CProCategoryList forest;
    forest.AddRoot(Node(1, "1"));
    forest.AddRoot(Node(kUnassignedID, kUnassignedName));
    for (int32_t id = 2; id <= 60; ++id) {
        forest.FindByID(static_cast<int32_t>(random() % static_cast<unsigned>(id - 1)) + 1)->AddChild(Node(id, "c"));
        forest.LinkAll();
    }
    for (int32_t note = 1; note <= 300; ++note)
        for (int set = 1; set <= 3; ++set)
            forest.IndexNote(note * (note % 5 == 0 ? 5'000'000 : 1),
                             CProCategoryTree(static_cast<int32_t>(random() % 61), ""), set);
    LongList listed;
    for (int32_t note = 1; note < 300; note += 3)
        listed.AddTail(note * (note % 5 == 0 ? 5'000'000 : 1));
    for (int set = 0; set <= 3; ++set) {
        FilterPanel panel;
        panel.CountNotes(listed);
        panel.SetEntries(CategoryEntries(forest, set));
        for (size_t i = 0; i < panel.Entries().size(); ++i) {
            const PanelEntry& entry = panel.Entries()[i];
            const CProCategoryTree& node = *forest.FindByID(entry.id);
            const auto position = static_cast<int>(i);
            const LongList notes = node.GetNotes(set);
            EXPECT_EQ(panel.NotesOf(position, PanelScope::All), notes);
            EXPECT_EQ(panel.NotesOf(position, PanelScope::OnlyAtLevel), OnlyIn(node, set));
            EXPECT_EQ(entry.inList,
                      std::count_if(listed.begin(), listed.end(), [&](int32_t note) { return notes.Contains(note); }));
        }
    }
}

CSource Source(int32_t id, int32_t type, const std::string& title, const std::string& publication,
               const std::string& author, const LongList& notes) {
    CSource source = TitledSource(id, title, type);
    source.FieldTexts[1] = publication;
    source.AuthorText = author;
    source.NoteIDs = notes;
    return source;
}

SourceList SmallSources() {
    SourceList sources;
    sources.AddTail(Source(1, 2, "On Lenses", "Optics", "Hart", {1, 2}));
    sources.AddTail(Source(2, 1, "Lights", "", "Abel", {2, 3}));
    sources.AddTail(Source(3, 2, "on towers", "Optics", "", {2}));
    sources.AddTail(Source(4, 1, "Lights", "optics", "Abel", {}));
    return sources;
}

TEST(FilterPanels, GroupSourcesByTheChosenKey) {
    const std::pair<int32_t, Lines> cases[] = {
        {10,
         {"<NO_SOURCE> (1/2)", "<NO_PUBLICATION> (1/2)", "-Book: Lights (1/2)", "Optics (2/3)",
          "-Journal Article: On Lenses (1/2)", "-Journal Article: on towers (1/1)", "optics (0/0)",
          "-Book: Lights (0/0)"}},
        {20,
         {"<NO_SOURCE> (1/2)", "<NO_AUTHOR> (1/1)", "-Journal Article: on towers (1/1)", "Abel (1/2)",
          "-Book: Lights (1/2)", "-Book: Lights (0/0)", "Hart (1/2)", "-Journal Article: On Lenses (1/2)"}},
        {30,
         {"<NO_SOURCE> (1/2)", "Lights (1/2)", "-Book: Lights (1/2)", "-Book: Lights (0/0)",
          "Journal Article: On Lenses (1/2)", "Journal Article: on towers (1/1)"}},
    };
    FilterPanel panel;
    panel.CountNotes({2, 9});
    for (const auto& [grouping, captions] : cases) {
        panel.SetEntries(SourceEntries(SmallSources(), SourceGroupingOf(grouping), {8, 9}));
        EXPECT_EQ(Captions(panel), captions) << grouping;
        EXPECT_EQ(panel.NotesOf(0, PanelScope::All), (LongList{8, 9}));
    }
    panel.SetEntries(SourceEntries(SmallSources(), SourceGrouping::Publication, {}));
    EXPECT_EQ(panel.NotesOf(3, PanelScope::All), (LongList{1, 2}));  // a note of two sources comes once
}

TEST(FilterPanels, ShowKeyWordsAndColours) {
    CKeyWordList keyWords;
    keyWords.AddKeyWordsOfNote("fog, brass", 1);
    keyWords.AddKeyWordsOfNote("fog", 2);
    CSearchColorList colors;
    colors.AddNoteToColor(1, MakeRgb(200, 0, 16));
    colors.AddNoteToColor(2, MakeRgb(201, 1, 16));
    FilterPanel panel;
    panel.CountNotes({2});
    panel.SetEntries(KeyWordEntries(keyWords));
    EXPECT_EQ(Captions(panel), (Lines{"fog (1/2)", "brass (0/1)"}));
    panel.SetEntries(ColorEntries(colors));
    EXPECT_EQ(Captions(panel), (Lines{"(1/2)"}));
    EXPECT_EQ(panel.Entries()[0].name, "#c80010");
    EXPECT_EQ(panel.NotesOf(0, PanelScope::All), (LongList{1, 2}));
}

TEST(FilterPanels, NarrowToMatchesAndWhatStandsAboveThem) {
    CProCategoryList forest = SmallForest();
    forest.FindByID(4)->name = "L\xCEnsen";           // Windows-1252
    forest.FindByID(5)->name = "Droit \xC5\x92uvre";  // UTF-8
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(forest, 1));
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"l\xC3\xAEN", {0, 2, 3}}, {"ships", {0, 1}},        {"  SH ", {0, 1}},     {"\xC5\x93uv", {4}}, {"hist", {0}},
        {"nothing", {}},           {"", {0, 1, 2, 3, 4, 5}}, {"i", {0, 1, 2, 4, 5}}};
    for (const auto& [filter, shown] : cases) {
        panel.SetFilter(filter);
        EXPECT_EQ(panel.Shown(), shown) << filter;
    }
    panel.SetFilter("ships");
    EXPECT_FALSE(panel.Matches(0));
    EXPECT_TRUE(panel.Matches(1));
    panel.SetEntries(CategoryEntries(SmallForest(), 2));
    EXPECT_EQ(panel.Shown(), (std::vector<int>{0, 1}));
}

TEST(FilterPanels, ReadOddSettingsAsTheDefault) {
    EXPECT_EQ(CategorySetOf(3), 3);
    EXPECT_EQ(CategorySetOf(4), kAllSets);
    EXPECT_EQ(CategorySetOf(-1), kAllSets);
    EXPECT_EQ(SourceGroupingOf(20), SourceGrouping::Author);
    EXPECT_EQ(SourceGroupingOf(0), SourceGrouping::Title);
}

TEST(PanelCommands, FollowTheEntry) {
    const auto offers = [](PanelKind kind, PanelValue value, int32_t id, bool others) {
        PanelEntry entry;
        entry.value = value;
        entry.id = id;
        std::string text;
        for (const PanelCommand& command : EntryCommands(kind, entry, others))
            text += std::string("GRAKkLlSCPXD-").substr(static_cast<size_t>(command.action), 1);
        return text;
    };
    // Gather, remove, add, attach and cut, list colours, set colour, copy, print, export, delete, tree.
    EXPECT_EQ(offers(PanelKind::Categories, PanelValue::Category, 3, true), "GGGRASSCPPXXDD-");
    EXPECT_EQ(offers(PanelKind::Categories, PanelValue::Category, kUnassignedID, false), "GGGRSSPPXXDD-");
    EXPECT_EQ(offers(PanelKind::Sources, PanelValue::Source, 1011, true), "GRASCPXD");
    EXPECT_EQ(offers(PanelKind::Sources, PanelValue::SourceGroup, -1, true), "GRSCPXD");
    EXPECT_EQ(offers(PanelKind::Sources, PanelValue::NoSource, -1, true), "GRSCPXD");
    EXPECT_EQ(offers(PanelKind::KeyWords, PanelValue::KeyWord, 1, true), "GRAKkSCPXD");
    EXPECT_EQ(offers(PanelKind::Colors, PanelValue::Color, 1, true), "GRALlCPXD");
    EXPECT_TRUE(AreaCommands(PanelKind::KeyWords).empty());
    std::string families, needs;
    for (const PanelKind kind : {PanelKind::Categories, PanelKind::KeyWords, PanelKind::Colors}) {
        for (const PanelCommand& command : PanelCommands(kind)) {
            families += "LVODT"[static_cast<size_t>(FamilyOf(command.action))];
            needs += "NFL"[static_cast<size_t>(NeedOf(command.action))];
        }
    }
    EXPECT_EQ(families,
              "LLLLVVVOOOOODDT"
              "LLVVVVOOOD"
              "LLVVVOOOD");
    EXPECT_EQ(needs,
              "NNNNFNNNNNNNNNN"
              "NNFLLNNNNN"
              "NNFLLNNNN");
}

TEST(FilterPanels, OrdersNameTheNotesOfTheEntryOrOfAll) {
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(SmallForest(), 1));
    EXPECT_EQ(panel.OrderOf(-1, AreaCommands(PanelKind::Categories)[0]).notes.Count(), 6u);
    const PanelOrder lights = panel.OrderOf(2, {PanelAction::Gather, PanelScope::OnlyAtLevel, ""});
    EXPECT_EQ(lights.name + std::to_string(lights.id), "Lights3");
    EXPECT_EQ(lights.notes, LongList{6});
    const PanelOrder tree = panel.OrderOf(3, {PanelAction::ClearTree, PanelScope::All, ""});
    EXPECT_EQ(tree.id, 4);
    EXPECT_EQ(tree.notes.Count(), 5u) << "of the whole tree";
}

}  // namespace
}  // namespace lore
