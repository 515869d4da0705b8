#include "notes/list_board_model.h"

#include "notes/attachment_path.h"

namespace lore {

std::vector<const CSource*> ListBoardModel::SourcesOf(const CNote& note) const {
    std::vector<const CSource*> sources;
    for (size_t i = 0; i < note.sources.Count(); ++i)
        if (const CSource* source = book_.sources.FindSourceByID(note.sources[i]))
            sources.push_back(source);
    return sources;
}

std::string ListBoardModel::SourceRemark(const CNote& note, const CSource& source) const {
    const CNoteSourceInfo* info = FindSourceInfo(note.sourceInfo, source.SourceGUID);
    return info ? info->text : std::string();
}

std::filesystem::path ListBoardModel::AttachmentPath(const CAttachment& attachment) const {
    return lore::AttachmentPath(attachment, book_.paths.Attachments());
}

}  // namespace lore
