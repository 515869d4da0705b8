#pragma once

#include <QTextBlock>
#include <QTextFragment>
#include <algorithm>

namespace lore {

/// Calls `use` with each fragment of a paragraph that reaches into the stretch of the document, and where its part in
/// there begins and ends.
template <typename Use>
void ForEachFragment(const QTextBlock& block, int from, int to, Use use) {
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const int begin = std::max(from, fragment.position());
        const int end = std::min(to, fragment.position() + fragment.length());
        if (begin < end)
            use(fragment, begin, end);
    }
}

}  // namespace lore
