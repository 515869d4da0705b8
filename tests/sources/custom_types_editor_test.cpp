#include "sources/custom_types_editor.h"

#include "sources/source_editor.h"
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

/// A type with the fields A, B and C, a source with the values a, b and c, and what a user does to the fields.
class FieldValuesTest : public SourcesFixture {
protected:
    using Texts = std::vector<std::string>;

    void SetUp() override {
        CSource source = Source(1013, "A letter", 1101);
        source.CustomTypeCopy = Type("{T}", "Letter", {"A", "B", "C"});
        book.types.RemoveAll();
        book.types.AddType(source.CustomTypeCopy);
        for (size_t i = 1; i <= 3; ++i)
            source.CustomTypeCopy.fields[i].value = "abc"[i - 1];
        book.sources.RemoveAll();
        book.sources.AddTail(source);
        ASSERT_TRUE(book.sources.SaveSources(book.paths.Sources(), book.authors).Ok());
    }
    /// "1X" names the second field X, "1>3" moves it to the fourth place, "1-" deletes it, "+" adds one.
    bool Edit(const Texts& steps) {
        CustomTypesEditor editor(store);
        for (const std::string& step : steps) {
            const auto field = static_cast<size_t>(step[0] - '0');
            editor.SelectField(field);
            if (step == "+")
                editor.AddField();
            else if (step[1] == '>')
                editor.MoveField(field, static_cast<size_t>(step[2] - '0'));
            else if (step[1] == '-')
                editor.DeleteField();
            else
                editor.SetFieldName(step.substr(1));
        }
        return editor.Save();
    }
    /// Without the title.
    static std::string Fields(const SourceList& sources) {
        std::string fields;
        for (const CCustomSourceField& field : sources.FindSourceByID(1013)->CustomTypeCopy.fields)
            fields += field.kind == CCustomSourceField::User ? field.name + "=" + field.value + " " : "";
        return fields;
    }
};

TEST_F(FieldValuesTest, StayWithTheirFields) {
    const std::pair<Texts, std::string> cases[] = {
        // In one step.
        {{"1X"}, "X=a B=b C=c "},
        {{"1>3"}, "B=b C=c A=a "},
        {{"1-"}, "B=b C=c "},
        {{"1-", "+"}, "B=b C=c Your Field=c "},
        {{"1B", "2A", "3>0"}, "C=c B=b A=a "},
        // In several.
        {{"1X", "1>3"}, "B=b C=c X=a "},
        {{"3>0", "0X"}, "X=c A=a B=b "},
        {{"1X", "2Y", "3Z", "1>3", "1>2"}, "Z=c Y=b X=a "},
        {{"1-", "1X"}, "X=b C=c "},
        {{"1-", "1A"}, "A=b C=c "},
        {{"1X", "1>3", "2-"}, "B=b X=a "},
        {{"2X", "2>3", "+", "4>1", "1New"}, "New=a A=a C=c X=b "},
        {{"1-", "2X", "2>1", "+"}, "X=c B=b Your Field= "},
    };
    for (const auto& [steps, wanted] : cases) {
        SetUp();
        ASSERT_TRUE(Edit(steps));
        EXPECT_EQ(Fields(book.sources), wanted);
        EXPECT_EQ(Fields(Reloaded().sources), wanted);
    }
}

TEST_F(FieldValuesTest, StayWhereTheyWereIfTheSourcesCannotBeWritten) {
    Block(book.paths.Sources());
    EXPECT_FALSE(Edit({"1X", "1>3"}));
    Unblock(book.paths.Sources());
    EXPECT_EQ(book.types[0].fields[1].name, "A");
    EXPECT_EQ(Fields(book.sources), "A=a B=b C=c ");
    ASSERT_TRUE(Edit({"1X", "1>3"}));
    EXPECT_EQ(Fields(Reloaded().sources), "B=b C=c X=a ");
}

TEST_F(FieldValuesTest, AreWhereTheyWereAfterAReloadIfTheSourcesCouldNotBeWritten) {
    const std::filesystem::path sources = book.paths.Sources(), aside = sources.string() + ".aside";
    std::filesystem::rename(sources, aside);
    Block(sources);
    EXPECT_FALSE(Edit({"0-", "0X", "0>2"}));
    Unblock(sources);
    std::filesystem::rename(aside, sources);
    EXPECT_EQ(Fields(Reloaded().sources), "A=a B=b C=c ");
}

TEST_F(FieldValuesTest, AreThoseOfTheSourceThatIsBeingEditedToo) {
    SourceEditor editor = SourceEditor::ForSource(store, *book.sources.FindSourceByID(1013));
    editor.SetGridValue(0, "typed");
    ASSERT_TRUE(Edit({"1X", "1>3"}));
    editor.TypesReplaced();
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(Fields(Reloaded().sources), "B=b C=c X=typed ");
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
