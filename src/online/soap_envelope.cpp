#include "online/soap_envelope.h"

#include "base/text.h"

namespace lore {

namespace {

constexpr std::string_view kBefore =
    "<soap:Envelope xmlns:soap=\"http://schemas.xmlsoap.org/soap/envelope/\" "
    "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" "
    "xmlns:soapenc=\"http://schemas.xmlsoap.org/soap/encoding/\"><soap:Body>";
constexpr std::string_view kAfter = "</soap:Body></soap:Envelope>";

/// What XML 1.0 has as a character.
bool IsXmlCharacter(char32_t c) {
    return c >= 0x20 ? c != 0xFFFE && c != 0xFFFF : c == '\t' || c == '\n' || c == '\r';
}

void AppendEscaped(std::string& xml, char32_t c) {
    switch (c) {
        case '&':
            xml += "&amp;";
            break;
        case '<':
            xml += "&lt;";
            break;
        case '>':
            xml += "&gt;";
            break;
        case '"':
            xml += "&quot;";
            break;
        case '\r':
            xml += "&#13;";  // a reader would make a line feed of it
            break;
        default:
            AppendUtf8(xml, c);
    }
}

/// The text of an element or an attribute; false if it can't stand there.
bool AppendText(std::string& xml, std::string_view bytes) {
    for (const char32_t c : ToCodePoints(bytes)) {
        if (!IsXmlCharacter(c))
            return false;
        AppendEscaped(xml, c);
    }
    return true;
}

bool AppendArgument(std::string& xml, const SoapArgument& argument) {
    const std::string name(argument.name);
    std::string text;
    if (const auto* const number = std::get_if<int32_t>(&argument.value)) {
        text = std::to_string(*number);
    } else if (const auto* const flag = std::get_if<bool>(&argument.value)) {
        text = *flag ? "true" : "false";
    } else if (const auto& string = std::get<std::optional<std::string>>(argument.value); !string) {
        xml += "<" + name + " xsi:nil=\"1\"/>";
        return true;
    } else if (!AppendText(text, *string)) {
        return false;
    }
    xml += "<" + name + ">" + text + "</" + name + ">";
    return true;
}

}  // namespace

std::optional<std::string> SoapEnvelope(std::string_view operation, std::string_view serviceNamespace,
                                        const std::vector<SoapArgument>& arguments) {
    const std::string name(operation);
    std::string xml(kBefore);
    xml += "<" + name + " xmlns=\"";
    bool fits = AppendText(xml, serviceNamespace);
    xml += "\">";
    for (const SoapArgument& argument : arguments)
        fits = fits && AppendArgument(xml, argument);
    xml += "</" + name + ">";
    xml += kAfter;
    return fits ? std::optional(xml) : std::nullopt;
}

}  // namespace lore
