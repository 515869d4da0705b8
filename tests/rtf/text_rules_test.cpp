#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "rtf/rtf.h"
#include "rtf/rtf_check.h"
#include "rtf/rtf_files.h"

namespace lore {
namespace {

struct Case {
    std::string body;
    std::string_view text;
};

void ExpectTexts(std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
        EXPECT_EQ(PlainText(Rtf(c.body)), c.text) << c.body;
        EXPECT_EQ(WhatIsWrongWith(Rtf(c.body)), "") << c.body;
    }
}

TEST(RtfText, PutsALineFeedBetweenParagraphsOnly) {
    ExpectTexts({{"a\\par b", "a\nb"},
                 {"a\\par b\\par", "a\nb"},
                 {"a\\par b\\par\\par", "a\nb\n"},
                 {"\\par a", "\na"},
                 {"\\par", ""},
                 {"a\\par{\\b\\pard }", "a"},
                 {"a\\\r\nb\\\nc", "a\nb\nc"},
                 {"a\r\nb\nc", "abc"},
                 {"a\\page", "a\n"},
                 {"a\\sect b\\column c", "a\nb\nc"},
                 {"a\\line\\par b", "a\n\nb"},
                 {"a\\par{\\pict\\pngblip 00}\\par", "a\n"},
                 {"a\\par{\\v hidden\\par}", "a"}});
}

TEST(RtfText, EndsCellsWithTabsAndRowsWithLineFeeds) {
    ExpectTexts({
        {"\\trowd\\cellx1\\cellx2\\intbl a\\cell b\\cell\\row", "a\tb\t\n"},
        {"\\trowd\\cellx1\\intbl a\\cell\\row\\pard\\par", "a\t\n"},
        {"\\trowd\\cellx1\\intbl a\\cell\\row\\pard z\\par", "a\t\nz"},
        {"\\intbl a\\par b\\cell c\\cell", "a\nb\tc\t"},
        {"\\intbl a\\cell\\pard b\\par", "a\tb"},
        {"\\intbl\\itap2 a\\nestcell{\\*\\nesttableprops\\trowd\\cellx9\\nestrow}{\\nonesttables\\par}\\cell\\row",
         "a\t\n\t\n"},
    });
}

TEST(RtfText, LeavesOutWhatIsNotShown) {
    ExpectTexts({{"a{\\v b}c\\v d\\v0 e\\v1 f\\plain g", "aceg"},
                 {"a{\\deleted b}c{\\mvf d}{\\mvt e}", "ace"},
                 {"a{\\*\\unknown b{c}\\}d}e", "ae"},
                 {"a{\\unknown b}c", "abc"},
                 {"{\\*\\b a}b", "b"},
                 {"{\\pntext 1.\\tab}a{\\listtext 2.}", "a"},
                 {"{\\header h}{\\footer f}{\\info{\\title t}}{\\stylesheet{s;}}a", "a"},
                 {"{\\field{\\*\\fldinst HYPERLINK \"u\"}{\\fldrslt a}}", "a"},
                 {"{\\field{\\*\\fldinst IF {\\field{\\*\\fldinst X}{\\fldrslt no}}}{\\fldrslt a}}", "a"},
                 {"{\\object{\\*\\objdata 00}b{\\result\\par\\~{\\pict\\pngblip 00}}}{\\object\\result b}a", "a"},
                 {"a{\\v{\\shp{\\shptxt\\plain b}}{\\object{\\result\\v0 c}}}{\\deleted{\\do{\\dptxbxtext d}}}", "a"},
                 {"{\\shp{\\*\\shpinst{\\sp{\\sn b}{\\sv c}}{\\shptxt  {\\v d}\\par}}{\\shprslt e}}a", "a"},
                 {"a{\\mmath{\\*\\moMath{\\mr b}}}", "a"},
                 {"{\\upr{a}{\\*\\ud{\\u12354?}}}", "\xE3\x81\x82"},
                 {"{\\bkmkstart m}a{\\*\\bkmkend m}", "a"},
                 {"{\\xe{\\v i}}a", "a"}});
}

TEST(RtfText, WhatStandsBesideTheBodyIsReadInBrackets) {
    ExpectTexts({
        {"a{\\footnote b}.", "a [b]."},
        {"a{\\super\\chftn{\\footnote\\pard\\plain{\\super\\chftn}  b\\par c\\par}}d", "a [b\nc] d"},
        {"a {\\*\\footnote\\chftn\\~\\pard b\\par}{\\footnote\\ftnalt c}(d)", "a [b] [c](d)"},
        {"a{\\footnote{\\~} \\tab\\par}b{\\v{\\footnote c}}", "ab"},
        {"a{\\footnote b{\\footnote c}d", "a [b [c] d]"},
        {"a{\\footnote b\\par{\\footnote c}d}", "a [b\n[c] d]"},
        {"a{b\\footnote c\\footnote d}e", "ab [cd] e"},
        {"a\\par{\\footnote b}\\par", "a\n[b]"},
        {"a\\tab{\\footnote b}Z{\\footnote c}7", "a\t[b] Z [c] 7"},
        {"({\\footnote b})@{\\footnote c}:", "( [b])@ [c]:"},
        {"{\\*\\atnid b}a{\\*\\annotation{\\*\\atndate 5}b}c", "a [b] c"},
        {"{\\shp{\\*\\shpinst\\shpleft0{\\sp{\\sn x}{\\sv y}}{\\shptxt b\\par}}{\\shprslt c}}a", "[b] a"},
        {"{\\shpgrp{\\*\\shpinst{\\shp{\\*\\shpinst{\\shptxt a}}}{\\shp{\\*\\shpinst{\\shptxt b}}}}}", "[a] [b]"},
        {"{\\*\\do\\dptxbx{\\dptxbxtext a}}b{\\object{\\footnote c}}", "[a] b"},
        {"a{\\object{\\*\\objdata 00}{\\result{\\pict\\pngblip 01}b{\\object{\\result c}}\\par}{\\*\\x}}d",
         "a [b [c]] d"},
        {"\\trowd\\cellx900\\intbl a{\\footnote\\trowd\\cellx1\\cellx2\\intbl b\\cell c\\cell\\row}\\cell\\row",
         "a [b\tc]\t\n"},
    });
}

TEST(RtfText, FieldsOfSymbolsGiveTheirCharacter) {
    const auto field = [](const std::string& instruction, const std::string& result = "\\f3") {
        return "{\\field{\\*\\fldinst{\\b " + instruction + "}}{\\fldrslt{" + result + "}}}";
    };
    ExpectTexts({
        {field("SYMBOL 183 \\\\f \"Symbol\" \\\\s 10"), "\u2022"},
        {"a" + field("symbol 61537 \\\\h \\\\f Symbol") + "b", "a\u03b1b"},
        {field("SYMBOL 0xF0FC \\\\f Wingdings") + field("SYMBOL 33 \\\\f \"Wingdings 2\""), "\u2713\uf021"},
        {field("SYMBOL 8364 \\\\u") + field("SYMBOL 147"), "\u20ac\u201c"},
        {field("SYMBOL 97 \\\\f Symbol") + field("SYMBOL 160 \\\\f symbol") + field("SYMBOL 255 \\\\f Symbol"),
         "\u03b1\u20ac\uf0ff"},
        {field("SYMBOL 0XF041") + field("SYMBOL 33 \\\\f Wingdings") + field("SYMBOL 33 \\\\f Webdings"),
         "\uf041\uf021\uf021"},
        {field("SYMBOL 1114112") + field("SYMBOL 57344 \\\\f Arial"), "\ue000"},
        {field("SYMBOL 183 \\\\f Symbol", "x"), "x"},
        {"{\\v" + field("SYMBOL 183") + "}" + field("SYMBOL") + field("SYMBOL 9") + field("SYMBOL 55296"), ""},
    });
}

TEST(RtfText, ReadsUnicodeWithItsFallback) {
    ExpectTexts({{"\\u233?x", "\xC3\xA9x"},
                 {"\\u233 ?x", "\xC3\xA9x"},
                 {"\\u233\\'e9x", "\xC3\xA9x"},
                 {"\\uc2\\u233\\'81\\'40x", "\xC3\xA9x"},
                 {"\\uc0\\u233x", "\xC3\xA9x"},
                 {"{\\uc2 \\u233??}\\u233??", "\xC3\xA9\xC3\xA9?"},
                 {"\\u233\\par x", "\xC3\xA9x"},
                 {"\\u233\\bin2 \\}x", "\xC3\xA9x"},
                 {"\\u233\\{x", "\xC3\xA9x"},
                 {"{\\u233}x", "\xC3\xA9x"},
                 {"\\u233\r\n?x", "\xC3\xA9x"},
                 {"\\u-10179?\\u-8704?", "\xF0\x9F\x98\x80"},
                 {"\\uc0\\u55357\\u56832", "\xF0\x9F\x98\x80"},
                 {"\\uc0 \\u55357\\uc1 \\u56832\\'3fx", "\xF0\x9F\x98\x80x"},
                 {"\\u-10179?x", "\xEF\xBF\xBDx"},
                 {"\\u-8704?x", "\xEF\xBF\xBDx"},
                 {"\\u-10179?\\u-10179?\\u-8704?", "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
                 {"{\\u-10179?}\\u-8704?", "\xF0\x9F\x98\x80"},
                 {"\\uc0\\u55357{}\\u56832{}a\\u55357{}\\uc0\r\n\\u56832{}b", "\U0001F600a\U0001F600b"},
                 {"{\\uc0\\u55357{}}{\\uc0\\u56832{}}a", "\U0001F600a"},
                 {"\\u-10187?\\b\\u-8930?x{\\*\\kept a}\\u-10187?{\\*\\kept a}\\u-8930?y", "\U0001D51Ex\U0001D51Ey"},
                 {"\\u-10187?\\par\\u-8930?\\u-10187?\\'e9\\u-8930?", "\uFFFD\n\uFFFD\uFFFD\u00e9\uFFFD"},
                 {"{\\v\\u-10187?}\\u-8930?a\\u-10187?{\\footnote\\u-8930?}b", "\uFFFDa\uFFFD [\uFFFD] b"},
                 {"{\\footnote a\\u-10187?}\\u-8930?", "[a\uFFFD] \uFFFD"},
                 {"\\u99999999999999999999?x", "\xEF\xBF\xBDx"},
                 {"\\u0?x\\u26?y", "xy"},
                 {"\\uc-5\\u233x\\uc999999\\u233", "\xC3\xA9x\xC3\xA9"}});
}

TEST(RtfText, ReadsOddEscapesWithoutLosingWhatFollows) {
    ExpectTexts({{"a\\'4}b", "a"},
                 {"a\\'zzb", "azzb"},
                 {"a\\bin-1 b", "ab"},
                 {"a\\bin2147483647 b", "ab"},
                 {"a\\bin1000000000000000000000000000000 b", "ab"},
                 {"a\\bin3 }}}b", "ab"},
                 {"a\\-b\\~c\\_d", "a\u00adb\u00a0c\u2011d"},
                 {"\\b1a\\b-1b", "ab"},
                 {"\\averyveryveryverylongcontrolwordthatnobodyknows a", "a"},
                 {"{\\*}a{\\* b}c", "a bc"},
                 {"\\*\\unknown a", "a"},
                 {"{\\fonttbl{\\f0 A;}\\par}x", "x"},
                 {"\\fonttbl\\info\\pict x", "x"},
                 {"{{{{a}}b", "ab"}});
}

TEST(RtfText, NeedsTheHeadOfADocument) {
    for (std::string_view bytes : {"", "plain", "{", "{\\rt", "\\rtf1 a", "x{\\rtf1 a}"})
        EXPECT_EQ(PlainText(bytes), "") << bytes;
    for (std::string_view bytes :
         {"{\\rtf1 a}", "{\\rtf a", " \r\n{\\rtf1 a}", "\xEF\xBB\xBF{\\rtf1 a}", "{\\rtf1 a}}}b"})
        EXPECT_EQ(PlainText(bytes), "a") << bytes;
    EXPECT_EQ(WithCrLf("a\nb"), "a\r\nb");
}

TEST(RtfText, TakesCodePagesFromFontsAndDocument) {
    const struct {
        std::string_view rtf, text;
    } cases[] = {
        {"{\\rtf1\\ansi\\ansicpg1251 \\'cf}", "\xD0\x9F"},
        {"{\\rtf1\\ansi\\ansicpg0 \\'e9}", "\xC3\xA9"},
        {"{\\rtf1\\mac \\'8e}", "\xC3\xA9"},
        {"{\\rtf1\\pc \\'82}", "\xC3\xA9"},
        {"{\\rtf1\\pca \\'d5}", "\xC4\xB1"},
        {"{\\rtf1\\ansi\\ansicpg99999 \\'e9}", "\xC3\xA9"},
        {"{\\rtf1\\ansi\\ansicpg28592 \\'b3\\'f3d\\'bc}", "\u0142\u00f3d\u017a"},
        {"{\\rtf1\\ansi\\ansicpg28591 \\'93\\'e9}", "\u201c\u00e9"},
        {"{\\rtf1\\ansi\\ansicpg54936 \\'c4\\'e3a\\'81\\'30\\'84\\'36\\'94\\'39\\'fc\\'36\\'c4}",
         "\u4f60a\u00a5\U0001F600\uFFFD"},
        {"{\\rtf1\\ansi\\ansicpg51932 \\'a4\\'a2\\'8e\\'b1\\'8f\\'b0\\'a1x}", "\u3042\uff71\u4e02x"},
        {"{\\rtf1\\ansi\\ansicpg51949 \\'b0\\'a1}", "\uac00"},
        {"{\\rtf1\\ansi\\ansicpg28592 \\'b1}", "\u0105"},
        {"{\\rtf1\\ansi\\ansicpg10001 \\'8a\\'bf\\'e7\\'90\\'b1}", "\u6f22\u9005\uff71"},
        {"{\\rtf1\\ansi\\ansicpg20932 \\'b4\\'c1\\'a0x}", "\u6f22\uFFFDx"},
        {"{\\rtf1\\ansi\\ansicpg65001 \\'f0\\'9f\\'98\\'80\\'80}", "\U0001F600\uFFFD"},
        {"{\\rtf1\\ansi\\ansicpg936 \\'80x}", "\u20acx"},
        {"{\\rtf1\\ansi\\ansicpg65001 \xC3\xA9\\'c3\\'a9}", "\xC3\xA9\xC3\xA9"},
        {"{\\rtf1\\ansi\\ansicpg1251\\deff1{\\fonttbl{\\f1\\fcharset161 G;}{\\f2\\fcharset2 S;}}\\'e1\\f2\\'e1}",
         "\xCE\xB1\xD0\xB1"},
        {"{\\rtf1{\\fonttbl{\\f1\\fcharset2 SYMBOL}{\\f2\\fcharset2 Wingdings;}}\\f1 "
         "aB\\'b7\\\\\\{\\~\\'a0\\u-3999\\'61{\\v a}"
         "\\u97 a\\'0a\\'ff\\f2 J \\'21{\\footnote\\'fc}\\plain a}",
         "\u03b1\u0392\u2022\u2234{\u00a0\u20ac\u03b1a\n\uf0ff\u263a \uf021 [\u2713] a"},
        {"{\\rtf1\\deff1{\\fonttbl{\\f1 Symbol;}{\\f2\\fcharset2 Symbol;}{\\f2 Arial;}}a\\f2 b\\f3 c}", "abc"},
        {"{\\rtf1\\deff1{\\fonttbl{\\f1\\fcharset2 Symbol;}}a{\\field{\\*\\fldinst HYPERLINK \"a\"}{\\fldrslt b}}\\f9 "
         "c}",
         "\u03b1\u03b2c"},
        {"{\\rtf1\\ansi\\ansicpg932{\\fonttbl{\\f0\\fcharset0 C;}{\\f1\\fcharset1 D;}}\\f0\\'e9t\\'e9\\f1\\'93\\'fa}",
         "\u00e9t\u00e9\u65e5"},
        {"{\\rtf1\\ansi\\ansicpg1251{\\fonttbl{\\f0\\fcharset204 C;}{\\f1\\fcharset0 C;}}\\f0\\'cf\\f1\\'e9}",
         "\u041f\u00e9"},
        {"{\\rtf1{\\fonttbl{\\f1\\fcharset128 J;}}\\f1\\'93{\\b\\'fd}\\'93\\'fa}",
         "\xEF\xBF\xBD\xEF\xBF\xBD\xE6\x97\xA5"},
        {"{\\rtf1{\\fonttbl{\\f1\\fcharset128 J;}}\\f1\\'83Ab}", "\u30a2b"},
        {"{\\rtf1{\\fonttbl{\\f1\\fcharset128 J;}}\\f1\\'83}", "\xEF\xBF\xBD"},
        {"{\\rtf1{\\fonttbl{\\f1\\fcharset128 J;}}\\f1\\'83\\\\\\'83t}", "\xE3\x82\xBD\xE3\x83\x95"},
        {"{\\rtf1\\ansicpg65001 \\'ffword\\'e3\\'81word}", "\xEF\xBF\xBDword\xEF\xBF\xBDword"},
        {"{\\rtf1\\ansicpg51932 \\'8fword}", "\xEF\xBF\xBDword"},
        {"{\\rtf1\\ansicpg54936 \\'81\\'30 x}", "\xEF\xBF\xBD x"},
        {"{\\rtf1\\'81\\'8d\\'80}", "\xC2\x81\xC2\x8D\xE2\x82\xAC"},
        {"{\\rtf1{\\pict\\pc}{\\field{\\*\\fldinst\\ansicpg437\\deff1}}\\'82}", "\xE2\x80\x9A"},
        {"{\\rtf1{\\pict{\\shppict}}{\\nonshppict a}}", "a"},
        {"{\\rtf1{\\object{\\upr{a}{\\*\\ud b}}}c}", "c"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PlainText(c.rtf), c.text) << c.rtf;
        EXPECT_EQ(WhatIsWrongWith(c.rtf), "") << c.rtf;
    }
}

TEST(RtfText, ReadsTheFirstSixtyCodePagesOfAFileAndTheRestAsWestern) {
    for (const auto& [others, text] : {std::pair(60, "\xD0\x9F"), std::pair(70, "\xC3\x8F")}) {
        std::string rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0\\cpg1251 C;}";
        std::string used, expected;
        for (int i = 1; i <= others; ++i) {
            rtf += "{\\f" + std::to_string(i) + "\\cpg" + std::to_string(60000 + i) + " F;}";
            used += "\\f" + std::to_string(i) + "\\'e1";
            expected += "\xC3\xA1";
        }
        EXPECT_EQ(PlainText(rtf + "}" + used + "\\f0\\'cf}"), expected + text);
    }
}

TEST(CleanRtf, BinaryDataKeepTheirPlaceWithoutTheBytesThatCutARecord) {
    using namespace std::string_literals;
    const std::string binary = "\0}\x1A\\"s;
    const std::pair<std::string, std::string> cases[] = {
        {"{\\rtf1 a\0b\x1A{\\pict\\picw10\\bin4 "s + binary + "}c}", "{\\rtf1 ab{\\pict\\picw10 007d1a5c}c}"},
        {"{\\rtf1 a\0b\x1A}"s, "{\\rtf1 ab}"},
        {"{\\rtf1\\bin2 ab\\bin1 \x1Ax}", "{\\rtf1 6162 1ax}"},
        {"{\\rtf1\\bin0 a\\bin99 \0b}"s, "{\\rtf1\\bin0 a\\bin99 b}"},
        {"{\\rtf1 bin\\'1a\0\\bing4 x}"s, "{\\rtf1 bin\\'1a\\bing4 x}"},
    };
    for (const auto& [bytes, wanted] : cases)
        EXPECT_EQ(CleanRtf(bytes), wanted);
    const Document document = ReadRtf(CleanRtf("{\\rtf1 a{\\pict\\pngblip\\bin4 " + binary + "}c}"));
    ASSERT_EQ(document.pictures.size(), 1U);
    EXPECT_EQ(document.pictures[0].bytes, binary);
    EXPECT_TRUE(document.text.starts_with('a') && document.text.ends_with('c')) << document.text;
}

}  // namespace
}  // namespace lore
