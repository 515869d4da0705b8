#include "edit/note_text_file.h"

#include <gmock/gmock.h>

#include "support/memory_store.h"

namespace lore {
namespace {

TEST(NoteTextFile, NewTextHasASizeThatCanBeReadWhateverTheSettingsHold) {
    const struct {
        const char* height;
        int half_points;
    } cases[] = {{"18", 27},         {"30", 45},          {"267", 400}, {"268", 400}, {"100000", 400},
                 {"715827883", 400}, {"2147483647", 400}, {"1", 3},     {"0", 3},     {"-2147483648", 3}};
    for (const auto& c : cases) {
        MemoryStore store;
        store.Set(kEditTextFont, "Height", c.height);
        store.Set(kEditTextFont, "FaceName", "Caf\xE9");
        const NewTextLook look = LookOfNewText(store);
        EXPECT_EQ(look.half_points, c.half_points) << c.height;
        EXPECT_EQ(look.font, "Caf\xC3\xA9");
        EXPECT_THAT(RtfFromText("text", look), testing::HasSubstr("\\fs" + std::to_string(c.half_points)));
    }
}

}  // namespace
}  // namespace lore
