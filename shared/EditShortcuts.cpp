#include "shared/EditShortcuts.h"

#include <array>

namespace health {

namespace {

struct EditShortcut {
    int keyCode;
    int message;
    int value;
};

constexpr std::array<EditShortcut, 6> EditShortcuts { {
    { 65, 177, -1 }, // A: select all
    { 67, 769, 0 }, // C: copy
    { 86, 770, 0 }, // V: paste
    { 88, 768, 0 }, // X: cut
    { 89, 1108, 0 }, // Y: redo
    { 90, 199, 0 }, // Z: undo
} };

constexpr int ControlShift = 2;

}

void filterEditKeys(Desktop& desktop, int& keyCode, int shift, EditHandle edit)
{
    if (shift != ControlShift)
        return;
    for (const EditShortcut& shortcut : EditShortcuts) {
        if (shortcut.keyCode != keyCode)
            continue;
        // Intended: passes the address of `value`, as the edit-box message requires; select-all therefore selects to
        // the end.
        desktop.sendEditMessage(edit, shortcut.message, 0, &shortcut.value);
        keyCode = 0;
        return;
    }
}

}
