#include "formats/vm_command.h"

#include "formats/vm_bits.h"

#include <cstdio>

namespace corvane {

namespace {

std::string decimal(unsigned n) {
  return std::to_string(n);
}

std::string general_register(unsigned n) {
  return "g" + decimal(n);
}

/// A register field of eight bits: the highest says system ("s4") or general ("g4").
std::string any_register(unsigned field) {
  return (field & 0x80 ? "s" : "g") + decimal(field & 0x7f);
}

/// A second operand that ends 16 bits from `highest`: a number, or a register in its lower half.
std::string operand(const vm_bits& c, bool immediate, unsigned highest) {
  return immediate ? decimal(c(highest, 16)) : any_register(c(highest - 8, 8));
}

const char* comparison(unsigned op) {
  static const char* const names[] = {"", " & ", " == ", " != ", " >= ", " > ", " <= ", " < "};
  return names[op & 7];
}

std::string condition(const std::string& left, unsigned op, const std::string& right) {
  return op == 0 ? std::string() : "if (" + left + comparison(op) + right + ") ";
}

/// The condition of links and control flow.
std::string condition_of_link(const vm_bits& c) {
  return condition(any_register(c(39, 8)), c(54, 3), operand(c, c.set(55), 31));
}

/// The condition of jumps and of commands that set system registers.
std::string condition_of_jump(const vm_bits& c) {
  return condition(any_register(c(15, 8)), c(54, 3), any_register(c(7, 8)));
}

/// The condition of a command of kind 3.
std::string condition_of_set(const vm_bits& c) {
  return condition(general_register(c(43, 4)), c(54, 3), operand(c, c.set(55), 15));
}

/// The condition of a command of kind 4, whose first operand is the register it has just set.
std::string condition_after_set(const vm_bits& c) {
  return condition(general_register(c(51, 4)), c(54, 3), operand(c, c.set(55), 31));
}

/// The condition of commands of kinds 5 and 6.
std::string condition_before_set(const vm_bits& c) {
  if (c.set(60))
    return condition(general_register(c(31, 8) & 15), c(54, 3), any_register(c(23, 8)));
  return condition(general_register(c(39, 8) & 15), c(54, 3), operand(c, c.set(55), 31));
}

std::string assignment(const std::string& target, unsigned op, const std::string& value) {
  static const char* const names[] = {"",     " = ",  " <-> ",      " += ", " -= ", " *= ",
                                      " /= ", " %= ", " = random ", " &= ", " |= ", " ^= "};
  if (op == 0)
    return "";
  return op < 12 ? target + names[op] + value : "unknown set";
}

/// Links within the program chain, and the button that is selected after them.
std::string link_within(const vm_bits& c) {
  static const char* const names[] = {"Nop",
                                      "LinkTopCell",
                                      "LinkNextCell",
                                      "LinkPrevCell",
                                      "",
                                      "LinkTopPG",
                                      "LinkNextPG",
                                      "LinkPrevPG",
                                      "",
                                      "LinkTopPGC",
                                      "LinkNextPGC",
                                      "LinkPrevPGC",
                                      "LinkGoUpPGC",
                                      "LinkTailPGC",
                                      "",
                                      "",
                                      "RSM"};
  const unsigned which = c(4, 5), button = c(15, 6);
  std::string text = which < 17 ? names[which] : "";
  if (text.empty())
    text = "unknown link";
  return button == 0 ? text : text + ", button " + decimal(button);
}

std::string link(const vm_bits& c) {
  const unsigned button = c(15, 6);
  const std::string select = button == 0 ? "" : ", button " + decimal(button);
  switch (c(51, 4)) {
    case 0:
      return "";
    case 1:
      return link_within(c);
    case 4:
      return "LinkPGCN " + decimal(c(14, 15));
    case 5:
      return "LinkPTTN " + decimal(c(9, 10)) + select;
    case 6:
      return "LinkPGN " + decimal(c(6, 7)) + select;
    case 7:
      return "LinkCN " + decimal(c(7, 8)) + select;
    default:
      return "unknown link";
  }
}

std::string menu_name(unsigned id) {
  switch (id) {
    case 2:
      return "title menu";
    case 3:
      return "root menu";
    case 4:
      return "subpicture menu";
    case 5:
      return "audio menu";
    case 6:
      return "angle menu";
    case 7:
      return "chapter menu";
    default:
      return "menu " + decimal(id);
  }
}

/// Where JumpSS and CallSS go: the system space is the first-play chain and the menus.
std::string system_space(const vm_bits& c, bool jump) {
  switch (c(23, 2)) {
    case 0:
      return "FP";
    case 1:
      return "VMGM " + menu_name(c(19, 4));
    case 2:
      return jump ? "VTSM titleset " + decimal(c(30, 7)) + ", title " + decimal(c(38, 7)) + ", " +
                        menu_name(c(19, 4))
                  : "VTSM " + menu_name(c(19, 4));
    default:
      return "VMGM PGC " + decimal(c(46, 15));
  }
}

std::string jump(const vm_bits& c) {
  switch (c(51, 4)) {
    case 1:
      return "Exit";
    case 2:
      return "JumpTT " + decimal(c(22, 7));
    case 3:
      return "JumpVTS_TT " + decimal(c(22, 7));
    case 5:
      return "JumpVTS_PTT " + decimal(c(22, 7)) + ":" + decimal(c(41, 10));
    case 6:
      return "JumpSS " + system_space(c, true);
    case 8: {
      const unsigned cell = c(31, 8);
      return "CallSS " + system_space(c, false) +
             (cell == 0 ? "" : ", resume at cell " + decimal(cell));
    }
    default:
      return "unknown jump";
  }
}

std::string control_flow(const vm_bits& c) {
  switch (c(51, 4)) {
    case 0:
      return "Nop";
    case 1:
      return condition_of_link(c) + "Goto " + decimal(c(7, 8));
    case 2:
      return condition_of_link(c) + "Break";
    case 3:
      return condition_of_link(c) + "SetTmpPML " + decimal(c(11, 4)) + ", Goto " + decimal(c(7, 8));
    default:
      return "unknown";
  }
}

std::string set_streams(const vm_bits& c) {
  static const char* const names[] = {"audio", "subpicture", "angle"};
  std::string text;
  for (unsigned i = 0; i < 3; ++i) {
    const unsigned top = 39 - i * 8;
    if (!c.set(top))
      continue;
    text += std::string(text.empty() ? "" : ", ") + names[i] + " = " +
            (c.set(60) ? decimal(c(top - 1, 7)) : general_register(c(top - 4, 4)));
  }
  return text;
}

std::string set_system(const vm_bits& c) {
  switch (c(59, 4)) {
    case 1:
      return set_streams(c);
    case 2:
      return "timer = " + operand(c, c.set(60), 47) + " then PGC " + decimal(c(30, 15));
    case 3:
      return std::string(c.set(23) ? "counter " : "register ") + general_register(c(19, 4)) +
             " = " + operand(c, c.set(60), 47);
    case 4:
      return "karaoke = " + operand(c, c.set(60), 31);
    case 6:
      return "button = " + (c.set(60) ? decimal(c(31, 6)) : any_register(c(23, 8)));
    default:
      return "unknown set";
  }
}

/// Assignment of a command of kinds 4 to 6.
std::string set_before_link(const vm_bits& c, const std::string& target) {
  return assignment(target, c(59, 4), operand(c, c.set(60), 47));
}

std::string with_link(const std::string& done, const std::string& then) {
  if (done.empty() || then.empty())
    return done + then;
  return done + ", " + then;
}

using place = vm_target::place;

int whole(unsigned n) {
  return static_cast<int>(n);
}

vm_target target_within(const vm_bits& c) {
  vm_target to;
  const unsigned which = c(4, 5);
  const bool known = which >= 1 && which <= 13 && which != 4 && which != 8;
  if (which != 16 && !known)
    return to;
  to.where = known ? place::within : place::resume;
  to.link = known ? whole(which) : 0;
  to.button = whole(c(15, 6));
  return to;
}

vm_target link_target(const vm_bits& c) {
  vm_target to;
  switch (c(51, 4)) {
    case 1:
      return target_within(c);
    case 4:
      to.where = place::chain;
      to.chain = whole(c(14, 15));
      return to;
    case 5:
      to.where = place::linked_chapter;
      to.chapter = whole(c(9, 10));
      break;
    case 6:
      to.where = place::program;
      to.program = whole(c(6, 7));
      break;
    case 7:
      to.where = place::cell;
      to.cell = whole(c(7, 8));
      break;
    default:
      return to;
  }
  to.button = whole(c(15, 6));
  return to;
}

/// Menus of the system space have numbers of four bits, of which these have names.
menu_kind kind_of_menu(unsigned id) {
  return id >= 2 && id <= 7 ? static_cast<menu_kind>(id) : menu_kind::none;
}

vm_target system_target(const vm_bits& c, bool call) {
  vm_target to;
  to.call = call;
  to.resume_cell = call ? whole(c(31, 8)) : 0;
  switch (c(23, 2)) {
    case 0:
      to.where = place::first_play;
      break;
    case 1:
      to.where = place::manager_menu;
      to.menu = kind_of_menu(c(19, 4));
      break;
    case 2:
      to.where = place::titleset_menu;
      to.menu = kind_of_menu(c(19, 4));
      to.titleset = call ? 0 : whole(c(30, 7));
      to.title = call ? 0 : whole(c(38, 7));
      break;
    default:
      to.where = place::manager_chain;
      to.chain = whole(c(46, 15));
  }
  return to;
}

vm_target jump_target(const vm_bits& c) {
  vm_target to;
  to.title = whole(c(22, 7));
  switch (c(51, 4)) {
    case 1:
      to.where = place::exit;
      to.title = 0;
      break;
    case 2:
      to.where = place::title;
      break;
    case 3:
      to.where = place::titleset_title;
      break;
    case 5:
      to.where = place::chapter;
      to.chapter = whole(c(41, 10));
      break;
    case 6:
      return system_target(c, false);
    case 8:
      return system_target(c, true);
    default:
      to.title = 0;
  }
  return to;
}

}  // namespace

std::string decoded(const vm_bytes& bytes) {
  const vm_bits c(bytes);
  std::string text;
  switch (c(63, 3)) {
    case 0:
      text = control_flow(c);
      break;
    case 1:
      text = c.set(60) ? condition_of_jump(c) + jump(c) : condition_of_link(c) + link(c);
      break;
    case 2:
      text = condition_of_jump(c) + with_link(set_system(c), link(c));
      break;
    case 3:
      text = condition_of_set(c) +
             with_link(assignment(general_register(c(35, 4)), c(59, 4), operand(c, c.set(60), 31)),
                       link(c));
      break;
    case 4:
      text = set_before_link(c, general_register(c(51, 4))) + "; " + condition_after_set(c) +
             link_within(c);
      break;
    case 5:
      text = condition_before_set(c) + "{ " +
             with_link(set_before_link(c, general_register(c(51, 4))), link_within(c)) + " }";
      break;
    case 6:
      text = condition_before_set(c) + "{ " + set_before_link(c, general_register(c(51, 4))) +
             " } " + link_within(c);
      break;
    default:
      text = "unknown";
  }
  const bool known = !text.empty() && text.find("unknown") == std::string::npos;
  return known ? text : "unknown " + hex(bytes);
}

vm_target target_of(const vm_bytes& bytes) {
  const vm_bits c(bytes);
  const bool compared = c(54, 3) != 0;
  vm_target to;
  switch (c(63, 3)) {
    case 1:
      to = c.set(60) ? jump_target(c) : link_target(c);
      break;
    case 2:
    case 3:
      to = link_target(c);
      break;
    case 4:
    case 5:
    case 6:
      to = target_within(c);
      break;
    default:
      break;
  }
  // A command of kind 6 compares before it sets, and links whatever comes of it.
  to.conditional = to.where != place::nowhere && compared && c(63, 3) != 6;
  return to;
}

std::string hex(const vm_bytes& bytes) {
  std::string text;
  for (const std::uint8_t b : bytes) {
    char two[4];
    std::snprintf(two, sizeof two, "%02x", static_cast<unsigned>(b));
    text += (text.empty() ? "" : " ") + std::string(two);
  }
  return text;
}

}  // namespace corvane
