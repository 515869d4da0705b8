#include "notes/note_record.h"

#include <cstdio>

#include "base/text.h"
#include "classify/category_record.h"
#include "classify/old_category.h"
#include "notes/attachment_kind.h"
#include "notes/notebook_paths.h"

namespace lore {

// A note record as it is written:
//
//   FixedInt       id
//   LongList       source ids
//   FixedInt       count, then count x (CountedString key, CountedString information)
//   DateField      created, edited
//   CountedString  guid, key words, reserved
//   FixedInt       spell check (2112 or 0), red, green, blue
//   FixedInt       count, then count x attachment
//   CountedString  plain text, rich text
//   category record x 3
//
// An attachment:
//
//   FixedInt shift, FixedDouble zoom, CountedString title, stored file, source file, FixedInt type, show (2112 or 0)

namespace {

// A field stands in files whose version is above its gate. On disk; never change.
constexpr double kGuidGate = 0.9500006;
constexpr double kAttachmentsGate = 0.9500005;
constexpr double kAttachmentShiftGate = 0.9820005;
constexpr double kAttachmentTypeGate = 1.020007;
constexpr double kSpellCheckGate = 1.100005;
constexpr double kThreePathsGate = 10.860005;
constexpr double kThreeSourcesGate = 10.91005;
constexpr double kCategoryRecordGate = 11.35005;
constexpr double kColorGate = 11.37021;
constexpr double kSourceListGate = 11.40011;
constexpr double kSourceInfoGate = 11.46005;

constexpr int kOldSourceCount = 3;

/// Beyond these, which only damage reaches, a number has more than the twenty characters of its field.
constexpr double kLowestZoom = -1e9, kHighestZoom = 1e10;

/// Written, a number that its field can't hold would put every field behind it out of step.
double FittingZoom(double zoom) {
    return zoom > kLowestZoom && zoom < kHighestZoom ? zoom : 1.0;
}

/// The ids above 0, which alone name sources.
void ReadSourceIds(RecordReader* stream, double version, LongList& sources) {
    LongList ids;
    if (version > kSourceListGate) {
        ReadLongList(stream, ids);
    } else {
        const int count = version > kThreeSourcesGate ? kOldSourceCount : 1;
        for (int i = 0; i < count; ++i)
            ids.AddTail(ReadFixedInt(stream));
    }
    for (const int32_t id : ids) {
        if (id > 0)
            sources.AddTail(id);
    }
}

void ReadSourceInfo(RecordReader* stream, double version, std::vector<CNoteSourceInfo>& entries) {
    if (version <= kSourceInfoGate)
        return;
    ReadCounted(stream, [&] {
        CNoteSourceInfo& entry = entries.emplace_back();
        ReadCountedString(stream, entry.key);
        ReadCountedString(stream, entry.text);
    });
}

Rgb ReadColor(RecordReader* stream) {
    const auto red = static_cast<unsigned>(ReadFixedInt(stream));
    const auto green = static_cast<unsigned>(ReadFixedInt(stream));
    const auto blue = static_cast<unsigned>(ReadFixedInt(stream));
    return MakeRgb(red, green, blue);
}

void ReadAttachment(RecordReader* stream, double version, CAttachment& attachment) {
    if (version > kAttachmentShiftGate)
        attachment.shift = ReadFixedInt(stream);
    attachment.zoom = FittingZoom(ReadFixedDouble(stream));
    ReadCountedString(stream, attachment.title);
    ReadCountedString(stream, attachment.storedFile);
    ReadCountedString(stream, attachment.sourceFile);
    // Old versions stored the full path.
    if (attachment.storedFile.find(kDataFiles) != std::string::npos)
        attachment.storedFile = std::string(LastPathComponent(attachment.storedFile));
    if (version > kAttachmentTypeGate) {
        attachment.type = ReadFixedInt(stream);
        attachment.show = ReadStoredBool(stream);
    } else {
        attachment.type = AttachmentKindOf(attachment.sourceFile);
        attachment.show = true;
    }
}

void WriteAttachment(RecordWriter* stream, const CAttachment& attachment) {
    WriteFixedInt(stream, attachment.shift);
    WriteFixedDouble(stream, FittingZoom(attachment.zoom));
    WriteCountedString(stream, attachment.title);
    WriteCountedString(stream, attachment.storedFile);
    WriteCountedString(stream, attachment.sourceFile);
    WriteFixedInt(stream, attachment.type);
    WriteStoredBool(stream, attachment.show);
}

void ReadPaths(RecordReader* stream, double version, HeadParts parts, CNote& note) {
    if (version > kCategoryRecordGate && parts == HeadParts::Place) {
        for (int i = 0; i < kSetCount; ++i)
            SkipCategoryRecord(stream);
        return;
    }
    if (version > kCategoryRecordGate) {
        for (CProCategoryTree& path : note.categories)
            ReadCategoryRecord(stream, path);
        return;
    }
    note.categories[0] = ReadOldPathAsChain(stream);
    if (version > kThreePathsGate) {
        note.categories[1] = ReadOldPathAsChain(stream);
        note.categories[2] = ReadOldPathAsChain(stream);
    }
}

/// Lists are emptied without the work of giving up their room.
void Reset(HeadParts parts, CNote& note) {
    if (parts == HeadParts::All) {
        note = CNote{};
        return;
    }
    note.sources.RemoveAll();
    note.sourceInfo.clear();
    note.attachments.clear();
}

}  // namespace

void ReadNoteHead(RecordReader* stream, double version, const ReadContext& context, CNote& note, NoteTexts& texts,
                  HeadParts parts) {
    Reset(parts, note);
    note.dateCreated = note.dateEdited = context.now;
    note.id = ReadFixedInt(stream);
    ReadSourceIds(stream, version, note.sources);
    ReadSourceInfo(stream, version, note.sourceInfo);
    ReadDateField(stream, note.dateCreated);
    ReadDateField(stream, note.dateEdited);
    if (version > kGuidGate)
        ReadCountedString(stream, note.guid);
    ReadCountedString(stream, note.keyWords);
    ReadCountedString(stream, note.reserved);
    if (version > kSpellCheckGate)
        note.spellCheck = ReadStoredBool(stream);
    if (version > kColorGate)
        note.borderColor = ReadColor(stream);
    if (version > kAttachmentsGate)
        ReadCounted(stream, [&] { ReadAttachment(stream, version, note.attachments.emplace_back()); });
    texts.plainText = ReadCountedView(stream);
    texts.rtfText = ReadCountedView(stream);
    ReadPaths(stream, version, parts, note);
    if (parts == HeadParts::All && note.guid.empty())
        note.guid = context.guids->NewGuid();
}

void ReadNote(RecordReader* stream, double version, const ReadContext& context, CNote& note) {
    NoteTexts texts;
    ReadNoteHead(stream, version, context, note, texts);
    note.plainText = texts.plainText;
    note.rtfText = texts.rtfText;
}

void WriteNote(RecordWriter* stream, const CNote& note) {
    WriteFixedInt(stream, note.id);
    LongList sources;
    sources.Merge(note.sources);
    WriteLongList(stream, sources);
    WriteFixedInt(stream, static_cast<int32_t>(note.sourceInfo.size()));
    for (const CNoteSourceInfo& entry : note.sourceInfo) {
        WriteCountedString(stream, entry.key);
        WriteCountedString(stream, entry.text);
    }
    WriteDateField(stream, note.dateCreated);
    WriteDateField(stream, note.dateEdited);
    for (const std::string* text : {&note.guid, &note.keyWords, &note.reserved})
        WriteCountedString(stream, *text);
    WriteStoredBool(stream, note.spellCheck);
    for (const unsigned part : {RedOf(note.borderColor), GreenOf(note.borderColor), BlueOf(note.borderColor)})
        WriteFixedInt(stream, static_cast<int32_t>(part));
    WriteFixedInt(stream, static_cast<int32_t>(note.attachments.size()));
    for (const CAttachment& attachment : note.attachments)
        WriteAttachment(stream, attachment);
    WriteCountedString(stream, note.plainText);
    WriteCountedString(stream, note.rtfText);
    for (const CProCategoryTree& path : note.categories)
        WriteCategoryRecord(stream, path);
}

std::string GetNoteFileName(const CNote& note) {
    if (note.sources.IsEmpty())
        return "DAY" + note.dateCreated.Format("%m%d%Y") + ".dat";
    char name[32];
    std::snprintf(name, sizeof name, "SRC%.10d.dat", note.sources[0]);
    return name;
}

}  // namespace lore
