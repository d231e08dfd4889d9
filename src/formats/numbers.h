// Number texts: the forms in which numbers stand in rows, messages and scripts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// ASCII only.
inline bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

/// " 7", " 0", "-4": one leading blank when not negative ("jump title 1" is "jump title" + 1).
std::string leading_blank(std::int64_t number);

/// "7", "0", "-4".
std::string trimmed(std::int64_t number);

/// "07", "12", "123": at least two digits, of a number that is not negative.
std::string two_digits(std::int64_t number);

/// Whether a text is digits, at least one, with at most one point anywhere among them: "5", ".5",
/// "05.".
bool is_plain_number(std::string_view text);

/// The decimal number a text begins with, as trimmed text: blanks anywhere are ignored, a sign may
/// stand first, then digits with at most one point; what follows is ignored. "12.50 ms" gives
/// "12.5", " 1 000" gives "1000", ".5" gives "0.5", "-0" and "abc" give "0". Any length.
std::string leading_number_text(std::string_view text);

/// The same as a value; 0 without one. Too large is the largest double.
double leading_number(std::string_view text);

/// The whole part of the same, kept within 32 bits.
int leading_whole(std::string_view text);

/// Whether a text is an optional sign, digits and an optional fraction; blanks around are fine.
bool is_decimal(std::string_view text);

}  // namespace corvane
