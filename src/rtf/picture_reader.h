#pragma once

#include <optional>
#include <string_view>

#include "rtf/document.h"
#include "rtf/tokenizer.h"

namespace lore {

/// Collects one picture group: its properties, and its bytes from hexadecimal text or binary data.
class PictureReader {
public:
    void ReadWord(const ControlWord& word, const Token& token);
    /// Hexadecimal digits; anything else among them is passed over, and half a byte at the end is dropped.
    void ReadHex(std::string_view text);
    void ReadBinary(std::string_view bytes) { picture_.bytes.append(bytes); }

    /// The picture, if it is of a known kind and has bytes. The reader is ready for the next one then.
    std::optional<Picture> Take();

private:
    Picture picture_;
    bool hasKind_ = false;
    int highDigit_ = -1;
};

}  // namespace lore
