#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "notes/check_notebook.h"

namespace lore {

namespace {

class CheckCommand : public Command {
public:
    const char* Name() const override { return "check"; }
    const char* Help() const override { return "Tells what is wrong in the data folder"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const std::vector<Finding> findings = CheckData(session.Data(), session.Context(), session.Faults());
        Json list = Json::array();
        for (const Finding& finding : findings) {
            if (session.Json())
                list.push_back({{"kind", FindingKindName(finding.kind)},
                                {"file", finding.file},
                                {"text", JsonText(finding.text)}});
            else
                std::printf("%s: %s\n", finding.file.c_str(), ToUtf8(finding.text).c_str());
        }
        if (session.Json())
            PrintJson(list);
        return findings.empty() ? ExitStatus::Done : ExitStatus::NothingFound;
    }
};

}  // namespace

void AddCheckCommands(Commands& commands) {
    commands.push_back(std::make_unique<CheckCommand>());
}

}  // namespace lore
