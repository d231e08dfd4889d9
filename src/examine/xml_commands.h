// The commands of hand-edited navigation XML, as they stand there.
#pragma once

#include "disc/finding.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A command that dvdauthor cannot read.
struct xml_command_fault {
  finding_item item;
  std::string command;  ///< without the white space around it
  int line = 1;         ///< where its element begins, 1-based
  std::string clause;   ///< "has nothing where dvdauthor wants ";""
};

/// The commands of all fpc, pre, post, button and cell elements of a well-formed text that
/// dvdauthor cannot read, each with its place. Nothing for a text that is not well formed.
std::vector<xml_command_fault> xml_command_faults(std::string_view customxml);

}  // namespace corvane
