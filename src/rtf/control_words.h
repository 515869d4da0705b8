#pragma once

#include <cstdint>
#include <string_view>

namespace lore {

/// What a control word is about: who acts on it.
enum class WordGroup : uint8_t {
    kDestination,  ///< the group is something else than body text; the value is a Destination
    kCharacter,    ///< stands for the character that the value gives
    kBreak,        ///< ends a line, paragraph, cell or row; the value is a TextBreak
    kText,         ///< decides how text is read: code pages, fonts, hidden text
    kCharacterFormat,
    kParagraphFormat,
    kTable,
    kPicture,
    kTableEntry,  ///< within the tables of fonts, colours and lists
};

enum class Destination : uint8_t {
    kBody,
    kSame,      ///< no change: the group's text goes where the text around it goes
    kSkip,      ///< passed over whole
    kKeep,      ///< passed over, and kept in a document as it stood
    kAnsiTwin,  ///< an older form of what follows in Unicode
    kUnicodeTwin,
    kObject,
    kShape,   ///< a drawing, which may hold text boxes and a picture
    kAside,   ///< text beside the body, which is read at its place
    kResult,  ///< what an object shows: a picture, or text that is read like that beside the body
    kFontTable,
    kColorTable,
    kListTable,
    kListOverrides,
    kOldList,  ///< list properties of a paragraph as older programs write them
    kFieldInstruction,
    kPicture,
    kNewPicture,  ///< a picture, with a twin for older readers behind it
    kOldPicture,
    kRowProperties,
};

enum class TextBreak : uint8_t { kParagraph, kLine, kPage, kColumn, kSection, kCell, kRow, kNestedCell, kNestedRow };

/// The character that a break is in the plain text.
constexpr char CharacterOf(TextBreak kind) {
    return kind == TextBreak::kCell || kind == TextBreak::kNestedCell ? '\t' : '\n';
}

/// What a control word for raised or lowered characters asks for.
enum ScriptKind { kScriptNone, kScriptSuper, kScriptSub, kScriptUp, kScriptDown };

enum class Word : uint8_t {
    kNone,
    // kText
    kUnicode,
    kUnicodeSkip,
    kFont,
    kPlain,
    kHidden,
    kDeleted,
    kBinary,
    kCharset,
    kAnsiCodePage,
    kDefaultFont,
    // kCharacterFormat
    kBold,
    kItalic,
    kUnderline,
    kNoUnderline,
    kStrike,
    kSmallCaps,
    kAllCaps,
    kScript,
    kSize,
    kColor,
    kHighlight,
    kShading,
    // kParagraphFormat
    kParagraphDefaults,
    kAlign,
    kRightToLeft,
    kLeftIndent,
    kRightIndent,
    kFirstIndent,
    kSpaceBefore,
    kSpaceAfter,
    kLineSpacing,
    kLineMultiple,
    kInTable,
    kTableLevel,
    kListOverride,
    kListLevel,
    kOldListKind,
    kOldListStart,
    // kTable
    kRowDefaults,
    kRowLeft,
    kRowGap,
    kCellEdge,
    kCellBorder,
    kBorderStyle,
    kNoBorder,
    kCellAcross,
    kCellDown,
    kCellShading,
    // kPicture
    kPictureKind,
    kPictureWidth,
    kPictureHeight,
    kGoalWidth,
    kGoalHeight,
    kScaleX,
    kScaleY,
    // kTableEntry
    kFontCharset,
    kFontCodePage,
    kRed,
    kGreen,
    kBlue,
    kListEntry,
    kListId,
    kLevelEntry,
    kLevelKind,
    kLevelStart,
    kOverrideEntry,
};

struct ControlWord {
    std::string_view name;
    WordGroup group = WordGroup::kText;
    Word word = Word::kNone;
    int32_t value = 0;
};

/// The control word of that name (without the backslash), or null when the reader doesn't know it.
const ControlWord* FindControlWord(std::string_view name);

}  // namespace lore
