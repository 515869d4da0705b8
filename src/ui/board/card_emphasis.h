#pragma once

#include <QList>
#include <QTextLayout>

#include "bibliography/source.h"

namespace lore {

/// The emphasis of a citation as it stands, wrapped or not, for a layout of its text.
QList<QTextLayout::FormatRange> CitationEmphasis(const CSource& source);

}  // namespace lore
