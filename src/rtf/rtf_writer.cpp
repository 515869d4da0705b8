#include <algorithm>
#include <array>
#include <vector>

#include "rtf/field.h"
#include "rtf/office_rtf.h"
#include "rtf/rtf.h"
#include "rtf/symbol_font.h"
#include "rtf/write_tables.h"

namespace lore {

namespace {

struct SwitchWord {
    bool CharFormat::*field;
    std::string_view on;
    std::string_view off;
};
constexpr SwitchWord kSwitches[] = {
    {&CharFormat::bold, "b", "b0"},
    {&CharFormat::italic, "i", "i0"},
    {&CharFormat::underline, "ul", "ulnone"},
    {&CharFormat::strike, "strike", "strike0"},
    {&CharFormat::smallCaps, "scaps", "scaps0"},
    {&CharFormat::allCaps, "caps", "caps0"},
};

struct TwipsWord {
    int16_t ParagraphFormat::*field;
    std::string_view name;
};
constexpr TwipsWord kTwipsWords[] = {
    {&ParagraphFormat::firstIndent, "fi"}, {&ParagraphFormat::leftIndent, "li"}, {&ParagraphFormat::rightIndent, "ri"},
    {&ParagraphFormat::spaceBefore, "sb"}, {&ParagraphFormat::spaceAfter, "sa"}, {&ParagraphFormat::lineSpacing, "sl"},
};

constexpr std::string_view kAlignWords[] = {"ql", "qc", "qr", "qj"};
constexpr std::string_view kScriptWords[] = {"nosupersub", "super", "sub"};
constexpr std::string_view kBreakWords[] = {"", "", "page", "column", "sect"};
constexpr std::string_view kPictureWords[] = {"pngblip", "jpegblip", "wmetafile", "emfblip", "dibitmap"};
constexpr std::string_view kOldListWords[] = {"", "", "pndec", "pnlcltr", "pnucltr", "pnlcrm", "pnucrm"};

struct BorderWord {
    CellBorder border;
    std::string_view name;
};
constexpr BorderWord kBorderWords[] = {
    {kBorderTop, "clbrdrt"}, {kBorderLeft, "clbrdrl"}, {kBorderBottom, "clbrdrb"}, {kBorderRight, "clbrdrr"}};

struct MergeWord {
    CellMerge CellFormat::*field;
    CellMerge value;
    std::string_view name;
};
constexpr MergeWord kMergeWords[] = {
    {&CellFormat::across, CellMerge::First, "clmgf"},
    {&CellFormat::across, CellMerge::Continued, "clmrg"},
    {&CellFormat::down, CellMerge::First, "clvmgf"},
    {&CellFormat::down, CellMerge::Continued, "clvmrg"},
};

constexpr uint32_t kNoFormat = 0xFFFFFFFF;

class RtfWriter {
public:
    /// Without a paper it writes the marks of lists that old controls need.
    RtfWriter(const Document& document, const Paper* paper) : document_(document), colors_(document), paper_(paper) {}
    std::string Write();

private:
    void WriteHead();
    void WritePaper();
    void WriteParagraph(size_t index);
    void WriteParagraphFormat(const Paragraph& paragraph);
    void WriteList(const ParagraphFormat& format);
    void WriteEnd(const Paragraph& paragraph);
    void WriteRun(const TextRun& run);
    void WriteText(const TextRun& run);
    void WriteLinked(const TextRun& run);
    void WriteFormat(const CharFormat& format);
    void WritePicture(const Picture& picture);
    void WriteRow(const Paragraph& paragraph);
    void CountCells();
    void WriteCell(const CellFormat& cell);
    void WriteKept(size_t position);
    void ResetFormat();
    const DocumentFont* FontOf(const CharFormat& format) const;
    bool IsWestern(const DocumentFont* font) const;
    int LevelOf(const Paragraph& paragraph) const;

    const Document& document_;
    ColorNumbers colors_;
    const Paper* paper_;
    RtfOutput out_;
    CharFormat now_;
    size_t nextKept_ = 0;
    std::vector<uint32_t> cellCounts_;                                 ///< of each row
    std::array<uint32_t, 2> lastRowFormats_ = {kNoFormat, kNoFormat};  ///< of the outer tables, of those in cells
};

void RtfWriter::CountCells() {
    cellCounts_.resize(document_.rows.size());
    for (const Paragraph& paragraph : document_.paragraphs) {
        if (paragraph.row >= 0 && paragraph.endedBy == ParagraphEnd::Cell)
            ++cellCounts_[static_cast<size_t>(paragraph.row)];
    }
}

std::string RtfWriter::Write() {
    CountCells();
    WriteHead();
    for (size_t i = 0; i < document_.paragraphs.size(); ++i)
        WriteParagraph(i);
    out_.Close();
    out_.NewLine();
    return out_.Take();
}

void RtfWriter::WriteHead() {
    out_.Open();
    out_.Word("rtf", 1);
    out_.Word("ansi");
    out_.Word("ansicpg", document_.codePage);
    if (document_.defaultFont >= 0)
        out_.Word("deff", document_.fonts[static_cast<size_t>(document_.defaultFont)].number);
    out_.Word("uc", 1);
    out_.NewLine();
    WriteFonts(out_, document_);
    colors_.Write(out_);
    WriteLists(out_, document_);
    if (paper_)
        WritePaper();
    ResetFormat();
}

/// Without it office programs take a paper of their own.
void RtfWriter::WritePaper() {
    out_.Word("paperw", paper_->width);
    out_.Word("paperh", paper_->height);
    out_.Word("margl", paper_->left);
    out_.Word("margr", paper_->right);
    out_.Word("margt", paper_->top);
    out_.Word("margb", paper_->bottom);
    if (paper_->IsAcross())
        out_.Word("landscape");
    out_.NewLine();
}

void RtfWriter::ResetFormat() {
    out_.Word("plain");
    now_ = {};
    now_.font = document_.defaultFont;
}

int RtfWriter::LevelOf(const Paragraph& paragraph) const {
    return paragraph.row < 0 ? 0 : document_.rows[static_cast<size_t>(paragraph.row)].level;
}

void RtfWriter::WriteParagraph(size_t index) {
    const Paragraph& paragraph = document_.paragraphs[index];
    WriteKept(paragraph.begin);
    const int level = LevelOf(paragraph);
    if (level == 1 && (index == 0 || document_.paragraphs[index - 1].row != paragraph.row))
        WriteRow(paragraph);
    WriteParagraphFormat(paragraph);
    if (paragraph.format.list != ListKind::None)
        WriteList(paragraph.format);
    for (const TextRun& run : RunsOf(document_, index))
        WriteRun(run);
    WriteKept(paragraph.end);
    WriteEnd(paragraph);
    out_.NewLine();
}

void RtfWriter::WriteParagraphFormat(const Paragraph& paragraph) {
    const ParagraphFormat& format = paragraph.format;
    const int level = LevelOf(paragraph);
    out_.Word("pard");
    if (level > 0)
        out_.Word("intbl");
    if (level > 1)
        out_.Word("itap", level);
    if (format.rightToLeft)
        out_.Word("rtlpar");
    if (format.align != ParagraphAlign::Left)
        out_.Word(kAlignWords[static_cast<size_t>(format.align)]);
    for (const TwipsWord& word : kTwipsWords) {
        if (format.*word.field != 0)
            out_.Word(word.name, format.*word.field);
    }
    if (format.lineMultiple)
        out_.Word("slmult", 1);
}

/// As a list of the table, and once more for readers that know only the older form.
void RtfWriter::WriteList(const ParagraphFormat& format) {
    if (format.listId > 0) {
        out_.Word("ls", format.listId);
        out_.Word("ilvl", format.listLevel);
        if (paper_)
            return;
    }
    out_.Raw("{\\pntext\\tab}{\\*\\pn");
    if (format.list == ListKind::Bullet) {
        out_.Raw("\\pnlvlblt{\\pntxtb\\'b7}}");
        return;
    }
    out_.Word("pnlvlbody");
    out_.Word("pnstart", format.listStart);
    out_.Word(kOldListWords[static_cast<size_t>(format.list)]);
    out_.Raw("{\\pntxta.}}");
}

void RtfWriter::WriteEnd(const Paragraph& paragraph) {
    const bool nested = LevelOf(paragraph) > 1;
    if (paragraph.endedBy == ParagraphEnd::Cell) {
        out_.Word(nested ? "nestcell" : "cell");
    } else if (paragraph.endedBy != ParagraphEnd::Row) {
        out_.Word("par");
    } else if (!nested) {
        out_.Word("row");
    } else {
        out_.Open();
        out_.Starred("nesttableprops");
        WriteRow(paragraph);
        out_.Word("nestrow");
        out_.Raw("}{\\nonesttables\\par}");
    }
}

void RtfWriter::WriteKept(size_t position) {
    for (; nextKept_ < document_.kept.size() && document_.kept[nextKept_].position <= position; ++nextKept_)
        out_.Raw(document_.kept[nextKept_].rtf);
}

void RtfWriter::WriteRun(const TextRun& run) {
    WriteKept(run.begin);
    if (run.format.link >= 0) {
        WriteLinked(run);
        return;
    }
    WriteFormat(run.format);
    if (run.kind == RunKind::Text)
        WriteText(run);
    else if (run.kind == RunKind::Picture)
        WritePicture(document_.pictures[static_cast<size_t>(run.picture)]);
    else
        out_.Word(kBreakWords[static_cast<size_t>(run.kind)]);
}

void RtfWriter::WriteText(const TextRun& run) {
    const DocumentFont* const font = FontOf(run.format);
    const bool western = IsWestern(font), ofSymbols = font != nullptr && IsSymbolFont(*font);
    uint32_t at = run.begin;
    while (at < run.end) {
        WriteKept(at);
        const uint32_t stop =
            nextKept_ < document_.kept.size() ? std::min(run.end, document_.kept[nextKept_].position) : run.end;
        const std::string_view text = std::string_view(document_.text).substr(at, stop - at);
        ofSymbols ? out_.Symbols(text, font->name) : out_.Text(text, western);
        at = stop;
    }
}

void RtfWriter::WriteLinked(const TextRun& run) {
    const CharFormat before = now_;
    TextRun plain = run;
    plain.format.link = -1;
    out_.Raw("{\\field{\\*\\fldinst{");
    out_.Text(LinkInstruction(document_.links[static_cast<size_t>(run.format.link)]));
    out_.Raw("}}{\\fldrslt{");
    WriteRun(plain);
    out_.Raw("}}}");
    now_ = before;
}

const DocumentFont* RtfWriter::FontOf(const CharFormat& format) const {
    const int32_t font = format.font < 0 ? document_.defaultFont : format.font;
    return font < 0 ? nullptr : &document_.fonts[static_cast<size_t>(font)];
}

bool RtfWriter::IsWestern(const DocumentFont* font) const {
    return document_.codePage == 1252 && (font == nullptr || font->charset == 0 || font->charset == 1);
}

void RtfWriter::WriteFormat(const CharFormat& format) {
    if (format.font < 0 && now_.font >= 0)
        ResetFormat();
    for (const SwitchWord& word : kSwitches) {
        if (format.*word.field != now_.*word.field)
            out_.Word(format.*word.field ? word.on : word.off);
    }
    if (format.position != now_.position)
        out_.Word(kScriptWords[static_cast<size_t>(format.position)]);
    if (format.font != now_.font && format.font >= 0)
        out_.Word("f", document_.fonts[static_cast<size_t>(format.font)].number);
    if (format.halfPoints != now_.halfPoints)
        out_.Word("fs", format.halfPoints);
    if (format.color != now_.color)
        out_.Word("cf", colors_.NumberOf(format.color));
    if (format.background != now_.background) {
        for (std::string_view name : {"chcbpat", "cb", "highlight"})
            out_.Word(name, colors_.NumberOf(format.background));
    }
    now_ = format;
}

void RtfWriter::WritePicture(const Picture& picture) {
    if (!picture.object.empty()) {
        out_.Raw(picture.object);
        return;
    }
    out_.Open();
    out_.Word("pict");
    if (picture.kind == PictureKind::Wmf || picture.kind == PictureKind::Dib)
        out_.Word(kPictureWords[static_cast<size_t>(picture.kind)],
                  picture.kind == PictureKind::Wmf ? picture.mapMode : 0);
    else
        out_.Word(kPictureWords[static_cast<size_t>(picture.kind)]);
    out_.Word("picw", picture.width);
    out_.Word("pich", picture.height);
    out_.Word("picwgoal", picture.goalWidth);
    out_.Word("pichgoal", picture.goalHeight);
    out_.Word("picscalex", picture.scaleX);
    out_.Word("picscaley", picture.scaleY);
    out_.Hex(picture.bytes);
    out_.Close();
    out_.NewLine();
}

/// A row with fewer cells than its format has is damaged; repeating the format for each could fill the memory.
void RtfWriter::WriteRow(const Paragraph& paragraph) {
    const auto index = static_cast<size_t>(paragraph.row);
    const uint32_t format = document_.rows[index].format;
    const RowFormat& row = document_.rowFormats[format];
    uint32_t& last = lastRowFormats_[LevelOf(paragraph) > 1 ? 1 : 0];
    if (last == format && cellCounts_[index] < row.cells.size())
        return;
    last = format;
    out_.Word("trowd");
    out_.Word("trgaph", row.cellGap);
    out_.Word("trleft", row.leftEdge);
    for (const CellFormat& cell : row.cells)
        WriteCell(cell);
    out_.NewLine();
}

void RtfWriter::WriteCell(const CellFormat& cell) {
    for (const MergeWord& word : kMergeWords) {
        if (cell.*word.field == word.value)
            out_.Word(word.name);
    }
    for (const BorderWord& word : kBorderWords) {
        if ((cell.borders & word.border) != 0) {
            out_.Word(word.name);
            out_.Word("brdrs");
            out_.Word("brdrw", 10);
        }
    }
    if (cell.background)
        out_.Word("clcbpat", colors_.NumberOf(cell.background));
    out_.Word("cellx", cell.rightEdge);
}

}  // namespace

std::string WriteRtf(const Document& document) {
    return RtfWriter(document, nullptr).Write();
}

std::string WriteOfficeRtf(const Document& document, const Paper& paper) {
    return RtfWriter(document, &paper).Write();
}

}  // namespace lore
