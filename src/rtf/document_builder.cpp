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
    const size_t first = document.paragraphs[paragraph].first_run;
    const size_t end = paragraph + 1 < document.paragraphs.size() ? document.paragraphs[paragraph + 1].first_run
                                                                  : document.runs.size();
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
    AddRun(utf8.size(), format, RunKind::kText, -1);
}

void DocumentBuilder::AddBreak(RunKind kind, const CharFormat& format) {
    document_.text += '\n';
    AddRun(1, format, kind, -1);
}

void DocumentBuilder::AddPicture(Picture picture, const CharFormat& format) {
    document_.pictures.push_back(std::move(picture));
    AddRun(0, format, RunKind::kPicture, static_cast<int32_t>(document_.pictures.size() - 1));
}

void DocumentBuilder::AddKept(std::string rtf) {
    document_.kept.push_back({static_cast<uint32_t>(document_.text.size()), std::move(rtf)});
}

void DocumentBuilder::AddRun(size_t length, const CharFormat& format, RunKind kind, int32_t picture) {
    const auto end = static_cast<uint32_t>(document_.text.size());
    std::vector<TextRun>& runs = document_.runs;
    if (kind == RunKind::kText && runs.size() > first_run_ && runs.back().kind == kind &&
        runs.back().format == format) {
        runs.back().end = end;
        return;
    }
    runs.push_back({end - static_cast<uint32_t>(length), end, format, kind, picture});
    least_size_ += kLeastOfRun;
    // One long address at a million places would fill the memory.
    if (int32_t& link = runs.back().format.link; least_size_ > kMostWithLinks)
        link = -1;
    else if (link >= 0)
        least_size_ += document_.links[static_cast<size_t>(link)].size();
}

void DocumentBuilder::OpenRows(int level) {
    const auto wanted = static_cast<size_t>(std::clamp(level, 0, kMostTableLevels));
    if (open_rows_.size() > wanted)
        open_rows_.resize(wanted);
    while (open_rows_.size() < wanted) {
        if (document_.row_formats.empty())
            document_.row_formats.emplace_back();
        open_rows_.push_back({static_cast<int32_t>(document_.rows.size()), 0});
        document_.rows.push_back({static_cast<uint32_t>(document_.row_formats.size() - 1),
                                  static_cast<uint8_t>(open_rows_.size()),
                                  static_cast<uint32_t>(document_.paragraphs.size())});
    }
}

void DocumentBuilder::End(ParagraphEnd ended_by, const ParagraphFormat& format, int level) {
    OpenRows(level);
    Paragraph paragraph;
    paragraph.begin = paragraph_begin_;
    paragraph.end = static_cast<uint32_t>(document_.text.size());
    paragraph.first_run = first_run_;
    paragraph.ended_by = ended_by;
    paragraph.format = format;
    if (!open_rows_.empty()) {
        paragraph.row = open_rows_.back().row;
        paragraph.cell = open_rows_.back().cell;
    }
    document_.paragraphs.push_back(paragraph);
    least_size_ += kLeastOfParagraph;
    if (ended_by != ParagraphEnd::kDocument)
        document_.text += ended_by == ParagraphEnd::kCell ? '\t' : '\n';
    paragraph_begin_ = static_cast<uint32_t>(document_.text.size());
    first_run_ = static_cast<uint32_t>(document_.runs.size());
}

void DocumentBuilder::EndParagraph(const ParagraphFormat& format, int level) {
    End(ParagraphEnd::kParagraph, format, level);
}

void DocumentBuilder::EndCell(const ParagraphFormat& format, int level) {
    End(ParagraphEnd::kCell, format, std::max(level, 1));
    ++open_rows_.back().cell;
}

/// Nothing has come since a paragraph ended.
bool DocumentBuilder::EndsWithParagraph() const {
    return !document_.paragraphs.empty() && document_.paragraphs.back().ended_by == ParagraphEnd::kParagraph &&
           first_run_ == document_.runs.size() && paragraph_begin_ == document_.text.size();
}

std::optional<ParagraphFormat> DocumentBuilder::TakeBackEnd(int level) {
    if (!EndsWithParagraph() || open_rows_.empty() || open_rows_.size() != static_cast<size_t>(level))
        return std::nullopt;
    const Paragraph last = document_.paragraphs.back();
    if (last.row != open_rows_.back().row || last.cell != open_rows_.back().cell)
        return std::nullopt;
    document_.paragraphs.pop_back();
    document_.text.pop_back();
    paragraph_begin_ = last.begin;
    first_run_ = last.first_run;
    return last.format;
}

void DocumentBuilder::EndRow(const RowFormat& row, const ParagraphFormat& format, int level) {
    End(ParagraphEnd::kRow, format, std::max(level, 1));
    std::vector<RowFormat>& formats = document_.row_formats;
    if (formats.back() != row)
        formats.push_back(row);
    document_.rows[static_cast<size_t>(open_rows_.back().row)].format = static_cast<uint32_t>(formats.size() - 1);
    open_rows_.pop_back();
}

Document DocumentBuilder::Finish(const ParagraphFormat& last, bool drop_last_end) {
    if (drop_last_end && EndsWithParagraph()) {
        document_.text.pop_back();
        document_.paragraphs.back().ended_by = ParagraphEnd::kDocument;
    } else {
        End(ParagraphEnd::kDocument, last, 0);
    }
    const auto length = static_cast<uint32_t>(document_.text.size());
    for (auto kept = document_.kept.rbegin(); kept != document_.kept.rend() && kept->position > length; ++kept)
        kept->position = length;
    Document document = std::move(document_);
    *this = DocumentBuilder();
    return document;
}

}  // namespace lore
