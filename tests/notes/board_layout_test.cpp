#include "notes/board_layout.h"

#include <map>
#include <random>

#include "notes/board_heights.h"
#include "notes/card_heights.h"
#include "notes/note_builder.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/memory_store.h"

namespace lore {
namespace {

constexpr int kWidth = 900;
const BoardOptions kTop{.keyWordsOnTop = true, .sourcesOnTop = true}, kBottom{.categoriesOnTop = false};

/// Measures each part as 100 pixels and writes down "kind index:left,top,width".
class StackedCard {
public:
    StackedCard(const CardContent& content, const BoardOptions& options) {
        layout = LayOutCard(content, options, kWidth, [](const CardPart&) { return 100; });
    }
    std::vector<std::string> Tops() const {
        static constexpr const char* kNames[] = {"path", "words", "source", "text", "files"};
        std::vector<std::string> tops;
        for (const CardPart& part : layout.parts)
            tops.push_back(kNames[static_cast<int>(part.kind)] + std::to_string(part.index) + "@" +
                           std::to_string(part.top));
        return tops;
    }
    CardLayout layout;
};

CardContent Everything() {
    return {.paths = {true, true, true}, .keyWords = true, .text = true, .attachments = true, .sources = 2};
}

TEST(BoardLayout, StacksEveryBlockAboveOrBelowTheText) {
    const StackedCard above(Everything(), kTop);
    EXPECT_THAT(above.Tops(), ElementsAre("path0@17", "path1@124", "path2@230", "words0@340", "source0@448",
                                          "source1@556", "text0@680", "files0@803"));
    EXPECT_EQ(above.layout.height, 903);
    const StackedCard below(Everything(), kBottom);
    EXPECT_THAT(below.Tops(), ElementsAre("text0@33", "files0@156", "source0@265", "source1@373", "words0@491",
                                          "path0@607", "path1@714", "path2@820"));
    EXPECT_EQ(below.layout.height, 928);
}

TEST(BoardLayout, GivesTheFirstBlockItsOwnSpaceAndNoneToWhatIsMissing) {
    const BoardOptions hidden{.showCategories = false, .showKeyWords = false, .showSources = false};
    const BoardOptions onlyOne{.onlySetOne = true};
    // A first top of -1: no parts.
    const std::tuple<const char*, CardContent, BoardOptions, int, int> cases[] = {
        {"nothing", {}, kTop, -1, 17},
        {"files alone", {.attachments = true}, kTop, 17, 117},
        {"text alone", {.text = true}, kTop, 33, 156},
        {"path on top", {.paths = {false, true, false}}, kTop, 17, 143},
        {"third path alone stands at its full gap", {.paths = {false, false, true}}, kTop, 17, 143},
        {"words on top", {.keyWords = true}, kTop, 17, 142},
        {"source on top", {.sources = 1}, kTop, 18, 143},
        {"path below nothing", {.paths = {true, false, false}}, kBottom, 17, 124},
        {"words below nothing", {.keyWords = true}, kBottom, 17, 125},
        {"source below nothing", {.sources = 1}, kBottom, 17, 126},
        {"words below files", {.keyWords = true, .attachments = true}, kBottom, 17, 234},
        {"nothing is shown", Everything(), hidden, 33, 256},
        {"sets 2 and 3 are not shown", {.paths = {false, true, true}}, onlyOne, -1, 17},
        {"set 1 of three", {.paths = {true, true, true}}, onlyOne, 17, 143},
    };
    for (const auto& [what, content, options, firstTop, height] : cases) {
        const CardLayout layout = StackedCard(content, options).layout;
        EXPECT_EQ(layout.parts.empty() ? -1 : layout.parts.front().top, firstTop) << what;
        EXPECT_EQ(layout.height, height) << what;
    }
}

TEST(BoardLayout, SetsTheBlocksInFromTheSides) {
    const CardLayout layout = StackedCard(Everything(), BoardOptions()).layout;
    for (const CardPart& part : layout.parts) {
        const bool text = part.kind == CardPartKind::Text, files = part.kind == CardPartKind::Attachments;
        EXPECT_EQ(part.left, text ? 38 : files ? 21 : 17);
        EXPECT_EQ(part.width, text ? kWidth - 85 : files ? kWidth - 42 : kWidth - 34);
        EXPECT_EQ(part.numbered, part.kind == CardPartKind::Path);
        if (!text)
            continue;
        EXPECT_THAT((std::vector{layout.textLeft, layout.textTop, layout.textWidth, layout.textHeight}),
                    ElementsAre(16, part.top - 16, kWidth - 32, 16 + 100 + 6));
    }
    EXPECT_EQ(StackedCard({}, {}).layout.textHeight, 0);
    EXPECT_FALSE(StackedCard({.paths = {true, false, false}}, {}).layout.parts[0].numbered);
    for (const CardPart& part : LayOutCard(Everything(), {}, 3, [](const CardPart&) { return -5; }).parts)
        EXPECT_GE(part.width, 1);
}

TEST(BoardLayout, TellsWhatANoteHasToShow) {
    CNote note;
    note.keyWords = ",,  ,";
    note.categories[1].id = 7;
    note.categories[2].id = -7;
    const CardContent content = CardContentOf(note, 3);
    EXPECT_FALSE(content.keyWords || content.text || content.attachments);
    EXPECT_THAT(content.paths, ElementsAre(false, true, false));
    EXPECT_EQ(content.sources, 3U);
    EXPECT_THAT(ShownKeyWords("reef, ,Lamp oil,reef,"), ElementsAre("Lamp oil", "reef"));
    std::string many;
    for (int i = 0; i < 100000; ++i)
        many += "w" + std::to_string(i) + ",";
    size_t count = 0;
    EXPECT_LE(ShownKeyWords(many, &count).size(), 400U);
    EXPECT_EQ(count, 100000U);
}

TEST(BoardLayout, EstimatesStayWithinBoundsForAnyNote) {
    CNote note;
    const BoardOptions none{.showCategories = false, .showKeyWords = false, .showSources = false};
    EXPECT_EQ(EstimateCardHeight(note, {}, kWidth), 17);
    CNote full = FullNote(1);
    full.attachments.resize(1);
    full.plainText.clear();
    EXPECT_EQ(EstimateCardHeight(full, none, kWidth), 17 + 300);
    full.attachments[0].show = false;
    EXPECT_EQ(EstimateCardHeight(full, none, kWidth), 17 + 24);
    EXPECT_GE(EstimateCardHeight(full, {}, kWidth), 17 + 24 + 2 * 33 + 17 + 32 + 2 * 8);
    note.attachments.resize(100000);
    note.plainText.assign(1 << 20, 'x');
    for (const int width : {0, 1, 900})
        EXPECT_GT(EstimateCardHeight(note, {}, width), 17);
    EXPECT_LE(EstimateCardHeight(note, {.zoom = 1e9}, 1), 1 << 24);
}

TEST(BoardOptions, ZoomGoesThroughItsListAndNotBeyond) {
    const int cases[][3] = {
        {100, 1, 115}, {115, -1, 100}, {100, -1, 100},  {200, 1, 200},        {150, 2, 200},
        {130, 0, 125}, {160, 1, 175},  {-5000, 0, 100}, {INT32_MAX, -1, 175}, {INT32_MIN, INT32_MAX, 200},
        {120, 0, 115}, {125, -99, 100}};
    for (const auto& [percent, step, expected] : cases)
        EXPECT_EQ(BoardZoomStep(percent, step), expected) << percent << " " << step;
    // The board is drawn at what the box shows, whatever the settings hold.
    for (const auto& [stored, drawn] : std::map<int32_t, double>{
             {INT32_MIN, 1}, {-1, 1}, {0, 1}, {90, 1}, {126, 1.25}, {20'000'000, 2}, {INT32_MAX, 2}}) {
        Settings settings;
        settings.Set(Option::ZoomLvl, stored);
        EXPECT_EQ(BoardOptionsOf(settings, MemoryStore()).zoom, drawn) << stored;
    }
}

TEST(CardHeights, AreEstimatesUntilTheyAreMeasuredAndForgottenByNote) {
    CardHeights heights;
    const auto heightOf = [&](int32_t id, int estimate) { return heights.HeightOf(id, [&] { return estimate; }); };
    for (const int32_t id : {70, 1, 5'000'000, -3}) {
        EXPECT_EQ(heightOf(id, 0), 0) << id;
        EXPECT_EQ(heightOf(id, 90), 0) << id << ", an estimate is kept";
        EXPECT_FALSE(heights.IsMeasured(id)) << id;
        heights.SetMeasured(id, 120);
        EXPECT_EQ(heightOf(id, 90), 120) << id;
        EXPECT_TRUE(heights.IsMeasured(id)) << id;
    }
    heights.Forget(1);
    heights.Forget(2'000'000);
    EXPECT_EQ(heightOf(1, 90), 90);
    EXPECT_EQ(heightOf(70, 90), 120);
}

TEST(BoardHeights, AddUpAfterAnyChange) {
    std::mt19937 random(7);
    for (const int count : {0, 1, 2, 3, 64, 65, 1000}) {
        std::vector<int> plain(static_cast<size_t>(count));
        for (int& height : plain)
            height = random() % 4 == 0 ? 0 : static_cast<int>(random() % 500);
        BoardHeights heights;
        heights.Assign(plain);
        for (int change = 0; change < 50 && count > 0; ++change) {
            const size_t row = random() % plain.size();
            plain[row] = static_cast<int>(random() % 900);
            heights.SetHeight(static_cast<int>(row), plain[row]);
        }
        int64_t top = 0;
        for (int row = 0; row < count; ++row) {
            const int height = plain[static_cast<size_t>(row)];
            ASSERT_EQ(heights.TopOf(row), top);
            if (height > 0) {
                ASSERT_EQ(heights.RowAt(top), row);
                ASSERT_EQ(heights.RowAt(top + height - 1), row);
            }
            top += height;
        }
        EXPECT_EQ(heights.Total(), top);
        EXPECT_EQ(heights.RowAt(top + 100), count - 1);
    }
}

}  // namespace
}  // namespace lore
