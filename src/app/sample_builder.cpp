#include "app/sample_builder.h"

#include <algorithm>

#include "app/sample_categories.h"
#include "app/sample_files.h"
#include "app/sample_json.h"
#include "app/sample_markup.h"
#include "edit/attachment_store.h"
#include "notes/attachment_kind.h"
#include "notes/note_index.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

std::string_view PictureFile(std::string_view name) {
    return SampleFileBytes("pictures/" + std::string(name));
}

std::string_view AttachedFile(const SampleAttachment& attachment) {
    return attachment.kind == SampleAttachment::Kind::Picture ? PictureFile(attachment.target)
                                                              : SampleFileBytes("files/" + attachment.target);
}

std::vector<SampleNote> AllNotes() {
    std::vector<SampleNote> notes;
    for (const SampleFile& file : SampleFiles())
        if (file.name.starts_with("notes/"))
            for (SampleNote& note : ParseSampleNotes(file.bytes))
                notes.push_back(std::move(note));
    std::ranges::stable_sort(notes, {}, [](const SampleNote& note) { return note.created.Seconds(); });
    return notes;
}

size_t CountNodes(const std::vector<CProCategoryTree>& nodes) {
    size_t count = nodes.size();
    for (const CProCategoryTree& node : nodes)
        count += CountNodes(node.children);
    return count;
}

/// Turns one note after the other into records of the content.
class NoteBuilder {
public:
    NoteBuilder(SampleContent& content, const SampleJson& colors, IdCounters& counters, GuidSource& guids)
        : content_(content), colors_(colors), counters_(counters), guids_(guids) {}

    void Add(const SampleNote& sample);

private:
    void AddText(const SampleNote& sample, CNote& note) const;
    void AddSources(const SampleNote& sample, CNote& note) const;
    void AddAttachment(const SampleAttachment& sample, CNote& note);
    Rgb ColorOf(const std::string& name) const;

    SampleContent& content_;
    const SampleJson& colors_;
    IdCounters& counters_;
    GuidSource& guids_;
    NoteIndex given_;
};

void NoteBuilder::Add(const SampleNote& sample) {
    CNote note;
    note.id = given_.GiveID(counters_.MaxNoteID);
    note.guid = guids_.NewGuid();
    note.keyWords = FromUtf8(sample.keyWords);
    note.dateCreated = sample.created;
    note.dateEdited = sample.edited;
    note.borderColor = ColorOf(sample.color);
    AddText(sample, note);
    AddSources(sample, note);
    for (size_t set = 0; set < sample.categories.size(); ++set)
        note.categories[set] = SampleCategoryPath(content_.categories, sample.categories[set]);
    for (const SampleAttachment& attachment : sample.attachments)
        AddAttachment(attachment, note);
    content_.notes.push_back(std::move(note));
}

void NoteBuilder::AddText(const SampleNote& sample, CNote& note) const {
    const Document document = ReadSampleMarkup(sample.title, sample.text, PictureFile);
    note.plainText = FromUtf8(WithCrLf(document.text));
    note.rtfText = WriteRtf(document);
}

void NoteBuilder::AddSources(const SampleNote& sample, CNote& note) const {
    for (const SampleSourceUse& use : sample.sources) {
        const CSource* source = content_.bibliography.Find(use.key);
        if (!source)
            continue;
        note.sources.AddUnique(source->SourceID);
        if (!use.info.empty())
            note.sourceInfo.push_back({source->SourceGUID, FromUtf8(use.info)});
    }
}

void NoteBuilder::AddAttachment(const SampleAttachment& sample, CNote& note) {
    CAttachment attachment;
    attachment.title = FromUtf8(sample.title);
    if (sample.kind == SampleAttachment::Kind::Link) {
        SetAttachmentType(attachment, kWebLink);
        attachment.sourceFile = sample.target;
    } else {
        const int number = static_cast<int>(content_.files.size()) + 1;
        SetAttachmentType(attachment, AttachmentKindOf(sample.target));
        attachment.storedFile = StoredAttachmentName(number, FileExtension(sample.target));
        attachment.zoom = sample.zoom;
        content_.files.push_back({attachment.storedFile, AttachedFile(sample)});
    }
    note.attachments.push_back(std::move(attachment));
}

Rgb NoteBuilder::ColorOf(const std::string& name) const {
    const SampleJson parts = ArrayOf(colors_, name.c_str());
    if (parts.size() != 3)
        return 0;
    return MakeRgb(parts[0].get<unsigned>(), parts[1].get<unsigned>(), parts[2].get<unsigned>());
}

}  // namespace

SampleContent BuildSampleContent(IdCounters& counters, const ReadContext& context) {
    const SampleJson settings = ParseSampleJson(SampleFileBytes("notebook.json"));
    SampleContent content;
    content.name = TextOf(settings, "name");
    content.bibliography = ReadSampleSources(SampleFileBytes("sources.json"), SampleFileBytes("types.json"), context,
                                             counters.MaxAuthorID);
    content.categories = ReadSampleCategories(SampleFileBytes("categories.txt"), counters.MaxCategoryID);
    content.categoryCount = CountNodes(content.categories.Roots()) - 1;
    const SampleJson colors = settings.value("colors", SampleJson::object());
    NoteBuilder builder(content, colors, counters, *context.guids);
    for (const SampleNote& note : AllNotes())
        builder.Add(note);
    return content;
}

}  // namespace lore
