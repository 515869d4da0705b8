#include <gtest/gtest.h>

#include "base/text.h"
#include "rtf/document_builder.h"
#include "rtf/field.h"
#include "rtf/find.h"
#include "rtf/rtf.h"
#include "rtf/rtf_files.h"
#include "support/each.h"

namespace lore {
namespace {

TEST(WriteRtf, BytesThatAreNoTextBecomeReplacementCharacters) {
    for (const std::string bytes :
         {"\x80", "\xC3", "\xC0\x80", "\xE2\x82", "\xE2\x28\xA1", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x9F\x98",
          "\xF0\x9F", "\xF0", "\xF0\x28\x8C\xBC", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF8", "\xF0\x9F\x98\x28"}) {
        for (const std::string behind : {"", "b"}) {
            DocumentBuilder builder;
            builder.AddText("a" + bytes + behind, {});
            const std::string text = ReadRtf(WriteRtf(builder.Finish({}, false))).text;
            EXPECT_TRUE(IsValidUtf8(text) && text.starts_with("a\uFFFD") && text.ends_with(behind)) << text;
            EXPECT_FALSE(TextFinder("A", false).FindAll(bytes + behind + "a").empty());
        }
    }
}

TEST(DocumentBuilder, BeginsAgainAfterFinish) {
    DocumentBuilder builder;
    builder.AddText("a", {});
    builder.EndParagraph({});
    EXPECT_EQ(builder.Finish({}, true).text, "a");
    EXPECT_EQ(builder.Finish({}, true), ReadRtf("{\\rtf1}"));
    builder.EndParagraph({});
    EXPECT_EQ(builder.Finish({}, false).text, "\n");
}

TEST(RtfDocument, OfPlainTextHasItsLines) {
    for (std::string_view text : {"", "a", "a\nb", "a\r\nb", "a\n", "\n\n"}) {
        const Document document = DocumentFromText(text, "Arial", 27);
        std::string expected(text);
        std::erase(expected, '\r');
        EXPECT_EQ(document.text, expected);
        EXPECT_EQ(ReadRtf(WriteRtf(document)), document) << text;
    }
}

TEST(RtfDocument, TheLastParagraphLooksAsItsGroupSays) {
    for (const char* end : {"", "}", "\\par}", "}}"}) {
        const Document document = ReadRtf(std::string("{\\rtf1\\pard\\li90\\qc abc") + end);
        EXPECT_EQ(document.paragraphs.back().format.align, ParagraphAlign::Center) << end;
        EXPECT_EQ(document.paragraphs.back().format.leftIndent, 90) << end;
    }
    EXPECT_EQ(ReadRtf("{\\rtf1\\trowd\\cellx9\\intbl\\qc a\\cell\\row}").paragraphs.back().format, ParagraphFormat());
}

TEST(RtfDocument, KeepsUnreadGroupsAsTheyStood) {
    const Document document =
        ReadRtf(Rtf("a{\\header n\xE9{\\b x}}b{\\*\\odd\\bin2 }}}c{\\*\\bkmkstart m}\\par{\\v{\\*\\hidden}}"));
    EXPECT_EQ(ReadRtf(Rtf("{\\header \\b\\\xE9x\\\x01y\x7F\t}")).kept[0].rtf, "{\\header \\b\nx\ny\n\t}");
    ASSERT_EQ(document.kept.size(), 2u);
    EXPECT_EQ(document.kept[0], (KeptGroup{1, "{\\header n\\'e9{\\b x}}"}));
    EXPECT_EQ(document.kept[1], (KeptGroup{3, "{\\*\\bkmkstart m}"}));
    EXPECT_NE(WriteRtf(document).find("a{\\header n\\'e9{\\b x}}b"), std::string::npos);
}

TEST(RtfDocument, KeepsWordsThatAreNotShown) {
    const Document document =
        ReadRtf(Rtf("a\\v b{\\i \\{c\\par\\'e9}\\deleted d\\v0\\deleted0 e{\\v f}{\\*\\bkmkend m}{\\pict\\pngblip "
                    "00}\\v g\\v0\\par "
                    "h{\\v{\\*\\x}i"));
    EXPECT_EQ(document.text, "ae\nh");
    const std::vector<KeptGroup> expected = {{1, "{\\v b\\{c\\line\\u233 ?}"}, {1, "{\\deleted d}"}, {2, "{\\v f}"},
                                             {2, "{\\*\\bkmkend m}"},          {2, "{\\v g}"},       {4, "{\\v i}"}};
    EXPECT_EQ(document.kept, expected);
    EXPECT_EQ(ReadRtf(WriteRtf(document)).kept, expected);
}

TEST(RtfDocument, KeepsWhatIsDrawnWhetherItShowsOrHasWords) {
    const std::string shape = "{\\shp{\\shptxt a}}",
                      object = "{\\object{\\result{\\pict\\pngblip 01}}{\\*\\objdata 00}}";
    const Document document =
        ReadRtf(Rtf("\\v b" + shape + object + "\\v0{\\deleted" + shape + "}{\\object{\\objdata 00}{\\result " +
                    object + "{\\pict\\pngblip 02}c}\\x}{\\object{\\pict\\pngblip 03}{\\result d}}"));
    EXPECT_EQ(document.text, "[c] [d]");
    const std::vector<KeptGroup> expected = {{0, "{\\v b}"},
                                             {0, "{\\v" + shape + "}"},
                                             {0, "{\\v" + object + "}"},
                                             {0, "{\\deleted" + shape + "}"},
                                             {3, "{\\object{\\objdata 00}{\\result}\\x}"}};
    EXPECT_EQ(document.kept, expected);
    EXPECT_EQ(Each(document.pictures, &Picture::object),
              (std::vector<std::string>{object, "", "{\\object{\\pict\\pngblip 03}{\\result}}"}));
    EXPECT_EQ(ReadRtf(WriteRtf(document)), document);
    const std::string signs = "\\f1 aB\\'b7\\\\\\u120 ?";
    EXPECT_NE(WriteRtf(ReadRtf(Rtf("{\\fonttbl{\\f1\\fcharset2 Symbol;}}" + signs))).find(signs), std::string::npos);
}

TEST(RtfDocument, ShapesAreTheirTextOrTheirPictureOrKept) {
    const std::string empty =
        "{\\shp{\\*\\shpinst{\\sp{\\sn fLine}{\\sv 1}}{\\shptxt {\\*\\bkmkstart m}{\\v x}\\par}}}";
    const std::string drawn = "{\\shp{\\*\\shpinst{\\sp{\\sn pib}{\\sv {\\pict\\pngblip 0102}}}}}";
    const std::string both = "{\\shp{\\*\\shpinst{\\sp{\\sv {\\pict\\pngblip 03}}}{\\shptxt t}}}";
    const std::string within = "{\\shp{\\shptxt " + drawn + empty + "{\\pict\\pngblip 04}{\\object o}}}";
    const Document document = ReadRtf(Rtf(empty + drawn + both + within));
    EXPECT_EQ(document.text, "[t]");
    ASSERT_EQ(document.pictures.size(), 4u);
    EXPECT_EQ(document.pictures[0].object, drawn);
    EXPECT_EQ(document.pictures[1].object, "");
    EXPECT_EQ(document.pictures[2].object, drawn);
    ASSERT_EQ(document.kept.size(), 3u);
    EXPECT_EQ(document.kept[0], (KeptGroup{0, empty}));
    EXPECT_EQ(document.kept[1], (KeptGroup{3, empty}));
    EXPECT_EQ(ReadRtf(WriteRtf(document)), document);
    EXPECT_EQ(ReadRtf(Rtf("{\\shpgrp{\\*\\shpinst " + drawn + drawn + both + "}}")).pictures.size(), 3u);
}

TEST(LinkTarget, ReadsTheAddressOfAField) {
    const struct {
        std::string_view instruction, target;
    } cases[] = {{"HYPERLINK \"http://a.b/c\"", "http://a.b/c"},
                 {"  hyperlink   http://a.b/c  ", "http://a.b/c"},
                 {"HYPERLINK \"a\" \\l \"b\" \\o \"tip\" \\t \"_blank\" \\n", "a#b"},
                 {"HYPERLINK \\l \"place\"", "#place"},
                 {"HYPERLINK \"C:\\\\dir\\\\x\"", "C:\\dir\\x"},
                 {"HYPERLINK \"open", "open"},
                 {"HYPERLINK", ""},
                 {"HYPERLINKS \"a\"", ""},
                 {"PAGE", ""},
                 {"", ""}};
    for (const auto& c : cases)
        EXPECT_EQ(LinkTarget(c.instruction), c.target) << c.instruction;
    for (std::string_view target : {"http://a", "#place", "a\"b\\c", "a#b"})
        EXPECT_EQ(LinkTarget(LinkInstruction(target)), target);
}

}  // namespace
}  // namespace lore
