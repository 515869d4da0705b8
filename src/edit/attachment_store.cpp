#include "edit/attachment_store.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "base/text.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"
#include "notes/note_file_walk.h"
#include "ports/background.h"

namespace lore {

namespace {

constexpr int kHighestNumber = 9'999'999;
constexpr size_t kLongestExtension = 100;

bool IsNew(const EditedAttachment& attachment) {
    const CAttachment& record = attachment.record;
    std::error_code error;
    return record.type != kWebLink && record.storedFile.empty() &&
           (!record.sourceFile.empty() || !attachment.bitmap.empty()) &&
           !(attachment.isToldOf &&
             std::filesystem::status(record.sourceFile, error).type() == std::filesystem::file_type::not_found);
}

FileResult CopyIn(const EditedAttachment& attachment, const std::filesystem::path& target) {
    if (!attachment.bitmap.empty())
        return WriteFileAtomically(target, attachment.bitmap);
    return CopyFileAtomically(attachment.record.sourceFile, target);
}

/// A name with a number beyond seven digits comes from elsewhere, and would leave no room for the next one: 0.
int LeadingNumber(const std::string& name) {
    const auto end = std::find_if(name.begin(), name.end(), [](char c) { return c < '0' || c > '9'; });
    const int number = end == name.begin() ? 0 : ParseInt(std::string(name.begin(), end));
    return number > kHighestNumber ? 0 : number;
}

int HighestNumberIn(const std::filesystem::path& folder) {
    int highest = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        highest = std::max(highest, LeadingNumber(it->path().filename().string()));
    return highest;
}

int HighestNumberIn(const NoteBookPaths& paths) {
    return std::max(HighestNumberIn(paths.Attachments()), HighestNumberIn(paths.Folder() / kKeptFilesName));
}

int HighestNumberIn(const CNote& note) {
    int highest = 0;
    for (const CAttachment& attachment : note.attachments)
        highest = std::max(highest, LeadingNumber(StoredName(attachment)));
    return highest;
}

}  // namespace

std::vector<EditedAttachment> EditAttachments(const std::vector<CAttachment>& records) {
    std::vector<EditedAttachment> attachments;
    attachments.reserve(records.size());
    for (const CAttachment& record : records)
        attachments.push_back({record, {}});
    return attachments;
}

std::vector<CAttachment> AttachmentRecords(const std::vector<EditedAttachment>& attachments) {
    std::vector<CAttachment> records;
    records.reserve(attachments.size());
    for (const EditedAttachment& attachment : attachments)
        records.push_back(attachment.record);
    return records;
}

std::string StoredAttachmentName(int number, std::string_view extension) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%.7d.", number);
    std::string name = digits + std::string(extension.size() > kLongestExtension ? "" : extension);
    std::erase_if(name, [](char c) { return c == ':' || static_cast<unsigned char>(c) < 32; });
    return name;
}

std::string NextAttachmentName(const std::filesystem::path& folder, int& number, std::string_view extension) {
    std::string name;
    std::error_code missing;
    do
        name = StoredAttachmentName(++number, extension);
    while (std::filesystem::exists(std::filesystem::symlink_status(folder / name, missing)));
    return name;
}

int HighestAttachmentNumber(const NoteBookPaths& paths, const std::vector<CNote>& notes) {
    int highest = HighestNumberIn(paths);
    for (const CNote& note : notes)
        highest = std::max(highest, HighestNumberIn(note));
    return highest;
}

int HighestAttachmentNumber(const NoteBookPaths& paths, const ReadContext& context) {
    int highest = HighestNumberIn(paths);
    NoGuids noGuids;
    const ReadContext ofNotes{context.now, context.nowUtc, &noGuids};
    KeptForLater unread;  // each load tells of it
    const std::vector<std::filesystem::path> files = NoteFilesOf(paths.Notes(), unread);
    std::vector<int> numbers(files.size());
    WalkNoteFiles(
        files, ofNotes, kReadThreads,
        [&](size_t file, NoteFileReader& reader) {
            while (reader.Next())
                numbers[file] = std::max(numbers[file], HighestNumberIn(reader.Head()));
        },
        [&](size_t file, const FileResult&) { highest = std::max(highest, numbers[file]); }, {}, HeadParts::Place);
    return highest;
}

size_t CopyInNewAttachments(std::vector<EditedAttachment>& attachments, const NoteBookPaths& paths,
                            const ReadContext& context, FaultNotice& faults) {
    if (std::none_of(attachments.begin(), attachments.end(), IsNew))
        return 0;
    size_t failed = 0;
    const std::filesystem::path folder = paths.Attachments();
    int number = HighestAttachmentNumber(paths, context);
    for (EditedAttachment& attachment : attachments) {
        if (!IsNew(attachment))
            continue;
        CAttachment& record = attachment.record;
        const std::string name = NextAttachmentName(
            folder, number, attachment.bitmap.empty() ? FileExtension(record.sourceFile) : std::string_view("bmp"));
        const FileResult result = CopyIn(attachment, folder / name);
        TellFailedWrite(faults, "A file could not be attached; saving the note again tries once more",
                        attachment.bitmap.empty() ? std::filesystem::path(record.sourceFile) : folder / name, result);
        if (!result.Ok()) {
            ++failed;
            continue;
        }
        record.storedFile = name;
        record.sourceFile.clear();
        attachment.bitmap.clear();
    }
    return failed;
}

void DeleteAttachmentFiles(const std::vector<CAttachment>& attachments, const std::filesystem::path& folder,
                           FaultNotice& faults) {
    bool any = false;
    for (const CAttachment& attachment : attachments) {
        const std::filesystem::path path = AttachmentPath(attachment, folder);
        std::error_code error;
        if (path.empty() || !std::filesystem::exists(std::filesystem::symlink_status(path, error)))
            continue;
        const FileResult result = DropFile(path);
        TellFailedWrite(faults, "An attachment file could not be deleted", path, result);
        any = any || result.Ok();
    }
    if (any)
        TellFailedWrite(faults, "Deleted attachment files may come back", folder, FlushFolder(folder));
}

std::vector<CAttachment> UnsharedAttachments(const CNote& note, const CNote* other) {
    std::vector<CAttachment> unshared = note.attachments;
    if (!other)
        return unshared;
    std::unordered_set<std::string> shared;
    for (const CAttachment& attachment : other->attachments)
        shared.insert(StoredName(attachment));
    std::erase_if(unshared, [&](const CAttachment& attachment) { return shared.contains(StoredName(attachment)); });
    return unshared;
}

}  // namespace lore
