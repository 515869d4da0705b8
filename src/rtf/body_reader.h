#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rtf/asides.h"
#include "rtf/body_group.h"
#include "rtf/code_page.h"
#include "rtf/document.h"
#include "rtf/font_pages.h"
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
    using Group = BodyGroup;

    /// Characters of the body, from source bytes begin to end: either each is one byte there, or it is one character.
    /// What is put between the body and a text beside it stands nowhere: begin is end, where the next character begins;
    /// a line feed is a line break.
    virtual void OnText(std::string_view utf8, size_t begin, size_t end) = 0;
    virtual void OnBreak(TextBreak kind) = 0;
    /// The end of the text. `afterParagraph`: nothing came behind the last end of a paragraph.
    virtual void OnEnd(bool afterParagraph) = 0;
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
    bool IsTooDeep(size_t begin) const { return tooDeepAt_ > begin; }
    int DocumentCodePage() const { return fontPages_.DocumentPage(); }
    int DefaultFont() const { return defaultFont_; }
    std::string_view Source() const { return tokens_.Source(); }

private:
    bool Step();
    bool SkipAsFallback(const Token& token);
    void PassFallback(size_t begin, size_t end);
    void EndPart(const Token& token);
    void FlushPart();
    void FlushHalf(size_t at);
    void Open(const Token& token);
    bool Close(const Token& token);
    bool BeganDestination() const;
    bool ClosesPlace() const;
    void EndInstruction();
    bool ActOn(const Token& token);
    void ActOnWord(const Token& token);
    bool IsOfTable() const;
    void ActOnText(const ControlWord& word, const Token& token);
    void SetUnshown(bool hidden, bool deleted);
    void ActOnSymbol(const Token& token);
    void ActOnTableFont(const ControlWord& word, const Token& token);
    void ReadFontName(std::string_view utf8);
    void EndFont();
    void EndUnendedFont();
    void Enter(const ControlWord& word, const Token& token);
    void EnterNew(Destination destination, size_t begin);
    void EnterTwin(Destination destination);
    void EnterPicture(Destination destination);
    void EnterObject(Destination destination, size_t begin);
    void EnterAside(Destination destination, size_t begin);
    void EnterOther(Destination destination);
    void EnterForSome(Destination destination);
    void PassOver(bool keep);
    void Break(TextBreak kind);
    void Unicode(const Token& token);
    char32_t MeantSign(char32_t c, size_t end) const;
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
    size_t levelsBeyond_ = 0;  ///< open groups that are nested too deep to have a state of their own
    size_t tooDeepAt_ = 0;     ///< the last one of them
    bool fresh_ = false;       ///< the token stands right behind an opening brace, or behind that and \*
    bool starred_ = false;     ///< the token stands right behind \*
    bool afterParagraph_ = false;
    bool hasNewPicture_ = false;
    Asides asides_;
    char last_ = '\n';  ///< byte of the text so far
    size_t shown_ = 0;
    std::string instruction_;
    int32_t fallback_ = 0;  ///< characters to pass over behind \u
    FontPages fontPages_;
    int defaultFont_ = -1;
    int tableFont_ = 0;
    int tableCharset_ = 0;
    std::string tableName_;
    std::unordered_map<int, std::string> symbolFonts_;  ///< names of those whose bytes are signs
    int pageFont_ = -1;                                 ///< the font that page_ was looked up for
    int page_ = 0;                                      ///< 0: look it up
    bool isMultiByte_ = false;                          ///< of that page
    char32_t highSurrogate_ = 0;                        ///< which waits for its second half; 0 for none
    size_t halfBegin_ = 0;
    size_t halfEnd_ = 0;  ///< with what stands in for it
    std::string part_;    ///< the first bytes of a character of a multi-byte code page
    size_t partBegin_ = 0;
    std::string scratch_;
};

}  // namespace lore
