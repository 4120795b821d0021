#pragma once

#include "editors/EditorForm.h"
#include "platform/controls/mevZvDate.h"

#include <array>

namespace health {

// The current patient's entry in the asthma registry. Nothing is set by the caller.
class frmAsthmaReg : public EditorForm {
public:
    explicit frmAsthmaReg(modShared& shared);

    Arrangement arrangement() override;

    Label lblStatus;
    Button cmdActivate;
    std::array<mevZvDate, 3> dat; // last asthma visit, calculated date due, next appointment
    TextBox txtPrv; // case manager; its tag holds the number of a manager looked up here
    Button cmdPrv;
    TextBox txtComments { TextBox::Lines::Several };
    std::array<Label, 6> lbl; // of the status, the dates, the manager, the comments
    Button cmdAdd;

private:
    void activate() override;
    void LoadReg();
    void cmdAdd_Click();
    void cmdActivate_Click();
    void setStatus(TextView status);
    void dat_NewDateEntered(std::size_t index);
};

// The caption that offers the opposite of the registry's status.
inline constexpr TextView ActivateCaption = L"&Activate";
inline constexpr TextView InactivateCaption = L"&Inactivate";

// The registry's comment of a patient; empty after an error, which was told.
Text registryNote(modShared& shared, TextView patient);

}
