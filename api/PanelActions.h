// The actions of a panel that a host may show in its menus. The panel's widget publishes them as QWidget::actions().
// They work without the host too: by their shortcuts while the panel is the active one of its window, and by buttons.
#pragma once

namespace health {

// Dynamic property of an action: the host's menu to which it belongs, "File", "Edit" or "View". A host lists the
// actions of the panel that had the focus last when the menu opens.
inline constexpr const char* MenuProperty = "menu";

}
