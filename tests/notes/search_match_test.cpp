#include "notes/search_match.h"

#include <random>

#include "notes/search_prefilter.h"
#include "notes/search_world.h"
#include "support/matchers.h"

namespace lore {
namespace {

std::string Folded(const std::string& utf8) {
    std::string folded;
    AppendFolded(folded, utf8);
    return folded;
}

TEST(NoteMatcher, DecidesAlikeOnPlainFoldedAndRichTexts) {
    // What is searched, and a text that is plain text and RTF body alike.
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"cat", "A Catalog", true},
        {"\"cat\"", "A Catalog", false},
        {"\"cat\"", "catalog, CAT.", true},
        {"\"cat", "ca", true},
        {"\"cat", "cat", false},
        {"\"", "anything \"", false},
        {"\"aa\"", "aaa aa", true},
        {"cats AND dogs", "only cats", false},
        {"cats AND dogs", "Dogs and cats", true},
        {"cats OR dogs", "hotdogs", true},
        {"cat AND cat", "cat", true},
        {"AND", "AND", false},
        {"FLOOR", "a flower", true},
        {"showall", "we SHOWALL of it", true},
        {"e", "E", true},
        {"a", "", false},
        {"x_1", "X_1", true},
        {"\"x\"", "x_1", false},
    };
    for (const auto& [search, text, matches] : cases) {
        SCOPED_TRACE(std::string(search) + " in " + text);
        const NoteMatcher matcher = MatcherFor(search);
        EXPECT_EQ(matcher.Matches(text), matches);
        EXPECT_EQ(matcher.MatchesFolded(Folded(text)), matches);
        EXPECT_TRUE(!matches || RtfPrefilter(matcher).MayMatch(TextNote(1, text).rtfText));
    }
}

TEST(NoteMatcher, IgnoresCaseOfEveryScriptAndKeepsPositionsInCharacters) {
    const std::tuple<const char*, const char*, std::vector<TextRange>> cases[] = {
        {"\xC3\xA4gypten", "\xC3\x84GYPTEN, \xC3\xA4gypten", {{0, 7}, {9, 16}}},
        {"\xD0\xBC\xD0\xB0\xD1\x8F\xD0\xBA", "\xD0\x9C\xD0\x90\xD0\xAF\xD0\x9A", {{0, 4}}},
        {"k",
         "\xE2\x84\xAA"
         "m k",
         {{0, 1}, {3, 4}}},  // the sign of kelvin
        {"\"\xE7\x81\xAF\"", "\xE7\x81\xAF\xE5\xA1\x94 \xE7\x81\xAF", {{3, 4}}},
        {"\"e\"", "e\xCC\x81 e", {{3, 4}}},  // a combining accent belongs to its word
        {"a OR ab", "ab", {{0, 1}, {0, 2}}},
    };
    for (const auto& [search, text, hits] : cases) {
        const NoteMatcher matcher = MatcherFor(search);
        EXPECT_EQ(matcher.Hits(text), hits) << search;
        EXPECT_TRUE(matcher.MatchesFolded(Folded(text))) << search;
    }
}

TEST(NoteMatcher, MarksEveryHitOfEveryTermAndLeavesTheTextAlone) {
    const std::string rtf = TextNote(1, "Dogs chase {\\b ca}ts, cats\\par sleep").rtfText;
    const std::string marked = MatcherFor("cats OR dogs").MarkedRtf(rtf);
    EXPECT_EQ(PlainText(marked), PlainText(rtf));
    std::string coloured;
    const Document document = ReadRtf(marked);
    for (const TextRun& run : document.runs) {
        if (run.format.background == TextColor{255, 142, 40})
            coloured.append(TextOf(document, run));
    }
    EXPECT_EQ(coloured, "Dogscatscats");
}

TEST(RtfPrefilter, NeverThrowsOutAWordHoweverTheRtfWritesIt) {
    const char* const bodies[] = {
        "heliotrope",
        "HELIO\\b trope",
        "h\\b0\\i0 eliotrope",
        "{\\b h}eliotrope",
        "{h}{\\i e}{\\lang1033 liotrope}",
        "helio\r\ntrope",
        "helio{\\*\\bkmkstart here}trope",
        "helio\\v hidden\\v0 trope",
        "a{\\footnote heliotrope}b",
        "helio{\\pict\\pngblip 00ff}trope",
        "\\'68eliotrope",
        "helio\\'74rope",
        "\\u104?eliotrope",
        "helio\\u116 ?rope",
        "helio\\plain\\f0 trope",
        "helio\\zzunknown12 trope",
        "\\u8217\\'92heliotrope\\'94",
        "{\\field{\\*\\fldinst HYPERLINK \"http://x\"}{\\fldrslt helio}}trope",
        "heliotrop\\uc0\\u101 ",
        "x\\par\\bin1 \\heliotrope",
        "x\\bin2 \\helio\\b trope heliotrope",
        "\\\\heliotrope",
        "\\'5cheliotrope",
        "\\~heliotrope\\_",
    };
    const NoteMatcher matcher = MatcherFor("\"Heliotrope\"");
    const RtfPrefilter filter(matcher);
    for (const char* const body : bodies) {
        const std::string rtf = TextNote(1, body).rtfText;
        EXPECT_TRUE(matcher.Matches(PlainText(rtf))) << body << ": " << PlainText(rtf);
        EXPECT_TRUE(filter.MayMatch(rtf)) << body;
    }
    // A code page in which bytes beyond ASCII are letters.
    EXPECT_TRUE(filter.MayMatch("{\\rtf1\\ansi\\ansicpg000000000000000000000000000037 \\'88\\'85}"));
    EXPECT_TRUE(filter.MayMatch("{\\rtf1\\ansi\\ansicpg37 \\'88\\'85\\'93\\'89\\'96\\'a3\\'99\\'96\\'97\\'85}"));
    // A hyphen that isn't the sign of a number is text.
    EXPECT_TRUE(RtfPrefilter(MatcherFor("h-x")).MayMatch("{\\rtf1\\ansi h\\b-x}"));
    EXPECT_TRUE(RtfPrefilter(MatcherFor("kelvin")).MayMatch("{\\rtf1\\ansi \\u8490?elvin}"));
    // What the text has and the bytes don't.
    for (const auto& [body, term] :
         {std::pair("a{\\footnote b}", "\"a [b]\""), std::pair("{\\field{\\*\\fldinst Symbol 65}}x", "Ax"),
          std::pair("a{\\footnote b}c", "\" c\""), std::pair("{\\v x{\\v0 ab}\\par {\\v0 cd}}", "abcd"),
          std::pair("{\\v x {\\v0 fs24}ee{\\v0 bin}}", "fs24bin")}) {
        const NoteMatcher odd = MatcherFor(term);
        const std::string rtf = TextNote(1, body).rtfText;
        EXPECT_TRUE(odd.Matches(PlainText(rtf)) && RtfPrefilter(odd).MayMatch(rtf)) << body;
    }
}

TEST(RtfPrefilter, ThrowsOutOrdinaryNotesWithoutTheWord) {
    const char* const bodies[] = {
        "the heliot rope",
        "heli\\par otrope \\fnil\\li0 li\\line otrope",
        "hel\\b i\\b0  o \\'e9t\\'e9 \\u8217\\'92s h\\line eli otrope",
        "{\\fonttbl{\\f0\\fcharset0 Arial;}}\\f0\\fs20 hidden heliograph",
    };
    const NoteMatcher matcher = MatcherFor("heliotrope");
    for (const char* const body : bodies)
        EXPECT_FALSE(RtfPrefilter(matcher).MayMatch(TextNote(1, body).rtfText)) << body;
}

/// RTF of random pieces, most of them letters of one short word.
std::string RandomRtf(std::mt19937& random) {
    static const char* const kPieces[] = {
        "s",       "k",        "S",      "K",      " ",        "s",     "k",     "\\b ",        "\\b0",
        "{",       "}",        "\r\n",   "\\par ", "\\'73",    "\\'6b", "\\'e9", "\\u107 ?",    "\\u-1?",
        "\\u383?", "\\v ",     "\\v0 ",  "\\~",    "\\-",      "\\tab", "\xE9",  "{\\*\\xx s}", "\\\n",
        "\\uc0 ",  "\\cpg37 ", "\\zz k", "\t",     "\\bin1 k", "\\f1 ", "\\{",   "{\\pict 00}", "\\ulnone ",
        "-",       "-",        "\\b",    "\\i-1",  "\\fs"};
    std::string rtf = "{\\rtf1\\ansi ";
    for (size_t i = 5 + random() % 12; i > 0; --i)
        rtf += kPieces[random() % std::size(kPieces)];
    return rtf + "}";
}

TEST(RtfPrefilter, KeepsEveryRandomTextThatMatches) {
    std::mt19937 random(3);
    const NoteMatcher matchers[] = {MatcherFor("ks"),         MatcherFor("\"sk\""),       MatcherFor("k"),
                                    MatcherFor("s k AND kk"), MatcherFor("ssk OR \xE9s"), MatcherFor("s-k OR k-1s")};
    int matching = 0, thrownOut = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string rtf = RandomRtf(random);
        const std::string text = PlainText(rtf);
        for (const NoteMatcher& matcher : matchers) {
            const bool matches = matcher.Matches(text);
            const bool may = RtfPrefilter(matcher).MayMatch(rtf);
            ASSERT_TRUE(!matches || may) << rtf << " reads as " << text;
            ASSERT_EQ(matcher.MatchesFolded(Folded(text)), matches) << rtf;
            matching += matches;
            thrownOut += !may;
        }
    }
    EXPECT_GT(matching, 1000);
    EXPECT_GT(thrownOut, 1000);
}

}  // namespace
}  // namespace lore
