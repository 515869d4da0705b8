#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bibliography/author_list.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/source_list.h"
#include "ports/read_context.h"

namespace lore {

/// The lists of the sample, ready for its NoteBook.
struct SampleSources {
    AuthorList authors;
    CustomTypeList types;
    SourceList sources;
    std::unordered_map<std::string, int32_t> idByKey;  ///< SourceID by what the notes call a source
    std::vector<std::string> leftOut;                  ///< what is wrong with values that could not be taken

    /// The source of a key, or null.
    const CSource* Find(const std::string& key) const;
};

/// Authors and sources from `{"authors":[...],"sources":[...]}`, types from `{"types":[...]}`, both with the records'
/// field names. Everything gets a new GUID; authors are numbered after the last id given out, which is raised, sources
/// from 1011. Texts that aren't of this form give empty lists.
SampleSources ReadSampleSources(std::string_view sourcesJson, std::string_view typesJson, const ReadContext& context,
                                int& maxAuthorID);

}  // namespace lore
