#include "notes/search_query.h"

#include <gmock/gmock.h>

#include "notes/search_world.h"

namespace lore {
namespace {

using testing::ElementsAre;

TEST(SearchQuery, SplitsAtCapitalOperatorsAnywhereInTheText) {
    const struct {
        const char* text;
        int32_t searchOperator;
        std::vector<std::string> terms;
    } cases[] = {
        {"cats AND dogs", kAndOperator, {"cats", "dogs"}},
        {"cats OR dogs", kOrOperator, {"cats", "dogs"}},
        {"cats and dogs", kNoOperator, {"cats and dogs"}},
        {" two  words ", kNoOperator, {" two  words "}},
        {"FLOOR", kOrOperator, {"FLO"}},
        {"orange", kNoOperator, {"orange"}},
        {"ORANGE", kOrOperator, {"ANGE"}},
        {"AND", kAndOperator, {}},
        {"ANDANDa AND  AND b AND", kAndOperator, {"a", "b"}},
        {"aANDa", kAndOperator, {"a", "a"}},
        {"SHOWALL", kNoOperator, {"SHOWALL"}},
        {"", kNoOperator, {""}},
    };
    for (const auto& c : cases) {
        ScriptedPrompts prompts;
        NoteSearch search;
        EXPECT_TRUE(ParseSearchString(c.text, &prompts, search)) << c.text;
        EXPECT_EQ(search.searchText, c.text);
        EXPECT_EQ(search.searchOperator, c.searchOperator) << c.text;
        EXPECT_EQ(search.searchTerms, c.terms) << c.text;
        EXPECT_TRUE(prompts.seen.empty()) << c.text;
    }
}

TEST(SearchQuery, RefusesBothOperatorsWithAMessage) {
    ScriptedPrompts prompts;
    NoteSearch search{kAndOperator, "old", {"old"}};
    EXPECT_FALSE(ParseSearchString("BRANDY OR FISH", &prompts, search));
    EXPECT_THAT(prompts.seen, ElementsAre("Invalid Search String: You can only have one type of operator (AND, OR) in "
                                          "search string."));
    EXPECT_THAT(prompts.icons, ElementsAre(PromptIcon::Warning));
    EXPECT_EQ(search.searchText, "");
    EXPECT_EQ(search.searchOperator, kNoOperator);
    EXPECT_TRUE(search.searchTerms.empty());
    EXPECT_FALSE(ParseSearchString("a OR b AND c", nullptr, search));
}

TEST(SearchQuery, TakesTheFirstAndTheLastCharacterOffAQuotedTerm) {
    const struct {
        const char* text;
        std::u32string folded;
        bool wholeWord;
    } cases[] = {
        {"\"Cat\"", U"cat", true},    {"\"cat", U"ca", true},
        {"cat\"", U"cat\"", false},   {"\"", U"", true},
        {"\"\"", U"", true},          {"\"\xC3\x84\xC3\xA9", U"\u00E4", true},
        {"\xC4x", U"\u00E4x", false}, {"STRASSE \xC3\x9F", U"strasse \u00DF", false},
    };
    for (const auto& c : cases) {
        const SearchTerm term = SearchTerm::FromText(c.text);
        EXPECT_EQ(term.folded, c.folded) << c.text;
        EXPECT_EQ(term.wholeWord, c.wholeWord) << c.text;
    }
}

}  // namespace
}  // namespace lore
