#include "printsave/hand_over.h"

#include "base/text.h"
#include "bibliography/bibliography_file.h"

namespace lore {

namespace {

constexpr const char* kMakeAgain = " Please print or create it in Lorebinder again.";

enum class Kind { Bibliography, Notes, Neither };

/// A bibliography begins with its version as a number, a list of notes with its version as a counted text.
Kind KindOf(const std::filesystem::path& path, FileResult& result) {
    std::unique_ptr<RecordReader> stream;
    result = OpenRecordFile(path, stream);
    if (!stream)
        return Kind::Neither;
    constexpr size_t kPointOfVersion = 10;
    const std::string begin(stream->Rest().substr(0, 20));
    if (begin.size() == 20 && begin[kPointOfVersion] == '.')
        return ParseDouble(begin) > 0 ? Kind::Bibliography : Kind::Neither;
    constexpr int32_t kLongestVersion = 20;
    const int32_t length = ReadFixedInt(stream.get());
    if (length < 1 || length > kLongestVersion)
        return Kind::Neither;
    return ParseDouble(std::string(stream->TakeBytes(static_cast<size_t>(length)))) > 0 ? Kind::Notes : Kind::Neither;
}

}  // namespace

HandOver ReadHandOver(const std::filesystem::path& path, const ReadContext& context) {
    HandOver read;
    FileResult result;
    const Kind kind = KindOf(path, result);
    const std::string name = "\"" + path.string() + "\"";
    if (!result.Ok()) {
        read.problem = name + " can't be read: " + result.Reason() + "." + kMakeAgain;
        return read;
    }
    if (kind == Kind::Neither) {
        read.problem = name + " holds neither a bibliography nor notes to print." + kMakeAgain;
        return read;
    }
    bool isWhole = false;
    read.isBibliography = kind == Kind::Bibliography;
    if (read.isBibliography) {
        auto loaded = LoadBibliography(path, context);
        isWhole = loaded.ReadWhole();
        read.sources = std::move(loaded.value);
    } else {
        auto loaded = LoadPrintPreview(path, context);
        isWhole = loaded.ReadWhole();
        read.notes = std::move(loaded.value.notes);
    }
    if (!isWhole)
        read.problem = name + " is damaged: it breaks off before its end." + kMakeAgain;
    else if (read.sources.Count() == 0 && read.notes.empty())
        read.problem = name + " holds nothing to print." + kMakeAgain;
    return read;
}

}  // namespace lore
