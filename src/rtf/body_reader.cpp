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

}  // namespace

BodyReader::BodyReader(std::string_view rtf) : tokens_(DocumentIn(rtf)) {
    groups_.emplace_back();
}

void BodyReader::Read() {
    while (Step()) {
    }
    FlushHalf(halfBegin_);
    while (asides_.IsWithin()) {
        if (asides_.EndLast())
            Insert("]", Source().size());
    }
    OnEnd(afterParagraph_);
}

bool BodyReader::Step() {
    const Token& token = tokens_.Next();
    if (fallback_ > 0 && SkipAsFallback(token))
        return true;
    if (!part_.empty())
        EndPart(token);
    const bool opens = token.kind == TokenKind::Open;
    const bool isStar = token.kind == TokenKind::Symbol && token.byte == '*';
    const bool goesOn = ActOn(token);
    fresh_ = opens || (fresh_ && isStar);
    starred_ = isStar;
    return goesOn;
}

/// False at the end of the document.
bool BodyReader::ActOn(const Token& token) {
    switch (token.kind) {
        case TokenKind::End:
            return false;
        case TokenKind::Open:
            Open(token);
            return true;
        case TokenKind::Close:
            return Close(token);
        case TokenKind::Text:
            AddAscii(token.text, token.begin, token.end);
            return true;
        case TokenKind::Bytes:
            AddBytes(token.text, token.begin, token.end);
            return true;
        case TokenKind::HexByte:
            AddByte(token);
            return true;
        case TokenKind::Binary:
            OnBinary(Current().destination, token.text);
            return true;
        case TokenKind::Symbol:
            ActOnSymbol(token);
            return true;
        case TokenKind::Word:
            ActOnWord(token);
            return true;
    }
    return true;
}

void BodyReader::Open(const Token& token) {
    if (groups_.size() > kMostLevels) {
        ++levelsBeyond_;
        tooDeepAt_ = token.begin;
        return;
    }
    const Group copy = groups_.back();
    groups_.push_back(copy);
    groups_.back().begin = token.begin;
    groups_.back().symbol = 0;
    groups_.back().isResult = false;
    OnOpen();
}

bool BodyReader::Close(const Token& token) {
    if (levelsBeyond_ > 0) {
        --levelsBeyond_;
        return true;
    }
    if (groups_.size() == 1)
        return false;
    if (highSurrogate_ != 0 && (groups_.back().symbol != 0 || ClosesPlace()))
        FlushHalf(halfBegin_);
    Group closed = groups_.back();
    if (closed.symbol != 0 && closed.shownBefore == shown_)
        EmitCharacter(closed.symbol, token.begin, token.begin);
    if (asides_.End(groups_.size()))
        Insert("]", token.begin);
    // The last paragraph looks as the document's own group says.
    if (groups_.size() == 2)
        return false;
    groups_.pop_back();
    // What a Unicode twin goes on with began outside of both twins and doesn't end here.
    if (Current().destination == Destination::AnsiTwin && closed.destination == closed.outsideTwin)
        closed.destination = Destination::AnsiTwin;
    if (closed.destination == Destination::FontTable && Current().destination != Destination::FontTable)
        EndUnendedFont();
    OnClose(closed, token.end);
    if (closed.destination == Destination::FieldInstruction && Current().destination == Destination::Body)
        EndInstruction();
    return true;
}

/// Whether the destination of the innermost group is another than that of the group around it.
bool BodyReader::BeganDestination() const {
    return groups_[groups_.size() - 2].destination != groups_.back().destination;
}

/// Whether text goes elsewhere behind the group that closes.
bool BodyReader::ClosesPlace() const {
    return !IsSamePlace(groups_.back(), groups_[groups_.size() - 2]) || asides_.BeginsAt(groups_.size());
}

void BodyReader::EndInstruction() {
    OnInstruction(instruction_);
    groups_.back().symbol = FieldSymbol(instruction_);
    groups_.back().shownBefore = shown_;
}

void BodyReader::ActOnWord(const Token& token) {
    if (token.word == nullptr || (starred_ && token.word->group != WordGroup::Destination)) {
        if (starred_)
            PassOver(fresh_ && Shows());
        return;
    }
    const ControlWord& word = *token.word;
    switch (word.group) {
        case WordGroup::Destination:
            Enter(word, token);
            return;
        case WordGroup::Character:
            EmitCharacter(static_cast<char32_t>(word.value), token.begin, token.end);
            return;
        case WordGroup::Break:
            Break(static_cast<TextBreak>(word.value));
            return;
        case WordGroup::Text:
            ActOnText(word, token);
            return;
        case WordGroup::Table:
            if (IsOfTable())
                OnWord(word, token);
            return;
        default:
            if (Current().destination == Destination::FontTable)
                ActOnTableFont(word, token);
            OnWord(word, token);
    }
}

/// A table beside the body, or in what is only kept, is no part of the one around it.
bool BodyReader::IsOfTable() const {
    const Destination destination = Current().destination;
    return !asides_.IsWithin() && (destination == Destination::Body || destination == Destination::RowProperties);
}

void BodyReader::ActOnText(const ControlWord& word, const Token& token) {
    Group& group = groups_.back();
    const bool on = !token.hasParameter || token.parameter != 0;
    const bool ofDocument =
        word.word == Word::Charset || word.word == Word::AnsiCodePage || word.word == Word::DefaultFont;
    // Written again as it stood, a kept group would set them behind the head, for what follows it too.
    const bool isKept = group.destination == Destination::Object || group.destination == Destination::Shape;
    if (ofDocument && (isKept || !group.isReadByAll))
        return;
    switch (word.word) {
        case Word::Unicode:
            Unicode(token);
            return;
        case Word::UnicodeSkip:
            group.fallbackLength = std::clamp(token.parameter, 0, kLongestFallback);
            return;
        case Word::Font:
            if (group.destination == Destination::FontTable)
                return ActOnTableFont(word, token);
            group.font = token.parameter;
            break;
        case Word::Plain:
            group.font = defaultFont_;
            SetUnshown(false, false);
            break;
        case Word::Hidden:
            SetUnshown(on, group.deleted);
            return;
        case Word::Deleted:
            SetUnshown(group.hidden, on);
            return;
        case Word::Charset:
            fontPages_.SetDocumentPage(word.value);
            page_ = 0;
            return;
        case Word::AnsiCodePage:
            if (token.parameter > 0)
                fontPages_.SetDocumentPage(token.parameter);
            page_ = 0;
            return;
        case Word::DefaultFont:
            defaultFont_ = group.font = token.parameter;
            break;
        default:
            return;
    }
    OnWord(word, token);
}

void BodyReader::SetUnshown(bool hidden, bool deleted) {
    Group& group = groups_.back();
    if (group.hidden != hidden || group.deleted != deleted)
        FlushHalf(halfBegin_);
    group.hidden = hidden;
    group.deleted = deleted;
}

void BodyReader::ActOnTableFont(const ControlWord& word, const Token& token) {
    if (word.word == Word::Font) {
        FlushHalf(halfBegin_);
        EndUnendedFont();
        tableFont_ = token.parameter;
    } else if (word.word == Word::FontCharset) {
        tableCharset_ = token.parameter;
        fontPages_.SetCharset(tableFont_, token.parameter);
    } else if (word.word == Word::FontCodePage) {
        fontPages_.SetPage(tableFont_, std::max(token.parameter, 0));
    }
    page_ = 0;
}

void BodyReader::ReadFontName(std::string_view utf8) {
    for (const char c : utf8) {
        if (c == ';')
            EndFont();
        else
            tableName_ += c;
    }
}

void BodyReader::EndUnendedFont() {
    if (!Trim(tableName_).empty())
        EndFont();
}

void BodyReader::EndFont() {
    const DocumentFont font{tableFont_, std::exchange(tableCharset_, 0), CleanFontName(tableName_)};
    tableName_.clear();
    if (font.number < 0)
        return;  // it would be the one of text that names none
    if (IsSymbolFont(font))
        symbolFonts_[font.number] = font.name;
    else
        symbolFonts_.erase(font.number);
    OnFont(font);
}

void BodyReader::ActOnSymbol(const Token& token) {
    switch (token.byte) {
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

void BodyReader::Enter(const ControlWord& word, const Token& token) {
    const auto destination = static_cast<Destination>(word.value);
    if (destination == Destination::Same) {
        OnWord(word, token);
        return;
    }
    if (levelsBeyond_ > 0)
        PassOver(false);
    // The document's own group stays body text, whatever a damaged header says.
    else if (groups_.size() > 2)
        EnterNew(destination, token.begin);
}

void BodyReader::EnterNew(Destination destination, size_t begin) {
    // What is passed over parts no character.
    if (destination != Destination::Skip && destination != Destination::Keep)
        FlushHalf(halfBegin_);
    switch (destination) {
        case Destination::AnsiTwin:
        case Destination::UnicodeTwin:
            return EnterTwin(destination);
        case Destination::NewPicture:
        case Destination::OldPicture:
        case Destination::Picture:
            return EnterPicture(destination);
        case Destination::Shape:
        case Destination::Object:
        case Destination::FontTable:
        case Destination::RowProperties:
            return EnterObject(destination, begin);
        case Destination::Aside:
        case Destination::Result:
            return EnterAside(destination, begin);
        default:
            return EnterOther(destination);
    }
}

void BodyReader::EnterTwin(Destination destination) {
    Group& group = groups_.back();
    if (destination == Destination::AnsiTwin) {
        group.outsideTwin = group.destination;
        group.destination = destination;
    } else if (group.destination == Destination::AnsiTwin) {
        group.destination = group.outsideTwin;
    }
}

void BodyReader::EnterObject(Destination destination, size_t begin) {
    Group& group = groups_.back();
    if (group.destination != Destination::Body)
        return;
    const bool isDrawn = destination == Destination::Object || destination == Destination::Shape;
    if (isDrawn && (group.isResult || !Shows()))
        return PassOver(fresh_);
    if (group.isResult)
        return;
    OnEnter(destination);
    group.destination = destination;
    // What stands before the word in its group is text of the body.
    group.begin = fresh_ ? group.begin : begin;
    group.inShape = group.inShape || isDrawn;
    group.inResult = group.inResult && !isDrawn;
    shown_ += isDrawn ? 1 : 0;
    group.shownBefore = shown_;
}

void BodyReader::EnterAside(Destination destination, size_t begin) {
    Group& group = groups_.back();
    if (destination == Destination::Result) {
        // Of an object, and in a group of its own.
        if (group.destination != Destination::Object || BeganDestination())
            return;
        group.isResult = group.inResult = true;
        // What stands before the word in its group, a picture for one, isn't part of it.
        group.begin = fresh_ ? group.begin : begin;
    } else if (group.destination != Destination::Body && group.destination != Destination::Shape) {
        return PassOver(false);
    }
    group.destination = Destination::Body;
    asides_.Begin(groups_.size());
}

void BodyReader::EnterPicture(Destination destination) {
    Group& group = groups_.back();
    if (destination == Destination::NewPicture) {
        hasNewPicture_ = hasNewPicture_ || group.isReadByAll;
        return;
    }
    if (destination == Destination::OldPicture) {
        if (!group.isReadByAll || std::exchange(hasNewPicture_, false))
            PassOver(false);
        return;
    }
    const bool inPlace = group.destination == Destination::Body || group.destination == Destination::Object ||
                         group.destination == Destination::Shape;
    // An object or a shape doesn't become a picture.
    const bool becomesOne = group.destination != Destination::Body && BeganDestination();
    const bool shown = inPlace && !becomesOne && !group.hidden && !group.deleted;
    if (shown)
        afterParagraph_ = false;
    shown_ += group.destination == Destination::Body && !group.inResult ? 1 : 0;
    if (shown && OnEnter(destination))
        EnterForSome(destination);
    else
        PassOver(false);
}

void BodyReader::EnterOther(Destination destination) {
    Group& group = groups_.back();
    const bool inBody = group.destination == Destination::Body;
    const bool isInstruction = destination == Destination::FieldInstruction;
    if (isInstruction && inBody)
        instruction_.clear();
    if (inBody && (isInstruction || OnEnter(destination)))
        EnterForSome(destination);
    else
        PassOver(fresh_ && destination == Destination::Keep && Shows());
}

/// Into a group that other readers pass over.
void BodyReader::EnterForSome(Destination destination) {
    groups_.back().destination = destination;
    groups_.back().isReadByAll = false;
}

void BodyReader::PassOver(bool keep) {
    // A \* in the document's own group can't mean all of it.
    if (groups_.size() <= 2)
        return;
    tokens_.SkipGroup();
    const size_t end = tokens_.Position();
    if (keep && levelsBeyond_ == 0 && !Current().inShape && end < Source().size())
        OnKept(Source().substr(Current().begin, end + 1 - Current().begin));
    else if (Current().destination != Destination::Body)
        OnPassedOver();
}

void BodyReader::Break(TextBreak kind) {
    const bool endsCell = kind >= TextBreak::Cell;
    const bool inPlace = Current().destination == Destination::Body ||
                         (Current().destination == Destination::RowProperties && kind == TextBreak::NestedRow);
    if (!inPlace)
        return;
    FlushHalf(halfBegin_);
    if (!endsCell && !Shows())
        return Hide("\n");
    if (asides_.IsWithin())
        return asides_.BreakWithin(kind);
    asides_.BreakOutside();
    last_ = CharacterOf(kind);
    OnBreak(kind);
    afterParagraph_ = kind == TextBreak::Paragraph;
}

}  // namespace lore
