// kalmevRepHistCtrl: which commands the user may give, and the context menu.
#include "control/kalmevRepHistCtrl.h"

#include "control/GridLoader.h"
#include "shared/modConst.h"
#include "text/Conversions.h"

namespace health {

namespace {

// Asks the host without a word to the user whether there is a visit that records can be added to.
constexpr int UsableVisitFlags = 12;

}

bool kalmevRepHistCtrl::isEditPermitted(int number, Report report)
{
    const RecordType* const type = recordType(number);
    if (m_shared.patient().number() == 0 || !type)
        return false;
    Text refusal;
    if (type->editRule == EditRule::PermissionMessage)
        refusal = m_shared.PermissionMessage();
    else if (type->editRule == EditRule::Key && !m_shared.HasProvider()
        && !m_editKeys[static_cast<std::size_t>(type->editKey)])
        refusal = editRefusal(type->keyInRefusal);
    if (!refusal.empty() && report == Report::Shown)
        m_shared.ErrorBox(refusal, InsufficientPermissions);
    return refusal.empty();
}

// The number of a row's type; 0 for a row without one.
int kalmevRepHistCtrl::typeOf(int row) const
{
    return static_cast<int>(roundToWhole(leadingNumber(fgData.text(row, GridColumn::Type))));
}

bool kalmevRepHistCtrl::canAdd()
{
    const int number = cboType.itemData(cboType.listIndex());
    if (!isEditPermitted(number, Report::Silent))
        return false;
    return !recordType(number)->needsVisit || m_shared.encounter().prepare(UsableVisitFlags);
}

void kalmevRepHistCtrl::updateCommands()
{
    std::array<bool, CommandCount> enabled {};
    bool visitDetail = false;
    trap(L"UpdateCommands", [&] {
        enabled[Add] = canAdd();
        const int row = fgData.row();
        if (row == -1)
            return;
        const bool locked = fgData.text(row, GridColumn::Locked) == L"1";
        enabled[Edit] = !locked && isEditPermitted(typeOf(row), Report::Silent);
        enabled[Delete] = enabled[Edit];
        visitDetail = !fgData.text(row, GridColumn::Visit).empty();
    });
    for (std::size_t i = 0; i < CommandCount; ++i) {
        cmd[i].setEnabled(enabled[i]);
        mnuCmd[i].setEnabled(enabled[i]);
    }
    mnuVisitDetail.setEnabled(visitDetail);
    // The menu stands at a row, but adds what the list on top names.
    mnuCmd[Add].setDetail(enabled[Add] ? cboType.text() : Text());
}

void kalmevRepHistCtrl::mnuVisitDetail_Click()
{
    if (fgData.row() == -1)
        return;
    const Text visit(fgData.text(fgData.row(), GridColumn::Visit)); // a copy: the call may let an event reload the grid
    m_shared.VisitDetail(visit);
}

void kalmevRepHistCtrl::fgData_MouseUp(MouseButton button)
{
    if (button != MouseButton::Right)
        return;
    fgData.select(fgData.mouseRow());
    updateCommands();
    m_shared.desktop().popUp(mnuContextPopup);
}

}
