#include "notes/notebook_lists.h"

#include <functional>

#include "bibliography/source_builder.h"
#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

/// A NoteBook with authors, types, sources and categories, loaded.
class NoteBookListsTest : public NoteBookTest {
protected:
    NoteBookListsTest() {
        AuthorList authors = ThreeAuthors();
        CustomTypeList types;
        types.AddType(FullSource(5).CustomTypeCopy);
        EXPECT_TRUE(authors.SaveAuthors(book.paths.Authors()).Ok() && types.SaveTypes(book.paths.SourceTypes()).Ok());
        PutSources(book.paths, {FullSource(5)}, authors);
        PutCategories(book.paths, {PathOf({{3, "Lights"}, {4, "Lenses"}})});
        Load();
        for (const List& list : lists)
            EXPECT_TRUE(list.write()) << "as each is written from here on";
        EXPECT_TRUE(faults.faults.empty());
    }
    void Load() {
        IdCounters counters;
        LoadNoteBook(book, counters, world.context, faults, {});
    }
    std::vector<std::string> Told() const { return Each(faults.faults, &Fault::what); }

    struct List {
        std::string name;
        std::filesystem::path file;
        std::function<bool()> write;
        std::function<bool()> isWhole;
    };
    const List lists[4] = {
        {"authors", disk.paths.Authors(), [this] { return WriteAuthors(book, faults); },
         [this] { return book.authors.ReadWhole(); }},
        {"source types", disk.paths.SourceTypes(), [this] { return WriteSourceTypes(book, faults); },
         [this] { return book.types.ReadWhole(); }},
        {"sources", disk.paths.Sources(), [this] { return WriteSources(book, faults); },
         [this] { return book.sources.ReadWhole(); }},
        {"categories", disk.paths.Categories(), [this] { return WriteCategories(book, book.categories, faults); },
         [this] { return book.categories.ReadWhole(); }}};
};

TEST_F(NoteBookListsTest, WhatADamagedListHoldsIsKeptOnceAndToldOnce) {
    for (const List& list : lists) {
        const std::string whole = BytesOf(list.file);
        const std::filesystem::path kept = list.file.string() + ".kept", second = list.file.string() + ".2.kept";
        for (const std::string& damaged : {whole + "junk", whole.substr(0, whole.size() - 5)}) {
            SCOPED_TRACE(list.name + (damaged.size() > whole.size() ? " with more" : " cut"));
            PutBytes(list.file, damaged);
            Load();
            EXPECT_FALSE(list.isWhole());
            EXPECT_EQ(BytesOf(list.file), damaged);
            EXPECT_THAT(faults.faults, IsEmpty()) << "reading changes nothing";
            EXPECT_TRUE(list.write() && list.write());
            EXPECT_EQ(BytesOf(kept), damaged);
            EXPECT_FALSE(std::filesystem::exists(second));
            EXPECT_THAT(Told(), ElementsAre("The list of " + list.name + " is damaged; what it held is kept in " +
                                            kept.filename().string()));
            EXPECT_EQ(faults.faults[0].path, list.file);
            Load();
            EXPECT_TRUE(list.isWhole());
            EXPECT_TRUE(list.write());
            EXPECT_FALSE(std::filesystem::exists(second));
            EXPECT_EQ(faults.faults.size(), 1u);
            faults.faults.clear();
            std::filesystem::remove(kept);
        }
        PutBytes(list.file, whole);
    }
}

TEST_F(NoteBookListsTest, OfADamagedListThatHasGoneNothingIsKept) {
    for (const List& list : lists) {
        SCOPED_TRACE(list.name);
        const std::string whole = BytesOf(list.file);
        PutBytes(list.file, whole + "junk");
        Load();
        std::filesystem::remove(list.file);
        EXPECT_TRUE(list.write());
        EXPECT_EQ(BytesOf(list.file), whole);
        EXPECT_FALSE(std::filesystem::exists(list.file.string() + ".kept"));
        EXPECT_THAT(Told(), IsEmpty());
    }
}

}  // namespace
}  // namespace lore
