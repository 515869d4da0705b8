#include "notes/check_note.h"

#include "notes/attachment_path.h"
#include "notes/note_file_walk.h"

namespace lore {

namespace {

/// Adds findings about one note.
class NoteFindings {
public:
    NoteFindings(int32_t id, const std::filesystem::path& file, std::vector<Finding>& findings)
        : note_("note " + std::to_string(id)), file_(file.string()), findings_(findings) {}
    void Add(FindingKind kind, const std::string& text) { findings_.push_back({kind, file_, note_ + " " + text}); }

private:
    std::string note_;
    std::string file_;
    std::vector<Finding>& findings_;
};

void CheckLinks(const CNote& note, const KnownThings& known, NoteFindings& findings) {
    for (const int32_t source : note.sources) {
        if (!known.sources.FindSourceByID(source))
            findings.Add(FindingKind::SourceMissing, "names source " + std::to_string(source) + ", which is missing");
    }
    for (size_t set = 0; known.hasCategories && set < kSetCount; ++set) {
        const CProCategoryTree& path = note.categories[set];
        const int32_t category = DeepestCategoryID(path);
        if (!path.IsEmptyPath() && !known.categories.FindByID(category))
            findings.Add(FindingKind::CategoryMissing, "is filed in set " + std::to_string(set + 1) +
                                                           " under category " + std::to_string(category) +
                                                           ", which is missing");
    }
    for (const CAttachment& attachment : note.attachments) {
        const std::string name = StoredName(attachment);
        if (!name.empty() && !known.attachments.contains(name))
            findings.Add(FindingKind::AttachmentMissing, "names attachment " + name + ", which is missing");
    }
}

/// Calls `tell` for texts that are too long.
class LengthCheck {
public:
    explicit LengthCheck(const std::function<void(const std::string&)>& tell) : tell_(tell) {}

    void Check(std::string_view text, const char* name) const {
        if (const std::string over = OverLimit(text.size()); !over.empty())
            tell_(name + over);
    }
    void CheckCategoryNames(const CProCategoryTree& path) const {
        Check(path.name, "category");
        for (const CProCategoryTree& child : path.children)
            CheckCategoryNames(child);
    }

private:
    const std::function<void(const std::string&)>& tell_;
};

}  // namespace

void TellLongTexts(const CNote& head, const NoteTexts& texts, const std::function<void(const std::string&)>& tell) {
    const LengthCheck lengths(tell);
    lengths.Check(texts.plainText, "plain text");
    lengths.Check(texts.rtfText, "rich text");
    lengths.Check(head.keyWords, "line of key words");
    lengths.Check(head.reserved, "reserved text");
    lengths.Check(head.guid, "GUID");
    for (const CNoteSourceInfo& info : head.sourceInfo) {
        lengths.Check(info.key, "key of source information");
        lengths.Check(info.text, "source information");
    }
    for (const CProCategoryTree& path : head.categories)
        lengths.CheckCategoryNames(path);
    for (const CAttachment& attachment : head.attachments) {
        for (const std::string* const text : {&attachment.title, &attachment.storedFile, &attachment.sourceFile})
            lengths.Check(*text, "name of an attachment");
    }
}

void CheckNote(const CNote& head, const NoteTexts& texts, const std::filesystem::path& file, const KnownThings& known,
               std::vector<Finding>& findings) {
    NoteFindings ofNote(head.id, file, findings);
    if (!IsAtHome(head, file))
        ofNote.Add(FindingKind::NoteInWrongFile, "belongs in " + GetNoteFileName(head));
    CheckLinks(head, known, ofNote);
    TellLongTexts(head, texts, [&](const std::string& text) { ofNote.Add(FindingKind::TextTooLong, "has a " + text); });
}

}  // namespace lore
