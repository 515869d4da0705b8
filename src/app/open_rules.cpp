#include "app/open_rules.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "rtf/markup.h"

namespace lore {

namespace {

/// Endings of files that systems run, or hand to something that runs them.
constexpr std::array<std::string_view, 44> kRunnable = {
    "appimage", "bat", "bin", "cmd", "com", "cpl", "csh", "deb", "desktop", "docm", "dotm",
    "exe",      "hta", "inf", "jar", "js",  "jse", "ksh", "lnk", "msi",     "msp",  "out",
    "pif",      "pl",  "ps1", "py",  "pyc", "pyw", "rb",  "reg", "rpm",     "run",  "scr",
    "sh",       "so",  "url", "vb",  "vbe", "vbs", "wsf", "wsh", "xlam",    "xlsm", "zsh"};

template <typename List>
bool Holds(const List& list, std::string_view word) {
    const std::string lower = ToLower(word);
    return std::find(list.begin(), list.end(), lower) != list.end();
}

}  // namespace

OpenVerdict JudgeLink(std::string_view address) {
    return HasOpenScheme(Trim(address)) ? OpenVerdict::Open : OpenVerdict::Refuse;
}

OpenVerdict JudgeFile(std::string_view fileName) {
    const std::string_view ending = FileExtension(fileName);
    // A file without an ending may be a program as well.
    return ending.empty() || Holds(kRunnable, ending) ? OpenVerdict::AskFirst : OpenVerdict::Open;
}

}  // namespace lore
