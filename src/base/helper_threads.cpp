#include "base/helper_threads.h"

#include <system_error>

namespace lore {

std::vector<std::jthread> StartHelpers(size_t count, const std::function<void()>& work) {
    std::vector<std::jthread> helpers;
    try {
        while (helpers.size() < count)
            helpers.emplace_back(work);
    } catch (const std::system_error&) {
        return helpers;
    }
    return helpers;
}

}  // namespace lore
