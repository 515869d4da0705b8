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
    return Entry(name, WordGroup::kDestination, Word::kNone, destination);
}
constexpr ControlWord Stands(std::string_view name, char32_t character) {
    return Entry(name, WordGroup::kCharacter, Word::kNone, character);
}
constexpr ControlWord Breaks(std::string_view name, TextBreak kind) {
    return Entry(name, WordGroup::kBreak, Word::kNone, kind);
}
constexpr ControlWord Reads(std::string_view name, Word word, int value = 0) {
    return Entry(name, WordGroup::kText, word, value);
}
constexpr ControlWord Looks(std::string_view name, Word word, int value = 0) {
    return Entry(name, WordGroup::kCharacterFormat, word, value);
}
template <typename Value = int>
constexpr ControlWord Lays(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::kParagraphFormat, word, value);
}
template <typename Value = int>
constexpr ControlWord Rows(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::kTable, word, value);
}
template <typename Value = int>
constexpr ControlWord Draws(std::string_view name, Word word, Value value = {}) {
    return Entry(name, WordGroup::kPicture, word, value);
}
constexpr ControlWord Lists(std::string_view name, Word word) {
    return Entry(name, WordGroup::kTableEntry, word, 0);
}

using enum Destination;

constexpr ControlWord kWords[] = {
    Goes("rtf", kSame),
    Goes("field", kSame),
    Goes("fldrslt", kSame),
    Goes("upr", kAnsiTwin),
    Goes("ud", kUnicodeTwin),
    Goes("object", kObject),
    Goes("result", kResult),
    Goes("fonttbl", kFontTable),
    Goes("colortbl", kColorTable),
    Goes("listtable", kListTable),
    Entry("list", WordGroup::kDestination, Word::kListEntry, kSame),
    Entry("listlevel", WordGroup::kDestination, Word::kLevelEntry, kSame),
    Goes("listoverridetable", kListOverrides),
    Entry("listoverride", WordGroup::kDestination, Word::kOverrideEntry, kSame),
    Goes("pn", kOldList),
    Goes("fldinst", kFieldInstruction),
    Goes("pict", kPicture),
    Goes("shppict", kNewPicture),
    Goes("nonshppict", kOldPicture),
    Goes("nesttableprops", kRowProperties),
    Goes("nonesttables", kSkip),
    Goes("pntext", kSkip),
    Goes("listtext", kSkip),
    Goes("pntxta", kSkip),
    Goes("pntxtb", kSkip),
    Goes("pnseclvl", kSkip),
    Goes("leveltext", kSkip),
    Goes("levelnumbers", kSkip),
    Goes("listname", kSkip),
    Goes("liststylename", kSkip),
    Goes("listpicture", kSkip),
    Goes("lfolevel", kSkip),
    Goes("stylesheet", kSkip),
    Goes("revtbl", kSkip),
    Goes("rsidtbl", kSkip),
    Goes("filetbl", kSkip),
    Goes("generator", kSkip),
    Goes("themedata", kSkip),
    Goes("colorschememapping", kSkip),
    Goes("datastore", kSkip),
    Goes("latentstyles", kSkip),
    Goes("xmlnstbl", kSkip),
    Goes("pgdsctbl", kSkip),
    Goes("falt", kSkip),
    Goes("panose", kSkip),
    Goes("fontemb", kSkip),
    Goes("fname", kSkip),
    Goes("objdata", kSkip),
    Goes("objclass", kSkip),
    Goes("objname", kSkip),
    Goes("objalias", kSkip),
    Goes("objsect", kSkip),
    Goes("blipuid", kSkip),
    Goes("picprop", kSkip),
    Goes("formfield", kSkip),
    Goes("datafield", kSkip),
    Goes("shp", kShape),
    Goes("shpgrp", kShape),
    Goes("do", kShape),
    Goes("shpinst", kSame),
    Goes("shptxt", kAside),
    Goes("dptxbxtext", kAside),
    Goes("footnote", kAside),
    Goes("annotation", kAside),
    Goes("shprslt", kSkip),
    Goes("info", kKeep),
    Goes("header", kKeep),
    Goes("headerl", kKeep),
    Goes("headerr", kKeep),
    Goes("headerf", kKeep),
    Goes("footer", kKeep),
    Goes("footerl", kKeep),
    Goes("footerr", kKeep),
    Goes("footerf", kKeep),
    Goes("atnid", kKeep),
    Goes("atnauthor", kKeep),
    Goes("bkmkstart", kKeep),
    Goes("bkmkend", kKeep),
    Goes("xe", kKeep),
    Goes("rxe", kKeep),
    Goes("tc", kKeep),
    Goes("tcn", kKeep),
    Goes("txe", kKeep),
    Goes("mmath", kKeep),
    Goes("ftnsep", kKeep),
    Goes("ftnsepc", kKeep),
    Goes("ftncn", kKeep),
    Goes("aftnsep", kKeep),
    Goes("aftnsepc", kKeep),
    Goes("aftncn", kKeep),

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

    Breaks("par", TextBreak::kParagraph),
    Breaks("line", TextBreak::kLine),
    Breaks("lbr", TextBreak::kLine),
    Breaks("page", TextBreak::kPage),
    Breaks("column", TextBreak::kColumn),
    Breaks("sect", TextBreak::kSection),
    Breaks("cell", TextBreak::kCell),
    Breaks("row", TextBreak::kRow),
    Breaks("nestcell", TextBreak::kNestedCell),
    Breaks("nestrow", TextBreak::kNestedRow),

    Reads("u", Word::kUnicode),
    Reads("uc", Word::kUnicodeSkip),
    Reads("f", Word::kFont),
    Reads("plain", Word::kPlain),
    Reads("v", Word::kHidden),
    Reads("deleted", Word::kDeleted),
    Reads("bin", Word::kBinary),
    Reads("ansi", Word::kCharset, 1252),
    Reads("mac", Word::kCharset, 10000),
    Reads("pc", Word::kCharset, 437),
    Reads("pca", Word::kCharset, 850),
    Reads("ansicpg", Word::kAnsiCodePage),
    Reads("deff", Word::kDefaultFont),

    Looks("b", Word::kBold),
    Looks("i", Word::kItalic),
    Looks("ul", Word::kUnderline),
    Looks("uld", Word::kUnderline),
    Looks("uldash", Word::kUnderline),
    Looks("uldashd", Word::kUnderline),
    Looks("uldashdd", Word::kUnderline),
    Looks("uldb", Word::kUnderline),
    Looks("ulhwave", Word::kUnderline),
    Looks("ulldash", Word::kUnderline),
    Looks("ulth", Word::kUnderline),
    Looks("ulthd", Word::kUnderline),
    Looks("ulthdash", Word::kUnderline),
    Looks("ulthdashd", Word::kUnderline),
    Looks("ulthdashdd", Word::kUnderline),
    Looks("ulthldash", Word::kUnderline),
    Looks("ululdbwave", Word::kUnderline),
    Looks("ulw", Word::kUnderline),
    Looks("ulwave", Word::kUnderline),
    Looks("ulnone", Word::kNoUnderline),
    Looks("strike", Word::kStrike),
    Looks("striked", Word::kStrike),
    Looks("scaps", Word::kSmallCaps),
    Looks("caps", Word::kAllCaps),
    Looks("super", Word::kScript, kScriptSuper),
    Looks("sub", Word::kScript, kScriptSub),
    Looks("nosupersub", Word::kScript, kScriptNone),
    Looks("up", Word::kScript, kScriptUp),
    Looks("dn", Word::kScript, kScriptDown),
    Looks("fs", Word::kSize),
    Looks("cf", Word::kColor),
    Looks("highlight", Word::kHighlight),
    Looks("cb", Word::kShading),
    Looks("chcbpat", Word::kShading),

    Lays("pard", Word::kParagraphDefaults),
    Lays("ql", Word::kAlign, ParagraphAlign::kLeft),
    Lays("qc", Word::kAlign, ParagraphAlign::kCenter),
    Lays("qr", Word::kAlign, ParagraphAlign::kRight),
    Lays("qj", Word::kAlign, ParagraphAlign::kJustify),
    Lays("qd", Word::kAlign, ParagraphAlign::kJustify),
    Lays("rtlpar", Word::kRightToLeft, 1),
    Lays("ltrpar", Word::kRightToLeft, 0),
    Lays("li", Word::kLeftIndent),
    Lays("ri", Word::kRightIndent),
    Lays("fi", Word::kFirstIndent),
    Lays("sb", Word::kSpaceBefore),
    Lays("sa", Word::kSpaceAfter),
    Lays("sl", Word::kLineSpacing),
    Lays("slmult", Word::kLineMultiple),
    Lays("intbl", Word::kInTable),
    Lays("itap", Word::kTableLevel),
    Lays("ls", Word::kListOverride),
    Lays("ilvl", Word::kListLevel),
    Lays("pnlvlblt", Word::kOldListKind, ListKind::kBullet),
    Lays("pnlvlbody", Word::kOldListKind, ListKind::kDecimal),
    Lays("pndec", Word::kOldListKind, ListKind::kDecimal),
    Lays("pncard", Word::kOldListKind, ListKind::kDecimal),
    Lays("pnlcltr", Word::kOldListKind, ListKind::kLowerLetter),
    Lays("pnucltr", Word::kOldListKind, ListKind::kUpperLetter),
    Lays("pnlcrm", Word::kOldListKind, ListKind::kLowerRoman),
    Lays("pnucrm", Word::kOldListKind, ListKind::kUpperRoman),
    Lays("pnstart", Word::kOldListStart),

    Rows("trowd", Word::kRowDefaults),
    Rows("trleft", Word::kRowLeft),
    Rows("trgaph", Word::kRowGap),
    Rows("cellx", Word::kCellEdge),
    Rows("clbrdrt", Word::kCellBorder, kBorderTop),
    Rows("clbrdrl", Word::kCellBorder, kBorderLeft),
    Rows("clbrdrb", Word::kCellBorder, kBorderBottom),
    Rows("clbrdrr", Word::kCellBorder, kBorderRight),
    Rows("brdrs", Word::kBorderStyle),
    Rows("brdrth", Word::kBorderStyle),
    Rows("brdrdb", Word::kBorderStyle),
    Rows("brdrdot", Word::kBorderStyle),
    Rows("brdrdash", Word::kBorderStyle),
    Rows("brdrhair", Word::kBorderStyle),
    Rows("brdrnone", Word::kNoBorder),
    Rows("brdrnil", Word::kNoBorder),
    Rows("clmgf", Word::kCellAcross, CellMerge::kFirst),
    Rows("clmrg", Word::kCellAcross, CellMerge::kContinued),
    Rows("clvmgf", Word::kCellDown, CellMerge::kFirst),
    Rows("clvmrg", Word::kCellDown, CellMerge::kContinued),
    Rows("clcbpat", Word::kCellShading),

    Draws("pngblip", Word::kPictureKind, PictureKind::kPng),
    Draws("jpegblip", Word::kPictureKind, PictureKind::kJpeg),
    Draws("wmetafile", Word::kPictureKind, PictureKind::kWmf),
    Draws("emfblip", Word::kPictureKind, PictureKind::kEmf),
    Draws("dibitmap", Word::kPictureKind, PictureKind::kDib),
    Draws("picw", Word::kPictureWidth),
    Draws("pich", Word::kPictureHeight),
    Draws("picwgoal", Word::kGoalWidth),
    Draws("pichgoal", Word::kGoalHeight),
    Draws("picscalex", Word::kScaleX),
    Draws("picscaley", Word::kScaleY),

    Lists("fcharset", Word::kFontCharset),
    Lists("cpg", Word::kFontCodePage),
    Lists("red", Word::kRed),
    Lists("green", Word::kGreen),
    Lists("blue", Word::kBlue),
    Lists("listid", Word::kListId),
    Lists("levelnfc", Word::kLevelKind),
    Lists("levelnfcn", Word::kLevelKind),
    Lists("levelstartat", Word::kLevelStart),
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
