#include "edit/note_text_file.h"

#include <gmock/gmock.h>

#include "rtf/rtf.h"
#include "support/each.h"
#include "support/memory_store.h"
#include "support/read_world.h"

namespace lore {
namespace {

TEST(NoteTextFile, NewTextHasASizeThatCanBeReadWhateverTheSettingsHold) {
    const std::pair<const char*, int> cases[] = {{"18", 27},      {"30", 45},         {"267", 400},        {"268", 400},
                                                 {"100000", 400}, {"715827883", 400}, {"2147483647", 400}, {"1", 3},
                                                 {"0", 3},        {"-2147483648", 3}};
    for (const auto& [height, halfPoints] : cases) {
        MemoryStore store;
        store.Set(kEditTextFont, "Height", height);
        store.Set(kEditTextFont, "FaceName", "Caf\xE9");
        const NewTextLook look = LookOfNewText(store);
        EXPECT_EQ(look.halfPoints, halfPoints) << height;
        EXPECT_EQ(look.font, "Caf\xC3\xA9");
        EXPECT_THAT(RtfFromText("text", look), testing::HasSubstr("\\fs" + std::to_string(halfPoints)));
    }
}

using namespace std::string_literals;

TEST(NoteTextFile, TextsOfTwoBytesACharacterComeInWhole) {
    constexpr int kMany = 10'000;  // more than any buffer on the way holds at once
    const std::string little = "\xFF\xFE", big = "\xFE\xFF";
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a.txt", little + "a\0\xE9\0\r\0\n\0\x16\x04"s, "a\u00e9\n\u0416"},
        {"b.MD", big + "\0a\0\xE9\0\n\x04\x16"s, "a\u00e9\n\u0416"},
        {"c.html", little + "<\0p\0>\0\xE9\0&\0l\0t\0;\0"s, "\u00e9<"},
        {"d.HTM", big + "\0<\0p\0>\xD8\x3D\xDE\x00"s, "\U0001f600"},
        {"pair.txt", little + "\x3D\xD8\x00\xDE"s, "\U0001f600"},
        {"alone.txt", little + "\x3D\xD8\x61\0\x00\xDE"s, "\ufffda\ufffd"},
        {"cut_pair.txt", big + "\0a\xD8\x3D"s, "a\ufffd"},
        {"odd.txt", little + "a\0b"s, "a\ufffd"},
        {"second.txt", little + "\0\0\x61\0"s, "a"},
        {"empty.txt", little, ""},
        {"one_byte.txt", "\xFF", "\u00ff"},
        {"long.txt", little + "a\0"s + Repeated("\x3D\xD8\x00\xDE"s, kMany), "a" + Repeated("\U0001f600", kMany)}};
    const TempFolder folder;
    for (const auto& [name, bytes, plain] : cases) {
        PutBytes(folder / name, bytes);
        std::string rtf;
        EXPECT_TRUE(ReadNoteText(folder / name, {"Arial", 24}, rtf).Ok());
        EXPECT_EQ(PlainText(rtf), plain) << name;
    }
}

}  // namespace
}  // namespace lore
