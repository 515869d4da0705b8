#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "ports/fault_notice.h"
#include "ports/prompts.h"
#include "ports/read_context.h"

namespace lore {

class NoFaults : public FaultNotice {
public:
    void Tell(const Fault&) override {}
    void Mended(const std::string&, const std::string&) override {}
};

class FixedGuids : public GuidSource {
public:
    std::string NewGuid() override { return "{G}"; }
};

/// What loading and searching need of the world, without a report of faults.
struct QuietWorld {
    NoFaults faults;
    FixedGuids guids;
    ReadContext context{DateTime(2026, 1, 1), DateTime(2026, 1, 1), &guids};
};

/// Answers each question with no, and gives the path that it has for any file.
class QuietPrompts : public Prompts {
public:
    void Message(const std::string& text, const std::string&, PromptIcon) override {
        std::fprintf(stderr, "%s\n", text.c_str());
    }
    PromptAnswer Ask(const std::string&, const std::string&, bool) override { return PromptAnswer::No; }
    std::optional<std::string> AskText(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    PromptAnswer AskWithBox(const std::string&, const std::string&, const std::string&, bool&) override {
        return PromptAnswer::No;
    }
    std::vector<std::string> AskOpenPaths(const std::string&, const std::string&, PathCount) override { return {}; }
    std::optional<std::string> AskSavePath(const std::string&, const std::string&, const std::string&) override {
        return path.empty() ? std::nullopt : std::optional(path);
    }

    std::string path;
};

}  // namespace lore
