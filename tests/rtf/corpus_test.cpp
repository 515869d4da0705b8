#include <gtest/gtest.h>

#include "base/text.h"
#include "rtf/mark.h"
#include "rtf/rtf.h"
#include "rtf/rtf_check.h"
#include "rtf/rtf_files.h"
#include "support/data_files.h"

namespace lore {
namespace {

/// Every so many of the damaged files are looked at from all sides. Prime to the number of bits.
constexpr size_t kStride = 11;

TEST(RtfCorpus, ReadsAsExpected) {
    for (auto path : RtfFiles()) {
        SCOPED_TRACE(path.filename());
        const std::string rtf = ReadBytes(path);
        const std::string text = PlainText(rtf);
        const std::string parts = Describe(ReadRtf(rtf));
        EXPECT_EQ(text, Expected(path.replace_extension(".txt"), text));
        EXPECT_EQ(parts, Expected(path.replace_extension(".parts"), parts));
    }
}

TEST(RtfCorpus, IsTheSameDocumentWhenWrittenAndReadAgain) {
    for (auto path : RtfFiles()) {
        SCOPED_TRACE(path.filename());
        const std::string rtf = ReadBytes(path);
        const Document document = ReadRtf(rtf);
        const std::string written = WriteRtf(document);
        const Document again = ReadRtf(written);
        EXPECT_EQ(Describe(again), Describe(document));
        EXPECT_TRUE(again == document);
        EXPECT_EQ(WriteRtf(again), written);
        EXPECT_EQ(written, Expected(path.replace_extension(".written"), written));
        EXPECT_EQ(WhatIsWrongWith(rtf), "");
        for (const char c : written)
            ASSERT_TRUE(c == '\r' || c == '\n' || (c >= 0x20 && c < 0x7F));
    }
}

TEST(RtfCorpus, MarksEachCharacterAlone) {
    for (const auto& path : RtfFiles()) {
        SCOPED_TRACE(path.filename());
        const std::string rtf = ReadBytes(path);
        const Document document = ReadRtf(rtf);
        const std::u32string text = Utf8ToCodePoints(document.text);
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] == U'\n')
                continue;
            Document expected = document;
            SetBackground(expected, {{i, i + 1}}, kSearchMark);
            const Document marked = ReadRtf(MarkRtf(rtf, {{i, i + 1}}));
            ASSERT_EQ(Describe(marked), Describe(expected)) << i;
        }
    }
}

TEST(RtfCorpus, SurvivesACutAtEachByte) {
    for (const auto& path : RtfFiles()) {
        const std::string rtf = ReadBytes(path);
        for (size_t length = 0; length < rtf.size(); ++length)
            ASSERT_EQ(length % kStride == 0 ? WhatIsWrongWith(std::string_view(rtf).substr(0, length))
                                            : WhatIsWrongWithText(std::string_view(rtf).substr(0, length)),
                      "")
                << path << " cut at " << length;
    }
}

TEST(RtfCorpus, SurvivesEachFlippedBit) {
    for (const auto& path : RtfFiles()) {
        std::string rtf = ReadBytes(path);
        if (rtf.size() > 800)
            continue;
        for (size_t bit = 0; bit < rtf.size() * 8; ++bit) {
            const char flip = static_cast<char>(1 << bit % 8);
            rtf[bit / 8] ^= flip;
            ASSERT_EQ(bit % kStride == 0 ? WhatIsWrongWith(rtf) : WhatIsWrongWithText(rtf), "")
                << path << " bit " << bit;
            rtf[bit / 8] ^= flip;
        }
    }
}

TEST(RtfCorpus, HoldsForWhatFuzzingFound) {
    for (const auto& path : CorpusFiles(LORE_TEST_DATA, "rtf"))
        EXPECT_EQ(WhatIsWrongWith(ReadBytes(path)), "") << path;
}

}  // namespace
}  // namespace lore
