#pragma once

#include "editors/EditorForm.h"
#include "editors/StoredRecord.h"
#include "platform/controls/CheckBox.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/UpDown.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"

#include <array>
#include <optional>

namespace health {

class SummaryBuilder;

// The patient's reproductive factors: five counts, last menstrual period, family planning, a current pregnancy. There
// is one record per patient.
class frmRepHist : public EditorForm {
public:
    static constexpr std::size_t CountBoxes =
        5; // gravidity, parity, living children, spontaneous and therapeutic abortions

    static constexpr std::array<TextView, CountBoxes> CountNames { L"Gravidity", L"Parity", L"Living Children",
        L"Spontaneous Abortions", L"Therapeutic Abortions" };

    explicit frmRepHist(modShared& shared);

    Arrangement arrangement() override;
    SaveSummary summary() override;

    mevContainer fraWH;
    std::array<Label, CountBoxes> lblFP;
    std::array<TextBox, CountBoxes> txNumRH;
    // The count string has room for two digits each.
    std::array<UpDown, CountBoxes> udNumRH { { { 0, 99 }, { 0, 99 }, { 0, 99 }, { 0, 99 }, { 0, 99 } } };
    std::array<Label, 3> lbl;
    mevZvDate datLMP;
    ComboBox cboFP;
    mevZvDate datFP;
    CheckBox chkPregnant;
    mevContainer fraPregnant;
    mevZvDate datDelivery;
    std::array<Label, 2> lblPreg;
    ComboBox cboEstMethod;
    Button cmdAdd;

private:
    Text recordNumber() const override { return openedFor(); }
    std::unique_ptr<EditorForm> another() const override { return anotherOf(*this); }
    void entriesRestored(TextView) override;
    void setCaptions();
    void bindEvents();
    void activate() override;
    Explanation explainEntry(const Control& field) override;
    Control* fieldOf(TextView refusal) override;
    Explanation explainCount(std::size_t index) const;
    Text impossibleCount(std::size_t index) const;
    void addPregnancy(SummaryBuilder& builder);
    Explanation explainDate(const mevZvDate& date) override;
    void FillLists();
    void SetWomensHealthEnabled(bool enabled);
    void LoadRepHist();
    void clearFields();
    void showRecord(const Text& reply);
    void showCounts(const Text& counts);
    bool isEligible();
    Text countString() const;
    void cmdAdd_Click();
    void refuseAndClear(mevZvDate& date);
    void datDelivery_NewDateEntered();
    void txNumRH_Change(std::size_t index);
    void txNumRH_KeyPress(std::size_t index, wchar_t& key);
    void moveOnEntered(wchar_t& key, mevZvDate& date, Control& next);
    void moveOnEnter(wchar_t& key, Control& next);

    std::optional<bool> m_eligible; // of the patient for whom the form was opened
    std::array<short, 6> m_valueOnFocus {}; // of each count box. Intended: written but never read
    StoredRecord m_stored;
    bool m_unread = false; // the record could not be read
};

}
