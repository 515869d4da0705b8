#include "edit/note_text_file.h"

#include <gmock/gmock.h>

#include "rtf/rtf.h"
#include "settings/font_setting.h"
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

TEST(NoteTextFile, TextsOfTwoOrFourBytesACharacterComeInWholeOrNotAtAll) {
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
        {"four.txt", little + "\0\0\xE9\0\0\0\x16\x04\0\0\x00\xF6\1\0"s, "\u00e9\u0416\U0001f600"},
        {"four.htm", "\0\0\xFE\xFF\0\0\0&\0\0\0l\0\0\0t\0\0\0;\0\1\xF6\0"s, "<\U0001f600"},
        {"cut_four.txt", little + "\0\0\x16\x04\0\0\x16"s, "\u0416\ufffd"},
        {"bare.txt", "\xE9\0a\0\n\0b\0"s, "\u00e9a\nb"},
        {"bare_big.md", "\x04\x16\0 \0a\xD8\x3D\xDE\x01"s, "\u0416 a\U0001f601"},
        {"bare_four.html", "<\0\0\0b\0\0\0>\0\0\0\x16\4\0\0"s, "\u0416"},
        {"names.txt", "abc\0def\0"s, "?"},
        {"picture.txt", "\x89PNG\0\0\0\rIHDR"s, "?"},
        {"stray.txt", "A text with a byte \0 or two of them: \0."s, "A text with a byte  or two of them: ."},
        {"one_zero.txt", "ab\0"s, "ab"},
        {"empty.txt", little, ""},
        {"one_byte.txt", "\xFF", "\u00ff"},
        {"long.txt", little + "a\0"s + Repeated("\x3D\xD8\x00\xDE"s, kMany), "a" + Repeated("\U0001f600", kMany)}};
    const TempFolder folder;
    for (const auto& [name, bytes, plain] : cases) {
        PutBytes(folder / name, bytes);
        std::string rtf;
        const FileResult result = ReadNoteText(folder / name, {"Arial", 24}, rtf);
        EXPECT_EQ(result.error == FileResult::kUnknownEncoding ? "?" : PlainText(rtf), plain) << name;
    }
}

}  // namespace
}  // namespace lore
