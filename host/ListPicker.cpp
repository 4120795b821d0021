#include "host/ListPicker.h"

#include "host/DisplayText.h"
#include "platform/Failure.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

namespace health {

namespace {
constexpr int TypingPause = 150; // milliseconds after the last key
constexpr int MostHits = 250; // the server sends no more
}

void resizeToScreen(QWidget& window, QSize size)
{
    window.resize(size.boundedTo(window.screen()->availableSize() * 0.95));
}

ListPicker::ListPicker(const QString& title, const QStringList& headings, QWidget* parent)
    : QDialog(parent)
    , m_text(new QLineEdit)
    , m_list(new QTableWidget(0, static_cast<int>(headings.size())))
    , m_remark(new QLabel)
{
    m_remark->setTextFormat(Qt::PlainText);
    m_remark->setWordWrap(true);
    setWindowTitle(title);
    m_text->hide();
    m_text->setClearButtonEnabled(true);
    if (auto* const clear = m_text->findChild<QToolButton*>())
        clear->setAccessibleName(tr("Clear"));
    m_text->installEventFilter(this);

    m_list->setHorizontalHeaderLabels(headings);
    m_list->setAccessibleName(title);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTabKeyNavigation(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setShowGrid(false);
    m_list->setAlternatingRowColors(true);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_select = buttons->button(QDialogButtonBox::Ok);
    m_select->setText(tr("&Select"));

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_remark);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);
    connect(m_list, &QTableWidget::itemSelectionChanged, this, &ListPicker::updateButtons);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &ListPicker::runSearch);
    connect(m_text, &QLineEdit::textChanged, this, [this] { m_pause.start(TypingPause); });

    resizeToScreen(*this, { fontMetrics().horizontalAdvance(u'x') * 90, fontMetrics().height() * 26 });
    updateButtons();
}

void ListPicker::setRows(const QList<Row>& rows)
{
    m_keys.clear();
    m_list->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        m_keys.append(rows[row].key);
        for (int column = 0; column < m_list->columnCount(); ++column)
            m_list->setItem(row, column, new QTableWidgetItem(rows[row].texts.value(column)));
    }
    m_list->resizeColumnsToContents();
    // A very long name must not push the other columns out of sight; the last column takes what is left.
    const int space = fontMetrics().horizontalAdvance(u'x') * 2;
    for (int column = 0; column + 1 < m_list->columnCount(); ++column)
        m_list->setColumnWidth(column, std::min(m_list->columnWidth(column) + space, width() / 2));
    if (!rows.isEmpty())
        m_list->selectRow(0);
    updateButtons();
}

void ListPicker::setSearch(const QString& hint, Search search)
{
    m_search = std::move(search);
    m_text->setPlaceholderText(hint);
    m_text->setAccessibleName(hint);
    m_text->show();
    m_text->setFocus();
    runSearch();
}

void ListPicker::selectKey(const QString& key)
{
    const auto row = m_keys.indexOf(key);
    if (row >= 0)
        m_list->selectRow(static_cast<int>(row));
}

void ListPicker::runSearch()
{
    m_pause.stop();
    if (!m_search)
        return;
    try {
        const auto rows = m_search(m_text->text().trimmed().toUpper());
        if (!rows)
            return m_pause.start(TypingPause);
        setRows(*rows);
        m_remark->setText(rows->isEmpty()  ? tr("Nobody found.")
                : rows->size() >= MostHits ? tr("The first %1 are shown. Type more to narrow the list.").arg(MostHits)
                                           : tr("%1 found.").arg(rows->size()));
    } catch (const Failure& failure) {
        setRows({});
        m_remark->setText(QString::fromStdWString(failure.description()));
    }
}

// What was typed last counts, even when its search has not run yet. True when Enter must not pick: the user has not
// seen yet among whom.
bool ListPicker::pressedEnter()
{
    if (!m_pause.isActive())
        return false;
    runSearch();
    return m_keys.size() != 1;
}

void ListPicker::updateButtons() { m_select->setEnabled(m_list->currentRow() >= 0); }

QString ListPicker::pick()
{
    if (exec() != Accepted)
        return {};
    return m_keys.value(m_list->currentRow());
}

void ListPicker::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_search)
        m_text->setFocus();
    else
        m_list->setFocus();
}

bool ListPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_text || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* const key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_list, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return pressedEnter() || QDialog::eventFilter(watched, event);
    default:
        return QDialog::eventFilter(watched, event);
    }
}

}
