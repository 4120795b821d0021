#include "editors/frmER.h"

#include "lookups/LookupTables.h"
#include "text/Conversions.h"
#include "text/Letters.h"

#include <algorithm>
#include <span>

namespace health {

namespace {

// A button of an option group: its caption and its code in the record.
struct Choice {
    TextView caption;
    TextView code;
};

constexpr Choice Urgencies[] = { { L"Emergent", L"E" }, { L"Urgent", L"U" }, { L"Non-Emergent", L"N" } };
constexpr Choice Arrivals[] = { { L"Ambulance", L"A" }, { L"Police", L"P" }, { L"POV", L"POV" }, { L"Taxi", L"T" },
    { L"Walked", L"W" }, { L"Air", L"R" }, { L"Other:", L"O" } };
constexpr Choice Entries[] = { { L"Ambulatory", L"A" }, { L"Wheel Chair", L"W" }, { L"Stretcher", L"S" },
    { L"Carried", L"C" } };
constexpr Choice Notifications[] = { { L"Relative", L"R" }, { L"Police", L"P" }, { L"Coroner", L"C" } };
constexpr Choice Dispositions[] = { { L"Discharged", L"D" }, { L"Admitted", L"A" }, { L"Transferred", L"T" },
    { L"AMA / Patient Left", L"1" }, { L"Medivac Transfer", L"M" }, { L"Lifeguard", L"L" }, { L"Died / Expired", L"E" },
    { L"Other", L"O" } };
// The codes are the global roots of the server's files.
constexpr Choice Transfers[] = { { L"Outside &Provider", L"AUTTVNDR(" }, { L"&Facility", L"AUTTLOC(" } };

constexpr int OtherArrival = 6;
constexpr int Transferred = 2;
constexpr int AgainstAdvice = 3;
constexpr int OtherDisposition = 7;
constexpr int OutsideProvider = 0;
constexpr int Facility = 1;

constexpr TextView OtherChosen = L"another option is chosen";

template<std::size_t Count>
void setCaptions(OptionArray<Count>& group, mevContainer& frame, const Choice (&choices)[Count])
{
    for (std::size_t i = 0; i < Count; ++i) {
        group[i].setCaption(choices[i].caption);
        frame.hold({ &group[i] });
    }
}

// Chooses the button of a code, if there is one.
template<std::size_t Count>
void chooseCode(OptionArray<Count>& group, const Choice (&choices)[Count], TextView code)
{
    for (std::size_t i = 0; i < Count; ++i) {
        if (choices[i].code == code) {
            group[i].setChosen(true);
            return;
        }
    }
}

template<std::size_t Count>
Text codeOf(const OptionArray<Count>& group, const Choice (&choices)[Count])
{
    return group.chosen() == group.None ? Text() : Text(choices[group.chosen()].code);
}

template<std::size_t Count>
std::vector<Arrangement> buttonsOf(OptionArray<Count>& group)
{
    std::vector<Arrangement> parts;
    for (OptionButton& button : group)
        parts.emplace_back(button);
    return parts;
}

void setTextIfAny(TextBox& box, TextView text)
{
    if (!text.empty())
        box.setText(text);
}

}

frmER::frmER(modShared& shared)
    : EditorForm(shared, L"frmER", L"Update Emergency Room Visit", { L"ER Visit", L"VER" })
{
    setCaptions();
    bindEvents();
    fraArrival.hold({ &txtOther });
    fraInformant.hold({ &txtInformant });
    fraDispostion.hold({ &txtDispOth });
    fraTransfer.hold({ &txtLoc, &cmdLoc });
    txtOther.setEnabled(false);
    txtDispOth.setEnabled(false);
    fraTransfer.setEnabled(false);
}

void frmER::setCaptions()
{
    fraUrgency.setCaption(L"&Urgency");
    fraArrival.setCaption(L"&Means of Arrival");
    fraEntered.setCaption(L"&Entered By");
    fraInformant.setCaption(L"&Informant");
    fraNotified.setCaption(L"&Notified");
    fraDispostion.setCaption(L"&Disposition of Care");
    fraTransfer.setCaption(L"&Transferred To");
    lblDepart.setCaption(L"Departure Date/Time");
    lblCond.setCaption(L"&Condition on Departure");
    health::setCaptions(opt, fraUrgency, Urgencies);
    health::setCaptions(optArrival, fraArrival, Arrivals);
    health::setCaptions(optEntered, fraEntered, Entries);
    health::setCaptions(optNotified, fraNotified, Notifications);
    health::setCaptions(optDisch, fraDispostion, Dispositions);
    health::setCaptions(optTransfer, fraTransfer, Transfers);
}

void frmER::bindEvents()
{
    optArrival.Click = trapped(L"optArrival_Click", [this](int index) { optArrival_Click(index); });
    optTransfer.Click = trapped(L"optTransfer_Click", [this](int index) { optTransfer_Click(index); });
    optDisch.Click = trapped(L"optDisch_Click", [this](int index) { optDisch_Click(index); });
    bindLookup(
        txtLoc, cmdLoc, TypedOver::ClearsId, Unnamed::IsSaved, trapped(L"cmdLoc_Click", [this] { cmdLoc_Click(); }));
    m_dateRules.add(datDepart, {});
    datDepart.EntryRefused = trapped(L"datDepart_EntryRefused", [this] { datDepart_EntryRefused(); });
    bindSave(cmdOK, L"cmdOK_Click", [this] { cmdOK_Click(); });
}

Arrangement frmER::arrangement()
{
    auto arrival = buttonsOf(optArrival);
    arrival.back() = row({ optArrival[OtherArrival], wide(txtOther, 18) });
    auto disposition = buttonsOf(optDisch);
    disposition.back() = row({ optDisch[OtherDisposition], wide(txtDispOth, 14) });
    auto transfer = buttonsOf(optTransfer);
    transfer.push_back(row({ wide(txtLoc, 22), cmdLoc }));
    return column(
        { row({ column({ frame(fraUrgency, column(buttonsOf(opt))), frame(fraEntered, column(buttonsOf(optEntered))) }),
              frame(fraArrival, column(std::move(arrival))),
              column({ frame(fraInformant, wide(txtInformant, 22)),
                  frame(fraNotified, column(buttonsOf(optNotified))) }) }),
            line(),
            row({ frame(fraDispostion, downwards(std::move(disposition))),
                frame(fraTransfer, column(std::move(transfer))) }),
            line(), fields({ field(lblDepart, { datDepart }), field(lblCond, { wide(txtCond, 44) }) }),
            buttons({ cmdOK, cmdCancel }) });
}

// --- Loading ---

void frmER::activate()
{
    m_shared.desktop().processPendingEvents();
    datDepart.setRequireTime(true);
    datDepart.setDateOnly(false);
    if (m_sIEN.empty())
        setCaption(L"Add Emergency Room Record");
    else
        trap(L"LoadER", [this] { LoadER(); });
}

void frmER::LoadER()
{
    const Text reply = readRecord(L"MEVVER GET", L"^" + m_sIEN);
    for (const TextView line : replyLines(reply))
        showRecord(line);
}

// The pieces have a different order in a save. An option is set before its text, because choosing it may clear the
// text.
void frmER::showRecord(TextView line)
{
    const LinePieces pieces(line);
    m_stored.read(pieces);
    setVisitDate(pieces[3]);
    chooseCode(opt, Urgencies, codePart(pieces[4]));
    chooseCode(optArrival, Arrivals, codePart(pieces[5]));
    setTextIfAny(txtOther, pieces[6]);
    chooseCode(optEntered, Entries, codePart(pieces[7]));
    setTextIfAny(txtInformant, pieces[8]);
    chooseCode(optNotified, Notifications, codePart(pieces[9]));
    chooseCode(optDisch, Dispositions, codePart(pieces[10]));
    setTextIfAny(txtDispOth, pieces[11]);
    // Piece 13 is the departure against advice, which takes precedence.
    for (const PieceNumber departure : { 12, 13 }) {
        const Text date = fmDateToDisplay(displayPart(pieces[departure]));
        if (!date.empty())
            datDepart.setValue(date);
    }
    setTextIfAny(txtCond, pieces[14]);
    if (!pieces[15].empty())
        showTransfer(pieces[15]);
}

// Name|id;root.
void frmER::showTransfer(TextView piece)
{
    const TextView entry = codePart(piece);
    chooseCode(optTransfer, Transfers, pieceView(entry, L";", 2));
    setPicked(txtLoc, properCase(displayPart(piece)), pieceView(entry, L";", 1));
    m_placeOption = optTransfer.chosen();
}

// The option to which the place of transfer belongs.
Text frmER::ownState() const { return wholeText(m_placeOption); }

void frmER::entriesRestored(TextView ownState)
{
    m_placeOption = static_cast<int>(leadingNumber(ownState));
    txtOther.setEnabled(optArrival.chosen() == OtherArrival);
    txtDispOth.setEnabled(optDisch.chosen() == OtherDisposition);
    fraTransfer.setEnabled(optDisch.chosen() == Transferred);
}

// --- Choosing ---

void frmER::optArrival_Click(int index) { enableText(txtOther, index == OtherArrival); }

void frmER::optDisch_Click(int index)
{
    enableText(txtDispOth, index == OtherDisposition);
    enableTransfer(index == Transferred);
}

// Loading must not move the focus.
void frmER::enableText(TextBox& box, bool enabled)
{
    box.setEnabled(enabled);
    if (!enabled) {
        noteRemoved(box, box.text(), OtherChosen);
        box.setText({});
        return;
    }
    box.setNote({});
    if (wasActivated())
        setFocus(box);
}

void frmER::enableTransfer(bool enabled)
{
    if (!enabled)
        dropPlace(L"the patient was not transferred");
    fraTransfer.setEnabled(enabled);
}

// Clears the place of transfer when the option changes: its number is valid only in the file of its own option.
void frmER::optTransfer_Click(int index)
{
    if (index != m_placeOption)
        dropPlace(L"it is not a " + Text(index == Facility ? L"facility" : L"provider"));
}

void frmER::dropPlace(TextView why)
{
    const Text former = txtLoc.text();
    setPicked(txtLoc, {}, {});
    noteRemoved(txtLoc, former, why);
}

// The control has kept the old value.
void frmER::datDepart_EntryRefused()
{
    refuseDate(datDepart, { L"Enter the departure date with its time, such as 1/2/2006 14:30.", InvalidDate },
        datDepart.value(), datDepart.isEmpty() ? L"The field is empty." : L"The former date was kept.");
}

void frmER::cmdLoc_Click()
{
    const bool isChosen = optTransfer.chosen() != optTransfer.None;
    const int option = optTransfer.chosen() == Facility ? Facility : OutsideProvider;
    if (!lookUp(txtLoc, option == Facility ? LookupTableNumber::Location : LookupTableNumber::Vendor)
        || txtLoc.tag().empty())
        return;
    // If no option was chosen, the outside providers were searched, so their option is chosen now.
    m_placeOption = option;
    optTransfer[static_cast<std::size_t>(option)].setChosen(true);
    if (!isChosen)
        txtLoc.setNote(txtLoc.note() + (txtLoc.note().empty() ? L"" : L" ")
            + L"Outside providers were searched, because no option was chosen.");
}

// --- Saving ---

bool frmER::isAgainstAdvice() const { return optDisch.chosen() == AgainstAdvice; }
Text frmER::savedOther() const { return optArrival.chosen() == OtherArrival ? txtOther.text() : Text(); }
Text frmER::savedDisposition() const { return optDisch.chosen() == OtherDisposition ? txtDispOth.text() : Text(); }

void frmER::cmdOK_Click()
{
    const Text departure = datDepart.isEmpty() ? Text() : m_shared.DateToFMDate(datDepart.value(), TimePart::With);
    std::vector<Text> record { m_sIEN, m_sVisit, codeOf(opt, Urgencies), codeOf(optEntered, Entries),
        codeOf(optArrival, Arrivals), savedOther(), codeOf(optNotified, Notifications), txtInformant.text(),
        codeOf(optDisch, Dispositions), savedDisposition(), isAgainstAdvice() ? Text() : departure,
        isAgainstAdvice() ? departure : Text(), txtCond.text() };
    if (!txtLoc.tag().empty())
        record.push_back((optTransfer.chosen() == OutsideProvider ? L"VEN.`" : L"LOC.`") + txtLoc.tag());
    save(L"MEVVER SET", record);
}

}
