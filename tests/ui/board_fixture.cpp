#include "ui/board_fixture.h"

#include <QtTest>
#include <QtWidgets>

#include "notes/attachment_kind.h"
#include "rtf/rtf.h"
#include "support/read_world.h"
#include "ui/command_reach.h"
#include "ui/look/theme.h"
#include "ui/tab_walk.h"
#include "ui/window_rules.h"

namespace lore {
namespace {

std::string Text(const char* name) {
    return BytesOf(std::filesystem::path(LORE_TEST_DATA) / "board" / name);
}

CSource Source(int32_t id, const std::string& text, size_t begin, size_t end, int32_t kind) {
    CSource source;
    source.SourceID = id;
    source.SourceGUID = "{" + std::to_string(id) + "}";
    source.FormattedText = text;
    source.SpanStarts = {static_cast<int32_t>(begin)};
    source.SpanEnds = {static_cast<int32_t>(end)};
    source.SpanKinds = {kind};
    return source;
}

}  // namespace

int MemoryBoard::RowOf(int32_t noteId) const {
    for (size_t i = 0; i < notes.size(); ++i)
        if (notes[i].id == noteId)
            return static_cast<int>(i);
    return -1;
}

std::vector<const CSource*> MemoryBoard::SourcesOf(const CNote& note) const {
    std::vector<const CSource*> found;
    for (size_t i = 0; i < note.sources.Count(); ++i)
        if (const auto source = sources.find(note.sources[i]); source != sources.end())
            found.push_back(&source->second);
    return found;
}

std::string MemoryBoard::SourceRemark(const CNote& note, const CSource& source) const {
    const CNoteSourceInfo* info = FindSourceInfo(note.sourceInfo, source.SourceGUID);
    return info ? info->text : std::string();
}

std::filesystem::path MemoryBoard::AttachmentPath(const CAttachment& attachment) const {
    return attachment.type == kWebLink ? std::filesystem::path()
                                       : std::filesystem::path(folder_.path().toStdString()) / attachment.storedFile;
}

CNote& MemoryBoard::AddText(const std::string& plainText) {
    CNote note;
    note.id = Count() + 1;
    note.plainText = plainText;
    notes.push_back(std::move(note));
    return notes.back();
}

CNote& MemoryBoard::AddRtf(const std::string& rtf) {
    CNote& note = AddText(PlainText(rtf));
    note.rtfText = rtf;
    return note;
}

CAttachment& MemoryBoard::Attach(CNote& note, const std::string& title, int32_t type, const std::string& storedFile) {
    CAttachment& attachment = note.attachments.emplace_back();
    attachment.title = title;
    attachment.type = type;
    attachment.storedFile = storedFile;
    return attachment;
}

void MemoryBoard::AttachPicture(CNote& note, const std::string& title, int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, height);
    sky.setColorAt(0, QColor(90, 140, 190));
    sky.setColorAt(1, QColor(240, 220, 180));
    painter.fillRect(image.rect(), sky);
    painter.fillRect(width / 2 - width / 30, height / 4, width / 15, height * 3 / 4, Qt::white);
    painter.fillRect(width / 2 - width / 30, height / 2, width / 15, height / 8, QColor(190, 40, 40));
    const std::string name = std::to_string(++files_) + ".png";
    image.save(folder_.filePath(QString::fromStdString(name)));
    Attach(note, title, kImageFile, name);
}

void MemoryBoard::AttachFile(CNote& note, const std::string& title, int32_t type, int bytes) {
    const std::string name = std::to_string(++files_) + ".bin";
    PutBytes(folder_.path().toStdString() + "/" + name, std::string(static_cast<size_t>(bytes), 'x'));
    Attach(note, title, type, name);
}

CProCategoryTree PathOf(const std::vector<std::string>& names) {
    CProCategoryTree path;
    for (size_t i = names.size(); i-- > 0;) {
        CProCategoryTree node;
        node.id = static_cast<int32_t>(i) + 10;
        node.name = names[i];
        if (i + 1 < names.size())
            node.children.push_back(std::move(path));
        path = std::move(node);
    }
    return path;
}

void FillSampleBoard(MemoryBoard& board) {
    board.notes.reserve(32);
    board.sources[1] = Source(
        1, "Smeaton, J. A narrative of the building of the Edystone lighthouse. London: Nicol, 1791.", 13, 66, 1);
    board.sources[2] =
        Source(2, "Stevenson, A. \"On lighthouse lamps.\" Journal of the Lights 12.3 (1848): 101-117.", 38, 59, 3);

    CNote& formatted = board.AddRtf(Text("formatted.rtf"));
    formatted.categories[0] = PathOf({"Lighthouses", "England", "Eddystone"});
    formatted.categories[1] = PathOf({"Chapter 2"});
    formatted.categories[2] = PathOf({"To check"});
    formatted.keyWords = "timber, candles, storm, reef";
    formatted.sources = {1, 2};
    formatted.sourceInfo = {{"{1}", "p. 42"}};
    formatted.borderColor = MakeRgb(200, 60, 20);
    formatted.newlyAdded = true;

    CNote& files = board.AddText("A picture, files of several kinds, and a link.");
    board.AttachPicture(files, "The tower at dusk", 420, 240);
    board.AttachFile(files, "Letter of the keeper.docx", kDocumentFile, 24000);
    board.AttachFile(files, "A file with a name that is much too long for the room that a tile has.xlsx",
                     kSpreadsheetFile, 1250000);
    board.AttachFile(files, "Waves.mp3", kMusicFile, 3000);
    board.Attach(files, "List of lights", kWebLink).sourceFile = "https://example.org/lights/list?country=england";
    board.Attach(files, "Gone.pdf", kPdfFile, "gone.pdf");
    files.borderColor = MakeRgb(255, 220, 0);

    board.AddRtf(Text("table.rtf")).borderColor = MakeRgb(20, 80, 200);
    CNote& languages = board.AddText(Text("languages.txt"));
    languages.categories[0] =
        PathOf({"\u05de\u05d2\u05d3\u05dc\u05d5\u05e8\u05d9\u05dd", "\u706f\u53f0", "\u041c\u0430\u044f\u043a"});
    languages.keyWords = "\u0645\u0646\u0627\u0631\u0629, \u706f\u53f0, ph\u00e1ros";
    languages.borderColor = MakeRgb(0, 128, 0);

    CNote& deep = board.AddText("Deep categories and many key words.");
    std::vector<std::string> names;
    for (int level = 1; level <= 5; ++level)
        names.push_back("A category with a rather long name on level " + std::to_string(level));
    deep.categories[1] = PathOf(names);
    for (int i = 1; i < 40; ++i)
        deep.keyWords += "key word " + std::to_string(i) + ", ";
    board.AddText("");
    board.AddText("Last one.").sources = {2};
}

void TakeShot(QWidget& window, const QString& name) {
    const QString folder = qEnvironmentVariable("LORE_SHOTS_DIR", QStringLiteral(LORE_SHOTS));
    QDir().mkpath(folder);
    window.window()->show();
    QCoreApplication::processEvents();  // a change of palette reaches the windows with the next events
    const int percent = qRound(window.devicePixelRatioF() * 100);
    window.grab().save(QStringLiteral("%1/%2-%3.png").arg(folder, name).arg(percent));
    const QStringList faults = FaultsOfWindow(window) + FaultsOfTabWalk(window) + FaultsOfCommands(window);
    for (const QString& fault : faults)
        qWarning("%s", qPrintable(fault));  // a message of a check is cut
    QVERIFY2(faults.isEmpty(), qPrintable(name + ":\n" + faults.join('\n')));
}

void BothLooks::Shoot(QWidget& window, const QString& name) const {
    std::map<const QObject*, QImage> dark;
    for (const auto& [appearance, look] : {std::pair(Appearance::Dark, "-dark"), {Appearance::Light, "-light"}}) {
        theme.SetAppearance(appearance);
        QTest::qWait(50);  // time to paint
        TakeShot(window, name + look);
        // All but the colors that a text can get differ on light and on dark ground.
        for (const QObject* const shown : window.findChildren<QObject*>()) {
            const QImage icon = shown->property("icon").value<QIcon>().pixmap(kSpace * 4).toImage();
            if (icon.isNull() || shown->parent()->inherits("lore::ColorMenu") || dark.try_emplace(shown, icon).second)
                continue;
            QVERIFY2(dark[shown] != icon, qPrintable(name + ", the icon of " + shown->property("text").toString()));
        }
    }
}

}  // namespace lore
