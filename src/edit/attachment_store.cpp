#include "edit/attachment_store.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

#include "base/file_copy.h"
#include "base/text.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

constexpr int kHighestNumber = 9'999'999;
constexpr size_t kLongestExtension = 100;

bool IsNew(const EditedAttachment& attachment) {
    const CAttachment& record = attachment.record;
    return record.type != kWebLink && record.storedFile.empty() &&
           (!record.sourceFile.empty() || !attachment.bitmap.empty());
}

FileResult CopyIn(const EditedAttachment& attachment, const std::filesystem::path& target) {
    if (!attachment.bitmap.empty())
        return WriteFileAtomically(target, attachment.bitmap);
    return CopyFileAtomically(attachment.record.sourceFile, target);
}

int LeadingNumber(const std::string& name) {
    const auto end = std::find_if(name.begin(), name.end(), [](char c) { return c < '0' || c > '9'; });
    return end == name.begin() ? 0 : ParseInt(std::string(name.begin(), end));
}

int HighestNumberIn(const std::filesystem::path& folder) {
    int highest = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        // A name with a number beyond seven digits comes from elsewhere, and would leave no room for the next one.
        const int number = LeadingNumber(it->path().filename().string());
        if (number <= kHighestNumber)
            highest = std::max(highest, number);
    }
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

int HighestAttachmentNumber(const std::filesystem::path& folder) {
    return std::max(HighestNumberIn(folder), HighestNumberIn(folder.parent_path() / kKeptFilesName));
}

size_t CopyInNewAttachments(std::vector<EditedAttachment>& attachments, const std::filesystem::path& folder,
                            FaultNotice& faults) {
    if (std::none_of(attachments.begin(), attachments.end(), IsNew))
        return 0;
    size_t failed = 0;
    int number = HighestAttachmentNumber(folder);
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
    for (const CAttachment& attachment : attachments) {
        const std::filesystem::path path = AttachmentPath(attachment, folder);
        if (!path.empty())
            TellFailedWrite(faults, "An attachment file could not be deleted", path, RemoveFile(path));
    }
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
