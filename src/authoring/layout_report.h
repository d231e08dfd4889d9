// The layout report: the disc's structure as one HTML page, and the command that shows it.
//
// The page reflects the project's rows, whatever hand-edited XML there is. Whatever they hold is
// shown as text: no name can put markup into the page.
#pragma once

#include "disc/disc_description.h"
#include "platform/processes/desktop.h"
#include "project/document.h"

#include <string>
#include <string_view>

namespace corvane {

/// The page of the disc that the rows ask for; each of its lines ends with CR LF, all of it is
/// ASCII. `size_text`: the lines that tell what the disc contains. `edited`: the page says that the
/// XML was edited and leads to its copy.
std::string layout_html(const disc_description& d, const std::string& size_text, bool edited);

/// Text as HTML shows it: "<", ">", "&" and quotes as entities, characters outside ASCII as
/// numbers, so that the page needs to name no encoding. What no page may hold (control characters,
/// bytes that are not UTF-8) becomes U+FFFD.
std::string html_text(std::string_view text);

enum class report_result {
  shown,        ///< the browser was started
  not_written,  ///< a file could not be written; a message was shown
  not_shown,    ///< written, but the browser could not be started; a message was shown
};

/// "generate layout report": writes layout.html into the program folder `app` (native), beside it
/// the hand-edited XML as layoutconfig.xml when there is one, and shows the page. The project is
/// not touched.
report_result layoutprint_command(document& doc, const std::string& app, desktop& user_desktop);

}  // namespace corvane
