#include "rtf/picture_reader.h"

#include <utility>

#include "rtf/hex.h"

namespace lore {

void PictureReader::ReadWord(const ControlWord& word, const Token& token) {
    switch (word.word) {
        case Word::PictureKind:
            hasKind_ = true;
            picture_.kind = static_cast<PictureKind>(word.value);
            if (picture_.kind == PictureKind::Wmf && token.hasParameter)
                picture_.mapMode = token.parameter;
            return;
        case Word::PictureWidth:
            picture_.width = token.parameter;
            return;
        case Word::PictureHeight:
            picture_.height = token.parameter;
            return;
        case Word::GoalWidth:
            picture_.goalWidth = token.parameter;
            return;
        case Word::GoalHeight:
            picture_.goalHeight = token.parameter;
            return;
        case Word::ScaleX:
            picture_.scaleX = token.parameter;
            return;
        case Word::ScaleY:
            picture_.scaleY = token.parameter;
            return;
        default:
            return;
    }
}

void PictureReader::ReadHex(std::string_view text) {
    for (char c : text) {
        const int digit = HexValue(static_cast<unsigned char>(c));
        if (digit < 0)
            continue;
        if (highDigit_ < 0) {
            highDigit_ = digit;
        } else {
            picture_.bytes += static_cast<char>(highDigit_ * 16 + digit);
            highDigit_ = -1;
        }
    }
}

std::optional<Picture> PictureReader::Take() {
    PictureReader done;
    std::swap(done, *this);
    if (!done.hasKind_ || done.picture_.bytes.empty())
        return std::nullopt;
    return std::move(done.picture_);
}

}  // namespace lore
