#include "editors/EditorForm.h"

namespace health {

EditorForm::EditorForm(modShared& shared, TextView name, TextView caption)
    : Form(name, caption)
    , m_shared(shared)
{
    cmdAdd.setCaption(L"&OK");
    cmdAdd.setToolTip(L"Add data");
    cmdCancel.setCaption(L"&Cancel");
    cmdCancel.setToolTip(L"Cancel adding data");
    cmdCancel.Click = [this] { close(); };
    setDefaultButton(&cmdAdd);
    setCancelButton(cmdCancel);
}

void EditorForm::Form_Activate()
{
    if (m_activated)
        return;
    trap(L"Form_Activate", [this] { activate(); });
    m_activated = true;
}

std::function<void()> EditorForm::trapped(TextView procedure, std::function<void()> work)
{
    return [this, procedure, work = std::move(work)] { trap(procedure, work); };
}

void EditorForm::bindLookup(TextBox& field, Button& button, std::function<void()> lookup)
{
    setLookupButton(field, button);
    button.Click = lookup;
    field.GotFocus = [this, &field, &button] {
        field.selectAll();
        setDefaultButton(&button);
    };
    field.LostFocus = [this, &field, lookup = std::move(lookup)] { leaveLookupField(field, lookup); };
}

void EditorForm::leaveLookupField(TextBox& field, const std::function<void()>& lookup)
{
    setDefaultButton(&cmdAdd);
    if (activeControl() == &cmdCancel)
        return;
    if (field.text().empty()) {
        field.setTag({});
        return;
    }
    if (field.tag().empty())
        lookup();
    if (field.tag().empty())
        field.setText({});
}

}
