#include "base/text_join.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace lore {
namespace {

TEST(TextJoin, TwoTextsReadAsOneWhateverTheirForms) {
    struct Case {
        std::string first, second, joined;
    };
    for (const Case& c : {
             Case{"", "", ""},
             Case{"fog, ", "sea", "fog, sea"},
             Case{"caf\xE9, ", "\xFC", "caf\xE9, \xFC"},              // both Windows-1252
             Case{"\xC5\x81, ", "\xC3\xA9", "\xC5\x81, \xC3\xA9"},    // both UTF-8
             Case{"caf\xE9, ", "\xC5\x81", "caf\xC3\xA9, \xC5\x81"},  // one of each
             Case{"\xC5\x81, ", "caf\xE9", "\xC5\x81, caf\xC3\xA9"},
             Case{"caf\xE9, ", "\xC3\xBC", "caf\xE9, \xFC"},  // the whole has a place in Windows-1252
             Case{"fog, ", "\xC5\x81", "fog, \xC5\x81"},
         }) {
        EXPECT_EQ(JoinTexts(c.first, c.second), c.joined);
        EXPECT_EQ(ToUtf8(JoinTexts(c.first, c.second)), ToUtf8(c.first) + ToUtf8(c.second));
    }
}

TEST(TextJoin, OnlyUtf8BeyondAsciiIsWide) {
    for (const auto& [text, isWide] : {std::pair{"", false}, std::pair{"plain", false}, std::pair{"caf\xE9", false},
                                       std::pair{"caf\xC3\xA9", true}, std::pair{"\xC3\xA9\xE9", false}})
        EXPECT_EQ(IsWideText(text), isWide) << text;
}

}  // namespace
}  // namespace lore
