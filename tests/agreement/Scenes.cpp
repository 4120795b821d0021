#include "tests/agreement/Scenes.h"

#include "host/session/Replies.h"
#include "lookups/frmLookupImm.h"
#include "qt/TextViews.h"
#include "tests/agreement/Hands.h"
#include "tests/agreement/SeenRows.h"
#include "tests/support/Editors.h"
#include "text/Conversions.h"
#include "toolkit/QtText.h"

#include <QDate>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSplitter>
#include <QTimer>

#include <algorithm>

namespace health::test {

namespace {

constexpr int LongestWait = 4000; // turns of the event loop without a usable window

Text today() { return QDate::currentDate().toString("MM/dd/yyyy").toStdWString(); }

// The value as the server stores it: blanks, capitals, "^", no time where the record has none.
QString kept(QString value)
{
    value = value.toUpper().replace(u'^', u' ').replace(u'\n', u' ').simplified().replace(", ", ",");
    static const QRegularExpression time("^(\\d\\d/\\d\\d/\\d{4}) \\d\\d:\\d\\d$");
    return value.replace(time, "\\1");
}

const QStringList OnlyItems { "EKG", "MAMMOGRAM", "PAP SMEAR" };

const QStringList Words = QString("s,sterling,smith,glu,blue,T,T-3,T+5,T-400,+2W,fri,N,1/5/3026,7 "
                                  "2,3.2K,6M,99,420,3,-5,12,x^y,zz,asthma,mild,no,ak z,"
                                  "late | or not, ")
                              .split(u',');

// "?" stands for any letter.
const QStringList Keys =
    QString("Tab,Tab,Shift+Tab,Return,Return,Esc,Space,Up,Down,Down,Home,End,Del,Backspace,Left,Right,"
            "F9,PgUp,Alt+Down,Ctrl+A,Ctrl+F,Ctrl+F,Shift+F10,Alt+?,Alt+?,Alt+?,Alt+?")
        .split(u',');

// Each with its weight.
const std::pair<int, const char*> Verbs[] { { 44, "key" }, { 22, "type" }, { 18, "click" }, { 2, "drag" },
    { 2, "double" }, { 1, "right" }, { 3, "wheel" }, { 2, "away" }, { 2, "event" }, { 4, "flaw" } };

}

Scenes::Scenes()
    : m_session(std::make_shared<FlakySession>(m_real.session))
{
    m_session->afterCall = [this](TextView name, TextView parameter, const Text& reply) {
        ++m_calls;
        const auto* const dialog = dynamic_cast<FormDialog*>(QApplication::activeModalWidget());
        // Activation in the registry does not save the values of the form.
        const bool saves = name == m_call && std::count(parameter.begin(), parameter.end(), L'^') > 1;
        if (saves && dialog && !m_loadFailed && modShared::RpcErrorCode(reply) == 0)
            m_saved = shownValues(*dialog);
        if (!m_panels.empty() && name.ends_with(L" DEL") && !m_seenSelected.contains(Text(parameter)))
            m_wrongDelete = toQString(Text(L"deleted ") + Text(parameter) + L", which was not seen as selected");
    };
    m_host.given = m_session;
    forPatient(1);
    for (const auto& [progId, object] : m_host.session->objects) {
        m_real.session.setObject(progId, object);
        m_registrar.session.setObject(progId, object);
    }
    m_shared.InitObjects(m_host, false);
    m_shared.CheckSecurity(L"MEV DISABLE REP HIST EDITING", L"MEVZ REP HIST EDIT");
}

Scenes::~Scenes() { m_shared.ReleaseObjects(); }

// 5 is an infant, 1 a woman.
void Scenes::forPatient(long number)
{
    m_host.patient->patientNumber = number;
    m_host.patient->patientSex = number == 5 ? L"M" : L"F";
    m_host.patient->patientAge = number == 5 ? L"0" : L"29";
    const QString visit =
        linesOf(m_real.session.callList(L"MEVHOST VISITS", std::to_wstring(number))).value(0).value(0);
    m_visit = visit.toStdWString();
    m_host.encounter->visit = visit.toLong();
}

// Empty for a kind of which the patient has only one.
Text Scenes::lastRecord(TextView list)
{
    if (list.empty())
        return {};
    long last = 0;
    for (const QStringList& line : linesOf(m_real.session.callList(list, m_shared.patientText())))
        last = std::max(last, line.value(0).toLong());
    return std::to_wstring(last);
}

template<typename Editor>
void Scenes::edit()
{
    Editor editor(m_shared);
    if constexpr (requires { editor.m_sVisit; }) {
        editor.m_sVisit = m_visit;
        editor.m_sIEN = m_record;
    }
    if constexpr (requires { editor.m_sRefusalIen; })
        editor.m_sRefusalIen = m_record;
    if constexpr (requires { editor.m_bElder; })
        editor.m_bElder = true;
    if constexpr (requires { editor.m_bRegKey; }) {
        editor.m_bRegKey = true;
        editor.setHeight(Editor::RegistryHeight);
    }
    // Values that could not be read are not compared.
    m_loadFailed = m_session->next == FlakySession::Next::Fails || m_session->next == FlakySession::Next::IsRefused;
    post();
    m_desktop.showModal(editor);
}

void Scenes::showPanels()
{
    QSplitter window;
    kalmevRepHistCtrl first(m_shared, m_host);
    kalmevRepHistCtrl second(m_shared, m_host);
    first.UserControl_Initialize();
    second.UserControl_Initialize();
    PanelView left(first, m_desktop);
    PanelView right(second, m_desktop);
    window.addWidget(&left);
    window.addWidget(&right);
    window.resize(1200, 800); // high enough for the details
    m_panels = { { &first, &left }, { &second, &right } };
    QEventLoop loop;
    m_panelLoop = &loop;
    post();
    window.show();
    if (m_finds) {
        for (PanelView* const panel : { &left, &right })
            panel->setViewState({ .order = RecordOrder::NewestFirst, .findIsOpen = true });
    }
    loop.exec();
    m_panelLoop = nullptr;
    m_panels.clear();
    left.setParent(nullptr);
    right.setParent(nullptr);
}

void Scenes::lookUp()
{
    post();
    frmLookup(m_shared).RunQuery(LookupTableNumber::Provider, L"s", true, L"*");
}

void Scenes::lookUpVaccines()
{
    post();
    frmLookupImm(m_shared).RunQuery(L"");
}

struct Scenes::Scene {
    void (Scenes::*open)();
    TextView save = L""; // the call that saves its record
    Text fields = L""; // of the record that exists before; "#" stands for the visit, "@" for today
    TextView list = L""; // the call for the number of that record
    long patient = 1;
    bool asRegistrar = false;
    bool finds = false; // with the bars open
    bool reads = false; // with many actions in the details
};

const std::vector<Scenes::Scene>& Scenes::all()
{
    static const Text assessed = L"^#^Independent^Needs Help^^^^^^^^^^^Same^No";
    static const std::vector<Scene> scenes {
        { &Scenes::edit<frmRepHist>, L"MEVREP SET",
            L"1^G3P2LC1SA0TA0^01/05/2026^Oral Contraceptives^12/01/2025^1^@^Sonogram" },
        { &Scenes::edit<frmPediatric>, L"MEVBMSR SET", L"5^7 2^1^2M^4M^6M^1", L"", 5 },
        { &Scenes::edit<frmInf>, L"MEVVIF SET", L"^#^3", L"MEVVIF GET", 5 },
        { &Scenes::edit<frmElder>, L"MEVVELD SET", assessed, L"MEVVELD GET" },
        { &Scenes::edit<frmElderView>, L"MEVVELD SET", assessed, L"MEVVELD GET" },
        { &Scenes::edit<frmTxc>, L"MEVVTXC SET", L"^#^P^@^1", L"MEVVTXC GET" },
        { &Scenes::edit<frmTxc>, L"MEVVTXC SET", L"", L"MEVVTXC GET" },
        { &Scenes::edit<frmRefusal>, L"MEVREF SET", L"^EXAM^2^1^@^Not now", L"MEVREF GET" },
        { &Scenes::edit<frmRefusal>, L"MEVREF SET", L"", L"MEVREF GET" },
        { &Scenes::edit<frmER>, L"MEVVER SET", L"^#^E^A^O^On a sledge^R^Patient^T^^^^Stable^LOC.`2", L"MEVVER GET" },
        { &Scenes::edit<frmER>, L"MEVVER SET", L"", L"MEVVER GET" },
        { &Scenes::edit<frmAsthma>, L"MEVVAST SET", L"^#^2^93^49^420^Yes^Yes^No^Yes", L"MEVVAST GET", 1, true },
        { &Scenes::edit<frmAsthmaReg>, L"MEVVAST SETREG", L"1^A^01/05/2026^03/05/2026^02/05/2026^1^Doing well", L"", 1,
            true },
        { &Scenes::lookUp },
        { &Scenes::lookUpVaccines },
        { &Scenes::showPanels },
        { .open = &Scenes::showPanels, .finds = true },
        { .open = &Scenes::showPanels, .reads = true },
    };
    return scenes;
}

Episode Scenes::play(unsigned seed)
{
    constexpr int EpisodeActions = 60;
    const Scene& scene = all()[seed % all().size()];
    m_random.seed(seed);
    m_budget = EpisodeActions;
    m_episode = {};
    m_ending = false;
    m_saved.clear();
    m_session->next = FlakySession::Next::Answers;
    m_shared.session().setValue(L"MEVParam_RepHist_PedWtOpt", L"0");
    m_finds = scene.finds;
    m_reads = scene.reads;
    m_rowsBefore.reset();
    m_session->use(scene.asRegistrar ? m_registrar.session : m_real.session);
    forPatient(scene.patient);
    m_record.clear();
    m_call.clear();
    if (!scene.fields.empty()) {
        const Text fields = replaced(replaced(scene.fields, L"#", m_visit), L"@", today());
        if (const Text reply = m_session->callText(scene.save, fields); modShared::RpcErrorCode(reply) != 0)
            throw Failure(L"The scene cannot be prepared: " + reply);
        m_record = lastRecord(scene.list);
    }
    // The view shows the saved values in another form.
    m_call = scene.open == &Scenes::edit<frmElderView> ? TextView() : scene.save;
    while (!m_ending) {
        m_verifying = !m_saved.isEmpty();
        if (m_verifying) {
            m_session->next = FlakySession::Next::Answers;
            if (m_record.empty())
                m_record = lastRecord(scene.list);
        }
        m_lastActive = nullptr;
        m_lastDialog = nullptr;
        (this->*scene.open)();
    }
    return m_episode;
}

// --- Turn by turn ---

void Scenes::post(int milliseconds)
{
    if (std::exchange(m_posted, true))
        return;
    QTimer::singleShot(milliseconds, this, [this] {
        m_posted = false;
        tick();
    });
}

bool Scenes::canAct() const
{
    QWidget* const top = topWindow();
    if (m_session->isInCall() || !top || !top->isVisible())
        return false;
    if (top == m_actedOn)
        return false; // the previous action still runs: QTest processes events
    if (QApplication::activePopupWidget())
        return true;
    if (m_desktop.isBusy())
        return false;
    if (top->isActiveWindow())
        return true;
    // Replaces the window manager; setActiveWindow is for platforms that send no activation event.
    if (m_waits % 8 == 7)
        QApplication::setActiveWindow(top);
    else
        top->activateWindow();
    return false;
}

void Scenes::tick()
{
    if (!canAct()) {
        if (++m_waits > LongestWait) {
            const QWidget* const top = topWindow();
            qFatal("No window can be used; on top: %s, in call %d, busy %d, active %d",
                top ? qPrintable(top->windowTitle()) : "none", m_session->isInCall(), m_desktop.isBusy(),
                top && top->isActiveWindow());
        }
        return post(m_waits > 20 ? 1 : 0);
    }
    m_waits = 0;
    if (!m_ending)
        m_episode.failure = check();
    if (m_ending || !m_episode.failure.isEmpty() || m_budget-- == 0)
        return endScene();
    post();
    act();
}

// Closes all windows, from the top down.
void Scenes::endScene()
{
    m_ending = true;
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        post();
        popup->close();
    } else if (auto* const dialog = dynamic_cast<FormDialog*>(QApplication::activeModalWidget())) {
        // The last form ends the scene; the windows below close in later turns.
        if (QApplication::topLevelWidgets().size() > 1)
            post();
        dialog->form().close();
    } else if (auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        post();
        box->reject();
    } else if (m_panelLoop) {
        m_panelLoop->quit();
    }
}

// --- Checks ---

QString Scenes::check()
{
    if (!m_wrongDelete.isEmpty())
        return std::exchange(m_wrongDelete, {});
    if (const QString difference = checkRead(); !difference.isEmpty())
        return difference;
    m_seenSelected.clear();
    for (const auto& [control, panel] : m_panels) {
        m_seenSelected.insert(recordSeenSelected(control->fgData, *panel));
        const QString difference = disagreement(*control, *panel);
        if (!difference.isEmpty())
            return difference;
    }
    auto* const dialog = dynamic_cast<FormDialog*>(QApplication::activeModalWidget());
    if (!dialog)
        return {};
    if (QApplication::activePopupWidget()) {
        m_lastActive = dialog->form().activeControl();
        return {};
    }
    const QString difference = disagreement(*dialog);
    if (!difference.isEmpty())
        return difference;
    if (const auto* const lookup = dynamic_cast<frmLookup*>(&dialog->form()); lookup && m_lastDialog != dialog) {
        const bool inRows = lookup->activeControl() == &lookup->fgResults;
        if (inRows != (lookup->fgResults.rowCount() > 1))
            return QStringLiteral("the lookup opened with the focus not in its rows");
    }
    m_lastDialog = dialog;
    const Control* const active = dialog->form().activeControl();
    const auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    const bool entered = std::exchange(m_lastActive, active) != active;
    // Typing, a double click and dragging change the selection.
    const bool marked = entered && ((m_marks > 0 && m_marks--) || m_lastVerb == u"type");
    if (entered && !marked && line && !line->text().isEmpty() && line->selectedText() != line->text())
        return QStringLiteral("\"%1\" is not selected in %2, which was entered")
            .arg(line->text(), line->accessibleName());
    return m_verifying ? checkSaved(*dialog) : QString();
}

// The reopened form must show the values that were saved.
QString Scenes::checkSaved(const FormDialog& dialog)
{
    m_verifying = false;
    const QStringList before = std::exchange(m_saved, {});
    const QStringList now = shownValues(dialog);
    // The server keeps a manager that was cleared.
    const bool keepsName = m_call == L"MEVVAST SETREG";
    for (qsizetype i = 0; i < std::max(before.size(), now.size()); ++i) {
        if (keepsName && before.value(i).isEmpty() && now.value(i).contains(u','))
            continue;
        // Types with one item show their own name until the record is reloaded.
        if (m_call == L"MEVREF SET" && OnlyItems.contains(before.value(i)))
            continue;
        // Pounds and ounces come back with a blank between them.
        if (m_call == L"MEVBMSR SET" && QString(before.value(i)).replace(u'-', u' ') == now.value(i))
            continue;
        // The unit beside a weight becomes its letter.
        if (now.value(i) == before.value(i) + u'K' || now.value(i) == before.value(i) + u'G')
            continue;
        if (kept(before.value(i)) != kept(now.value(i)))
            return QStringLiteral("saved \"%1\" comes back as \"%2\"").arg(before.value(i), now.value(i));
    }
    ++m_savesSeen;
    return {};
}

void Scenes::act()
{
    if (m_reads && !QApplication::activePopupWidget() && !QApplication::activeModalWidget() && random(3) == 0)
        return readDetails();
    const auto any = [this](const auto& list) { return list[random(std::ssize(list))]; };
    int weight = random(100);
    m_lastVerb = std::find_if(std::begin(Verbs), std::end(Verbs), [&](const auto& verb) {
        return (weight -= verb.first) < 0;
    })->second;
    QString words;
    if (m_lastVerb == u"key")
        words = QString(any(Keys)).replace(u'?', QChar(u'A' + random(26)));
    else if (m_lastVerb == u"type")
        words = any(Words);
    else if (m_lastVerb == u"event")
        words = any(QStringList { "REFRESH", "VXR.1.1" });
    QWidget& top = *topWindow();
    QWidgetList targets = top.findChildren<QWidget*>();
    targets.removeIf([&](const QWidget* w) { return !w->isVisible() || w->window() != &top || w->size().isEmpty(); });
    const auto anyPlace = [&] {
        const QWidget& target = targets.isEmpty() ? top : *any(targets);
        return target.mapTo(&top, QPoint(random(target.width()), random(target.height())));
    };
    const QPoint from = anyPlace();
    const QPoint to = anyPlace();
    const bool byMouse = QStringList { "click", "drag", "double", "right", "wheel" }.contains(m_lastVerb);
    const QWidget* const target = byMouse ? top.childAt(from) : QApplication::focusWidget();
    m_episode.actions.append(
        QStringLiteral("%1 %2 on \"%3\", %4 \"%5\"")
            .arg(m_lastVerb, words, top.windowTitle(), target ? target->metaObject()->className() : "nothing",
                target ? target->accessibleName() : QString()));
    if (m_lastVerb == u"drag" || m_lastVerb == u"double")
        m_marks = 8; // lookups and boxes may open in between
    const QScopedValueRollback<const QWidget*> acting(m_actedOn, &top);
    if (m_lastVerb == u"key")
        pressKeys(words);
    else if (m_lastVerb == u"type")
        typeText(words);
    else if (m_lastVerb == u"away")
        QApplication::setActiveWindow(nullptr);
    else if (m_lastVerb == u"event")
        m_real.session.raiseEvent(words.toStdWString(), L"");
    else if (m_lastVerb == u"flaw")
        m_session->next = any(FlakySession::Flaws);
    else
        useMouse(m_lastVerb, from, to);
}

}
