#pragma once

#include "editors/EditorForm.h"
#include "editors/FunctionalItems.h"
#include "editors/StoredRecord.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/mevContainer.h"

#include <array>

namespace health {

// One assessment of a patient's functional status.
class frmElder : public EditorForm {
public:
    explicit frmElder(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit

    Arrangement arrangement() override;
    SaveSummary summary() override;

    std::array<mevContainer, 2> fra; // activities of daily living, instrumental ones
    std::array<Label, FunctionalItemCount> lbl;
    std::array<ComboBox, FunctionalItemCount> cbo;
    Button cmdAdd;

private:
    Text recordNumber() const override { return m_sIEN; }
    std::unique_ptr<EditorForm> another() const override
    {
        return anotherOf(*this, &frmElder::m_sIEN, &frmElder::m_sVisit);
    }
    Text visitNumber() const override { return m_sVisit; }
    Arrangement itemFields(std::size_t first, std::size_t last);
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Explanation explainItem(std::size_t item) const;
    Explanation countIndependent(std::size_t first, std::size_t last) const;
    void loadRecord();
    void cmdAdd_Click();

    StoredRecord m_stored;
};

}
