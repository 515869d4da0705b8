#include "rtf/control_words.h"

#include <array>

#include "rtf/document.h"

namespace lore {

namespace {

template <typename Value>
constexpr ControlWord Entry(std::string_view name, WordGroup group, Word word, Value value) {
    return {name, group, word, static_cast<int32_t>(value)};
}
constexpr ControlWord Goes(std::string_view name, Destination destination) {
    return Entry(name, WordGroup::Destination, Word::None, destination);
}
constexpr ControlWord Stands(std::string_view name, char32_t character) {
    return Entry(name, WordGroup::Character, Word::None, character);
}
constexpr ControlWord Breaks(std::string_view name, TextBreak kind) {
    return Entry(name, WordGroup::Break, Word::None, kind);
}
constexpr ControlWord Reads(std::string_view name, Word word, int value = 0) {
    return Entry(name, WordGroup::Text, word, value);
}
constexpr ControlWord Looks(std::string_view name, Word word, int value = 0) {
    return Entry(name, WordGroup::CharacterFormat, word, value);
}
template <typename Value = int>
constexpr ControlWord Lays(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::ParagraphFormat, word, value);
}
template <typename Value = int>
constexpr ControlWord Rows(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::Table, word, value);
}
template <typename Value = int>
constexpr ControlWord Draws(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::Picture, word, value);
}
constexpr ControlWord Lists(std::string_view name, Word word) {
    return Entry(name, WordGroup::TableEntry, word, 0);
}

using enum Destination;

constexpr ControlWord kWords[] = {
    Goes("rtf", Same),
    Goes("field", Same),
    Goes("fldrslt", Same),
    Goes("upr", AnsiTwin),
    Goes("ud", UnicodeTwin),
    Goes("object", Object),
    Goes("result", Result),
    Goes("fonttbl", FontTable),
    Goes("colortbl", ColorTable),
    Goes("listtable", ListTable),
    Entry("list", WordGroup::Destination, Word::ListEntry, Same),
    Entry("listlevel", WordGroup::Destination, Word::LevelEntry, Same),
    Goes("listoverridetable", ListOverrides),
    Entry("listoverride", WordGroup::Destination, Word::OverrideEntry, Same),
    Goes("pn", OldList),
    Goes("fldinst", FieldInstruction),
    Goes("pict", Picture),
    Goes("shppict", NewPicture),
    Goes("nonshppict", OldPicture),
    Goes("nesttableprops", RowProperties),
    Goes("nonesttables", Skip),
    Goes("pntext", Skip),
    Goes("listtext", Skip),
    Goes("pntxta", Skip),
    Goes("pntxtb", Skip),
    Goes("pnseclvl", Skip),
    Goes("leveltext", Skip),
    Goes("levelnumbers", Skip),
    Goes("listname", Skip),
    Goes("liststylename", Skip),
    Goes("listpicture", Skip),
    Goes("lfolevel", Skip),
    Goes("stylesheet", Skip),
    Goes("revtbl", Skip),
    Goes("rsidtbl", Skip),
    Goes("filetbl", Skip),
    Goes("generator", Skip),
    Goes("themedata", Skip),
    Goes("colorschememapping", Skip),
    Goes("datastore", Skip),
    Goes("latentstyles", Skip),
    Goes("xmlnstbl", Skip),
    Goes("pgdsctbl", Skip),
    Goes("falt", Skip),
    Goes("panose", Skip),
    Goes("fontemb", Skip),
    Goes("fname", Skip),
    Goes("objdata", Skip),
    Goes("objclass", Skip),
    Goes("objname", Skip),
    Goes("objalias", Skip),
    Goes("objsect", Skip),
    Goes("blipuid", Skip),
    Goes("picprop", Skip),
    Goes("formfield", Skip),
    Goes("datafield", Skip),
    Goes("shp", Shape),
    Goes("shpgrp", Shape),
    Goes("do", Shape),
    Goes("shpinst", Same),
    Goes("shptxt", Aside),
    Goes("dptxbxtext", Aside),
    Goes("footnote", Aside),
    Goes("annotation", Aside),
    Goes("shprslt", Skip),
    Goes("info", Keep),
    Goes("header", Keep),
    Goes("headerl", Keep),
    Goes("headerr", Keep),
    Goes("headerf", Keep),
    Goes("footer", Keep),
    Goes("footerl", Keep),
    Goes("footerr", Keep),
    Goes("footerf", Keep),
    Goes("atnid", Keep),
    Goes("atnauthor", Keep),
    Goes("bkmkstart", Keep),
    Goes("bkmkend", Keep),
    Goes("xe", Keep),
    Goes("rxe", Keep),
    Goes("tc", Keep),
    Goes("tcn", Keep),
    Goes("txe", Keep),
    Goes("mmath", Keep),
    Goes("ftnsep", Keep),
    Goes("ftnsepc", Keep),
    Goes("ftncn", Keep),
    Goes("aftnsep", Keep),
    Goes("aftnsepc", Keep),
    Goes("aftncn", Keep),

    Stands("emdash", 0x2014),
    Stands("endash", 0x2013),
    Stands("emspace", 0x2003),
    Stands("enspace", 0x2002),
    Stands("qmspace", 0x2005),
    Stands("bullet", 0x2022),
    Stands("lquote", 0x2018),
    Stands("rquote", 0x2019),
    Stands("ldblquote", 0x201C),
    Stands("rdblquote", 0x201D),
    Stands("ltrmark", 0x200E),
    Stands("rtlmark", 0x200F),
    Stands("zwj", 0x200D),
    Stands("zwnj", 0x200C),
    Stands("zwbo", 0x200B),
    Stands("zwnbo", 0x2060),
    Stands("tab", '\t'),

    Breaks("par", TextBreak::Paragraph),
    Breaks("line", TextBreak::Line),
    Breaks("lbr", TextBreak::Line),
    Breaks("page", TextBreak::Page),
    Breaks("column", TextBreak::Column),
    Breaks("sect", TextBreak::Section),
    Breaks("cell", TextBreak::Cell),
    Breaks("row", TextBreak::Row),
    Breaks("nestcell", TextBreak::NestedCell),
    Breaks("nestrow", TextBreak::NestedRow),

    Reads("u", Word::Unicode),
    Reads("uc", Word::UnicodeSkip),
    Reads("f", Word::Font),
    Reads("plain", Word::Plain),
    Reads("v", Word::Hidden),
    Reads("deleted", Word::Deleted),
    Reads("mvf", Word::Deleted),  // it stands where it was moved to as well
    Reads("bin", Word::Binary),
    Reads("ansi", Word::Charset, 1252),
    Reads("mac", Word::Charset, 10000),
    Reads("pc", Word::Charset, 437),
    Reads("pca", Word::Charset, 850),
    Reads("ansicpg", Word::AnsiCodePage),
    Reads("deff", Word::DefaultFont),

    Looks("b", Word::Bold),
    Looks("i", Word::Italic),
    Looks("ul", Word::Underline),
    Looks("uld", Word::Underline),
    Looks("uldash", Word::Underline),
    Looks("uldashd", Word::Underline),
    Looks("uldashdd", Word::Underline),
    Looks("uldb", Word::Underline),
    Looks("ulhwave", Word::Underline),
    Looks("ulldash", Word::Underline),
    Looks("ulth", Word::Underline),
    Looks("ulthd", Word::Underline),
    Looks("ulthdash", Word::Underline),
    Looks("ulthdashd", Word::Underline),
    Looks("ulthdashdd", Word::Underline),
    Looks("ulthldash", Word::Underline),
    Looks("ululdbwave", Word::Underline),
    Looks("ulw", Word::Underline),
    Looks("ulwave", Word::Underline),
    Looks("ulnone", Word::NoUnderline),
    Looks("strike", Word::Strike),
    Looks("striked", Word::Strike),
    Looks("scaps", Word::SmallCaps),
    Looks("caps", Word::AllCaps),
    Looks("super", Word::Script, kScriptSuper),
    Looks("sub", Word::Script, kScriptSub),
    Looks("nosupersub", Word::Script, kScriptNone),
    Looks("up", Word::Script, kScriptUp),
    Looks("dn", Word::Script, kScriptDown),
    Looks("fs", Word::Size),
    Looks("cf", Word::Color),
    Looks("highlight", Word::Highlight),
    Looks("cb", Word::Shading),
    Looks("chcbpat", Word::Shading),

    Lays("pard", Word::ParagraphDefaults),
    Lays("ql", Word::Align, ParagraphAlign::Left),
    Lays("qc", Word::Align, ParagraphAlign::Center),
    Lays("qr", Word::Align, ParagraphAlign::Right),
    Lays("qj", Word::Align, ParagraphAlign::Justify),
    Lays("qd", Word::Align, ParagraphAlign::Justify),
    Lays("rtlpar", Word::RightToLeft, 1),
    Lays("ltrpar", Word::RightToLeft, 0),
    Lays("li", Word::LeftIndent),
    Lays("ri", Word::RightIndent),
    Lays("fi", Word::FirstIndent),
    Lays("sb", Word::SpaceBefore),
    Lays("sa", Word::SpaceAfter),
    Lays("sl", Word::LineSpacing),
    Lays("slmult", Word::LineMultiple),
    Lays("intbl", Word::InTable),
    Lays("itap", Word::TableLevel),
    Lays("ls", Word::ListOverride),
    Lays("ilvl", Word::ListLevel),
    Lays("pnlvlblt", Word::OldListKind, ListKind::Bullet),
    Lays("pnlvlbody", Word::OldListKind, ListKind::Decimal),
    Lays("pndec", Word::OldListKind, ListKind::Decimal),
    Lays("pncard", Word::OldListKind, ListKind::Decimal),
    Lays("pnlcltr", Word::OldListKind, ListKind::LowerLetter),
    Lays("pnucltr", Word::OldListKind, ListKind::UpperLetter),
    Lays("pnlcrm", Word::OldListKind, ListKind::LowerRoman),
    Lays("pnucrm", Word::OldListKind, ListKind::UpperRoman),
    Lays("pnstart", Word::OldListStart),

    Rows("trowd", Word::RowDefaults),
    Rows("trleft", Word::RowLeft),
    Rows("trgaph", Word::RowGap),
    Rows("cellx", Word::CellEdge),
    Rows("clbrdrt", Word::CellBorder, kBorderTop),
    Rows("clbrdrl", Word::CellBorder, kBorderLeft),
    Rows("clbrdrb", Word::CellBorder, kBorderBottom),
    Rows("clbrdrr", Word::CellBorder, kBorderRight),
    Rows("brdrs", Word::BorderStyle),
    Rows("brdrth", Word::BorderStyle),
    Rows("brdrdb", Word::BorderStyle),
    Rows("brdrdot", Word::BorderStyle),
    Rows("brdrdash", Word::BorderStyle),
    Rows("brdrhair", Word::BorderStyle),
    Rows("brdrnone", Word::NoBorder),
    Rows("brdrnil", Word::NoBorder),
    Rows("clmgf", Word::CellAcross, CellMerge::First),
    Rows("clmrg", Word::CellAcross, CellMerge::Continued),
    Rows("clvmgf", Word::CellDown, CellMerge::First),
    Rows("clvmrg", Word::CellDown, CellMerge::Continued),
    Rows("clcbpat", Word::CellShading),

    Draws("pngblip", Word::PictureKind, PictureKind::Png),
    Draws("jpegblip", Word::PictureKind, PictureKind::Jpeg),
    Draws("wmetafile", Word::PictureKind, PictureKind::Wmf),
    Draws("emfblip", Word::PictureKind, PictureKind::Emf),
    Draws("dibitmap", Word::PictureKind, PictureKind::Dib),
    Draws("picw", Word::PictureWidth),
    Draws("pich", Word::PictureHeight),
    Draws("picwgoal", Word::GoalWidth),
    Draws("pichgoal", Word::GoalHeight),
    Draws("picscalex", Word::ScaleX),
    Draws("picscaley", Word::ScaleY),

    Lists("fcharset", Word::FontCharset),
    Lists("cpg", Word::FontCodePage),
    Lists("red", Word::Red),
    Lists("green", Word::Green),
    Lists("blue", Word::Blue),
    Lists("listid", Word::ListId),
    Lists("levelnfc", Word::LevelKind),
    Lists("levelnfcn", Word::LevelKind),
    Lists("levelstartat", Word::LevelStart),
};

constexpr size_t kSlots = 1024;
static_assert(std::size(kWords) * 3 < kSlots);

constexpr size_t SlotOf(std::string_view name) {
    uint32_t hash = 2166136261u;
    for (char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return (hash ^ (hash >> 15)) % kSlots;
}

/// The index of the word plus one at its slot or, when that is taken, at the next free one.
constexpr std::array<uint16_t, kSlots> MakeSlots() {
    std::array<uint16_t, kSlots> slots{};
    for (size_t i = 0; i < std::size(kWords); ++i) {
        size_t slot = SlotOf(kWords[i].name);
        while (slots[slot] != 0)
            slot = (slot + 1) % kSlots;
        slots[slot] = static_cast<uint16_t>(i + 1);
    }
    return slots;
}

constexpr std::array<uint16_t, kSlots> kSlotTable = MakeSlots();

}  // namespace

const ControlWord* FindControlWord(std::string_view name) {
    for (size_t slot = SlotOf(name); kSlotTable[slot] != 0; slot = (slot + 1) % kSlots) {
        const ControlWord& word = kWords[kSlotTable[slot] - 1];
        if (word.name == name)
            return &word;
    }
    return nullptr;
}

}  // namespace lore
