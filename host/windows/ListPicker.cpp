#include "host/windows/ListPicker.h"

#include "api/Failure.h"
#include "host/framework/DisplayText.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace health {

namespace {
constexpr int TypingPause = 150; // milliseconds after the last key
constexpr int MostHits = 250; // the server's limit

// A row may appear under several headings.
qsizetype countOf(const QList<ListPicker::Row>& rows)
{
    QSet<QString> keys;
    for (const ListPicker::Row& row : rows) {
        if (!row.isHeading)
            keys.insert(row.key);
    }
    return keys.size();
}
}

void resizeToScreen(QWidget& window, QSize size)
{
    window.resize(size.boundedTo(window.screen()->availableSize() * 0.95));
}

ListPicker::ListPicker(const QString& title, const QStringList& headings, QWidget* parent)
    : QDialog(parent)
    , m_text(new QLineEdit)
    , m_list(new RowList(headings))
    , m_remark(new QLabel)
{
    m_remark->setTextFormat(Qt::PlainText);
    m_remark->setWordWrap(true);
    setWindowTitle(title);
    m_text->hide();
    ControlStyle::giveTo(*m_text);
    m_text->setClearButtonEnabled(true);
    if (auto* const clear = m_text->findChild<QToolButton*>())
        clear->setAccessibleName(u"Clear"_s);
    m_text->installEventFilter(this);

    m_list->setAccessibleName(title);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_select = buttons->button(QDialogButtonBox::Ok);
    m_select->setText(u"&Select"_s);
    m_select->setProperty(FilledProperty, true);
    for (QAbstractButton* const button : buttons->buttons())
        ControlStyle::giveTo(*button);

    const Measures measures(*this);
    auto* const layout = new QVBoxLayout(this);
    const int margin = measures.formMargin();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(measures.units(2.5));
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

void ListPicker::setSearch(const QString& hint, Search search)
{
    m_search = std::move(search);
    m_text->setPlaceholderText(hint);
    m_text->setAccessibleName(hint);
    m_text->show();
    m_list->setLed(true);
    m_text->setFocus();
    runSearch();
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
        m_list->setRows(*rows);
        const auto found = countOf(*rows);
        m_remark->setText(found == 0 ? u"No matches."_s
                : found >= MostHits  ? u"The first %1 are shown. Type more to narrow the list."_s.arg(MostHits)
                                     : u"%1 found."_s.arg(found));
    } catch (const Failure& failure) {
        m_list->setRows({});
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
    return m_list->selectableRows() != 1;
}

void ListPicker::updateButtons() { m_select->setEnabled(m_list->currentRow() >= 0); }

QString ListPicker::pick()
{
    if (exec() != Accepted)
        return {};
    return m_list->selectedKey();
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
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* const key = static_cast<QKeyEvent*>(event);
    if (m_list->moveToEnd(*key))
        return true;
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
