#include "base/text.h"

#include <gtest/gtest.h>
#include <random>

#include "base/base64.h"
#include "base/guid.h"
#include "base/text_join.h"

namespace lore {
namespace {

TEST(Text, ReadsUtf8AsAWholeAndAnythingElseAsWindows1252) {
    const std::pair<std::string, std::u32string> cases[] = {
        {"caf\xC3\xA9", U"caf\u00E9"},           {"caf\xE9", U"caf\u00E9"},
        {"\xC3\xA9\xE9", U"\u00C3\u00A9\u00E9"}, {"\x80\x81\x8D\x8F\x90\x9D", U"\u20AC\u0081\u008D\u008F\u0090\u009D"},
        {"\xED\xA0\x80", U"\u00ED\u00A0\u20AC"}, {"\xF4\x90\x80\x80", U"\u00F4\u0090\u20AC\u20AC"},
        {"\xC0\x80", U"\u00C0\u20AC"},           {"\xF0\x9F\x97\xBC", U"\U0001F5FC"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(ToCodePoints(bytes), text);
}

TEST(Text, ChoosesWindows1252UnlessThatWouldReadAsUtf8) {
    using Case = std::pair<std::u32string, std::string>;
    for (const auto& [text, bytes] :
         {Case{U"caf\u00E9", "caf\xE9"}, Case{U"\u00C3\u00A9", "\xC3\x83\xC2\xA9"}, Case{U"\u0416", "\xD0\x96"},
          Case{U"\u20AC 5", "\x80 5"}, Case{U"plain", "plain"},
          Case{std::u32string(U"\0\u00E9", 2), std::string("\0\xE9", 2)}, Case{U"\u00E9\u0416", "\xC3\xA9\xD0\x96"}})
        EXPECT_EQ(FromUtf8(CodePointsToUtf8(text)), bytes);
    EXPECT_EQ(FromUtf8("\xC3\xA9\xE9"), "\xC3\xA9\xE9") << "no UTF-8 stays";
    EXPECT_TRUE(IsSameText("\xE9", "\xC3\xA9") && IsSameText("a", "a") && !IsSameText("\xE9", "\xC3\xA8"));
}

TEST(Text, LosesNothingInEitherDirection) {
    std::mt19937 random(3);
    const char32_t pool[] = {U'a',      U'\u00C3',     U'\u00A9', U'\u0081', U'\u20AC',
                             U'\u0416', U'\U0001F5FC', U'\u00E9', U'\u3042'};
    for (int round = 0; round < 20000; ++round) {
        std::u32string text;
        for (size_t n = random() % 6; n > 0; --n)
            text += pool[random() % std::size(pool)];
        ASSERT_EQ(ToCodePoints(FromUtf8(CodePointsToUtf8(text))), text);
        std::string bytes;
        for (size_t n = random() % 6; n > 0; --n)
            bytes += static_cast<char>(random() % 2 ? random() % 256 : 0xC2 + random() % 4);
        ASSERT_EQ(ToCodePoints(FromUtf8(ToUtf8(bytes))), ToCodePoints(bytes));
    }
}

TEST(Text, WritesAndReadsUtf8AtEachOfItsBorders) {
    using Border = std::pair<char32_t, std::string>;
    for (const auto& [character, bytes] :
         {Border{0x7F, "\x7F"}, Border{0x80, "\xC2\x80"}, Border{0x7FF, "\xDF\xBF"}, Border{0x800, "\xE0\xA0\x80"},
          Border{0xD7FF, "\xED\x9F\xBF"}, Border{0xE000, "\xEE\x80\x80"}, Border{0xFFFF, "\xEF\xBF\xBF"},
          Border{0x10000, "\xF0\x90\x80\x80"}, Border{0x3FFFF, "\xF0\xBF\xBF\xBF"}, Border{0x40000, "\xF1\x80\x80\x80"},
          Border{0x10FFFF, "\xF4\x8F\xBF\xBF"}}) {
        EXPECT_EQ(CodePointsToUtf8(std::u32string(1, character)), bytes);
        EXPECT_EQ(Utf8ToCodePoints(bytes), std::u32string(1, character)) << bytes;
        EXPECT_TRUE(IsValidUtf8("a long line of ASCII " + bytes));
        EXPECT_EQ(FromUtf8(bytes), bytes) << bytes;
        EXPECT_FALSE(bytes.size() > 1 && IsValidUtf8(bytes.substr(0, bytes.size() - 1))) << bytes;
    }
    for (const char32_t none : {0xD800, 0xDFFF, 0x110000})
        EXPECT_EQ(CodePointsToUtf8(std::u32string(1, none)), "\xEF\xBF\xBD");
    for (const std::string bytes :
         {"\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\x80", "\xBF", "\xC3", "\xE3\x81z", "\xF0\x9F\x97\xC0"})
        EXPECT_FALSE(IsValidUtf8("seven + " + bytes)) << bytes;
    // Each byte that is none is a character of its own, and what follows is read on.
    EXPECT_EQ(Utf8ToCodePoints("a\xE3\x81z"), U"a\uFFFD\uFFFDz");
}

TEST(Text, ReadsNumbersAsFarAsTheyGo) {
    using Whole = std::pair<const char*, int>;
    for (const auto& [text, value] :
         {Whole{"12", 12}, Whole{" \t\n-7x", -7}, Whole{"+5", 5}, Whole{"+-5", 0}, Whole{"--5", 0}, Whole{"", 0},
          Whole{"x1", 0}, Whole{"000000", 0}, Whole{"-0012.9", -12}, Whole{"/1", 0}, Whole{"1:", 1},
          Whole{"2147483647", 2147483647}, Whole{"2147483648", 2147483647}, Whole{"-2147483648", -2147483647 - 1},
          Whole{"-99999999999999999999999", -2147483647 - 1}, Whole{"99999999999999999999999", 2147483647}})
        EXPECT_EQ(ParseInt(text), value) << text;
    const std::pair<const char*, double> real[] = {{"1.5", 1.5}, {" +2.25e1x", 22.5}, {"-.5", -0.5}, {"-", 0}, {"", 0},
                                                   {"nan", 0},   {"-inf", 0},         {"1,5", 1},    {"-x", 0}};
    for (const auto& [text, value] : real)
        EXPECT_EQ(ParseDouble(text), value) << text;
}

TEST(Text, LowersAllLettersOfTheCharacterSet) {
    EXPECT_EQ(ToLower("\xC4\xD6\x8A\x9F ABC \xD7"), "\xE4\xF6\x9A\xFF abc \xD7");
    EXPECT_EQ(ToLower("\xC3\x84\xD0\x96"), "\xC3\xA4\xD0\xB6");
    EXPECT_EQ(ToUpper("\xFF\xDF\xE4\x83"), "\x9F\xDF\xC4\x83") << "a letter without a partner in the set stays";
    EXPECT_EQ(ToUpper("M\xC3\xBCller"), "M\xC3\x9CLLER");
    EXPECT_EQ(ToLower("@AMZ[`az{"), "@amz[`az{");
    EXPECT_EQ(ToLower("\u00C4AZ\U00010400"), "\u00E4az\U00010428");
    EXPECT_LT(CompareNoCase("apple", "Banana"), 0);
    EXPECT_TRUE(EqualNoCase("\xC4hre", "\xE4HRE"));
    EXPECT_TRUE(EqualNoCase("\xC4hre", "\u00e4HRE"));
    EXPECT_FALSE(EqualNoCase("\xC4hre", "\u00f6hre"));
}

TEST(Text, CountsCharactersByTheSameRule) {
    const std::string utf8 = "a\xC3\xA9\xE3\x81\x82z";
    EXPECT_EQ(CharacterCount(utf8), 4u);
    EXPECT_EQ(ByteOfCharacter(utf8, 2), 3u);
    EXPECT_EQ(ByteOfCharacter(utf8, 9), utf8.size());
    EXPECT_EQ(CharacterOfByte(utf8, 6), 3u);
    EXPECT_EQ(CharacterCount("a\xE9z"), 3u);
    EXPECT_EQ(ByteOfCharacter("a\xE9z", 2), 2u);
}

TEST(Text, KnowsWordCharacters) {
    for (const char32_t c : {U'a', U'9', U'_', U'\u00E9', U'\u0301', U'\u0436', U'\u3042', U'\U00010400'})
        EXPECT_TRUE(IsWordCharacter(c)) << static_cast<uint32_t>(c);
    for (const char32_t c : {U' ', U'-', U'\'', U'\u00A0', U'\n', U'\u2014'})
        EXPECT_FALSE(IsWordCharacter(c)) << static_cast<uint32_t>(c);
    EXPECT_EQ(FoldCase(U'\u00DF'), U'\u00DF') << "one character stays one";
    EXPECT_EQ(FoldCase(U'\u03A3'), FoldCase(U'\u03C2'));
}

TEST(Text, CutsPathsAtBothSeparators) {
    EXPECT_EQ(LastPathComponent("C:\\Data Files\\a.b\\0000012.jpg"), "0000012.jpg");
    EXPECT_EQ(LastPathComponent("../x\\y/z"), "z");
    EXPECT_EQ(FileExtension("a.b/c"), "");
    EXPECT_EQ(FileExtension("Notes.tar.GZ"), "GZ");
    EXPECT_EQ(Trim(" \t a b \r\n"), "a b");
    EXPECT_EQ(Trim("\v\f"), "");
    EXPECT_EQ(TrimLeft(" a "), "a ");
    EXPECT_EQ(TrimRight(" a "), " a");
    EXPECT_EQ(ReplaceAll("aXXbX", "X", "XX"), "aXXXXbXX");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(CleanText(std::string("a\0b\032c", 5)), "abc");
}

TEST(TextJoin, TwoTextsReadAsOneWhateverTheirForms) {
    struct Case {
        std::string first, second, joined;
    };
    // Both Windows-1252, both UTF-8, one of each; at last the whole has a place in Windows-1252.
    for (const Case& c :
         {Case{"", "", ""}, Case{"fog, ", "sea", "fog, sea"}, Case{"caf\xE9, ", "\xFC", "caf\xE9, \xFC"},
          Case{"\xC5\x81, ", "\xC3\xA9", "\xC5\x81, \xC3\xA9"}, Case{"caf\xE9, ", "\xC5\x81", "caf\xC3\xA9, \xC5\x81"},
          Case{"\xC5\x81, ", "caf\xE9", "\xC5\x81, caf\xC3\xA9"}, Case{"fog, ", "\xC5\x81", "fog, \xC5\x81"},
          Case{"caf\xE9, ", "\xC3\xBC", "caf\xE9, \xFC"}}) {
        EXPECT_EQ(JoinTexts(c.first, c.second), c.joined);
        EXPECT_EQ(ToUtf8(JoinTexts(c.first, c.second)), ToUtf8(c.first) + ToUtf8(c.second));
    }
}

TEST(Guid, PrintsItsThirdGroupInLowerCase) {
    EXPECT_EQ(FormatGuid({0xAB, 0xCD, 0xEF, 1, 2, 0xFA, 0xAB, 0xCD, 0xEF, 0xAA, 0xBB, 6, 7, 8, 9, 0xFF}),
              "{ABCDEF01-02FA-abcd-EFAA-BB06070809FF}");
}

TEST(Base64, PadsWhatIsLeftOfThreeBytes) {
    for (const auto& [bytes, letters] : {std::pair("", ""), std::pair("a", "YQ=="), std::pair("ab", "YWI="),
                                         std::pair("ab\xFF", "YWL/"), std::pair("abc>", "YWJjPg==")}) {
        std::string text = "+";
        AppendBase64(text, bytes);
        EXPECT_EQ(text, std::string("+") + letters);
    }
}

}  // namespace
}  // namespace lore
