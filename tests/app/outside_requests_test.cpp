#include "app/outside_requests.h"

#include <gmock/gmock.h>

namespace lore {
namespace {

struct OutsideRequestsTest : testing::Test {
    std::vector<std::string> done;
    OutsideRequests requests{Hooks()};

    RequestHooks Hooks() {
        const auto note = [this](const std::string& what) { return [this, what] { done.push_back(what); }; };
        RequestHooks hooks;
        hooks.restore = note("restore");
        hooks.bringToFront = note("front");
        hooks.importFile = [this](const std::filesystem::path& path) { done.push_back("import " + path.string()); };
        hooks.capture = note("capture");
        hooks.showReminder = [this](const std::string& id) { done.push_back("reminder " + id); };
        hooks.close = note("close");
        hooks.checkAgentOptions = note("options");
        hooks.checkForUpdates = note("updates");
        return hooks;
    }
};

TEST_F(OutsideRequestsTest, WhatComesBeforeTheEndOfTheStartWaitsAndAFileGoesFirst) {
    const std::string capture = kCaptureRequest, reminder = std::string(kReminderRequest) + "{R}";
    const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
        {{}, {"updates"}},
        {{"/Keep/one.lbe", "/Keep/two.lbe"}, {"import /Keep/two.lbe"}},
        {{capture}, {"front", "capture"}},
        {{"/Keep/one.lbe", "x " + capture + " y"}, {"front", "import /Keep/one.lbe"}},
        {{reminder}, {"front", "reminder {R}"}},
    };
    for (const auto& [texts, wanted] : cases) {
        OutsideRequests starting(Hooks());
        for (const std::string& text : texts)
            starting.OpenDocumentFile(text);
        EXPECT_THAT(done, testing::Each("front"));
        starting.FinishStartup();
        EXPECT_EQ(std::exchange(done, {}), wanted);
    }
}

TEST_F(OutsideRequestsTest, MessagesAreToldApartByTheirTags) {
    requests.FinishStartup();
    const std::string longPath = "/" + std::string(2000, 'a');
    const std::tuple<uint32_t, std::string, uint32_t, std::vector<std::string>> cases[] = {
        {InstanceMessage::kIsMe, "", 1, {}},
        {InstanceMessage::kActivate, "", 1, {"front"}},
        {InstanceMessage::kDocument, "", 1, {}},
        {InstanceMessage::kDocument, "/a.lbe", 1, {"restore", "import /a.lbe"}},
        {InstanceMessage::kDocument, longPath, 1, {"restore", "import " + longPath.substr(0, 1023)}},
        {InstanceMessage::kDocument, kCaptureRequest, 1, {"front", "capture"}},
        {InstanceMessage::kDocument, "TQR_Lorebinder_ShowReminder{R 1}", 1, {"front", "reminder {R 1}"}},
        {InstanceMessage::kDocument, "TQRCLOSELOREBINDER", 1, {"restore", "import TQRCLOSELOREBINDER"}},
        {InstanceMessage::kCommand, "TQRCLOSELOREBINDER", 1, {"close"}},
        {77, "  TQRCHECKAGENTOPTIONS now", 1, {"options"}},
        {InstanceMessage::kCommand, "tqrcloselorebinder", 0, {}},
        {InstanceMessage::kCommand, "", 0, {}}};
    for (const auto& [tag, text, answer, wanted] : cases) {
        done.clear();
        EXPECT_EQ(requests.Receive({tag, text}), answer) << text;
        EXPECT_EQ(done, wanted) << text;
    }
}

TEST(RequestOfCommandLine, IsAFullPathTheCaptureOrNothing) {
    EXPECT_EQ(RequestOfCommandLine("one.lbe", false, "/home/me"), "/home/me/one.lbe");
    EXPECT_EQ(RequestOfCommandLine("../one.lbe", false, "/home/me"), "/home/one.lbe");
    EXPECT_EQ(RequestOfCommandLine("/Keep/one.lbe", false, "/home/me"), "/Keep/one.lbe");
    EXPECT_EQ(RequestOfCommandLine("", false, "/home/me"), "");
    EXPECT_EQ(RequestOfCommandLine("bypassSYNC", false, "/home/me"), "");
    EXPECT_EQ(RequestOfCommandLine("one.lbe", true, "/home/me"), kCaptureRequest);
    EXPECT_EQ(RequestOfCommandLine("one.lbe", false, "/home/me", "{R}"), std::string(kReminderRequest) + "{R}");
}

}  // namespace
}  // namespace lore
