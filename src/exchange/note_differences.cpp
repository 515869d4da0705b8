#include "exchange/note_differences.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>

#include "base/text.h"
#include "base/text_join.h"
#include "bibliography/author_name.h"
#include "bibliography/citation_field.h"
#include "bibliography/source_info.h"
#include "bibliography/source_types.h"
#include "classify/search_color_list.h"
#include "notes/attachment_kind.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// The background of a line that differs.
constexpr TextColor kDifferenceMark = kSearchMark;

constexpr size_t kTitleSlot = 0, kPublicationSlot = 1;
constexpr char kDayFormat[] = "%m/%d/%Y";

template <typename... Values>
std::string Formatted(const char* format, Values... values) {
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string HeadLine(const CNote& imported, const CNote& database) {
    if (!imported.dateEdited.IsValid() || !database.dateEdited.IsValid())
        return {};
    const long long span = imported.dateEdited.Seconds() - database.dateEdited.Seconds();
    if (span == 0)
        return {};
    const long long minutes = std::llabs(span) / 60;
    return Formatted(
        "The import note is %d days, %d hours, and %d minutes %s than the same note currently in the database.",
        static_cast<int>(minutes / 60 / 24), static_cast<int>(minutes / 60 % 24), static_cast<int>(minutes % 60),
        span < 0 ? "OLDER" : "NEWER");
}

std::string ColorText(Rgb color) {
    return Formatted("R: %d, G: %d, B: %d", static_cast<int>(RedOf(color)), static_cast<int>(GreenOf(color)),
                     static_cast<int>(BlueOf(color)));
}

bool IsSameLink(const CAttachment& a, const CAttachment& b) {
    return a.type != kWebLink || b.type != kWebLink || a.sourceFile == b.sourceFile;
}

/// Numbers of stored files are those of one NoteBook, so that they tell nothing of another one.
bool SameAttachments(const std::vector<CAttachment>& a, const std::vector<CAttachment>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const CAttachment& x, const CAttachment& y) {
        return x.type == y.type && x.title == y.title && x.show == y.show && IsSameLink(x, y);
    });
}

/// The attachments of a note, with what sets them apart from those of the same titles that the other note has.
class AttachmentTexts {
public:
    explicit AttachmentTexts(const std::vector<CAttachment>& others) : others_(others) {
        for (const CAttachment& other : others)
            byTitle_.emplace(other.title, &other);
    }

    std::string TextOf(const std::vector<CAttachment>& attachments) const {
        std::string text;
        for (size_t i = 0; i < attachments.size(); ++i)
            text += (i == 0 ? "" : "; ") + WideTextOf(attachments[i], i);
        return FromUtf8(text);
    }

private:
    /// In UTF-8, since a title and an address needn't be of one form.
    std::string WideTextOf(const CAttachment& attachment, size_t position) const {
        const bool isNameless = attachment.title.empty() && attachment.type == kWebLink;
        std::string text = ToUtf8(isNameless ? attachment.sourceFile : attachment.title);
        const CAttachment* const other = Namesake(attachment, position);
        if (!other)
            return text;
        if (attachment.type != other->type)
            text += " (" + std::string(AttachmentKindName(attachment.type)) + ")";
        if (!isNameless && !IsSameLink(attachment, *other))
            text += " (" + ToUtf8(attachment.sourceFile) + ")";
        if (attachment.show != other->show)
            text += attachment.show ? " (on the board)" : " (not on the board)";
        return text;
    }

    /// The one at the same place if it has the same title, otherwise the first that has.
    const CAttachment* Namesake(const CAttachment& attachment, size_t position) const {
        if (position < others_.size() && others_[position].title == attachment.title)
            return &others_[position];
        const auto found = byTitle_.find(attachment.title);
        return found == byTitle_.end() ? nullptr : found->second;
    }

    const std::vector<CAttachment>& others_;
    std::unordered_map<std::string_view, const CAttachment*> byTitle_;
};

std::vector<std::string> NamesOf(const CProCategoryTree& path) {
    std::vector<std::string> names;
    for (const CProCategoryTree* node = path.IsEmptyPath() ? nullptr : &path; node;
         node = node->children.empty() ? nullptr : &node->children.front())
        names.push_back(node->name);
    return names;
}

/// What a source shows, in the order of the rows.
std::vector<std::string> CaptionsOf(const CSource* source, const CNote& note) {
    if (!source)
        return std::vector<std::string>(6);
    std::string authors;
    for (const CAuthor& author : source->EmbeddedAuthors)
        authors = JoinTexts(authors, (authors.empty() ? "" : ", ") + FormatAuthorBrief(author));
    const std::string_view title = FieldText(*source, kTitleSlot);
    const CNoteSourceInfo* const info = FindSourceInfo(note.sourceInfo, source->SourceGUID);
    return {std::string(SourceTypeName(*source)),
            title.empty() ? "<UNTITLED>" : std::string(title),
            std::string(FieldText(*source, kPublicationSlot)),
            authors,
            SourceDateText(*source, kDayFormat),
            info ? info->text : std::string()};
}

constexpr const char* kCaptionNames[] = {"         Type:",      "         Title:", "         Publication:",
                                         "         Author(s):", "         Date:",  "        Note Info:"};

/// The sources of a note by their GUIDs; of equal ones the first.
class SourcesByGUID {
public:
    explicit SourcesByGUID(const ArchiveNote& entry) {
        for (const CSource& source : entry.sources)
            sources_.emplace(source.SourceGUID, &source);
    }
    const CSource* Find(std::string_view guid) const {
        const auto found = sources_.find(guid);
        return found == sources_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::string_view, const CSource*> sources_;
};

class RowMaker {
public:
    RowMaker(const ArchiveNote& imported, const ArchiveNote& database) : a_(imported), b_(database) {}

    std::vector<DifferenceRow> Run(std::string_view aText, std::string_view bText) {
        constexpr char kMoment[] = "%m/%d/%Y  -  %I:%M:%S %p";
        const CNote &a = a_.note, &b = b_.note;
        Add("Date Last Modified:", a.dateEdited.Format(kMoment), b.dateEdited.Format(kMoment));
        if (aText != bText)
            Add("Text Changed:", LengthText(aText), LengthText(bText));
        if (a.keyWords != b.keyWords)
            Add("Key Words Changed:", a.keyWords, b.keyWords);
        if (!IsSameColor(a.borderColor, b.borderColor))
            Add("Border Color Changed:", ColorText(a.borderColor), ColorText(b.borderColor));
        if (!SameAttachments(a.attachments, b.attachments))
            Add("Attached Files:", AttachmentTexts(b.attachments).TextOf(a.attachments),
                AttachmentTexts(a.attachments).TextOf(b.attachments));
        for (int set = 1; set <= kSetCount; ++set)
            AddPaths(set);
        AddSources();
        return std::move(rows_);
    }

private:
    static std::string LengthText(std::string_view text) {
        return Formatted("%d characters", static_cast<int>(CharacterCount(text)));
    }
    void Add(std::string name, std::string importText, std::string databaseText) {
        rows_.push_back({std::move(name), std::move(importText), std::move(databaseText)});
    }
    void AddPaths(int set) {
        const auto position = static_cast<size_t>(set - 1);
        std::vector<std::string> a = NamesOf(a_.note.categories[position]), b = NamesOf(b_.note.categories[position]);
        if (a == b)
            return;
        const size_t levels = std::max(a.size(), b.size());
        a.resize(levels);
        b.resize(levels);
        Add(Formatted("Category Set %d Changed:", set), {}, {});
        for (size_t level = 0; level < levels; ++level)
            Add(Formatted("         Level %d:", static_cast<int>(level + 1)), a[level], b[level]);
    }
    void AddSources() {
        const SourcesByGUID a(a_), b(b_);
        for (const CSource& source : a_.sources)
            AddSource(&source, b.Find(source.SourceGUID));
        for (const CSource& source : b_.sources) {
            if (!a.Find(source.SourceGUID))
                AddSource(nullptr, &source);
        }
    }
    void AddSource(const CSource* a, const CSource* b) {
        const std::vector<std::string> aTexts = CaptionsOf(a, a_.note), bTexts = CaptionsOf(b, b_.note);
        if (aTexts == bTexts)
            return;
        Add("Source", {}, {});
        for (size_t i = 0; i < std::size(kCaptionNames); ++i)
            Add(kCaptionNames[i], aTexts[i], bTexts[i]);
    }

    const ArchiveNote& a_;
    const ArchiveNote& b_;
    std::vector<DifferenceRow> rows_;
};

}  // namespace

ImportDifferences CompareForImport(const ArchiveNote& imported, const ArchiveNote& database) {
    ImportDifferences differences;
    const std::string a = PlainText(imported.note.rtfText), b = PlainText(database.note.rtfText);
    differences.head = HeadLine(imported.note, database.note);
    differences.rows = RowMaker(imported, database).Run(a, b);
    differences.text = CompareTexts(a, b);
    differences.importRtf = differences.text.lines.empty()
                                ? imported.note.rtfText
                                : MarkRtf(imported.note.rtfText, differences.text.lines, kDifferenceMark);
    differences.databaseRtf = database.note.rtfText;
    return differences;
}

}  // namespace lore
