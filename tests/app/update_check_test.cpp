#include "app/update_check.h"

#include "app/help_commands.h"
#include "support/matchers.h"
#include "support/memory_store.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

/// Notes what is asked, and answers when a test says so.
class HeldSource : public UpdateSource {
public:
    void Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) override {
        asked.push_back(address);
        answer = std::move(done);
    }
    std::vector<std::string> asked;
    std::function<void(const UpdateReply&)> answer;
};

class Updates : public testing::Test {
protected:
    Updates() { settings.Set(Option::UpdateAddress, std::string("https://updates.example/newest.txt")); }
    void Answer(const std::string& text) { source.answer({true, text, {}}); }

    Settings settings;
    MemoryStore store;
    ScriptedPrompts prompts;
    NotedFaults faults;
    FixedClock clock;
    HeldSource source;
    std::vector<std::string> opened;
    UpdateCheck check{{settings, store, prompts, faults, clock, &source,
                       [this](const std::string& page) { opened.push_back(page); }}};
};

TEST(UpdateNewsText, IsReadForgivinglyAndNeverTrusted) {
    const std::tuple<const char*, double, const char*, const char*> cases[] = {
        {"11.60", 11.60, "", ""},
        {" 11.6 \r\nhttps://example.org/new\r\nBetter search\r\n", 11.6, "https://example.org/new", "Better search"},
        {"12\n\nWords", 12, "", "Words"},
        {"11.70\njavascript:alert(1)\n", 11.7, "", ""},
        {"11.70\nfile:///etc/passwd", 11.7, "", ""},
        {"11.70\nmailto:a@b.c", 11.7, "", ""},
    };
    for (const auto& [text, version, page, notice] : cases) {
        const auto news = ReadUpdateNews(text);
        ASSERT_TRUE(news) << text;
        EXPECT_DOUBLE_EQ(news->version, version);
        EXPECT_EQ(news->page, page);
        EXPECT_EQ(news->notice, notice);
    }
    for (const char* text : {"", "\n11.6", "<html>", "v11.6", "-3", "0", "1e9", "99999999", "11.6 or so"})
        EXPECT_FALSE(ReadUpdateNews(text)) << text;
    EXPECT_LE(ReadUpdateNews("11.6\n\n" + std::string(1 << 20, 'x'))->notice.size(), 1000u);
}

TEST_F(Updates, WithoutAnAddressNothingIsEverAsked) {
    settings.Set(Option::UpdateAddress, std::string());
    check.RunDaily();
    EXPECT_THAT(prompts.seen, IsEmpty());
    check.Run();
    EXPECT_THAT(prompts.seen, ElementsAre(HasSubstr("No address that tells of new versions is set")));
    EXPECT_THAT(source.asked, IsEmpty());
}

TEST_F(Updates, DailyCheckAsksOnceADayAndSpeaksOnlyOfANewerVersion) {
    check.RunDaily();
    check.RunDaily();
    ASSERT_EQ(source.asked.size(), 1u) << "one is under way";
    Answer("11.56");
    EXPECT_EQ(store.Get("Options", "UpdateCheck"), "14");
    check.RunDaily();
    EXPECT_EQ(source.asked.size(), 1u) << "it was done today";
    clock.now = DateTime(2026, 3, 15);
    check.RunDaily();
    source.answer({false, {}, "No route to host"});
    EXPECT_THAT(prompts.seen, IsEmpty()) << "whoever works without a net isn't told each day";
    clock.now = DateTime(2026, 3, 16);
    check.RunDaily();
    Answer("11.60\n\nFaster.");
    EXPECT_THAT(prompts.seen, ElementsAre("Check for program updates: Version 1.60 is there. You have version 1.56."
                                          "\n\nFaster."));
    clock.now = DateTime(2026, 3, 17);
    settings.Set(Option::CheckForUpdates, 0);
    check.RunDaily();
    EXPECT_EQ(source.asked.size(), 3u);
    EXPECT_THAT(faults.faults, IsEmpty());
    store.isFull = true;
    check.Run();
    Answer("11.56");
    EXPECT_THAT(faults.faults, SizeIs(1)) << "the day couldn't be stored";
}

TEST_F(Updates, MenuTellsWhateverComesOut) {
    settings.Set(Option::UpdateCheck, 14);
    check.Run();
    Answer("11.56\n");
    check.Run();
    Answer("<!DOCTYPE html>");
    check.Run();
    source.answer({false, {}, "Host not found"});
    EXPECT_THAT(prompts.seen, ElementsAre(HasSubstr("You have the newest version, 1.56."),
                                          HasSubstr("names no version"), HasSubstr("Host not found")));
}

TEST_F(Updates, PageOpensOnlyWhenTheUserSaysSo) {
    for (const PromptAnswer answer : {PromptAnswer::No, PromptAnswer::Yes}) {
        prompts.answers = {answer};
        check.Run();
        Answer("11.57\nhttps://example.org/new");
    }
    EXPECT_THAT(opened, ElementsAre("https://example.org/new"));
}

class Help : public testing::Test {
protected:
    Settings settings;
    ScriptedPrompts prompts;
    std::vector<std::string> opened;
    bool opens = true;
    const std::function<bool(const std::string&)> open = [this](const std::string& what) {
        opened.push_back(what);
        return opens;
    };
    HelpWorld world{settings, prompts, [this](const std::filesystem::path& file) { return open(file.string()); }, open};
};

TEST_F(Help, ManualOpensOrItIsSaidWhyNot) {
    OpenManual(world, {});
    EXPECT_THAT(opened, IsEmpty());
    EXPECT_THAT(prompts.seen.back(), HasSubstr("isn't installed beside the program"));
    OpenManual(world, "/prog/ProUsersManual.pdf");
    EXPECT_THAT(opened, ElementsAre("/prog/ProUsersManual.pdf"));
    EXPECT_EQ(prompts.seen.size(), 1u);
    opens = false;
    OpenManual(world, "/prog/ProUsersManual.pdf");
    EXPECT_THAT(prompts.seen.back(), HasSubstr("no program that opens the manual"));
}

TEST_F(Help, TutorialIsOffUntilAWebPageIsSet) {
    OpenTutorial(world);
    EXPECT_THAT(prompts.seen.back(), HasSubstr("No address for a tutorial page is set"));
    for (const char* address : {"file:///bin/sh", "mailto:a@b.c", "tutorial", "ftp://example.org/x"}) {
        settings.Set(Option::TutorialAddress, std::string(address));
        OpenTutorial(world);
        EXPECT_THAT(prompts.seen.back(), HasSubstr("the address of a web page")) << address;
    }
    EXPECT_THAT(opened, IsEmpty());
    settings.Set(Option::TutorialAddress, std::string("https://example.org/videos"));
    OpenTutorial(world);
    EXPECT_THAT(opened, ElementsAre("https://example.org/videos"));
}

}  // namespace
}  // namespace lore
