#include "sources/source_browser.h"

#include <utility>

#include "sources/source_boxes.h"
#include "sources/sources_fixture.h"

namespace lore {
namespace {

class SourceBrowserTest : public SourcesFixture {
protected:
    SourceBrowserTest() {
        book.sources.RemoveAll();
        for (int32_t i = 1; i <= 8; ++i)
            book.authors.AddAuthor({i, "Ann", "", "Name" + std::to_string(i), "", ""});
        Add(1, "Bells", "Harbor Press", {1});
        Add(2, "Aids", "harbor press", {2});
        Add(3, "Bells", " ", {1, 2});
        Add(4, "Lamps", "Dover", {1, 2, 3, 4, 5, 6, 7, 8});
    }
    void Add(int32_t id, const std::string& title, const std::string& publication, LongList authors) {
        CSource source = Source(id, title);
        source.FormatStyle = 0;
        source.AuthorsBeforeEtAl = 10;
        source.FieldTexts[1] = publication;
        source.AuthorIDs = std::move(authors);
        book.sources.AddTail(source);
    }
    static std::vector<int32_t> Shown(const SourceBrowser& browser) {
        std::vector<int32_t> ids;
        for (size_t row = 0; row < browser.Count(); ++row)
            ids.push_back(browser[row].SourceID);
        return ids;
    }
    static void Choose(SourceBrowser& browser, SourceFilter filter, const std::string& text) {
        const auto& entries = browser.Entries(filter);
        const auto found = std::find(entries.begin(), entries.end(), text);
        ASSERT_NE(found, entries.end()) << text;
        browser.Choose(filter, static_cast<size_t>(found - entries.begin()));
    }
    /// A selection of the minimum over the citations, the last of equal ones first, as the list is to stand.
    std::vector<int32_t> SlowOrder(std::vector<int32_t> ids) {
        SourceList list;
        for (const CSource& source : book.sources) {
            if (std::find(ids.begin(), ids.end(), source.SourceID) != ids.end())
                list.AddTail(source);
        }
        list.SortSources(book.authors);
        return Each(list, &CSource::SourceID);
    }
};

TEST_F(SourceBrowserTest, ChoicesHoldEachTextOnceAndTheLineForAll) {
    SourceBrowser browser(store, false);
    EXPECT_THAT(browser.Entries(SourceFilter::Title), ElementsAre("<-ALL TITLES->", "Aids", "Bells", "Lamps"));
    const std::string title = std::exchange(book.sources[0].FieldTexts[0], "<-all titles->");
    EXPECT_THAT(SourceBrowser(store, false).Entries(SourceFilter::Title),
                testing::Not(testing::Contains("<-all titles->")))
        << "that line stands for all";
    book.sources[0].FieldTexts[0] = title;
    EXPECT_THAT(browser.Entries(SourceFilter::Publication),
                ElementsAre("<-ALL PUBLICATIONS->", "Dover", "Harbor Press"));
    const auto& authors = browser.Entries(SourceFilter::Author);
    EXPECT_EQ(authors.size(), 5u);
    EXPECT_THAT(authors, Contains(HasSubstr("et al"))) << "six names, whatever the limit of the source";
    EXPECT_EQ(Shown(browser), SlowOrder({1, 2, 3, 4}));
}

TEST_F(SourceBrowserTest, ChoicesAreJoinedAndTextsMatchExactly) {
    SourceBrowser browser(store, false);
    Choose(browser, SourceFilter::Title, "Bells");
    EXPECT_EQ(Shown(browser), SlowOrder({1, 3}));
    Choose(browser, SourceFilter::Publication, "Harbor Press");
    EXPECT_THAT(Shown(browser), ElementsAre(1)) << "not \"harbor press\"";
    Choose(browser, SourceFilter::Title, "Aids");
    EXPECT_THAT(Shown(browser), IsEmpty());
    EXPECT_TRUE(prompts.seen.empty());
    Choose(browser, SourceFilter::Publication, "<-ALL PUBLICATIONS->");
    EXPECT_THAT(Shown(browser), ElementsAre(2));
}

TEST_F(SourceBrowserTest, TextAboveTheLineForAllActsAsAllWhileAnotherChoiceChanges) {
    Add(5, "1811", "Dover", {1});
    SourceBrowser browser(store, false);
    EXPECT_EQ(browser.Entries(SourceFilter::Title).front(), "1811");
    EXPECT_EQ(browser.Chosen(SourceFilter::Title), 1u) << "the line for all is chosen, wherever it stands";
    Choose(browser, SourceFilter::Title, "1811");
    EXPECT_THAT(Shown(browser), ElementsAre(5));
    Choose(browser, SourceFilter::Publication, "Dover");
    EXPECT_EQ(Shown(browser), SlowOrder({4, 5})) << "the first line counts as all";
    Choose(browser, SourceFilter::Title, "<-ALL TITLES->");
    EXPECT_EQ(Shown(browser), SlowOrder({4, 5}));
}

TEST_F(SourceBrowserTest, SelectionGoesWithTheSourceAndIsForgottenWhenItIsFilteredOut) {
    SourceBrowser browser(store, true);
    EXPECT_EQ(browser.SelectedID(), -1);
    browser.Select(browser.RowOf(3));
    Choose(browser, SourceFilter::Title, "Bells");
    EXPECT_EQ(browser.SelectedID(), 3);
    Choose(browser, SourceFilter::Title, "Aids");
    Choose(browser, SourceFilter::Title, "<-ALL TITLES->");
    EXPECT_EQ(browser.SelectedID(), -1);
}

TEST_F(SourceBrowserTest, CommandsNeedASelectedSourceAndOnlyOneWithoutNotesIsDeleted) {
    SourceBrowser browser(store, false);
    EXPECT_EQ(browser.SourceToEdit(), std::nullopt);
    EXPECT_FALSE(browser.Delete());
    EXPECT_THAT(prompts.seen, ElementsAre("Source not selected: You must select a source to edit.",
                                          "Source not selected: You must select a source to delete."));
    NoteOf(5, 1);
    browser.Refresh(1);
    browser.Select(browser.RowOf(1));
    EXPECT_FALSE(browser.Delete());
    EXPECT_EQ(prompts.seen.back(), "Notes Attached!: This source has notes tied to it, you may not delete it.");
    browser.Select(browser.RowOf(4));
    EXPECT_FALSE(browser.Delete());
    EXPECT_EQ(prompts.seen.back(), "Delete Source?? Do you wish to delete this source?");
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_TRUE(browser.Delete());
    EXPECT_EQ(Reloaded().sources.Count(), 3u);
    EXPECT_EQ(Shown(browser), SlowOrder({1, 2, 3}));
    prompts.answers = {PromptAnswer::Yes};
    Block(book.paths.Sources());
    browser.Select(browser.RowOf(2));
    EXPECT_FALSE(browser.Delete());
    EXPECT_EQ(book.sources.Count(), 3u) << "what can't be written stays";
}

TEST_F(SourceBrowserTest, RefreshKeepsChoicesAndShowsWhatWasSaved) {
    SourceBrowser browser(store, false);
    Choose(browser, SourceFilter::Publication, "Dover");
    Add(9, "Towers", "Harbor Press", {3});
    browser.Refresh(9);
    EXPECT_EQ(Shown(browser), SlowOrder({4, 9})) << "a new source shows, whatever the choices";
    EXPECT_EQ(browser.SelectedID(), 9);
    EXPECT_EQ(browser.Entries(SourceFilter::Publication)[browser.Chosen(SourceFilter::Publication)], "Dover");
    book.sources.FindSourceByID(4)->FieldTexts[1] = "Aldus";
    browser.Refresh(4);
    EXPECT_EQ(browser.Entries(SourceFilter::Publication)[browser.Chosen(SourceFilter::Publication)],
              "<-ALL PUBLICATIONS->");
    EXPECT_EQ(browser.Count(), 5u) << "the text that narrowed the list down has gone";
}

TEST_F(SourceBrowserTest, BoxesHaveTheirFigures) {
    struct Case {
        SourceBoxFigures figures;
        int width, lines, characters, height;
    };
    const Case cases[] = {{kSourcesListBoxes, 600, 1, 49, 70},  {kSourcesListBoxes, 600, 2, 49, 70},
                          {kSourcesListBoxes, 604, 3, 50, 84},  {kSourcesSelBoxes, 562, 2, 50, 44},
                          {kSourcesSelBoxes, 562, 10, 50, 162}, {kSourcesSelBoxes, 10, 0, 1, 44}};
    for (const Case& c : cases) {
        EXPECT_EQ(CharactersALine(c.figures, c.width, 0, 10.0), c.characters) << c.width;
        EXPECT_EQ(SourceBoxHeight(c.figures, c.lines), c.height);
    }
    CSource source = Source(1, "x");
    EXPECT_EQ(SourceBoxHeight(kSourcesListBoxes, source, 40), 0) << "no citation";
    source.FormattedText = std::string(100, 'x');
    EXPECT_EQ(SourceBoxHeight(kSourcesListBoxes, source, 20), 5 * 18 + 30);
    source.SourceID = 0;
    EXPECT_EQ(SourceBoxHeight(kSourcesListBoxes, source, 20), 0) << "no source";
}

}  // namespace
}  // namespace lore
