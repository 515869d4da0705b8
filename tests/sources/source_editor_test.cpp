#include "sources/source_editor.h"

#include "sources/sources_fixture.h"

namespace lore {
namespace {

class SourceEditorTest : public SourcesFixture {
protected:
    SourceEditorTest() {
        book.authors.AddAuthor({1, "John", "Q", "Smith", "", ""});
        book.authors.AddAuthor({2, "mary", "", "jones", "", ""});
        book.authors.AddAuthor({3, "Carl", "", "West", "", ""});
        book.types.AddType(Type("{T-A}", "Letter", {"Box"}));
        book.types.AddType(Type("{T-B}", "Map", {"Scale", "Sheet"}));
        book.types.AssignNumbers();
        settings.Set(Option::MaxAuthorID, 7);
    }
    static std::vector<std::string> Names(const std::vector<AuthorLine>& lines) {
        return Each(lines, &AuthorLine::name);
    }
    static size_t IndexOf(const SourceEditor& editor, const std::string& name) {
        for (size_t i = 0; i < editor.Types().size(); ++i) {
            if (editor.Types()[i].name == name)
                return i;
        }
        ADD_FAILURE() << name;
        return 0;
    }
    const CSource& Stored1011() { return *book.sources.FindSourceByID(1011); }
    CSource Custom(int32_t number) {
        CSource source = Source(1013, "A letter", number);
        source.CustomTypeCopy = Type("{T-B}", "Map", {"Scale", "Sheet"});
        source.CustomTypeCopy.fields[1].value = "1:500";
        source.CustomTypeCopy.number = number;
        return source;
    }
};

TEST_F(SourceEditorTest, NewSourceTakesStyleIdAndGuidAndReachesTheListOnSave) {
    settings.Set(Option::SourceFormat, 9);
    SourceEditor editor = SourceEditor::ForNew(store);
    EXPECT_EQ(editor.Working().FormatStyle, 9);
    EXPECT_EQ(editor.Working().SourceID, 1013);
    editor.SetField(0, "  The Fog Bell \t");
    EXPECT_THAT(editor.Formatted().FormattedText, HasSubstr("The Fog Bell"));
    EXPECT_EQ(book.sources.Count(), 2u) << "nothing before the save";
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(Reloaded().sources.FindSourceByID(1013)->FieldTexts[0], "The Fog Bell");
    EXPECT_EQ(Reloaded().sources.FindSourceByID(1013)->ModifiedDate, clock.NowUtc());
    EXPECT_TRUE(changes.sources);
}

TEST_F(SourceEditorTest, TitleIsNeededAndBlanksAreNone) {
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.SetField(0, " \t ");
    EXPECT_FALSE(editor.Save());
    EXPECT_THAT(prompts.seen, ElementsAre("No Title: Source must have a title."));
    EXPECT_EQ(Stored1011().FieldTexts[0], "Title 1011");
}

TEST_F(SourceEditorTest, DoubledQuotesGoFromATitleThatIsTypedInMlaStyle) {
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.SetField(0, "On \"\"Lamps\"\"");
    EXPECT_EQ(editor.Field(0), "On \"\"Lamps\"\"");
    editor.ChangeStyle(8);
    EXPECT_EQ(editor.Field(0), "On \"\"Lamps\"\"") << "not before it is typed again";
    EXPECT_EQ(settings.Int(Option::SourceFormat), 8);
    editor.SetField(0, "On \"\"Lamps\"\"");
    editor.SetField(1, "\"\"Press\"\"");
    EXPECT_EQ(editor.Field(0), "On \"Lamps\"");
    EXPECT_EQ(editor.Field(1), "\"\"Press\"\"") << "the title alone";
}

TEST_F(SourceEditorTest, NumbersAreHeldToTheirLimits) {
    SourceEditor editor = SourceEditor::ForNew(store);
    EXPECT_EQ(editor.SetIndentSpaces(99), 10);
    EXPECT_EQ(editor.SetIndentSpaces(-1), 0);
    EXPECT_EQ(editor.SetAuthorsBeforeEtAl(0), 1);
    EXPECT_EQ(editor.SetAuthorsBeforeEtAl(16), 15);
    EXPECT_EQ(editor.Working().AuthorsBeforeEtAl, 15);

    CSource outside = Stored1011();
    outside.IndentSpaces = 25;
    outside.AuthorsBeforeEtAl = 0;
    book.sources.ReplaceSource(1011, outside);
    SourceEditor opened = SourceEditor::ForSource(store, Stored1011());
    EXPECT_FALSE(opened.HasChanges());
    ASSERT_TRUE(opened.Save());
    EXPECT_EQ(Stored1011().IndentSpaces, 10);
    EXPECT_EQ(Stored1011().AuthorsBeforeEtAl, 1);
}

TEST_F(SourceEditorTest, PlacesOfFieldsAndEmptiedSlotsFollowTheType) {
    using Slots = std::vector<size_t>;
    const std::tuple<int32_t, Slots, Slots> cases[] = {
        {1, {7, 8, 6, 3, 5, 4}, {}}, {2, {7, 5, 3, 4}, {6, 8}}, {3, {3, 4}, {5, 6, 7, 8}}, {4, {3, 7, 4}, {5, 6, 8}},
        {5, {7, 8, 6, 4}, {3, 5}},   {6, {7, 6, 4}, {3, 5, 8}}, {7, {7, 8, 6}, {3, 4, 5}}};
    for (const auto& [type, places, emptied] : cases) {
        const auto order = FieldOrder(type);
        EXPECT_EQ(Slots(order.begin(), order.end()), places) << type;
        SourceEditor editor = SourceEditor::ForNew(store);
        for (size_t slot = 0; slot < 9; ++slot)
            editor.SetField(slot, "text");
        editor.ChangeType(IndexOf(editor, std::string(StandardTypeName(type))));
        ASSERT_TRUE(editor.Save());
        const CSource& saved = book.sources[book.sources.Count() - 1];
        for (const size_t slot : {0, 1, 3, 4, 5, 6, 7, 8}) {
            const bool isEmptied = std::find(emptied.begin(), emptied.end(), slot) != emptied.end();
            EXPECT_EQ(saved.FieldTexts[slot], isEmptied ? "" : "text") << type << " slot " << slot;
        }
    }
}

TEST_F(SourceEditorTest, DateStates) {
    SourceEditor editor = SourceEditor::ForNew(store);
    EXPECT_FALSE(editor.CanUseYearOnly());
    editor.SetDate(DateTime(1998, 5, 7));
    EXPECT_FALSE(editor.CanUseYearOnly()) << "a book's stays as it is";
    editor.ChangeType(IndexOf(editor, "Online"));
    EXPECT_TRUE(editor.CanUseYearOnly());
    editor.ChangeType(IndexOf(editor, "Book"));
    EXPECT_TRUE(editor.CanUseYearOnly());
    editor.SetDate(std::nullopt);
    EXPECT_FALSE(editor.CanUseYearOnly());
    EXPECT_FALSE(editor.Working().HasDate);
    editor.SetUseDateText(true);
    editor.SetDateText(" Spring 1998 ");
    editor.SetUseDateText(false);
    EXPECT_EQ(editor.Working().DateText, "Spring 1998") << "stays for the next time";
}

TEST_F(SourceEditorTest, AnotherStandardTypeGivesANewIdentityThatTakesTheRemarksOfNotes) {
    Link();
    const CNote with = NoteOf(5, 1011, "p. 7"), without = NoteOf(6, 1011), other = NoteOf(7, 1012, "p. 9");
    clock.now = DateTime(2030, 1, 2, 3, 4, 5);
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.ChangeType(IndexOf(editor, "Online"));
    ASSERT_TRUE(editor.Save());
    const std::string guid = Stored1011().SourceGUID;
    EXPECT_NE(guid, "{Source-1011}");
    EXPECT_EQ(book.sources.FindSourceByGUID(guid), &Stored1011());
    const CNote moved = OnDisk(5);
    ASSERT_EQ(moved.sourceInfo.size(), 2u);
    EXPECT_EQ(moved.sourceInfo[0].key, guid);
    EXPECT_EQ(moved.sourceInfo[0].text, "p. 7");
    EXPECT_EQ(moved.sourceInfo[1].key, "{Other}");
    EXPECT_EQ(moved.dateEdited, clock.now);
    EXPECT_EQ(OnDisk(6).dateEdited, clock.now);
    EXPECT_EQ(OnDisk(7).dateEdited, other.dateEdited);
    EXPECT_TRUE(IsStamped(with) && IsStamped(without));
    EXPECT_FALSE(IsStamped(other));
    EXPECT_THAT(changes.rewritten.Values(), ElementsAre(5, 6));
    EXPECT_THAT(Stored1011().NoteIDs.Values(), ElementsAre(5, 6)) << "notes stay tied";
    EXPECT_EQ(Reloaded().sources.FindSourceByID(1011)->SourceGUID, guid);
}

TEST_F(SourceEditorTest, SameTypeStampsButLeavesTheDatesOfNotes) {
    Link();
    const CNote note = NoteOf(5, 1011, "p. 7");
    clock.now = DateTime(2030, 1, 2, 3, 4, 5);
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.Formatted();
    EXPECT_FALSE(editor.HasChanges());
    editor.SetField(0, "Another");
    EXPECT_TRUE(editor.HasChanges());
    ASSERT_TRUE(editor.Save());
    EXPECT_TRUE(IsStamped(note));
    EXPECT_EQ(OnDisk(5).dateEdited, note.dateEdited);
    EXPECT_EQ(Stored1011().SourceGUID, "{Source-1011}");
    EXPECT_THAT(changes.cited.Values(), ElementsAre(5));
    EXPECT_TRUE(changes.rewritten.IsEmpty());
}

TEST_F(SourceEditorTest, CustomTypeOfAnExistingSourceKeepsTheIdentity) {
    const CNote note = NoteOf(5, 1011, "p. 7");
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.ChangeType(IndexOf(editor, "CST: Map"));
    ASSERT_EQ(editor.GridRows(), 2u);
    editor.SetGridValue(1, " Sheet 4 ");
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(Stored1011().SourceType, 1102);
    EXPECT_EQ(Stored1011().SourceGUID, "{Source-1011}");
    EXPECT_EQ(Stored1011().CustomTypeCopy.fields[2].value, "Sheet 4");
    EXPECT_EQ(OnDisk(5).dateEdited, note.dateEdited);
}

TEST_F(SourceEditorTest, TypeIsFoundByItsGuidWhateverItsStoredNumber) {
    book.sources.AddTail(Custom(1101));
    SourceEditor editor = SourceEditor::ForSource(store, *book.sources.FindSourceByID(1013));
    EXPECT_EQ(editor.Types()[editor.TypeIndex()].name, "CST: Map");
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(book.sources.FindSourceByID(1013)->SourceType, 1102);
    EXPECT_EQ(book.sources.FindSourceByID(1013)->SourceGUID, "{Source-1013}") << "only the number was stale";
}

TEST_F(SourceEditorTest, ValuesStayWithTheirTypeWhileItIsLeft) {
    book.sources.AddTail(Custom(1102));
    SourceEditor editor = SourceEditor::ForSource(store, *book.sources.FindSourceByID(1013));
    editor.ChangeType(IndexOf(editor, "Book"));
    editor.ChangeType(IndexOf(editor, "CST: Map"));
    EXPECT_EQ(editor.GridRow(0).value, "1:500");
    editor.ChangeType(IndexOf(editor, "CST: Letter"));
    EXPECT_EQ(editor.GridRow(0).value, "");
    editor.ChangeType(IndexOf(editor, "CST: Map"));
    EXPECT_EQ(editor.GridRow(0).value, "1:500");
    EXPECT_FALSE(editor.HasChanges());
}

TEST_F(SourceEditorTest, SourceOfATypeThatHasGoneKeepsItsOwn) {
    CSource source = Custom(1101);
    source.CustomTypeCopy.GUID = "{GONE}";
    source.CustomTypeCopy.name = "Chart";
    book.sources.AddTail(source);
    SourceEditor editor = SourceEditor::ForSource(store, source);
    EXPECT_EQ(editor.Types()[editor.TypeIndex()].name, "CST: Chart");
    editor.ChangeType(IndexOf(editor, "Book"));
    editor.ChangeType(IndexOf(editor, "CST: Letter"));
    editor.ChangeType(IndexOf(editor, "CST: Chart"));
    EXPECT_EQ(editor.GridRow(0).value, "1:500");
    ASSERT_TRUE(editor.Save());
    EXPECT_EQ(book.sources.FindSourceByID(1013)->CustomTypeCopy.name, "Chart");
}

TEST_F(SourceEditorTest, ReplacedTypesReachTheCopyWithItsValues) {
    book.sources.AddTail(Custom(1102));
    SourceEditor editor = SourceEditor::ForSource(store, *book.sources.FindSourceByID(1013));
    editor.SetGridValue(1, "typed");
    CustomTypeList types;
    types.AddType(Type("{T-0}", "Aerial", {}));
    types.AddType(Type("{T-B}", "Map", {"Sheet", "Scale", "Year"}));
    types.AssignNumbers();
    ASSERT_TRUE(store.ReplaceTypes(types));
    editor.TypesReplaced();
    ASSERT_EQ(editor.GridRows(), 3u);
    EXPECT_EQ(editor.GridRow(0).value, "typed");
    EXPECT_EQ(editor.GridRow(1).value, "1:500");
    EXPECT_EQ(editor.Types()[editor.TypeIndex()].name, "CST: Map");
    EXPECT_EQ(book.sources.FindSourceByID(1013)->CustomTypeCopy.fields[2].value, "1:500");
}

TEST_F(SourceEditorTest, ASourceKeepsItsIdentityWhenTypesAreReplacedAfterTheChoiceOfAnother) {
    book.sources.AddTail(Custom(1102));
    for (const int32_t id : {1013, 1011}) {
        const CNote note = NoteOf(id, id, "p. 7");
        SourceEditor editor = SourceEditor::ForSource(store, *book.sources.FindSourceByID(id));
        editor.ChangeType(IndexOf(editor, "CST: Letter"));
        CustomTypeList types;
        types.AddType(Type("{T-" + std::to_string(id) + "}", "Aerial", {}));
        for (const CCustomSourceType& type : book.types)
            types.AddType(type);
        types.AssignNumbers();
        ASSERT_TRUE(store.ReplaceTypes(types));
        editor.TypesReplaced();
        EXPECT_EQ(editor.Types()[editor.TypeIndex()].name, "CST: Letter");
        ASSERT_TRUE(editor.Save());
        EXPECT_EQ(book.sources.FindSourceByID(id)->SourceGUID, "{Source-" + std::to_string(id) + "}");
        EXPECT_EQ(RecordOf(OnDisk(id)), RecordOf(note));
    }
}

TEST_F(SourceEditorTest, AuthorsAreStoredAtOnce) {
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    EXPECT_THAT(Names(editor.Authors().Available()), ElementsAre("jones, mary", "Smith, John Q.", "West, Carl"));
    EXPECT_EQ(editor.Authors().AddNew({-1, " ", "X", "\t", "", ""}), std::nullopt);
    EXPECT_EQ(optionsSaved, 0);
    EXPECT_EQ(editor.Authors().AddNew({-1, " Jo ", "", " Smith ", "", ""}), 8);
    EXPECT_EQ(settings.Int(Option::MaxAuthorID), 8);
    EXPECT_EQ(optionsSaved, 1);
    EXPECT_TRUE(editor.Authors().Update({2, "Mary", "", "Jones", "", ""}));
    EXPECT_FALSE(editor.Authors().Update({2, "", "X", "", "", ""}));
    EXPECT_FALSE(editor.Authors().Update({99, "A", "", "B", "", ""}));
    EXPECT_FALSE(editor.Authors().Delete(3)) << "No is the answer";
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_TRUE(editor.Authors().Delete(1));
    EXPECT_THAT(prompts.seen.back(),
                "Delete Author?? Deleting *Smith, John Q.* will remove it from any sources that "
                "contain it.  Do you wish to continue?");
    EXPECT_EQ(Reloaded().authors.Count(), 3u) << "whatever becomes of the source";
    EXPECT_THAT(Names(editor.Authors().Available()), ElementsAre("Jones, Mary", "Smith, Jo", "West, Carl"));
    EXPECT_TRUE(changes.authors);
}

TEST_F(SourceEditorTest, AuthorsOfTheSourceAreOrderedAndAFreshFormatDropsDeletedOnes) {
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    for (const int32_t id : {3, 1, 2})
        editor.Authors().Append(id);
    editor.Authors().Reorder({2, 3, 1, 99});
    EXPECT_THAT(editor.Working().AuthorIDs.Values(), ElementsAre(2, 3, 1));
    EXPECT_THAT(Names(editor.Authors().OfSource()), ElementsAre("jones, mary", "West, Carl", "Smith, John Q."));
    EXPECT_TRUE(editor.Authors().Available().empty());
    editor.Authors().Remove(3);
    EXPECT_THAT(editor.Working().AuthorIDs.Values(), ElementsAre(2, 1));
    book.authors.RemoveAuthor(1);
    editor.Formatted();
    EXPECT_THAT(editor.Working().AuthorIDs.Values(), ElementsAre(2));
}

TEST_F(SourceEditorTest, WhatCannotBeWrittenChangesNothing) {
    const CNote note = NoteOf(5, 1011, "p. 7");
    SourceEditor editor = SourceEditor::ForSource(store, Stored1011());
    editor.SetField(0, "Typed at length");
    editor.ChangeType(IndexOf(editor, "Online"));
    const std::string bytes = BytesOf(book.paths.Sources());
    Block(book.paths.Sources());
    EXPECT_FALSE(editor.Save());
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_EQ(Stored1011().FieldTexts[0], "Title 1011");
    // The list can't be read and may hold the source under its new number: the note keeps what it says under both.
    EXPECT_EQ(OnDisk(5).sourceInfo.size(), note.sourceInfo.size() + 1);
    EXPECT_EQ(OnDisk(5).sourceInfo.front().key, note.sourceInfo.front().key);
    EXPECT_EQ(OnDisk(5).sourceInfo.front().text, note.sourceInfo.front().text);
    Unblock(book.paths.Sources());
    EXPECT_TRUE(editor.Save()) << "the same text again";
    EXPECT_EQ(OnDisk(5).sourceInfo.front().key, Stored1011().SourceGUID);

    Block(book.paths.Authors());
    EXPECT_EQ(editor.Authors().AddNew({-1, "A", "", "B", "", ""}), std::nullopt);
    EXPECT_EQ(book.authors.Count(), 3u);
}

}  // namespace
}  // namespace lore
