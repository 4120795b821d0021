#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/OptionArray.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"

namespace health {

class SummaryBuilder;

// A treatment contract with the patient: pain or mental health, the date it was initiated, the provider.
class frmTxc : public EditorForm {
public:
    // How long a contract runs from its initiation; the form takes none that has run out.
    static constexpr std::chrono::days Term { 365 };

    explicit frmTxc(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit

    void Form_Load() override;
    Arrangement arrangement() override;
    SaveSummary summary() override;

    mevContainer fraTypes;
    OptionArray<2> opt; // pain, mental health
    std::array<Label, 2> lbl;
    mevZvDate datInit;
    TextBox txtPrv; // its tag holds the provider's number
    Button cmdPrv;
    Button cmdAdd;

private:
    Text recordNumber() const override { return m_sIEN; }
    std::unique_ptr<EditorForm> another() const override
    {
        return anotherOf(*this, &frmTxc::m_sIEN, &frmTxc::m_sVisit);
    }
    Text visitNumber() const override { return m_sVisit; }
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    void addInitiated(SummaryBuilder& builder) const;
    void LoadTXC();
    void showRecord(TextView line);
    void datInit_NewDateEntered();
    void fillDate();
    void cmdAdd_Click();

    StoredRecord m_stored;
};

}
