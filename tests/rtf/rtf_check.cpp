#include "rtf/rtf_check.h"

#include <algorithm>

#include "base/text.h"
#include "rtf/find.h"
#include "rtf/html_reader.h"
#include "rtf/html_writer.h"
#include "rtf/office_rtf.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

const HtmlLook kPageLook{"Times New Roman", 27};

bool IsIndex(int64_t index, size_t count) {
    return index >= -1 && index < static_cast<int64_t>(count);
}

std::string WrongRun(const Document& document, const TextRun& run) {
    const CharFormat& format = run.format;
    if (!IsIndex(format.font, document.fonts.size()) || !IsIndex(format.link, document.links.size()))
        return "a font or link that isn't there";
    if (format.halfPoints < 1 || format.halfPoints > 3276)
        return "a size out of range";
    const bool isPicture = run.kind == RunKind::Picture;
    if (!IsIndex(run.picture, document.pictures.size()) || isPicture != (run.picture >= 0))
        return "a picture that isn't there";
    if (run.kind != RunKind::Text && run.end - run.begin != (isPicture ? 0u : 1u))
        return "a break or picture of a wrong length";
    return {};
}

std::string WrongParts(const Document& document) {
    if (document.paragraphs.empty() || document.paragraphs.back().endedBy != ParagraphEnd::Document)
        return "no last paragraph";
    size_t at = 0;
    for (size_t i = 0; i < document.paragraphs.size(); ++i) {
        const Paragraph& paragraph = document.paragraphs[i];
        if (paragraph.begin != at)
            return "paragraph doesn't begin where the one before ended";
        if (!IsIndex(paragraph.row, document.rows.size()) || paragraph.format.listLevel > 8)
            return "a row or list level that isn't there";
        for (const TextRun& run : RunsOf(document, i)) {
            if (run.begin != at || run.end < run.begin)
                return "run doesn't begin where the one before ended";
            if (std::string wrong = WrongRun(document, run); !wrong.empty())
                return wrong;
            at = run.end;
        }
        if (paragraph.end != at)
            return "runs don't cover the paragraph";
        at += paragraph.endedBy == ParagraphEnd::Document ? 0 : 1;
    }
    return at == document.text.size() ? "" : "paragraphs don't cover the text";
}

std::string WrongReading(std::string_view rtf, const Document& document) {
    if (!IsValidUtf8(document.text))
        return "text is no valid UTF-8";
    if (document.text != PlainText(rtf))
        return "document and plain text differ";
    return WrongParts(document);
}

/// The characters with a background of that colour, one for each.
std::vector<bool> Coloured(const Document& document, const TextColor& color) {
    std::vector<bool> coloured(CharacterCount(document.text));
    size_t at = 0;
    for (size_t i = 0; i < document.paragraphs.size(); ++i) {
        for (const TextRun& run : RunsOf(document, i)) {
            const size_t end = at + CharacterCount(TextOf(document, run));
            if (run.kind == RunKind::Text && run.format.background == color)
                std::fill(coloured.begin() + static_cast<std::ptrdiff_t>(at),
                          coloured.begin() + static_cast<std::ptrdiff_t>(end), true);
            at = end;
        }
        at += document.paragraphs[i].endedBy == ParagraphEnd::Document ? 0 : 1;
    }
    return coloured;
}

/// A stretch of text as it looks, wherever its fonts and links stand in the document.
struct Stretch {
    uint32_t end = 0;
    RunKind kind = RunKind::Text;
    CharFormat format;
    std::string font, link;
};

std::vector<Stretch> StretchesOf(const Document& document, size_t paragraph) {
    std::vector<Stretch> stretches;
    for (const TextRun& run : RunsOf(document, paragraph)) {
        Stretch stretch{run.end, run.kind, run.format, std::string(FontNameOf(document, run.format)), {}};
        if (run.format.link >= 0)
            stretch.link = document.links[static_cast<size_t>(run.format.link)];
        stretch.format.font = stretch.format.link = -1;
        Stretch* const last = stretches.empty() ? nullptr : &stretches.back();
        if (last && run.kind == RunKind::Text && last->kind == run.kind && last->format == stretch.format &&
            last->font == stretch.font && last->link == stretch.link)
            last->end = run.end;
        else
            stretches.push_back(std::move(stretch));
    }
    return stretches;
}

/// How a document that was written and read again looks otherwise than before. Both have the same text.
std::string WrongLook(const Document& document, const Document& again) {
    if (again.paragraphs.size() != document.paragraphs.size() || again.pictures != document.pictures)
        return "other paragraphs or pictures when read again";
    for (size_t i = 0; i < document.paragraphs.size(); ++i) {
        ParagraphFormat format = again.paragraphs[i].format;
        format.listId = document.paragraphs[i].format.listId;
        if (format != document.paragraphs[i].format || again.paragraphs[i].endedBy != document.paragraphs[i].endedBy)
            return "paragraph " + std::to_string(i) + " has another format when read again";
        const std::vector<Stretch> before = StretchesOf(document, i), after = StretchesOf(again, i);
        for (size_t at = 0; at < std::max(before.size(), after.size()); ++at) {
            if (at >= before.size() || at >= after.size() || before[at].end != after[at].end ||
                before[at].kind != after[at].kind)
                return "other runs when read again, paragraph " + std::to_string(i);
            if (before[at].format != after[at].format)
                return "characters look otherwise when read again, before " + std::to_string(before[at].end);
            if (before[at].font != after[at].font || before[at].link != after[at].link)
                return "another font or link when read again: " + before[at].font + "/" + after[at].font + ", " +
                       before[at].link + "/" + after[at].link;
        }
    }
    return {};
}

/// Both texts from shortly before their first difference on.
std::string Difference(std::string_view first, std::string_view second) {
    constexpr size_t kBefore = 20, kShown = 60;
    const auto places = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
    const auto at = static_cast<size_t>(places.first - first.begin());
    const size_t from = at - std::min(at, kBefore);
    return ":\n" + std::string(first.substr(from, kShown)) + "\n" + std::string(second.substr(from, kShown));
}

std::string WrongMarks(std::string_view rtf, const Document& document, const char* term) {
    const std::vector<TextRange> hits = TextFinder(term, false).FindAll(document.text);
    const Document marked = ReadRtf(MarkRtf(rtf, hits));
    if (marked.text != document.text)
        return "marks change the text";
    std::vector<bool> wanted = Coloured(document, kSearchMark);
    for (const TextRange& hit : hits)
        wanted[hit.begin] = true;
    return Coloured(marked, kSearchMark) == wanted ? "" : "marks stand elsewhere";
}

}  // namespace

std::string WhatIsWrongWith(const Document& document) {
    if (std::string wrong = WrongParts(document); !wrong.empty())
        return wrong;
    const Document again = ReadRtf(WriteRtf(document));
    if (again.text != document.text)
        return "the written document has another text";
    if (std::string wrong = WrongLook(document, again); !wrong.empty())
        return wrong;
    const std::string second = WriteRtf(again), third = WriteRtf(ReadRtf(second));
    if (third != second)
        return "what is written differs the second time" + Difference(second, third);
    if (PlainText(WriteOfficeRtf(document)) != document.text)
        return "the text for office programs differs";
    return {};
}

std::string WhatIsWrongWithReading(std::string_view rtf) {
    return WrongReading(rtf, ReadRtf(rtf));
}

std::string WhatIsWrongWithText(std::string_view rtf) {
    const Document document = ReadRtf(rtf);
    if (std::string wrong = WrongReading(rtf, document); !wrong.empty())
        return wrong;
    return PlainText(WriteRtf(document)) == document.text ? "" : "the written text differs";
}

std::string WhatIsWrongWith(std::string_view rtf) {
    const Document document = ReadRtf(rtf);
    if (std::string wrong = WrongReading(rtf, document); !wrong.empty())
        return wrong;
    if (std::string wrong = WhatIsWrongWith(document); !wrong.empty())
        return wrong;
    // A letter, and what stands for the half of a character.
    std::string wrong = WrongMarks(rtf, document, "a");
    return wrong.empty() ? WrongMarks(rtf, document, "\uFFFD") : wrong;
}

std::string WhatIsWrongWithReadingPage(std::string_view html) {
    return WrongParts(ReadHtml(html, kPageLook));
}

std::string WhatIsWrongWithPage(std::string_view html) {
    return WhatIsWrongWith(ReadHtml(html, kPageLook));
}

}  // namespace lore
