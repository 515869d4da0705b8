#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "support/read_world.h"

namespace lore {

/// Notes every text that a user would have seen, and gives the answers that a test has laid out.
class ScriptedPrompts : public Prompts {
public:
    void Message(const std::string& text, const std::string& title, PromptIcon icon) override {
        icons.push_back(icon);
        Show(title + ": " + text);
    }
    PromptAnswer Ask(const std::string& text, const std::string& title, bool) override {
        Show(title + "? " + text);
        if (answers.empty())
            return PromptAnswer::No;
        const PromptAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> AskText(const std::string& label, const std::string& title,
                                       const std::string& initial) override {
        Show(title + "? " + label + " [" + initial + "]");
        return Next(texts);
    }
    PromptAnswer AskWithBox(const std::string& text, const std::string& title, const std::string& box,
                            bool& ticked) override {
        const PromptAnswer answer = Ask(text + " [ ] " + box, title, false);
        ticked = ticksBox;
        return answer;
    }
    std::vector<std::string> AskOpenPaths(const std::string& title, const std::string& filter,
                                          PathCount count) override {
        seen.push_back(title + (count == PathCount::Several ? "? open several " : "? open ") + filter);
        return std::exchange(openPaths, {});
    }
    std::optional<std::string> AskSavePath(const std::string& title, const std::string& filter,
                                           const std::string& proposed) override {
        seen.push_back(title + "? save " + filter + " [" + proposed + "]");
        return Next(savePaths);
    }

    std::vector<std::string> seen;
    std::vector<PromptIcon> icons;  ///< of the messages
    std::deque<PromptAnswer> answers;
    std::deque<std::string> texts, savePaths;  ///< an empty queue cancels
    std::vector<std::string> openPaths;
    bool ticksBox = false;
    std::function<void()> whileShown;  ///< runs while a message or a question stands there

private:
    void Show(std::string text) {
        seen.push_back(std::move(text));
        if (whileShown)
            whileShown();
    }
    static std::optional<std::string> Next(std::deque<std::string>& queue) {
        if (queue.empty())
            return std::nullopt;
        std::string text = queue.front();
        queue.pop_front();
        return text;
    }
};

/// Notes the messages of the progress and the stand-by window.
class ScriptedProgress : public Progress {
public:
    void SetRange(int, int high) override { ranges.push_back(high); }
    void SetMessage(const std::string& text) override { messages.push_back(text); }
    void StepIt() override { ++steps; }
    void SetPosition(int) override {}
    void Show() override { ++shown; }
    void Hide() override { --shown; }
    void ShowStandBy(const std::string& text) override { messages.push_back(text); }
    void HideStandBy() override {}

    std::vector<std::string> messages;
    std::vector<int> ranges;  ///< their ends
    int shown = 0, steps = 0;
};

class FixedClock : public Clock {
public:
    DateTime Now() const override { return now; }
    DateTime NowUtc() const override { return now; }
    DateTime now = DateTime(2026, 3, 14, 9, 26, 53);
};

class NotedFaults : public FaultNotice {
public:
    void Tell(const Fault& fault) override { faults.push_back(fault); }
    void Mended(const std::string& what, const std::string&) override { mended.push_back(what); }
    std::vector<Fault> faults;
    std::vector<std::string> mended;  ///< in which words
};

/// The ports that reach a user.
struct UserPorts {
    ScriptedPrompts prompts;
    ScriptedProgress progress;
    NotedFaults faults;
};

/// These and the others that nearly everything takes.
struct ScriptedPorts : UserPorts {
    FixedClock clock;
    NumberedGuids guids;
};

}  // namespace lore
