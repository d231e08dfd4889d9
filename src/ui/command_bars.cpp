#include "ui/command_bars.h"

#include "ui/main_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/plain_arrows.h"
#include "ui/widgets/tool_tips.h"

#include <wx/menu.h>
#include <wx/toolbar.h>

#include <cstddef>
#include <string_view>

namespace corvane {
namespace {

wxItemKind toolkit_kind(item_kind kind) {
  return kind == item_kind::check ? wxITEM_CHECK : wxITEM_NORMAL;
}

wxString with_keys(const menu_item& item) {
  return *item.keys == '\0' ? wxString(item.caption) : wxString(item.caption) + "\t" + item.keys;
}

/// An identifier bound to the action on the window.
int bound_id(main_window& window, action run) {
  const int id = wxWindow::NewControlId();
  if (run != nullptr)
    window.Bind(
        wxEVT_MENU, [&window, run](wxCommandEvent&) { run(window); }, id);
  return id;
}

}  // namespace

command_bars::command_bars(main_window& window) : window_(window) {
  make_menus();
  make_tools();
}

void command_bars::make_menus() {
  auto* bar = new wxMenuBar;
  for (const menu& m : main_menus()) {
    auto* shown_menu = new wxMenu;
    for (const menu_item& entry : m.items) {
      if (entry.kind == item_kind::separator) {
        shown_menu->AppendSeparator();
        continue;
      }
      if (entry.kind == item_kind::submenu) {
        items_[entry.name] = shown_menu->AppendSubMenu(new wxMenu, entry.caption);
        items_[entry.name]->Enable(false);  // until there is something in it
        continue;
      }
      wxMenuItem* made = shown_menu->Append(bound_id(window_, entry.run), with_keys(entry),
                                            wxString(), toolkit_kind(entry.kind));
      made->Enable(entry.run != nullptr);
      items_[entry.name] = made;
    }
    bar->Append(shown_menu, m.caption);
  }
  window_.SetMenuBar(bar);
}

wxMenu* command_bars::make_drop_down(const tool& t) {
  auto* drop = new wxMenu;
  for (const drop_item& entry : t.drop)
    drop->Append(bound_id(window_, entry.run), entry.caption)->Enable(entry.run != nullptr);
  drop_downs_[t.caption] = drop;
  return drop;
}

void command_bars::make_tools() {
  Toolbar1_ = window_.CreateToolBar(wxTB_HORIZONTAL | wxTB_TEXT | wxTB_FLAT);
  name_control(*Toolbar1_, "Toolbar1");
  for (const tool& t : main_tools()) {
    const int id = bound_id(window_, t.run);
    Toolbar1_->AddTool(id, t.caption, icon_picture(t.picture, layout::tool_icon), wxBitmapBundle(),
                       t.drop.empty() ? wxITEM_NORMAL : wxITEM_DROPDOWN, t.tip, t.description);
    if (!t.drop.empty())
      Toolbar1_->SetDropdownMenu(id, make_drop_down(t));
    Toolbar1_->EnableTool(id, t.run != nullptr);
  }
  draw_with_plain_arrows(*Toolbar1_);
  let_tips_stand_below(*Toolbar1_);
  Toolbar1_->Realize();
}

wxMenuItem* command_bars::item(const std::string& name) const {
  const auto found = items_.find(name);
  return found == items_.end() ? nullptr : found->second;
}

wxMenu* command_bars::drop_down(const std::string& tool_caption) const {
  const auto found = drop_downs_.find(tool_caption);
  return found == drop_downs_.end() ? nullptr : found->second;
}

std::unique_ptr<wxMenu> command_bars::context_menu(const std::vector<drop_item>& items) {
  auto menu = std::make_unique<wxMenu>();
  for (const drop_item& entry : items) {
    if (*entry.key == '\0') {
      menu->AppendSeparator();
      continue;
    }
    const int id = wxWindow::NewControlId();
    menu->Append(id, entry.caption);
    menu->Bind(
        wxEVT_MENU,
        // Once the menu has gone.
        [this, run = entry.run](wxCommandEvent&) {
          window_.CallAfter([this, run] { run(window_); });
        },
        id);
  }
  return menu;
}

void command_bars::enable(bool enabled) {
  wxMenuBar* bar = window_.GetMenuBar();
  for (std::size_t i = 0; i < bar->GetMenuCount(); ++i)
    bar->EnableTop(i, enabled || std::string_view(main_menus()[i].name) == "help");
  Toolbar1_->Enable(enabled);
}

}  // namespace corvane
