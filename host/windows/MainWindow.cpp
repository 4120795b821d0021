#include "host/windows/MainWindow.h"

#include "host/session/ProcessTransport.h"
#include "host/session/TlsTransport.h"
#include "host/windows/DisplayText.h"
#include "host/windows/FailureBox.h"
#include "host/windows/HelpBoxes.h"
#include "host/windows/ListPicker.h"
#include "host/windows/PatientBanner.h"
#include "host/windows/Pickers.h"
#include "host/windows/PreviewDialog.h"
#include "host/windows/ProgramIcon.h"
#include "host/windows/ReadablePalette.h"
#include "host/windows/TextSize.h"
#include "host/windows/WaitBox.h"
#include "toolkit/WheelGuard.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScopeGuard>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace health {

namespace {
// In milliseconds
constexpr int LongestOpening = 15'000;
constexpr int Patience = 2000; // before a wait is offered to be stopped
constexpr int LaterPause = 20;

// Of the settings
const QString GeometryKey = QStringLiteral("geometry");
const QString TextSizeKey = QStringLiteral("textSize");
constexpr double TextStep = 1.1;

std::unique_ptr<Transport> makeTransport(const Options& options)
{
    if (options.server.port != 0)
        return std::make_unique<TlsTransport>(options.server, std::min(options.timeoutMilliseconds, LongestOpening));
    return std::make_unique<ProcessTransport>(
        options.serverProgram, QStringList { QStringLiteral("--data"), options.dataFolder });
}
}

MainWindow::MainWindow(const Options& options)
    : m_options(options)
    , m_transport(makeTransport(options))
    , m_context(*m_transport, options.timeoutMilliseconds, [this](const QString& reason) { return askAgain(reason); })
    , m_pages(new PanelPages(m_context))
    , m_connectionLabel(new QLabel(tr("Not connected to the server.")))
    , m_userLabel(new QLabel)
    , m_textSize(new TextSize(this))
{
    auto* const banner = new PatientBanner(m_context, this);
    auto* const centre = new QWidget;
    auto* const layout = new QVBoxLayout(centre);
    layout->addWidget(banner);
    layout->addWidget(m_pages, 1);
    setCentralWidget(centre);
    m_userLabel->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(m_connectionLabel);
    statusBar()->addPermanentWidget(m_userLabel);
    statusBar()->setAccessibleName(tr("Status"));
    makeFileMenu();
    makeViewMenu();
    makeHelpMenu();
    connect(banner, &PatientBanner::patientWanted, this, &MainWindow::choosePatient);
    connect(banner, &PatientBanner::visitWanted, this, &MainWindow::chooseVisit);
    connect(m_pages, &PanelPages::countChanged, this, &MainWindow::updatePanelActions);
    connectContext();
    QApplication::instance()->installEventFilter(new WheelGuard(this));
    new ReadablePalette(this);
    QApplication::setWindowIcon(programIcon());
    if (!m_options.isUnattended())
        m_textSize->setFactor(QSettings().value(TextSizeKey, 1).toDouble());

    const QSize size(fontMetrics().horizontalAdvance(u'x') * 150, fontMetrics().height() * 42);
    if (m_options.isUnattended()) {
        resize(size); // a picture needs no screen
    } else {
        resizeToScreen(*this, size);
        restoreGeometry(QSettings().value(GeometryKey).toByteArray());
    }
    updateTitle();
}

// The panels use the session to the last.
MainWindow::~MainWindow() { m_pages->dropAll(); }

void MainWindow::connectContext()
{
    connect(&m_context, &ClinicalContext::patientChanged, this, &MainWindow::updateTitle);
    connect(&m_context.session(), &HostSession::statusChanged, this,
        [this](const QString& text) { statusBar()->showMessage(text); });
    m_connectionLabel->hide();
    connect(&m_context.session(), &HostSession::connectionChanged, this, &MainWindow::showConnection);
    connect(&m_context.session(), &HostSession::progressed, this, &MainWindow::showProgress);
    connect(&m_context.session(), &HostSession::callEnded, this, &MainWindow::endWaiting);
    m_context.patientObject().prompt = [this] { choosePatient(); };
    m_context.encounterObject().choose = [this] { chooseVisit(); };
    m_context.printObject().show = [this](const Report& report) { showReport(report); };
    m_context.session().onWait = [this](qint64 milliseconds) { return showWaiting(milliseconds); };
    m_context.session().setLongestCall(m_options.longestCallMilliseconds);
    m_context.session().chooseUser = [this] { return userOfOptions(); };
}

void MainWindow::makeFileMenu()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->setToolTipsVisible(true);
    file->addAction(tr("Select &Patient..."), QKeySequence(tr("Ctrl+O")), this, &MainWindow::choosePatient);
    m_visitAction = file->addAction(tr("Select &Visit..."), QKeySequence(tr("Ctrl+T")), this, &MainWindow::chooseVisit);
    file->addAction(tr("Sign On &As..."), this, &MainWindow::chooseUser);
    file->addSeparator();
    m_newPanel = file->addAction(tr("&New Panel"), QKeySequence(tr("Ctrl+N")), m_pages, &PanelPages::add);
    m_closePanel = file->addAction(tr("&Close Panel"), QKeySequence(tr("Ctrl+W")), m_pages, &PanelPages::closeCurrent);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, &QWidget::close);
}

void MainWindow::makeViewMenu()
{
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("&Refresh"), QKeySequence(Qt::Key_F5), this, [this] {
        if (m_context.mayChange())
            m_context.session().raiseEvent(L"REFRESH", L"");
    });
    view->addSeparator();
    // The plus stands on a shifted key of many keyboards.
    view->addAction(tr("&Larger Text"), this, [this] { m_textSize->setFactor(m_textSize->factor() * TextStep); })
        ->setShortcuts({ QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+=")) });
    view->addAction(tr("&Smaller Text"), QKeySequence(tr("Ctrl+-")), this,
        [this] { m_textSize->setFactor(m_textSize->factor() / TextStep); });
    view->addAction(tr("&Normal Text"), QKeySequence(tr("Ctrl+0")), this, [this] { m_textSize->setFactor(1); });
}

void MainWindow::showConnection(bool connected)
{
    m_connected = connected;
    m_connectionLabel->setHidden(connected);
    updatePanelActions();
    if (connected && m_wantedPanels > 0)
        QMetaObject::invokeMethod(this, &MainWindow::addWantedPanels, Qt::QueuedConnection);
}

void MainWindow::updatePanelActions()
{
    // A panel that starts without the server stays half made: it knows neither the user's keys nor what may be added.
    m_newPanel->setEnabled(m_connected && m_pages->mayAdd());
    m_newPanel->setToolTip(!m_connected ? tr("No panel can be opened while the server is not connected.")
            : m_pages->mayAdd()         ? tr("Open another panel beside this one.")
                                        : tr("No more than %1 panels fit side by side.").arg(PanelPages::Most));
    m_closePanel->setEnabled(m_pages->mayClose());
}

void MainWindow::makeHelpMenu()
{
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Keyboard Shortcuts"), QKeySequence(Qt::Key_F1), this, [this] { showShortcuts(*this); });
    help->addAction(tr("&About"), this, [this] { showAbout(*this, m_options, m_userLabel->text()); });
}

// --- Start ---

bool MainWindow::start()
{
    const Text user = userOfOptions();
    if (user.empty())
        return false;
    m_context.session().signOn(user);
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
    // A certificate allows one user only, so there is nothing to choose.
    const QString certified = certificateUser(m_options.server.certificateFile);
    if (!certified.isEmpty())
        return certified.toStdWString();
    if (!m_options.isUnattended())
        return pickUser(m_context.session(), isVisible() ? this : nullptr);
    return linesOf(m_context.session().users()).value(0).value(1).toStdWString();
}

bool MainWindow::askAgain(const QString& reason)
{
    delete m_waitBox;
    if (m_closing)
        return false;
    if (m_options.isUnattended()) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        return false;
    }
    QMessageBox box(QMessageBox::Warning, tr("Personal Health"), tr("The connection to the server failed. Try again?"),
        QMessageBox::Retry | QMessageBox::Cancel, QApplication::activeWindow());
    box.setInformativeText(reason);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setDefaultButton(QMessageBox::Retry);
    // The box is as wide as its first sentence otherwise, and the reason's paths are broken.
    if (auto* const grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(fontMetrics().horizontalAdvance(u'x') * 70, 0), grid->rowCount(), 0, 1,
            grid->columnCount());
    QApplication::setOverrideCursor(Qt::ArrowCursor); // the call has set the hourglass, but the user is asked
    const auto callGoesOn = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    return box.exec() == QMessageBox::Retry;
}

void MainWindow::showProgress(int percent, const QString& text)
{
    if (m_options.isUnattended())
        return tellProgress(tr("%1 (%2%)").arg(text).arg(percent / 25 * 25));
    waitBox().showProgress(percent, text);
}

// Offers to stop a call that takes long; true when the box that does so is on the screen, and takes all input.
bool MainWindow::showWaiting(qint64 milliseconds)
{
    if (m_options.isUnattended())
        return false;
    if (!m_waitBox && milliseconds >= Patience)
        waitBox().showWaiting();
    return m_waitBox;
}

WaitBox& MainWindow::waitBox()
{
    if (!m_waitBox) {
        m_waitBox = new WaitBox(*this);
        connect(m_waitBox, &WaitBox::stopped, &m_context.session(), &HostSession::giveUp);
    }
    return *m_waitBox;
}

void MainWindow::endWaiting()
{
    delete m_waitBox;
    if (m_closing)
        closeLater();
}

// Whoever made the call has to hear of its end first, and may have something to say.
void MainWindow::closeLater()
{
    QTimer::singleShot(LaterPause, this, [this] {
        if (!m_context.mayChange())
            return closeLater();
        if (std::exchange(m_closing, false))
            close();
    });
}

void MainWindow::tellProgress(const QString& line)
{
    if (line != m_toldProgress)
        std::fprintf(stderr, "%s\n", qPrintable(line));
    m_toldProgress = line;
}

// --- The user's choices ---

// Does what the user chose, and shows what goes wrong. Nothing is begun while a dialog is open or a call runs.
void MainWindow::guarded(const std::function<void()>& work)
{
    if (!m_context.mayChange())
        return;
    try {
        work();
    } catch (const CallAbandoned&) {
        // The user has seen what happened, and has had enough.
    } catch (const Failure& failure) {
        showFailure(this, tr("Personal Health"), QString::fromStdWString(failure.description()));
    }
}

void MainWindow::choosePatient()
{
    guarded([this] {
        if (const long number = pickPatient(m_context.session(), this))
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

void MainWindow::chooseUser()
{
    guarded([this] {
        const Text user = pickUser(m_context.session(), this);
        if (!user.empty())
            changeUser(user);
    });
}

// The panels ask for the user's keys when they start, so they start again as soon as somebody is signed on. Should the
// new user be refused, the old one is signed on again.
void MainWindow::changeUser(const Text& user)
{
    if (!m_context.selectPatient(0))
        return;
    const Text old = m_context.session().signedOn().userName;
    m_wantedPanels += m_pages->count();
    m_pages->dropAll();
    // Whatever comes of it, the window shows who is signed on, and its panels.
    const auto goOn = qScopeGuard([this] {
        showUser();
        addWantedPanels();
    });
    try {
        m_context.session().signOn(user);
    } catch (const CallAbandoned&) {
        throw; // the server is away: the new user stays to be signed on
    } catch (const Failure&) {
        signOnAgain(old);
        throw;
    }
}

// Nothing while the server is away: its coming back calls this again.
void MainWindow::addWantedPanels()
{
    if (!m_context.session().isConnected() || m_wantedPanels == 0)
        return;
    if (!m_context.mayChange()) {
        QTimer::singleShot(LaterPause, this, &MainWindow::addWantedPanels);
        return;
    }
    showUser();
    for (std::size_t wanted = std::exchange(m_wantedPanels, 0); wanted > 0; --wanted)
        m_pages->add();
}

void MainWindow::signOnAgain(const Text& user)
{
    try {
        m_context.session().signOn(user);
    } catch (const Failure&) {
        // The refusal that led here is told; the next call tells of this one.
    }
}

void MainWindow::showUser()
{
    const QString name = displayName(QString::fromStdWString(m_context.session().signedOn().userName));
    m_userLabel->setText(name.isEmpty() ? tr("Nobody has signed on") : tr("User: %1").arg(name));
}

void MainWindow::showReport(const Report& report)
{
    const PatientData& patient = m_context.patient();
    const QString user = displayName(QString::fromStdWString(m_context.session().signedOn().userName));
    ReportPeople people { tr("No patient selected"), {}, user };
    if (patient.number != 0) {
        people.patient = displayName(patient.name);
        people.heading = tr("Patient: %1   Number: %2").arg(people.patient).arg(patient.number);
    }
    PreviewDialog(ReportPages(report, people), report.title, QApplication::activeWindow()).exec();
}

void MainWindow::updateTitle()
{
    const PatientData& patient = m_context.patient();
    m_visitAction->setEnabled(patient.number != 0);
    setWindowTitle(patient.number == 0
            ? tr("Personal Health")
            : tr("%1 (%2) - Personal Health").arg(displayName(patient.name)).arg(patient.number));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_context.session().isInCall()) {
        event->ignore();
        m_closing = true;
        m_context.session().giveUp();
        return;
    }
    if (!m_options.isUnattended()) {
        QSettings().setValue(GeometryKey, saveGeometry());
        QSettings().setValue(TextSizeKey, m_textSize->factor());
    }
    QMainWindow::closeEvent(event);
}

}
