#include "tests/agreement/Scenes.h"

#include "host/session/Replies.h"
#include "lookups/frmLookupImm.h"
#include "qt/TextViews.h"
#include "tests/agreement/Hands.h"
#include "tests/support/Editors.h"
#include "text/Conversions.h"
#include "toolkit/QtText.h"

#include <QDate>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <cstdio>

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

const QStringList Words =
    QString("s,sterling,smith,glu,blue,T,T-3,T+5,T-400,N,1/5/3026,7 2,3.2K,6M,99,420,3,-5,12,x^y,zz,"
            "late | or not, ")
        .split(u',');

const QStringList Keys =
    QString("Tab,Tab,Shift+Tab,Return,Return,Esc,Space,Up,Down,Down,Home,End,Del,Backspace,Left,Right,"
            "Alt+Down,Ctrl+A,Shift+F10")
        .split(u',');

}

Scenes::Scenes()
    : m_session(std::make_shared<FlakySession>(m_real.session))
{
    m_host.given = m_session;
    forPatient(1);
    for (const auto& [progId, object] : m_host.session->objects) {
        m_real.session.setObject(progId, object);
        m_registrar.session.setObject(progId, object);
    }
    m_shared.InitObjects(m_host, false);
    m_shared.CheckSecurity(L"MEV DISABLE REP HIST EDITING", L"MEVZ REP HIST EDIT");
    m_session->beforeSave = [this] {
        const auto* const dialog = dynamic_cast<FormDialog*>(QApplication::activeModalWidget());
        m_snapshot = dialog && !m_loadFailed ? shownValues(*dialog) : QStringList();
    };
    m_session->afterSave = [this](TextView name, const Text& reply) { tellSaved(name, reply); };
}

Scenes::~Scenes() { m_shared.ReleaseObjects(); }

QStringList Scenes::names() const
{
    return QStringLiteral(
        "reproductive birth feeding functional view contract refusal emergency asthma registry lookup "
        "vaccines panels refusal-new contract-new emergency-new")
        .split(u' ');
}

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

// Creates a record of known contents, so that a replay does the same each time.
void Scenes::prepareRecord(TextView call, const Text& fields, TextView list)
{
    const Text reply = m_session->callText(call, fields);
    if (modShared::RpcErrorCode(reply) != 0)
        throw Failure(L"The scene cannot be prepared: " + reply);
    m_record = list.empty() ? Text() : lastRecord(list);
}

Text Scenes::lastRecord(TextView list)
{
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
    m_lastActive = nullptr;
    m_lastDialog = nullptr;
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
    window.resize(1200, 600);
    m_panels = { { &first, &left }, { &second, &right } };
    QEventLoop loop;
    m_panelLoop = &loop;
    post();
    window.show();
    loop.exec();
    m_panelLoop = nullptr;
    m_panels.clear();
    left.setParent(nullptr);
    right.setParent(nullptr);
}

struct Scenes::Preparation {
    const char* scene;
    void (Scenes::*open)();
    long patient;
    TextView call;
    Text fields; // "#" stands for the visit, "@" for today
    TextView list;
};

const Scenes::Preparation* Scenes::preparationOf(const QString& scene)
{
    static const TextView assessed = L"^#^Independent^Needs Help^^^^^^^^^^^Same^No";
    static const Preparation all[] {
        { "reproductive", &Scenes::edit<frmRepHist>, 1, L"MEVREP SET",
            L"1^G3P2LC1SA0TA0^01/05/2026^Oral Contraceptives^12/01/2025^1^@^Sonogram", L"" },
        { "birth", &Scenes::edit<frmPediatric>, 5, L"MEVBMSR SET", L"5^7 2^1^2M^4M^6M^1", L"" },
        { "feeding", &Scenes::edit<frmInf>, 5, L"MEVVIF SET", L"^#^3", L"MEVVIF GET" },
        { "functional", &Scenes::edit<frmElder>, 1, L"MEVVELD SET", Text(assessed), L"MEVVELD GET" },
        { "view", &Scenes::edit<frmElderView>, 1, L"MEVVELD SET", Text(assessed), L"MEVVELD GET" },
        { "contract", &Scenes::edit<frmTxc>, 1, L"MEVVTXC SET", L"^#^P^@^1", L"MEVVTXC GET" },
        { "refusal", &Scenes::edit<frmRefusal>, 1, L"MEVREF SET", L"^EXAM^2^1^@^Not now", L"MEVREF GET" },
        { "emergency", &Scenes::edit<frmER>, 1, L"MEVVER SET", L"^#^E^A^O^On a sledge^R^Patient^T^^^^Stable^LOC.`2",
            L"MEVVER GET" },
        { "asthma", &Scenes::edit<frmAsthma>, 1, L"MEVVAST SET", L"^#^2^93^49^420^Yes^Yes^No^Yes", L"MEVVAST GET" },
        { "registry", &Scenes::edit<frmAsthmaReg>, 1, L"MEVVAST SETREG",
            L"1^A^01/05/2026^03/05/2026^02/05/2026^1^Doing well", L"" },
    };
    const auto* const found = std::find_if(std::begin(all), std::end(all),
        [&](const Preparation& p) { return scene.section(u'-', 0, 0) == QLatin1String(p.scene); });
    return found == std::end(all) ? nullptr : found;
}

void Scenes::open(const QString& scene)
{
    if (const Preparation* const p = preparationOf(scene))
        return (this->*p->open)();
    if (scene == u"panels")
        return showPanels();
    m_lastDialog = nullptr;
    post();
    if (scene == u"lookup")
        frmLookup(m_shared).RunQuery(LookupTableNumber::Provider, L"s", true, L"*");
    else
        frmLookupImm(m_shared).RunQuery(L"");
}

Episode Scenes::play(const QString& name)
{
    m_episode = {};
    m_ending = false;
    m_saved.clear();
    m_session->next = FlakySession::Next::Answers;
    m_shared.session().setValue(L"MEVParam_RepHist_PedWtOpt", L"0");
    m_session->use(name == u"asthma" || name == u"registry" ? m_registrar.session : m_real.session);
    m_record.clear();
    m_call.clear();
    const Preparation* const p = preparationOf(name);
    forPatient(p ? p->patient : 1);
    if (p) {
        m_call = name == u"view" ? Text() : Text(p->call); // the view shows the saved values in another form
        if (!name.endsWith(u"-new"))
            prepareRecord(p->call, replaced(replaced(p->fields, L"#", m_visit), L"@", today()), p->list);
    }
    while (!m_ending) {
        m_verifying = !m_saved.isEmpty();
        if (m_verifying) {
            m_session->next = FlakySession::Next::Answers;
            if (!p->list.empty() && m_record.empty())
                m_record = lastRecord(p->list);
        }
        open(name);
    }
    return m_episode;
}

Episode Scenes::explore(const QString& scene, unsigned seed, int actions)
{
    m_random.seed(seed);
    m_exploring = true;
    m_budget = actions;
    return play(scene);
}

Episode Scenes::replay(const QString& scene, const QStringList& actions)
{
    m_exploring = false;
    m_planned = actions;
    return play(scene);
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
    const QString action = m_ending || !m_episode.failure.isEmpty() ? QString() : nextAction();
    if (action.isEmpty())
        return endScene();
    if (traces) {
        const QWidget* const focused = QApplication::focusWidget();
        std::printf("%-28s on \"%s\", keyboard in %s %s\n", qPrintable(action), qPrintable(topWindow()->windowTitle()),
            focused ? focused->metaObject()->className() : "nothing",
            focused ? qPrintable(focused->accessibleName()) : "");
    }
    m_episode.actions.append(action);
    m_lastAction = action;
    if (action.startsWith(u'd'))
        m_marks = 8; // lookups and boxes may open in between
    post();
    act(action);
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
    for (const auto& [control, panel] : m_panels) {
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
    const bool marked = entered && ((m_marks > 0 && m_marks--) || m_lastAction.startsWith(u't'));
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
        // The unit beside a weight becomes its letter.
        if (now.value(i) == before.value(i) + u'K' || now.value(i) == before.value(i) + u'G')
            continue;
        if (kept(before.value(i)) != kept(now.value(i)))
            return QStringLiteral("saved \"%1\" comes back as \"%2\"").arg(before.value(i), now.value(i));
    }
    ++m_savesSeen;
    return {};
}

void Scenes::tellSaved(TextView call, const Text& reply)
{
    if (call == m_call && !m_snapshot.isEmpty() && modShared::RpcErrorCode(reply) == 0)
        m_saved = std::exchange(m_snapshot, {});
}

// --- User actions ---

QString Scenes::nextAction()
{
    if (m_exploring)
        return m_budget-- > 0 ? chooseAction() : QString();
    return m_planned.isEmpty() ? QString() : m_planned.takeFirst();
}

QString Scenes::chooseAction()
{
    const auto any = [this](const QStringList& list) { return list[random(static_cast<int>(list.size()))]; };
    const QString place = QString(" %1 %2 %3 %4").arg(random(60)).arg(random(100)).arg(random(100)).arg(random(60));
    const std::pair<int, QString> kinds[] { { 36, "key " + any(Keys) }, { 58, "type " + any(Words) },
        { 66, QString("key Alt+") + QChar(u'A' + random(26)) }, { 84, "click" + place }, { 86, "drag" + place },
        { 88, "double" + place }, { 89, "right" + place }, { 92, "wheel" + place }, { 94, "away" },
        { 96, any({ "event REFRESH", "event VXR.1.1" }) }, { 100, any({ "fail", "refuse", "slow", "slow" }) } };
    const int kind = random(100);
    return std::find_if(std::begin(kinds), std::end(kinds), [kind](const auto& entry) {
        return kind < entry.first;
    })->second;
}

void Scenes::act(const QString& action)
{
    const QString verb = action.section(u' ', 0, 0);
    const QString rest = action.section(u' ', 1);
    QWidget* const top = topWindow();
    const QScopedValueRollback<const QWidget*> acting(m_actedOn, top);
    if (verb == u"key") {
        pressKeys(rest);
    } else if (verb == u"type") {
        typeText(rest);
    } else if (verb == u"away") {
        QApplication::setActiveWindow(nullptr);
    } else if (verb == u"event") {
        m_real.session.raiseEvent(rest.toStdWString(), L"");
    } else if (verb == u"fail" || verb == u"refuse" || verb == u"slow") {
        m_session->next = verb == u"fail" ? FlakySession::Next::Fails
            : verb == u"refuse"           ? FlakySession::Next::IsRefused
                                          : FlakySession::Next::IsSlow;
    } else if (top) {
        useMouse(action.split(u' '));
    }
}

}
