#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "base/text.h"

namespace lore {

using SampleJson = nlohmann::ordered_json;

/// Null for a text that isn't JSON.
inline SampleJson ParseSampleJson(std::string_view text) {
    return SampleJson::parse(text, nullptr, false);
}

/// The array of a key; empty if it holds anything else.
inline SampleJson ArrayOf(const SampleJson& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_array() ? *found : SampleJson::array();
}

/// A text as the records hold it.
inline std::string TextOf(const SampleJson& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_string() ? FromUtf8(found->get_ref<const std::string&>()) : std::string();
}

inline int32_t NumberOf(const SampleJson& json, const char* key, int32_t fallback = 0) {
    const auto found = json.find(key);
    return found != json.end() && found->is_number_integer() ? found->get<int32_t>() : fallback;
}

}  // namespace lore
