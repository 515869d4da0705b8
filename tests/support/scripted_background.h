#pragma once

#include <string>
#include <thread>
#include <vector>

#include "ports/background.h"

namespace lore {

/// Runs work at once and notes its texts; the user stops those that a test names.
class ScriptedBackground : public Background {
public:
    bool Run(const std::string& text, const Work& work) override {
        std::stop_source source;
        const bool isStopped = stops || static_cast<int>(texts.size()) == stopsAt;
        if (isStopped)
            source.request_stop();
        texts.push_back(text);
        work(source.get_token());
        return !isStopped;
    }
    std::vector<std::string> texts;
    bool stops = false;
    int stopsAt = -1;  ///< the number of the one that is stopped, from 0
};

/// Works on another thread; where it is stopped, work is told so before it begins.
class OtherThread : public Background {
public:
    bool Run(const std::string& text, const Work& work) override {
        texts.push_back(text);
        std::stop_source source;
        if (isStopped)
            source.request_stop();
        std::thread([&] { work(source.get_token()); }).join();
        return !isStopped;
    }
    bool isStopped = false;
    std::vector<std::string> texts;
};

}  // namespace lore
