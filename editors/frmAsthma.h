#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Grid.h"
#include "platform/controls/mevContainer.h"

#include <array>

namespace health {

// One asthma record: severity, lung function, triggers, management plan. Also shows the patient's entry in the asthma
// registry.
class frmAsthma : public EditorForm {
public:
    // Heights in twips, without and with the registry.
    static constexpr int PlainHeight = 2400;
    static constexpr int RegistryHeight = 5265;

    explicit frmAsthma(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit
    bool m_bRegKey = false; // the user may edit the registry

    Arrangement arrangement() override;
    SaveSummary summary() override;

    Label lblSeverity;
    ComboBox cboSeverity;
    mevContainer fraLung;
    std::array<Label, 3> lblLung;
    std::array<TextBox, 3> txt; // FEV 1, FEF 25-75, PEF
    mevContainer fraTriggers;
    std::array<Label, 4> lblTriggers;
    std::array<ComboBox, 4> cbo; // smoke, particulate matter, dust mite; then, outside the frame, management plan
    mevContainer fraRegister;
    Label lblRegister;
    Label lblStatus;
    Button cmdActivate;
    Button cmdEditReg;
    Grid fg;
    Button cmdAdd;
    Button cmdHS;

private:
    Text recordNumber() const override { return m_sIEN; }
    std::unique_ptr<EditorForm> another() const override;
    Text visitNumber() const override { return m_sVisit; }
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Explanation explainLung(std::size_t index) const;
    Text lungFault(std::size_t index) const;
    static Text lungRange(std::size_t index, TextView between);
    void setCaptions();
    void bindEvents();
    void activate() override;
    void LoadAst();
    void showRecord(TextView line);
    void showRegistry();
    void showRegistryEntry(const Text& reply);
    void setRegistryStatus(bool active, TextView status);
    void txt_Validate(std::size_t index, bool& cancel);
    bool mayEditRegistry();
    void openRegistryEditor();
    void cmdActivate_Click();
    void cmdEditReg_Click();
    void cmdAdd_Click();

    bool m_registryActive = false;
    StoredRecord m_stored;
};

}
