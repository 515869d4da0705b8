#include "notes/search_query.h"

#include "notes/search_world.h"
#include "support/matchers.h"

namespace lore {
namespace {

TEST(SearchQuery, SplitsAtCapitalOperatorsAnywhereInTheText) {
    const std::tuple<const char*, int32_t, std::vector<std::string>> cases[] = {
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
        {"\xC3\xA9 AND \xFC", kAndOperator, {"\xC3\x83\xC2\xA9", "\xC3\xBC"}},
        {"SHOWALL", kNoOperator, {"SHOWALL"}},
        {"", kNoOperator, {""}},
    };
    for (const auto& [text, searchOperator, terms] : cases) {
        SCOPED_TRACE(text);
        ScriptedPrompts prompts;
        NoteSearch search;
        EXPECT_TRUE(ParseSearchString(text, &prompts, search));
        EXPECT_EQ(search.searchText, text);
        EXPECT_EQ(search.searchOperator, searchOperator);
        EXPECT_EQ(search.searchTerms, terms);
        EXPECT_TRUE(prompts.seen.empty());
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
    const std::tuple<const char*, std::u32string, bool> cases[] = {
        {"\"Cat\"", U"cat", true},    {"\"cat", U"ca", true},
        {"cat\"", U"cat\"", false},   {"\"", U"", true},
        {"\"\"", U"", true},          {"\"\xC3\x84\xC3\xA9", U"\u00E4", true},
        {"\xC4x", U"\u00E4x", false}, {"STRASSE \xC3\x9F", U"strasse \u00DF", false},
    };
    for (const auto& [text, folded, wholeWord] : cases) {
        const SearchTerm term = SearchTerm::FromText(text);
        EXPECT_EQ(term.folded, folded) << text;
        EXPECT_EQ(term.wholeWord, wholeWord) << text;
    }
}

}  // namespace
}  // namespace lore
