#include "edit/note_text_file.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "rtf/encoding.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// Lines end at each CR LF, LF, CR, form feed and vertical tab.
std::string WithLineFeeds(std::string_view text) {
    std::string lines = ReplaceAll(text, "\r\n", "\n");
    std::replace_if(
        lines.begin(), lines.end(), [](char c) { return c == '\r' || c == '\f' || c == '\v'; }, '\n');
    return lines;
}

/// Texts of two bytes a character tell so by their first two.
std::string WithoutUtf16(std::string bytes) {
    if (!bytes.starts_with("\xFF\xFE") && !bytes.starts_with("\xFE\xFF"))
        return bytes;
    return DecodedFrom("UTF-16", bytes).value_or(bytes);
}

}  // namespace

NewTextLook LookOfNewText(const SettingsStore& store) {
    constexpr int kSmallest = 2, kLargest = 267;  // pixels of the board
    const FontSetting font = LoadFontSetting(store, kEditTextFont, DefaultEditTextFont());
    // Three quarters of the pixels in points, twice that in half points.
    return {ToUtf8(font.faceName), std::clamp(font.height, kSmallest, kLargest) * 3 / 2};
}

FileResult ReadNoteText(const std::filesystem::path& file, const NewTextLook& look, std::string& rtf) {
    std::string bytes;
    const FileResult result = ReadFileOrStream(file, bytes);
    const std::string ending = ToLower(file.extension().string());
    if (ending == ".rtf")
        rtf = CleanRtf(bytes);
    else if (ending == ".html" || ending == ".htm")
        rtf = WriteRtf(ReadHtml(WithoutUtf16(std::move(bytes)), {look.font, look.halfPoints}));
    else
        rtf = RtfFromText(WithoutUtf16(std::move(bytes)), look);
    if (!result.Ok())
        rtf.clear();
    return result;
}

std::string RtfFromText(std::string_view bytes, const NewTextLook& look) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    std::string text = WithLineFeeds(ToUtf8(CleanText(bytes)));
    // The end of the last line is no paragraph of its own.
    if (text.ends_with('\n'))
        text.pop_back();
    return WriteRtf(DocumentFromText(text, look.font, look.halfPoints));
}

}  // namespace lore
