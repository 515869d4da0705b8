#include "rtf/tokenizer.h"

#include <algorithm>
#include <limits>

#include "base/ascii.h"
#include "rtf/byte_scan.h"
#include "rtf/hex.h"

namespace lore {

namespace {

constexpr int64_t kHighest = std::numeric_limits<int32_t>::max();

}  // namespace

const Token& Tokenizer::Finish(TokenKind kind) {
    token_.kind = kind;
    token_.end = at_;
    return token_;
}

const Token& Tokenizer::Next() {
    for (; at_ < rtf_.size(); ++at_) {
        const auto c = static_cast<unsigned char>(rtf_[at_]);
        if (c < 0x20 && c != '\t')
            continue;
        token_.begin = at_;
        if (c == '\\')
            return ReadEscape();
        if (c == '{' || c == '}' || c == '\t') {
            ++at_;
            token_.word = c == '\t' ? FindControlWord("tab") : nullptr;
            return Finish(c == '{' ? TokenKind::Open : c == '}' ? TokenKind::Close : TokenKind::Word);
        }
        if (c < 0x80) {
            at_ = FindByte<TextEndBytes>(rtf_, at_ + 1);
            token_.text = rtf_.substr(token_.begin, at_ - token_.begin);
            return Finish(TokenKind::Text);
        }
        while (at_ < rtf_.size() && static_cast<unsigned char>(rtf_[at_]) >= 0x80)
            ++at_;
        token_.text = rtf_.substr(token_.begin, at_ - token_.begin);
        return Finish(TokenKind::Bytes);
    }
    token_.begin = at_;
    return Finish(TokenKind::End);
}

const Token& Tokenizer::ReadEscape() {
    ++at_;
    if (at_ == rtf_.size())
        return Finish(TokenKind::End);
    const char c = rtf_[at_];
    if (IsLetter(c))
        return ReadWord();
    ++at_;
    if (c == '\'')
        return ReadHexByte();
    if (c == '\r' || c == '\n' || c == '\t') {
        token_.word = FindControlWord(c == '\t' ? "tab" : "par");
        return Finish(TokenKind::Word);
    }
    token_.byte = static_cast<unsigned char>(c);
    return Finish(TokenKind::Symbol);
}

const Token& Tokenizer::ReadWord() {
    const size_t name = at_;
    while (at_ < rtf_.size() && IsLetter(rtf_[at_]))
        ++at_;
    token_.word = FindControlWord(rtf_.substr(name, at_ - name));
    ReadParameter();
    if (at_ < rtf_.size() && rtf_[at_] == ' ')
        ++at_;
    if (token_.word != nullptr && token_.word->word == Word::Binary)
        return ReadBinary();
    return Finish(TokenKind::Word);
}

void Tokenizer::ReadParameter() {
    token_.hasParameter = false;
    token_.parameter = 0;
    const bool negative = at_ + 1 < rtf_.size() && rtf_[at_] == '-' && IsDigit(rtf_[at_ + 1]);
    if (negative)
        ++at_;
    int64_t value = 0;
    for (; at_ < rtf_.size() && IsDigit(rtf_[at_]); ++at_) {
        value = std::min(value * 10 + (rtf_[at_] - '0'), kHighest);
        token_.hasParameter = true;
    }
    token_.parameter = static_cast<int32_t>(negative ? -value : value);
}

const Token& Tokenizer::ReadHexByte() {
    int value = 0;
    int digits = 0;
    for (; digits < 2 && at_ < rtf_.size(); ++digits, ++at_) {
        const int digit = HexValue(static_cast<unsigned char>(rtf_[at_]));
        if (digit < 0)
            break;
        value = value * 16 + digit;
    }
    token_.byte = static_cast<unsigned char>(digits == 2 ? value : '\'');
    return Finish(digits == 2 ? TokenKind::HexByte : TokenKind::Symbol);
}

const Token& Tokenizer::ReadBinary() {
    // A length that the file can't hold is a wrong one: what follows is taken as text, so that nothing is lost.
    const auto length = static_cast<size_t>(std::max(token_.parameter, 0));
    token_.text = length <= rtf_.size() - at_ ? rtf_.substr(at_, length) : std::string_view{};
    at_ += token_.text.size();
    return Finish(TokenKind::Binary);
}

void Tokenizer::SkipGroup() {
    for (size_t depth = 0;;) {
        at_ = FindByte<MarkBytes>(rtf_, at_);
        if (at_ == rtf_.size())
            return;
        const char c = rtf_[at_];
        if (c == '}' && depth == 0)
            return;
        if (c == '\\') {
            token_.begin = at_;
            ReadEscape();
            continue;
        }
        depth = c == '{' ? depth + 1 : depth - 1;
        ++at_;
    }
}

}  // namespace lore
