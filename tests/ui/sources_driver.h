#pragma once

#include "ui/sources/source_list_model.h"
#include "ui/sources/sources_list_wnd.h"
#include "ui/sources/view_sources_dlg.h"

namespace lore {

/// The row of a source in the browser; -1 if it isn't shown.
inline int RowOf(const CViewSourcesDlg& browser, int32_t sourceId) {
    const auto& model = static_cast<const SourceListModel&>(*browser.List()->model());
    for (int row = 0; row < model.rowCount(); ++row)
        if (model.At(row).SourceID == sourceId)
            return row;
    return -1;
}

}  // namespace lore
