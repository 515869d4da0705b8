#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPdfWriter>
#include <QTextDocument>
#include <cstdio>
#include <string>

#include "base/file_io.h"

// lorebinder-pdf IN.html OUT.pdf: a page of HTML as a PDF file for A4 paper, its fonts embedded, its links alive, pages
// numbered. Ends with 0, with 1 if a file can't be read or written, with 2 for wrong arguments.

namespace {

constexpr int kDotsPerInch = 1200;
constexpr qreal kTextPoints = 11;

std::string MakePdf(const std::string& html) {
    QTextDocument document;
    document.setMetaInformation(QTextDocument::CssMedia, "print");
    document.setDefaultFont(QFont("Liberation Serif", -1));
    QFont font = document.defaultFont();
    font.setPointSizeF(kTextPoints);
    document.setDefaultFont(font);
    document.setHtml(QString::fromStdString(html));

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(kDotsPerInch);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF());  // the document keeps its own, 2 cm on each side
        writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
        writer.setCreator("Lorebinder");
        document.print(&writer);
    }
    return buffer.data().toStdString();
}

bool Told(const lore::FileResult& result, const char* what, const char* path) {
    if (!result.Ok())
        std::fprintf(stderr, "lorebinder-pdf: %s: %s: %s\n", what, path, result.Reason().c_str());
    return !result.Ok();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: lorebinder-pdf IN.html OUT.pdf\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    std::string html;
    if (Told(lore::ReadFile(argv[1], html), "the page could not be read", argv[1]))
        return 1;
    if (Told(lore::WriteFileAtomically(argv[2], MakePdf(html)), "the PDF file could not be written", argv[2]))
        return 1;
    return 0;
}
