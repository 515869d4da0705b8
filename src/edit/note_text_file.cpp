#include "edit/note_text_file.h"

#include "base/text.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"

namespace lore {

FileResult ReadNoteText(const std::filesystem::path& file, const NewTextLook& look, std::string& rtf) {
    std::string bytes;
    const FileResult result = ReadFile(file, bytes);
    const std::string ending = ToLower(file.extension().string());
    if (ending == ".rtf")
        rtf = CleanText(bytes);
    else if (ending == ".html" || ending == ".htm")
        rtf = WriteRtf(ReadHtml(bytes, {look.font, look.half_points}));
    else
        rtf = RtfFromText(bytes, look);
    if (!result.Ok())
        rtf.clear();
    return result;
}

std::string RtfFromText(std::string_view bytes, const NewTextLook& look) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    std::string text = ToUtf8(CleanText(bytes));
    // The end of the last line is no paragraph of its own.
    if (text.ends_with('\n'))
        text.pop_back();
    if (text.ends_with('\r'))
        text.pop_back();
    return WriteRtf(DocumentFromText(text, look.font, look.half_points));
}

}  // namespace lore
