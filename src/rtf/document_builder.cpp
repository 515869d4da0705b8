#include "rtf/document_builder.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace lore {

namespace {

constexpr int kMostTableLevels = 8;
constexpr size_t kLeastOfParagraph = 11, kLeastOfRun = 4;
constexpr size_t kMostWithLinks = size_t{64} << 20;

}  // namespace

std::span<const TextRun> RunsOf(const Document& document, size_t paragraph) {
    const size_t first = document.paragraphs[paragraph].firstRun;
    const size_t end =
        paragraph + 1 < document.paragraphs.size() ? document.paragraphs[paragraph + 1].firstRun : document.runs.size();
    return std::span(document.runs).subspan(first, end - first);
}

std::string_view TextOf(const Document& document, const TextRun& run) {
    return std::string_view(document.text).substr(run.begin, run.end - run.begin);
}

std::string CleanFontName(std::string_view name) {
    std::string clean = ReplaceAll(name, ";", ",");
    std::erase_if(clean, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
    return std::string(Trim(clean));
}

int32_t DocumentBuilder::Font(std::string_view name) {
    const std::string clean = CleanFontName(name);
    const auto [found, added] = fonts_.emplace(clean, static_cast<int32_t>(document_.fonts.size()));
    if (added)
        document_.fonts.push_back({found->second, 0, clean});
    return found->second;
}

int32_t DocumentBuilder::Link(std::string_view target) {
    const auto [found, added] = links_.emplace(target, static_cast<int32_t>(document_.links.size()));
    if (added)
        document_.links.emplace_back(target);
    return found->second;
}

void DocumentBuilder::AddText(std::string_view utf8, const CharFormat& format) {
    if (utf8.empty())
        return;
    document_.text.append(utf8);
    AddRun(utf8.size(), format, RunKind::Text, -1);
}

void DocumentBuilder::AddBreak(RunKind kind, const CharFormat& format) {
    document_.text += '\n';
    AddRun(1, format, kind, -1);
}

void DocumentBuilder::AddPicture(Picture picture, const CharFormat& format) {
    document_.pictures.push_back(std::move(picture));
    AddRun(0, format, RunKind::Picture, static_cast<int32_t>(document_.pictures.size() - 1));
}

void DocumentBuilder::AddKept(std::string rtf) {
    document_.kept.push_back({static_cast<uint32_t>(document_.text.size()), std::move(rtf)});
}

void DocumentBuilder::AddRun(size_t length, const CharFormat& format, RunKind kind, int32_t picture) {
    const auto end = static_cast<uint32_t>(document_.text.size());
    std::vector<TextRun>& runs = document_.runs;
    if (kind == RunKind::Text && runs.size() > firstRun_ && runs.back().kind == kind && runs.back().format == format) {
        runs.back().end = end;
        return;
    }
    runs.push_back({end - static_cast<uint32_t>(length), end, format, kind, picture});
    leastSize_ += kLeastOfRun;
    // One long address at a million places would fill the memory.
    if (int32_t& link = runs.back().format.link; leastSize_ > kMostWithLinks)
        link = -1;
    else if (link >= 0)
        leastSize_ += document_.links[static_cast<size_t>(link)].size();
}

void DocumentBuilder::OpenRows(int level) {
    const auto wanted = static_cast<size_t>(std::clamp(level, 0, kMostTableLevels));
    if (openRows_.size() > wanted)
        openRows_.resize(wanted);
    while (openRows_.size() < wanted) {
        if (document_.rowFormats.empty())
            document_.rowFormats.emplace_back();
        openRows_.push_back({static_cast<int32_t>(document_.rows.size()), 0});
        document_.rows.push_back({static_cast<uint32_t>(document_.rowFormats.size() - 1),
                                  static_cast<uint8_t>(openRows_.size()),
                                  static_cast<uint32_t>(document_.paragraphs.size())});
    }
}

void DocumentBuilder::End(ParagraphEnd endedBy, const ParagraphFormat& format, int level) {
    OpenRows(level);
    Paragraph paragraph;
    paragraph.begin = paragraphBegin_;
    paragraph.end = static_cast<uint32_t>(document_.text.size());
    paragraph.firstRun = firstRun_;
    paragraph.endedBy = endedBy;
    paragraph.format = format;
    if (!openRows_.empty()) {
        paragraph.row = openRows_.back().row;
        paragraph.cell = openRows_.back().cell;
    }
    document_.paragraphs.push_back(paragraph);
    leastSize_ += kLeastOfParagraph;
    if (endedBy != ParagraphEnd::Document)
        document_.text += endedBy == ParagraphEnd::Cell ? '\t' : '\n';
    paragraphBegin_ = static_cast<uint32_t>(document_.text.size());
    firstRun_ = static_cast<uint32_t>(document_.runs.size());
}

void DocumentBuilder::EndParagraph(const ParagraphFormat& format, int level) {
    End(ParagraphEnd::Paragraph, format, level);
}

void DocumentBuilder::EndCell(const ParagraphFormat& format, int level) {
    End(ParagraphEnd::Cell, format, std::max(level, 1));
    ++openRows_.back().cell;
}

/// Nothing has come since a paragraph ended.
bool DocumentBuilder::EndsWithParagraph() const {
    return !document_.paragraphs.empty() && document_.paragraphs.back().endedBy == ParagraphEnd::Paragraph &&
           firstRun_ == document_.runs.size() && paragraphBegin_ == document_.text.size();
}

std::optional<ParagraphFormat> DocumentBuilder::TakeBackEnd(int level) {
    if (!EndsWithParagraph() || openRows_.empty() || openRows_.size() != static_cast<size_t>(level))
        return std::nullopt;
    const Paragraph last = document_.paragraphs.back();
    if (last.row != openRows_.back().row || last.cell != openRows_.back().cell)
        return std::nullopt;
    document_.paragraphs.pop_back();
    document_.text.pop_back();
    paragraphBegin_ = last.begin;
    firstRun_ = last.firstRun;
    return last.format;
}

void DocumentBuilder::EndRow(const RowFormat& row, const ParagraphFormat& format, int level) {
    End(ParagraphEnd::Row, format, std::max(level, 1));
    std::vector<RowFormat>& formats = document_.rowFormats;
    if (formats.back() != row)
        formats.push_back(row);
    document_.rows[static_cast<size_t>(openRows_.back().row)].format = static_cast<uint32_t>(formats.size() - 1);
    openRows_.pop_back();
}

Document DocumentBuilder::Finish(const ParagraphFormat& last, bool dropLastEnd) {
    if (dropLastEnd && EndsWithParagraph()) {
        document_.text.pop_back();
        document_.paragraphs.back().endedBy = ParagraphEnd::Document;
    } else {
        const bool isEmpty = paragraphBegin_ == document_.text.size() && firstRun_ == document_.runs.size();
        End(ParagraphEnd::Document, isEmpty ? ParagraphFormat() : last, 0);
    }
    const auto length = static_cast<uint32_t>(document_.text.size());
    for (auto kept = document_.kept.rbegin(); kept != document_.kept.rend() && kept->position > length; ++kept)
        kept->position = length;
    Document document = std::move(document_);
    *this = DocumentBuilder();
    return document;
}

}  // namespace lore
