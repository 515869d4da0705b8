#pragma once

#include <cstdint>
#include <string_view>

namespace lore {

/// What a control word is about: who acts on it.
enum class WordGroup : uint8_t {
    Destination,  ///< the group is something else than body text; the value is a Destination
    Character,    ///< stands for the character that the value gives
    Break,        ///< ends a line, paragraph, cell or row; the value is a TextBreak
    Text,         ///< decides how text is read: code pages, fonts, hidden text
    CharacterFormat,
    ParagraphFormat,
    Table,
    Picture,
    TableEntry,  ///< within the tables of fonts, colours and lists
};

/// Where the text of a group goes.
enum class Destination : uint8_t {
    Body,
    Same,      ///< no change: the group's text goes where the text around it goes
    Skip,      ///< passed over whole
    Keep,      ///< passed over, and kept in a document as it stood
    AnsiTwin,  ///< an older form of what follows in Unicode
    UnicodeTwin,
    Object,
    Shape,   ///< a drawing, which may hold text boxes and a picture
    Aside,   ///< text beside the body, which is read at its place
    Result,  ///< what an object shows: a picture, or text that is read like that beside the body
    FontTable,
    ColorTable,
    ListTable,
    ListOverrides,
    OldList,  ///< list properties of a paragraph as older programs write them
    FieldInstruction,
    Picture,
    NewPicture,  ///< a picture, with a twin for older readers behind it
    OldPicture,
    RowProperties,
};

enum class TextBreak : uint8_t { Paragraph, Line, Page, Column, Section, Cell, Row, NestedCell, NestedRow };

/// The character that a break is in the plain text.
constexpr char CharacterOf(TextBreak kind) {
    return kind == TextBreak::Cell || kind == TextBreak::NestedCell ? '\t' : '\n';
}

/// What a control word for raised or lowered characters asks for.
enum ScriptKind { kScriptNone, kScriptSuper, kScriptSub, kScriptUp, kScriptDown };

/// Tells the words of a group apart; those that differ in their value alone share one.
enum class Word : uint8_t {
    None,
    // Text
    Unicode,
    UnicodeSkip,
    Font,
    Plain,
    Hidden,
    Deleted,
    Binary,
    Charset,
    AnsiCodePage,
    DefaultFont,
    // CharacterFormat
    Bold,
    Italic,
    Underline,
    NoUnderline,
    Strike,
    SmallCaps,
    AllCaps,
    Script,
    Size,
    Color,
    Highlight,
    Shading,
    // ParagraphFormat
    ParagraphDefaults,
    Align,
    RightToLeft,
    LeftIndent,
    RightIndent,
    FirstIndent,
    SpaceBefore,
    SpaceAfter,
    LineSpacing,
    LineMultiple,
    InTable,
    TableLevel,
    ListOverride,
    ListLevel,
    OldListKind,
    OldListStart,
    // Table
    RowDefaults,
    RowLeft,
    RowGap,
    CellEdge,
    CellBorder,
    BorderStyle,
    NoBorder,
    CellAcross,
    CellDown,
    CellShading,
    // Picture
    PictureKind,
    PictureWidth,
    PictureHeight,
    GoalWidth,
    GoalHeight,
    ScaleX,
    ScaleY,
    // TableEntry
    FontCharset,
    FontCodePage,
    Red,
    Green,
    Blue,
    ListEntry,
    ListId,
    LevelEntry,
    LevelKind,
    LevelStart,
    OverrideEntry,
};

/// A row of the table of the words that the reader knows.
struct ControlWord {
    std::string_view name;
    WordGroup group = WordGroup::Text;
    Word word = Word::None;
    int32_t value = 0;
};

/// The control word of that name (without the backslash), or null when the reader doesn't know it.
const ControlWord* FindControlWord(std::string_view name);

}  // namespace lore
