#include "project/missing_tools.h"

#include "formats/sanitized.h"
#include "platform/files/program_folder.h"
#include "project/messages.h"

#include <algorithm>

namespace corvane {
namespace {

const outside_tool& tool_named(const std::string& name) {
  const auto& tools = outside_tools();
  const auto found = std::find_if(tools.begin(), tools.end(),
                                  [&name](const outside_tool& tool) { return tool.name == name; });
  return found == tools.end() ? import_tool() : *found;
}

/// How the system calls the tool: on Windows a person looks for a file.
std::string called(const std::string& tool, path_style style) {
  return style == path_style::windows ? tool + ".exe" : tool;
}

std::string origin(const outside_tool& tool, path_style style) {
  return style == path_style::windows ? tool.page : "package " + tool.package;
}

std::string why_missing(const outside_tool& tool, const std::string& app, path_style style) {
  if (style == path_style::windows)
    return called(tool.name, style) + " is not in the folder \"" +
           sanitized(join_path(app, "bin", style)) + "\".  It comes from " + tool.page +
           " and with the full installer of Corvane.";
  return tool.name + " is not installed.  It comes with the package " + tool.package + ".";
}

/// "mplex, jpeg2yuv: package mjpegtools", a line for each origin.
std::string missing_by_origin(const std::string& app, path_style style) {
  std::string lines, last;
  for (const outside_tool& tool : outside_tools()) {
    if (tool_is_there(app, tool.name))
      continue;
    // Tools of one project stand side by side in the table.
    const std::string from = origin(tool, style);
    if (from == last) {
      lines += ", " + called(tool.name, style);
      continue;
    }
    lines += (last.empty() ? "" : ": " + last + "\n") + called(tool.name, style);
    last = from;
  }
  return last.empty() ? "" : lines + ": " + last;
}

}  // namespace

std::string missing_tools(const std::string& app, const std::vector<std::string>& names,
                          path_style style) {
  std::string text;
  for (const std::string& name : names)
    if (!tool_is_there(app, name))
      text += (text.empty() ? "" : "\n") + why_missing(tool_named(name), app, style);
  return text;
}

std::string missing_tools_notice(const std::string& app, path_style style) {
  const std::string missing = missing_by_origin(app, style);
  if (missing.empty())
    return missing;
  if (style == path_style::windows)
    return "Corvane runs tools that are not in its folder \"" +
           sanitized(join_path(app, "bin", style)) + "\":\n\n" + missing +
           "\n\nThe full installer of Corvane has all of them.  Until they are there, what needs "
           "one of them is refused; everything else works.";
  return "Corvane runs tools that are not installed:\n\n" + missing +
         "\n\nInstall these packages (the tools must be on the PATH), and start Corvane again.  "
         "Until then, what needs one of them is refused; everything else works.";
}

void tell_missing_tools(document& doc, const std::string& app, path_style style) {
  if (const std::string text = missing_tools_notice(app, style); !text.empty())
    say(doc, icon::exclamation, text);
}

}  // namespace corvane
