#include "bibliography/source_selection.h"

#include "bibliography/source_builder.h"
#include "support/matchers.h"

namespace lore {
namespace {

/// A book by John Q. Smith with a style and values of its own.
CSource Book(int32_t id, const std::string& title, int32_t style) {
    CSource source = TitledSource(id, title);
    source.FormatStyle = style;
    source.IndentSpaces = 7;
    source.AuthorsBeforeEtAl = 2;
    source.AuthorIDs = {1};
    return source;
}

class SourceSelectionTest : public testing::Test {
protected:
    SourceSelectionTest() {
        sources.AddTail(Book(11, "Wicks", 8));
        sources.AddTail(Book(12, "Amber", 8));
        sources.AddTail(Book(13, "Mirrors", 8));
    }
    std::string Records() const {
        std::string records;
        for (const CSource& source : sources)
            records += RecordOf(source);
        return records;
    }

    AuthorList authors = ThreeAuthors();
    SourceList sources;
};

TEST_F(SourceSelectionTest, MovesSourcesBetweenTheLists) {
    using Ids = std::vector<int32_t>;
    const std::tuple<const char*, bool (*)(SourceSelection&), bool, Ids, Ids> kSteps[] = {
        {"one", [](SourceSelection& m) { return m.Select(11); }, true, {12, 13}, {11}},
        {"it again", [](SourceSelection& m) { return m.Select(11); }, false, {12, 13}, {11}},
        {"an unknown one", [](SourceSelection& m) { return m.Select(99); }, false, {12, 13}, {11}},
        {"kept sorted", [](SourceSelection& m) { return m.Select(12); }, true, {13}, {12, 11}},
        {"one that isn't selected", [](SourceSelection& m) { return m.Remove(13); }, false, {13}, {12, 11}},
        {"back, in its place", [](SourceSelection& m) { return m.Remove(12); }, true, {12, 13}, {11}},
        {"all", [](SourceSelection& m) { return m.SelectAll(), true; }, true, {}, {12, 13, 11}},
        {"none", [](SourceSelection& m) { return m.ClearAll(), true; }, true, {12, 13, 11}, {}},
    };
    SourceSelection model(sources, authors);
    for (const auto& [what, run, done, available, selected] : kSteps) {
        SCOPED_TRACE(what);
        EXPECT_EQ(run(model), done);
        EXPECT_EQ(IdsOf(model.Available()), available);
        EXPECT_EQ(IdsOf(model.Selected()), selected);
    }
}

TEST_F(SourceSelectionTest, LeavesTheOrderOfSelectionWithoutTheSort) {
    SourceSelection model(sources, authors);
    model.SetSorted(false);
    model.Select(11);
    model.Select(12);
    model.Select(13);
    EXPECT_THAT(IdsOf(model.Selected()), ElementsAre(11, 12, 13));
    model.SetSorted(true);
    EXPECT_THAT(IdsOf(model.Selected()), ElementsAre(12, 13, 11));
    model.SetSorted(false);
    EXPECT_THAT(IdsOf(model.Selected()), ElementsAre(12, 13, 11)) << "no older order comes back";
    model.SelectAll();
    EXPECT_THAT(IdsOf(model.Selected()), ElementsAre(11, 12, 13)) << "as the NoteBook holds them";
}

TEST_F(SourceSelectionTest, SetsTheFormattingOfAllThatAreOrWillBeSelected) {
    const std::string before = Records();
    SourceSelection model(sources, authors);
    model.Select(11);
    model.SetStyle(9);
    EXPECT_EQ(model.Selected()[0].FormatStyle, 8) << "the controls are off";
    model.SetIndividual(false);
    model.Select(12);
    for (const CSource& source : model.Selected()) {
        EXPECT_EQ(source.FormatStyle, 9);
        EXPECT_EQ(source.IndentSpaces, 3);
        EXPECT_EQ(source.AuthorsBeforeEtAl, 6);
        EXPECT_TRUE(source.FormattedText.starts_with("Smith, J. Q.")) << source.FormattedText;
    }
    EXPECT_EQ(model.Available()[0].FormatStyle, 8);
    model.SetStyle(0);
    EXPECT_TRUE(model.Selected()[0].FormattedText.starts_with("Amber")) << "sorted by the new citations";
    EXPECT_THAT(IdsOf(model.Selected()), ElementsAre(12, 11));
    model.SetIndividual(true);
    for (const CSource& source : model.Selected())
        EXPECT_EQ(std::tuple(source.FormatStyle, source.IndentSpaces, source.AuthorsBeforeEtAl), std::tuple(8, 7, 2));
    EXPECT_EQ(Records(), before);
}

TEST_F(SourceSelectionTest, LosesADeletedAuthorWithEachFormat) {
    sources[0].AuthorIDs = {98, 99, 1};
    SourceSelection model(sources, authors);
    EXPECT_EQ(model.Available().FindSourceByID(11)->AuthorIDs, LongList({99, 1}));
    model.Select(11);
    EXPECT_EQ(model.Selected().FindSourceByID(11)->AuthorIDs, LongList({1}));
}

TEST_F(SourceSelectionTest, KeepsBothOfTwoSourcesWithOneId) {
    sources.AddTail(Book(11, "Zebra", 8));
    SourceSelection model(sources, authors);
    const std::pair<const char*, void (*)(SourceSelection&)> kWays[] = {
        {"all", [](SourceSelection& m) { m.SelectAll(); }},
        {"one by one", [](SourceSelection& m) { m.ClearAll(), m.Select(11), m.Select(11); }}};
    for (const auto& [what, select] : kWays) {
        SCOPED_TRACE(what);
        select(model);
        model.SetIndividual(false);
        model.SetIndividual(true);
        std::vector<std::string> titles;
        for (const CSource& source : model.Selected())
            titles.push_back(source.FieldTexts[0]);
        EXPECT_THAT(titles, testing::IsSupersetOf({"Wicks", "Zebra"}));
    }
}

}  // namespace
}  // namespace lore
