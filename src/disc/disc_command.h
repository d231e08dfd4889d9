// Navigation commands, as a person may have typed them: with any blanks.
//
// dvdauthor does not mind the blanks. What is checked before a run and what the jump table rewrites
// must not either, or a command would pass the one and be missed by the other; so both read
// commands here. What the editors do not offer is left to dvdauthor.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

enum class verb {
  other,
  jump_title,     ///< with a chapter when `chapter` is set
  jump_menu,      ///< to menu `number`
  jump_titleset,  ///< "jump titleset 1 menu"
  call_menu,      ///< with a menu when `number` is set
  call_last_menu,
};

/// What a command means.
struct command_form {
  verb what = verb::other;
  std::optional<int> number;   ///< title or menu, 1-based
  std::optional<int> chapter;  ///< of the title, 1-based
  bool operator==(const command_form&) const = default;
};

command_form parse_command(std::string_view command);

/// A command and its text.
struct disc_command {
  std::string text;
  command_form form;
  bool operator==(const disc_command&) const = default;
};

disc_command command_of(std::string_view text);

/// What the commands begin with that the jump table rewrites. "jump titleset 1 menu" begins with
/// "jump title" too and remembers its menu like a jump to a title; that is wanted.
inline constexpr std::string_view jump_menu_words = "jump menu";
inline constexpr std::string_view jump_title_words = "jump title";
inline constexpr std::string_view call_menu_words = "call menu";
inline constexpr std::string_view call_last_menu_words = "call last menu";

/// The command in a form that begins with these words if it has them: as it stands when it begins
/// with them already, else with one blank between its words. Commands without them as they stand.
std::string interpreted(std::string_view command);

/// Whether `interpreted` begins with any of these words.
bool is_interpreted(std::string_view command);

}  // namespace corvane
