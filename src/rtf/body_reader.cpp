#include "rtf/body_reader.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace lore {

namespace {

constexpr size_t kMostLevels = 1000;
constexpr size_t kMostBytes = size_t{1} << 30;
constexpr int32_t kLongestFallback = 255;
constexpr char32_t kReplacement = 0xFFFD;

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
           destination == Destination::kObject || destination == Destination::kRowProperties ||
           destination == Destination::kAnsiTwin;
}

bool IsHighSurrogate(int64_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(int64_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

}  // namespace

BodyReader::BodyReader(std::string_view rtf) : tokens_(DocumentIn(rtf)) {
    groups_.emplace_back();
}

void BodyReader::Read() {
    while (Step()) {
    }
    FlushPending();
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
            AddAscii(token);
            return true;
        case TokenKind::kBytes:
            AddBytes(token.text, token.begin, token.end);
            return true;
        case TokenKind::kHexByte: {
            const char byte = static_cast<char>(token.byte);
            AddBytes(std::string_view(&byte, 1), token.begin, token.end);
            return true;
        }
        case TokenKind::kBinary:
            OnBinary(Current().destination, token.text);
            return true;
        case TokenKind::kSymbol:
            fresh_ = fresh && token.byte == '*';
            ActOnSymbol(token);
            return true;
        case TokenKind::kWord:
            ActOn(token, fresh, starred);
            return true;
    }
    return true;
}

/// Takes the token, or the first part of it, for the fallback of a Unicode character. False if something is left.
bool BodyReader::SkipAsFallback(const Token& token) {
    if (token.kind == TokenKind::kOpen || token.kind == TokenKind::kClose || token.kind == TokenKind::kEnd) {
        fallback_ = 0;
        return false;
    }
    if (token.kind != TokenKind::kText && token.kind != TokenKind::kBytes) {
        --fallback_;
        OnFallback(token.begin, token.end);
        return true;
    }
    const size_t skipped = std::min(token.text.size(), static_cast<size_t>(fallback_));
    fallback_ -= static_cast<int32_t>(skipped);
    OnFallback(token.begin, token.begin + skipped);
    if (skipped == token.text.size())
        return true;
    const std::string_view rest = token.text.substr(skipped);
    const size_t begin = token.begin + skipped;
    FlushPending();
    if (token.kind == TokenKind::kBytes)
        AddBytes(rest, begin, token.end);
    else
        Emit(rest, begin, token.end);
    return true;
}

/// A character in two parts stands in adjoining tokens, or it is broken.
void BodyReader::EndPending(const Token& token) {
    const Word word = token.kind == TokenKind::kWord && token.word != nullptr ? token.word->word : Word::kNone;
    if (high_surrogate_ != 0 && word != Word::kUnicode && word != Word::kUnicodeSkip)
        FlushPending();
    const bool is_bytes =
        token.kind == TokenKind::kText || token.kind == TokenKind::kBytes || token.kind == TokenKind::kHexByte;
    if (!part_.empty() && !is_bytes)
        FlushPending();
}

void BodyReader::FlushPending() {
    if (high_surrogate_ == 0 && part_.empty())
        return;
    const size_t end = pending_begin_ + 1;
    high_surrogate_ = 0;
    part_.clear();
    EmitCharacter(kReplacement, pending_begin_, end);
}

void BodyReader::Open(const Token& token) {
    fresh_ = true;
    if (groups_.size() > kMostLevels) {
        ++levels_beyond_;
        return;
    }
    const Group copy = groups_.back();
    groups_.push_back(copy);
    groups_.back().begin = token.begin;
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
    groups_.pop_back();
    // What a Unicode twin goes on with began outside of both twins and doesn't end here.
    if (Current().destination == Destination::kAnsiTwin && closed.destination == closed.outside_twin)
        closed.destination = Destination::kAnsiTwin;
    OnClose(closed, token.end);
    return groups_.size() > 1;
}

void BodyReader::ActOn(const Token& token, bool fresh, bool starred) {
    if (token.word == nullptr || (starred && token.word->group != WordGroup::kDestination)) {
        if (starred)
            PassOver(fresh);
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
        default:
            if (word.word == Word::kFontCharset)
                SetFontPage(CodePageOfCharset(token.parameter, 0));
            else if (word.word == Word::kFontCodePage)
                SetFontPage(token.parameter);
            OnWord(word, token);
    }
}

void BodyReader::ActOnText(const ControlWord& word, const Token& token) {
    Group& group = groups_.back();
    const bool on = !token.has_parameter || token.parameter != 0;
    const bool of_document =
        word.word == Word::kCharset || word.word == Word::kAnsiCodePage || word.word == Word::kDefaultFont;
    if (of_document && !IsReadByAll(group.destination))
        return;
    switch (word.word) {
        case Word::kUnicode:
            Unicode(token);
            return;
        case Word::kUnicodeSkip:
            group.fallback_length = std::clamp(token.parameter, 0, kLongestFallback);
            return;
        case Word::kFont:
            (group.destination == Destination::kFontTable ? table_font_ : group.font) = token.parameter;
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

void BodyReader::SetFontPage(int page) {
    if (Current().destination != Destination::kFontTable)
        return;
    page_ = 0;
    if (page > 0)
        font_pages_[table_font_] = page;
    else
        font_pages_.erase(table_font_);
}

void BodyReader::ActOnSymbol(const Token& token) {
    switch (token.byte) {
        case '*':
            starred_ = true;
            return;
        case '\\':
        case '{':
        case '}':
            EmitCharacter(token.byte, token.begin, token.end);
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
        case Destination::kFontTable:
        case Destination::kObject:
        case Destination::kRowProperties:
            if (in_body) {
                OnEnter(destination);
                group.destination = destination;
                // What stands before the word in its group is text of the body.
                group.begin = fresh ? group.begin : begin;
            }
            return;
        default:
            if (in_body && OnEnter(destination))
                group.destination = destination;
            else
                PassOver(fresh && destination == Destination::kKeep);
    }
}

void BodyReader::EnterPicture() {
    Group& group = groups_.back();
    const bool shown = (group.destination == Destination::kBody || group.destination == Destination::kObject) &&
                       !group.hidden && !group.deleted;
    if (shown)
        after_paragraph_ = false;
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
    if (keep && levels_beyond_ == 0 && Shows() && end < Source().size())
        OnKept(Source().substr(Current().begin, end + 1 - Current().begin));
    else if (Current().destination != Destination::kBody)
        OnPassedOver();
}

void BodyReader::Break(TextBreak kind) {
    const bool ends_cell = kind >= TextBreak::kCell;
    const bool in_place = Current().destination == Destination::kBody ||
                          (Current().destination == Destination::kRowProperties && kind == TextBreak::kNestedRow);
    if (!in_place || (!ends_cell && !Shows()))
        return;
    OnBreak(kind);
    after_paragraph_ = kind == TextBreak::kParagraph;
}

void BodyReader::Unicode(const Token& token) {
    const size_t begin = token.begin;
    const size_t end = token.end;
    int64_t c = token.parameter;
    if (c < 0)
        c += 0x10000;
    fallback_ = Current().fallback_length;
    if (high_surrogate_ != 0 && IsLowSurrogate(c)) {
        const auto high = std::exchange(high_surrogate_, 0);
        EmitCharacter(0x10000 + ((high - 0xD800) << 10) + (static_cast<char32_t>(c) - 0xDC00), pending_begin_, end);
        return;
    }
    FlushPending();
    if (IsHighSurrogate(c)) {
        high_surrogate_ = static_cast<char32_t>(c);
        pending_begin_ = begin;
        return;
    }
    const bool valid = c >= 0 && c <= 0x10FFFF && !IsLowSurrogate(c);
    EmitCharacter(valid ? static_cast<char32_t>(c) : kReplacement, begin, end);
}

void BodyReader::AddAscii(const Token& token) {
    if (part_.empty())
        Emit(token.text, token.begin, token.end);
    else
        AddBytes(token.text, token.begin, token.end);
}

void BodyReader::AddBytes(std::string_view bytes, size_t begin, size_t end) {
    const int page = CurrentPage();
    if (!IsMultiByte(page)) {
        AddSingleBytes(page, bytes, begin, end);
        return;
    }
    const bool escaped = end - begin != bytes.size();
    for (size_t i = 0; i < bytes.size(); ++i) {
        const size_t byte_begin = escaped ? begin : begin + i;
        if (part_.empty())
            pending_begin_ = byte_begin;
        part_ += bytes[i];
        if (part_.size() < CharacterLength(page, static_cast<unsigned char>(part_[0])))
            continue;
        scratch_.clear();
        if (part_.size() > 1 || static_cast<unsigned char>(part_[0]) >= 0x80)
            decoder_.Append(page, part_, scratch_);
        else
            scratch_ = part_;
        part_.clear();
        const char32_t c = Utf8ToCodePoints(scratch_)[0];
        EmitCharacter(c, pending_begin_, escaped ? end : byte_begin + 1);
    }
}

void BodyReader::AddSingleBytes(int page, std::string_view bytes, size_t begin, size_t end) {
    if (bytes.size() == 1) {
        EmitCharacter(decoder_.Decode(page, static_cast<unsigned char>(bytes[0])), begin, end);
        return;
    }
    scratch_.clear();
    for (char byte : bytes)
        AppendUtf8(scratch_, decoder_.Decode(page, static_cast<unsigned char>(byte)));
    Emit(scratch_, begin, end);
}

void BodyReader::EmitCharacter(char32_t c, size_t begin, size_t end) {
    if (c == '\n' || c == '\r' || c == '\v') {
        Break(TextBreak::kLine);
        return;
    }
    if (c < 0x20 && c != '\t')
        return;
    std::string utf8;
    AppendUtf8(utf8, c);
    Emit(utf8, begin, end);
}

void BodyReader::Emit(std::string_view utf8, size_t begin, size_t end) {
    if (Shows()) {
        after_paragraph_ = false;
        has_new_picture_ = false;
        OnText(utf8, begin, end);
    } else if (Current().destination != Destination::kBody) {
        OnOther(Current().destination, utf8);
    }
}

bool BodyReader::Shows() const {
    const Group& group = groups_.back();
    return group.destination == Destination::kBody && !group.hidden && !group.deleted;
}

int BodyReader::CurrentPage() {
    const int font = Current().destination == Destination::kFontTable ? table_font_ : Current().font;
    if (page_ == 0 || page_font_ != font) {
        const auto found = font_pages_.find(font);
        page_ = found == font_pages_.end() ? document_page_ : found->second;
        page_font_ = font;
    }
    return page_;
}

}  // namespace lore
