#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lore {

/// What a fuzzer gives as text.
inline std::string_view InputText(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Tells what is wrong and ends the program, which keeps the input; nothing happens if nothing is wrong.
void StopAt(const std::string& finding);

}  // namespace lore
