#include "rtf/picture_reader.h"

#include <utility>

#include "rtf/hex.h"

namespace lore {

void PictureReader::ReadWord(const ControlWord& word, const Token& token) {
    switch (word.word) {
        case Word::kPictureKind:
            has_kind_ = true;
            picture_.kind = static_cast<PictureKind>(word.value);
            if (picture_.kind == PictureKind::kWmf && token.has_parameter)
                picture_.map_mode = token.parameter;
            return;
        case Word::kPictureWidth:
            picture_.width = token.parameter;
            return;
        case Word::kPictureHeight:
            picture_.height = token.parameter;
            return;
        case Word::kGoalWidth:
            picture_.goal_width = token.parameter;
            return;
        case Word::kGoalHeight:
            picture_.goal_height = token.parameter;
            return;
        case Word::kScaleX:
            picture_.scale_x = token.parameter;
            return;
        case Word::kScaleY:
            picture_.scale_y = token.parameter;
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
        if (high_digit_ < 0) {
            high_digit_ = digit;
        } else {
            picture_.bytes += static_cast<char>(high_digit_ * 16 + digit);
            high_digit_ = -1;
        }
    }
}

std::optional<Picture> PictureReader::Take() {
    PictureReader done;
    std::swap(done, *this);
    if (!done.has_kind_ || done.picture_.bytes.empty())
        return std::nullopt;
    return std::move(done.picture_);
}

}  // namespace lore
