#include <ctime>
#include <gtest/gtest.h>

#include "rtf/mark.h"
#include "rtf/rtf.h"
#include "rtf/rtf_files.h"

namespace lore {
namespace {

std::string Repeat(std::string_view part, size_t times) {
    std::string all;
    all.reserve(part.size() * times);
    for (size_t i = 0; i < times; ++i)
        all += part;
    return all;
}

#if defined(LORE_MILLION)
constexpr size_t kMillion = LORE_MILLION;  // fewer where not the time but each line counts
#else
constexpr size_t kMillion = 1'000'000;
#endif
/// Far above what is needed, far below what a step that isn't linear would take. Seconds of processor time.
constexpr double kLimit = 60;

void ExpectQuickly(const std::string& rtf, std::string_view tail) {
    const std::clock_t begin = std::clock();
    const std::string text = PlainText(rtf);
    EXPECT_TRUE(text.ends_with(tail)) << text.substr(text.size() - std::min<size_t>(text.size(), 20));
    const Document document = ReadRtf(rtf);
    EXPECT_TRUE(document.text == text);
    EXPECT_TRUE(PlainText(WriteRtf(document)) == text);
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, kLimit);
}

TEST(HostileRtf, NestsTenMillionGroups) {
    ExpectQuickly(
        Rtf("before " + std::string(10 * kMillion, '{') + "deep" + std::string(10 * kMillion, '}') + " after"),
        "before deep after");
    ExpectQuickly(Rtf("before " + std::string(10 * kMillion, '{') + "deep"), "before deep");
    ExpectQuickly(Rtf(Repeat("{\\b ", kMillion) + "x" + std::string(kMillion, '}') + "y"), "xy");
    ExpectQuickly(Rtf(Repeat("{\\upr{a}{\\*\\ud ", 2 * kMillion / 10) + "x" + Repeat("}}", 2 * kMillion / 10) + "y"),
                  "y");
    ExpectQuickly(Rtf(Repeat("{\\*\\pn\\pndec", kMillion) + std::string(kMillion, '}') + "y"), "y");
    ExpectQuickly(Rtf(Repeat("{\\field{\\fldrslt ", 3 * kMillion / 10) + std::string(6 * kMillion / 10, '}') + "y"),
                  "y");
}

TEST(HostileRtf, HoldsAMillionOfEachTableEntry) {
    std::string fonts = "{\\fonttbl";
    for (size_t i = 0; i < kMillion; ++i)
        fonts += "{\\f" + std::to_string(i) + " F;}";
    ExpectQuickly(Rtf(fonts + "}\\f999999 x"), "x");
    ExpectQuickly(Rtf("{\\colortbl" + Repeat("\\red1;", kMillion) + "}\\cf999999 x"), "x");
    ExpectQuickly(Rtf("{\\*\\listtable" + Repeat("{\\list{\\listlevel\\levelnfc0}\\listid1}", kMillion / 10) + "}x"),
                  "x");
    std::string pages;
    for (size_t i = 1; i < kMillion / 10; ++i)
        pages += "\\ansicpg" + std::to_string(i) + "\\'e9";
    ExpectQuickly(Rtf(pages + "x"), "x");
    ExpectQuickly(Rtf(Repeat("\\ansicpg1250\\'b3\\ansicpg1253\\'e1", kMillion / 10) + "x"), "x");
}

TEST(HostileRtf, HoldsAMillionFields) {
    ExpectQuickly(Rtf(Repeat("{\\field{\\*\\fldinst HYPERLINK \"a\"}{\\fldrslt b}}", kMillion) + "x"), "bbx");
    ExpectQuickly(Rtf("{\\field{\\*\\fldinst HYPERLINK \"" + std::string(10 * kMillion, 'a') + "\"}{\\fldrslt " +
                      Repeat("\\par b", kMillion / 10) + "}}x"),
                  "\nbx");
    ExpectQuickly(Rtf(Repeat("{\\object{\\result a", kMillion) + std::string(2 * kMillion, '}') + "x"), "]] x");
    ExpectQuickly(Rtf("{\\object" + Repeat("{\\result a}", kMillion / 4) + "{\\result " +
                      Repeat("{\\object b}", kMillion / 4) + "}}x"),
                  "[a] x");
    ExpectQuickly(Rtf(Repeat("{\\footnote a}", kMillion) + "x"), "[a] x");
    ExpectQuickly(Rtf(Repeat("{\\v a}b", kMillion) + Repeat("{\\field{\\*\\fldinst SYMBOL 149}}", kMillion / 10) + "x"),
                  "\u2022x");
    ExpectQuickly(Rtf("{" + Repeat("\\footnote ", kMillion) + "x}"), "[x]");
    ExpectQuickly(Rtf(Repeat("{\\shp{\\*\\shpinst", kMillion) + std::string(2 * kMillion, '}') + "x"), "x");
}

TEST(HostileRtf, HoldsHugeTables) {
    ExpectQuickly(Rtf("\\trowd" + Repeat("\\cellx100", kMillion / 10) + "\\intbl " + Repeat("a\\cell ", kMillion / 10) +
                      "\\row x"),
                  "\nx");
    ExpectQuickly(Rtf("\\trowd" + Repeat("\\cellx100", 100) + Repeat("\\row", 3 * kMillion / 10) + " x"), "\nx");
    ExpectQuickly(Rtf(Repeat("\\cellx1\\row", 3 * kMillion / 10) + " x"), "\nx");
    ExpectQuickly(Rtf(Repeat("\\intbl\\itap999999 a\\nestcell\\pard b\\par ", kMillion / 10) + "x"), "b\nx");
}

TEST(HostileRtf, HoldsChangesOfFormatAtEachCharacter) {
    ExpectQuickly(Rtf(Repeat("\\b a\\i b\\b0 c\\i0 d", 3 * kMillion / 10)), "abcd");
    ExpectQuickly(Rtf(Repeat("\\par", kMillion) + " x"), "\nx");
    ExpectQuickly(Rtf(Repeat("\\ls1\\pndec a\\par\\pard b\\par", 2 * kMillion / 10) + " x"), "\nx");
}

TEST(HostileRtf, KeepsTheTextBehindOddPictures) {
    ExpectQuickly(Rtf("{\\pict\\pngblip " + std::string(4 * kMillion + 1, 'f') + "}x"), "x");
    ExpectQuickly(Rtf("{\\pict\\pngblip\\bin2147483647 00}x"), "x");
    ExpectQuickly(Rtf("{\\pict\\picw2147483648\\pich-99999999999\\wmetafile8 00}x"), "x");
    const Document document =
        ReadRtf(Rtf("{\\pict\\pngblip 01 02 zz 3}{\\pict\\jpegblip\\bin3 {\\}}{\\pict\\pngblip}"));
    ASSERT_EQ(document.pictures.size(), 2u);
    EXPECT_EQ(document.pictures[0].bytes, "\x01\x02");
    EXPECT_EQ(document.pictures[1].bytes, "{\\}");
}

TEST(HostileRtf, MarksAMillionHits) {
    const std::string rtf = Rtf(Repeat("\\b ab\\b0 c\\par ", 3 * kMillion / 10));
    std::vector<TextRange> hits;
    for (size_t i = 0; i < 3 * kMillion / 10; ++i)
        hits.push_back({i * 4 + 1, i * 4 + 3});
    const std::clock_t begin = std::clock();
    const Document document = ReadRtf(MarkRtf(rtf, hits));
    EXPECT_EQ(document.runs.size(), hits.size() * 3);
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, kLimit);
}

}  // namespace
}  // namespace lore
