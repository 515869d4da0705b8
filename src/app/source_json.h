#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "bibliography/author.h"
#include "bibliography/source.h"
#include "ports/read_context.h"

namespace lore {

using SourceJson = nlohmann::ordered_json;

/// Is told of each value that is left out.
using TellLeftOut = std::function<void(const std::string&)>;

// Records from JSON objects whose keys are the names of their fields. A missing field has its default, and a number
// stands for its text. A value of another type is left out, and told with the name of the record; so is the number of
// an author that isn't whole, or is beyond 32 bits.

CAuthor AuthorOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell);
CCustomSourceType TypeOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell);
CSource SourceOfJson(const SourceJson& json, std::string name, const TellLeftOut& tell, const ReadContext& context);

}  // namespace lore
