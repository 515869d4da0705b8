#include <gtest/gtest.h>
#include <random>

#include "base/text.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_info.h"
#include "bibliography/source_list.h"
#include "bibliography/source_types.h"

namespace lore {
namespace {

CCustomSourceType TypeOf(const std::string& guid, const std::string& name) {
    CCustomSourceType type = MakeCustomType(DateTime(2010, 1, 2));
    type.GUID = guid;
    type.name = name;
    return type;
}

/// A type of user fields, each "name=value"; a name that begins with "[" is a title field.
CCustomSourceType TypeOfFields(const std::vector<std::string>& fields) {
    CCustomSourceType type;
    for (const std::string& text : fields) {
        CCustomSourceField field;
        field.name = text.substr(0, text.find('='));
        field.value = text.substr(text.find('=') + 1);
        field.kind = text[0] == '[' ? CCustomSourceField::Title : CCustomSourceField::User;
        type.fields.push_back(field);
    }
    return type;
}

std::vector<std::string> NamesOf(const CustomTypeList& types) {
    return Each(types, &CCustomSourceType::name);
}

TEST(CustomType, NewTypeHasTheFourDefaultFields) {
    const CCustomSourceType type = MakeCustomType(DateTime(2010, 1, 2));
    std::string fields;
    for (const CCustomSourceField& field : type.fields)
        fields += std::to_string(field.kind) + field.name + std::to_string(field.end) + " ";
    EXPECT_EQ(fields, "1[AUTHORS Placeholder]4 3[DATE Placeholder]1 2[TITLE Placeholder]1 0Your Field1 ");
    EXPECT_EQ(CountUserFields(type), 1u);
}

TEST(CustomType, MergeKeepsValuesByNameThenByCount) {
    struct Case {
        std::vector<std::string> definition, old, merged;
    };
    const Case cases[] = {
        {{"Box=", "Page="}, {"Page=9", "Box=17"}, {"Box=17", "Page=9"}},
        {{"BOX="}, {"box=17"}, {"BOX=17"}},
        {{"Folder=", "Page="}, {"Box=17", "Page=9"}, {"Folder=17", "Page=9"}},
        {{"Box=", "Box="}, {"Box=1", "Box=2"}, {"Box=1", "Box=1"}},
        {{"A=", "B=", "C="}, {"X=1"}, {"A=1", "B=", "C="}},
        {{"A=left"}, {}, {"A="}},
        {{"[T]=", "New="}, {"[T]=x", "[U]=y", "Old=5"}, {"[T]=", "New=5"}},
        {{"A=", "B="}, {"B=", "A=1"}, {"A=1", "B="}},
    };
    for (const Case& c : cases) {
        const CCustomSourceType merged = MergeCustomType(TypeOfFields(c.definition), TypeOfFields(c.old));
        const CCustomSourceType expected = TypeOfFields(c.merged);
        ASSERT_EQ(merged.fields.size(), expected.fields.size());
        for (size_t i = 0; i < merged.fields.size(); ++i) {
            EXPECT_EQ(merged.fields[i].name, expected.fields[i].name);
            EXPECT_EQ(merged.fields[i].value, expected.fields[i].value) << merged.fields[i].name;
        }
    }
}

TEST(CustomType, LinkingRefreshesSourcesWhoseTypeIsKnown) {
    CustomTypeList types;
    CCustomSourceType type = TypeOfFields({"Folder=", "Page="});
    type.GUID = "{TYPE}";
    type.name = "Renamed";
    types.AddType(type);
    SourceList sources;
    for (const int32_t id : {1, 2, 3})
        sources.AddTail(FullSource(id));
    sources[1].SourceType = 1;
    sources[2].CustomTypeCopy.GUID = "{type}";
    sources[0].SourceType = 1103;
    sources.LinkCustomTypes(types);
    EXPECT_EQ(sources[0].CustomTypeCopy.name, "Renamed");
    EXPECT_EQ(sources[0].CustomTypeCopy.fields[0].value, "17");
    EXPECT_EQ(sources[0].SourceType, 1103);
    EXPECT_EQ(sources[1].CustomTypeCopy.name, "Letter");
    EXPECT_EQ(sources[2].CustomTypeCopy.name, "Letter");
}

TEST(CustomTypeList, SortAgreesWithTheSlowSelectionOnRandomNames) {
    std::mt19937 random(12);
    const std::string letters = "aAbBzZ{ 9\xE9";
    for (int round = 0; round < 200; ++round) {
        CustomTypeList types;
        std::vector<std::string> names, lowered;
        for (unsigned i = random() % 30; i > 0; --i) {
            std::string name(random() % 3 == 0 ? 32 + random() % 3 : random() % 3, 'Z');
            name += letters[random() % letters.size()];
            names.push_back(name);
            lowered.push_back(ToLower(name));
            types.AddType(TypeOf(std::to_string(i), name));
        }
        const auto expected =
            Each(SlowSelection(lowered, std::string(33, 'z'), false), [&](size_t position) { return names[position]; });
        types.SortTypes();
        ASSERT_EQ(NamesOf(types), expected) << round;
    }
}

TEST(CustomTypeList, ChoicesNumberTheTypesBehindTheStandardOnes) {
    CustomTypeList types;
    types.AddType(TypeOf("{1}", "Letter"));
    types.AddType(TypeOf("{2}", "Map"));
    std::string choices;
    for (const NumberedName& choice : TypeChoices(types))
        choices += std::to_string(choice.number) + " " + choice.name + "; ";
    EXPECT_EQ(choices,
              "1 Book; 5 Dissertation/Thesis; 2 Journal Article; 7 Lecture/Speech; 6 Multimedia; 4 Online; "
              "3 Periodical; 1101 CST: Letter; 1102 CST: Map; ");
    EXPECT_EQ(types.FindTypeByNumber(1102)->name, "Map");
    EXPECT_EQ(types.FindTypeByNumber(1103), nullptr);
}

TEST(CustomTypeList, StyleChoicesAreTheGenericOnesThenByName) {
    const std::vector<NumberedName> choices = StyleChoices();
    ASSERT_EQ(choices.size(), 14u);
    EXPECT_EQ(choices[0].name, "Generic by Author");
    EXPECT_EQ(choices[1].name, "Generic by Title");
    for (size_t i = 3; i < choices.size(); ++i)
        EXPECT_LT(choices[i - 1].name, choices[i].name);
}

TEST(CustomTypeFile, HoldsTheExactBytesAndComesBackSorted) {
    TempFolder folder;
    ReadWorld world;
    CustomTypeList types;
    types.AddType(TypeOf("{1}", "beta"));
    CCustomSourceType alpha = TypeOf("", "Alpha");
    alpha.fields = FullSource(1).CustomTypeCopy.fields;
    types.AddType(alpha);
    types.FillGuids(world.guids);
    ASSERT_TRUE(types.SaveTypes(folder / "a").Ok());
    const std::string bytes = BytesOf(folder / "a");
    EXPECT_TRUE(
        bytes.starts_with("0000000011.5600000000000000000000002"
                          "0000000000000003{1}"
                          "0000000000000004beta"
                          "00000000000000192010-01-02-00-00-00"
                          "0000000000000004"
                          "00000000000000010000000000000004"
                          "0000000000000021[AUTHORS"));
    EXPECT_TRUE(
        bytes.ends_with("0000000000000003Box000000000000000217"
                        "000000000000211200000000000000000000000000002112"));
    CustomTypeList read;
    ASSERT_TRUE(read.LoadTypesUnsorted(folder / "a", world.context).Ok());
    EXPECT_EQ(NamesOf(read), (std::vector<std::string>{"beta", "Alpha"}));
    ASSERT_TRUE(read.SaveTypes(folder / "b").Ok());
    EXPECT_EQ(BytesOf(folder / "b"), bytes);
    ASSERT_TRUE(read.LoadTypes(folder / "a", world.context).Ok());
    EXPECT_EQ(NamesOf(read), (std::vector<std::string>{"Alpha", "beta"}));
    EXPECT_EQ(read.FindTypeByGUID("{GUID 1}")->number, 1101);
}

TEST(CustomTypeFile, CutsAreNoticedAndAMissingFileIsNone) {
    TempFolder folder;
    ReadWorld world;
    CustomTypeList types;
    types.AddType(TypeOf("{1}", "beta"));
    ASSERT_TRUE(types.SaveTypes(folder / "a").Ok());
    const std::string bytes = BytesOf(folder / "a");
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        PutBytes(folder / "b", bytes.substr(0, cut));
        EXPECT_TRUE(types.LoadTypes(folder / "b", world.context).Ok());
        EXPECT_FALSE(types.ReadWhole()) << cut;
        EXPECT_LE(types.Count(), 1u);
    }
    EXPECT_TRUE(types.LoadTypes(folder / "none", world.context).Missing());
    EXPECT_EQ(types.Count(), 0u);
}

TEST(SourceInfo, KeysIgnoreCaseAndEmptyRowsStoreNothing) {
    const std::vector<CNoteSourceInfo> entries = {{"{AB}", "p. 5"}, {"{CD}", "p. 6"}};
    EXPECT_EQ(FindSourceInfo(entries, "{cd}"), &entries[1]);
    EXPECT_EQ(FindSourceInfo(entries, "{EF}"), nullptr);
    const std::vector<CNoteSourceInfo> stored =
        CollectSourceInfo({{"{AB}", " p. 5 "}, {"", "lost"}, {"{CD}", "  "}, {"{EF}", "p. 7"}, {"{ab}", "p. 8"}});
    ASSERT_EQ(stored.size(), 2u);
    EXPECT_EQ(stored[0].key + stored[0].text, "{ab}p. 8");
    EXPECT_EQ(stored[1].key + stored[1].text, "{EF}p. 7");
}

}  // namespace
}  // namespace lore
