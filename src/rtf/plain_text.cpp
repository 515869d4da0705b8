#include "base/text.h"
#include "rtf/body_reader.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

class PlainTextReader : public BodyReader {
public:
    PlainTextReader(std::string_view rtf, std::string& text) : BodyReader(rtf), text_(text) {}

protected:
    void OnText(std::string_view utf8, size_t, size_t) override { text_.append(utf8); }
    void OnBreak(TextBreak kind) override { text_ += CharacterOf(kind); }
    void OnEnd(bool afterParagraph) override {
        if (afterParagraph)
            text_.pop_back();
    }

private:
    std::string& text_;
};

}  // namespace

void PlainText(std::string_view rtf, std::string& text) {
    text.clear();
    PlainTextReader(rtf, text).Read();
}

std::string PlainText(std::string_view rtf) {
    std::string text;
    PlainText(rtf, text);
    return text;
}

std::string WithCrLf(std::string_view plainText) {
    return ReplaceAll(plainText, "\n", "\r\n");
}

}  // namespace lore
