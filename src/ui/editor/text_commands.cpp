#include "ui/editor/text_commands.h"

#include <QTextBlock>
#include <QTextEdit>
#include <QTextTable>
#include <algorithm>
#include <vector>

#include "ui/editor/fragments.h"
#include "ui/editor/note_formats.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kIndentStep = 360;  // twips
constexpr int kDeepestLevel = 8;
constexpr int kWidestIndent = 14400;

struct StyleLook {
    int16_t halfPoints;  // 0 for the size that the text has by default
    bool bold;
    bool italic;
    int16_t before;  // twips
    int16_t after;
    int16_t indent;
};
constexpr StyleLook kStyles[] = {
    {0, false, false, 0, 0, 0},    {40, true, false, 240, 120, 0}, {34, true, false, 200, 100, 0},
    {30, true, false, 160, 80, 0}, {0, false, true, 80, 80, 720},
};

struct Stretch {
    int begin;
    int end;
    QTextCharFormat format;
};

std::vector<Stretch> StretchesOf(const QTextCursor& range) {
    std::vector<Stretch> stretches;
    const int from = range.selectionStart(), to = range.selectionEnd();
    QTextBlock block = range.document()->findBlock(from);
    for (; block.isValid() && block.position() < to; block = block.next())
        ForEachFragment(block, from, to, [&stretches](const QTextFragment& fragment, int begin, int end) {
            stretches.push_back({begin, end, fragment.charFormat()});
        });
    return stretches;
}

void MakeListItem(ParagraphFormat& format, ListKind kind, int32_t id) {
    format.list = kind;
    format.listId = id;
    format.listStart = 1;
    format.leftIndent = static_cast<int16_t>(kIndentStep * (format.listLevel + 1));
    format.firstIndent = -kIndentStep;
}

void MakePlain(ParagraphFormat& format) {
    format.list = ListKind::None;
    format.listId = 0;
    format.listLevel = 0;
    format.listStart = 1;
    format.leftIndent = 0;
    format.firstIndent = 0;
}

}  // namespace

QColor TextCommands::GroundAt(const QTextCursor& cursor) const {
    if (const QTextTable* const table = cursor.currentTable()) {
        const QTextCharFormat cell = table->cellAt(cursor).format();
        if (formats_.Cell(cell).background)
            return cell.background().color();
    }
    return formats_.Look().ground;
}

void TextCommands::ChangeRange(const QTextCursor& range, const CharChange& change) {
    for (const Stretch& stretch : StretchesOf(range)) {
        CharFormat format = formats_.Characters(stretch.format);
        change(format);
        QTextCursor cursor(range);
        cursor.setPosition(stretch.begin);
        QTextCharFormat look = formats_.Shown(format, GroundAt(cursor));
        // What stands for a picture, a group or a break goes on standing for it.
        if (stretch.format.objectType() != QTextFormat::NoObject || stretch.format.hasProperty(kBreakProperty)) {
            QTextCharFormat kept = stretch.format;
            kept.setProperty(kCharsProperty, look.property(kCharsProperty));
            look = kept;
        }
        cursor.setPosition(stretch.end, QTextCursor::KeepAnchor);
        cursor.setCharFormat(look);
    }
}

void TextCommands::Characters(const CharChange& change) {
    QTextCursor cursor = edit_.textCursor();
    if (cursor.hasSelection()) {
        cursor.beginEditBlock();
        ChangeRange(cursor, change);
        cursor.endEditBlock();
        return;
    }
    CharFormat format = CharactersNow();
    change(format);
    edit_.setCurrentCharFormat(formats_.Shown(format, GroundAt(cursor)));
}

void TextCommands::Paragraphs(const ParagraphChange& change) {
    QTextCursor cursor = edit_.textCursor();
    const int to = cursor.selectionEnd();
    QTextBlock block = cursor.document()->findBlock(cursor.selectionStart());
    cursor.beginEditBlock();
    for (; block.isValid() && block.position() <= to; block = block.next()) {
        const QTextBlockFormat before = block.blockFormat();
        ParagraphFormat format = formats_.Paragraph(before);
        change(format);
        QTextBlockFormat look = formats_.Shown(format);
        for (const int property : {kFlatProperty, kFlatRowProperty, kPhantomProperty})
            if (before.hasProperty(property))
                look.setProperty(property, before.property(property));
        QTextCursor at(block);
        at.setBlockFormat(look);
    }
    cursor.endEditBlock();
}

void TextCommands::SetStyle(ParagraphStyle style) {
    const StyleLook& look = kStyles[static_cast<size_t>(style)];
    const CharFormat plain = formats_.Default();
    const auto changeChars = [&](CharFormat& format) {
        format.halfPoints = look.halfPoints > 0 ? look.halfPoints : plain.halfPoints;
        format.bold = look.bold;
        format.italic = look.italic;
    };
    QTextCursor cursor = edit_.textCursor();
    cursor.beginEditBlock();
    Paragraphs([&](ParagraphFormat& format) {
        format.spaceBefore = look.before;
        format.spaceAfter = look.after;
        if (format.list == ListKind::None)
            format.leftIndent = format.rightIndent = look.indent;
    });
    QTextCursor whole(cursor);
    whole.setPosition(cursor.document()->findBlock(cursor.selectionStart()).position());
    const QTextBlock last = cursor.document()->findBlock(cursor.selectionEnd());
    whole.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    ChangeRange(whole, changeChars);
    cursor.endEditBlock();
    if (!cursor.hasSelection())
        Characters(changeChars);
}

void TextCommands::ToggleList(ListKind kind) {
    bool all = true;
    Paragraphs([&](ParagraphFormat& format) { all = all && format.list == kind; });
    // Items go on with the list that ends in front of them.
    const QTextBlock before = edit_.document()->findBlock(edit_.textCursor().selectionStart()).previous();
    const ParagraphFormat above = before.isValid() ? formats_.Paragraph(before.blockFormat()) : ParagraphFormat();
    const int32_t id = above.list == kind ? above.listId : formats_.NewListId(*edit_.document());
    Paragraphs([&](ParagraphFormat& format) {
        if (all)
            MakePlain(format);
        else
            MakeListItem(format, kind, id);
    });
}

bool TextCommands::ChangeLevel(int by) {
    if (ParagraphNow().list == ListKind::None)
        return false;
    Paragraphs([&](ParagraphFormat& format) {
        if (format.list == ListKind::None)
            return;
        format.listLevel = static_cast<uint8_t>(std::clamp(format.listLevel + by, 0, kDeepestLevel));
        MakeListItem(format, format.list, format.listId);
    });
    return true;
}

void TextCommands::Indent(int steps) {
    if (ChangeLevel(steps))
        return;
    Paragraphs([&](ParagraphFormat& format) {
        int16_t& side = format.rightToLeft ? format.rightIndent : format.leftIndent;
        side = static_cast<int16_t>(std::clamp(side + steps * kIndentStep, 0, kWidestIndent));
    });
}

QTextCursor TextCommands::LinkAround() const {
    QTextCursor cursor = edit_.textCursor();
    const int32_t link = CharactersNow().link;
    if (cursor.hasSelection() || link < 0)
        return cursor;
    const QTextBlock block = cursor.block();
    int begin = cursor.position(), end = begin;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (formats_.Characters(fragment.charFormat()).link != link)
            continue;
        const int last = fragment.position() + fragment.length();
        if (fragment.position() <= end && last >= begin) {
            begin = std::min(begin, fragment.position());
            end = std::max(end, last);
        }
    }
    cursor.setPosition(begin);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    return cursor;
}

void TextCommands::SetLink(const QString& target, const QString& text) {
    const int32_t link = target.isEmpty() ? -1 : formats_.Link(target.toStdString());
    QTextCursor range = LinkAround();
    const QTextCursor before = edit_.textCursor();
    range.beginEditBlock();
    if (!range.hasSelection() && link >= 0) {
        CharFormat format = CharactersNow();
        format.link = link;
        range.insertText(text.isEmpty() ? target : text, formats_.Shown(format, GroundAt(range)));
    } else {
        ChangeRange(range, [link](CharFormat& format) { format.link = link; });
    }
    range.endEditBlock();
    if (before.hasSelection())
        edit_.setTextCursor(before);
}

CharFormat TextCommands::CharactersNow() const {
    const QTextCharFormat now = edit_.currentCharFormat();
    return now.hasProperty(kCharsProperty) ? formats_.Characters(now) : formats_.Default();
}

ParagraphFormat TextCommands::ParagraphNow() const {
    return formats_.Paragraph(edit_.textCursor().blockFormat());
}

ParagraphStyle TextCommands::StyleNow() const {
    const ParagraphFormat paragraph = ParagraphNow();
    const CharFormat characters = CharactersNow();
    for (size_t i = 1; i < std::size(kStyles); ++i) {
        const StyleLook& look = kStyles[i];
        if (paragraph.spaceBefore == look.before && paragraph.spaceAfter == look.after &&
            characters.bold == look.bold && characters.italic == look.italic &&
            (look.halfPoints == 0 || characters.halfPoints == look.halfPoints) &&
            (look.indent == 0 || paragraph.leftIndent == look.indent))
            return static_cast<ParagraphStyle>(i);
    }
    return ParagraphStyle::Normal;
}

}  // namespace lore
