#include "host/windows/CallJournalWindow.h"

#include "api/Failure.h"
#include "host/desktop/PrivateFile.h"
#include "host/session/JournalText.h"
#include "host/windows/ActionButton.h"
#include "host/windows/FailureBox.h"
#include "host/windows/JournalModel.h"
#include "host/windows/ListPicker.h"
#include "host/windows/SignLabel.h"
#include "toolkit/Measures.h"
#include "toolkit/SpokenItems.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDate>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStandardPaths>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace health {

CallJournalWindow::CallJournalWindow(CallJournal& journal, QWidget* parent)
    : QDialog(parent)
    , m_journal(&journal)
    , m_model(new JournalModel(journal, this))
    , m_table(new QTableView)
    , m_sums(new QLabel)
    , m_warning(new SignLabel)
    , m_lock(new QCheckBox(u"Show &parameters and replies"_s))
    , m_content(new QPlainTextEdit)
    , m_saved(new QLabel)
{
    setWindowTitle(u"Call Journal"_s);
    setUpTable();
    setUpContent();
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(makeLock());
    layout->addWidget(m_table, 3);
    layout->addWidget(m_content, 1);
    for (QLabel* const label : { m_sums, m_saved }) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    m_saved->hide();
    layout->addWidget(makeButtons());
    connect(m_model, &JournalModel::followed, this, &CallJournalWindow::showSums);
    connect(m_model, &JournalModel::followed, this, &CallJournalWindow::showContent);
    connect(m_journal, &CallJournal::changed, this, &CallJournalWindow::showLock);
    resizeToScreen(*this, { fontMetrics().horizontalAdvance(u'x') * 110, fontMetrics().height() * 32 });
    showSums();
    showLock();
}

CallJournalWindow::~CallJournalWindow()
{
    if (!m_journal)
        return;
    m_journal->disconnect(this);
    if (m_journal->isUnlocked())
        m_journal->setUnlocked(false);
}

void CallJournalWindow::setUpTable()
{
    m_table->setModel(m_model);
    m_table->setAccessibleName(u"Calls"_s);
    new SpokenItems(*m_table);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 5 / 4);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    const int letter = fontMetrics().horizontalAdvance(u'x');
    for (int column = 0; const int letters : { 14, 27, 18, 10, 11, 20 })
        m_table->setColumnWidth(column++, letter * letters);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &CallJournalWindow::showContent);
    // Instead of the table's own copying, which takes a single cell.
    auto* const copying = new QShortcut(QKeySequence::Copy, m_table, this, &CallJournalWindow::copy);
    copying->setContext(Qt::WidgetShortcut);
}

QWidget* CallJournalWindow::makeLock()
{
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(m_lock);
    layout->addStretch(1);
    m_warning->say(
        u"Parameters and replies are shown: they contain patients' data."_s, Sign::Caution, Ink::Caution, Ink::Words);
    m_warning->setFont(semibold(font()));
    layout->addWidget(m_warning);
    m_lock->setAccessibleDescription(
        u"They contain patients' data. They are kept from now on, in memory only, until this "
        u"is off again, the window is closed or another user signs on."_s);
    m_lock->setToolTip(m_lock->accessibleDescription());
    connect(m_lock, &QCheckBox::clicked, this, &CallJournalWindow::unlock);
    return row;
}

void CallJournalWindow::setUpContent()
{
    m_content->setReadOnly(true);
    m_content->setTabChangesFocus(true);
    m_content->setAccessibleName(u"Parameter and reply"_s);
    m_content->setPlaceholderText(u"Calls made from now on show their parameter and reply here."_s);
}

QWidget* CallJournalWindow::makeButtons()
{
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    const auto add = [&](const QString& caption, const QString& tip, auto work) {
        connect(addActionButton(*buttons, caption, tip), &QPushButton::clicked, this, work);
    };
    add(u"&Save As..."_s, u"Save the table as a file, without patients' data"_s, &CallJournalWindow::chooseFile);
    add(u"C&opy"_s, u"Copy the selected rows, or all if none is selected, without patients' data"_s,
        &CallJournalWindow::copy);
    add(u"C&lear"_s, u"Remove all rows"_s, [this] { m_journal->clear(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    return buttons;
}

void CallJournalWindow::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!m_table->currentIndex().isValid() && m_model->rowCount() > 0)
        m_table->setCurrentIndex(m_model->index(m_model->rowCount() - 1, 0));
    m_table->scrollToBottom();
    m_table->setFocus();
}

void CallJournalWindow::unlock(bool wanted)
{
    m_content->clear();
    m_journal->setUnlocked(wanted);
}

void CallJournalWindow::showLock()
{
    const bool unlocked = m_journal->isUnlocked();
    m_lock->setChecked(unlocked);
    m_warning->setVisible(unlocked);
    m_content->setVisible(unlocked);
    if (!unlocked)
        m_content->clear();
}

void CallJournalWindow::showSums()
{
    m_sums->setText(journalSums(m_journal->sums()));
    // A table that shows its end continues to do so; another one stays where the user has scrolled.
    const QScrollBar& bar = *m_table->verticalScrollBar();
    if (bar.value() >= bar.maximum())
        QMetaObject::invokeMethod(m_table, &QTableView::scrollToBottom, Qt::QueuedConnection);
}

void CallJournalWindow::showContent()
{
    const JournalEntry* const row = m_model->entry(m_table->currentIndex().row());
    const JournalContent* const content = row ? m_journal->content(row->id) : nullptr;
    const QString text = content
        ? u"%1\n\n%2"_s.arg(content->parameter, QString(content->reply).replace(u"\r\n"_s, u"\n"_s))
        : QString();
    if (m_content->toPlainText() != text)
        m_content->setPlainText(text);
}

void CallJournalWindow::copy()
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    for (int row = 0; rows.size() < m_model->rowCount() && !m_table->selectionModel()->hasSelection(); ++row)
        rows.append(row);
    QString text;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < JournalColumn::Count; ++column)
            cells.append(journalText(*m_model->entry(row), column));
        text += cells.join(u'\t') + u'\n';
    }
    QApplication::clipboard()->setText(text);
}

void CallJournalWindow::save(const QString& path) const
{
    const QByteArray text = journalFile(*m_journal);
    QFile file(path);
    if (!makePrivate(path) || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        throw Failure(u"The file %1 cannot be written."_s.arg(path).toStdWString());
}

void CallJournalWindow::chooseFile()
{
    QFileDialog dialog(this, u"Save Call Journal"_s,
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), u"Tables (*.csv)"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"csv"_s);
    dialog.selectFile(u"call journal %1.csv"_s.arg(QDate::currentDate().toString(Qt::ISODate)));
    if (dialog.exec() != Accepted)
        return;
    try {
        const QString path = dialog.selectedFiles().value(0);
        save(path);
        m_saved->setText(u"Saved as %1."_s.arg(QDir::toNativeSeparators(path)));
        m_saved->show();
    } catch (const Failure& failure) {
        showFailure(this, u"Save Call Journal"_s, QString::fromStdWString(failure.description()));
    }
}

}
