#include "app/findable_things.h"

#include "base/text.h"
#include "bibliography/source_groups.h"
#include "bibliography/source_types.h"
#include "notebooks/notebook_manager.h"
#include "notes/note_finder.h"

namespace lore {

namespace {

constexpr size_t kLongestTitle = 120;  // characters
constexpr char kBetweenLevels[] = " \xE2\x80\xBA ";

void AddNoteBooks(const CLorebinderApp& app, CommandFinder& finder) {
    int32_t position = 0;
    for (const CDatabase& choice : app.NoteBookChoices()) {
        if (!IsSameNoteBook(choice, app.NoteBook().database))
            finder.Add(
                {FoundKind::NoteBook, choice.IsMain() ? kMainNoteBookName : ToUtf8(choice.name), "NoteBook", position});
        ++position;
    }
}

void AddCategories(const CProCategoryTree& node, const std::string& above, CommandFinder& finder) {
    const std::string name = ToUtf8(node.name);
    finder.Add({FoundKind::Category, name, above.empty() ? "Category" : above, node.id});
    const std::string path = above.empty() ? name : above + kBetweenLevels + name;
    for (const CProCategoryTree& child : node.children)
        AddCategories(child, path, finder);
}

/// The first line of a text that has one.
std::string_view TitleOf(std::string_view plainText) {
    const std::string_view text = TrimLeft(plainText);
    const std::string_view line = TrimRight(text.substr(0, text.find_first_of("\r\n")));
    return line.substr(0, ByteOfCharacter(line, kLongestTitle));
}

void AddNotes(const CLorebinderApp& app, CommandFinder& finder) {
    for (const ListedNote& entry : app.List().Notes())
        if (std::string title = ToUtf8(TitleOf(entry.note->plainText)); !title.empty())
            finder.Add({FoundKind::Note, std::move(title), "Note in the list", entry.Id()});
    for (const int32_t id : app.NoteBook().index.AllIDs()) {
        const auto text = app.List().Contains(id) ? std::nullopt : app.Texts().TextOf(id);
        if (const std::string_view title = TitleOf(text.value_or(std::string_view())); !title.empty())
            finder.Add({FoundKind::OtherNote, std::string(title), "Note", id});
    }
}

void AddSources(const SourceList& sources, CommandFinder& finder) {
    for (size_t i = 0; i < sources.Count(); ++i) {
        const CSource& source = sources[i];
        std::string text = ToUtf8(GroupKey(source, SourceGrouping::Title));
        const std::string authors = ToUtf8(Trim(source.AuthorText));
        if (!authors.empty())
            text += text.empty() ? authors : ", " + authors;
        finder.Add({FoundKind::Source, std::move(text), ToUtf8(SourceTypeName(source)), source.SourceID});
    }
}

}  // namespace

void AddFindableThings(const CLorebinderApp& app, CommandFinder& finder) {
    const OpenNoteBook& book = app.NoteBook();
    AddNoteBooks(app, finder);
    for (const CProCategoryTree& root : book.categories.Roots())
        AddCategories(root, {}, finder);
    AddSources(book.sources, finder);
    int32_t position = 0;
    for (const CKeyWord& keyWord : book.keyWords.Entries())
        finder.Add({FoundKind::KeyWord, ToUtf8(keyWord.name), "Key word", position++});
    AddNotes(app, finder);
}

std::string WrittenText(const CLorebinderApp& app, const FindableItem& item) {
    if (item.kind != FoundKind::OtherNote)
        return item.text;
    KeptForLater silent;  // the folded text does as well
    const std::optional<CNote> note = FindNote(app.NoteBook().index, item.id, app.Context(), silent);
    return note ? ToUtf8(TitleOf(note->plainText)) : item.text;
}

LongList NotesOfThing(const CLorebinderApp& app, const FindableItem& item) {
    const OpenNoteBook& book = app.NoteBook();
    if (item.kind == FoundKind::Category) {
        const CProCategoryTree* const node = book.categories.FindByID(item.id);
        return node ? node->GetNotes(kAllSets) : LongList();
    }
    if (item.kind == FoundKind::OtherNote)
        return LongList{item.id};
    if (item.kind == FoundKind::Source) {
        const CSource* const source = book.sources.FindSourceByID(item.id);
        return source ? source->NoteIDs : LongList();
    }
    const CKeyWord* const keyWord = item.kind == FoundKind::KeyWord && item.id >= 0
                                        ? book.keyWords.FindKeyWord(static_cast<size_t>(item.id))
                                        : nullptr;
    return keyWord ? keyWord->notes : LongList();
}

}  // namespace lore
