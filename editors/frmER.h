#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/OptionArray.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"

namespace health {

class SummaryBuilder;

// One emergency room visit.
class frmER : public EditorForm {
public:
    explicit frmER(modShared& shared);

    Text m_sIEN; // the record; empty to add one
    Text m_sVisit; // its visit

    Arrangement arrangement() override;
    SaveSummary summary() override;

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
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    void addOtherTexts(SummaryBuilder& builder);
    void addDeparture(SummaryBuilder& builder);
    void addPlace(SummaryBuilder& builder);
    // The texts of an option, empty unless it is chosen.
    Text savedOther() const;
    Text savedDisposition() const;
    bool isAgainstAdvice() const;
    void LoadER();
    void showRecord(TextView line);
    void showTransfer(TextView piece);
    void optArrival_Click(int index);
    void optDisch_Click(int index);
    void enableText(TextBox& box, bool enabled);
    void enableTransfer(bool enabled);
    void optTransfer_Click(int index);
    void dropPlace(TextView why);
    void cmdLoc_Click();
    void datDepart_EntryRefused();
    void cmdOK_Click();

    int m_placeOption = -1; // the chosen option when the place was found
    StoredRecord m_stored;
};

}
