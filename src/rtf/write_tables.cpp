#include "rtf/write_tables.h"

#include <algorithm>

#include "rtf/list_tables.h"

namespace lore {

namespace {

struct LevelInUse {
    ListKind kind = ListKind::None;
    int16_t start = 1;
};
using LevelsInUse = std::array<LevelInUse, ListTables::kLevels>;

std::map<int32_t, LevelsInUse> ListsInUse(const Document& document) {
    std::map<int32_t, LevelsInUse> lists;
    for (const Paragraph& paragraph : document.paragraphs) {
        const ParagraphFormat& format = paragraph.format;
        if (format.list == ListKind::None || format.listId <= 0)
            continue;
        LevelInUse& level = lists[format.listId][std::min<size_t>(format.listLevel, ListTables::kLevels - 1)];
        if (level.kind == ListKind::None)
            level = {format.list, format.listStart};
    }
    return lists;
}

/// The text in front of an item: its length in characters first, then a bullet, or the number and a point.
void WriteLevelText(RtfOutput& out, ListKind kind, size_t level) {
    out.Open();
    out.Word("leveltext");
    if (kind == ListKind::Bullet)
        out.Raw("\\'01\\u8226 ?;}{\\levelnumbers;}");
    else
        out.Raw("\\'02\\'0" + std::to_string(level) + ".;}{\\levelnumbers\\'01;}");
}

void WriteLevel(RtfOutput& out, const LevelInUse& level, ListKind kind, size_t number) {
    out.Open();
    out.Word("listlevel");
    out.Word("levelnfc", LevelKindNumber(kind));
    out.Word("levelnfcn", LevelKindNumber(kind));
    out.Word("leveljc", 0);
    out.Word("levelfollow", 0);
    out.Word("levelstartat", level.start);
    WriteLevelText(out, kind, number);
    out.Close();
}

void WriteList(RtfOutput& out, int32_t id, const LevelsInUse& levels) {
    out.Open();
    out.Word("list");
    out.Word("listtemplateid", id);
    const auto used = std::find_if(levels.begin(), levels.end(),
                                   [](const LevelInUse& level) { return level.kind != ListKind::None; });
    for (size_t i = 0; i < levels.size(); ++i)
        WriteLevel(out, levels[i], levels[i].kind == ListKind::None ? used->kind : levels[i].kind, i);
    out.Word("listid", id);
    out.Close();
    out.NewLine();
}

}  // namespace

ColorNumbers::ColorNumbers(const Document& document) {
    for (const TextRun& run : document.runs) {
        Add(run.format.color);
        Add(run.format.background);
    }
    for (const RowFormat& row : document.rowFormats) {
        for (const CellFormat& cell : row.cells)
            Add(cell.background);
    }
}

void ColorNumbers::Add(const std::optional<TextColor>& color) {
    if (!color)
        return;
    if (numbers_.emplace(*color, static_cast<int32_t>(colors_.size() + 1)).second)
        colors_.push_back(*color);
}

int32_t ColorNumbers::NumberOf(const std::optional<TextColor>& color) const {
    const auto found = color ? numbers_.find(*color) : numbers_.end();
    return found == numbers_.end() ? 0 : found->second;
}

void ColorNumbers::Write(RtfOutput& out) const {
    if (colors_.empty())
        return;
    out.Open();
    out.Word("colortbl");
    out.Raw(";");
    for (const TextColor& color : colors_) {
        out.Word("red", color.red);
        out.Word("green", color.green);
        out.Word("blue", color.blue);
        out.Raw(";");
    }
    out.Close();
    out.NewLine();
}

void WriteFonts(RtfOutput& out, const Document& document) {
    if (document.fonts.empty())
        return;
    out.Open();
    out.Word("fonttbl");
    for (const DocumentFont& font : document.fonts) {
        out.Open();
        out.Word("f", font.number);
        out.Word("fnil");
        out.Word("fcharset", font.charset);
        out.Text(CleanFontName(font.name) + ";");
        out.Close();
    }
    out.Close();
    out.NewLine();
}

void WriteLists(RtfOutput& out, const Document& document) {
    const std::map<int32_t, LevelsInUse> lists = ListsInUse(document);
    if (lists.empty())
        return;
    out.Open();
    out.Starred("listtable");
    out.NewLine();
    for (const auto& [id, levels] : lists)
        WriteList(out, id, levels);
    out.Close();
    out.NewLine();
    out.Open();
    out.Starred("listoverridetable");
    for (const auto& [id, levels] : lists) {
        out.Open();
        out.Word("listoverride");
        out.Word("listid", id);
        out.Word("listoverridecount", 0);
        out.Word("ls", id);
        out.Close();
    }
    out.Close();
    out.NewLine();
}

}  // namespace lore
