#pragma once

#include <filesystem>

#include "edit/draft_store.h"

namespace lore {

/// False unless the file was read and is whole.
inline bool ReadsDraft(const std::filesystem::path& path, const ReadContext& context, Draft& draft) {
    Loaded<Draft> loaded = DraftStore::ReadDraft(path, context);
    draft = std::move(loaded.value);
    return loaded.ReadWhole();
}

}  // namespace lore
