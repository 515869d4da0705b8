#include "notes/note_list_document.h"

#include "base/text.h"
#include "bibliography/document_odt.h"
#include "bibliography/source_builder.h"
#include "notes/attachment_path.h"
#include "notes/note_builder.h"
#include "rtf/rtf.h"
#include "support/matchers.h"

namespace lore {
namespace {

PrintNote FullEntry() {
    PrintNote entry{FullNote(5), {}};
    CSource source = CitationOnly(1011, "Ames, A. Lamps. https://a.b/c");
    source.SourceGUID = "{S1}";
    source.SpanKinds = {1};
    source.SpanStarts = {9};
    source.SpanEnds = {13};
    entry.sources.push_back(source);
    return entry;
}

std::optional<Picture> NoPicture(const CAttachment&) {
    return std::nullopt;
}

/// The parts of the text, joined by "|".
std::string PartsOf(const std::vector<PrintNote>& notes, const BoardOptions& options,
                    const PictureOfAttachment& pictureOf = NoPicture) {
    return ReplaceAll(ComposeNoteList(notes, options, pictureOf).text, "\n", "|");
}

TEST(NoteListDocument, StacksWhatTheDisplaySettingsShow) {
    const std::string paths = "1  Lights \u203A Lenses|3  Places";
    const std::string words = "Key Words: lamp, Fresnel, fog \u00FC";
    const std::string source = "Ames, A. Lamps. https://a.b/c  \u2013  p. 7";
    const std::string text = "First|Second";
    const std::string files = "A lamp (Image File)|Site <http://example.org>";
    const std::pair<BoardOptions, std::string> cases[] = {
        {{}, paths + "|" + text + "|" + files + "|" + source + "|" + words},
        {{.keyWordsOnTop = true, .sourcesOnTop = true}, paths + "|" + words + "|" + source + "|" + text + "|" + files},
        {{.showCategories = false, .showKeyWords = false, .showSources = false}, text + "|" + files},
        {{.onlySetOne = true}, "Lights \u203A Lenses|" + text + "|" + files + "|" + source + "|" + words}};
    for (const auto& [options, expected] : cases)
        EXPECT_EQ(PartsOf({FullEntry()}, options), expected);
}

TEST(NoteListDocument, PartsNotesWithARuleAndShowsPicturesWithTheirTitle) {
    PrintNote pictured = FullEntry();
    const auto picture = [](const CAttachment& attachment) {
        EXPECT_EQ(attachment.title, "A lamp");
        Picture made;
        made.bytes = "PNG";
        made.goalWidth = 1500;
        return std::optional(made);
    };
    BoardOptions options;
    options.pictureTitle.color = 0x030201;
    const Document document = ComposeNoteList({{DayNote(1), {}}, pictured, {DayNote(2), {}}}, options, picture);
    EXPECT_TRUE(std::any_of(document.runs.begin(), document.runs.end(), [](const TextRun& run) {
        return run.format.color == TextColor{1, 2, 3};
    })) << "the title";
    EXPECT_EQ(document.pictures.size(), 1u);
    EXPECT_THAT(document.text, HasSubstr("A lamp\n\nSite"));
    size_t rules = 0;
    for (const Paragraph& paragraph : document.paragraphs)
        rules += document.text.compare(paragraph.begin, 3, "\u2500") == 0 ? 1 : 0;
    EXPECT_EQ(rules, 2u);
    EXPECT_EQ(document.links, (std::vector<std::string>{"http://example.org", "https://a.b/c"}));
}

TEST(NoteListDocument, TakesTextsOfAnyKind) {
    PrintNote entry = FullEntry();
    entry.note.keyWords = std::string("a\nb,,\x01,") + "caf\xE9";
    entry.note.rtfText = "no rich text at all";
    entry.note.categories[0] = PathOf({{3, ""}});
    for (CAttachment& attachment : entry.note.attachments)
        attachment.title = "";
    entry.note.sourceInfo.clear();
    const std::string parts = PartsOf({entry}, {});
    EXPECT_THAT(parts, HasSubstr("|http://example.org|Ames, A. Lamps. https://a.b/c|"));
    EXPECT_THAT(parts, HasSubstr("a b"));
    EXPECT_THAT(parts, HasSubstr("caf\u00E9"));
    EXPECT_THAT(parts, HasSubstr("0000001.png (Image File)"));
    EXPECT_TRUE(IsValidUtf8(parts));
}

TEST(DocumentAsText, KeepsMarksOfListsAndCellsOfTables) {
    const Document document = ReadRtf(
        "{\\rtf1 Head\\par{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}one\\par two\\par"
        "\\pard\\trowd\\cellx900\\cellx1800\\intbl a\\cell b\\par c\\cell\\row\\pard end}");
    EXPECT_EQ(DocumentAsText(document), "Head\n1. one\n2. two\na\tb c\nend\n");
}

TEST(DocumentAsOdt, HoldsEveryPictureAndTheSameBytesAgain) {
    PrintNote entry = FullEntry();
    const auto picture = [](const CAttachment&) {
        Picture made;
        made.bytes = std::string(2000, 'p');
        made.goalWidth = made.goalHeight = 1500;
        return std::optional(made);
    };
    const Document document = ComposeNoteList({entry, entry}, {}, picture);
    const auto odt = DocumentAsOdt(document);
    ASSERT_TRUE(odt);
    EXPECT_EQ(odt->substr(30, 47), "mimetypeapplication/vnd.oasis.opendocument.text");
    EXPECT_THAT(*odt, HasSubstr("Pictures/2.png"));
    EXPECT_THAT(*odt, Not(HasSubstr("Pictures/3.png")));
    EXPECT_EQ(odt, DocumentAsOdt(document));
}

TEST(AttachmentPath, StaysInTheFolderOfAttachments) {
    const NoteBookPaths paths({"/data"}, "Book");
    const std::pair<const char*, const char*> kCases[] = {
        {"0000001.png", "/data/Data Files/Databases/Book/Attachments/0000001.png"},
        {"../../../etc/passwd", "/data/Data Files/Databases/Book/Attachments/passwd"},
        {"a\\b\\c.png", "/data/Data Files/Databases/Book/Attachments/c.png"},
        {"..", ""},
        {"", ""}};
    for (const auto& [stored, expected] : kCases) {
        CAttachment attachment;
        attachment.type = 1;
        attachment.storedFile = stored;
        EXPECT_EQ(AttachmentPath(attachment, paths.Attachments()).string(), expected);
    }
}

}  // namespace
}  // namespace lore
