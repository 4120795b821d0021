#include "editors/frmTxc.h"

#include "lookups/LookupTables.h"
#include "text/Conversions.h"

namespace health {

namespace {

constexpr std::array<TextView, 2> TypeCodes { L"P", L"M" };

DateRefusal judgeInitiation(Moment entered, Moment now)
{
    if (entered > now)
        return { L"The date cannot be in the future.", InvalidDate };
    // Intended: compares to the second, so the date a year ago is too old unless it has a later time of day.
    if (entered < now - frmTxc::Term)
        return { L"Treatment date cannot be older than a year.", InvalidDate };
    return {};
}

}

frmTxc::frmTxc(modShared& shared)
    : EditorForm(shared, L"frmTxc", L"Update Treatment Contract", { L"Tx Contract", L"VTXC" })
{
    opt[0].setCaption(L"Pain");
    opt[1].setCaption(L"Mental Health");
    fraTypes.hold({ &opt[0], &opt[1] });
    opt.Click = [this](int) { opt[0].setFault({}); }; // which asks for a choice
    lbl[0].setCaption(L"Date Initiated");
    lbl[1].setCaption(L"Provider");
    bindLookup(txtPrv, cmdPrv, TypedOver::KeepsId, Unnamed::IsRefused,
        trapped(L"cmdPrv_Click", [this] { lookUp(txtPrv, LookupTableNumber::Provider); }));
    m_dateRules.add(datInit,
        { judgeInitiation, { L"The date format is not valid.", InvalidDate }, L"The present time will be saved." });
    datInit.NewDateEntered = trapped(L"datInit_NewDateEntered", [this] { datInit_NewDateEntered(); });
    bindSave(cmdAdd, L"cmdAdd_Click", [this] { cmdAdd_Click(); });
}

Arrangement frmTxc::arrangement()
{
    return column({ onAxis(frame(fraTypes, row({ opt[0], opt[1] }))),
        fields({ field(lbl[0], { datInit }), field(lbl[1], { wide(txtPrv, 28), cmdPrv }) }),
        buttons({ cmdAdd, cmdCancel }) });
}

void frmTxc::Form_Load()
{
    trap(L"Form_Load", [this] {
        datInit.setValue(dateText(m_shared.desktop().now()));
        const User& user = m_shared.user();
        setPicked(txtPrv, user.name(), wholeText(user.number()));
    });
}

void frmTxc::activate()
{
    m_shared.desktop().processPendingEvents();
    if (m_sIEN.empty())
        setCaption(L"Add Treatment Contract Record");
    else
        trap(L"LoadTXC", [this] { LoadTXC(); });
}

void frmTxc::LoadTXC()
{
    const Text reply = readRecord(L"MEVVTXC GET", L"^" + m_sIEN);
    for (const TextView line : recordLines(reply))
        showRecord(line);
}

// Record ^ locked ^ visit's date ^ type|code ^ date initiated ^ provider|id.
void frmTxc::showRecord(TextView line)
{
    const LinePieces pieces(line);
    m_stored.read(pieces);
    setVisitDate(pieces[3]);
    const TextView code = codePart(pieces[4]);
    for (std::size_t i = 0; i < TypeCodes.size(); ++i) {
        if (code == TypeCodes[i])
            opt[i].setChosen(true);
    }
    const TextView date = pieces[5].empty() ? pieces[3] : pieces[5];
    if (const auto moment = parseDate(pieceView(displayPart(date), L"@", 1)))
        datInit.setValue(defaultDateText(*moment));
    setPicked(txtPrv, displayPart(pieces[6]), codePart(pieces[6]));
}

void frmTxc::datInit_NewDateEntered()
{
    if (const DateRefusal why = judged(datInit); !why.message.empty())
        refuseDate(datInit, why, dateText(m_shared.desktop().now()), L"Today's date was entered instead.");
}

void frmTxc::fillDate()
{
    datInit.setValue(defaultDateText(m_shared.desktop().now()));
    datInit.setNote(L"The date was empty: the present date and time were entered.");
}

void frmTxc::cmdAdd_Click()
{
    if (txtPrv.tag().empty()) {
        askFor(txtPrv, L"You must select the provider.", L"Provider Missing");
        return;
    }
    if (datInit.isEmpty())
        fillDate();
    if (opt.chosen() == opt.None) {
        askFor(opt[0], L"You must select the type of contract, PAIN or MENTAL HEALTH.", L"Type Missing");
        return;
    }
    save(L"MEVVTXC SET",
        { m_sIEN, m_sVisit, Text(TypeCodes[static_cast<std::size_t>(opt.chosen())]), datInit.value(), txtPrv.tag() });
}

}
