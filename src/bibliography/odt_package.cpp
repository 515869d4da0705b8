#include "bibliography/odt_package.h"

#include <cstdlib>
#include <utility>
#include <vector>

#include "bibliography/output_zip.h"
#include "rtf/markup.h"

namespace lore {

namespace {

constexpr std::string_view kMimeType = "application/vnd.oasis.opendocument.text";

constexpr std::string_view kManifestHead =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" manifest:version="1.3">
<manifest:file-entry manifest:full-path="/" manifest:version="1.3" manifest:media-type="application/vnd.oasis.opendocument.text"/>
<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/>
<manifest:file-entry manifest:full-path="styles.xml" manifest:media-type="text/xml"/>
)";

constexpr std::string_view kNamespaces = R"( xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0")"
                                         R"( xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0")"
                                         R"( xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0")"
                                         R"( xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0")"
                                         R"( xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0")"
                                         R"( xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0")"
                                         R"( xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0")"
                                         R"( xmlns:xlink="http://www.w3.org/1999/xlink" office:version="1.3">)"
                                         "\n";

}  // namespace

std::string BeginOdtPart(std::string_view element) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:";
    return xml.append(element).append(kNamespaces);
}

std::string EndOdtStyles(const Paper& paper) {
    const std::pair<std::string_view, int> kLengths[] = {
        {"page-width", paper.width}, {"page-height", paper.height}, {"margin-left", paper.left},
        {"margin-top", paper.top},   {"margin-right", paper.right}, {"margin-bottom", paper.bottom}};
    std::string xml =
        "<office:automatic-styles>\n<style:page-layout style:name=\"Page\">\n<style:page-layout-properties";
    for (const auto& [name, twips] : kLengths)
        xml.append(" fo:").append(name).append("=\"").append(OdtPoints(twips)).append("\"");
    xml.append(" style:print-orientation=\"").append(paper.IsAcross() ? "landscape" : "portrait");
    return xml.append(R"("/>
</style:page-layout>
</office:automatic-styles>
<office:master-styles>
<style:master-page style:name="Standard" style:page-layout-name="Page"/>
</office:master-styles>
</office:document-styles>
)");
}

void AppendForAllScripts(std::string& xml, std::string_view name, std::string_view value) {
    xml.append(" fo:").append(name).append("=\"").append(value).append("\"");
    for (const std::string_view scripts : {"-asian", "-complex"})
        xml.append(" style:").append(name).append(scripts).append("=\"").append(value).append("\"");
}

void AppendOdtText(std::string& xml, std::string_view text, bool& behindBlank) {
    for (const char c : text) {
        if (c == '\n' || c == '\t')
            xml += c == '\n' ? "<text:line-break/>" : "<text:tab/>";
        else if (c == ' ' && behindBlank)
            xml += "<text:s/>";
        else if (static_cast<unsigned char>(c) >= 0x20)
            AppendEscaped(xml, {&c, 1});
        behindBlank = c == ' ';
    }
}

std::string OdtPoints(int twips) {
    const int tenths = twips / 2;
    const std::string whole = (tenths < 0 ? "-" : "") + std::to_string(std::abs(tenths / 10));
    return whole + (tenths % 10 != 0 ? "." + std::to_string(std::abs(tenths % 10)) : "") + "pt";
}

std::optional<std::string> MakeOdt(std::string_view content, std::string_view styles,
                                   std::span<const OdtPicture> pictures) {
    std::string manifest(kManifestHead);
    for (const OdtPicture& picture : pictures)
        manifest.append("<manifest:file-entry manifest:full-path=\"")
            .append(picture.name)
            .append("\" manifest:media-type=\"")
            .append(picture.mediaType)
            .append("\"/>\n");
    manifest += "</manifest:manifest>\n";
    std::vector<ZipMember> members = {{"mimetype", kMimeType, false},
                                      {"META-INF/manifest.xml", manifest},
                                      {"content.xml", content},
                                      {"styles.xml", styles}};
    for (const OdtPicture& picture : pictures)
        members.push_back({picture.name.c_str(), picture.bytes, false});
    return MakeZip(members);
}

}  // namespace lore
