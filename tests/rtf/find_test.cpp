#include "rtf/find.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "base/text.h"

namespace lore {
namespace {

using Ranges = std::vector<TextRange>;

/// The rules of a search, character by character.
Ranges FindSlowly(std::string_view text, std::string_view term, bool wholeWord) {
    std::u32string t = Utf8ToCodePoints(text);
    std::u32string w = Utf8ToCodePoints(term);
    for (std::u32string* s : {&t, &w})
        std::transform(s->begin(), s->end(), s->begin(), FoldCase);
    const std::u32string original = Utf8ToCodePoints(text);
    Ranges hits;
    for (size_t at = 0; !w.empty() && (at = t.find(w, at)) != std::u32string::npos;) {
        const size_t end = at + w.size();
        const bool inside =
            (at > 0 && IsWordCharacter(original[at - 1])) || (end < original.size() && IsWordCharacter(original[end]));
        if (wholeWord && inside) {
            ++at;
        } else {
            hits.push_back({at, end});
            at = end;
        }
    }
    return hits;
}

TEST(TextFinder, FindsWithoutRegardToCase) {
    const struct {
        std::string_view text, term;
        bool wholeWord;
        Ranges hits;
    } cases[] = {{"cat Catalog CAT", "cat", false, {{0, 3}, {4, 7}, {12, 15}}},
                 {"cat Catalog CAT", "cat", true, {{0, 3}, {12, 15}}},
                 {"aaaaa", "aa", false, {{0, 2}, {2, 4}}},
                 {"FLOWER FLOAT", "FLO", false, {{0, 3}, {7, 10}}},
                 {"\xCE\xBD\xEF\xBF\xBD\xE3\x82\xBD", "\xEF\xBF\xBD", false, {{1, 2}}},
                 {"a_cat cat1 cat-", "cat", true, {{11, 14}}},
                 {"\xC3\x89t\xC3\xA9 x", "\xC3\xA9T\xC3\x89", false, {{0, 3}}},
                 {"\u00e9cat cat\u0301 cat", "cat", true, {{10, 13}}},
                 {"\xE2\x84\xAAit \xC5\xBFit", "kit", false, {{0, 3}}},
                 {"\xE2\x84\xAAit \xC5\xBFit", "sit", false, {{4, 7}}},
                 {"ss\xC5\xBF", "s", false, {{0, 1}, {1, 2}, {2, 3}}},
                 {"stra\u00dfe STRASSE \u1e9e", "\u00df", false, {{4, 5}, {15, 16}}},
                 {"\xCF\x83\xCF\x82\xCE\xA3", "\xCE\xA3", false, {{0, 1}, {1, 2}, {2, 3}}},
                 {"\xD0\x96\xD1\x83\xD0\xBA", "\xD0\xB6\xD0\xA3", false, {{0, 2}}},
                 {"\xF0\x90\x90\x80-\xF0\x9F\x98\x80", "\xF0\x90\x90\xA8", false, {{0, 1}}},
                 {"one\ntwo", "one\ntwo", false, {}},
                 {"one\ttwo", "E\tT", false, {{2, 5}}},
                 {"abc", "", false, {}},
                 {"", "abc", false, {}},
                 {"ab", "abc", false, {}},
                 {"(x)", "(x)", true, {{0, 3}}}};
    for (const auto& c : cases) {
        const TextFinder finder(c.term, c.wholeWord);
        EXPECT_EQ(finder.FindAll(c.text), c.hits) << c.text << " / " << c.term;
        EXPECT_EQ(finder.Matches(c.text), !c.hits.empty()) << c.text << " / " << c.term;
    }
}

TEST(TextFinder, AgreesWithASearchByCharactersOnRandomTexts) {
    const std::u32string letters =
        U"aAkK\u212AsS\u017F\u00E9\u00C9\u0416\u0436\u0440\u0420 _-\U00010400\U00010428\u0301";
    std::mt19937 random(7);
    const auto make = [&](size_t length) {
        std::u32string text;
        for (size_t i = 0; i < length; ++i)
            text += letters[random() % letters.size()];
        return CodePointsToUtf8(text);
    };
    for (int round = 0; round < 4000; ++round) {
        const std::string text = make(random() % 80);
        const std::string term = make(1 + random() % 3);
        for (bool wholeWord : {false, true})
            ASSERT_EQ(TextFinder(term, wholeWord).FindAll(text), FindSlowly(text, term, wholeWord))
                << text << " / " << term;
    }
}

TEST(TextFinder, KnowsAllFormsOfEachLetter) {
    std::map<char32_t, std::u32string> forms;
    for (char32_t c = 0x20; c <= 0x1FFFF; ++c) {
        if (c < 0xD800 || c > 0xDFFF)
            forms[FoldCase(c)] += c;
    }
    for (const auto& [folded, all] : forms) {
        if (all.size() < 2)
            continue;
        for (char32_t c : all) {
            const TextFinder finder(CodePointsToUtf8(std::u32string(1, c)), false);
            ASSERT_EQ(finder.FindAll(CodePointsToUtf8(all)).size(), all.size()) << static_cast<uint32_t>(c);
        }
    }
}

}  // namespace
}  // namespace lore
