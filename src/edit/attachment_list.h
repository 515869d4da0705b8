#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "edit/attachment_store.h"
#include "ports/progress.h"
#include "ports/prompts.h"

namespace lore {

/// The attachments of the note that is being edited. Files are only named here; saving the note copies them.
class AttachmentList {
public:
    AttachmentList(Prompts& prompts, Progress& progress, FaultNotice& faults, std::filesystem::path folder)
        : prompts_(prompts), progress_(progress), faults_(faults), folder_(std::move(folder)) {}

    void Fill(const std::vector<CAttachment>& records) { items_ = EditAttachments(records); }
    std::vector<EditedAttachment>& Items() { return items_; }
    const std::vector<EditedAttachment>& Items() const { return items_; }

    /// Asks for files and adds them.
    void AddFiles();
    /// Adds a file by its full path. Refused with a message, and false, if the list holds the file already, or if it
    /// isn't a file that can be read.
    bool AddFile(const std::string& path);
    /// Adds a picture of the text control, a bitmap in memory.
    void AddPicture(std::string bitmap, const std::string& title);
    /// Asks for an address and adds it, or changes one. An empty address changes nothing.
    void AddWebLink();
    void EditWebLink(size_t position);
    /// Adds an address without asking.
    void AddLink(std::string_view address);
    /// Asks, and takes the item off the list. Its file stays.
    void RemoveAttachment(size_t position);
    /// Asks for a place and copies the attachment there.
    void ExtractAttachment(size_t position);

    /// What the column "Original File/Link" shows: the path of a file that isn't copied yet, the address of a link,
    /// otherwise the stored name.
    std::string OriginalText(size_t position) const;

private:
    std::optional<std::string> AskAddress(const char* title, const std::string& initial);

    Prompts& prompts_;
    Progress& progress_;
    FaultNotice& faults_;
    std::filesystem::path folder_;
    std::vector<EditedAttachment> items_;
};

/// Asks for a place and copies the file of a stored attachment there, over what stands there.
void ExtractAttachmentFile(const CAttachment& attachment, const std::filesystem::path& folder, Prompts& prompts,
                           Progress& progress, FaultNotice& faults);

}  // namespace lore
