#include "platform/hunspell_checker.h"

#include <gmock/gmock.h>
#include <set>

#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

/// Two small dictionaries, one of them in the bytes of Western Europe.
class HunspellChecking : public ::testing::Test {
protected:
    HunspellChecking() {
        Write("aa_AA.aff", "SET UTF-8\nTRY esianrtolcdugmphbyfvkwz\nWORDCHARS '\n");
        Write("aa_AA.dic", "4\nkeeper\nlamp\ndon't\nna\xc3\xafve\n");
        Write("de_DE.aff", "SET ISO8859-1\nTRY esianrtolcdugmphbyfvkwz\xfc\n");
        Write("de_DE.dic", "2\nT\xfcr\nT\xfcren\n");
        Write("hyph_aa.dic", "UTF-8\n");
    }
    void Write(const std::string& name, const std::string& bytes) { PutBytes(folder_ / name, bytes); }
    HunspellChecker Make() {
        return HunspellChecker({folder_.Path(), "/no/such/folder"}, folder_ / "Lexicons/user.txt", faults_);
    }

    TempFolder folder_;
    NotedFaults faults_;
};

TEST_F(HunspellChecking, FindsThePairsOfFiles) {
    HunspellChecker checker = Make();
    EXPECT_THAT(checker.Languages(), ::testing::ElementsAre("aa_AA", "de_DE"));
    EXPECT_FALSE(checker.Select("xx_XX"));
    EXPECT_TRUE(checker.Check("qqqq")) << "without a language nothing is wrong";
    EXPECT_TRUE(checker.Select("aa_AA"));
}

TEST_F(HunspellChecking, JudgesWords) {
    const std::tuple<const char*, bool, std::vector<const char*>> cases[] = {
        {"aa_AA",
         true,
         {"keeper", "Keeper", "don't", "don\u2019t", "na\u00efve", "\u0444\u0430\u0440", "\u706f\u5854"}},
        {"aa_AA", false, {"kepeer"}},
        {"de_DE", true, {"T\u00fcr", "\u03c6\u03b1\u03c1\u03bf\u03c2"}},
        {"de_DE", false, {"Tur"}}};
    HunspellChecker checker = Make();
    for (const auto& [language, isRight, words] : cases) {
        ASSERT_TRUE(checker.Select(language));
        for (const char* const word : words)
            EXPECT_EQ(checker.Check(word), isRight) << word;
    }
    EXPECT_THAT(checker.Suggest("Tur"), ::testing::Contains("T\u00fcr"));
}

TEST_F(HunspellChecking, ACapitalMayBeginASentenceOrAName) {
    Write("bb_BB.aff", "SET UTF-8\nTRY abcdefghijklmnopqrstuvwxyz\n");
    Write("bb_BB.dic", "10\nthe\nTeha\nTehb\nTehc\nTehd\nTehe\nTehf\nTehg\nTehh\nTehi\n");
    HunspellChecker checker = Make();
    ASSERT_TRUE(checker.Select("bb_BB"));
    const std::vector<std::string> words = checker.Suggest("Teh");
    EXPECT_THAT(words, ::testing::SizeIs(8));
    EXPECT_THAT(std::vector(words.begin(), words.begin() + 2), ::testing::ElementsAre("The", "Teha"));
    EXPECT_EQ(std::set(words.begin(), words.end()).size(), 8u) << "each once";
    EXPECT_EQ(checker.Suggest("TEH").front(), "THE");
}

TEST_F(HunspellChecking, KeepsTheUsersWordsInAFile) {
    {
        HunspellChecker checker = Make();
        checker.Select("aa_AA");
        EXPECT_TRUE(checker.Add("gallery\n"));
        EXPECT_TRUE(checker.Add("Fresnel"));
        EXPECT_TRUE(checker.Add("Fresnel"));
        EXPECT_FALSE(checker.Add(" \n"));
        checker.Ignore("xyzzy");
        EXPECT_TRUE(checker.Check("xyzzy"));
    }
    EXPECT_EQ(BytesOf(folder_ / "Lexicons/user.txt"), "gallery\nFresnel\n");
    HunspellChecker again = Make();
    again.Select("de_DE");
    EXPECT_TRUE(again.Check("Gallery"));
    EXPECT_FALSE(again.Check("fresnel"));
    EXPECT_FALSE(again.Check("xyzzy"));
}

TEST_F(HunspellChecking, OwnWordsThatGoLeaveTheWordsOfTheLanguage) {
    HunspellChecker checker = Make();
    checker.Select("aa_AA");
    checker.Add("gallery");
    checker.Add("lamp");
    checker.Ignore("xyzzy");
    EXPECT_TRUE(checker.SetUserWords({"Fresnel", "Fresnel"}));
    EXPECT_THAT(checker.UserWords(), ::testing::ElementsAre("Fresnel"));
    EXPECT_FALSE(checker.Check("gallery"));
    for (const char* word : {"lamp", "Fresnel", "xyzzy", "keeper"})
        EXPECT_TRUE(checker.Check(word)) << word;
    EXPECT_EQ(checker.Language(), "aa_AA");
    EXPECT_EQ(BytesOf(folder_ / "Lexicons/user.txt"), "Fresnel\n");
    EXPECT_TRUE(checker.SetUserWords({}));
    EXPECT_FALSE(checker.Check("Fresnel"));
}

TEST_F(HunspellChecking, TellsWhenTheFileCannotBeWritten) {
    Write("Lexicons", "a file where the folder should be");
    HunspellChecker checker = Make();
    checker.Select("aa_AA");
    EXPECT_FALSE(checker.Add("gallery"));
    EXPECT_TRUE(checker.Check("gallery"));
    ASSERT_FALSE(faults_.faults.empty());
    EXPECT_EQ(faults_.faults.back().what, "The user dictionary could not be written");
}

}  // namespace
}  // namespace lore
