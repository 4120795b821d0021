#include "editors/frmRepHist.h"

#include "editors/DueDate.h"
#include "editors/ExplanationTexts.h"
#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>
#include <array>

namespace health {

using namespace std::chrono;

namespace {

constexpr std::array<TextView, frmRepHist::CountBoxes> CountCodes { L"G", L"P", L"LC", L"SA", L"TA" };

// Almost black, for the pregnancy block. Intended: not the colour of the other labels.
constexpr Colour QuietColour = 2;

constexpr DateRefusal NoDate { L"This is not a valid date format.", InvalidDate };
constexpr days FarthestDelivery { 270 };

DateRefusal judgePast(Moment entered, Moment now)
{
    if (dateOf(entered) > dateOf(now))
        return { L"Future dates are not allowed.", InvalidDate };
    return {};
}

DateRefusal judgeDelivery(Moment entered, Moment now)
{
    if (dateOf(entered) < dateOf(now))
        return { L"Past dates are not allowed.", InvalidDate };
    if (dateOf(entered) > dateOf(now) + FarthestDelivery)
        return { L"Date cannot be more than 9 months in the future.", InvalidDate };
    return {};
}

double numberIn(const TextBox& box) { return leadingNumber(box.text()); }

// The date control's value in the form that the server accepts; empty if the control is empty.
Text savedDate(const mevZvDate& date)
{
    if (date.isEmpty())
        return {};
    const auto moment = date.moment();
    if (!moment)
        throw Failure(L"\"" + date.value() + L"\" is not a date.");
    return defaultDateText(*moment);
}

void showDate(mevZvDate& control, TextView text)
{
    if (const auto moment = parseDate(text))
        control.setValue(defaultDateText(*moment));
}

}

frmRepHist::frmRepHist(modShared& shared)
    : EditorForm(shared, L"frmRepHist", L"Update Reproductive History", { L"Reproductive", L"REP" })
{
    setCaptions();
    for (TextBox& box : txNumRH)
        box.setColumns(3);
    for (std::size_t i = 0; i < CountBoxes; ++i)
        fraWH.hold({ &lblFP[i], &txNumRH[i], &udNumRH[i] });
    fraWH.hold({ &lbl[0], &lbl[1], &lbl[2], &datLMP, &cboFP, &datFP, &chkPregnant, &fraPregnant });
    fraPregnant.hold({ &lblPreg[0], &lblPreg[1], &datDelivery, &cboEstMethod });
    bindEvents();
}

void frmRepHist::setCaptions()
{
    static constexpr std::array<TextView, CountBoxes> counts { L"&G", L"&P", L"&LC", L"&SA", L"T&A" };
    for (std::size_t i = 0; i < CountBoxes; ++i)
        lblFP[i].setCaption(counts[i]);
    lbl[0].setCaption(L"L&MP");
    lbl[1].setCaption(L"Date FP &Began");
    lbl[2].setCaption(L"&Family Planning Method");
    chkPregnant.setCaption(L"Preg&nant");
    lblPreg[0].setCaption(L"&Est. Delivery");
    lblPreg[1].setCaption(L"&Determined By");
}

void frmRepHist::bindEvents()
{
    for (std::size_t i = 0; i < CountBoxes; ++i) {
        txNumRH[i].GotFocus = trapped(L"txNumRH_GotFocus",
            [this, i] { m_valueOnFocus[i] = static_cast<short>(roundToWhole(numberIn(txNumRH[i]))); });
        txNumRH[i].Changed = trapped(L"txNumRH_Change", [this, i] { txNumRH_Change(i); });
        txNumRH[i].KeyPress = trapped(L"txNumRH_KeyPress", [this, i](wchar_t& key) { txNumRH_KeyPress(i, key); });
        txNumRH[i].MouseMove = trapped(L"txNumRH_MouseMove", [this, i] { txNumRH[i].setToolTip(CountNames[i]); });
        udNumRH[i].ValueChanged =
            trapped(L"udNumRH_Change", [this, i] { txNumRH[i].setText(wholeText(udNumRH[i].value())); });
    }
    datLMP.KeyPress = trapped(L"datLMP_KeyPress", [this](wchar_t& key) { moveOnEntered(key, datLMP, cboFP); });
    datFP.KeyPress = trapped(L"datFP_KeyPress", [this](wchar_t& key) { moveOnEntered(key, datFP, chkPregnant); });
    datDelivery.KeyPress =
        trapped(L"datDelivery_KeyPress", [this](wchar_t& key) { moveOnEntered(key, datDelivery, cboEstMethod); });
    cboFP.KeyPress = trapped(L"cboFP_KeyPress", [this](wchar_t& key) { moveOnEnter(key, datFP); });
    cboEstMethod.KeyPress = trapped(L"cboEstMethod_KeyPress", [this](wchar_t& key) { moveOnEnter(key, txNumRH[0]); });
    chkPregnant.Click = trapped(L"chkPregnant_Click", [this] { fraPregnant.setEnabled(chkPregnant.isChecked()); });
    m_dateRules.add(datLMP, { judgePast, NoDate, {} });
    m_dateRules.add(datFP, { judgePast, NoDate, {} });
    m_dateRules.add(datDelivery, { judgeDelivery, NoDate, {} });
    datLMP.NewDateEntered = trapped(L"datLMP_NewDateEntered", [this] { refuseAndClear(datLMP); });
    datFP.NewDateEntered = trapped(L"datFP_NewDateEntered", [this] { refuseAndClear(datFP); });
    datDelivery.NewDateEntered = trapped(L"datDelivery_NewDateEntered", [this] { datDelivery_NewDateEntered(); });
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmRepHist::arrangement()
{
    std::vector<Arrangement> counts;
    for (std::size_t i = 0; i < CountBoxes; ++i)
        counts.push_back(field(lblFP[i], { wide(txNumRH[i], 2), udNumRH[i] }));
    return column(
        { frame(fraWH,
              column({ row(std::move(counts)), space(),
                  fields({ field(lbl[0], { datLMP }), field(lbl[2], { wide(cboFP, 22) }), field(lbl[1], { datFP }) }),
                  space(), onAxis(chkPregnant),
                  frame(fraPregnant,
                      fields(
                          { field(lblPreg[0], { datDelivery }), field(lblPreg[1], { wide(cboEstMethod, 22) }) })) })),
            buttons({ cmdAdd, cmdCancel }) });
}

void frmRepHist::activate()
{
    m_shared.desktop().processPendingEvents();
    FillLists();
    trap(L"LoadRepHist", [this] { LoadRepHist(); });
    setFocus(txNumRH[0]);
}

void frmRepHist::FillLists()
{
    for (const TextView method : { L"", L"Education Only", L"Oral Contraceptives", L"IUD", L"Surgical Sterilization",
             L"Barrier Methods", L"Partner Sterilized", L"Natural Techniques", L"Menopause", L"None", L"Other",
             L"Hormonal Implant", L"Hormone Injection", L"Abstinence" })
        cboFP.addItem(method);
    for (const TextView method : { L"", L"Unknown Method", L"Sonogram", L"Dates", L"Clinical Parameters" })
        cboEstMethod.addItem(method);
    cboEstMethod.setForeColour(QuietColour);
    cboEstMethod.setEnabled(false);
    datDelivery.setEnabled(false);
    for (Label& label : lblPreg)
        label.setForeColour(QuietColour);
}

void frmRepHist::SetWomensHealthEnabled(bool enabled)
{
    fraWH.setEnabled(enabled);
    cboFP.setBackColour(enabled ? WindowBackground : ButtonFace);
    for (Label& label : lblFP)
        label.setForeColour(enabled ? ButtonText : GreyText);
    for (Label& label : lbl)
        label.setForeColour(enabled ? ButtonText : GreyText);
    chkPregnant.setEnabled(enabled);
}

bool frmRepHist::isEligible()
{
    if (!m_eligible) {
        const Patient& host = m_shared.patient();
        m_eligible = host.sex() == L"F" && leadingNumber(host.age()) > 8;
    }
    return *m_eligible;
}

// --- Loading ---

void frmRepHist::LoadRepHist()
{
    clearFields();
    SetWomensHealthEnabled(isEligible());
    if (!fraWH.isEnabled())
        return;
    const modShared::CallHint hint(m_shared,
        std::array {
            ExpectedCall { ExpectedCall::Form::OneText, L"MEVREP GET", patient(), ExpectedCall::Purpose::Editor } });
    const Text reply = m_shared.CallRpc(L"MEVREP GET", patient());
    if (m_shared.CheckRpcError(reply, L"Error Loading Reproductive Factors")) {
        m_unread = true;
        SetWomensHealthEnabled(false);
        return;
    }
    if (!reply.empty())
        showRecord(reply);
}

void frmRepHist::clearFields()
{
    for (TextBox& box : txNumRH)
        box.setText(L"0");
    datLMP.clear();
    datFP.clear();
    chkPregnant.setChecked(false);
    fraPregnant.setEnabled(false);
    cboFP.setListIndex(0);
}

// Counts ^ last menstrual period ^ method ^ its date ^ estimation method ^ estimated delivery; the last two are
// swapped when saving.
void frmRepHist::showRecord(const Text& reply)
{
    const LinePieces pieces(reply);
    m_stored.read(pieces);
    showCounts(upperCase(pieces[1]));
    showDate(datLMP, pieces[2]);
    SelectComboItem(cboFP, pieces[3]);
    showDate(datFP, pieces[4]);
    if (pieces[5].empty() && pieces[6].empty())
        return;
    chkPregnant.setChecked(true);
    showDate(datDelivery, pieces[6]);
    SelectComboItem(cboEstMethod, pieces[5]);
    fraPregnant.setEnabled(true);
}

void frmRepHist::showCounts(const Text& counts)
{
    for (std::size_t i = 0; i < CountBoxes; ++i) {
        const std::size_t found = counts.find(CountCodes[i]);
        if (found != Text::npos) {
            const std::size_t start = found + CountCodes[i].size();
            const bool twoDigits = start + 1 < counts.size() && isDigit(counts[start + 1]);
            txNumRH[i].setText(start < counts.size() ? counts.substr(start, twoDigits ? 2 : 1) : Text());
        }
        udNumRH[i].setValue(static_cast<int>(roundToWhole(numberIn(txNumRH[i]))));
    }
}

void frmRepHist::entriesRestored(TextView)
{
    for (std::size_t i = 0; i < CountBoxes; ++i)
        udNumRH[i].setValue(static_cast<int>(roundToWhole(numberIn(txNumRH[i]))));
    fraPregnant.setEnabled(chkPregnant.isChecked());
}

// --- Saving ---

Text frmRepHist::countString() const
{
    Text counts;
    for (std::size_t i = 0; i < CountBoxes; ++i)
        counts += Text(CountCodes[i]) + txNumRH[i].text();
    return counts;
}

void frmRepHist::cmdAdd_Click()
{
    std::vector<Text> record { patient(), countString(), savedDate(datLMP), cboFP.text(), savedDate(datFP) };
    if (isEligible()) {
        for (const Text& piece :
            { Text(chkPregnant.isChecked() ? L"1" : L"0"), savedDate(datDelivery), cboEstMethod.text() })
            record.push_back(piece);
    }
    save(L"MEVREP SET", record);
}

// --- Entering ---

void frmRepHist::refuseAndClear(mevZvDate& date)
{
    if (const DateRefusal why = judged(date); !why.message.empty())
        refuseDate(date, why, {}, L"The field was cleared.");
}

void frmRepHist::datDelivery_NewDateEntered()
{
    // A stored date may be in the past; only dates entered by the user are validated.
    if (datDelivery.isEmpty() || !wasActivated())
        return;
    const Moment farthest = m_shared.desktop().now() + FarthestDelivery;
    const auto moment = datDelivery.moment();
    if (!moment || dateOf(*moment) <= dateOf(farthest))
        refuseAndClear(datDelivery);
    else
        refuseDate(
            datDelivery, judged(datDelivery), defaultDateText(farthest), L"The date is now 270 days from today.");
}

// The delivery can be derived from the last menstrual period.
Explanation frmRepHist::explainDate(const mevZvDate& date)
{
    Explanation explanation = EditorForm::explainDate(date);
    const auto period = datLMP.moment();
    if (&date != &datDelivery || !period)
        return explanation;
    const Moment now = m_shared.desktop().now();
    const Moment due = dueDate(*period);
    explanation.suggestion = dueDateWords(*period, datDelivery.moment(), now);
    const bool isEntered = datDelivery.value() == dateText(due);
    if (!isEntered && datDelivery.canBeUsed() && datDelivery.allowed(now).contains(due))
        explanation.use = [this, due] { datDelivery.enter(dateText(due), m_shared.desktop().now()); };
    return explanation;
}

void frmRepHist::txNumRH_Change(std::size_t index)
{
    TextBox& box = txNumRH[index];
    UpDown& upDown = udNumRH[index];
    const Text text = box.text(); // a copy, because setting the arrows changes the box
    const double entered = leadingNumber(text);
    const double count = std::clamp<double>(entered, upDown.minimum(), upDown.maximum());
    upDown.setValue(static_cast<int>(roundToWhole(count)));
    // A count consists of digits only. An empty box becomes a selected 0, which typing replaces.
    const bool isCount = !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
    if (isCount && count == entered)
        return;
    box.setText(wholeText(upDown.value()));
    if (entered > upDown.maximum())
        box.setNote(L"Counts go up to " + wholeText(upDown.maximum()) + L".");
    else if (!text.empty())
        box.setNote(quoted(text) + L" is not a count: counts consist of digits only.");
    if (text.empty() || count != entered)
        box.selectAll();
}

void frmRepHist::txNumRH_KeyPress(std::size_t index, wchar_t& key)
{
    if (key != EnterKey && !isDigit(key))
        key = 0; // a letter would also discard the digits before it
    if (index + 1 < CountBoxes)
        moveOnEnter(key, txNumRH[index + 1]);
    else
        moveOnEnter(key, datLMP);
}

// Enter moves on from a date that was edited; otherwise it presses the default button.
void frmRepHist::moveOnEntered(wchar_t& key, mevZvDate& date, Control& next)
{
    if (key != EnterKey || !date.wasTouched())
        return;
    if (date.settle())
        return moveOnEnter(key, next);
    key = 0;
    setFocus(date);
}

void frmRepHist::moveOnEnter(wchar_t& key, Control& next)
{
    if (key != EnterKey)
        return;
    key = 0;
    setFocus(next);
}

}
