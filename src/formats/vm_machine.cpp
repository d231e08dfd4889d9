#include "formats/vm_machine.h"

#include "formats/vm_bits.h"

#include <algorithm>
#include <cstddef>

namespace corvane {

namespace {

constexpr int most_steps = 10'000;
constexpr std::size_t highlighted_button = 8;

bool compares(unsigned op, unsigned left, unsigned right) {
  switch (op) {
    case 1:
      return (left & right) != 0;
    case 2:
      return left == right;
    case 3:
      return left != right;
    case 4:
      return left >= right;
    case 5:
      return left > right;
    case 6:
      return left <= right;
    case 7:
      return left < right;
    default:
      return true;
  }
}

bool needs_comparison(const vm_bits& c) {
  return c(54, 3) != 0;
}

/// Arithmetic ends at the bounds of 16 bits; what is divided by 0 becomes 65535.
std::uint16_t assigned(unsigned op, unsigned before, unsigned value) {
  std::uint64_t result = before;
  switch (op) {
    case 1:
      result = value;
      break;
    case 3:
      result = std::uint64_t{before} + value;
      break;
    case 4:
      result = before > value ? before - value : 0;
      break;
    case 5:
      result = std::uint64_t{before} * value;
      break;
    case 6:
      result = value == 0 ? 0xFFFF : before / value;
      break;
    case 7:
      result = value == 0 ? 0xFFFF : before % value;
      break;
    case 8:
      result = 1;
      break;
    case 9:
      result = before & value;
      break;
    case 10:
      result = before | value;
      break;
    case 11:
      result = before ^ value;
      break;
    default:
      break;
  }
  return static_cast<std::uint16_t>(std::min<std::uint64_t>(result, 0xFFFF));
}

class machine {
 public:
  explicit machine(vm_registers& registers) : registers_(registers) {}

  vm_end run(std::span<const vm_command> commands) {
    vm_end end;
    for (std::size_t next = 0; next < commands.size(); ++end.steps) {
      if (end.steps == most_steps) {
        end.endless = true;
        return end;
      }
      const vm_command& command = commands[next++];
      const vm_bits c(command.bytes);
      if (c(63, 3) == 0) {
        if (!go_on(c, next))
          return end;
        continue;
      }
      vm_target to = command.target();
      to.conditional = false;
      if (does(c) && to.where != vm_target::place::nowhere) {
        end.to = to;
        return end;
      }
    }
    return end;
  }

 private:
  /// Control flow: sets the command that is next. False: the list is left.
  bool go_on(const vm_bits& c, std::size_t& next) {
    const unsigned what = c(51, 4);
    if (what == 0 || !holds_for_link(c))
      return true;
    if (what == 2)
      return false;
    const unsigned line = c(7, 8);
    if (line == 0)
      return false;
    next = line - 1;
    return true;
  }

  /// Does what a command does before it leads anywhere; false: it leads nowhere this time.
  bool does(const vm_bits& c) {
    switch (c(63, 3)) {
      case 1:
        return c.set(60) ? holds_for_jump(c) : holds_for_link(c);
      case 2:
        if (!holds_for_jump(c))
          return false;
        set_system(c);
        return true;
      case 3:
        if (needs_comparison(c) &&
            !compares(c(54, 3), general(c(43, 4)), operand(c, c.set(55), 15)))
          return false;
        set_general(c, c(35, 4), operand(c, c.set(60), 31));
        return true;
      case 4:
        set_before_link(c);
        return !needs_comparison(c) ||
               compares(c(54, 3), general(c(51, 4)), operand(c, c.set(55), 31));
      case 5:
        if (!holds_before_set(c))
          return false;
        set_before_link(c);
        return true;
      case 6:
        if (holds_before_set(c))
          set_before_link(c);
        return true;
      default:
        return false;
    }
  }

  unsigned general(unsigned number) {
    if ((registers_.known >> (number & 15) & 1) == 0)
      registers_.guessed = true;
    return registers_.general[number & 15];
  }

  /// A field of eight bits: the highest says system register.
  unsigned any(unsigned field) {
    if ((field & 0x80) == 0)
      return general(field);
    const unsigned number = field & 0x7f;
    if (number != highlighted_button)
      registers_.guessed = true;
    return number < registers_.system.size() ? registers_.system[number] : 0;
  }

  unsigned operand(const vm_bits& c, bool immediate, unsigned highest) {
    return immediate ? c(highest, 16) : any(c(highest - 8, 8));
  }

  bool holds_for_link(const vm_bits& c) {
    return !needs_comparison(c) || compares(c(54, 3), any(c(39, 8)), operand(c, c.set(55), 31));
  }
  bool holds_for_jump(const vm_bits& c) {
    return !needs_comparison(c) || compares(c(54, 3), any(c(15, 8)), any(c(7, 8)));
  }
  bool holds_before_set(const vm_bits& c) {
    if (!needs_comparison(c))
      return true;
    if (c.set(60))
      return compares(c(54, 3), general(c(31, 8)), any(c(23, 8)));
    return compares(c(54, 3), general(c(39, 8)), operand(c, c.set(55), 31));
  }

  void set_before_link(const vm_bits& c) {
    if (c(59, 4) != 0)
      set_general(c, c(51, 4), operand(c, c.set(60), 47));
  }

  void set_general(const vm_bits& c, unsigned number, unsigned value) {
    constexpr unsigned becomes = 1, exchanges = 2, random = 8;
    const unsigned op = c(59, 4);
    std::uint16_t& target = registers_.general[number & 15];
    if (op == 0)
      return;
    if (op != becomes)
      general(number);
    registers_.guessed = registers_.guessed || op == random;
    registers_.known = static_cast<std::uint16_t>(registers_.known | 1U << (number & 15));
    if (op != exchanges) {
      target = assigned(op, target, value);
      return;
    }
    // Exchanged with the register that the value came from; a number cannot take anything.
    const unsigned other = c(63, 3) == 3 ? c(23, 8) : c(39, 8);
    if ((other & 0x80) == 0 && !c.set(60))
      registers_.general[other & 15] = target;
    target = static_cast<std::uint16_t>(value);
  }

  void set_system(const vm_bits& c) {
    switch (c(59, 4)) {
      case 1:
        for (unsigned i = 0; i < 3; ++i) {
          const unsigned top = 39 - i * 8;
          if (c.set(top))
            registers_.system[i + 1] =
                static_cast<std::uint16_t>(c.set(60) ? c(top - 1, 7) : general(c(top - 4, 4)));
        }
        break;
      case 3:
        registers_.general[c(19, 4)] = static_cast<std::uint16_t>(operand(c, c.set(60), 47));
        registers_.known = static_cast<std::uint16_t>(registers_.known | 1U << c(19, 4));
        break;
      case 6:
        registers_.system[highlighted_button] =
            static_cast<std::uint16_t>(c.set(60) ? c(31, 6) << 10 : any(c(23, 8)));
        break;
      default:
        break;
    }
  }

  vm_registers& registers_;
};

}  // namespace

vm_end run_commands(std::span<const vm_command> commands, vm_registers& registers) {
  return machine(registers).run(commands);
}

}  // namespace corvane
