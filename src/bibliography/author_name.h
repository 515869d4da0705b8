#pragma once

#include <string>

#include "bibliography/author.h"

namespace lore {

/// How one name is put together.
struct NameForm {
    bool initialOnly = false;      ///< the first letter of the first name, where a last name stands beside it
    bool spaceAfterFirst = false;  ///< a blank between first name and middle initial
    bool useMiddle = false;
};

// All three forms trim white space at the right end. A first name of one character gets a period in any case.

/// "Smith, John Q."
std::string FormatAuthorInverted(const CAuthor& author, const NameForm& form);
/// "John Q. Smith"
std::string FormatAuthorNatural(const CAuthor& author, const NameForm& form);
/// "J.Q. Smith"
std::string FormatAuthorBrief(const CAuthor& author);

// The same, appended to what stands in `out`, which keeps its own end.
void AppendAuthorInverted(std::string& out, const CAuthor& author, const NameForm& form);
void AppendAuthorNatural(std::string& out, const CAuthor& author, const NameForm& form);

/// The form in which lists on screen show an author.
inline constexpr NameForm kListNameForm = {false, true, true};

/// Trims first, middle and last name on both sides. False if neither a first nor a last name is left, which is no name.
bool TrimAuthorName(CAuthor& author);

}  // namespace lore
