#include "bench/notebook_generator.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <utility>

#include "base/record_file.h"
#include "bibliography/author_list.h"
#include "bibliography/source_list.h"
#include "bibliography/source_types.h"
#include "notes/note_file.h"
#include "notes/notebook_list.h"
#include "notes/notebook_paths.h"
#include "rtf/document_builder.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr int32_t kFirstSourceID = 1011;
constexpr uint32_t kRoots = 6, kChildren = 8, kGrandchildren = 5;
constexpr uint32_t kKeyWords = 300;
constexpr Rgb kBorderColors[] = {MakeRgb(200, 60, 40), MakeRgb(40, 120, 200), MakeRgb(60, 160, 80)};

std::string GuidFor(uint32_t kind, int32_t number) {
    char guid[40];
    std::snprintf(guid, sizeof guid, "{%08X-0000-4000-a000-%012X}", kind, static_cast<unsigned>(number));
    return guid;
}

/// Notes of one file follow each other; every other file is that of a source.
int32_t FileOf(int32_t noteNumber) {
    return noteNumber / kNotesPerFile;
}

DateTime CreationOf(int32_t noteNumber) {
    return DateTime(1950, 1, 1, 8).PlusDays(FileOf(noteNumber) / 2).PlusSeconds(noteNumber % kNotesPerFile * 1800);
}

std::string Joined(const std::vector<std::string>& paragraphs) {
    std::string text;
    for (const std::string& paragraph : paragraphs)
        text += (text.empty() ? "" : "\r\n") + paragraph;
    return text;
}

/// The first paragraph is bold.
std::string RichText(const std::vector<std::string>& paragraphs) {
    DocumentBuilder builder;
    CharFormat format;
    format.halfPoints = 20;
    format.font = builder.Font("Arial");
    format.bold = true;
    for (const std::string& paragraph : paragraphs) {
        builder.AddText(paragraph, format);
        builder.EndParagraph({});
        format.bold = false;
    }
    return WriteRtf(builder.Finish({}, true));
}

AuthorList MakeAuthors(WordMaker& words, int32_t count) {
    AuthorList authors;
    for (int32_t id = 1; id <= count; ++id) {
        CAuthor author;
        author.AuthorID = id;
        author.first = words.Name();
        author.last = words.Name();
        authors.AddAuthor(author);
    }
    return authors;
}

SourceList MakeSources(WordMaker& words, int32_t count, int32_t authorCount) {
    SourceList sources;
    for (int32_t number = 0; number < count; ++number) {
        CSource source;
        source.SourceID = kFirstSourceID + number;
        source.SourceGUID = GuidFor(2, number);
        source.SourceType = 1 + number % kTypeCount;
        source.FormatStyle = number % kStyleCount;
        for (uint32_t more = 1 + words.Number(4); more > 0; --more)
            source.AuthorIDs.AddUnique(static_cast<int32_t>(1 + words.Number(static_cast<uint32_t>(authorCount))));
        source.FieldTexts[0] = words.Title(5 + words.Number(7));
        for (size_t slot = 1; slot <= 8; ++slot)
            source.FieldTexts[slot] = slot == kDateSlot ? "" : words.Name();
        source.HasDate = true;
        source.SourceDate = DateTime(1950 + number % 75, 1 + number % 12, 1 + number % 28);
        sources.AddTail(std::move(source));
    }
    return sources;
}

/// Notes can be made again, so their files aren't flushed to the disk one by one.
FileResult WriteUnflushed(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file ? FileResult{} : FileResult{EIO};
}

/// Keeps the first failure.
void KeepFailure(FileResult& all, const FileResult& one) {
    if (all.Ok())
        all = one;
}

}  // namespace

NoteMaker::NoteMaker(uint32_t seed) : words_(seed) {
    MakeCategories();
    for (uint32_t i = 0; i < kKeyWords; ++i)
        keyWords_.push_back(words_.Name());
}

void NoteMaker::MakeCategories() {
    int32_t id = 0;
    for (uint32_t root = 0; root < kRoots; ++root) {
        CProCategoryTree tree(++id, words_.Name());
        for (uint32_t child = 0; child < kChildren; ++child) {
            CProCategoryTree& branch = tree.AddChild(CProCategoryTree(++id, words_.Name()));
            for (uint32_t leaf = 0; leaf < kGrandchildren; ++leaf)
                branch.AddChild(CProCategoryTree(++id, words_.Name()));
        }
        categories_.AddRoot(tree);
    }
}

/// A root alone, with a child or with a grandchild.
CProCategoryTree NoteMaker::Path() {
    const CProCategoryTree& root = categories_.Roots()[words_.Number(kRoots)];
    const CProCategoryTree& child = root.children[words_.Number(kChildren)];
    const CProCategoryTree& leaf = child.children[words_.Number(kGrandchildren)];
    const uint32_t depth = words_.Number(3);
    CProCategoryTree path(root.id, root.name);
    if (depth > 0) {
        CProCategoryTree& second = path.AddChild(CProCategoryTree(child.id, child.name));
        if (depth > 1)
            second.AddChild(CProCategoryTree(leaf.id, leaf.name));
    }
    path.LinkChildren();
    return path;
}

std::vector<std::string> NoteMaker::Paragraphs() {
    const size_t wanted = 1000 + words_.Number(4000);
    std::vector<std::string> paragraphs = {words_.Title(4), ""};
    for (size_t got = 0; got < wanted;) {
        const std::string& word = words_.Word();
        got += word.size() + 1;
        std::string& last = paragraphs.back();
        last += (last.empty() ? "" : " ") + word;
        if (words_.Number(80) == 0)
            paragraphs.emplace_back();
    }
    if (paragraphs.back().empty())
        paragraphs.pop_back();
    for (size_t i = 1; i < paragraphs.size(); ++i)
        paragraphs[i] += '.';
    return paragraphs;
}

void NoteMaker::AddText(CNote& note) {
    std::vector<std::string> paragraphs = Paragraphs();
    if (made_ % 1000 == 417)
        paragraphs[paragraphs.size() / 2] += " Heliotrope NEEDLE.";
    note.plainText = Joined(paragraphs);
    note.rtfText = RichText(paragraphs);
}

CNote NoteMaker::Next() {
    CNote note;
    note.id = made_ + 1;
    note.guid = GuidFor(1, made_);
    note.dateCreated = CreationOf(made_);
    note.dateEdited = note.dateCreated.PlusDays(words_.Number(400));
    if (FileOf(made_) % 2 == 0)
        note.sources.AddTail(kFirstSourceID + FileOf(made_) / 2);
    for (uint32_t more = words_.Number(4); more > 0; --more)
        note.keyWords += (note.keyWords.empty() ? "" : ", ") + keyWords_[words_.Number(kKeyWords)];
    if (words_.Number(4) == 0)
        note.borderColor = kBorderColors[words_.Number(std::size(kBorderColors))];
    for (size_t set = 0; set <= words_.Number(kSetCount); ++set)
        note.categories[set] = Path();
    AddText(note);
    ++made_;
    return note;
}

GeneratedBook GenerateNoteBook(const std::filesystem::path& dataFolder, const GeneratorOptions& options) {
    const NoteBookPaths paths(DataPaths{dataFolder}, kMainNoteBookFolder);
    CreateNoteBookFolders(paths);
    GeneratedBook book;
    book.notes = paths.Notes();
    NoteMaker maker(options.seed);
    std::vector<CNote> notes;
    for (int32_t number = 0; number < options.count; ++number) {
        notes.push_back(maker.Next());
        book.textBytes += notes.back().plainText.size();
        if (notes.size() < kNotesPerFile && number + 1 < options.count)
            continue;
        KeepFailure(book.written, WriteUnflushed(paths.NoteFile(GetNoteFileName(notes.front())), NoteFileBytes(notes)));
        notes.clear();
    }
    WordMaker words(options.seed + 1);
    const int32_t sourceCount = FileOf(options.count - 1) / 2 + 1;
    const int32_t authorCount = sourceCount / 4 + 1;
    const AuthorList authors = MakeAuthors(words, authorCount);
    KeepFailure(book.written, authors.SaveAuthors(paths.Authors()));
    KeepFailure(book.written, MakeSources(words, sourceCount, authorCount).SaveSources(paths.Sources(), authors));
    KeepFailure(book.written, maker.Categories().Save(paths.Categories()));
    LongList listed;
    for (int32_t id = 1; id <= std::min(options.listed, options.count); ++id)
        listed.AddTail(id);
    KeepFailure(book.written, SaveLongListFile(listed, paths.LastViewList()));
    return book;
}

bool WriteTexts(const std::filesystem::path& folder, const GeneratorOptions& options) {
    NoteMaker maker(options.seed);
    bool ok = true;
    for (int32_t i = 0; i < options.count; ++i) {
        const std::filesystem::path part = folder / std::to_string(i % 100);
        std::filesystem::create_directories(part);
        ok = (std::ofstream(part / (std::to_string(i) + ".txt"), std::ios::binary) << maker.Next().plainText) && ok;
    }
    return ok;
}

}  // namespace lore
