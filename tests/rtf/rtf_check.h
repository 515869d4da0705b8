#pragma once

#include <string>
#include <string_view>

#include "rtf/document.h"

namespace lore {

/// What must hold for any bytes when they are read: the document has the plain text, and its parts cover it. Gives what
/// is wrong, or nothing.
std::string WhatIsWrongWithReading(std::string_view rtf);

/// What must hold for any bytes: the document has the plain text, its parts cover it, and what is written of it reads
/// as the same text again. Gives what is wrong, or nothing.
std::string WhatIsWrongWithText(std::string_view rtf);

/// Everything that must hold for any bytes: the document has the plain text, its parts cover it, what is written of it
/// reads as the same document again, in each form, and marks colour what they are put on and change no text. Gives what
/// is wrong, or nothing.
std::string WhatIsWrongWith(std::string_view rtf);

/// The same of a document, however it was made.
std::string WhatIsWrongWith(const Document& document);

/// What must hold for any bytes as a web page: its document's parts cover it. Gives what is wrong, or nothing.
std::string WhatIsWrongWithReadingPage(std::string_view html);

/// Everything that must hold for any bytes as a web page: that, and what holds of its document.
std::string WhatIsWrongWithPage(std::string_view html);

}  // namespace lore
