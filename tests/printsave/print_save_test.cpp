#include <gmock/gmock.h>
#include <unistd.h>

#include "printsave/print_world.h"
#include "rtf/html_writer.h"
#include "rtf/rtf.h"

namespace lore {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class PrintSaveTest : public PrintWorld {
protected:
    PrintSaveTest() { HandOver(); }
    std::string Bib() const { return "'" + DataPaths{folder.Path()}.Bibliography().string() + "'"; }
    std::string TextOfPdf(const std::string& name) const {
        return OutputOf("pdftotext -layout '" + (folder / name).string() + "' -").text;
    }
};

TEST_F(PrintSaveTest, ABibliographyIsSavedInEachForm) {
    const std::string title = "Lighthouse";
    EXPECT_THAT(Saved("a.txt", Bib()), HasSubstr(title));
    EXPECT_THAT(Saved("a.html", Bib()), HasSubstr("<em>"));
    EXPECT_THAT(Saved("a.rtf", Bib()), StartsWith("{\\rtf1"));
    EXPECT_EQ(Saved("a.odt", Bib()).substr(30, 47), "mimetypeapplication/vnd.oasis.opendocument.text");
    EXPECT_THAT(Saved("a.pdf", Bib()), StartsWith("%PDF"));
}

TEST_F(PrintSaveTest, ANoteListIsSavedInEachForm) {
    const CNote& first = app.List()[0];
    const std::string words = first.plainText.substr(0, first.plainText.find_first_of("\r\n.,;"));
    ASSERT_THAT(words, Not(IsEmpty()));
    EXPECT_THAT(Saved("n.txt"), HasSubstr(words));
    EXPECT_THAT(Saved("n.txt"), HasSubstr("Key Words: "));
    EXPECT_THAT(Saved("n.html"), HasSubstr("src=\"data:image/"));
    EXPECT_THAT(Saved("n.rtf"), HasSubstr("\\pngblip"));
    EXPECT_THAT(Saved("n.odt"), HasSubstr("Pictures/1.png"));
    EXPECT_THAT(Saved("n.pdf"), StartsWith("%PDF"));
}

TEST_F(PrintSaveTest, PdfFilesHoldTheWordsTheirFontsAndLiveLinks) {
    if (!HasTool("pdftotext"))
        GTEST_SKIP() << "built without poppler-utils";
    const std::pair<const char*, const char*> kFonts[] = {
        {"times", "LiberationSerif"}, {"arial", "LiberationSans"}, {"courier", "LiberationMono"}};
    for (const auto& [font, embedded] : kFonts) {
        const std::string name = std::string(font) + ".pdf";
        Saved(name, Bib() + " --font " + font);
        const std::string fonts = OutputOf("pdffonts '" + (folder / name).string() + "'").text;
        EXPECT_THAT(fonts, HasSubstr(embedded));
        EXPECT_THAT(fonts, Not(HasSubstr("no  no"))) << "each is embedded";
    }
    const std::string pdf = Saved("notes.pdf");
    EXPECT_THAT(pdf, HasSubstr("/URI (http"));
    const std::string text = TextOfPdf("notes.pdf");
    for (const ListedNote& entry : app.List().Notes()) {
        const std::string& plain = entry.note->plainText;
        const size_t end = plain.find_first_of("\r\n \t");
        const std::string word = plain.substr(0, end);
        if (word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos) {
            EXPECT_THAT(text, HasSubstr(word)) << entry.note->id;
        }
    }
}

TEST_F(PrintSaveTest, WhatQtLaysOutOtherwiseIsWhole) {
    if (!HasTool("pdftotext"))
        GTEST_SKIP() << "built without poppler-utils";
    const std::pair<const char*, const char*> kPages[] = {
        {"\\trowd\\cellx7000\\cellx14000\\cellx21000\\intbl first\\cell middle\\cell last\\cell\\row", "first.*last"},
        {"\\trowd\\trleft6000\\cellx9000\\cellx13000\\intbl first\\cell last\\cell\\row", "first.*last"},
        {"\\trowd\\cellx8000\\cellx16000\\intbl first{\\pict\\pngblip\\picw500\\pich9 89}\\cell last\\cell\\row",
         "first.*last"},
        {"above\\par{\\pict\\pngblip\\picw9\\pich1500 89}\\par below", "above.*1\n\f *2\n\fbelow"},
        {"above\\par\\par below", "above\n\nbelow"},
        {"{\\*\\pn\\pnlvlbody\\pndec\\pnstart5}x\\par\\par y", "5\\. x\n *6\\. *\n *7\\. y"}};
    for (const auto& [rtf, shown] : kPages) {
        const std::filesystem::path page = folder / "odd.html", file = folder / "odd.pdf";
        PutBytes(page, WriteHtml(ReadRtf(std::string("{\\rtf1 ") + rtf + "}"), ""));
        const ProgramOutput made = OutputOf("'" + (ProgramFolder() / "lorebinder-pdf").string() + "' '" +
                                            page.string() + "' '" + file.string() + "'");
        EXPECT_EQ(made.status, 0) << made.text;
        EXPECT_THAT(TextOfPdf("odd.pdf"), testing::ContainsRegex(shown)) << rtf;
    }
}

TEST_F(PrintSaveTest, TheDisplaySettingsSayWhatOfANoteIsShown) {
    EXPECT_THAT(Saved("all.txt"), HasSubstr("Key Words: "));
    EXPECT_THAT(Saved("all.txt"), HasSubstr("\u203A"));
    app.GetSettings().Set(Option::ShowKeyWords, 0);
    app.GetSettings().Set(Option::ShowCats, 0);
    app.StoreSettings();
    EXPECT_THAT(Saved("few.txt"), Not(HasSubstr("Key Words: ")));
    EXPECT_THAT(Saved("few.txt"), Not(HasSubstr("\u203A")));
}

TEST_F(PrintSaveTest, WhatCantBeReadOrWrittenIsToldAndWritesNothing) {
    const std::string preview = BytesOf(DataPaths{folder.Path()}.PrintPreview());
    const std::string bib = BytesOf(DataPaths{folder.Path()}.Bibliography());
    const std::string out = " --save '" + (folder / "out.txt").string() + "'";
    struct Case {
        const char* what;
        std::string bytes;
        const char* says;
    };
    const Case kCases[] = {
        {"an empty file", "", "neither"},
        {"another file", "%PDF-1.4 and so on for a while", "neither"},
        {"a bibliography cut in half", bib.substr(0, bib.size() / 2), "breaks off"},
        {"notes cut in half", preview.substr(0, preview.size() / 2), "breaks off"},
        {"a count beyond the file", bib.substr(0, 20) + "0000002000000000" + bib.substr(36), "breaks off"},
        {"no sources", bib.substr(0, 20) + "0000000000000000", "nothing to print"},
        {"a version of nothing", "0000000000.000000000" + bib.substr(20), "neither"},
    };
    for (const Case& c : kCases) {
        PutBytes(folder / "hostile.dat", c.bytes);
        const ProgramOutput run = Run("'" + (folder / "hostile.dat").string() + "'" + out);
        EXPECT_EQ(run.status, 3) << c.what << run.text;
        EXPECT_THAT(run.text, HasSubstr(c.says)) << c.what;
        EXPECT_FALSE(std::filesystem::exists(folder / "out.txt")) << c.what;
    }
    EXPECT_EQ(Run("'" + (folder / "missing.dat").string() + "'" + out).status, 3);
    EXPECT_EQ(Run(Bib() + " --save '" + (folder / "no folder" / "a.txt").string() + "'").status, 3);
    EXPECT_EQ(Run(Bib() + " --save a.doc").status, 2);
    EXPECT_EQ(Run(Bib() + " --font wingdings --save a.txt").status, 2);
    EXPECT_EQ(Run(Bib() + " another --save a.txt").status, 2);
}

TEST_F(PrintSaveTest, DamageAnywhereEndsInAFileOrAMessage) {
    const std::string preview = BytesOf(DataPaths{folder.Path()}.PrintPreview());
    for (size_t i = 1; i <= 12; ++i) {
        std::string bytes = preview;
        for (size_t at = i * 37; at < bytes.size(); at += bytes.size() / 11 + 1)
            bytes[at] = static_cast<char>(bytes[at] ^ (1u << (i % 7)));
        PutBytes(folder / "flipped.nbf", bytes);
        const ProgramOutput run = Run("'" + (folder / "flipped.nbf").string() + "' --save '" +
                                      (folder / (i % 2 ? "f.pdf" : "f.odt")).string() + "'");
        EXPECT_TRUE(run.status == 0 || run.status == 3) << run.status << run.text;
    }
}

TEST_F(PrintSaveTest, TheProgramStartsItAndGoesOn) {
    const std::filesystem::path out = folder / "started.txt";
    ASSERT_FALSE(companions.StartCompanion(kPrintProgram, {"--save", out.string()}).has_value());
    for (int i = 0; i < 600 && !std::filesystem::exists(out); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_THAT(BytesOf(out), HasSubstr("Key Words: ")) << "it found the notes of this data folder";
    EXPECT_TRUE(companions.StartCompanion("NoSuchProgram", {}).has_value());
}

}  // namespace
}  // namespace lore
