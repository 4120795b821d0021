#pragma once

#include "editors/EditorForm.h"
#include "platform/controls/OptionArray.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"

namespace health {

// One emergency room visit.
class frmER : public EditorForm {
public:
    explicit frmER(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit

    Arrangement arrangement() override;

    mevContainer fraUrgency;
    OptionArray<3> opt;
    mevContainer fraArrival;
    OptionArray<7> optArrival;
    TextBox txtOther; // the other means of arrival
    mevContainer fraEntered;
    OptionArray<4> optEntered;
    mevContainer fraInformant;
    TextBox txtInformant;
    mevContainer fraNotified;
    OptionArray<3> optNotified;
    mevContainer fraDispostion; // Intended: misspelled
    OptionArray<8> optDisch;
    TextBox txtDispOth; // the other disposition
    mevContainer fraTransfer;
    OptionArray<2> optTransfer; // outside provider, facility
    TextBox txtLoc; // its tag holds the entry's number
    Button cmdLoc;
    Label lblDepart;
    mevZvDate datDepart;
    Label lblCond;
    TextBox txtCond;
    Button cmdOK;

private:
    Text recordNumber() const override { return m_sIEN; }
    std::unique_ptr<EditorForm> another() const override { return anotherOf(*this, &frmER::m_sIEN, &frmER::m_sVisit); }
    Text visitNumber() const override { return m_sVisit; }
    Text ownState() const override;
    void entriesRestored(TextView ownState) override;
    void setCaptions();
    void bindEvents();
    void activate() override;
    void LoadER();
    void showRecord(TextView line);
    void showTransfer(TextView piece);
    void optArrival_Click(int index);
    void optDisch_Click(int index);
    void enableText(TextBox& box, bool enabled);
    void enableTransfer(bool enabled);
    void optTransfer_Click(int index);
    void cmdLoc_Click();
    void cmdOK_Click();

    int m_placeOption = -1; // the chosen option when the place was found
};

}
