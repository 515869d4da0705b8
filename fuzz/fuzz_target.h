#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lore {

/// What a fuzzer gives as text.
inline std::string_view InputText(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Whether an input gets the slow checks as well, those that write what was read and read it again: all of them, or one
/// of LORE_FUZZ_SLOW_ONE_OF by its bytes, so that an input that was kept gets the same checks each time.
bool GetsSlowChecks(std::string_view input);

/// Tells what is wrong and ends the program, which keeps the input; nothing happens if nothing is wrong.
void StopAt(const std::string& finding);

}  // namespace lore
