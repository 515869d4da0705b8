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
        << kEnds[static_cast<size_t>(paragraph.endedBy)];
    if (paragraph.row >= 0)
        out << " row=" << paragraph.row << " cell=" << paragraph.cell;
    out << ' ' << kAligns[static_cast<size_t>(format.align)] << (format.rightToLeft ? " rtl" : "");
    if (format.list != ListKind::None)
        out << " list=" << kLists[static_cast<size_t>(format.list)] << '/' << format.listId << '/'
            << int{format.listLevel} << '/' << format.listStart;
    const std::pair<std::string_view, int> lengths[] = {{"left", format.leftIndent},   {"right", format.rightIndent},
                                                        {"first", format.firstIndent}, {"before", format.spaceBefore},
                                                        {"after", format.spaceAfter},  {"line", format.lineSpacing}};
    for (const auto& [name, value] : lengths)
        PutUnless(out, name, value, 0);
    out << (format.lineMultiple ? " multiple" : "") << '\n';
}

void PutRun(std::ostream& out, const Document& document, const TextRun& run) {
    const CharFormat& format = run.format;
    out << "  " << kKinds[static_cast<size_t>(run.kind)] << ' ' << run.begin << '-' << run.end;
    using Case = std::pair<std::string_view, bool>;
    for (const auto& [name, set] :
         {Case{"bold", format.bold}, Case{"italic", format.italic}, Case{"underline", format.underline},
          Case{"strike", format.strike}, Case{"small-caps", format.smallCaps}, Case{"all-caps", format.allCaps},
          Case{"super", format.position == ScriptPosition::Superscript},
          Case{"sub", format.position == ScriptPosition::Subscript}})
        out << (set ? " " : "") << (set ? name : "");
    PutUnless(out, "size", int{format.halfPoints}, 24);
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
    const RowFormat& format = document.rowFormats[row.format];
    out << "row level=" << int{row.level} << " left=" << format.leftEdge << " gap=" << format.cellGap << " cells";
    for (const CellFormat& cell : format.cells) {
        out << ' ' << cell.rightEdge << '/' << int{cell.borders} << '/' << static_cast<int>(cell.across) << '/'
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
            << " size=" << picture.width << 'x' << picture.height << " goal=" << picture.goalWidth << 'x'
            << picture.goalHeight << " scale=" << picture.scaleX << 'x' << picture.scaleY
            << (picture.object.empty() ? "" : " object") << '\n';
    for (const KeptGroup& kept : document.kept)
        out << "kept " << kept.position << ' ' << kept.rtf.substr(0, 20) << '\n';
    return out.str();
}

}  // namespace lore
