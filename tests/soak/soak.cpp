// Random work through the classes that the windows use, in one process, beside a plain model of what the data folder
// has to hold. What an action touches is compared at once; every 1,000 actions the application ends and starts anew,
// and everything is read from the files and compared. Ends with status 1 at the first difference, after the last
// actions. The data folder lies in memory unless another place is named, where a flush costs nothing.
//
// soak [--seed N] [--actions N] [--seconds N] [--report N] [--folder PATH]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include "soak/soak_world.h"

namespace lore {
namespace {

constexpr uint64_t kRound = 1000;

struct SoakOptions {
    uint64_t seed = 20261125, actions = 1'000'000, seconds = 1'000'000, report = 10'000;
    std::string folder = MemoryFolder().string();
};

double ResidentMegabytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    file >> pages >> pages;
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

double HeapMegabytes() {
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

std::vector<SoakAction> AllActions() {
    std::vector<SoakAction> all;
    for (const auto& part :
         {NoteActions(), ListActions(), CategoryActions(), SourceActions(), BookActions(), CalendarActions()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class Run {
public:
    explicit Run(const SoakOptions& options)
        : options_(options), folder_(options.folder), soak_(folder_.Path(), options.seed), actions_(AllActions()) {
        for (const SoakAction& action : actions_)
            weights_ += action.weight;
        counts_.resize(actions_.size());
    }

    int Go() {
        std::printf("seed %llu\n", static_cast<unsigned long long>(options_.seed));
        try {
            while (done_ < options_.actions && Seconds() < static_cast<double>(options_.seconds))
                Step();
            soak_.CheckAll();
        } catch (const std::exception& difference) {
            return Fail(difference.what());
        }
        Report();
        for (size_t i = 0; i < actions_.size(); ++i)
            std::printf("  %-26s %8llu\n", actions_[i].name, static_cast<unsigned long long>(counts_[i]));
        return 0;
    }

private:
    void Step() {
        size_t chosen = soak_.Below(weights_), action = 0;
        while (chosen >= actions_[action].weight)
            chosen -= actions_[action++].weight;
        soak_.Tick();
        soak_.Note(std::to_string(done_ + 1) + ": " + actions_[action].name);
        if (!actions_[action].run(soak_))
            return;
        soak_.CheckList();
        soak_.EndAction();
        ++counts_[action];
        if (++done_ % kRound != 0)
            return;
        soak_.Note("all is compared");
        soak_.CheckAll();
        soak_.Note("the application starts anew");
        soak_.Restart();
        soak_.CheckAll();
        soak_.EndAction();
        if (done_ % options_.report == 0)
            Report();
    }

    void Report() const {
        ::malloc_trim(0);
        std::printf("%llu actions, %.0f s, %zu notes, %zu sources, %.1f MB resident, %.1f MB of heap in use\n",
                    static_cast<unsigned long long>(done_), Seconds(), soak_.NoteCount(), soak_.SourceCount(),
                    ResidentMegabytes(), HeapMegabytes());
        std::fflush(stdout);
    }

    int Fail(const char* difference) const {
        for (const std::string& action : soak_.Actions())
            std::printf("%s\n", action.c_str());
        std::printf("DIFFERENCE with seed %llu after %llu actions: %s\n",
                    static_cast<unsigned long long>(options_.seed), static_cast<unsigned long long>(done_), difference);
        return 1;
    }

    double Seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }

    const SoakOptions& options_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    TempFolder folder_;
    Soak soak_;
    std::vector<SoakAction> actions_;
    std::vector<uint64_t> counts_;
    size_t weights_ = 0;
    uint64_t done_ = 0;
};

}  // namespace
}  // namespace lore

int main(int argc, char** argv) {
    lore::SoakOptions options;
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        const uint64_t number = std::strtoull(argv[i + 1], nullptr, 10);
        if (name == "--seed")
            options.seed = number;
        else if (name == "--actions")
            options.actions = number;
        else if (name == "--seconds")
            options.seconds = number;
        else if (name == "--report")
            options.report = number;
        else if (name == "--folder")
            options.folder = argv[i + 1];
        else
            return 2;
    }
    return lore::Run(options).Go();
}
