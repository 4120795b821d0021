#pragma once

#include "editors/EditorForm.h"
#include "editors/FeedingAge.h"
#include "editors/StoredRecord.h"
#include "text/Letters.h"

#include <array>

namespace health {

// A child's birth measurements: weight, birth order, three feeding ages, mother or guardian. There is one record per
// patient.
class frmPediatric : public EditorForm {
public:
    static constexpr std::size_t Boxes = 5; // weight, order, formula started, breast feeding stopped, solids started

    explicit frmPediatric(modShared& shared);

    Arrangement arrangement() override;
    SaveSummary summary() override;

    std::array<TextBox, Boxes> txt;
    Label lblWt; // the unit of the weight
    TextBox txtPat; // its tag holds the chosen patient's number
    Button cmdPat;
    std::array<Label, 11> lbl; // captions of the fields, then the help texts
    Button cmdAdd;

private:
    Text recordNumber() const override { return openedFor(); }
    std::unique_ptr<EditorForm> another() const override { return anotherOf(*this); }
    Text ownState() const override;
    void entriesRestored(TextView ownState) override;
    void setCaptions();
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Explanation explainWeight() const;
    Explanation explainOrder() const;
    Explanation explainAge(const TextBox& box) const;
    Text savedWeight() const { return weightWithUnit(upperCase(txt[0].text())); }
    Text storedWeight() const;
    void LoadData();
    void setUnit(std::size_t unit);
    void txt_KeyPress(std::size_t index, wchar_t key);
    void noteUnit(wchar_t key);
    void txt_Validate(std::size_t index, bool& cancel);
    Text weightWithUnit(const Text& weight) const;
    void cmdAdd_Click();

    std::size_t m_unit = 0; // of the weight, an index into WeightUnits
    StoredRecord m_stored;
    std::optional<PatientAge> m_patientAge; // empty: unknown
};

}
