#include "rtf/body_reader.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "rtf/field.h"
#include "rtf/symbol_font.h"

namespace lore {

namespace {

constexpr size_t kMostLevels = 1000;
constexpr size_t kMostBytes = size_t{1} << 30;
constexpr int32_t kLongestFallback = 255;

/// From the brace on; empty when this isn't RTF.
std::string_view DocumentIn(std::string_view bytes) {
    bytes = bytes.substr(0, kMostBytes);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    bytes = TrimLeft(bytes);
    return bytes.starts_with("{\\rtf") ? bytes : std::string_view{};
}

/// Whether all readers go through such a group. What stands in any other changes nothing outside of it, or they would
/// see different texts.
bool IsReadByAll(Destination destination) {
    return destination == Destination::kBody || destination == Destination::kFontTable ||
           destination == Destination::kObject || destination == Destination::kShape ||
           destination == Destination::kRowProperties || destination == Destination::kAnsiTwin;
}

}  // namespace

BodyReader::BodyReader(std::string_view rtf) : tokens_(DocumentIn(rtf)) {
    groups_.emplace_back();
}

void BodyReader::Read() {
    while (Step()) {
    }
    FlushPending();
    while (asides_.IsWithin()) {
        if (asides_.EndLast())
            Insert("]", Source().size());
    }
    OnEnd(after_paragraph_);
}

bool BodyReader::Step() {
    const Token& token = tokens_.Next();
    if (fallback_ > 0 && SkipAsFallback(token))
        return true;
    EndPending(token);
    const bool fresh = std::exchange(fresh_, false);
    const bool starred = std::exchange(starred_, false);
    switch (token.kind) {
        case TokenKind::kEnd:
            return false;
        case TokenKind::kOpen:
            Open(token);
            return true;
        case TokenKind::kClose:
            return Close(token);
        case TokenKind::kText:
            AddAscii(token.text, token.begin, token.end);
            return true;
        case TokenKind::kBytes:
            AddBytes(token.text, token.begin, token.end);
            return true;
        case TokenKind::kHexByte:
            AddByte(token);
            return true;
        case TokenKind::kBinary:
            OnBinary(Current().destination, token.text);
            return true;
        case TokenKind::kSymbol:
            if (!part_.empty()) {
                AddByte(token);
                return true;
            }
            fresh_ = fresh && token.byte == '*';
            ActOnSymbol(token);
            return true;
        case TokenKind::kWord:
            ActOn(token, fresh, starred);
            return true;
    }
    return true;
}

void BodyReader::Open(const Token& token) {
    fresh_ = true;
    if (groups_.size() > kMostLevels) {
        ++levels_beyond_;
        too_deep_at_ = token.begin;
        return;
    }
    const Group copy = groups_.back();
    groups_.push_back(copy);
    groups_.back().begin = token.begin;
    groups_.back().symbol = 0;
    groups_.back().is_result = false;
    OnOpen();
}

bool BodyReader::Close(const Token& token) {
    if (levels_beyond_ > 0) {
        --levels_beyond_;
        return true;
    }
    if (groups_.size() == 1)
        return false;
    Group closed = groups_.back();
    if (closed.symbol != 0 && closed.shown_before == shown_)
        EmitCharacter(closed.symbol, token.begin, token.begin);
    if (asides_.End(groups_.size()))
        Insert("]", token.begin);
    groups_.pop_back();
    // What a Unicode twin goes on with began outside of both twins and doesn't end here.
    if (Current().destination == Destination::kAnsiTwin && closed.destination == closed.outside_twin)
        closed.destination = Destination::kAnsiTwin;
    if (closed.destination == Destination::kFontTable && Current().destination != Destination::kFontTable)
        EndUnendedFont();
    OnClose(closed, token.end);
    if (closed.destination == Destination::kFieldInstruction && Current().destination == Destination::kBody)
        EndInstruction();
    return groups_.size() > 1;
}

void BodyReader::EndInstruction() {
    OnInstruction(instruction_);
    groups_.back().symbol = FieldSymbol(instruction_);
    groups_.back().shown_before = shown_;
}

void BodyReader::ActOn(const Token& token, bool fresh, bool starred) {
    if (token.word == nullptr || (starred && token.word->group != WordGroup::kDestination)) {
        if (starred)
            PassOver(fresh && Shows());
        return;
    }
    const ControlWord& word = *token.word;
    switch (word.group) {
        case WordGroup::kDestination:
            Enter(word, token, fresh);
            return;
        case WordGroup::kCharacter:
            EmitCharacter(static_cast<char32_t>(word.value), token.begin, token.end);
            return;
        case WordGroup::kBreak:
            Break(static_cast<TextBreak>(word.value));
            return;
        case WordGroup::kText:
            ActOnText(word, token);
            return;
        case WordGroup::kTable:
            if (IsOfTable())
                OnWord(word, token);
            return;
        default:
            if (Current().destination == Destination::kFontTable)
                ActOnTableFont(word, token);
            OnWord(word, token);
    }
}

/// A table beside the body, or in what is only kept, is no part of the one around it.
bool BodyReader::IsOfTable() const {
    const Destination destination = Current().destination;
    return !asides_.IsWithin() && (destination == Destination::kBody || destination == Destination::kRowProperties);
}

void BodyReader::ActOnText(const ControlWord& word, const Token& token) {
    Group& group = groups_.back();
    const bool on = !token.has_parameter || token.parameter != 0;
    const bool of_document =
        word.word == Word::kCharset || word.word == Word::kAnsiCodePage || word.word == Word::kDefaultFont;
    // Written again as it stood, a kept group would set them behind the head, for what follows it too.
    const bool is_kept = group.destination == Destination::kObject || group.destination == Destination::kShape;
    if (of_document && (is_kept || !IsReadByAll(group.destination)))
        return;
    switch (word.word) {
        case Word::kUnicode:
            Unicode(token);
            return;
        case Word::kUnicodeSkip:
            group.fallback_length = std::clamp(token.parameter, 0, kLongestFallback);
            return;
        case Word::kFont:
            if (group.destination == Destination::kFontTable)
                return ActOnTableFont(word, token);
            group.font = token.parameter;
            break;
        case Word::kPlain:
            group.font = default_font_;
            group.hidden = group.deleted = false;
            break;
        case Word::kHidden:
            group.hidden = on;
            return;
        case Word::kDeleted:
            group.deleted = on;
            return;
        case Word::kCharset:
            document_page_ = word.value;
            page_ = 0;
            return;
        case Word::kAnsiCodePage:
            document_page_ = token.parameter > 0 ? token.parameter : document_page_;
            page_ = 0;
            return;
        case Word::kDefaultFont:
            default_font_ = group.font = token.parameter;
            break;
        default:
            return;
    }
    OnWord(word, token);
}

void BodyReader::ActOnTableFont(const ControlWord& word, const Token& token) {
    if (word.word == Word::kFont) {
        EndUnendedFont();
        table_font_ = token.parameter;
    } else if (word.word == Word::kFontCharset) {
        table_charset_ = token.parameter;
        SetFontPage(CodePageOfCharset(token.parameter, 0));
    } else if (word.word == Word::kFontCodePage) {
        SetFontPage(token.parameter);
    }
}

void BodyReader::SetFontPage(int page) {
    page_ = 0;
    if (page > 0)
        font_pages_[table_font_] = page;
    else
        font_pages_.erase(table_font_);
}

void BodyReader::ReadFontName(std::string_view utf8) {
    for (const char c : utf8) {
        if (c == ';')
            EndFont();
        else
            table_name_ += c;
    }
}

void BodyReader::EndUnendedFont() {
    if (!Trim(table_name_).empty())
        EndFont();
}

void BodyReader::EndFont() {
    const DocumentFont font{table_font_, std::exchange(table_charset_, 0), CleanFontName(table_name_)};
    table_name_.clear();
    if (font.number < 0)
        return;  // it would be the one of text that names none
    if (IsSymbolFont(font))
        symbol_fonts_[font.number] = font.name;
    else
        symbol_fonts_.erase(font.number);
    OnFont(font);
}

void BodyReader::ActOnSymbol(const Token& token) {
    switch (token.byte) {
        case '*':
            starred_ = true;
            return;
        case '\\':
        case '{':
        case '}':
            AddByte(token);
            return;
        case '~':
            EmitCharacter(0xA0, token.begin, token.end);
            return;
        case '-':
            EmitCharacter(0xAD, token.begin, token.end);
            return;
        case '_':
            EmitCharacter(0x2011, token.begin, token.end);
            return;
        default:
            return;
    }
}

void BodyReader::Enter(const ControlWord& word, const Token& token, bool fresh) {
    const auto destination = static_cast<Destination>(word.value);
    if (destination == Destination::kSame) {
        OnWord(word, token);
        return;
    }
    if (levels_beyond_ > 0)
        PassOver(false);
    // The document's own group stays body text, whatever a damaged header says.
    else if (groups_.size() > 2)
        EnterNew(destination, token.begin, fresh);
}

void BodyReader::EnterNew(Destination destination, size_t begin, bool fresh) {
    Group& group = groups_.back();
    const bool in_body = group.destination == Destination::kBody;
    switch (destination) {
        case Destination::kAnsiTwin:
            group.outside_twin = group.destination;
            group.destination = destination;
            return;
        case Destination::kUnicodeTwin:
            if (group.destination == Destination::kAnsiTwin)
                group.destination = group.outside_twin;
            return;
        case Destination::kNewPicture:
            has_new_picture_ = has_new_picture_ || IsReadByAll(group.destination);
            return;
        case Destination::kOldPicture:
            if (!IsReadByAll(group.destination) || std::exchange(has_new_picture_, false))
                PassOver(false);
            return;
        case Destination::kPicture:
            EnterPicture();
            return;
        case Destination::kShape:
        case Destination::kObject:
            if (in_body && (!Shows() || group.is_result))
                return PassOver(fresh);
            [[fallthrough]];
        case Destination::kFontTable:
        case Destination::kRowProperties:
            if (in_body && !group.is_result)
                EnterObject(destination, begin, fresh);
            return;
        case Destination::kAside:
        case Destination::kResult:
            EnterAside(destination);
            return;
        case Destination::kFieldInstruction:
            if (!in_body)
                return PassOver(false);
            instruction_.clear();
            group.destination = destination;
            return;
        default:
            if (in_body && OnEnter(destination))
                group.destination = destination;
            else
                PassOver(fresh && destination == Destination::kKeep && Shows());
    }
}

void BodyReader::EnterObject(Destination destination, size_t begin, bool fresh) {
    Group& group = groups_.back();
    OnEnter(destination);
    group.destination = destination;
    // What stands before the word in its group is text of the body.
    group.begin = fresh ? group.begin : begin;
    const bool is_drawn = destination == Destination::kObject || destination == Destination::kShape;
    group.in_shape = group.in_shape || is_drawn;
    group.in_result = group.in_result && !is_drawn;
    shown_ += is_drawn ? 1 : 0;
    group.shown_before = shown_;
}

void BodyReader::EnterAside(Destination destination) {
    Group& group = groups_.back();
    if (destination == Destination::kResult) {
        // Of an object, and in a group of its own.
        if (group.destination != Destination::kObject || groups_[groups_.size() - 2].destination != group.destination)
            return;
        group.is_result = group.in_result = true;
    } else if (group.destination != Destination::kBody && group.destination != Destination::kShape) {
        return PassOver(false);
    }
    group.destination = Destination::kBody;
    asides_.Begin(groups_.size());
}

void BodyReader::EnterPicture() {
    Group& group = groups_.back();
    const bool in_place = group.destination == Destination::kBody || group.destination == Destination::kObject ||
                          group.destination == Destination::kShape;
    const bool shown = in_place && !group.hidden && !group.deleted;
    if (shown)
        after_paragraph_ = false;
    shown_ += group.destination == Destination::kBody && !group.in_result ? 1 : 0;
    if (shown && OnEnter(Destination::kPicture))
        group.destination = Destination::kPicture;
    else
        PassOver(false);
}

void BodyReader::PassOver(bool keep) {
    // A \* in the document's own group can't mean all of it.
    if (groups_.size() <= 2)
        return;
    tokens_.SkipGroup();
    const size_t end = tokens_.Position();
    if (keep && levels_beyond_ == 0 && !Current().in_shape && end < Source().size())
        OnKept(Source().substr(Current().begin, end + 1 - Current().begin));
    else if (Current().destination != Destination::kBody)
        OnPassedOver();
}

void BodyReader::Break(TextBreak kind) {
    const bool ends_cell = kind >= TextBreak::kCell;
    const bool in_place = Current().destination == Destination::kBody ||
                          (Current().destination == Destination::kRowProperties && kind == TextBreak::kNestedRow);
    if (!in_place)
        return;
    if (!ends_cell && !Shows())
        return Hide("\n");
    if (asides_.IsWithin())
        return asides_.BreakWithin(kind);
    asides_.BreakOutside();
    last_ = CharacterOf(kind);
    OnBreak(kind);
    after_paragraph_ = kind == TextBreak::kParagraph;
}

}  // namespace lore
