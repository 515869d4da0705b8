#include "notes/note_list_document.h"

#include <algorithm>

#include "base/text.h"
#include "bibliography/output_paragraph.h"
#include "bibliography/source_info.h"
#include "classify/key_word_list.h"
#include "notes/attachment_kind.h"
#include "notes/board_layout.h"
#include "rtf/append_document.h"
#include "rtf/document_walk.h"
#include "rtf/list_marks.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr TextColor kDim = {96, 96, 96};
constexpr int kSmallHalfPoints = 18;
constexpr int kRuleLength = 40;
constexpr int16_t kAbovePart = 80, kAroundRule = 200;  // twips
constexpr int kTwipsOfSpace = 120;
constexpr int kLayoutWidth = 900;

/// Pixels of the board at 100 % as half points.
int16_t HalfPointsOf(int pixels) {
    return static_cast<int16_t>(std::clamp(pixels * 3 / 2, 2, 400));
}

/// One line of a record's text in UTF-8.
std::string Line(std::string_view bytes) {
    std::string text = ToUtf8(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return std::string(Trim(text));
}

class Composer {
public:
    Composer(const BoardOptions& options, const PictureOfAttachment& pictureOf)
        : options_(options), pictureOf_(pictureOf) {
        small_.font = sourceFormat_.font = builder_.Font("Arial");
        small_.halfPoints = kSmallHalfPoints;
        small_.color = kDim;
        sourceFormat_.halfPoints = HalfPointsOf(options.sourceSize);
    }

    void Add(const PrintNote& entry) {
        if (!first_)
            AddRule();
        first_ = false;
        const CardContent content = CardContentOf(entry.note, entry.sources.size());
        for (const CardPart& part :
             LayOutCard(content, options_, kLayoutWidth, [](const CardPart&) { return 1; }).parts)
            AddPart(entry, part);
    }
    Document Finish() { return builder_.Finish({}, true); }

private:
    void AddPart(const PrintNote& entry, const CardPart& part) {
        const CNote& note = entry.note;
        switch (part.kind) {
            case CardPartKind::Path:
                return AddPath(note.categories[part.index], part.numbered ? static_cast<int>(part.index) + 1 : 0);
            case CardPartKind::KeyWords:
                return AddKeyWords(note.keyWords);
            case CardPartKind::Source:
                return AddSource(note, entry.sources[part.index]);
            case CardPartKind::Text:
                return AppendDocument(builder_, ReadRtf(note.rtfText), nextList_);
            case CardPartKind::Attachments:
                for (const CAttachment& attachment : note.attachments)
                    AddAttachment(attachment);
        }
    }

    void AddRule() {
        CharFormat format = small_;
        format.halfPoints = 12;
        std::string rule;
        for (int i = 0; i < kRuleLength; ++i)
            rule += "\u2500";
        ParagraphFormat paragraph;
        paragraph.align = ParagraphAlign::Center;
        paragraph.spaceBefore = paragraph.spaceAfter = kAroundRule;
        builder_.AddText(rule, format);
        builder_.EndParagraph(paragraph);
    }

    void EndPart() {
        ParagraphFormat paragraph;
        paragraph.spaceBefore = kAbovePart;
        builder_.EndParagraph(paragraph);
    }

    void AddPath(const CProCategoryTree& path, int setNumber) {
        std::string text = setNumber > 0 ? std::to_string(setNumber) + "  " : "";
        const char* between = "";
        for (const std::string& name : PathLevels(path)) {
            text.append(between).append(Line(name));
            between = " \u203A ";
        }
        builder_.AddText(text, small_);
        EndPart();
    }

    void AddKeyWords(const std::string& keyWords) {
        std::string text = "Key Words: ";
        const char* between = "";
        for (const std::string_view word : SplitKeyWords(keyWords)) {
            if (word.empty())
                continue;
            text.append(between).append(Line(word));
            between = ", ";
        }
        builder_.AddText(text, small_);
        EndPart();
    }

    void AddSource(const CNote& note, const CSource& source) {
        SourceList list;
        list.AddTail(source);
        const BibliographyEntry entry = MakeBibliographyDocument(list).entries.front();
        AddEntryText(builder_, entry, sourceFormat_);
        const CNoteSourceInfo* const info = FindSourceInfo(note.sourceInfo, source.SourceGUID);
        if (const std::string remark = info ? Line(info->text) : ""; !remark.empty()) {
            CharFormat format = sourceFormat_;
            format.color = kDim;
            builder_.AddText("  \u2013  " + remark, format);
        }
        ParagraphFormat paragraph = EntryParagraph(entry, kTwipsOfSpace);
        paragraph.spaceBefore = kAbovePart;
        paragraph.spaceAfter = 0;
        builder_.EndParagraph(paragraph);
    }

    void AddAttachment(const CAttachment& attachment) {
        const std::string title = Line(attachment.title);
        if (IsShownPicture(attachment)) {
            if (auto picture = pictureOf_(attachment))
                return AddPicture(std::move(*picture), title);
        }
        CharFormat format = small_;
        std::string text = title.empty() ? Line(attachment.storedFile) : title;
        if (attachment.type == kWebLink) {
            const std::string address = Line(attachment.sourceFile);
            format.link = builder_.Link(address);
            format.color = kLinkColor;
            text = title.empty() ? address : title + " <" + address + ">";
        } else {
            text.append(" (").append(AttachmentKindName(attachment.type)).append(")");
        }
        builder_.AddText(text, format);
        EndPart();
    }

    void AddPicture(Picture picture, const std::string& title) {
        ParagraphFormat centred;
        centred.align = ParagraphAlign::Center;
        centred.spaceBefore = kAbovePart;
        if (!title.empty()) {
            const FontSetting& font = options_.pictureTitle;
            CharFormat format;
            format.font = builder_.Font(ToUtf8(font.faceName));
            format.halfPoints = HalfPointsOf(font.height);
            format.bold = font.weight >= 600;
            format.italic = font.italic;
            format.underline = font.underline;
            if (font.color != 0)
                format.color = TextColor{static_cast<uint8_t>(font.color), static_cast<uint8_t>(font.color >> 8),
                                         static_cast<uint8_t>(font.color >> 16)};
            builder_.AddText(title, format);
            builder_.EndParagraph(centred);
        }
        builder_.AddPicture(std::move(picture), {});
        builder_.EndParagraph(centred);
    }

    const BoardOptions& options_;
    const PictureOfAttachment& pictureOf_;
    DocumentBuilder builder_;
    CharFormat small_, sourceFormat_;
    bool first_ = true;
    int32_t nextList_ = 1;
};

class TextWriter : public DocumentVisitor {
public:
    TextWriter(const Document& document, std::string& text) : document_(document), text_(text) {}

    void Paragraph(size_t index, int number) override {
        const lore::Paragraph& paragraph = document_.paragraphs[index];
        if (inCell_ && !cellIsNew_)
            text_ += ' ';
        cellIsNew_ = false;
        if (number > 0 || paragraph.format.list != ListKind::None)
            text_.append(std::string(size_t{paragraph.format.listLevel} * 2, ' '))
                .append(MarkOf(paragraph.format, number))
                .append(" ");
        text_.append(document_.text, paragraph.begin, paragraph.end - paragraph.begin);
        if (!inCell_)
            text_ += '\n';
    }
    void BeginTable(const TableGrid&) override {}
    void EndTable() override {}
    void BeginRow() override { rowIsNew_ = true; }
    void EndRow() override { text_ += '\n'; }
    void BeginCell(const TableCell& cell, const CellFormat&) override {
        if (!rowIsNew_ && !cell.covered)
            text_ += '\t';
        rowIsNew_ = false;
        inCell_ = cellIsNew_ = true;
    }
    void EndCell(const TableCell&) override { inCell_ = false; }

private:
    const Document& document_;
    std::string& text_;
    bool inCell_ = false, cellIsNew_ = false, rowIsNew_ = false;
};

}  // namespace

Document ComposeNoteList(const std::vector<PrintNote>& notes, const BoardOptions& options,
                         const PictureOfAttachment& pictureOf) {
    Composer composer(options, pictureOf);
    for (const PrintNote& entry : notes)
        composer.Add(entry);
    return composer.Finish();
}

std::string DocumentAsText(const Document& document) {
    std::string text;
    TextWriter writer(document, text);
    WalkDocument(document, writer);
    return text;
}

}  // namespace lore
