#include "ui/list_board_model.h"

#include "base/text.h"
#include "notes/attachment_kind.h"

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
    // A name from an archive may hold folders; only its last part counts.
    const std::string_view name = LastPathComponent(attachment.storedFile);
    if (attachment.type == kWebLink || name.empty() || name == "." || name == "..")
        return {};
    return book_.paths.Attachments() / name;
}

BoardOptions BoardOptionsOf(const Settings& settings, const SettingsStore& store) {
    BoardOptions options;
    options.showCategories = settings.Flag(Option::ShowCats);
    options.categoriesOnTop = settings.Flag(Option::CatsTop);
    options.onlySetOne = settings.Flag(Option::ShowCatSet1);
    options.showKeyWords = settings.Flag(Option::ShowKeyWords);
    options.keyWordsOnTop = settings.Flag(Option::KewWordsTop);
    options.showSources = settings.Flag(Option::ShowSources);
    options.sourcesOnTop = settings.Flag(Option::SourceTop);
    options.sourceSize = settings.Int(Option::SourceSize);
    options.zoom = settings.ZoomFactor();
    options.focusGround = LoadSelectedNoteColor(store);
    options.pictureTitle = LoadFontSetting(store, "ImgTitleFont", DefaultImageTitleFont());
    return options;
}

}  // namespace lore
