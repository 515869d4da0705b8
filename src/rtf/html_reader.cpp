#include "rtf/html_reader.h"

#include <algorithm>
#include <libxml/HTMLparser.h>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "base/text.h"
#include "base/xml_callbacks.h"
#include "rtf/document_builder.h"
#include "rtf/html_layout.h"
#include "rtf/html_page.h"
#include "rtf/html_style.h"
#include "rtf/html_tags.h"

namespace lore {

namespace {

constexpr size_t kDeepest = 1000;
constexpr size_t kMostRtf = 1'000'000, kLeastOfList = 1000;  // bytes
constexpr int kDeepestTable = 8;
constexpr int16_t kListIndent = 720;
constexpr char kFixedWidthFont[] = "Courier New";

/// The attributes of an element, names and values in turn.
class Attributes {
public:
    explicit Attributes(const xmlChar** list) : list_(list) {}
    std::string_view operator[](std::string_view name) const {
        for (const xmlChar** entry = list_; entry && *entry; entry += 2) {
            if (View(entry[0]) == name)
                return View(entry[1]);
        }
        return {};
    }

private:
    const xmlChar** list_;
};

/// An element that is open, with the look of what stands in it.
struct OpenElement {
    std::string name;
    const HtmlTag* tag = nullptr;
    CharFormat chars;
    ParagraphFormat paragraph;
    bool skipped = false;
    bool keeps_blanks = false;
};

bool IsBlank(char c) {
    return std::string_view(" \t\n\r\f").find(c) != std::string_view::npos;
}

/// Rich text has no place for these.
bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20u && c != '\t';
}

std::string WithoutControls(std::string_view text) {
    std::string clean(text);
    std::erase_if(clean, IsControl);
    return clean;
}

class HtmlReader {
public:
    explicit HtmlReader(const HtmlLook& look) : convert_(look.convert), alternatives_(look.alternatives) {
        OpenElement body;
        body.tag = &FindHtmlTag({});
        body.chars.font = builder_.Font(look.font);
        body.chars.half_points = static_cast<int16_t>(std::clamp<int>(look.half_points, 1, kMostHalfPoints));
        open_.push_back(std::move(body));
    }

    void Start(std::string_view name, const Attributes& attributes);
    void End(std::string_view name);
    void Characters(std::string_view text);
    bool IsFull() const { return builder_.LeastSize() + lists_.InUse() * kLeastOfList > kMostRtf; }
    Document Finish();

private:
    const OpenElement& Inner() const { return open_.back(); }
    int CellDepth() const {
        return static_cast<int>(
            std::count_if(tables_.begin(), tables_.end(), [](const HtmlTable& table) { return table.in_cell; }));
    }
    HtmlStyle Look(OpenElement& element, const Attributes& attributes);
    void LookAt(const HtmlStyle& style, OpenElement& element);
    void Enter(OpenElement& element, const Attributes& attributes, std::optional<ListKind> kind);
    void Leave(const OpenElement& element);
    void StartList(OpenElement& element, const Attributes& attributes, std::optional<ListKind> kind);
    void StartItem(OpenElement& element, const Attributes& attributes, ListKind kind);
    void EndParagraph();
    void AddPicture(const Attributes& attributes);
    void BeginInline();
    void AddBlock(std::string_view text);
    void AddFlowing(std::string_view text);
    void AddBreak();
    void EndBlock();
    void StartCell(const Attributes& attributes);
    void OpenCell();
    void AddSpanned();
    void EndCell();
    void EndRow();

    const PictureConverter& convert_;
    const bool alternatives_;
    DocumentBuilder builder_;
    std::vector<OpenElement> open_;
    std::vector<HtmlTable> tables_;
    size_t too_deep_ = 0;
    HtmlLists lists_;
    bool has_text_ = false;       // in the paragraph that is open
    bool pending_blank_ = false;  // white space that counts if more text follows
    CharFormat blank_format_;     // the look of that white space
    bool pending_break_ = false;  // the same of a line break
};

/// Gives what the element's own style says.
HtmlStyle HtmlReader::Look(OpenElement& element, const Attributes& attributes) {
    const HtmlTag& tag = *element.tag;
    CharFormat& chars = element.chars;
    chars.bold = chars.bold || tag.bold;
    chars.italic = chars.italic || tag.italic;
    chars.underline = chars.underline || tag.underline;
    chars.strike = chars.strike || tag.strike;
    if (tag.position != ScriptPosition::kBaseline)
        chars.position = tag.position;
    chars.half_points = SizeIn(tag, attributes["size"], chars.half_points);
    if (tag.fixed_width)
        chars.font = builder_.Font(kFixedWidthFont);
    element.keeps_blanks = element.keeps_blanks || tag.keeps_blanks;
    element.paragraph.left_indent = static_cast<int16_t>(std::min(element.paragraph.left_indent + tag.indent, 7200));

    HtmlStyle style = ReadInlineStyle(attributes["style"], chars.half_points);
    LookAt(style, element);
    if (const auto color = style.color ? style.color : ReadHtmlColor(attributes["color"]))
        chars.color = color;
    if (const std::string_view font = style.font.empty() ? attributes["face"] : style.font; !font.empty())
        chars.font = builder_.Font(font.substr(0, font.find(',')));
    if (const auto align = style.align ? style.align : ReadHtmlAlign(attributes["align"]))
        element.paragraph.align = *align;
    if (element.name == "center")
        element.paragraph.align = ParagraphAlign::kCenter;
    if (const std::string_view direction = attributes["dir"]; !direction.empty())
        element.paragraph.right_to_left = EqualNoCase(direction, "rtl");
    element.skipped = element.skipped || style.IsHidden() || tag.flow == HtmlFlow::kSkipped;
    return style;
}

void HtmlReader::LookAt(const HtmlStyle& style, OpenElement& element) {
    CharFormat& chars = element.chars;
    GiveLook(style, chars);
    element.keeps_blanks = style.keeps_blanks.value_or(element.keeps_blanks);
    const HtmlFlow flow = element.tag->flow;
    if (style.background && flow == HtmlFlow::kInline)
        chars.background = style.background;
    // Of cells it says where their contents stand.
    if (style.position && (flow == HtmlFlow::kInline || flow == HtmlFlow::kLink))
        chars.position = *style.position;
}

void HtmlReader::Start(std::string_view name, const Attributes& attributes) {
    if (IsFull())
        return;
    if (open_.size() >= kDeepest) {
        ++too_deep_;
        return;
    }
    OpenElement element = Inner();
    element.name = name;
    element.tag = &FindHtmlTag(name);
    const HtmlStyle style = Look(element, attributes);
    if (!element.skipped)
        Enter(element, attributes, style.list);
    open_.push_back(std::move(element));
}

void HtmlReader::Enter(OpenElement& element, const Attributes& attributes, std::optional<ListKind> kind) {
    switch (element.tag->flow) {
        case HtmlFlow::kBreak:
            return AddBreak();
        case HtmlFlow::kRule:
            EndBlock();
            AddBlock("\u2014\u2014\u2014");
            return EndBlock();
        case HtmlFlow::kPicture:
            return AddPicture(attributes);
        case HtmlFlow::kLink:
            if (const std::string target = WithoutControls(Trim(attributes["href"]));
                !target.empty() && !target.starts_with('#'))
                element.chars.link = builder_.Link(target);
            return;
        case HtmlFlow::kBulletList:
        case HtmlFlow::kNumberedList:
            EndBlock();
            return StartList(element, attributes, kind);
        case HtmlFlow::kTable:
            EndBlock();
            if (tables_.size() < kDeepestTable)
                tables_.emplace_back();
            return;
        case HtmlFlow::kRow:
            EndRow();
            if (!tables_.empty())
                tables_.back().in_row = true;
            return;
        case HtmlFlow::kCell:
            return StartCell(attributes);
        case HtmlFlow::kItem:
            EndBlock();
            return StartItem(element, attributes, kind.value_or(element.paragraph.list));
        case HtmlFlow::kBlock:
            return EndBlock();
        case HtmlFlow::kInline:
        case HtmlFlow::kSkipped:
            return;
    }
}

void HtmlReader::StartList(OpenElement& element, const Attributes& attributes, std::optional<ListKind> kind) {
    ParagraphFormat& format = element.paragraph;
    const auto around = std::count_if(open_.begin(), open_.end(), [](const OpenElement& outer) {
        return outer.tag->flow == HtmlFlow::kBulletList || outer.tag->flow == HtmlFlow::kNumberedList;
    });
    format.list_level = static_cast<uint8_t>(std::min<std::ptrdiff_t>(around, 8));
    format.list_start = NumberIn(attributes["start"]).value_or(1);
    format.list_id = lists_.Add(format.list_start);
    format.list = element.tag->flow == HtmlFlow::kBulletList ? ListKind::kBullet : NumbersOf(attributes["type"]);
    format.left_indent = static_cast<int16_t>(kListIndent * (format.list_level + 1));
    format.first_indent = -kListIndent / 2;
    SetList(format, kind.value_or(format.list));
}

/// Items that say their own kind, or a number that isn't theirs, make a list of it.
void HtmlReader::StartItem(OpenElement& element, const Attributes& attributes, ListKind kind) {
    ParagraphFormat& format = element.paragraph;
    if (format.list == ListKind::kNone)
        return;
    const int next = lists_.Next(format.list_id);
    const auto number = NumberIn(kind == ListKind::kBullet ? std::string_view() : attributes["value"]);
    if (format.list == kind && number.value_or(next) == next)
        return;
    if (kind == ListKind::kNone)
        return SetList(format, kind);
    const int32_t id = format.list_id;
    format.list_start = number.value_or(format.list_start);
    format.list_id = lists_.Add(format.list_start);
    format.list = kind;
    for (OpenElement& outer : open_) {
        if (outer.paragraph.list_id == id) {
            outer.paragraph.list = kind;
            outer.paragraph.list_id = format.list_id;
            outer.paragraph.list_start = format.list_start;
        }
    }
}

void HtmlReader::End(std::string_view name) {
    if (too_deep_ > 0) {
        --too_deep_;
        return;
    }
    const auto found = std::find_if(open_.rbegin(), open_.rend() - 1,
                                    [&](const OpenElement& element) { return element.name == name; });
    if (found == open_.rend() - 1)
        return;
    const auto keep = static_cast<size_t>(std::distance(found, open_.rend()) - 1);
    while (open_.size() > keep) {
        const OpenElement element = std::move(open_.back());
        open_.pop_back();
        if (!element.skipped) {
            open_.push_back(element);
            Leave(element);
            open_.pop_back();
        }
    }
}

void HtmlReader::Leave(const OpenElement& element) {
    switch (element.tag->flow) {
        case HtmlFlow::kBlock:
        case HtmlFlow::kItem:
        case HtmlFlow::kBulletList:
        case HtmlFlow::kNumberedList:
            return EndBlock();
        case HtmlFlow::kCell:
            return EndCell();
        case HtmlFlow::kRow:
            return EndRow();
        case HtmlFlow::kTable:
            EndRow();
            if (!tables_.empty())
                tables_.pop_back();
            return;
        default:
            return;
    }
}

void HtmlReader::AddPicture(const Attributes& attributes) {
    std::optional<Picture> picture =
        ReadDataPicture(attributes["src"], attributes["width"], attributes["height"], convert_);
    if (!picture)
        return alternatives_ ? AddFlowing(attributes["alt"]) : void();
    if (pending_blank_ && has_text_ && !pending_break_)
        builder_.AddText(" ", blank_format_);
    pending_blank_ = false;
    BeginInline();
    builder_.AddPicture(std::move(*picture), Inner().chars);
}

void HtmlReader::BeginInline() {
    // Text that stands in a row beside its cells gets a cell.
    if (!tables_.empty() && tables_.back().in_row && !tables_.back().in_cell)
        OpenCell();
    if (std::exchange(pending_break_, false))
        builder_.AddText("\n", Inner().chars);
    has_text_ = true;
}

void HtmlReader::AddBlock(std::string_view text) {
    BeginInline();
    builder_.AddText(WithoutControls(text), Inner().chars);
}

void HtmlReader::Characters(std::string_view text) {
    if (Inner().skipped || IsFull())
        return;
    if (!Inner().keeps_blanks)
        return AddFlowing(text);
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        if (end > 0)
            AddBlock(text.substr(0, end));
        if (end < text.size())
            AddBreak();
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

void HtmlReader::AddFlowing(std::string_view text) {
    std::string flowing;
    for (const char c : text) {
        if (IsBlank(c)) {
            if (!flowing.empty())
                AddBlock(std::exchange(flowing, {}));
            if (!pending_blank_)
                blank_format_ = Inner().chars;
            pending_blank_ = true;
            continue;
        }
        if (pending_blank_ && has_text_ && !pending_break_)
            builder_.AddText(" ", blank_format_);
        pending_blank_ = false;
        flowing += c;
    }
    if (!flowing.empty())
        AddBlock(flowing);
}

void HtmlReader::AddBreak() {
    pending_blank_ = false;
    if (!has_text_) {
        EndParagraph();
        return;
    }
    if (pending_break_)
        builder_.AddText("\n", Inner().chars);
    pending_break_ = true;
}

void HtmlReader::EndParagraph() {
    builder_.EndParagraph(Inner().paragraph, CellDepth());
    lists_.Count(Inner().paragraph);
}

void HtmlReader::EndBlock() {
    pending_blank_ = pending_break_ = false;
    if (!has_text_)
        return;
    EndParagraph();
    has_text_ = false;
    // Only the first paragraph of an item bears its mark.
    for (OpenElement& element : open_) {
        if (element.tag->flow == HtmlFlow::kItem) {
            SetList(element.paragraph, ListKind::kNone);
        }
    }
}

void HtmlReader::StartCell(const Attributes& attributes) {
    if (tables_.empty())
        return EndBlock();
    EndCell();
    OpenCell();
    tables_.back().SetSpans(ParseInt(attributes["colspan"]), ParseInt(attributes["rowspan"]));
}

void HtmlReader::OpenCell() {
    AddSpanned();
    tables_.back().in_row = tables_.back().in_cell = true;
}

void HtmlReader::AddSpanned() {
    while (tables_.back().AddSpanned())
        builder_.EndCell({}, CellDepth() + 1);
}

void HtmlReader::EndCell() {
    if (tables_.empty() || !tables_.back().in_cell)
        return EndBlock();
    pending_blank_ = pending_break_ = false;
    HtmlTable& table = tables_.back();
    // A paragraph that has ended in front of the cell's end is its last one.
    const std::optional<ParagraphFormat> ended = has_text_ ? std::nullopt : builder_.TakeBackEnd(CellDepth());
    has_text_ = false;
    const ParagraphFormat last = ended.value_or(Inner().paragraph);
    if (table.IsFull())
        builder_.EndParagraph(last, CellDepth());
    for (int cells = table.AddCell(), left = cells; left > 0; --left)
        builder_.EndCell(left == cells ? last : Inner().paragraph, CellDepth());
    table.in_cell = false;
}

void HtmlReader::EndRow() {
    if (tables_.empty())
        return EndBlock();
    EndCell();
    HtmlTable& table = tables_.back();
    if (table.Cells() > 0)
        AddSpanned();
    if (table.Cells() > 0)
        builder_.EndRow(table.TakeRow(), {}, CellDepth() + 1);
    table.in_row = false;
}

Document HtmlReader::Finish() {
    while (!tables_.empty()) {
        EndRow();
        tables_.pop_back();
    }
    EndBlock();
    return builder_.Finish(open_.front().paragraph, true);
}

using Reading = GuardedReader<HtmlReader>;

void OnStart(void* reading, const xmlChar* name, const xmlChar** attributes) {
    static_cast<Reading*>(reading)->Guard(
        [&](HtmlReader& reader) { reader.Start(View(name), Attributes(attributes)); });
}

void OnEnd(void* reading, const xmlChar* name) {
    static_cast<Reading*>(reading)->Guard([&](HtmlReader& reader) { reader.End(View(name)); });
}

void OnCharacters(void* reading, const xmlChar* text, int length) {
    static_cast<Reading*>(reading)->Guard([&](HtmlReader& reader) { reader.Characters(View(text, length)); });
}

struct FreeContext {
    void operator()(htmlParserCtxtPtr context) const { htmlFreeParserCtxt(context); }
};

}  // namespace

Document ReadHtml(std::string_view bytes, const HtmlLook& look) {
    HtmlReader reader(look);
    htmlSAXHandler handler = {};
    handler.startElement = OnStart;
    handler.endElement = OnEnd;
    handler.characters = handler.cdataBlock = OnCharacters;
    handler.ignorableWhitespace = OnCharacters;
    const std::string page = PageForParser(bytes);
    Reading reading(reader);
    const std::unique_ptr<htmlParserCtxt, FreeContext> context(
        htmlCreatePushParserCtxt(&handler, &reading, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8));
    if (!context)
        throw std::bad_alloc();
    htmlCtxtUseOptions(context.get(),
                       HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC);
    constexpr size_t kPiece = size_t{1} << 20;
    for (size_t at = 0; at < page.size() && !reader.IsFull() && !reading.HasThrown(); at += kPiece)
        htmlParseChunk(context.get(), page.data() + at, static_cast<int>(std::min(kPiece, page.size() - at)), 0);
    htmlParseChunk(context.get(), nullptr, 0, 1);
    reading.ThrowOn();
    if (context->errNo == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();  // a page that ends where the memory did would look whole
    return reader.Finish();
}

}  // namespace lore
