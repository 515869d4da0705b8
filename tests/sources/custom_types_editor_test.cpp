#include "sources/custom_types_editor.h"

#include "sources/sources_fixture.h"

namespace lore {
namespace {

class CustomTypesEditorTest : public SourcesFixture {
protected:
    CustomTypesEditorTest() {
        book.types.AddType(Type("{T-A}", "Letter", {"Box", "Folder"}));
        CSource source = Source(1013, "A letter", 1101);
        source.CustomTypeCopy = Type("{T-A}", "Letter", {"Box", "Folder"});
        source.CustomTypeCopy.fields[1].value = "17";
        source.CustomTypeCopy.fields[2].value = "4";
        book.sources.AddTail(source);
        CSource orphan = source;
        orphan.SourceID = 1014;
        orphan.CustomTypeCopy.GUID = "{GONE}";
        book.sources.AddTail(orphan);
        EXPECT_TRUE(book.sources.SaveSources(book.paths.Sources(), book.authors).Ok());
    }
    const DateTime old = DateTime(2001, 1, 1);
};

TEST_F(CustomTypesEditorTest, SavedTypesAreSortedIdentifiedAndReachTheirSources) {
    Link();
    const CNote tied = NoteOf(5, 1013), other = NoteOf(6, 1014);
    CustomTypesEditor editor(store);
    editor.NewType();
    EXPECT_EQ(editor.Type()->name, "Untitled");
    EXPECT_EQ(editor.Type()->fields.size(), 4u);
    editor.SetTypeName("  beta ");
    editor.NewType();
    editor.SetTypeName("Alpha");
    editor.SelectType(0);
    editor.SelectField(1);
    editor.SetFieldName("Carton");
    editor.SetFlag(&CCustomSourceField::italics, true);
    editor.SetEnd(CCustomSourceField::Colon);
    editor.AddField();
    EXPECT_TRUE(editor.HasChanges());
    clock.now = DateTime(2030, 1, 2, 3, 4, 5);
    ASSERT_TRUE(editor.Save());
    const OpenNoteBook fresh = Reloaded();
    EXPECT_THAT(Each(fresh.types, &CCustomSourceType::name), ElementsAre("Alpha", "beta", "Letter"));
    EXPECT_FALSE(fresh.types[0].GUID.empty());
    const CCustomSourceType& copy = fresh.sources.FindSourceByID(1013)->CustomTypeCopy;
    ASSERT_EQ(copy.fields.size(), 4u);
    EXPECT_EQ(copy.fields[1].name, "Carton");
    EXPECT_EQ(copy.fields[1].value, "17") << "by its count";
    EXPECT_EQ(copy.fields[1].end, CCustomSourceField::Colon);
    EXPECT_TRUE(copy.fields[1].italics);
    EXPECT_EQ(copy.fields[2].value, "4") << "by its name";
    EXPECT_EQ(fresh.sources.FindSourceByID(1014)->CustomTypeCopy.fields.size(), 3u);
    EXPECT_TRUE(IsStamped(tied));
    EXPECT_FALSE(IsStamped(other));
}

TEST_F(CustomTypesEditorTest, DeletedTypesLeaveTheCopiesOfSources) {
    CustomTypesEditor editor(store);
    editor.DeleteType();
    editor.DeleteType();
    EXPECT_EQ(editor.Type(), nullptr);
    editor.AddField();
    editor.SetTypeName("nobody");
    EXPECT_TRUE(prompts.seen.empty());
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(Reloaded().types.Count(), 0u);
    EXPECT_EQ(Reloaded().sources.FindSourceByID(1013)->CustomTypeCopy.fields[1].value, "17");
}

TEST_F(CustomTypesEditorTest, PlaceholdersKeepTheirNamesAndOnlySomeChangesStampTheDate) {
    book.types.RemoveAll();
    CCustomSourceType type = Type("{T-A}", "Letter", {"Box", "Folder"});
    type.date = old;
    book.types.AddType(type);
    CustomTypesEditor editor(store);
    editor.SelectField(0);
    EXPECT_FALSE(editor.CanNameField());
    editor.SetFieldName("Mine");
    EXPECT_EQ(editor.Field()->name, "[TITLE Placeholder]");
    editor.SelectField(1);
    editor.SetFieldName("Carton");
    editor.SetEnd(2);
    editor.SetEnd(9);
    editor.AddField();
    EXPECT_EQ(editor.Type()->date, old);
    EXPECT_EQ(editor.SelectedField(), 3u);
    const std::vector<std::function<void()>> stamping = {
        [&] { editor.SetTypeName("Note"); }, [&] { editor.SetFlag(&CCustomSourceField::bold, true); },
        [&] { editor.MoveField(3, 0); }, [&] { editor.DeleteField(); }};
    for (size_t i = 0; i < stamping.size(); ++i) {
        clock.now = DateTime(2030, 1, 1, static_cast<int>(i) + 1);
        stamping[i]();
        EXPECT_EQ(editor.Type()->date, clock.now) << i;
    }
    EXPECT_THAT(Each(editor.Type()->fields, &CCustomSourceField::name),
                ElementsAre("[TITLE Placeholder]", "Carton", "Folder"));
    EXPECT_EQ(editor.Type()->fields[1].end, 2);
}

TEST_F(CustomTypesEditorTest, TypesThatCannotBeWrittenStayAsTheyWere) {
    CustomTypesEditor editor(store);
    editor.SelectField(1);
    editor.SetFieldName("Carton");
    Block(book.paths.SourceTypes());
    EXPECT_FALSE(editor.Save());
    EXPECT_EQ(book.types[0].fields[1].name, "Box");
    EXPECT_EQ(book.sources.FindSourceByID(1013)->CustomTypeCopy.fields[1].name, "Box");
    Unblock(book.paths.SourceTypes());
    EXPECT_TRUE(editor.Save());
}

}  // namespace
}  // namespace lore
