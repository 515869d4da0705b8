#include "notes/text_cache.h"

#include <random>

#include "notes/search_world.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

using LoadedTexts = NoteBookTest;

TEST_F(LoadedTexts, AreThoseOfTheNotesThatShowAlone) {
    CNote sourced = TextNote(4, "lamp of the old house");
    sourced.sources = {5};
    disk.Put("DAY01012020.dat", {TextNote(1, "Lamp"), TextNote(2, "house")});
    disk.Put("SRC0000000005.dat", {sourced, TextNote(2, "lamp of a copy")});
    IdCounters counters;
    TextCache cache;
    LoadOptions options;
    options.mode = LoadMode::ReadOnly;
    options.texts = &cache;
    const LoadReport report = LoadNoteBook(book, counters, world.context, faults, options);
    const auto paths = Each(report.files, [&](const std::string& name) { return disk.paths.NoteFile(name).string(); });
    cache.Attach(paths);
    ASSERT_EQ(paths.size(), 2U);
    EXPECT_THAT(cache.SearchFile(paths[0], MatcherFor("lamp")), Optional(ElementsAre(1)));
    EXPECT_THAT(cache.SearchFile(paths[1], MatcherFor("lamp")), Optional(ElementsAre(4)));
    EXPECT_THAT(cache.SearchFile(paths[1], MatcherFor("lamp AND house")), Optional(ElementsAre(4)));
    EXPECT_EQ(cache.SearchFile("elsewhere", MatcherFor("lamp")), std::nullopt);
    EXPECT_THAT(cache.TextOf(2), Optional(std::string_view("house")));
}

TEST(TextCache, FollowsFilesThatAreWrittenAndRemoved) {
    TextCache cache;
    cache.UpdateFile("a", {TextNote(1, "lamp"), TextNote(2, "lamp")});
    const size_t bytes = cache.Bytes();
    cache.UpdateFile("b", {TextNote(2, "mirror")});
    cache.UpdateFile("a", {TextNote(1, "rope")});
    EXPECT_THAT(cache.TextOf(2), Optional(std::string_view("mirror")));
    EXPECT_THAT(cache.SearchFile("a", MatcherFor("lamp")), Optional(IsEmpty()));
    cache.RemoveFile("b");
    EXPECT_EQ(cache.TextOf(2), std::nullopt);
    EXPECT_LT(cache.Bytes(), bytes);
    cache.Clear();
    EXPECT_EQ(cache.Bytes(), 0U);
    EXPECT_FALSE(cache.HoldsFile("a"));
}

TEST(TextCache, LeavesFilesOutThatGoOverItsBudget) {
    TextCache cache(40);
    cache.UpdateFile("a", {TextNote(1, "twenty characters ..")});
    cache.UpdateFile("b", {TextNote(2, "twenty characters ..")});
    EXPECT_TRUE(cache.HoldsFile("a"));
    EXPECT_FALSE(cache.HoldsFile("b"));
    cache.Begin(2);
    const std::string rtf = TextNote(1, "eighteen character").rtfText;
    cache.Take({0, 0}, 1, rtf);
    cache.Take({1, 0}, 2, rtf);
    cache.Take({1, 1}, 3, rtf);  // too much: the second file goes whole
    cache.Finish({{1, {0, 0}}, {2, {1, 0}}, {3, {1, 1}}});
    cache.Attach({"a", "b"});
    EXPECT_TRUE(cache.HoldsFile("a"));
    EXPECT_FALSE(cache.HoldsFile("b"));
    EXPECT_LE(cache.Bytes(), 40U);
    cache.UpdateFile("b", {TextNote(2, "now small")});
    EXPECT_TRUE(cache.HoldsFile("b"));
}

/// Words of a small alphabet, so that hits, near hits and neighbours are frequent.
std::string RandomText(std::mt19937& random, size_t most) {
    static const char* const kPieces[] = {"a", "b", "a", "B", " ", "\xC3\x84", "\xC3\xA4", "\xCC\x81", "\xE7\x81\xAF"};
    std::string text;
    for (size_t i = random() % most; i > 0; --i)
        text += kPieces[random() % std::size(kPieces)];
    return text;
}

TEST(TextCache, FindsInItsMemoryWhatAReaderFindsTextByText) {
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        FoldedTexts texts;
        std::vector<std::string> plain;
        for (int32_t id = 0; id < 12; ++id) {
            plain.push_back(RandomText(random, 120));
            texts.Add(id, 0, plain.back());
        }
        // One whose bytes stand there but which doesn't show.
        texts.slices.erase(texts.slices.begin() + 5);
        plain.erase(plain.begin() + 5);
        std::string term = "a" + RandomText(random, 6);
        if (round % 2 == 0)
            term = '"' + term + '"';
        const NoteMatcher matcher = MatcherFor(term);
        const std::vector<uint8_t> found = matcher.MatchSlices(texts);
        for (size_t i = 0; i < plain.size(); ++i)
            ASSERT_EQ(found[i] != 0, matcher.Matches(plain[i])) << term << " in " << plain[i];
    }
}

}  // namespace
}  // namespace lore
