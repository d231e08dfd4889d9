#include "project/edited_xml.h"

namespace corvane {

const std::string& edited_xml(const project& p) {
  static const std::string none;
  return p.customxml.find_first_not_of(" \t\r\n") == std::string::npos ? none : p.customxml;
}

}  // namespace corvane
