// Every form, opened on any reply and filled with any text: no reply makes it fail, it saves a record of the right
// number of pieces at most once, and it closes exactly when the server accepts the save.
// Input: the form's letter, its reply, a second reply (registry note, weight unit), the reply to a lookup, the reply to
// the save, choices as letters, then the texts to type, field by field (empty: leave the field alone).
#include "fuzz/FuzzInput.h"
#include "lookups/frmLookupImm.h"
#include "tests/support/Editors.h"
#include "tests/support/ScriptedHost.h"

#include <algorithm>

namespace health::fuzz {
namespace {

class User {
public:
    User(Sections& input, TextView get, TextView second)
        : m_input(input)
    {
        m_shared.InitObjects(m_host, false);
        m_host.patient->patientNumber = 12;
        for (const TextView call : { get, second, TextView(L"MEVUTL DICLKUP") })
            m_host.session->reply(call, m_lookupReply = input.next());
        m_saveReply = input.next();
        m_choices = input.next();
        m_host.desktop.answers.assign(20, BoxAnswer::Ok);
    }

    // `set` is empty for a form that saves nothing.
    template<typename EditorForm>
    void edit(TextView set, std::ptrdiff_t pieces)
    {
        EditorForm form(m_shared);
        if constexpr (requires { form.m_sVisit; }) {
            form.m_sIEN = L"4";
            form.m_sVisit = L"81";
        }
        if constexpr (requires { form.m_sRefusalIen; })
            form.m_sRefusalIen = L"8";
        form.load();
        form.open();
        form.Form_Activate();
        fill(form, form.arrangement());
        m_host.session->reply(set, m_saveReply);
        if constexpr (requires { form.cmdAdd; })
            form.press(form.cmdAdd);
        if constexpr (requires { form.cmdOK; })
            form.press(form.cmdOK);
        if constexpr (requires { form.txtLoc; })
            pieces += !form.txtLoc.tag().empty();
        const test::Transcript saves = m_host.lines(L"call " + Text(set) + L"(");
        require(saves.size() <= 1, "a record is saved once");
        for (const Text& save : saves)
            require(std::count(save.begin(), save.end(), L'^') + 1 == pieces, "a saved record has its pieces", save);
        const bool taken = !saves.empty() && modShared::RpcErrorCode(m_saveReply) == 0;
        require(form.isOpen() != taken, "a form closes when the server accepts the record", m_saveReply);
        checkFaults();
    }

    void lookUp(TextView, std::ptrdiff_t)
    {
        frmLookupImm dialog(m_shared);
        m_host.desktop.inForms.push_back([&](Form&) {
            fill(dialog, dialog.arrangement());
            dialog.press(dialog.cmdSearch);
            fill(dialog, dialog.arrangement());
            dialog.press(dialog.cmdSelect);
        });
        const bool chosen = dialog.frmLookup::RunQuery(choice(LookupTableNumber::Patient), m_input.next(), true, L"*");
        for (const Text& call : m_host.lines(L"list "))
            require(std::count(call.begin(), call.end(), L'^') == 8, "a search has nine pieces", call);
        require(
            !chosen || m_lookupReply.find(dialog.m_sRecId) != Text::npos, "the choice comes from a line of the reply");
        checkFaults();
    }

private:
    // A text that is not a date is no failure of the program.
    void checkFaults()
    {
        for (const Text& box : m_host.boxes())
            require(!box.starts_with(L"box [System Error]") || box.ends_with(L"\" is not a date."),
                "no reply makes a form fail", box);
    }

    int choice(int count)
    {
        if (m_choices.empty() || count == 0)
            return 0;
        const auto letter = static_cast<unsigned>(m_choices.front());
        m_choices.erase(0, 1);
        return static_cast<int>(letter % static_cast<unsigned>(count));
    }

    // Without "^": not every field removes it; the forms' tests name those that do.
    Text nextText()
    {
        Text text = m_input.next();
        std::erase(text, L'^');
        return text;
    }

    void fill(Form& form, const Arrangement& part)
    {
        if (part.control && part.control->canBeUsed())
            use(form, *part.control);
        for (const Arrangement& child : part.children)
            fill(form, child);
    }

    void use(Form& form, Control& control)
    {
        if (auto* const list = dynamic_cast<ComboBox*>(&control))
            list->choose(choice(list->count() + 1) - 1);
        else if (auto* const checks = dynamic_cast<CheckList*>(&control); checks && checks->count() > 0)
            checks->click(choice(checks->count()));
        else if (auto* const option = dynamic_cast<OptionButton*>(&control); option && choice(2) == 1)
            option->click();
        else if (auto* const box = dynamic_cast<CheckBox*>(&control); box && choice(2) == 1)
            box->click();
        else if (auto* const grid = dynamic_cast<Grid*>(&control); grid && grid->rowCount() > 0)
            grid->choose(choice(grid->rowCount()));
        else if (auto* const date = dynamic_cast<mevZvDate*>(&control)) {
            if (const Text text = nextText(); !text.empty() && form.moveFocus(*date))
                date->enter(text, m_host.desktop.today);
        } else if (auto* const field = dynamic_cast<TextBox*>(&control)) {
            if (const Text text = nextText(); !text.empty() && form.moveFocus(*field)) {
                field->edit(L"");
                field->type(text);
            }
        }
    }

    Sections& m_input;
    Text m_lookupReply; // to MEVUTL DICLKUP
    Text m_saveReply;
    Text m_choices;
    test::ScriptedHost m_host;
    modShared m_shared { m_host.desktop };
};

struct Case {
    TextView get;
    TextView second;
    TextView set;
    std::ptrdiff_t pieces;
    void (User::*edit)(TextView set, std::ptrdiff_t pieces);
};

constexpr Case Cases[] = {
    { L"MEVREP GET", L"", L"MEVREP SET", 8, &User::edit<frmRepHist> },
    { L"MEVVIF GET", L"", L"MEVVIF SET", 3, &User::edit<frmInf> },
    { L"MEVBMSR GET", L"MEVUTL GETPARM", L"MEVBMSR SET", 7, &User::edit<frmPediatric> },
    { L"MEVVELD GET", L"", L"MEVVELD SET", 16, &User::edit<frmElder> },
    { L"MEVVELD GET", L"", L"", 0, &User::edit<frmElderView> },
    { L"MEVVAST GET", L"MEVVAST GETREG", L"MEVVAST SET", 10, &User::edit<frmAsthma> },
    { L"MEVVAST GETREG", L"MEVVAST GETNOTE", L"MEVVAST SETREG", 7, &User::edit<frmAsthmaReg> },
    { L"MEVVTXC GET", L"", L"MEVVTXC SET", 5, &User::edit<frmTxc> },
    { L"MEVREF GET", L"MEVREF REFLIST", L"MEVREF SET", 6, &User::edit<frmRefusal> },
    { L"MEVVER GET", L"", L"MEVVER SET", 13, &User::edit<frmER> },
    { L"", L"", L"", 0, &User::lookUp },
};

}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace health::fuzz;
    Sections input(data, size);
    const Case& form = Cases[input.nextChoice(static_cast<int>(std::size(Cases)))];
    User user(input, form.get, form.second);
    (user.*form.edit)(form.set, form.pieces);
    return 0;
}
