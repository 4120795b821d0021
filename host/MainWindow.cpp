#include "host/MainWindow.h"

#include "host/ComponentLoader.h"
#include "host/DisplayText.h"
#include "host/PatientBanner.h"
#include "host/Pickers.h"
#include "host/PreviewDialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include <cmath>
#include <cstdio>

namespace health {

namespace {
constexpr std::size_t MostPanels = 4;
const QString PanelProgId = QStringLiteral("KalMevRepHistory.kalmevRepHistCtrl");
}

// A panel on its page; without a component the page says why.
struct MainWindow::Panel {
    std::unique_ptr<ComponentInstance> component;
    QPointer<QWidget> page;
};

MainWindow::MainWindow(const Options& options)
    : m_options(options)
    , m_transport(options.serverProgram, { QStringLiteral("--data"), options.dataFolder })
    , m_context(m_transport, options.timeoutMilliseconds, [this](const QString& reason) { return askAgain(reason); })
    , m_pages(new QSplitter)
    , m_userLabel(new QLabel)
    , m_basePointSize(QApplication::font().pointSizeF())
{
    auto* const banner = new PatientBanner(m_context, this);
    m_pages->setChildrenCollapsible(false);
    auto* const centre = new QWidget;
    auto* const layout = new QVBoxLayout(centre);
    layout->addWidget(banner);
    layout->addWidget(m_pages, 1);
    setCentralWidget(centre);
    statusBar()->addPermanentWidget(m_userLabel);
    makeMenus();

    connect(banner, &PatientBanner::patientWanted, this, &MainWindow::choosePatient);
    connect(banner, &PatientBanner::visitWanted, this, &MainWindow::chooseVisit);
    connect(&m_context, &ClinicalContext::patientChanged, this, &MainWindow::updateTitle);
    connect(&m_context.session(), &HostSession::statusChanged, this,
        [this](const QString& text) { statusBar()->showMessage(text); });
    connect(&m_context.session(), &HostSession::progressed, this, &MainWindow::showProgress);
    m_context.patientObject().prompt = [this] { choosePatient(); };
    m_context.encounterObject().choose = [this] { chooseVisit(); };
    m_context.printObject().show = [this](const QString& report, const QString& title) { showReport(report, title); };
    m_context.session().chooseUser = [this] { return userOfOptions(); };

    resize(fontMetrics().horizontalAdvance(u'x') * 150, fontMetrics().height() * 42);
    if (!m_options.isUnattended())
        restoreGeometry(QSettings().value(QStringLiteral("geometry")).toByteArray());
    updateTitle();
}

MainWindow::~MainWindow() { dropPanels(); }

void MainWindow::makeMenus()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Select &Patient..."), QKeySequence(tr("Ctrl+O")), this, &MainWindow::choosePatient);
    m_visitAction = file->addAction(tr("Select &Visit..."), QKeySequence(tr("Ctrl+T")), this, &MainWindow::chooseVisit);
    file->addAction(tr("Sign On &As..."), this, &MainWindow::chooseUser);
    file->addSeparator();
    m_newPanel = file->addAction(tr("&New Panel"), QKeySequence(tr("Ctrl+N")), this, &MainWindow::addPanel);
    m_closePanel = file->addAction(tr("&Close Panel"), QKeySequence(tr("Ctrl+W")), this, &MainWindow::closePanel);
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, &QWidget::close);

    QMenu* const view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("&Refresh"), QKeySequence(Qt::Key_F5), this, [this] {
        if (m_context.mayChange())
            m_context.session().raiseEvent(L"REFRESH", L"");
    });
    view->addSeparator();
    view->addAction(tr("&Larger Text"), QKeySequence(tr("Ctrl++")), this, [this] { changeTextSize(1.1); });
    view->addAction(tr("&Smaller Text"), QKeySequence(tr("Ctrl+-")), this, [this] { changeTextSize(1 / 1.1); });
    view->addAction(tr("&Normal Text"), QKeySequence(tr("Ctrl+0")), this, [this] { changeTextSize(0); });

    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About"), this, [this] {
        QMessageBox::about(
            this, tr("About"), tr("Reference host %1 of the Personal Health panel.").arg(QStringLiteral(HOST_VERSION)));
    });
}

// --- Start ---

bool MainWindow::start()
{
    const Text user = userOfOptions();
    if (user.empty())
        return false;
    m_context.session().signOn(user);
    m_userLabel->setText(displayName(QString::fromStdWString(m_context.session().signedOn().userName)));
    if (m_options.patient != 0)
        m_context.selectPatient(m_options.patient);
    addPanel();
    return true;
}

Text MainWindow::userOfOptions()
{
    if (!m_options.user.isEmpty())
        return m_options.user.toUpper().toStdWString();
    if (!m_options.isUnattended())
        return pickUser(m_context.session(), isVisible() ? this : nullptr);
    return linesOf(m_context.session().users()).value(0).value(1).toStdWString();
}

bool MainWindow::askAgain(const QString& reason)
{
    if (m_progress)
        m_progress->close();
    if (m_options.isUnattended()) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        return false;
    }
    QMessageBox box(QMessageBox::Warning, tr("Personal Health"), tr("The server did not answer. Try again?"),
        QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box.setInformativeText(reason);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

void MainWindow::showProgress(int percent, const QString& text)
{
    if (m_options.isUnattended())
        return;
    if (!m_progress) {
        m_progress = new QProgressDialog(text, QString(), 0, 100, isVisible() ? this : nullptr);
        m_progress->setAttribute(Qt::WA_DeleteOnClose);
        m_progress->setWindowTitle(tr("Preparing the clinical data"));
        m_progress->setMinimumDuration(0);
    }
    m_progress->setLabelText(text);
    m_progress->setValue(percent); // closes itself at 100
}

// --- Panels ---

void MainWindow::addPanel()
{
    if (m_panels.size() >= MostPanels)
        return;
    auto panel = std::make_unique<Panel>();
    try {
        panel->component = loadComponentClass(PanelProgId).create(m_context);
        m_context.add(*panel->component);
        panel->page = panel->component->widget();
    } catch (const Failure& failure) {
        auto* const message = new QLabel(QString::fromStdWString(failure.description()));
        message->setWordWrap(true);
        message->setAlignment(Qt::AlignCenter);
        panel->page = message;
    }
    QWidget* const page = panel->page;
    m_panels.push_back(std::move(panel));
    m_pages->addWidget(page);
    m_newPanel->setEnabled(m_panels.size() < MostPanels);
    m_closePanel->setEnabled(m_panels.size() > 1);
}

void MainWindow::closePanel()
{
    if (m_panels.size() < 2 || !m_context.mayChange())
        return;
    const auto focused = std::find_if(m_panels.begin(), m_panels.end(),
        [](const auto& panel) { return panel->page && panel->page->isAncestorOf(QApplication::focusWidget()); });
    const auto closed = focused == m_panels.end() ? m_panels.end() - 1 : focused;
    if ((*closed)->component)
        m_context.remove(*(*closed)->component);
    else
        delete (*closed)->page;
    m_panels.erase(closed);
    m_newPanel->setEnabled(true);
    m_closePanel->setEnabled(m_panels.size() > 1);
}

void MainWindow::dropPanels()
{
    for (const auto& panel : m_panels) {
        if (panel->component)
            m_context.remove(*panel->component);
        else
            delete panel->page;
    }
    m_panels.clear();
}

QString MainWindow::gridText() const
{
    const auto* const view = m_panels.empty() || !m_panels.front()->page
        ? nullptr
        : m_panels.front()->page->findChild<QAbstractItemView*>(QString(), Qt::FindDirectChildrenOnly);
    QString text;
    const QAbstractItemModel* const model = view ? view->model() : nullptr;
    for (int row = 0; model && row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells.append(model->index(row, column).data().toString());
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

// --- The user's choices ---

// Shows what a choice throws; nothing is begun while a dialog or a call is open.
void MainWindow::guarded(const std::function<void()>& work)
{
    if (m_context.session().isInCall())
        return;
    try {
        work();
    } catch (const Failure& failure) {
        QMessageBox::critical(this, tr("Personal Health"), QString::fromStdWString(failure.description()));
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
        if (const auto visit = pickVisit(m_context.session(), m_context.patient().number, this))
            m_context.selectVisit(*visit);
    });
}

// The panels ask for the user's keys when they start, so they start anew.
void MainWindow::chooseUser()
{
    if (!m_context.mayChange())
        return;
    guarded([this] {
        const Text user = pickUser(m_context.session(), this);
        if (user.empty())
            return;
        const std::size_t panels = m_panels.size();
        dropPanels();
        m_context.selectPatient(0);
        m_context.session().signOn(user);
        m_userLabel->setText(displayName(QString::fromStdWString(m_context.session().signedOn().userName)));
        for (std::size_t i = 0; i < panels; ++i)
            addPanel();
    });
}

void MainWindow::showReport(const QString& report, const QString& title)
{
    const PatientData& patient = m_context.patient();
    const QString owner = tr("Patient: %1   Number: %2").arg(displayName(patient.name)).arg(patient.number);
    PreviewDialog(ReportPages(report, title, owner), title, this).exec();
}

void MainWindow::changeTextSize(double factor)
{
    m_textSize = factor == 0 ? 1 : std::clamp(m_textSize * factor, 0.7, 3.0);
    QFont font = QApplication::font();
    font.setPointSizeF(m_basePointSize * m_textSize);
    QApplication::setFont(font);
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
        return;
    }
    if (!m_options.isUnattended())
        QSettings().setValue(QStringLiteral("geometry"), saveGeometry());
    QMainWindow::closeEvent(event);
}

}
