#pragma once

#include <QTextBlock>
#include <QTextBlockUserData>
#include <QTextLayout>
#include <memory>
#include <vector>

#include "ui/editor/captured_note.h"

namespace lore {

/// A word of a paragraph that the spell checker doesn't know, in positions of the paragraph.
struct SpellMark {
    int begin = 0;
    int length = 0;
    bool operator==(const SpellMark&) const = default;
};

/// What the editor remembers of a paragraph until it changes.
class NoteBlockData : public QTextBlockUserData {
public:
    std::shared_ptr<const CapturedBlock> captured;  ///< null when it has to be converted again
    std::vector<SpellMark> marks;
    QList<QTextLayout::FormatRange> colors;  ///< see ColorsOver
    bool checked = false;                    ///< `marks` is up to date

    /// The data of a block, made when there are none. Blocks of the editor have no other kind.
    static NoteBlockData& Of(QTextBlock block) {
        if (!block.userData())
            block.setUserData(new NoteBlockData);
        return *static_cast<NoteBlockData*>(block.userData());
    }
};

}  // namespace lore
