#include "edit/attachment_list.h"

#include <algorithm>
#include <fstream>
#include <unistd.h>

#include "base/file_copy.h"
#include "base/text.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

constexpr char kAllFiles[] = "All Files (*.*)|*.*||";
constexpr char kNewAddress[] = "http://";

bool IsReadableFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && std::ifstream(path, std::ios::binary).is_open();
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return a == b || (!a.empty() && !b.empty() && std::filesystem::equivalent(a, b, error));
}

/// "Image File (*.png) |*.png|"
std::string FilterFor(int32_t kind, std::string_view extension) {
    const std::string pattern = extension.empty() ? "*" : "*." + std::string(extension);
    return std::string(AttachmentKindName(kind)) + " (" + pattern + ") |" + pattern + "|";
}

}  // namespace

void AttachmentList::AddFiles() {
    for (const std::string& path : prompts_.AskOpenPaths("Attach File", kAllFiles, PathCount::Several))
        AddFile(path);
}

bool AttachmentList::AddFile(const std::string& path) {
    const bool isHeld = std::any_of(items_.begin(), items_.end(), [&](const EditedAttachment& item) {
        return item.record.type != kWebLink && IsSameFile(item.record.sourceFile, path);
    });
    if (isHeld || !IsReadableFile(path)) {
        prompts_.Message("File is already attached, or it is an invalid file.", "Invalid Attachment",
                         PromptIcon::Warning);
        return false;
    }
    if (CleanText(path) != path) {
        prompts_.Message(
            "The name of this file, or of one of its folders, holds a character that no note can store. "
            "Please give it another name:\n\n" +
                CleanText(FromUtf8(ToUtf8(path))),
            "Invalid Attachment", PromptIcon::Warning);
        return false;
    }
    EditedAttachment item;
    item.record.title = CleanText(FromUtf8(ToUtf8(std::filesystem::path(path).filename().string())));
    item.record.sourceFile = path;
    SetAttachmentType(item.record, AttachmentKindOf(path));
    items_.push_back(std::move(item));
    return true;
}

void AttachmentList::AddPicture(std::string bitmap, const std::string& title) {
    EditedAttachment item;
    item.record.title = CleanText(title);
    SetAttachmentType(item.record, kImageFile);
    item.bitmap = std::move(bitmap);
    items_.push_back(std::move(item));
}

std::optional<std::string> AttachmentList::AskAddress(const char* title, const std::string& initial) {
    const std::optional<std::string> typed = prompts_.AskText("Address:", title, initial);
    const std::string address = CleanText(Trim(typed.value_or("")));
    return address.empty() || address == kNewAddress ? std::nullopt : std::optional(address);
}

void AttachmentList::AddWebLink() {
    if (const auto address = AskAddress("Attach Web Link", kNewAddress))
        AddLink(*address);
}

void AttachmentList::AddLink(std::string_view address) {
    EditedAttachment item;
    item.record.title = CleanText(address);
    item.record.sourceFile = item.record.title;
    SetAttachmentType(item.record, kWebLink);
    items_.push_back(std::move(item));
}

void AttachmentList::EditWebLink(size_t position) {
    const std::string before = items_[position].record.sourceFile;
    const auto address = AskAddress("Edit Web Link", before);
    if (!address)
        return;
    // Others may have been added after the question, and the items lie elsewhere then.
    CAttachment& record = items_[position].record;
    // A title of its own stays; the address as its own title follows.
    if (record.title == before)
        record.title = *address;
    record.sourceFile = *address;
}

void AttachmentList::RemoveAttachment(size_t position) {
    const std::string text =
        "Do you wish to remove the selected attachment: \"" + items_[position].record.title + "\"?";
    if (prompts_.Ask(text, "Remove Attachment?") == PromptAnswer::Yes)
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
}

void AttachmentList::ExtractAttachment(size_t position) {
    ExtractAttachmentFile(items_[position].record, folder_, prompts_, progress_, faults_);
}

std::string AttachmentList::OriginalText(size_t position) const {
    const CAttachment& record = items_[position].record;
    return record.sourceFile.empty() ? record.storedFile : record.sourceFile;
}

void ExtractAttachmentFile(const CAttachment& attachment, const std::filesystem::path& folder, Prompts& prompts,
                           Progress& progress, FaultNotice& faults) {
    std::filesystem::path file = AttachmentPath(attachment, folder);
    if (file.empty())
        file = attachment.sourceFile;
    if (attachment.type == kWebLink || file.empty())
        return;
    const std::string_view extension =
        FileExtension(attachment.storedFile.empty() ? attachment.sourceFile : attachment.storedFile);
    const auto target = prompts.AskSavePath("Extract Attachment", FilterFor(attachment.type, extension),
                                            std::string(LastPathComponent(attachment.title)));
    if (!target)
        return;
    progress.ShowStandBy("Extracting file....");
    const FileResult copied = CopyFileAtomically(file, *target);
    // Where the attachment's own file can be read, it is the other one that could not be written.
    std::error_code error;
    const bool isRead = std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), R_OK) == 0;
    TellFailedWrite(faults, "The attachment could not be extracted", isRead ? std::filesystem::path(*target) : file,
                    copied);
    progress.HideStandBy();
}

}  // namespace lore
