#include <gtest/gtest.h>

#include "bibliography/custom_type_list.h"
#include "bibliography/source_builder.h"
#include "bibliography/source_info.h"
#include "bibliography/source_list.h"
#include "bibliography/source_types.h"
#include "support/raw_record.h"

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

TEST(CustomType, MergeKeepsValuesByNameThenByCount) {
    // The fields of a definition and of a source before, and those that come of both.
    const std::vector<std::string> cases[][3] = {
        {{"Box=", "Page="}, {"Page=9", "Box=17"}, {"Box=17", "Page=9"}},
        {{"BOX="}, {"box=17"}, {"BOX=17"}},
        {{"Folder=", "Page="}, {"Box=17", "Page=9"}, {"Folder=17", "Page=9"}},
        {{"Box=", "Box="}, {"Box=1", "Box=2"}, {"Box=1", "Box=1"}},
        {{"A=", "B=", "C="}, {"X=1"}, {"A=1", "B=", "C="}},
        {{"A=left"}, {}, {"A="}},
        {{"[T]=", "New="}, {"[T]=x", "[U]=y", "Old=5"}, {"[T]=", "New=5"}},
        {{"A=", "B="}, {"B=", "A=1"}, {"A=1", "B="}},
    };
    for (const auto& [definition, old, wanted] : cases) {
        const CCustomSourceType merged = MergeCustomType(TypeOfFields(definition), TypeOfFields(old));
        EXPECT_EQ(Each(merged.fields, [](const CCustomSourceField& field) { return field.name + "=" + field.value; }),
                  wanted);
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
    EXPECT_TRUE(bytes.starts_with(
        RawRecord().Add(11.56, 2, "{1}", "beta", "2010-01-02-00-00-00", 4, 1, 4, "[AUTHORS Placeholder]").Bytes()));
    EXPECT_TRUE(bytes.ends_with(RawRecord().Add("Box", "17", 2112, 0, 2112).Bytes()));
    CustomTypeList read;
    ASSERT_TRUE(read.LoadTypesUnsorted(folder / "a", world.context).Ok());
    EXPECT_EQ(NamesOf(read), (std::vector<std::string>{"beta", "Alpha"}));
    ASSERT_TRUE(read.SaveTypes(folder / "b").Ok());
    EXPECT_EQ(BytesOf(folder / "b"), bytes);
    ASSERT_TRUE(read.LoadTypes(folder / "a", world.context).Ok());
    EXPECT_EQ(NamesOf(read), (std::vector<std::string>{"Alpha", "beta"}));
    EXPECT_EQ(read.FindTypeByGUID("{GUID 1}")->number, 1101);
    EXPECT_TRUE(read.LoadTypes(folder / "none", world.context).Missing());
    EXPECT_EQ(read.Count(), 0u);
}

TEST(SourceInfo, KeysIgnoreCaseAndEmptyRowsStoreNothing) {
    const std::vector<CNoteSourceInfo> entries = {{"{AB}", "p. 5"}, {"{CD}", "p. 6"}};
    EXPECT_EQ(FindSourceInfo(entries, "{cd}"), &entries[1]);
    EXPECT_EQ(FindSourceInfo(entries, "{EF}"), nullptr);
    const auto stored =
        Each(CollectSourceInfo({{"{AB}", " p. 5 "}, {"", "lost"}, {"{CD}", "  "}, {"{EF}", "p. 7"}, {"{ab}", "p. 8"}}),
             [](const CNoteSourceInfo& info) { return info.key + info.text; });
    EXPECT_EQ(stored, (std::vector<std::string>{"{ab}p. 8", "{EF}p. 7"}));
}

}  // namespace
}  // namespace lore
