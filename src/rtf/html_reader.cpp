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
#include "rtf/html_element.h"
#include "rtf/html_layout.h"
#include "rtf/html_mender.h"
#include "rtf/html_page.h"

namespace lore {

namespace {

constexpr size_t kDeepest = 1000;
constexpr size_t kMostRtf = 1'000'000, kLeastOfList = 1000;  // bytes
constexpr int kDeepestTable = 8;
constexpr int16_t kListIndent = 720;

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

/// Whether cells in such an element are none of the table around it.
bool HoldsCells(HtmlFlow flow) {
    return flow == HtmlFlow::Table || flow == HtmlFlow::Skipped;
}

class HtmlReader {
public:
    explicit HtmlReader(const HtmlLook& look) : convert_(look.convert), alternatives_(look.alternatives) {
        HtmlElement body;
        body.chars.font = builder_.Font(look.font);
        body.chars.halfPoints = static_cast<int16_t>(std::clamp<int>(look.halfPoints, 1, kMostHalfPoints));
        open_.push_back(std::move(body));
    }

    void Start(std::string_view name, const HtmlAttributes& attributes);
    void End(std::string_view name);
    void Characters(std::string_view text);
    bool IsFull() const { return builder_.LeastSize() + lists_.InUse() * kLeastOfList > kMostRtf; }
    Document Finish();

private:
    const HtmlElement& Inner() const { return open_.back(); }
    int CellDepth() const {
        return static_cast<int>(
            std::count_if(tables_.begin(), tables_.end(), [](const HtmlTable& table) { return table.inCell; }));
    }
    void EndOpen(HtmlFlow flow);
    void Close(size_t keep);
    void Enter(HtmlElement& element, const HtmlAttributes& attributes);
    void Leave(const HtmlElement& element);
    void StartList(HtmlElement& element, const HtmlAttributes& attributes);
    void StartItem(HtmlElement& element, const HtmlAttributes& attributes, ListKind kind);
    void EndParagraph();
    void AddPicture(const HtmlAttributes& attributes);
    void BeginInline();
    void AddBlock(std::string_view text);
    void AddFlowing(std::string_view text);
    void AddBreak();
    void EndBlock();
    void StartCell(const HtmlAttributes& attributes);
    void OpenCell();
    void AddSpanned();
    void EndCell();
    void EndRow();

    const PictureConverter& convert_;
    const bool alternatives_;
    DocumentBuilder builder_;
    std::vector<HtmlElement> open_;
    std::vector<HtmlTable> tables_;
    size_t tooDeep_ = 0;
    HtmlLists lists_;
    bool hasText_ = false;       // in the paragraph that is open
    bool pendingBlank_ = false;  // white space that counts if more text follows
    CharFormat blankFormat_;     // the look of that white space
    bool pendingBreak_ = false;  // the same of a line break
};

void HtmlReader::Start(std::string_view name, const HtmlAttributes& attributes) {
    if (IsFull())
        return;
    const HtmlFlow flow = FindHtmlTag(name).flow;
    if (open_.size() >= kDeepest) {
        ++tooDeep_;
        if (flow == HtmlFlow::Block && !Inner().skipped)
            EndBlock();
        return;
    }
    if (flow == HtmlFlow::Cell || flow == HtmlFlow::Row)
        EndOpen(flow);
    else if (flow == HtmlFlow::Link && Inner().tag->flow == HtmlFlow::Link)
        Close(open_.size() - 1);
    HtmlElement element = ElementWithin(Inner(), name, attributes, builder_);
    if (!element.skipped)
        Enter(element, attributes);
    open_.push_back(std::move(element));
}

/// A cell ends the one in front of it in the table, and a row the one before, with all that is left open in it.
void HtmlReader::EndOpen(HtmlFlow flow) {
    for (size_t i = open_.size(); i-- > 1 && !HoldsCells(open_[i].tag->flow);) {
        if (open_[i].tag->flow == flow)
            return Close(i);
    }
}

void HtmlReader::Enter(HtmlElement& element, const HtmlAttributes& attributes) {
    if (element.isBlock)
        EndBlock();
    switch (element.tag->flow) {
        case HtmlFlow::Break:
            return AddBreak();
        case HtmlFlow::Rule:
            EndBlock();
            AddBlock("\u2014\u2014\u2014");
            return EndBlock();
        case HtmlFlow::Picture:
            return AddPicture(attributes);
        case HtmlFlow::Link:
            if (const std::string target = WithoutControls(Trim(attributes["href"]));
                !target.empty() && !target.starts_with('#'))
                element.chars.link = builder_.Link(target);
            return;
        case HtmlFlow::BulletList:
        case HtmlFlow::NumberedList:
            EndBlock();
            return StartList(element, attributes);
        case HtmlFlow::Table:
            EndBlock();
            if (tables_.size() < kDeepestTable)
                tables_.emplace_back();
            return;
        case HtmlFlow::Row:
            EndRow();
            if (!tables_.empty())
                tables_.back().inRow = true;
            return;
        case HtmlFlow::Cell:
            return StartCell(attributes);
        case HtmlFlow::Item:
            EndBlock();
            return StartItem(element, attributes, element.ownList.value_or(element.paragraph.list));
        case HtmlFlow::Block:
            return EndBlock();
        case HtmlFlow::Inline:
        case HtmlFlow::Skipped:
            return;
    }
}

void HtmlReader::StartList(HtmlElement& element, const HtmlAttributes& attributes) {
    ParagraphFormat& format = element.paragraph;
    const auto around = std::count_if(open_.begin(), open_.end(), [](const HtmlElement& outer) {
        return outer.tag->flow == HtmlFlow::BulletList || outer.tag->flow == HtmlFlow::NumberedList;
    });
    format.listLevel = static_cast<uint8_t>(std::min<std::ptrdiff_t>(around, 8));
    format.listStart = NumberIn(attributes["start"]).value_or(1);
    format.listId = lists_.Add(format.listStart);
    format.list = element.tag->flow == HtmlFlow::BulletList ? ListKind::Bullet : NumbersOf(attributes["type"]);
    format.leftIndent = static_cast<int16_t>(kListIndent * (format.listLevel + 1));
    format.firstIndent = -kListIndent / 2;
    SetList(format, element.ownList.value_or(format.list));
}

/// Items that say their own kind, or a number that isn't theirs, make a list of it.
void HtmlReader::StartItem(HtmlElement& element, const HtmlAttributes& attributes, ListKind kind) {
    ParagraphFormat& format = element.paragraph;
    if (format.list == ListKind::None)
        return;
    const int next = lists_.Next(format.listId);
    const auto number = NumberIn(kind == ListKind::Bullet ? std::string_view() : attributes["value"]);
    if (format.list == kind && number.value_or(next) == next)
        return;
    if (kind == ListKind::None)
        return SetList(format, kind);
    const int32_t id = format.listId;
    format.listStart = number.value_or(format.listStart);
    format.listId = lists_.Add(format.listStart);
    format.list = kind;
    for (HtmlElement& outer : open_) {
        if (outer.paragraph.listId == id) {
            outer.paragraph.list = kind;
            outer.paragraph.listId = format.listId;
            outer.paragraph.listStart = format.listStart;
        }
    }
}

void HtmlReader::End(std::string_view name) {
    if (tooDeep_ > 0) {
        --tooDeep_;
        return;
    }
    // What has been ended for a cell stood in the same table.
    size_t at = open_.size() - 1;
    while (at > 0 && open_[at].name != name && open_[at].tag->flow != HtmlFlow::Table)
        --at;
    if (at > 0 && open_[at].name == name)
        Close(at);
}

void HtmlReader::Close(size_t keep) {
    while (open_.size() > keep) {
        const HtmlElement element = std::move(open_.back());
        open_.pop_back();
        if (!element.skipped) {
            open_.push_back(element);
            Leave(element);
            open_.pop_back();
        }
    }
}

void HtmlReader::Leave(const HtmlElement& element) {
    switch (element.tag->flow) {
        case HtmlFlow::Block:
        case HtmlFlow::Item:
        case HtmlFlow::BulletList:
        case HtmlFlow::NumberedList:
            return EndBlock();
        case HtmlFlow::Cell:
            return EndCell();
        case HtmlFlow::Row:
            return EndRow();
        case HtmlFlow::Table:
            EndRow();
            if (!tables_.empty())
                tables_.pop_back();
            return;
        default:
            return element.isBlock ? EndBlock() : void();
    }
}

void HtmlReader::AddPicture(const HtmlAttributes& attributes) {
    std::optional<Picture> picture =
        ReadDataPicture(attributes["src"], attributes["width"], attributes["height"], convert_);
    if (!picture)
        return alternatives_ ? AddFlowing(attributes["alt"]) : void();
    if (pendingBlank_ && hasText_ && !pendingBreak_)
        builder_.AddText(" ", blankFormat_);
    pendingBlank_ = false;
    BeginInline();
    builder_.AddPicture(std::move(*picture), Inner().chars);
}

void HtmlReader::BeginInline() {
    // Text that stands in a row beside its cells gets a cell.
    if (!tables_.empty() && tables_.back().inRow && !tables_.back().inCell)
        OpenCell();
    if (std::exchange(pendingBreak_, false))
        builder_.AddText("\n", Inner().chars);
    hasText_ = true;
}

void HtmlReader::AddBlock(std::string_view text) {
    BeginInline();
    builder_.AddText(WithoutControls(text), Inner().chars);
}

void HtmlReader::Characters(std::string_view text) {
    if (Inner().skipped || IsFull())
        return;
    if (!Inner().keepsBlanks)
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
            if (!pendingBlank_)
                blankFormat_ = Inner().chars;
            pendingBlank_ = true;
            continue;
        }
        if (pendingBlank_ && hasText_ && !pendingBreak_)
            builder_.AddText(" ", blankFormat_);
        pendingBlank_ = false;
        flowing += c;
    }
    if (!flowing.empty())
        AddBlock(flowing);
}

void HtmlReader::AddBreak() {
    pendingBlank_ = false;
    if (!hasText_) {
        EndParagraph();
        return;
    }
    if (pendingBreak_)
        builder_.AddText("\n", Inner().chars);
    pendingBreak_ = true;
}

void HtmlReader::EndParagraph() {
    builder_.EndParagraph(Inner().paragraph, CellDepth());
    lists_.Count(Inner().paragraph);
}

void HtmlReader::EndBlock() {
    pendingBlank_ = pendingBreak_ = false;
    if (!hasText_)
        return;
    EndParagraph();
    hasText_ = false;
    // Only the first paragraph of an item bears its mark.
    for (HtmlElement& element : open_) {
        if (element.tag->flow == HtmlFlow::Item) {
            SetList(element.paragraph, ListKind::None);
        }
    }
}

void HtmlReader::StartCell(const HtmlAttributes& attributes) {
    if (tables_.empty())
        return EndBlock();
    EndCell();
    OpenCell();
    tables_.back().SetSpans(ParseInt(attributes["colspan"]), ParseInt(attributes["rowspan"]));
}

void HtmlReader::OpenCell() {
    AddSpanned();
    tables_.back().inRow = tables_.back().inCell = true;
}

void HtmlReader::AddSpanned() {
    while (tables_.back().AddSpanned())
        builder_.EndCell({}, CellDepth() + 1);
}

void HtmlReader::EndCell() {
    if (tables_.empty() || !tables_.back().inCell)
        return EndBlock();
    pendingBlank_ = pendingBreak_ = false;
    HtmlTable& table = tables_.back();
    // A paragraph that has ended in front of the cell's end is its last one.
    const std::optional<ParagraphFormat> ended = hasText_ ? std::nullopt : builder_.TakeBackEnd(CellDepth());
    hasText_ = false;
    const ParagraphFormat last = ended.value_or(Inner().paragraph);
    if (table.IsFull())
        builder_.EndParagraph(last, CellDepth());
    for (int cells = table.AddCell(), left = cells; left > 0; --left)
        builder_.EndCell(left == cells ? last : Inner().paragraph, CellDepth());
    table.inCell = false;
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
    table.inRow = false;
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

std::string_view NameOf(const xmlChar* element) {
    std::string_view name = View(element);
    name.remove_suffix(name.ends_with(kKeptMark) ? 1 : 0);
    return name;
}

void OnStart(void* reading, const xmlChar* name, const xmlChar** attributes) {
    static_cast<Reading*>(reading)->Guard(
        [&](HtmlReader& reader) { reader.Start(NameOf(name), HtmlAttributes(attributes)); });
}

void OnEnd(void* reading, const xmlChar* name) {
    static_cast<Reading*>(reading)->Guard([&](HtmlReader& reader) { reader.End(NameOf(name)); });
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
