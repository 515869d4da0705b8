#include <QGuiApplication>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/file_io.h"
#include "platform/pdf/paged_text.h"

// lorebinder-pdf IN.html OUT.pdf: a page of HTML as a PDF file for A4 paper, its fonts embedded, its links alive, pages
// numbered. Ends with 0, with 1 if a file can't be read or written, with 2 for wrong arguments.

namespace {

bool Told(const lore::FileResult& result, const char* what, const char* path) {
    if (!result.Ok())
        std::fprintf(stderr, "lorebinder-pdf: %s: %s: %s\n", what, path, result.Reason().c_str());
    return !result.Ok();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        const bool asked = argc == 2 && std::strcmp(argv[1], "--help") == 0;
        std::fprintf(asked ? stdout : stderr, "usage: lorebinder-pdf IN.html OUT.pdf\n");
        return asked ? 0 : 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false");  // no words about a desktop session that isn't needed
    const QGuiApplication application(argc, argv);
    std::string html;
    if (Told(lore::ReadFile(argv[1], html), "the page could not be read", argv[1]))
        return 1;
    const QPageLayout paper = lore::StandardPaper();
    const lore::PagedText text(QString::fromStdString(html), paper);
    if (Told(lore::WriteFileAtomically(argv[2], lore::MakePdf(text, paper)), "the PDF file could not be written",
             argv[2]))
        return 1;
    return 0;
}
