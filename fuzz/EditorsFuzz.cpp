// The editors: opened on any reply, filled with any text, they save a record of the right number of pieces, once, and
// close exactly when the server took it.
// Input: the form's letter, its reply, a second reply (registry note, weight unit), the reply to a lookup, the reply to
// the save, choices as letters, then the texts that are typed, field by field (empty: the field is left alone).
#include "editors/frmAsthma.h"
#include "editors/frmAsthmaReg.h"
#include "editors/frmER.h"
#include "editors/frmElder.h"
#include "editors/frmElderView.h"
#include "editors/frmInf.h"
#include "editors/frmPediatric.h"
#include "editors/frmRefusal.h"
#include "editors/frmRepHist.h"
#include "editors/frmTxc.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/ScriptedHost.h"

#include <algorithm>

namespace health::fuzz {
namespace {

enum class Carets {
    Typed, // the form takes them out of this field
    Left, // no form is asked to: the user does not type them here
};

// A form on a scripted host, and a user who acts on it.
template<typename EditorForm>
class Editor {
public:
    Editor(Sections& input, TextView get, TextView second = L"MEVVAST GETREG")
        : m_input(input)
        , reply(input.next())
        , secondReply(input.next())
    {
        m_shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
        host.session->reply(get, reply);
        host.session->reply(second, secondReply);
        host.session->reply(L"MEVUTL DICLKUP", input.next());
        m_saveReply = input.next();
        m_choices = input.next();
        host.desktop.answers.assign(20, BoxAnswer::Ok);
    }

    void open()
    {
        if constexpr (requires { form.m_sVisit; }) {
            form.m_sIEN = L"4";
            form.m_sVisit = L"81";
        }
        form.load();
        form.open();
        form.Form_Activate();
        checkFaults();
    }

    // No reply and no text is a fault of the program; a text that is no date is one of the user.
    void checkFaults()
    {
        for (const Text& box : host.boxes())
            require(!box.starts_with(L"box [System Error]") || box.ends_with(L"\" is not a date."),
                "no reply is a fault of the form", box);
    }

    // The next choice: -1 for none.
    int choice(int count)
    {
        if (m_choices.empty())
            return -1;
        const int letter = static_cast<int>(m_choices.front());
        m_choices.erase(0, 1);
        return letter < L'a' ? -1 : (letter - L'a') % count;
    }

    // Fills fields in their order: choices from the letters, texts one by one.
    template<typename... Fields>
    void fill(Fields&... fields)
    {
        (fillOne(fields), ...);
    }

    void type(TextBox& box, Carets carets)
    {
        const Text text = nextText(carets);
        if (text.empty() || !box.canBeUsed() || !form.moveFocus(box))
            return;
        box.edit(L"");
        box.type(text);
    }

    void save(Button& button, TextView call, std::ptrdiff_t pieces)
    {
        host.session->reply(call, m_saveReply);
        form.press(button);
        checkFaults();
        const Text beginning = L"call " + Text(call) + L"(";
        const test::Transcript saves = host.lines({ beginning });
        require(saves.size() <= 1, "a record is saved once");
        for (const Text& save : saves)
            require(std::count(save.begin(), save.end(), L'^') + 1 == pieces, "a saved record has its pieces", save);
        const bool taken = !saves.empty() && modShared::RpcErrorCode(m_saveReply) == 0;
        require(form.isOpen() != taken, "a form closes when the server took the record", m_saveReply);
    }

    // The texts of a grid come from a reply.
    void checkGrid(const Grid& grid)
    {
        const Text all = folded(reply + L"\f" + secondReply);
        for (int row = 0; row < grid.rowCount(); ++row) {
            Text value = folded(grid.text(row, 1));
            std::erase(value, L' ');
            Text source = all;
            std::erase(source, L' ');
            require(
                isDate(grid.text(row, 1)) || source.find(value) != Text::npos, "a cell comes from the reply", value);
        }
    }

private:
    void fillOne(ComboBox& list) { list.choose(choice(list.count())); }
    void fillOne(TextBox& box) { type(box, Carets::Left); }

    void fillOne(CheckList& list)
    {
        if (const int index = choice(list.count()); index != -1)
            list.click(index);
    }

    void fillOne(mevZvDate& date)
    {
        const Text text = nextText(Carets::Left);
        if (!text.empty() && date.canBeUsed() && form.moveFocus(date))
            date.enter(text, host.desktop.today);
    }

    template<std::size_t Count>
    void fillOne(OptionArray<Count>& group)
    {
        if (const int index = choice(static_cast<int>(Count)); index != -1)
            group[static_cast<std::size_t>(index)].click();
    }

    template<typename Field, std::size_t Count>
    void fillOne(std::array<Field, Count>& fields)
    {
        for (Field& field : fields)
            fillOne(field);
    }

    Text nextText(Carets carets)
    {
        Text text = m_input.next();
        if (carets == Carets::Left)
            std::erase(text, L'^');
        return text;
    }

    Sections& m_input;
    Text m_saveReply;
    Text m_choices;

public:
    const Text reply;
    const Text secondReply;
    test::ScriptedHost host;
    modShared m_shared { host.desktop };
    EditorForm form { m_shared };
};

void repHist(Sections& input)
{
    Editor<frmRepHist> editor(input, L"MEVREP GET");
    frmRepHist& form = editor.form;
    editor.open();
    for (std::size_t i = 0; i < frmRepHist::CountBoxes; ++i)
        require(form.udNumRH[i].value() >= 0 && form.udNumRH[i].value() <= 99, "a count is in its bounds");
    editor.fill(form.cboFP);
    if (editor.choice(2) == 1)
        form.chkPregnant.click();
    editor.fill(form.cboEstMethod, form.txNumRH, form.datLMP, form.datFP, form.datDelivery);
    const bool usable = form.fraWH.isEnabled();
    editor.save(form.cmdAdd, L"MEVREP SET", 8);
    require(usable || modShared::RpcErrorCode(editor.reply) != 0, "only an error takes the fields away", editor.reply);
}

void inf(Sections& input)
{
    Editor<frmInf> editor(input, L"MEVVIF GET");
    editor.open();
    editor.fill(editor.form.lstINF);
    int checked = 0;
    for (int item = 0; item < editor.form.lstINF.count(); ++item)
        checked += editor.form.lstINF.isChecked(item);
    require(checked <= 1, "one choice at most is checked", editor.reply);
    editor.save(editor.form.cmdAdd, L"MEVVIF SET", 3);
    require(checked == 1 || editor.form.isOpen(), "nothing is saved without a choice", editor.reply);
}

void pediatric(Sections& input)
{
    Editor<frmPediatric> editor(input, L"MEVBMSR GET", L"MEVUTL GETPARM");
    frmPediatric& form = editor.form;
    editor.open();
    for (const TextBox& box : form.txt)
        require(box.text().find(L'^') == Text::npos, "a field holds one piece", box.text());
    editor.fill(form.txt, form.txtPat);
    editor.save(form.cmdAdd, L"MEVBMSR SET", 7);
}

void elder(Sections& input)
{
    Editor<frmElder> editor(input, L"MEVVELD GET");
    editor.open();
    editor.fill(editor.form.cbo);
    editor.save(editor.form.cmdAdd, L"MEVVELD SET", 16);
}

void elderView(Sections& input)
{
    Editor<frmElderView> editor(input, L"MEVVELD GET");
    editor.open();
    const bool refused = modShared::RpcErrorCode(editor.reply) != 0;
    const auto lines = refused ? 0 : recordLines(editor.reply).size();
    require(editor.form.fg.rowCount() == static_cast<int>(lines * (FunctionalItemCount + 1)), "an item is a row");
    for (int row = 0; row < editor.form.fg.rowCount(); ++row)
        require(!editor.form.fg.text(row, 0).empty(), "each row has its name");
    editor.checkGrid(editor.form.fg);
}

void asthma(Sections& input)
{
    Editor<frmAsthma> editor(input, L"MEVVAST GET");
    frmAsthma& form = editor.form;
    editor.open();
    editor.checkGrid(form.fg);
    editor.fill(form.cboSeverity, form.cbo, form.txt);
    editor.save(form.cmdAdd, L"MEVVAST SET", 10);
}

void asthmaReg(Sections& input)
{
    Editor<frmAsthmaReg> editor(input, L"MEVVAST GETREG", L"MEVVAST GETNOTE");
    frmAsthmaReg& form = editor.form;
    editor.open();
    for (const mevZvDate& date : form.dat)
        require(date.isEmpty() || date.moment(), "a date shown is a date", date.value());
    editor.fill(form.dat, form.txtPrv);
    editor.type(form.txtComments, Carets::Typed);
    editor.save(form.cmdAdd, L"MEVVAST SETREG", 7);
}

void txc(Sections& input)
{
    Editor<frmTxc> editor(input, L"MEVVTXC GET");
    frmTxc& form = editor.form;
    editor.open();
    require(form.datInit.moment().has_value(), "the date initiated is a date", form.datInit.value());
    editor.fill(form.opt, form.datInit);
    require(form.datInit.isEmpty() || form.datInit.moment(), "what is no date is replaced", form.datInit.value());
    editor.fill(form.txtPrv);
    editor.save(form.cmdAdd, L"MEVVTXC SET", 5);
}

void refusal(Sections& input)
{
    Editor<frmRefusal> editor(input, L"MEVREF GET", L"MEVREF REFLIST");
    frmRefusal& form = editor.form;
    form.m_sRefusalIen = L"8";
    editor.open();
    editor.fill(form.lstRefusals, form.datRefused, form.txtItem);
    editor.type(form.txtRefComment, Carets::Typed);
    editor.save(form.cmdOK, L"MEVREF SET", 6);
}

void emergency(Sections& input)
{
    Editor<frmER> editor(input, L"MEVVER GET");
    frmER& form = editor.form;
    editor.open();
    editor.fill(form.opt, form.optArrival, form.optEntered, form.optNotified, form.optDisch, form.optTransfer);
    for (TextBox* box : { &form.txtOther, &form.txtInformant, &form.txtDispOth, &form.txtCond })
        editor.type(*box, Carets::Typed);
    editor.fill(form.datDepart, form.txtLoc);
    form.moveFocus(form.txtCond); // leaving the place looks it up
    editor.save(form.cmdOK, L"MEVVER SET", form.txtLoc.tag().empty() ? 13 : 14);
}

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health::fuzz;
    constexpr void (*forms[])(
        Sections&) = { repHist, inf, pediatric, elder, elderView, asthma, asthmaReg, txc, refusal, emergency };
    Sections input(data, size);
    forms[input.nextChoice(static_cast<int>(std::size(forms)))](input);
    return 0;
}
