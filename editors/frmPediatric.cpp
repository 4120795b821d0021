#include "editors/frmPediatric.h"

#include "editors/BirthWeight.h"
#include "editors/ExplanationTexts.h"
#include "lookups/LookupTables.h"
#include "text/Conversions.h"
#include "text/Letters.h"

namespace health {

namespace {

// The user's unit: an index into WeightUnits.
constexpr TextView UnitParameter = L"RepHist-PedWtOpt";

}

frmPediatric::frmPediatric(modShared& shared)
    : EditorForm(shared, L"frmPediatric", L"Update Birth Measurements", { L"Birth Measurements", L"BMSR" })
{
    setCaptions();
    for (std::size_t i = 0; i < Boxes; ++i) {
        txt[i].setColumns(12);
        txt[i].KeyPress = trapped(L"txt_KeyPress", [this, i](wchar_t key) { txt_KeyPress(i, key); });
        txt[i].Validate = trapped(L"txt_Validate", [this, i](bool& cancel) { txt_Validate(i, cancel); });
    }
    bindLookup(txtPat, cmdPat, TypedOver::KeepsId, Unnamed::IsSaved,
        trapped(L"cmdPat_Click", [this] { lookUp(txtPat, LookupTableNumber::Patient); }));
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

void frmPediatric::setCaptions()
{
    static constexpr std::array<TextView, 11> captions {
        L"Birth &Weight", L"Birth &Order", L"&Formula Started", L"&Breast Feeding Stopped", L"&Solids Started",
        L"&Mother or Guardian",
        L"To enter Birth Weight in lbs and ozs, enter two values separated by a space. Also you can  enter K after the "
        L"value for "
        L"kilograms (kg), and likewise for grams enter G after the value.",
        L"Examples: 7 2 for 7 lbs 2 ozs", L"3.2K for 3.2 kilograms", L"3200G for 3200 grams",
        L"Feeding Choices must contain a number and then either a D for Days, W for Weeks, M for Months or Y for years."
    };
    for (std::size_t i = 0; i < captions.size(); ++i)
        lbl[i].setCaption(captions[i]);
    lblWt.setCaption(L"(lbs oz)");
}

Arrangement frmPediatric::arrangement()
{
    const auto age = [this](std::size_t i) { return field(lbl[i], { wide(txt[i], 6) }); };
    return column({ field(lbl[0], { wide(txt[0], 8), lblWt, beside(20) }), field(lbl[1], { wide(txt[1], 4) }),
        onAxis(column({ help(lbl[6]), help(lbl[7]), help(lbl[8], lbl[7]), help(lbl[9], lbl[7]) })), space(), age(2),
        age(3), age(4), onAxis(help(lbl[10])), space(), field(lbl[5], { wide(txtPat, 28), cmdPat }),
        buttons({ cmdAdd, cmdCancel }) });
}

void frmPediatric::activate()
{
    m_patientAge = PatientAge::of(m_shared.patient());
    trap(L"LoadData", [this] { LoadData(); });
}

void frmPediatric::LoadData()
{
    std::vector<ExpectedCall> calls { { ExpectedCall::Form::OneText, L"MEVBMSR GET", patient(),
        ExpectedCall::Purpose::Editor } };
    if (!m_shared.KnowsUserParam(UnitParameter))
        calls.insert(calls.begin(), { ExpectedCall::Form::OneText, L"MEVUTL GETPARM", Text(UnitParameter) });
    const modShared::CallHint hint(m_shared, calls);
    const double option = leadingNumber(m_shared.GetUserParam(UnitParameter, L"0"));
    for (std::size_t unit = PoundsOunces + 1; unit < WeightUnits.size(); ++unit) {
        if (option == static_cast<double>(unit))
            setUnit(unit);
    }
    const Text reply = m_shared.CallRpc(L"MEVBMSR GET", patient());
    if (reply.empty() || m_shared.CheckRpcError(reply, L""))
        return;
    const LinePieces pieces(reply);
    m_stored.read(pieces);
    const Text weight(pieces[WeightUnits[m_unit].piece]);
    if (!weight.empty())
        txt[0].load(weight + (m_unit == PoundsOunces ? L" " + Text(pieces[2]) : Text(WeightUnits[m_unit].letter)));
    PieceNumber piece = 10;
    for (std::size_t i = 1; i < Boxes; ++i)
        txt[i].load(pieces[piece++]);
    setPicked(txtPat, displayPart(pieces[14]), codePart(pieces[14]));
}

void frmPediatric::setUnit(std::size_t unit)
{
    m_unit = unit;
    lblWt.setCaption(WeightUnits[unit].caption);
}

Text frmPediatric::ownState() const { return wholeText(static_cast<long long>(m_unit)); }

void frmPediatric::entriesRestored(TextView ownState) { setUnit(static_cast<std::size_t>(leadingNumber(ownState))); }

// Intended: works in every box, and a lower-case "m" switches to pounds, even in a feeding age in months.
void frmPediatric::txt_KeyPress(std::size_t index, wchar_t key)
{
    const Text before = savedWeight();
    for (std::size_t unit = PoundsOunces + 1; unit < WeightUnits.size(); ++unit) {
        if (WeightUnits[unit].letter.front() == upperLetter(key))
            setUnit(unit);
    }
    if (key == L' ' || key == L'm')
        setUnit(PoundsOunces);
    if (index != 0 && !txt[0].text().empty() && savedWeight() != before)
        noteUnit(key);
}

void frmPediatric::noteUnit(wchar_t key)
{
    txt[0].setNote(L"The unit has changed to " + Text(WeightUnits[m_unit].caption) + L", because "
        + (key == L' ' ? Text(L"a blank") : quoted(TextView(&key, 1))) + L" was typed in another field.");
}

Text frmPediatric::weightWithUnit(const Text& weight) const
{
    const TextView letter = WeightUnits[m_unit].letter;
    return weight.ends_with(letter) ? weight : weight + Text(letter);
}

void frmPediatric::txt_Validate(std::size_t index, bool& cancel)
{
    const Text entry = upperCase(txt[index].text());
    if (entry.empty() || txt[index].isAsLoaded())
        return;
    TextView message;
    if (index == 0 && !weightFault(weightWithUnit(entry)).beside.empty())
        message = L"Invalid birth weight, please see example on form.";
    // Intended: 25 is invalid although the message includes it.
    else if (index == 1 && !isBetween(entry, 0, 25))
        message = L"Invalid birth order - answer must be between 1 and 25.";
    else if (index > 1 && !isValidAge(entry))
        message = L"Invalid feeding choice entry, please see explanation on form.";
    if (message.empty())
        return;
    refuse(txt[index], message, L"Invalid Entry");
    cancel = true;
}

void frmPediatric::cmdAdd_Click()
{
    std::vector<Text> record { patient(), savedWeight() };
    for (std::size_t i = 1; i < Boxes; ++i)
        record.push_back(upperCase(txt[i].text()));
    record.push_back(txtPat.tag());
    if (!send(L"MEVBMSR SET", joinPieces(record)))
        return;
    if (!txt[0].text().empty())
        m_shared.SetUserParam(UnitParameter, wholeText(static_cast<long long>(m_unit)));
    closeSaved();
}

}
