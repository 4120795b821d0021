#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/CheckList.h"
#include "platform/controls/mevZvDate.h"

#include <optional>

namespace health {

// The patient's refusal of a service: its kind, the item refused, the date, a comment.
class frmRefusal : public EditorForm {
public:
    explicit frmRefusal(modShared& shared);

    Text m_sRefusalIen; // the refusal; empty to add one

    Arrangement arrangement() override;
    SaveSummary summary() override;

    Label lblRefusals;
    CheckList lstRefusals; // each item data is a lookup table
    Label lblItem;
    TextBox txtItem; // its tag holds the item's number
    Button cmdItem;
    Label lblRefused;
    mevZvDate datRefused;
    Label lblComment;
    TextBox txtRefComment { TextBox::Lines::Several };
    Button cmdOK;

private:
    static constexpr std::size_t LongestComment = 200;
    Text recordNumber() const override { return m_sRefusalIen; }
    std::unique_ptr<EditorForm> another() const override { return anotherOf(*this, &frmRefusal::m_sRefusalIen); }
    Text ownState() const override;
    void entriesRestored(TextView ownState) override;
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Text savedType() const;
    Text savedComment() const;
    // The server's name of a type of the list; two of them are plural.
    static Text serverType(TextView type);
    void LoadRef();
    void showRecord(TextView line);
    void checkType(TextView type);
    void lstRefusals_ItemCheck(int row);
    void takeOnlyItem(const Text& type);
    void txtItem_Change();
    void cmdItem_Click();
    void datRefused_LostFocus();
    void datRefused_NewDateEntered();
    void txtRefComment_Validate(bool& cancel);
    bool warnWithoutType();
    bool isComplete();
    void cmdOK_Click();

    bool m_loading = false;
    bool m_clearing = false;
    std::optional<int> m_itemTable; // the table that was searched; empty if the item belongs to the checked row
    StoredRecord m_stored;
};

}
