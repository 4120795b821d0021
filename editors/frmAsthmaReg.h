#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/mevZvDate.h"

#include <array>

namespace health {

class SummaryBuilder;

// The current patient's entry in the asthma registry. The caller sets nothing.
class frmAsthmaReg : public EditorForm {
public:
    explicit frmAsthmaReg(modShared& shared);

    Arrangement arrangement() override;
    SaveSummary summary() override;

    Label lblStatus;
    Button cmdActivate;
    std::array<mevZvDate, 3> dat; // last asthma visit, calculated date due, next appointment
    TextBox txtPrv; // case manager; its tag holds the number of a manager looked up here
    Button cmdPrv;
    TextBox txtComments { TextBox::Lines::Several };
    std::array<Label, 6> lbl; // for status, dates, manager, comments
    Button cmdAdd;

private:
    Text recordNumber() const override { return openedFor(); }
    std::unique_ptr<EditorForm> another() const override { return anotherOf(*this); }
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Text storedManager() const;
    void addManager(SummaryBuilder& builder) const;
    void LoadReg();
    void cmdAdd_Click();
    void cmdActivate_Click();
    void setStatus(TextView status);
    void dat_NewDateEntered(std::size_t index);

    StoredRecord m_stored;
    Text m_storedNote; // with its line breaks
};

// The button's caption: the opposite of the registry's status.
inline constexpr TextView ActivateCaption = L"&Activate";
inline constexpr TextView InactivateCaption = L"&Inactivate";

// The registry's comment on a patient; empty after a server error, which has been shown.
Text registryNote(modShared& shared, TextView patient);

}
