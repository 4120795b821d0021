#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/CheckList.h"

namespace health {

// How an infant is fed: one choice out of five.
class frmInf : public EditorForm {
public:
    // As shown; their codes are 1 to 5.
    static constexpr std::array<TextView, 5> Choices { L"Exclusive Breastfeeding", L"Mostly Breastfeeding",
        L"1/2 Breast & 1/2 Formula", L"Mostly Formula", L"Formula Only" };

    explicit frmInf(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit

    Arrangement arrangement() override;
    SaveSummary summary() override;

    CheckList lstINF;
    Button cmdAdd;

private:
    Text recordNumber() const override { return m_sIEN; }
    std::unique_ptr<EditorForm> another() const override
    {
        return anotherOf(*this, &frmInf::m_sIEN, &frmInf::m_sVisit);
    }
    Text visitNumber() const override { return m_sVisit; }
    void activate() override;
    Control* fieldOf(TextView refusal) override;
    void loadRecord();
    void lstINF_ItemCheck(int item);
    void cmdAdd_Click();

    StoredRecord m_stored;
};

}
