#include "platform/hunspell_checker.h"

#include <algorithm>
#include <hunspell.hxx>
#include <optional>
#include <unicode/ucnv.h>
#include <unicode/uloc.h>
#include <unicode/uscript.h>
#include <utility>

#include "base/file_io.h"
#include "base/text.h"

namespace lore {

namespace fs = std::filesystem;

namespace {

constexpr size_t kLongestWord = 100;  // bytes; what is longer is no word of a language
constexpr size_t kMostSuggestions = 8;

// The script in which a language is written first, such as Latin for "en_US".
int ScriptOf(const std::string& language) {
    UErrorCode status = U_ZERO_ERROR;
    UScriptCode codes[4] = {USCRIPT_LATIN, USCRIPT_LATIN, USCRIPT_LATIN, USCRIPT_LATIN};
    const int32_t count = uscript_getCode(language.c_str(), codes, 4, &status);
    return U_FAILURE(status) || count < 1 ? USCRIPT_LATIN : codes[0];
}

std::string WithFirst(const std::string& word, char32_t (*changed)(char32_t)) {
    std::u32string letters = Utf8ToCodePoints(word);
    if (!letters.empty())
        letters[0] = changed(letters[0]);
    return CodePointsToUtf8(letters);
}

/// A capital in front, and no other.
bool IsCapitalized(const std::string& word) {
    std::u32string letters = Utf8ToCodePoints(word);
    std::transform(letters.begin(), letters.end(), letters.begin(), LowerCharacter);
    const std::string small = WithFirst(word, LowerCharacter);
    return small != word && small == CodePointsToUtf8(letters);
}

}  // namespace

/// The bytes that a dictionary is written in.
class HunspellChecker::Encoding {
public:
    explicit Encoding(const std::string& name) {
        UErrorCode status = U_ZERO_ERROR;
        if (name != "UTF-8")
            converter_ = ucnv_open(name.c_str(), &status);
        if (converter_)
            ucnv_setFromUCallBack(converter_, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    }
    ~Encoding() {
        if (converter_)
            ucnv_close(converter_);
    }
    Encoding(const Encoding&) = delete;
    Encoding& operator=(const Encoding&) = delete;

    /// Nothing for a word with a character that the dictionary can't have.
    std::optional<std::string> From(const std::string& utf8) const {
        if (!converter_)
            return utf8;
        std::u16string text;
        for (const char32_t c : Utf8ToCodePoints(utf8)) {
            if (c > 0xffff)
                return std::nullopt;
            text += static_cast<char16_t>(c);
        }
        std::string bytes(text.size() * 4 + 1, '\0');
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = ucnv_fromUChars(converter_, bytes.data(), static_cast<int32_t>(bytes.size()),
                                               text.data(), static_cast<int32_t>(text.size()), &status);
        if (U_FAILURE(status))
            return std::nullopt;
        bytes.resize(static_cast<size_t>(length));
        return bytes;
    }

    std::string To(const std::string& bytes) const {
        if (!converter_)
            return bytes;
        std::u16string text(bytes.size() * 2 + 1, u'\0');
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = ucnv_toUChars(converter_, text.data(), static_cast<int32_t>(text.size()), bytes.data(),
                                             static_cast<int32_t>(bytes.size()), &status);
        text.resize(U_FAILURE(status) ? 0 : static_cast<size_t>(length));
        return CodePointsToUtf8(std::u32string(text.begin(), text.end()));
    }

private:
    UConverter* converter_ = nullptr;  // null for UTF-8 and for what has no converter
};

HunspellChecker::HunspellChecker(const std::vector<fs::path>& dictionaries, fs::path userWords, FaultNotice& faults)
    : userFile_(std::move(userWords)), faults_(faults) {
    for (const fs::path& folder : dictionaries) {
        std::error_code error;
        for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
            fs::path stem = it->path();
            if (stem.extension() != ".aff" || !fs::exists(stem.replace_extension(".dic"), error))
                continue;
            stem.replace_extension();
            dictionaries_.emplace(stem.filename().string(), stem);
        }
    }
    ReadUserWords();
}

HunspellChecker::~HunspellChecker() = default;

std::vector<fs::path> HunspellChecker::SystemFolders() {
    return {"/usr/share/hunspell", "/usr/share/myspell/dicts", "/usr/local/share/hunspell"};
}

void HunspellChecker::ReadUserWords() {
    std::string bytes;
    const FileResult result = ReadFile(userFile_, bytes);
    if (!result.Ok() && !result.Missing())
        faults_.Tell({"The user dictionary could not be read", userFile_.string(), result.Reason()});
    for (size_t at = 0; at < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', at), bytes.size());
        const std::string word(Trim(std::string_view(bytes).substr(at, end - at)));
        if (!word.empty() && rightWords_.insert(word).second)
            userWords_.push_back(word);
        at = end + 1;
    }
}

std::vector<std::string> HunspellChecker::Languages() const {
    std::vector<std::string> names;
    for (const auto& [name, path] : dictionaries_)
        names.push_back(name);
    return names;
}

bool HunspellChecker::Select(const std::string& language) {
    const auto found = dictionaries_.find(language);
    if (found == dictionaries_.end())
        return false;
    if (language == language_)
        return true;
    const std::string rules = found->second.string() + ".aff", words = found->second.string() + ".dic";
    for (const std::string& file : {rules, words}) {  // the engine takes an unreadable one for an empty one
        if (::access(file.c_str(), R_OK) != 0) {
            faults_.Tell({"The dictionary could not be read", file, FileResult{errno}.Reason()});
            return false;
        }
    }
    auto engine = std::make_unique<Hunspell>(rules.c_str(), words.c_str());
    encoding_ = std::make_unique<Encoding>(engine->get_dict_encoding());
    engine_ = std::move(engine);
    language_ = language;
    script_ = ScriptOf(language);
    for (const std::string& word : userWords_)
        if (const auto bytes = encoding_->From(word))
            engine_->add(*bytes);
    return true;
}

bool HunspellChecker::IsOwn(const std::string& word) const {
    // An own word may begin a sentence.
    return rightWords_.contains(word) || rightWords_.contains(WithFirst(word, LowerCharacter));
}

bool HunspellChecker::IsOtherScript(const std::string& word) const {
    for (const char32_t c : Utf8ToCodePoints(word)) {
        UErrorCode status = U_ZERO_ERROR;
        const UScriptCode script = uscript_getScript(static_cast<UChar32>(c), &status);
        if (script != USCRIPT_COMMON && script != USCRIPT_INHERITED && script != script_)
            return true;
    }
    return false;
}

bool HunspellChecker::Check(const std::string& word) {
    if (!engine_ || word.empty() || word.size() > kLongestWord || IsOwn(word) || IsOtherScript(word))
        return true;
    // Dictionaries write the apostrophe of the keyboard.
    const auto bytes = encoding_->From(ReplaceAll(word, "\u2019", "'"));
    return bytes && engine_->spell(*bytes);
}

/// All that the engine has for a word, in its order.
std::vector<std::string> HunspellChecker::Near(const std::string& word) {
    const auto bytes =
        engine_ && word.size() <= kLongestWord ? encoding_->From(ReplaceAll(word, "\u2019", "'")) : std::nullopt;
    std::vector<std::string> words = bytes ? engine_->suggest(*bytes) : std::vector<std::string>();
    for (std::string& each : words)
        each = encoding_->To(each);
    return words;
}

// For a word with a capital the engine names all that have one first, but it may begin a sentence as well as be a name:
// what comes near either stands in turns.
std::vector<std::string> HunspellChecker::Suggest(const std::string& word) {
    std::vector<std::string> words, begun, named = Near(word);
    if (IsCapitalized(word))
        for (const std::string& near : Near(WithFirst(word, LowerCharacter)))
            begun.push_back(WithFirst(near, UpperCharacter));
    for (size_t i = 0; i < std::max(begun.size(), named.size()); ++i)
        for (const auto* const list : {&begun, &named})
            if (i < list->size() && words.size() < kMostSuggestions &&
                std::find(words.begin(), words.end(), (*list)[i]) == words.end())
                words.push_back((*list)[i]);
    return words;
}

bool HunspellChecker::Add(const std::string& word) {
    const std::string clean(Trim(CleanText(word)));
    if (clean.empty() || clean.find('\n') != std::string::npos)
        return false;
    rightWords_.insert(clean);
    if (std::find(userWords_.begin(), userWords_.end(), clean) != userWords_.end())
        return true;
    userWords_.push_back(clean);
    if (engine_)
        if (const auto bytes = encoding_->From(clean))
            engine_->add(*bytes);
    return WriteUserWords();
}

bool HunspellChecker::WriteUserWords() {
    std::string file;
    for (const std::string& each : userWords_)
        file += each + '\n';
    FileResult result = MakeFolders(userFile_.parent_path());
    if (result.Ok())
        result = WriteFileAtomically(userFile_, file);
    if (!result.Ok())
        faults_.Tell({"The user dictionary could not be written", userFile_.string(), result.Reason()});
    return result.Ok();
}

bool HunspellChecker::SetUserWords(const std::vector<std::string>& words) {
    for (const std::string& word : userWords_)
        rightWords_.erase(word);
    userWords_.clear();
    for (const std::string& word : words)
        if (rightWords_.insert(word).second)
            userWords_.push_back(word);
    // Read anew: taking a word out of the engine would take it out of the language too.
    if (const std::string language = std::exchange(language_, {}); !language.empty())
        Select(language);
    return WriteUserWords();
}

void HunspellChecker::Ignore(const std::string& word) {
    rightWords_.insert(word);
}

}  // namespace lore
