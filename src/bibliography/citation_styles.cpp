#include <array>
#include <utility>

#include "bibliography/author_text.h"
#include "bibliography/citation_style.h"
#include "bibliography/style_parser.h"

namespace lore {

namespace {

// A recipe is written as one line of text and parsed while the program is compiled; a mistake in it is a compile error.
//
//   recipe     piece ("; " piece)*
//   piece      A                                     the authors, a period and a blank
//            | SLOT {before} {after} alternatives?   the text of a slot, nothing if it is empty
//            | SLOT# ...                             the same, a bare number as an ordinal
//            | {text} if condition                   a fixed text
//            | trim if condition                     no white space at the end of what stands so far
//            | date {format}                         the date once more, unless it is typed by hand
//   alternatives  (but {before} {after} if condition, ...)    other texts around the field; the first that holds
//   condition  term (and term)*
//   term       SLOT | not SLOT | date | no date | any | (any)
//   any        SLOT (or SLOT)+
//   emphasis   mark (", " mark)*     mark   SLOT (else SLOT)? KIND

// The rows of a style stand in the order of the source type numbers.
// clang-format off
constexpr std::array<StyleRows, kStyleCount> kRows = {{
    // Generic by Title
    {{AuthorForm::Compact, true, false, kAllTypes, kConjunctionAmpersand, kSeparatorComma},
     {{
        {"%Y", "", R"(0 {} {. }; 7 {'} {', }; A; 8 {edited by: } {. }; 5# {} { ed. }; 3 {Vol. } {. }; 6 {} {: };
            1 {} {, }; 2 {} {. }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(0 {} {. }; A; 1 {} { }; 3 {} { }; 2 {(} {): }; 4 {} {. }; 5 {Retrieved } {, };
            7 {from } {.})"},
        {"%Y, %B %d", "1 italic", R"(0 {} {, }; A; 1 {} {. }; 2 {} {, }; 3 {sec. } {: }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(0 {} {, }; A; 1 {} {. }; 3 {} {. }; 2 {} {. }; 7 {<} {>. }; 4 {accessed } {. })"},
        {"%Y", "1 italic", R"(0 {} {, }; A; 8 {} {, }; 7 {} {. }; 2 {} {. }; 1 {} {, }; 6 {} {. }; 4 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(0 {} {, }; A; 2 {(} {). }; 7 {} { } (but {} {. } if not 4); 4 {[} {]. };
            6 {} {: }; 1 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(0 {} {, }; A; 2 {(} {). }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. })"},
     }}},
    // Generic by Author
    {{AuthorForm::Compact, true, false, kAllTypes, kConjunctionAmpersand, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 7 {'} {', }; 0 {in } {. } (but {} {. } if not 7); 8 {Ed. } {. }; 5# {} { ed. };
            3 {Vol. } {. }; 6 {} {: }; 1 {} {, }; 2 {} {. }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {(} {). }; 0 {"} {.", }; 1 {} { }; 3 {} {: }; 4 {} {. };
            5 {Retrieved } {, }; 7 {from } {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 0 {"} {." }; 1 {} {. }; 2 {} {, }; 3 {sec. } {: }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 0 {"} {." }; 1 {} {. }; 3 {} {. }; 2 {} {. }; 7 {<} {>. };
            4 {accessed } {. })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 8 {} {, }; 7 {} {. }; 1 {} {, }; 6 {} {. }; 4 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {(} {). }; 0 {"} {.", }; 7 {} { } (but {} {. } if not 4); 4 {[} {]. };
            6 {} {: }; 1 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {(} {). }; 0 {"} {.", }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. })"},
     }}},
    // ACM Style
    {{AuthorForm::AllInverted, true, false, kAllTypes, kConjunctionAnd, kSeparatorComma, AuthorLetters::Capitals},
     {{
        {"%Y", "0 italic", R"(A; 2 {} {. }; 7 {} {. }; 0 {In } {. } (but {} {. } if not 7); 8 {} {, Eds. }; 1 {} {, };
            6 {} {, } (but {} {. } if not 3 and not 4 and not 5); 3 {} {, }; 5# {} { ed, }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} { }; 3 {} {, }; 4 {} {. }; 5 {Retrieved } {, };
            7 {from } {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} {. }; 3 {} {, }; 4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} {. }; 3 {} {. }; 7 {} {. }; 4 {accessed } {. })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {} {, }; 1 {} {. }; 8 {} {, }; 7 {} {, } (but {} {. } if not 6);
            6 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "7 italic", R"(A; 2 {} {. }; 0 {} {. }; 7 {} {. }; 4 {[} {]. }; 6 {} {: }; 1 {} {. })"},
        {"%B %d, %Y", "7 italic", R"(A; 2 {} {. }; 0 {} {. }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. })"},
     }}},
    // ACS Style
    {{AuthorForm::AllInverted, true, false, kAllTypes, 0, kSeparatorSemicolon},
     {{
        {"%Y", "0 italic", R"(A; 7 {} {. }; 0 {In } {; } (but {} {; } if not 7); 8 {} {, Eds.; }; 5 {} {; };
            1 {} {: }; 6 {} {, }; 2 {} {; } (but {} {. } if not 3 and not 4); 3 {Vol. } {, }; 4 {pp } {.})"},
        {"%B %d, %Y", "1 italic, 2 bold", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {, } (but {} {. } if not 3 and not 4);
            3 {} {, }; 4 {} {. }; 7 {} { } (but {} {. } if not 5); 5 {(Accessed } {). })"},
        {"%B %d, %Y", "1 italic, 2 bold", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {, } (but {} {. } if not 3 and not 4);
            3 {} {, } (but {} {. } if not 4); 4 {p. } {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {, }; 3 {} {, }; 7 {} {. }; 4 {(accessed } {). })"},
        {"%Y", "1 italic", R"(A; 8 {} {, }; 7 {} {, }; 6 {} {, }; 1 {} {. }; 2 {} {, } (but {} {. } if not 4);
            4 {} {. })"},
        {"%B %d, %Y", "7 else 0 italic", R"(A; 0 {} {. } (but {} { } if 4 and not 7); 7 {} { } (but {} {. } if not 4);
            4 {[} {]. }; 2 {} {. }; 6 {} {, }; 1 {} {. })"},
        {"%B %d, %Y", "7 italic", R"(A; 0 {} {. }; 7 {} {. }; 2 {} {. }; 1 {} {. }; 6 {} {, }; 8 {} {. })"},
     }}},
    // APSA Style
    {{AuthorForm::FirstInverted, false, true, kAllTypes, kConjunctionAnd, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 2 {} {. }; 7 {"} {." }; 0 {In } {, } (but {} {, } if not 7); 5# {} { ed. };
            3 {Vol. } {. }; 8 {ed. } {, }; 6 {} {: }; 1 {} {. }; 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} { }; 3 {} {: }; 4 {} {. };
            7 {} { } (but {} {. } if not 5); 5 {(} {). })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {, } (but {} {. } if not 3 and not 4 and no date);
            date {%B %d. }; 3 {} {, } (but {} {. } if not 4); 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {. }; 3 {} {, }; 7 {} { }; 4 {(} {). })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {. }; 8 {} {. }; 6 {} {: }; 7 {} {. }; 4 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {} {. }; 0 {"} {." }; 4 {} {. }; 7 {} {. }; 6 {} {: }; 1 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {} {. }; 0 {"} {." }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. })"},
     }}},
    // AMA Style
    {{AuthorForm::Compact, true, false, TypeBit(kBook) | TypeBit(kOnline), 0, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 7 {} {. }; 8 {In: } {, eds. } (but {} {, eds. } if not 7);
            0 {} {. } (but {In: } {. } if 7 and not 8); 5# {} { ed. }; 6 {} {: }; 1 {} {; };
            2 {} {;} (but {} {:} if 4 and not 3, {} {.} if not 3 and not 4); 3 {} {:} (but {} {.} if not 4);
            4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {;} (but {} {.} if not 3 and not 4); 3 {} {:};
            4 {} {. }; 7 {Available from: } {. }; 5 {Accessed } {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {;} (but {} {.} if not 3 and not 4);
            3 {} {:} (but {} {.} if not 4); 4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {;} (but {} {.} if not 3); 3 {} {. };
            7 {Available at: } {. }; 4 {Accessed } {. })"},
        {"%Y", "1 italic", R"(A; 0 {} {. }; 6 {} {: }; 1 {} {; }; 8 {} {, } (but {} {; } if not 7); 7 {} {; };
            2 {} {:} (but {} {.} if not 4); 4 {} {. })"},
        {"%B %d, %Y", "7 else 0 italic", R"(A; 0 {} {. } (but {} { } if 4 and not 7); 7 {} { } (but {} {. } if not 4);
            4 {[} {]. }; 6 {} {: }; 1 {} {; }; 2 {} {. })"},
        {"%B %d, %Y", "7 italic", R"(A; 0 {} {. }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {; }; 2 {} {. })"},
     }}},
    // ASA Style
    {{AuthorForm::FirstInverted, false, true, kAllTypes, kConjunctionAnd, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 2 {} {. }; 7 {"} {." }; 4 {Pp. } { }; 0 {in } {, } (but {} {, } if not 7);
            3 {vol. } {. }; 5# {} { ed. }; 8 {edited by } {. }; 6 {} {: }; 1 {} {. })"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {". }; 1 {} { }; 3 {} {:}; 4 {} {. };
            5 {Retrieved } { } (but {Retrieved } {. } if not 7); 7 {(} {). })"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {, }; 3 {} {, }; 4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {, }; 3 {} {. }; 4 {Retrieved } { };
            7 {(} {). })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {"} {." }; 1 {} {. }; 8 {} {, }; 7 {} {. }; 6 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "", R"(A; 2 {} {. }; 0 {"} {." }; 4 {[} {] } (but {[} {]. } if not 1 and not 7); 7 {} {. };
            6 {} {: }; 1 {} {. })"},
        {"%B %d, %Y", "7 italic", R"(A; 2 {} {. }; 0 {"} {." }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. })"},
     }}},
    // Harvard Style
    {{AuthorForm::AllInverted, true, false, kAllTypes, kConjunctionAmpersand, kSeparatorComma, AuthorLetters::NoPeriods},
     {{
        {"%Y", "0 italic", R"(A; 2 {} {, }; 7 {'} {', }; 8 {in } { (eds), } (but {} { (eds), } if not 7);
            0 {} {, } (but {in } {, } if 7 and not 8); 3 {vol. } {, }; 5# {} { edn, }; 1 {} {, };
            6 {} {, } (but {} {. } if not 4); 4 {pp. } {.})"},
        {"%d %b. %Y", "1 italic", R"(A; 2 {} {, }; 0 {'} {', }; 1 {} {, }; 3 {vol. } {, }; 4 {pp. } {. };
            5 {Retrieved } {, }; 7 {from } {. })"},
        {"%Y", "1 italic", R"(A; 2 {} {, }; 0 {'} {', }; 1 {} {, } (but {} {. } if not 3 and not 4 and no date);
            date {%d %b., }; 3 {} {, } (but {} {. } if not 4); 4 {p. } {.})"},
        {"%d %b. %Y", "1 italic", R"(A; 2 {} {, }; 0 {'} {', }; 1 {} {, }; 3 {} {, }; 4 {Retrieved } {, };
            7 {from } {. })"},
        {"%Y", "1 italic", R"(A; 2 {} {, }; 0 {'} {', }; 8 {} {, }; 7 {} {. };
            1 {from } {, } (but {from } {. } if not 4 and not 6); 6 {} {, } (but {} {. } if not 4); 4 {pp. } {. })"},
        {"%d %b. %Y", "7 else 0 italic", R"(A; 0 {} {. } (but {} { } if 4 and not 7, {} {, } if not 4 and not 7);
            7 {} { } (but {} {, } if not 4); 2 {} {, }; 4 {} {, }; 1 {} {, }; 6 {} {. })"},
        {"%d %b. %Y", "7 italic", R"(A; 0 {} {. }; 7 {} {, }; 2 {} {, }; 1 {} {, }; 6 {} {, }; 8 {} {. })"},
     }}},
    // MLA Style
    {{AuthorForm::FirstInverted, false, true, kAllTypes, kConjunctionAnd, kSeparatorComma},
     {{
        {"%Y", "0 underline", R"(A; 7 {"} {." }; 0 {} {. }; 8 {Eds. } {. }; 3 {Vol. } {. }; 5# {} { ed. }; 6 {} {: };
            1 {} {, }; 2 {} {. }; 4 {} {.})"},
        {"%d %b. %Y", "1 underline", R"(A; 0 {"} {." }; 1 {} { }; 3 {} { }; 2 {(} {): }; 4 {} {. };
            5 {} { } (but {} {. } if not 7); 7 {<} {>. })"},
        {"%d %b. %Y", "1 underline", R"(A; 0 {"} {." }; 1 {} { }; 2 {} {: } (but {} {. } if not 3 and not 4);
            3 {} {, } (but {} {. } if not 4); 4 {} {.})"},
        {"%d %b. %Y", "1 underline", R"(A; 0 {"} {." }; 1 {} {. }; 3 {} {. }; 2 {} {. }; 4 {} { }; 7 {<} {>. })"},
        {"%Y", "", R"(A; 0 {"} {." }; 8 {} { }; 7 {} {, }; 2 {} {. }; 6 {} {: }; 1 {} {. }; 4 {} {. })"},
        {"%d %b. %Y", "0 underline", R"(A; 0 {} {. }; 7 {} {. }; 4 {} {. }; 6 {} {: }; 1 {} {. }; 2 {} {. })"},
        {"%d %b. %Y", "", R"(A; 0 {"} {." }; 7 {} {. }; 1 {} {, }; 6 {} {. }; 8 {} {. }; 2 {} {. })"},
     }}},
    // APA Style
    {{AuthorForm::AllInverted, true, true, kAllTypes, kConjunctionAmpersand, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 2 {(} {). }; 7 {} {. }; 8 {In } { (Eds.), } (but {} { (Eds.), } if not 7);
            0 {} {. } (but {In } {. } if 7 and not 8); {(} if 3 or 4 or 5; 3 {Vol. } {, }; 5# {} { ed., };
            4 {pp. } { }; trim if 3 or 4 or 5; {). } if 3 or 4 or 5; 6 {} {: }; 1 {} {. })"},
        {"%Y, %B %d", "1 italic, 3 italic", R"(A; 2 {(} {). }; 0 {} {. }; 1 {} {, }; 3 {} {, }; 4 {} {. };
            5 {Retrieved } {, }; 7 {from } {. })"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {(} {). }; 0 {} { }; 1 {} {, } (but {} {. } if not 3 and not 4);
            3 {} {, } (but {} {. } if not 4); 4 {} {.})"},
        {"%Y, %B %d", "1 italic", R"(A; 2 {(} {). }; 0 {} {. }; 1 {} {, }; 3 {} {. };
            4 {Retrieved } {, } (but {Retrieved } {. } if not 7); 7 {from } { })"},
        {"%Y", "1 italic", R"(A; 2 {(} {). }; 0 {} { } (but {} {. } if not 7 and not 8); {(} if 7 or 8;
            8 {} {, } (but {} { } if not 7); 7 {} {}; {). } if 7 or 8; 6 {} {: }; 1 {} {, }; 4 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {(} {). }; 0 {} {. }; 7 {} { } (but {} {. } if not 4); 4 {[} {]. };
            6 {} {: }; 1 {} {. })"},
        {"%Y, %B %d", "7 italic", R"(A; 2 {(} {). }; 0 {} {. }; 7 {} {. }; 1 {} {. }; 8 {} {. }; 6 {} {. })"},
     }}},
    // CSE/CBE Style
    {{AuthorForm::Compact, true, false, kAllTypes, 0, kSeparatorComma},
     {{
        {"%Y", "", R"(A; 2 {} {. }; 7 {} {. }; 8 {In: } {, editors. } (but {} {, editors. } if not 7);
            0 {} {. } (but {In: } {. } if 7 and not 8); 3 {Vol. } {. }; 5# {} { ed. }; 6 {} {: }; 1 {} {. };
            4 {p } {.})"},
        {"%Y %B %d", "", R"(A; 0 {} {. }; 1 {} { };
            2 {} { } (but {} {; } if not 5 and (3 or 4), {} {. } if not 3 and not 4 and not 5); 5 {[cited } {]; };
            3 {} {:}; 4 {} {. }; 7 {Available from: } {. })"},
        {"%B %d, %Y", "", R"(A; 0 {} {. }; 1 {} {. }; 2 {} {; } (but {} {. } if not 3 and not 4);
            3 {} {: } (but {} {. } if not 4); 4 {} {.})"},
        {"%Y, %B %d", "", R"(A; 0 {} {. }; 1 {} {. };
            2 {} { } (but {} {; } if 3 and not 4, {} {. } if not 3 and not 4); 4 {[} {]; }; 3 {} {. };
            7 {Available from: } { })"},
        {"%Y", "", R"(A; 0 {} { } (but {} {. } if not 8); 8 {[} {]. }; 6 {} {: } (but {} {; } if not 7); 7 {} {; };
            2 {} {. }; 4 {} {. }; 1 {Available from: } {. })"},
        {"%Y, %B %d", "", R"(A; 0 {} { } (but {} {. } if not 4); 4 {[} {]. }; 7 {} {. }; 6 {} {: }; 1 {} {. };
            2 {} {. })"},
        {"%Y %B %d", "", R"(A; 0 {} {. }; 7 {} {. }; 1 {} {. }; 6 {} {: }; 8 {} {. }; 2 {} {. })"},
     }}},
    // Chicago Style (Humanities)
    {{AuthorForm::FirstInverted, false, true, kAllTypes, kConjunctionAnd, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 7 {"} {." }; 0 {in } {. } (but {} {. } if not 7); 8 {Edited by } {. }; 5# {} { ed. };
            3 {vol. } {. }; 6 {} {: }; 1 {} {, }; 2 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {"} {." }; 1 {} { }; 3 {} { }; 2 {(} {): }; 4 {} {. };
            7 {} { } (but {} {. } if not 5); 5 {(accessed } {). })"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {"} {." }; 1 {} {, }; 2 {} {, } (but {} {. } if not 3 and not 4);
            3 {} {, } (but {} {. } if not 4); 4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 0 {"} {." }; 1 {} {. }; 2 {} {, } (but {} {. } if not 3); 3 {} {. };
            7 {} { } (but {} {. } if not 4); 4 {(accessed } {). })"},
        {"%Y", "1 italic", R"(A; 0 {"} {." }; 8 {} {, }; 7 {} {, }; 2 {} {. }; 6 {} {: }; 1 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "7 else 0 italic", R"(A; 0 {"} {." } (but {} {. } if not 7); 7 {} {. }; 6 {} {: }; 1 {} {, };
            2 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "7 else 0 italic", R"(A; 0 {"} {." } (but {} {. } if not 7); 7 {} {. }; 1 {} {. }; 6 {} {: };
            8 {} {, } (but {} {. } if not 2); 2 {} {. })"},
     }}},
    // Chicago Style (Author-Date)
    {{AuthorForm::FirstInverted, false, true, kAllTypes, kConjunctionAnd, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 2 {} {. }; 7 {} {. }; 0 {In } {. } (but {} {. } if not 7); 8 {Edited by } {. };
            5# {} { ed. }; 3 {vol. } {. }; 6 {} {: }; 1 {} {. }; 4 {} {. })"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} { }; 3 {} {}; 4 {: } {. };
            7 {} { } (but {} {. } if not 5); 5 {(accessed } {). })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} {, } (but {} {. } if not 3 and not 4 and no date);
            date {%B %d. }; 3 {} {, } (but {} {. } if not 4); 4 {} {.})"},
        {"%B %d, %Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 1 {} {. }; 3 {} {. }; 7 {} { } (but {} {. } if not 4);
            4 {(accessed } {). })"},
        {"%Y", "1 italic", R"(A; 2 {} {. }; 0 {} {. }; 8 {} {, }; 7 {} {, }; 6 {} {: }; 1 {} {. }; 4 {} {. })"},
        {"%Y", "7 else 0 italic", R"(A; 2 {} {. }; 0 {} {. }; 7 {} {. }; 6 {} {: }; 1 {} {, }; 4 {} {. };
            date {%B %d.})"},
        {"%Y", "7 else 0 italic", R"(A; 2 {} {. }; 0 {} {. }; 7 {} {. }; 1 {} {. }; 8 {} {: }; 6 {} {, };
            date {%B %d.})"},
     }}},
    // Oxford Style
    {{AuthorForm::FirstInverted, true, false, kAllTypes, kConjunctionAmpersand, kSeparatorComma},
     {{
        {"%Y", "0 italic", R"(A; 7 {'} {', }; 8 {in } { (eds), } (but {} { (eds), } if not 7);
            0 {} { } (but {in } { } if 7 and not 8); {(} if 1 or 2 or 3 or 5 or 6; 3 {vol. } {, }; 5# {} { edn, };
            6 {} {: }; 1 {} {, }; 2 {} { }; trim if 1 or 2 or 3 or 5 or 6; {), } if 4 and (1 or 2 or 3 or 5 or 6);
            {). } if not 4 and (1 or 2 or 3 or 5 or 6); 4 {p. } {.})"},
        {"%d %b. %Y", "1 italic", R"(A; 0 {'} {', }; 1 {} {, }; 3 {vol. } {, }; 2 {} {, }; 4 {pp. } {. };
            5 {retrieved } {, }; 7 {<} {>. })"},
        {"%d %b. %Y", "1 italic", R"(A; 0 {'} {', }; 1 {} {, }; 2 {} {, } (but {} {. } if not 3 and not 4);
            3 {} {, } (but {} {. } if not 4); 4 {pp. } {.})"},
        {"%d %b. %Y", "0 italic", R"(A; 0 {} {, }; 1 {} {, }; 3 {} {, }; 2 {} {, } (but {} {. } if not 4);
            4 {retrieved } {, }; 7 {<} {>. })"},
        {"%Y", "1 italic", R"(A; 0 {'} {', }; 1 {} {, }; 8 {} {, }; 7 {} {, }; 6 {} {, };
            2 {} {, } (but {} {. } if not 4); 4 {pp. } {. })"},
        {"%d %b. %Y", "7 italic", R"(A; 0 {'} {', }; 7 {} {, }; 4 {} {, }; 6 {} {: }; 1 {} {, }; 2 {} {. })"},
        {"%d %b. %Y", "7 italic", R"(A; 0 {'} {'. }; 7 {} {, }; 1 {} {, }; 6 {} {: }; 8 {} {, }; 2 {} {. })"},
     }}},
}};
// clang-format on

// Each style is parsed in an evaluation of its own, which keeps every compiler below its limit of steps.
template <size_t Number>
constexpr CitationStyle kParsed = ParseStyle(kRows[Number]);

template <size_t... Numbers>
constexpr std::array<const CitationStyle*, kStyleCount> ParsedStyles(std::index_sequence<Numbers...>) {
    return {&kParsed<Numbers>...};
}

constexpr std::array<const CitationStyle*, kStyleCount> kStyles = ParsedStyles(std::make_index_sequence<kStyleCount>());

}  // namespace

const CitationStyle* FindStyle(int32_t number) {
    return number >= 0 && number < kStyleCount ? kStyles[static_cast<size_t>(number)] : nullptr;
}

}  // namespace lore
