#include "host/windows/ListPicker.h"

#include "api/Failure.h"
#include "host/framework/DisplayText.h"
#include "toolkit/SpokenItems.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace health {

namespace {
constexpr int TypingPause = 150; // milliseconds after the last key
constexpr int MostHits = 250; // the server's limit
constexpr int UsualLetters = 24;
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
    , m_letters(headings.size(), UsualLetters)
{
    m_remark->setTextFormat(Qt::PlainText);
    m_remark->setWordWrap(true);
    setWindowTitle(title);
    m_text->hide();
    m_text->setClearButtonEnabled(true);
    if (auto* const clear = m_text->findChild<QToolButton*>())
        clear->setAccessibleName(u"Clear"_s);
    m_text->installEventFilter(this);

    setUpList(headings);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_select = buttons->button(QDialogButtonBox::Ok);
    m_select->setText(u"&Select"_s);

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

void ListPicker::setUpList(const QStringList& headings)
{
    m_list->setHorizontalHeaderLabels(headings);
    m_list->setAccessibleName(windowTitle());
    new SpokenItems(*m_list);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTabKeyNavigation(false);
    m_list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    m_list->setShowGrid(false);
    m_list->setAlternatingRowColors(true);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < m_list->columnCount(); ++column)
        m_list->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void ListPicker::setRows(const QList<Row>& rows)
{
    m_keys.clear();
    m_list->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        m_keys.append(rows[row].key);
        for (int column = 0; column < m_list->columnCount(); ++column) {
            auto* const item = new QTableWidgetItem(rows[row].texts.value(column));
            item->setTextAlignment(Qt::Alignment(m_list->horizontalHeaderItem(column)->textAlignment()));
            item->setToolTip(item->text()); // what does not fit ends in an ellipsis
            m_list->setItem(row, column, item);
        }
    }
    layOutColumns();
    if (!rows.isEmpty())
        m_list->selectRow(0);
    updateButtons();
}

void ListPicker::setColumn(int column, int letters, Qt::Alignment alignment)
{
    m_letters[column] = letters;
    m_list->horizontalHeaderItem(column)->setTextAlignment(alignment | Qt::AlignVCenter);
    layOutColumns();
}

void ListPicker::layOutColumns()
{
    const int last = m_list->columnCount() - 1;
    int rest = m_list->viewport()->width();
    for (int column = 0; column <= last; ++column) {
        const int width = fontMetrics().horizontalAdvance(u'x') * m_letters[column];
        m_list->setColumnWidth(column, column == last ? std::max(width, rest) : width);
        rest -= width;
    }
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
        const auto rows = m_search(m_text->text().trimmed());
        if (!rows)
            return m_pause.start(TypingPause);
        setRows(*rows);
        m_remark->setText(rows->isEmpty()  ? u"No matches."_s
                : rows->size() >= MostHits ? u"The first %1 are shown. Type more to narrow the list."_s.arg(MostHits)
                                           : u"%1 found."_s.arg(rows->size()));
    } catch (const Failure& failure) {
        setRows({});
        m_remark->setText(QString::fromStdWString(failure.description()));
    }
}

// Runs a search that is still due, so that Enter applies to the typed text. True if Enter must not pick, because the
// user has not seen the new rows yet.
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

void ListPicker::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOutColumns();
}

// Home and End go to the first and the last row.
bool ListPicker::moveToEnd(const QKeyEvent& key)
{
    if (key.modifiers() != Qt::NoModifier || (key.key() != Qt::Key_Home && key.key() != Qt::Key_End))
        return false;
    m_list->selectRow(key.key() == Qt::Key_Home ? 0 : m_list->rowCount() - 1);
    return true;
}

bool ListPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list->viewport() && event->type() == QEvent::Resize)
        layOutColumns();
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* const key = static_cast<QKeyEvent*>(event);
    if (moveToEnd(*key))
        return true;
    if (watched != m_text)
        return QDialog::eventFilter(watched, event);
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
