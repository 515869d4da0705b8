#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rtf/asides.h"
#include "rtf/code_page.h"
#include "rtf/document.h"
#include "rtf/tokenizer.h"

namespace lore {

/// Walks through RTF and tells what its body text is. All readers are made of it, so that they see the same characters:
/// it knows groups, destinations, code pages, fallbacks of Unicode characters and hidden text; how the text looks is
/// left to those who override its hooks. Nesting costs no recursion.
class BodyReader {
public:
    explicit BodyReader(std::string_view rtf);
    virtual ~BodyReader() = default;
    BodyReader(const BodyReader&) = delete;
    BodyReader& operator=(const BodyReader&) = delete;

    /// Reads to the brace that closes the document, or to the end.
    void Read();

protected:
    struct Group {
        Destination destination = Destination::kBody;
        Destination outside_twin = Destination::kBody;
        bool hidden = false;
        bool deleted = false;
        bool in_shape = false;   ///< or in an object
        bool is_result = false;  ///< it holds what an object shows
        bool in_result = false;  ///< its pictures are those of the object
        int32_t fallback_length = 1;
        int32_t font = -1;
        size_t begin = 0;         ///< of the brace, or of the destination's word where that isn't the first one
        size_t shown_before = 0;  ///< Shown() where its destination began
        char32_t symbol = 0;      ///< what its field stands for if that has no result
    };

    /// Characters of the body, from source bytes begin to end: either each is one byte there, or it is one character.
    /// What is put between the body and a text beside it stands nowhere: begin is end, where the next character begins;
    /// a line feed is a line break.
    virtual void OnText(std::string_view utf8, size_t begin, size_t end) = 0;
    virtual void OnBreak(TextBreak kind) = 0;
    /// The end of the text. `after_paragraph`: nothing came behind the last end of a paragraph.
    virtual void OnEnd(bool after_paragraph) = 0;
    /// Characters of the body that aren't shown, being hidden or deleted; a line feed for a break.
    virtual void OnHidden(std::string_view /*utf8*/) {}
    /// A destination besides the body begins. False: it is to be passed over.
    virtual bool OnEnter(Destination) { return false; }
    /// Characters and binary data of such a destination.
    virtual void OnOther(Destination, std::string_view /*utf8*/) {}
    virtual void OnBinary(Destination, std::string_view /*bytes*/) {}
    /// A font of the file's table; the later one of a number takes its place.
    virtual void OnFont(const DocumentFont&) {}
    /// A group of the body that was passed over, with its braces: a hidden or deleted one too, if it is drawn.
    virtual void OnKept(std::string_view /*rtf*/) {}
    /// The whole instruction of a field, in the group around it.
    virtual void OnInstruction(std::string_view /*utf8*/) {}
    virtual void OnWord(const ControlWord&, const Token&) {}
    virtual void OnOpen() {}
    /// A group with a state of its own was closed, its brace is at `end` - 1.
    virtual void OnClose(const Group& /*closed*/, size_t /*end*/) {}
    /// The rest of a group besides the body was passed over.
    virtual void OnPassedOver() {}
    /// Source bytes that stand in for a Unicode character before them, for readers that don't know those.
    virtual void OnFallback(size_t /*begin*/, size_t /*end*/) {}

    const Group& Current() const { return groups_.back(); }
    /// Counts what a group may add to the body, to see whether it added something.
    size_t Shown() const { return shown_; }
    /// Whether groups behind that place were too deep for what they hold to be read.
    bool IsTooDeep(size_t begin) const { return too_deep_at_ > begin; }
    int DocumentCodePage() const { return document_page_; }
    int DefaultFont() const { return default_font_; }
    std::string_view Source() const { return tokens_.Source(); }

private:
    bool Step();
    bool SkipAsFallback(const Token& token);
    void EndPending(const Token& token);
    void FlushPending();
    void Open(const Token& token);
    bool Close(const Token& token);
    void EndInstruction();
    void ActOn(const Token& token, bool fresh, bool starred);
    bool IsOfTable() const;
    void ActOnText(const ControlWord& word, const Token& token);
    void ActOnSymbol(const Token& token);
    void ActOnTableFont(const ControlWord& word, const Token& token);
    void SetFontPage(int page);
    void ReadFontName(std::string_view utf8);
    void EndFont();
    void EndUnendedFont();
    void Enter(const ControlWord& word, const Token& token, bool fresh);
    void EnterNew(Destination destination, size_t begin, bool fresh);
    void EnterPicture();
    void EnterObject(Destination destination, size_t begin, bool fresh);
    void EnterAside(Destination destination);
    void PassOver(bool keep);
    void Break(TextBreak kind);
    void Unicode(const Token& token);
    void AddByte(const Token& token);
    void AddBytes(std::string_view bytes, size_t begin, size_t end);
    void AddSingleBytes(int page, std::string_view bytes, size_t begin, size_t end);
    void AddAscii(std::string_view text, size_t begin, size_t end);
    void EmitCharacter(char32_t c, size_t begin, size_t end);
    void Emit(std::string_view utf8, size_t begin, size_t end);
    void Hide(std::string_view utf8);
    void Show(std::string_view utf8, size_t begin, size_t end);
    void Insert(std::string_view utf8, size_t at);
    bool Shows() const;
    int CurrentPage();
    const std::string* CurrentSymbols() const;

    Tokenizer tokens_;
    CodePageDecoder decoder_;
    std::vector<Group> groups_;
    size_t levels_beyond_ = 0;  ///< open groups that are nested too deep to have a state of their own
    size_t too_deep_at_ = 0;    ///< the last one of them
    bool fresh_ = false;        ///< right behind an opening brace
    bool starred_ = false;      ///< right behind \*
    bool after_paragraph_ = false;
    bool has_new_picture_ = false;
    Asides asides_;
    char last_ = '\n';  ///< byte of the text so far
    size_t shown_ = 0;
    std::string instruction_;
    int32_t fallback_ = 0;  ///< characters to pass over behind \u
    int document_page_ = 1252;
    int default_font_ = -1;
    int table_font_ = 0;
    int table_charset_ = 0;
    std::string table_name_;
    std::unordered_map<int, std::string> symbol_fonts_;  ///< names of those whose bytes are signs
    std::unordered_map<int, int> font_pages_;            ///< fonts whose code page isn't that of the document
    int page_font_ = -1;                                 ///< the font that page_ was looked up for
    int page_ = 0;                                       ///< 0: look it up
    bool is_multi_byte_ = false;                         ///< of that page
    char32_t high_surrogate_ = 0;
    std::string part_;  ///< the first bytes of a character of a multi-byte code page
    size_t pending_begin_ = 0;
    std::string scratch_;
};

}  // namespace lore
