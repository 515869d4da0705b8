#pragma once

#include <deque>
#include <string>
#include <vector>

#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/progress.h"
#include "ports/prompts.h"

namespace lore {

/// Notes every text that a user would have seen, and gives the answers that a test has laid out.
class ScriptedPrompts : public Prompts {
public:
    void Message(const std::string& text, const std::string& title, PromptIcon) override {
        seen.push_back(title + ": " + text);
    }
    PromptAnswer Ask(const std::string& text, const std::string& title, bool) override {
        seen.push_back(title + "? " + text);
        if (answers.empty())
            return PromptAnswer::No;
        const PromptAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> AskText(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }

    std::vector<std::string> seen;
    std::deque<PromptAnswer> answers;
};

/// Notes the messages of the progress and the stand-by window.
class ScriptedProgress : public Progress {
public:
    void SetRange(int, int) override {}
    void SetMessage(const std::string& text) override { messages.push_back(text); }
    void StepIt() override {}
    void SetPosition(int) override {}
    void Show() override { ++shown; }
    void Hide() override { --shown; }
    void ShowStandBy(const std::string& text) override { messages.push_back(text); }
    void HideStandBy() override {}

    std::vector<std::string> messages;
    int shown = 0;
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
    std::vector<Fault> faults;
};

}  // namespace lore
