#include "ui/editor/note_formats.h"

#include <QTextBlock>
#include <algorithm>

#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr double kListHang = 24;  // pixels between a mark that stands in the line and its text
constexpr int kHasGround = 1 << 24;
constexpr int kBordersShift = 25;

// All fields of a paragraph format, one after the other.
std::string KeyOf(const ParagraphFormat& f) {
    std::string key;
    for (const int32_t field :
         {static_cast<int32_t>(f.align), int32_t{f.rightToLeft}, static_cast<int32_t>(f.list), int32_t{f.listLevel},
          f.listId, int32_t{f.listStart}, int32_t{f.leftIndent}, int32_t{f.rightIndent}, int32_t{f.firstIndent},
          int32_t{f.spaceBefore}, int32_t{f.spaceAfter}, int32_t{f.lineSpacing}, int32_t{f.lineMultiple}})
        key.append(reinterpret_cast<const char*>(&field), sizeof field);
    return key;
}

template <typename T>
int Append(std::vector<T>& list, T value) {
    list.push_back(std::move(value));
    return static_cast<int>(list.size()) - 1;
}

// The entry that a property names, or a default.
template <typename T>
T At(const std::vector<T>& list, const QTextFormat& format, int property, T fallback = T()) {
    bool named = false;
    const int number = format.property(property).toInt(&named);
    return named && number >= 0 && static_cast<size_t>(number) < list.size() ? list[static_cast<size_t>(number)]
                                                                             : fallback;
}

}  // namespace

void NoteFormats::Reset(const Document& document) {
    mark_ = QUuid::createUuid();
    tables_ = Document();
    tables_.fonts = document.fonts;
    tables_.links = document.links;
    tables_.codePage = document.codePage;
    tables_.defaultFont = document.defaultFont;
    fontNumbers_.clear();
    linkNumbers_.clear();
    for (size_t i = 0; i < tables_.fonts.size(); ++i)
        fontNumbers_.emplace(tables_.fonts[i].name, static_cast<int32_t>(i));
    for (size_t i = 0; i < tables_.links.size(); ++i)
        linkNumbers_.emplace(tables_.links[i], static_cast<int32_t>(i));
    characterNumbers_.clear();
    characters_.clear();
    paragraphNumbers_.clear();
    paragraphs_.clear();
    pictures_.clear();
    kept_.clear();
    tableRows_.clear();
    rows_.clear();
    default_.font = -1;
}

void NoteFormats::SetDefault(const std::string& font, int halfPoints) {
    defaultFont_ = font;
    default_ = CharFormat();
    default_.halfPoints = static_cast<int16_t>(std::clamp<int>(halfPoints, 1, kMostHalfPoints));
}

int32_t NoteFormats::NewListId(const QTextDocument& shown) const {
    int32_t highest = 0;
    for (QTextBlock block = shown.begin(); block.isValid(); block = block.next())
        highest = std::max(highest, Paragraph(block.blockFormat()).listId);
    return highest < INT32_MAX ? highest + 1 : 1;
}

CharFormat NoteFormats::Default() {
    if (default_.font < 0 && !defaultFont_.empty())
        default_.font = Font(defaultFont_);
    return default_;
}

int32_t NoteFormats::Font(const std::string& name) {
    const auto [entry, added] = fontNumbers_.emplace(name, static_cast<int32_t>(tables_.fonts.size()));
    if (added) {
        int32_t number = -1;
        for (const DocumentFont& font : tables_.fonts)
            number = std::max(number, font.number);
        tables_.fonts.push_back({number + 1, 0, name});
    }
    return entry->second;
}

int32_t NoteFormats::Link(const std::string& target) {
    const auto [entry, added] = linkNumbers_.emplace(target, static_cast<int32_t>(tables_.links.size()));
    if (added)
        tables_.links.push_back(target);
    return entry->second;
}

std::string NoteFormats::FontName(const CharFormat& format) const {
    const int32_t font = format.font >= 0 ? format.font : tables_.defaultFont;
    return font >= 0 && static_cast<size_t>(font) < tables_.fonts.size() ? tables_.fonts[static_cast<size_t>(font)].name
                                                                         : std::string();
}

std::string NoteFormats::LinkTarget(const CharFormat& format) const {
    return format.link >= 0 && static_cast<size_t>(format.link) < tables_.links.size()
               ? tables_.links[static_cast<size_t>(format.link)]
               : std::string();
}

CharFormat NoteFormats::Imported(const CharFormat& format, const Document& from) {
    CharFormat own = format;
    const int32_t font = format.font >= 0 ? format.font : from.defaultFont;
    own.font = font >= 0 && static_cast<size_t>(font) < from.fonts.size()
                   ? Font(from.fonts[static_cast<size_t>(font)].name)
                   : Default().font;
    own.link = format.link >= 0 && static_cast<size_t>(format.link) < from.links.size()
                   ? Link(from.links[static_cast<size_t>(format.link)])
                   : -1;
    return own;
}

QTextCharFormat NoteFormats::Shown(const CharFormat& format, const QColor& ground) {
    const auto [entry, added] = characterNumbers_.emplace(format, static_cast<int>(characters_.size()));
    if (added)
        characters_.push_back(format);
    QTextCharFormat shown = Screen().Characters(format, ground);
    shown.setProperty(kCharsProperty, entry->second);
    return shown;
}

QTextBlockFormat NoteFormats::Shown(const ParagraphFormat& format) {
    const auto [entry, added] = paragraphNumbers_.emplace(KeyOf(format), static_cast<int>(paragraphs_.size()));
    if (added)
        paragraphs_.push_back(format);
    QTextBlockFormat shown = Screen().Paragraph(format);
    // The mark of a list item is painted beside the text, not part of it.
    if (format.list != ListKind::None)
        shown.setTextIndent(shown.textIndent() < 0 ? 0 : shown.textIndent() + kListHang * look_.zoom);
    shown.setProperty(kParagraphProperty, entry->second);
    return shown;
}

QTextTableCellFormat NoteFormats::Shown(const CellFormat& format) {
    int packed = format.borders << kBordersShift;
    if (format.background)
        packed |= kHasGround | format.background->red << 16 | format.background->green << 8 | format.background->blue;
    QTextTableCellFormat shown = Screen().Cell(format);
    shown.setProperty(kCellProperty, packed);
    return shown;
}

CharFormat NoteFormats::Characters(const QTextFormat& shown) const {
    return At(characters_, shown, kCharsProperty, default_);
}
ParagraphFormat NoteFormats::Paragraph(const QTextFormat& shown) const {
    return At(paragraphs_, shown, kParagraphProperty);
}
CellFormat NoteFormats::Cell(const QTextFormat& shown) const {
    const int packed = shown.intProperty(kCellProperty);
    CellFormat cell;
    cell.borders = static_cast<uint8_t>(packed >> kBordersShift & 15);
    if (packed & kHasGround)
        cell.background = TextColor{static_cast<uint8_t>(packed >> 16), static_cast<uint8_t>(packed >> 8),
                                    static_cast<uint8_t>(packed)};
    return cell;
}
int NoteFormats::AddPicture(std::shared_ptr<const Picture> picture) {
    return Append(pictures_, std::move(picture));
}
int NoteFormats::AddKept(std::shared_ptr<const std::string> rtf) {
    return Append(kept_, std::move(rtf));
}
int NoteFormats::AddTable(std::shared_ptr<const NoteTable> table) {
    return Append(tableRows_, std::move(table));
}
int NoteFormats::AddRow(std::shared_ptr<const RowFormat> row) {
    return Append(rows_, std::move(row));
}
std::shared_ptr<const Picture> NoteFormats::PictureOf(const QTextFormat& shown) const {
    return At(pictures_, shown, kPictureProperty);
}
std::shared_ptr<const std::string> NoteFormats::KeptOf(const QTextFormat& shown) const {
    return At(kept_, shown, kKeptProperty);
}
std::shared_ptr<const NoteTable> NoteFormats::TableOf(const QTextFormat& shown) const {
    return At(tableRows_, shown, kTableProperty);
}
std::shared_ptr<const RowFormat> NoteFormats::RowOf(const QTextFormat& shown) const {
    return At(rows_, shown, kFlatRowProperty);
}

}  // namespace lore
