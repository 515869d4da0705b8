#include "rtf/html_picture.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/text.h"

namespace lore {

namespace {

constexpr double kWidest = 9000;  // twips
constexpr double kTallest = 450000;
constexpr int kMostPixels = 30000;

std::array<int8_t, 256> MakeDigits() {
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<int8_t, 256> digits{};
    digits.fill(-1);
    for (size_t i = 0; i < kAlphabet.size(); ++i)
        digits[static_cast<unsigned char>(kAlphabet[i])] = static_cast<int8_t>(i);
    return digits;
}

/// Blanks between the characters don't count. Nothing if there is anything else.
std::optional<std::string> FromBase64(std::string_view text) {
    static const std::array<int8_t, 256> digits = MakeDigits();
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    uint32_t bits = 0;
    int held = 0;
    bool ended = false;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t')
            continue;
        ended = ended || c == '=';
        if (c == '=')
            continue;
        const int8_t digit = digits[static_cast<unsigned char>(c)];
        if (digit < 0 || ended)
            return std::nullopt;
        bits = bits << 6 | static_cast<uint32_t>(digit);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes += static_cast<char>(bits >> held & 255);
        }
    }
    return bytes;
}

uint32_t BigEndian(std::string_view bytes, size_t at, size_t count) {
    uint32_t value = 0;
    for (size_t i = at; i < at + count; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

void TakeSize(Picture& picture, uint32_t width, uint32_t height) {
    picture.width = static_cast<int32_t>(std::min<uint32_t>(width, kMostPixels));
    picture.height = static_cast<int32_t>(std::min<uint32_t>(height, kMostPixels));
}

bool ReadPngSize(Picture& picture) {
    if (picture.bytes.size() < 24 || !picture.bytes.starts_with("\x89PNG\r\n\x1a\n"))
        return false;
    picture.kind = PictureKind::Png;
    TakeSize(picture, BigEndian(picture.bytes, 16, 4), BigEndian(picture.bytes, 20, 4));
    return true;
}

/// The frame header names the size; what stands before it is passed over segment by segment.
bool ReadJpegSize(Picture& picture) {
    const std::string_view bytes = picture.bytes;
    if (!bytes.starts_with("\xFF\xD8"))
        return false;
    picture.kind = PictureKind::Jpeg;
    size_t at = 2;
    while (at + 9 <= bytes.size() && bytes[at] == '\xFF') {
        const auto marker = static_cast<unsigned char>(bytes[at + 1]);
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame) {
            TakeSize(picture, BigEndian(bytes, at + 7, 2), BigEndian(bytes, at + 5, 2));
            return true;
        }
        at += 2 + std::max<size_t>(BigEndian(bytes, at + 2, 2), 2);
    }
    return false;
}

/// What the page asks for, else a point of the screen for each point; no wider than a page.
void GiveShownSize(Picture& picture, std::string_view width, std::string_view height) {
    const double across = std::max(picture.width, 1), down = std::max(picture.height, 1);
    double shown = std::clamp(ParseInt(width), 0, kMostPixels), tall = std::clamp(ParseInt(height), 0, kMostPixels);
    const bool isRelative = width.ends_with('%') || height.ends_with('%');
    if (isRelative || (shown <= 0 && tall <= 0)) {
        shown = across;
        tall = down;
    } else if (shown <= 0) {
        shown = tall * across / down;
    } else if (tall <= 0) {
        tall = shown * down / across;
    }
    const double shrink = std::min(1.0, kWidest / (shown * kTwipsPerPixel));
    picture.goalWidth = std::max(1, static_cast<int>(std::min(shown * kTwipsPerPixel * shrink, kWidest)));
    picture.goalHeight = static_cast<int>(std::clamp(tall * kTwipsPerPixel * shrink, 1.0, kTallest));
}

}  // namespace

std::optional<Picture> ReadDataPicture(std::string_view address, std::string_view width, std::string_view height,
                                       const PictureConverter& convert) {
    constexpr std::string_view kBegin = "data:image/", kEncoding = ";base64";
    address = Trim(address);
    const size_t comma = address.find(',');
    if (comma == std::string_view::npos || !EqualNoCase(address.substr(0, kBegin.size()), kBegin) ||
        comma < kBegin.size() + kEncoding.size() ||
        !EqualNoCase(address.substr(comma - kEncoding.size(), kEncoding.size()), kEncoding))
        return std::nullopt;
    std::optional<std::string> bytes = FromBase64(address.substr(comma + 1));
    if (!bytes || bytes->empty())
        return std::nullopt;
    Picture picture;
    picture.bytes = std::move(*bytes);
    if (!ReadPngSize(picture) && !ReadJpegSize(picture)) {
        std::optional<Picture> converted = convert ? convert(picture.bytes) : std::nullopt;
        if (!converted)
            return std::nullopt;
        picture = std::move(*converted);
    }
    GiveShownSize(picture, Trim(width), Trim(height));
    return picture;
}

}  // namespace lore
