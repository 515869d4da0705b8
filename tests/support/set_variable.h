#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace lore {

/// A variable of the environment has this value, or none, as long as one lives.
class SetVariable {
public:
    explicit SetVariable(const char* name, const std::optional<std::string>& value = std::nullopt) : name_(name) {
        if (const char* const before = std::getenv(name))
            before_ = before;
        Put(value);
    }
    ~SetVariable() { Put(before_); }
    SetVariable(const SetVariable&) = delete;
    SetVariable& operator=(const SetVariable&) = delete;

private:
    void Put(const std::optional<std::string>& value) const {
        value ? ::setenv(name_, value->c_str(), 1) : ::unsetenv(name_);
        ::tzset();  // The time zone may be the one.
    }

    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace lore
