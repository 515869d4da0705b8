#pragma once

#include <string>
#include <string_view>

namespace lore {

enum class OpenVerdict { Open, AskFirst, Refuse };

/// What may happen with the address of a link: only http, https, ftp and mailto are opened.
OpenVerdict JudgeLink(std::string_view address);
/// What may happen with an attached file: one that the system might run as a program asks first.
OpenVerdict JudgeFile(std::string_view fileName);

}  // namespace lore
