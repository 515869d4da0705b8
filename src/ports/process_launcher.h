#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lore {

/// Why a companion can't be started that isn't there.
inline constexpr char kNotInstalled[] = "it isn't installed beside Lorebinder";

/// Starts the companion programs that lie beside this one.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;
    /// Starts a companion by its file name and goes on at once: neither its end nor its result is waited for. It finds
    /// the data folder and the settings of this process. Gives the system's reason if it could not be started.
    virtual std::optional<std::string> StartCompanion(const std::string& name,
                                                      const std::vector<std::string>& arguments) = 0;
};

}  // namespace lore
