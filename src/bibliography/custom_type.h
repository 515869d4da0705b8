#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"

namespace lore {

/// One field of a user-defined source type.
struct CCustomSourceField {
    enum Kind : int32_t { User = 0, Authors = 1, Title = 2, Date = 3 };
    enum End : int32_t { None = 0, Period = 1, Comma = 2, Colon = 3, Semicolon = 4 };

    int32_t kind = User;
    int32_t end = Period;
    std::string name;
    std::string value;  ///< text of a user field; empty in a definition
    bool underline = false, italics = false, bold = false;
    int32_t listNumber = -1;  ///< position in the list that an editor opened, -1 of a new field; not stored
};

/// A user-defined source type; its GUID is its lasting identity.
struct CCustomSourceType {
    int32_t number = -1;  ///< SourceType value while the program runs, 1101 and up; not stored
    std::string GUID;
    std::string name;
    std::vector<CCustomSourceField> fields;  ///< in citation order
    DateTime date;                           ///< last change, Coordinated Universal Time
};

}  // namespace lore
