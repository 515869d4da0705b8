#include "edit/unknown_sources.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "base/text.h"

namespace lore {

void UnknownSources::PutBack(CNote& note) const {
    LongList sources;
    if (isFirstMain)
        sources.AddTail(ids[0]);
    sources.Merge(note.sources);
    sources.Merge(ids);
    note.sources = std::move(sources);
    for (const CNoteSourceInfo& entry : info) {
        if (!FindSourceInfo(note.sourceInfo, entry.key))
            note.sourceInfo.push_back(entry);
    }
}

UnknownSources FindUnknownSources(const CNote& note, const SourceList& sources) {
    UnknownSources unknown;
    if (sources.ReadWhole())
        return unknown;
    for (const int32_t id : note.sources) {
        if (id > 0 && !sources.FindSourceByID(id))
            unknown.ids.AddUnique(id);
    }
    if (unknown.ids.IsEmpty())
        return unknown;
    unknown.isFirstMain = note.sources[0] == unknown.ids[0];
    // Information names its source by the GUID: what no source of the list owns may belong to one of them.
    const auto isOwned = [&](const CNoteSourceInfo& entry) {
        return std::any_of(sources.begin(), sources.end(),
                           [&](const CSource& source) { return EqualNoCase(source.SourceGUID, entry.key); });
    };
    std::copy_if(note.sourceInfo.begin(), note.sourceInfo.end(), std::back_inserter(unknown.info),
                 std::not_fn(isOwned));
    return unknown;
}

}  // namespace lore
