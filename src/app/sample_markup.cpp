#include "app/sample_markup.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "rtf/document_builder.h"

namespace lore {
namespace {

constexpr char kFont[] = "Times New Roman";
constexpr int16_t kTextSize = 27;  // half points, as of a new note
constexpr int16_t kHeadingSize = 28;
constexpr int16_t kTitleSize = 36;
constexpr int16_t kParagraphGap = 140;  // twips
constexpr int16_t kItemGap = 50;
constexpr int16_t kIndent = 440;
constexpr int32_t kTableWidth = 9000;
constexpr int32_t kPicturePercent = 80;

enum class BlockKind { Text, Heading, Bullets, Numbers, Table, Quote, RightToLeftQuote, Picture };

struct Block {
    BlockKind kind;
    std::vector<std::string_view> lines;  // without their marks
};

struct BlockMark {
    std::string_view mark;
    BlockKind kind;
};
constexpr BlockMark kBlockMarks[] = {{"# ", BlockKind::Heading}, {"- ", BlockKind::Bullets},
                                     {"|", BlockKind::Table},    {">> ", BlockKind::RightToLeftQuote},
                                     {"> ", BlockKind::Quote},   {"![", BlockKind::Picture}};

/// The length of "12. " at the start of a line, 0 if there is none.
size_t NumberMark(std::string_view line) {
    const size_t digits = std::min(line.find_first_not_of("0123456789"), line.size());
    return digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

/// Tells what a line belongs to and cuts its mark off.
BlockKind TakeMark(std::string_view& line) {
    for (const BlockMark& mark : kBlockMarks) {
        if (line.starts_with(mark.mark)) {
            line.remove_prefix(mark.mark.size());
            return mark.kind;
        }
    }
    const size_t number = NumberMark(line);
    line.remove_prefix(number);
    return number > 0 ? BlockKind::Numbers : BlockKind::Text;
}

/// Lines of one kind that follow each other without an empty line are one block.
std::vector<Block> SplitBlocks(std::string_view text) {
    std::vector<Block> blocks;
    bool open = false;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = TrimRight(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty()) {
            open = false;
            continue;
        }
        const BlockKind kind = TakeMark(line);
        if (!open || blocks.back().kind != kind)
            blocks.push_back({kind, {}});
        blocks.back().lines.push_back(line);
        open = true;
    }
    return blocks;
}

std::vector<std::string_view> Cells(std::string_view row) {
    std::vector<std::string_view> cells;
    while (!row.empty()) {
        const size_t end = std::min(row.find('|'), row.size());
        cells.push_back(Trim(row.substr(0, end)));
        row.remove_prefix(std::min(end + 1, row.size()));
    }
    return cells;
}

bool IsRule(const std::vector<std::string_view>& cells) {
    return !cells.empty() && std::ranges::all_of(cells, [](std::string_view cell) { return cell.starts_with("---"); });
}

/// Columns as wide as their longest text asks for, within limits.
RowFormat TableFormat(const std::vector<std::vector<std::string_view>>& rows) {
    std::vector<int32_t> weights;
    for (const auto& row : rows) {
        weights.resize(std::max(weights.size(), row.size()), 8);
        for (size_t i = 0; i < row.size(); ++i)
            weights[i] = std::max(weights[i], static_cast<int32_t>(std::min<size_t>(CharacterCount(row[i]), 44)));
    }
    int32_t total = 0, edge = 0;
    for (const int32_t weight : weights)
        total += weight;
    RowFormat format;
    format.cellGap = 100;
    for (const int32_t weight : weights) {
        edge += kTableWidth * weight / total;
        format.cells.emplace_back().rightEdge = edge;
        format.cells.back().borders = kBorderTop | kBorderLeft | kBorderBottom | kBorderRight;
    }
    return format;
}

struct InlineMark {
    std::string_view mark;
    bool bold, italic, underline;  // what it turns on and off
};
constexpr InlineMark kInlineMarks[] = {
    {"***", true, true, false}, {"**", true, false, false}, {"*", false, true, false}, {"__", false, false, true}};

const InlineMark* MarkAt(std::string_view rest) {
    for (const InlineMark& mark : kInlineMarks)
        if (rest.starts_with(mark.mark))
            return &mark;
    return nullptr;
}

/// "text](target)", what stands behind a bracket.
struct LinkParts {
    std::string_view text, target;
    size_t length = 0;  // 0: no link
};

LinkParts ReadLink(std::string_view rest) {
    const size_t middle = rest.find("](");
    const size_t end = middle == std::string_view::npos ? middle : rest.find(')', middle);
    if (end == std::string_view::npos)
        return {};
    return {rest.substr(0, middle), rest.substr(middle + 2, end - middle - 2), end + 1};
}

class MarkupWriter {
public:
    explicit MarkupWriter(const PictureBytes& pictures) : pictures_(pictures) {
        plain_.font = builder_.Font(kFont);
        plain_.halfPoints = kTextSize;
    }

    void AddTitle(std::string_view title) { AddBoldLine(title, kTitleSize, 0); }
    void AddBlock(const Block& block);
    Document Finish() { return builder_.Finish({}, !behindTable_); }

private:
    void AddBoldLine(std::string_view text, int16_t size, int16_t before);
    void AddList(const Block& block, ListKind kind);
    void AddTable(const Block& block);
    void AddQuote(const Block& block, bool rightToLeft);
    void AddPicture(std::string_view line);
    void AddParagraph(const Block& block);
    void AddInline(std::string_view text, CharFormat format);
    /// What begins at the front of `rest` besides plain characters; gives how many bytes it took, 0 for none.
    size_t AddMarked(std::string_view rest, std::string& pending, CharFormat& format);
    void Flush(std::string& pending, const CharFormat& format);

    const PictureBytes& pictures_;
    DocumentBuilder builder_;
    CharFormat plain_;
    int32_t lists_ = 0;
    bool behindTable_ = false;
    int16_t gapBefore_ = 0;  // of a paragraph right behind a table, which has no gap of its own
};

void MarkupWriter::AddBlock(const Block& block) {
    gapBefore_ = behindTable_ ? kParagraphGap : 0;
    behindTable_ = block.kind == BlockKind::Table;
    switch (block.kind) {
        case BlockKind::Heading:
            return AddBoldLine(block.lines.front(), kHeadingSize, kItemGap);
        case BlockKind::Bullets:
            return AddList(block, ListKind::Bullet);
        case BlockKind::Numbers:
            return AddList(block, ListKind::Decimal);
        case BlockKind::Table:
            return AddTable(block);
        case BlockKind::Quote:
            return AddQuote(block, false);
        case BlockKind::RightToLeftQuote:
            return AddQuote(block, true);
        case BlockKind::Picture:
            return AddPicture(block.lines.front());
        case BlockKind::Text:
            return AddParagraph(block);
    }
}

void MarkupWriter::AddBoldLine(std::string_view text, int16_t size, int16_t before) {
    CharFormat format = plain_;
    format.bold = true;
    format.halfPoints = size;
    AddInline(text, format);
    ParagraphFormat paragraph;
    paragraph.spaceBefore = before;
    paragraph.spaceAfter = kItemGap;
    builder_.EndParagraph(paragraph);
}

void MarkupWriter::AddList(const Block& block, ListKind kind) {
    ParagraphFormat paragraph;
    paragraph.list = kind;
    paragraph.listId = ++lists_;
    paragraph.leftIndent = kIndent;
    paragraph.firstIndent = -kIndent;
    for (const std::string_view& line : block.lines) {
        AddInline(line, plain_);
        paragraph.spaceAfter = &line == &block.lines.back() ? kParagraphGap : kItemGap;
        builder_.EndParagraph(paragraph);
    }
}

void MarkupWriter::AddTable(const Block& block) {
    std::vector<std::vector<std::string_view>> rows;
    for (const std::string_view line : block.lines)
        rows.push_back(Cells(line));
    const bool headed = rows.size() > 1 && IsRule(rows[1]);
    if (headed)
        rows.erase(rows.begin() + 1);
    const RowFormat format = TableFormat(rows);
    for (auto& row : rows) {
        row.resize(format.cells.size());
        CharFormat text = plain_;
        text.bold = headed && &row == &rows.front();
        for (const std::string_view cell : row) {
            AddInline(cell, text);
            builder_.EndCell({});
        }
        builder_.EndRow(format, {});
    }
}

void MarkupWriter::AddQuote(const Block& block, bool rightToLeft) {
    std::string text;
    for (const std::string_view line : block.lines)
        text.append(text.empty() ? "" : "\n").append(line);
    AddInline(text, plain_);
    ParagraphFormat paragraph;
    paragraph.leftIndent = paragraph.rightIndent = kIndent;
    paragraph.spaceAfter = kParagraphGap;
    paragraph.rightToLeft = rightToLeft;
    paragraph.align = rightToLeft ? ParagraphAlign::Right : ParagraphAlign::Left;
    builder_.EndParagraph(paragraph);
}

void MarkupWriter::AddPicture(std::string_view line) {
    const std::string_view bytes = pictures_(ReadLink(line).target);
    const std::optional<PixelSize> size = PngSize(bytes);
    if (!size)
        return;
    Picture picture;
    picture.bytes = bytes;
    picture.width = size->width;
    picture.height = size->height;
    picture.goalWidth = size->width * kTwipsPerPixel;
    picture.goalHeight = size->height * kTwipsPerPixel;
    picture.scaleX = picture.scaleY = kPicturePercent;
    builder_.AddPicture(std::move(picture), plain_);
    ParagraphFormat paragraph;
    paragraph.spaceAfter = kParagraphGap;
    builder_.EndParagraph(paragraph);
}

void MarkupWriter::AddParagraph(const Block& block) {
    std::string text;
    for (const std::string_view line : block.lines)
        text.append(text.empty() ? "" : " ").append(line);
    AddInline(text, plain_);
    ParagraphFormat paragraph;
    paragraph.spaceBefore = gapBefore_;
    paragraph.spaceAfter = kParagraphGap;
    builder_.EndParagraph(paragraph);
}

void MarkupWriter::Flush(std::string& pending, const CharFormat& format) {
    if (!pending.empty())
        builder_.AddText(pending, format);
    pending.clear();
}

size_t MarkupWriter::AddMarked(std::string_view rest, std::string& pending, CharFormat& format) {
    if (rest.front() == '\\' && rest.size() > 1) {
        pending += rest[1];
        return 2;
    }
    if (const InlineMark* mark = MarkAt(rest)) {
        Flush(pending, format);
        format.bold ^= mark->bold;
        format.italic ^= mark->italic;
        format.underline ^= mark->underline;
        return mark->mark.size();
    }
    const LinkParts link = rest.front() == '[' ? ReadLink(rest.substr(1)) : LinkParts();
    if (link.length == 0)
        return 0;
    Flush(pending, format);
    CharFormat linked = format;
    linked.link = builder_.Link(link.target);
    builder_.AddText(link.text, linked);
    return link.length + 1;
}

void MarkupWriter::AddInline(std::string_view text, CharFormat format) {
    std::string pending;
    while (!text.empty()) {
        size_t taken = AddMarked(text, pending, format);
        if (taken == 0) {
            pending += text.front();
            taken = 1;
        }
        text.remove_prefix(taken);
    }
    Flush(pending, format);
}

int32_t BigEndian(std::string_view bytes) {
    uint32_t number = 0;
    for (const char byte : bytes.substr(0, 4))
        number = number << 8 | static_cast<unsigned char>(byte);
    return static_cast<int32_t>(number & 0x7FFFFFFFu);
}

}  // namespace

std::optional<PixelSize> PngSize(std::string_view bytes) {
    constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
    constexpr size_t kWidthAt = 16;
    if (!bytes.starts_with(kSignature) || bytes.size() < kWidthAt + 8)
        return std::nullopt;
    return PixelSize{BigEndian(bytes.substr(kWidthAt)), BigEndian(bytes.substr(kWidthAt + 4))};
}

Document ReadSampleMarkup(std::string_view title, std::string_view text, const PictureBytes& pictures) {
    MarkupWriter writer(pictures);
    writer.AddTitle(title);
    for (const Block& block : SplitBlocks(text))
        writer.AddBlock(block);
    return writer.Finish();
}

}  // namespace lore
