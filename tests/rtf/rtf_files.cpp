#include "rtf/rtf_files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "support/data_files.h"

namespace lore {
namespace {

constexpr std::string_view kAligns[] = {"left", "center", "right", "justify"};
constexpr std::string_view kLists[] = {"", "bullet", "decimal", "letter", "Letter", "roman", "Roman"};
constexpr std::string_view kEnds[] = {"paragraph", "cell", "row", "document"};
constexpr std::string_view kKinds[] = {"text", "picture", "page", "column", "section"};
constexpr std::string_view kPictures[] = {"png", "jpeg", "wmf", "emf", "dib"};

void PutColor(std::ostream& out, std::string_view name, const std::optional<TextColor>& color) {
    if (color)
        out << ' ' << name << '=' << int{color->red} << ',' << int{color->green} << ',' << int{color->blue};
}

template <typename Value>
void PutUnless(std::ostream& out, std::string_view name, Value value, Value usual) {
    if (value != usual)
        out << ' ' << name << '=' << value;
}

void PutParagraph(std::ostream& out, const Paragraph& paragraph) {
    const ParagraphFormat& format = paragraph.format;
    out << "paragraph " << paragraph.begin << '-' << paragraph.end << " by "
        << kEnds[static_cast<size_t>(paragraph.ended_by)];
    if (paragraph.row >= 0)
        out << " row=" << paragraph.row << " cell=" << paragraph.cell;
    out << ' ' << kAligns[static_cast<size_t>(format.align)] << (format.right_to_left ? " rtl" : "");
    if (format.list != ListKind::kNone)
        out << " list=" << kLists[static_cast<size_t>(format.list)] << '/' << format.list_id << '/'
            << int{format.list_level} << '/' << format.list_start;
    const std::pair<std::string_view, int> lengths[] = {{"left", format.left_indent},   {"right", format.right_indent},
                                                        {"first", format.first_indent}, {"before", format.space_before},
                                                        {"after", format.space_after},  {"line", format.line_spacing}};
    for (const auto& [name, value] : lengths)
        PutUnless(out, name, value, 0);
    out << (format.line_multiple ? " multiple" : "") << '\n';
}

void PutRun(std::ostream& out, const Document& document, const TextRun& run) {
    const CharFormat& format = run.format;
    out << "  " << kKinds[static_cast<size_t>(run.kind)] << ' ' << run.begin << '-' << run.end;
    using Case = std::pair<std::string_view, bool>;
    for (const auto& [name, set] :
         {Case{"bold", format.bold}, Case{"italic", format.italic}, Case{"underline", format.underline},
          Case{"strike", format.strike}, Case{"small-caps", format.small_caps}, Case{"all-caps", format.all_caps},
          Case{"super", format.position == ScriptPosition::kSuperscript},
          Case{"sub", format.position == ScriptPosition::kSubscript}})
        out << (set ? " " : "") << (set ? name : "");
    PutUnless(out, "size", int{format.half_points}, 24);
    if (format.font >= 0)
        out << " font=" << document.fonts[static_cast<size_t>(format.font)].name;
    if (format.link >= 0)
        out << " link=" << document.links[static_cast<size_t>(format.link)];
    PutColor(out, "color", format.color);
    PutColor(out, "background", format.background);
    PutUnless(out, "picture", run.picture, -1);
    out << '\n';
}

void PutRow(std::ostream& out, const Document& document, const TableRow& row) {
    const RowFormat& format = document.row_formats[row.format];
    out << "row level=" << int{row.level} << " left=" << format.left_edge << " gap=" << format.cell_gap << " cells";
    for (const CellFormat& cell : format.cells) {
        out << ' ' << cell.right_edge << '/' << int{cell.borders} << '/' << static_cast<int>(cell.across) << '/'
            << static_cast<int>(cell.down);
        PutColor(out, "background", cell.background);
    }
    out << '\n';
}

}  // namespace

std::vector<std::filesystem::path> RtfFiles() {
    return FilesIn(std::filesystem::path(LORE_TEST_DATA) / "rtf", ".rtf");
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Expected(const std::filesystem::path& path, const std::string& actual) {
    std::string expected = ReadBytes(path);
    if (expected != actual && std::getenv("LORE_REFRESH_EXPECTED"))
        std::ofstream(path, std::ios::binary) << actual;
    return expected;
}

std::string Describe(const Document& document) {
    std::ostringstream out;
    for (size_t i = 0; i < document.paragraphs.size(); ++i) {
        PutParagraph(out, document.paragraphs[i]);
        for (const TextRun& run : RunsOf(document, i))
            PutRun(out, document, run);
    }
    for (const TableRow& row : document.rows)
        PutRow(out, document, row);
    for (const Picture& picture : document.pictures)
        out << "picture " << kPictures[static_cast<size_t>(picture.kind)] << " bytes=" << picture.bytes.size()
            << " size=" << picture.width << 'x' << picture.height << " goal=" << picture.goal_width << 'x'
            << picture.goal_height << " scale=" << picture.scale_x << 'x' << picture.scale_y
            << (picture.object.empty() ? "" : " object") << '\n';
    for (const KeptGroup& kept : document.kept)
        out << "kept " << kept.position << ' ' << kept.rtf.substr(0, 20) << '\n';
    return out.str();
}

}  // namespace lore
