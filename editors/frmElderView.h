#pragma once

#include "editors/EditorForm.h"
#include "platform/controls/Grid.h"

namespace health {

// Shows one assessment of a patient's functional status and opens its editor.
class frmElderView : public EditorForm {
public:
    explicit frmElderView(modShared& shared);

    Text m_sIEN; // the record
    Text m_sVisit; // its visit
    bool m_bElder = false; // the user holds the key for functional status

    Arrangement arrangement() override;
    // Nothing has been entered, so there is nothing to compare.
    FormNotice notice() override { return { EditorForm::notice().text, {} }; }

    Grid fg; // name and value
    Button cmdEdit;

private:
    Text recordNumber() const override { return m_sIEN; }
    Text visitNumber() const override { return m_sVisit; }
    void activate() override;
    void addRow(TextView name, TextView value);
    void cmdEdit_Click();
};

}
