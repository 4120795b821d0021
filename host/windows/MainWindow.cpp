#include "host/windows/MainWindow.h"

#include "api/Events.h"
#include "host/desktop/ProgramIcon.h"
#include "host/desktop/ReadablePalette.h"
#include "host/desktop/TextSize.h"
#include "host/framework/DisplayText.h"
#include "host/session/DisturbedTransport.h"
#include "host/session/ProcessTransport.h"
#include "host/session/Replies.h"
#include "host/session/TlsTransport.h"
#include "host/windows/CallWatch.h"
#include "host/windows/EmergencyVisits.h"
#include "host/windows/FailureBox.h"
#include "host/windows/HelpBoxes.h"
#include "host/windows/ListPicker.h"
#include "host/windows/PanelMenus.h"
#include "host/windows/PatientBanner.h"
#include "host/windows/Pickers.h"
#include "host/windows/Previews.h"
#include "host/windows/SignLabel.h"
#include "host/windows/StatusLine.h"
#include "host/windows/SupportMenu.h"
#include "toolkit/Hairline.h"
#include "toolkit/Measures.h"
#include "toolkit/WheelGuard.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QScopeGuard>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace health {

namespace {
// In milliseconds
constexpr int LongestOpening = 15'000;
constexpr int LaterPause = 20;

// Keys of the settings
const QString GeometryKey = u"geometry"_s;
const QString TextSizeKey = u"textSize"_s;
constexpr double TextStep = 1.1;

using NoAlerts = std::vector<PatientAlert>;

std::unique_ptr<Transport> makeTransport(const WindowOptions& options)
{
    if (options.server)
        return std::make_unique<TlsTransport>(*options.server, std::min(options.timeoutMilliseconds, LongestOpening));
    auto local =
        std::make_unique<ProcessTransport>(options.serverProgram, QStringList { u"--data"_s, options.dataFolder });
    if (options.isLaboratory)
        return std::make_unique<DisturbedTransport>(std::move(local));
    return local;
}
}

MainWindow::MainWindow(const WindowOptions& options)
    : m_options(options)
    , m_transport(makeTransport(options))
    , m_context(
          *m_transport, options.timeoutMilliseconds, [this](const QString& reason) { return asksToRetry(reason); },
          prompts())
    , m_calls(new CallWatch(
          m_context.session(), *this, options.isUnattended ? CallWatch::Audience::Nobody : CallWatch::Audience::User))
    , m_pages(new PanelPages(m_context, ViewMemory(!options.isUnattended)))
    , m_panelMenus(new PanelMenus(*m_pages))
    , m_userLabel(new SignLabel)
    , m_statusLine(new StatusLine(m_context.session()))
    , m_textSize(new TextSize(this))
{
    auto* const banner =
        new PatientBanner(m_context, [this] { return m_pages->first() ? m_pages->first()->alerts() : NoAlerts(); });
    setCentralWidget(makeCentre(*banner));
    makeStatusBar();
    makeFileMenu();
    makeViewMenu();
    makeHelpMenu();
    connect(banner, &PatientBanner::patientWanted, this, &MainWindow::choosePatient);
    connect(banner, &PatientBanner::visitWanted, this, &MainWindow::chooseVisit);
    connect(m_statusLine, &StatusLine::entryWanted, this, &MainWindow::reopenEntry);
    connect(m_pages, &PanelPages::countChanged, this, &MainWindow::updatePanelActions);
    connectContext();
    QApplication::instance()->installEventFilter(new WheelGuard(this));
    new ReadablePalette(this);
    QApplication::setWindowIcon(programIcon());
    if (!m_options.isUnattended)
        m_textSize->setFactor(QSettings().value(TextSizeKey, 1).toDouble());

    const QSize size(fontMetrics().horizontalAdvance(u'x') * 150, fontMetrics().height() * 42);
    if (m_options.isUnattended) {
        resize(size); // the size of pictures must not depend on the screen
    } else {
        resizeToScreen(*this, size);
        restoreGeometry(QSettings().value(GeometryKey).toByteArray());
    }
    updateTitle();
}

// Panels and pages use the session until they are destroyed.
MainWindow::~MainWindow()
{
    delete m_emergencyVisits;
    m_pages->dropAll();
}

ClinicalContext::Prompts MainWindow::prompts()
{
    return { [this] { choosePatient(); }, [this] { chooseVisit(); },
        [this](const Report& report) { previewReport(m_context, report); },
        [this](Printout& printout) { previewPages(m_context, printout); } };
}

QWidget* MainWindow::makeCentre(PatientBanner& banner)
{
    auto* const centre = new QWidget;
    auto* const layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(&banner);
    layout->addWidget(new Hairline);
    layout->addWidget(m_pages, 1);
    layout->addWidget(new Hairline);
    return centre;
}

void MainWindow::makeStatusBar()
{
    statusBar()->setAccessibleName(u"Status"_s);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addWidget(m_statusLine, 1);
    statusBar()->addPermanentWidget(m_userLabel);
    layOutEdges();
}

// Status line and panels begin where the banner's texts begin.
void MainWindow::layOutEdges()
{
    const Measures measures(*this);
    const int margin = measures.windowMargin();
    statusBar()->setContentsMargins(margin, 0, margin, 0);
    m_pages->setContentsMargins(measures.units(3), measures.units(1.5), measures.units(3), 0);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_userLabel)
        layOutEdges();
}

void MainWindow::connectContext()
{
    connect(&m_context, &ClinicalContext::patientChanged, this, &MainWindow::updateTitle);
    connect(&m_context, &ClinicalContext::patientChanged, this,
        [this] { m_seenPatients.note(m_context.session().signedOn().userName, m_context.patient()); });
    connect(&m_context, &ClinicalContext::patientChanged, m_statusLine, &StatusLine::forgetSaved);
    connect(&m_context.session(), &HostSession::connectionChanged, this, &MainWindow::showConnection);
    connect(&m_context.session(), &HostSession::callEnded, this, [this] {
        if (m_closing)
            closeLater();
    });
    m_context.session().setLongestCall(m_options.longestCallMilliseconds);
    m_context.session().chooseUser = [this] { return userOfOptions(); };
}

void MainWindow::makeFileMenu()
{
    QMenu* const file = menuBar()->addMenu(u"&File"_s);
    file->setToolTipsVisible(true);
    file->addAction(u"Select &Patient..."_s, QKeySequence(u"Ctrl+O"_s), this, &MainWindow::choosePatient);
    m_visitAction = file->addAction(u"Select &Visit..."_s, QKeySequence(u"Ctrl+T"_s), this, &MainWindow::chooseVisit);
    file->addAction(u"Sign On &As..."_s, this, &MainWindow::chooseUser);
    file->addSeparator();
    file->addAction(m_statusLine->undoAction());
    file->addSeparator();
    m_newPanel = file->addAction(u"&New Panel"_s, QKeySequence(u"Ctrl+N"_s), m_pages, &PanelPages::add);
    m_closePanel = file->addAction(u"&Close Panel"_s, QKeySequence(u"Ctrl+W"_s), m_pages, &PanelPages::closeCurrent);
    file->addSeparator();
    m_panelMenus->add(*file, "File", file->addAction(u"&Quit"_s, QKeySequence(u"Ctrl+Q"_s), this, &QWidget::close));
    // Without an access key: its letters belong to the panel's buttons.
    m_panelMenus->add(*menuBar()->addMenu(u"Edit"_s), "Edit");
}

void MainWindow::makeViewMenu()
{
    QMenu* const view = menuBar()->addMenu(u"&View"_s);
    view->addAction(u"&Refresh"_s, QKeySequence(Qt::Key_F5), this, [this] {
        if (m_context.mayChange())
            m_context.session().raiseEvent(RefreshEvent, L"");
    });
    m_emergencyAction = view->addAction(u"&Emergency Visits..."_s, this, &MainWindow::showEmergencyVisits);
    view->addSeparator();
    // On many keyboards plus is a shifted key.
    view->addAction(u"&Larger Text"_s, this, [this] { m_textSize->setFactor(m_textSize->factor() * TextStep); })
        ->setShortcuts({ QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s) });
    view->addAction(u"&Smaller Text"_s, QKeySequence(u"Ctrl+-"_s), this,
        [this] { m_textSize->setFactor(m_textSize->factor() / TextStep); });
    view->addAction(u"&Normal Text"_s, QKeySequence(u"Ctrl+0"_s), this, [this] { m_textSize->setFactor(1); });
    m_panelMenus->add(*view, "View");
}

void MainWindow::showConnection(bool connected)
{
    m_connected = connected;
    updatePanelActions();
    if (connected && m_closedPanels > 0)
        QMetaObject::invokeMethod(this, &MainWindow::reopenPanels, Qt::QueuedConnection);
}

void MainWindow::updatePanelActions()
{
    // A panel that starts without the server stays incomplete: it lacks the user's keys and the types to add.
    m_newPanel->setEnabled(m_connected && m_pages->mayAdd());
    m_newPanel->setToolTip(!m_connected ? u"Panels cannot be opened while the server is not connected."_s
            : m_pages->mayAdd()         ? u"Open another panel beside this one."_s
                                        : u"At most %1 panels fit side by side."_s.arg(PanelPages::Most));
    m_closePanel->setEnabled(m_pages->mayClose());
}

void MainWindow::makeHelpMenu()
{
    QMenu* const help = menuBar()->addMenu(u"&Help"_s);
    help->addAction(u"&Keyboard Shortcuts"_s, QKeySequence(Qt::Key_F1), this, [this] {
        m_panelMenus->refresh();
        showShortcuts(*this);
    });
    auto* const laboratory = dynamic_cast<DisturbedTransport*>(m_transport.get());
    new SupportMenu(*help, m_context.session(), laboratory, *this);
    help->addAction(u"&About"_s, this, [this] { showAbout(*this, m_options, m_userLabel->text()); });
}

// --- Start ---

bool MainWindow::start()
{
    const Text user = userOfOptions();
    if (user.empty())
        return false;
    m_context.session().signOn(user);
    if (m_options.isLaboratory && m_context.session().callText(L"MEVHOST SAMPLE", L"") != L"1")
        throw Failure(L"--laboratory is for sample data only. The server did not create this data folder as sample "
                      L"data.");
    showUser();
    if (m_options.patient != 0)
        m_context.selectPatient(m_options.patient);
    m_pages->add();
    return true;
}

Text MainWindow::userOfOptions()
{
    if (!m_options.user.isEmpty())
        return m_options.user.toUpper().toStdWString();
    // A certificate belongs to a single user, so there is no choice.
    const QString certified = m_options.server ? certificateUser(m_options.server->certificateFile) : QString();
    if (!certified.isEmpty())
        return certified.toStdWString();
    if (!m_options.isUnattended)
        return pickUser(m_context.session(), isVisible() ? this : nullptr);
    return linesOf(m_context.session().users()).value(0).value(1).toStdWString();
}

bool MainWindow::asksToRetry(const QString& reason)
{
    m_calls->endWaiting();
    return !m_closing && m_calls->asksToRetry(reason);
}

// Waits until the caller has handled the end of the call, and possibly shown a message.
void MainWindow::closeLater()
{
    QTimer::singleShot(LaterPause, this, [this] {
        if (!m_context.mayChange())
            return closeLater();
        if (std::exchange(m_closing, false))
            close();
    });
}

// --- The user's choices ---

// Runs a command of the user and shows its failure. Does nothing while a dialog is open or a call runs.
void MainWindow::guarded(const std::function<void()>& work)
{
    if (!m_context.mayChange())
        return;
    try {
        work();
    } catch (const CallAbandoned&) {
        // The user has seen the error.
    } catch (const Failure& failure) {
        showFailure(this, u"Personal Health"_s, QString::fromStdWString(failure.description()));
    }
}

void MainWindow::choosePatient()
{
    guarded([this] {
        QList<PatientData> seen = m_seenPatients.of(m_context.session().signedOn().userName);
        seen.removeIf([this](const PatientData& patient) { return patient.number == m_context.patient().number; });
        if (const long number = pickPatient(m_context.session(), seen, this))
            m_context.selectPatient(number);
    });
}

void MainWindow::chooseVisit()
{
    guarded([this] {
        if (m_context.patient().number == 0)
            return;
        if (const auto visit =
                pickVisit(m_context.session(), m_context.patient().number, m_context.visit().number, this))
            m_context.selectVisit(*visit);
    });
}

void MainWindow::showEmergencyVisits()
{
    guarded([this] {
        if (m_context.patient().number == 0)
            return;
        if (!m_emergencyVisits)
            m_emergencyVisits = new EmergencyVisits(
                m_context,
                [this](const Text& record, const Text& visit) {
                    if (ComponentInstance* const panel = m_pages->first())
                        panel->openRecord(static_cast<int>(RecordTypeNumber::EmergencyRoom), record, visit);
                },
                this);
        m_emergencyVisits->present();
    });
}

void MainWindow::reopenEntry()
{
    if (ComponentInstance* const panel = m_pages->first(); panel && m_context.mayChange())
        panel->reopenEntry();
}

void MainWindow::chooseUser()
{
    guarded([this] {
        const Text user = pickUser(m_context.session(), this);
        if (!user.empty())
            changeUser(user);
    });
}

// Panels read the keys at start, so recreate them. If the sign-on fails, sign the old user on again.
void MainWindow::changeUser(const Text& user)
{
    if (!m_context.selectPatient(0))
        return;
    const Text old = m_context.session().signedOn().userName;
    m_closedPanels += m_pages->count();
    m_pages->saveViews();
    m_pages->dropAll();
    // In every case the window shows the signed-on user and the panels.
    const auto goOn = qScopeGuard([this] {
        showUser();
        reopenPanels();
    });
    try {
        m_context.session().signOn(user);
    } catch (const CallAbandoned&) {
        throw; // the server is unreachable: the new user is signed on when it is back
    } catch (const Failure&) {
        signOnAgain(old);
        throw;
    }
}

// Does nothing while the server is unreachable; showConnection calls it again.
void MainWindow::reopenPanels()
{
    if (!m_context.session().isConnected() || m_closedPanels == 0)
        return;
    if (!m_context.mayChange()) {
        QTimer::singleShot(LaterPause, this, &MainWindow::reopenPanels);
        return;
    }
    showUser();
    for (std::size_t closed = std::exchange(m_closedPanels, 0); closed > 0; --closed)
        m_pages->add();
}

void MainWindow::signOnAgain(const Text& user)
{
    try {
        m_context.session().signOn(user);
    } catch (const Failure&) {
        // The caller reports the original failure; the next call reports this one.
    }
}

void MainWindow::showUser()
{
    const QString name = displayName(QString::fromStdWString(m_context.session().signedOn().userName));
    m_userLabel->say(name.isEmpty() ? u"Not signed on."_s : u"User: %1"_s.arg(name), Sign::None, Ink::Quiet);
}

void MainWindow::updateTitle()
{
    const PatientData& patient = m_context.patient();
    m_visitAction->setEnabled(patient.number != 0);
    m_emergencyAction->setEnabled(patient.number != 0);
    const QString program = m_options.isLaboratory ? u"Personal Health LABORATORY"_s : u"Personal Health"_s;
    setWindowTitle(patient.number == 0
            ? program
            : u"%1 (%2) - %3"_s.arg(displayName(patient.name), QString::number(patient.number), program));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_context.session().isInCall()) {
        event->ignore();
        m_closing = true;
        m_context.session().giveUp();
        return;
    }
    if (!m_options.isUnattended) {
        QSettings().setValue(GeometryKey, saveGeometry());
        QSettings().setValue(TextSizeKey, m_textSize->factor());
        m_pages->saveViews();
    }
    QMainWindow::closeEvent(event);
}

}
