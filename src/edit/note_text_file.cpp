#include "edit/note_text_file.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"
#include "rtf/wide_text.h"
#include "settings/font_setting.h"

namespace lore {

namespace {

/// Lines end at each CR LF, LF, CR, form feed and vertical tab.
std::string WithLineFeeds(std::string_view text) {
    std::string lines = ReplaceAll(text, "\r\n", "\n");
    std::replace_if(
        lines.begin(), lines.end(), [](char c) { return c == '\r' || c == '\f' || c == '\v'; }, '\n');
    return lines;
}

}  // namespace

NewTextLook LookOfNewText(const SettingsStore& store) {
    constexpr int kSmallest = 2, kLargest = 267;  // pixels of the board
    const FontSetting font = LoadFontSetting(store, kEditTextFont, DefaultEditTextFont());
    // Three quarters of the pixels in points, twice that in half points.
    return {ToUtf8(font.faceName), std::clamp(font.height, kSmallest, kLargest) * 3 / 2};
}

FileResult ReadNoteText(const std::filesystem::path& file, const NewTextLook& look, std::string& rtf) {
    rtf.clear();
    std::string bytes;
    if (const FileResult result = ReadFileOrStream(file, bytes); !result.Ok())
        return result;
    const std::string ending = ToLower(file.extension().string());
    if (ending == ".rtf") {
        rtf = CleanRtf(bytes);
        return {};
    }
    const std::optional<std::string> text = WithoutWideCharacters(bytes);
    if (!text)
        return {FileResult::kUnknownEncoding};
    const bool isPage = ending == ".html" || ending == ".htm";
    rtf = isPage ? WriteRtf(ReadHtml(*text, {look.font, look.halfPoints})) : RtfFromText(*text, look);
    return {};
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
