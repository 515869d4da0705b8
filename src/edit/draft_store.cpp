#include "edit/draft_store.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

#include "base/file_io.h"
#include "base/text.h"
#include "edit/sync_record.h"
#include "notes/note_file.h"

namespace lore {

namespace {

constexpr std::string_view kMark = "LoreDraft 1\n";
constexpr char kEnding[] = ".draft";
constexpr size_t kLongestKey = 64;
constexpr size_t kNumbers = 4;
constexpr size_t kTickedFlag = 1;
constexpr size_t kNewFlag = 2;
/// A reader of note files passes over a record without an id, so that a new note bears one while it is stored.
constexpr int32_t kNewNoteMark = 1;

/// A GUID as part of a file name. A GUID from elsewhere may hold anything.
std::string FileKey(std::string_view guid) {
    std::string key;
    for (const char c : guid.substr(0, kLongestKey)) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
        if (isPlain)
            key += c;
    }
    return key.empty() ? "note" : key;
}

/// False unless the line is that many numbers with a blank between each two.
bool ReadNumbers(std::string_view line, std::array<size_t, kNumbers>& numbers) {
    const char* at = line.data();
    const char* const end = at + line.size();
    for (size_t i = 0; i < kNumbers; ++i) {
        if (i > 0 && (at == end || *at++ != ' '))
            return false;
        const auto [rest, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc())
            return false;
        at = rest;
    }
    return at == end;
}

bool ParseDraft(std::string_view bytes, const ReadContext& context, Draft& draft) {
    if (!bytes.starts_with(kMark))
        return false;
    bytes.remove_prefix(kMark.size());
    ParseDateFieldText(TakeLine(bytes), draft.baseEdited);
    ParseDateFieldText(TakeLine(bytes), draft.written);
    std::array<size_t, kNumbers> numbers{};
    if (!ReadNumbers(TakeLine(bytes), numbers))
        return false;
    const auto [flags, record, plain, rtf] = numbers;
    if (record > bytes.size() || plain > bytes.size() - record || rtf != bytes.size() - record - plain)
        return false;
    NoteFileReader reader(context);
    reader.OpenBytes(std::string(bytes.substr(0, record)));
    if (!reader.Next())
        return false;
    draft.note = reader.TakeNote();
    draft.note.plainText = bytes.substr(record, plain);
    draft.note.rtfText = bytes.substr(record + plain);
    draft.syncTicked = (flags & kTickedFlag) != 0;
    if (flags & kNewFlag)
        draft.note.id = -1;
    return !reader.Next() && !reader.IsDamaged();
}

/// Makes a folder of drafts, but not that of the NoteBook: where this was taken away, such as with its drive, nothing
/// is put in its place.
FileResult MakeInside(const std::filesystem::path& noteBook, const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(noteBook, error))
        return {error ? error.value() : ENOTDIR};
    return MakeFolders(folder);
}

}  // namespace

FileResult DraftStore::WriteDraft(const Draft& draft) const {
    CNote head = draft.note;
    head.plainText.clear();
    head.rtfText.clear();
    const bool isNew = head.id <= 0;
    if (isNew)
        head.id = kNewNoteMark;
    const std::string record = NoteFileBytes({&head, 1});
    std::string bytes(kMark);
    bytes += DateFieldText(draft.baseEdited) + "\n" + DateFieldText(draft.written) + "\n";
    bytes += std::to_string((draft.syncTicked ? kTickedFlag : 0) + (isNew ? kNewFlag : 0)) + " " +
             std::to_string(record.size()) + " " + std::to_string(draft.note.plainText.size()) + " " +
             std::to_string(draft.note.rtfText.size()) + "\n";
    bytes += record + draft.note.plainText + draft.note.rtfText;
    if (const FileResult made = MakeInside(folder_.parent_path(), folder_); !made.Ok())
        return made;
    return WriteFileAtomically(FileOf(head.guid), bytes);
}

FileResult DraftStore::KeepFile(std::string_view guid, std::string_view name, std::string_view bytes,
                                std::filesystem::path& path) const {
    const std::filesystem::path folder = folder_ / FileKey(guid);
    path = folder / name;
    if (const FileResult made = MakeInside(folder_.parent_path(), folder); !made.Ok())
        return made;
    return WriteFileAtomically(path, bytes);
}

FileResult DraftStore::RemoveDraft(std::string_view guid) const {
    const FileResult result = RemoveFile(FileOf(guid));
    std::error_code error;
    std::filesystem::remove_all(folder_ / FileKey(guid), error);
    std::filesystem::remove(folder_, error);  // fails while another draft stands there
    return result;
}

std::filesystem::path DraftStore::FileOf(std::string_view guid) const {
    return folder_ / (FileKey(guid) + kEnding);
}

std::vector<std::filesystem::path> DraftStore::ListDrafts() const {
    std::vector<std::filesystem::path> drafts;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder_, error), end; !error && it != end; it.increment(error)) {
        if (it->path().extension() == kEnding)
            drafts.push_back(it->path());
    }
    std::sort(drafts.begin(), drafts.end());
    return drafts;
}

Loaded<Draft> DraftStore::ReadDraft(const std::filesystem::path& path, const ReadContext& context) {
    std::string bytes;
    Loaded<Draft> loaded;
    loaded.file = ReadFile(path, bytes);
    if (!loaded.file.Ok())
        return loaded;
    loaded.isWhole = ParseDraft(bytes, context, loaded.value);
    if (!loaded.isWhole)
        loaded.value = Draft();
    return loaded;
}

bool DraftDiffers(const Draft& draft, const CNote* stored) {
    if (!stored)
        return true;
    const NoteDifferences differences = DifferencesOf(draft.note, *stored);
    return differences.text || differences.sources || differences.keyWords || differences.categories ||
           draft.note.borderColor != stored->borderColor || draft.note.spellCheck != stored->spellCheck ||
           AttachmentsDiffer(draft.note.attachments, stored->attachments);
}

}  // namespace lore
