#include "formats/numbers.h"

#include "formats/text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace corvane {
namespace {}  // namespace

std::string leading_blank(std::int64_t number) {
  return (number < 0 ? "" : " ") + std::to_string(number);
}

std::string trimmed(std::int64_t number) {
  return std::to_string(number);
}

std::string two_digits(std::int64_t number) {
  return (number < 10 ? "0" : "") + trimmed(number);
}

bool is_plain_number(std::string_view text) {
  constexpr std::string_view digits = "0123456789";
  const auto points = std::count(text.begin(), text.end(), '.');
  return points <= 1 && text.find_first_of(digits) != std::string_view::npos &&
         text.find_first_not_of("0123456789.") == std::string_view::npos;
}

std::string leading_number_text(std::string_view text) {
  bool negative = false, point = false, begun = false;
  std::string whole, fraction;
  for (const char c : text) {
    if (c == ' ')
      continue;
    if (is_digit(c))
      (point ? fraction : whole) += c;
    else if (c == '.' && !point)
      point = true;
    else if ((c == '-' || c == '+') && !begun)
      negative = c == '-';
    else
      break;
    begun = true;
  }
  whole.erase(0, whole.find_first_not_of('0'));
  fraction.erase(fraction.find_last_not_of('0') + 1);
  if (whole.empty() && fraction.empty())
    return "0";
  return (negative ? "-" : "") + (whole.empty() ? "0" : whole) +
         (fraction.empty() ? "" : "." + fraction);
}

double leading_number(std::string_view text) {
  const std::string number = leading_number_text(text);
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value,
                                            std::chars_format::fixed);
  if (error == std::errc::result_out_of_range) {
    if (number.starts_with("0.") || number.starts_with("-0."))
      return 0;
    return number[0] == '-' ? std::numeric_limits<double>::lowest()
                            : std::numeric_limits<double>::max();
  }
  return value;
}

int leading_whole(std::string_view text) {
  const double value = leading_number(text);
  if (value >= std::numeric_limits<int>::max())
    return std::numeric_limits<int>::max();
  if (value <= std::numeric_limits<int>::min())
    return std::numeric_limits<int>::min();
  return static_cast<int>(value);
}

bool is_decimal(std::string_view text) {
  text = trim(text);
  if (text.starts_with('-') || text.starts_with('+'))
    text.remove_prefix(1);
  const auto point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  const std::string_view fraction =
      point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
  const auto digits = [](std::string_view s) {
    return s.find_first_not_of("0123456789") == std::string_view::npos;
  };
  return digits(whole) && digits(fraction) && whole.size() + fraction.size() > 0;
}

}  // namespace corvane
