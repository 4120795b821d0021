#include "qt/FindBar.h"

#include "control/kalmevRepHistCtrl.h"
#include "qt/FlowLayout.h"
#include "qt/PillButton.h"
#include "qt/SearchLine.h"
#include "qt/ShownRecords.h"
#include "qt/ToneLabel.h"
#include "toolkit/Announcer.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/WheelGuard.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

constexpr int SpeakingPauseMilliseconds = 700;

QString recordCount(int count) { return count == 1 ? u"1 record"_s : u"%1 records"_s.arg(count); }

QComboBox* makeList(const QString& name)
{
    auto* const list = new QComboBox;
    ControlStyle::giveTo(*list);
    list->installEventFilter(new WheelGuard(list));
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setAccessibleName(name);
    return list;
}

// A list with its caption, as one place of the bar.
QWidget* captioned(const QString& caption, QComboBox* list)
{
    auto* const place = new QWidget;
    auto* const label = new ToneLabel;
    auto* const row = new QHBoxLayout(place);
    row->setContentsMargins(Measures(*place).explanationGap(), 0, 0, 0);
    row->setSpacing(Measures(*place).explanationGap());
    row->addWidget(label);
    row->addWidget(list);
    label->say(caption, Tone::Quiet);
    return place;
}

}

FindBar::FindBar(ShownRecords& records)
    : m_records(records)
    , m_flow(new FlowLayout(this))
    , m_words(new SearchLine)
{
    setAccessibleName(u"Find records"_s);
    m_words->setPlaceholderText(u"Kind or words"_s);
    m_words->setAccessibleName(u"Find in the records"_s);
    m_words->setAccessibleDescription(u"Down goes to the list. Escape shows all records."_s);
    m_words->installEventFilter(this);
    m_flow->insertWidget(0, m_words);
    addLists();
    addNotice();
    setMargins();
    m_pause.setSingleShot(true);
    m_pause.setInterval(SpeakingPauseMilliseconds);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (isOpen())
            announce(*this, (countText(m_records) + u". "_s + noticeText()).trimmed());
    });
    connect(m_words, &QLineEdit::textChanged, this, [this](const QString& words) {
        RecordFilter filter = m_records.filter();
        filter.words = toText(words);
        m_records.setFilter(std::move(filter));
    });
    connect(&m_records, &ShownRecords::rearranged, this, [this] {
        m_hiddenSaved = false;
        showState();
        m_pause.start();
    });
    connect(&m_records, &ShownRecords::reloaded, this, [this] {
        m_hiddenSaved = m_hiddenSaved && m_records.isFiltered();
        showState();
    });
    connect(&m_records, &ShownRecords::recordSaved, this, [this](int row) {
        m_hiddenSaved = !m_records.isShown(row);
        showNotice();
        if (m_hiddenSaved)
            m_pause.start();
    });
    hide();
    showState();
}

void FindBar::addLists()
{
    m_year = makeList(u"Year"_s);
    m_order = makeList(u"Order"_s);
    m_order->addItems({ u"as loaded"_s, u"newest first"_s, u"by kind"_s }); // RecordOrder
    m_flow->insertWidget(m_flow->count(), m_year);
    m_flow->insertWidget(m_flow->count(), captioned(u"Order"_s, m_order));
    connect(m_year, &QComboBox::currentIndexChanged, this, [this](int index) {
        RecordFilter filter = m_records.filter();
        filter.year = index > 0 ? std::optional(m_year->itemData(index).toInt()) : std::nullopt;
        m_records.setFilter(std::move(filter));
    });
    connect(m_order, &QComboBox::currentIndexChanged, this,
        [this](int index) { m_records.setOrder(static_cast<RecordOrder>(index)); });
}

void FindBar::addNotice()
{
    m_notice = new ToneLabel;
    m_showAll = new PillButton(u"Show All"_s);
    m_showAll->setFocusPolicy(Qt::StrongFocus);
    m_showAll->setFramed();
    m_flow->insertWidget(m_flow->count(), m_notice);
    m_flow->insertWidget(m_flow->count(), m_showAll);
    connect(m_showAll, &PillButton::clicked, this, [this] {
        m_words->setFocus(Qt::OtherFocusReason);
        m_records.setFilter({});
    });
}

void FindBar::setMargins()
{
    const Measures measures(*this);
    m_flow->setContentsMargins(0, measures.u(), 0, measures.explanationGap());
}

void FindBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setMargins();
}

// --- Opening and closing ---

void FindBar::open()
{
    if (isOpen())
        return;
    show();
    showState();
    Q_EMIT toggled();
}

void FindBar::find()
{
    open();
    m_words->setFocus(Qt::ShortcutFocusReason);
    m_words->selectAll();
}

void FindBar::close()
{
    if (!isOpen())
        return;
    if (isAncestorOf(QApplication::focusWidget()))
        Q_EMIT closing();
    m_records.showAll();
    hide();
    Q_EMIT toggled();
    announce(*this, countText(m_records));
}

// --- What is shown ---

QString FindBar::countText(ShownRecords& records)
{
    const int all = static_cast<int>(records.all().size());
    if (records.control().listedPatient() == 0 || !records.control().fgData.isDrawing())
        return {};
    if (!records.isFiltered())
        return recordCount(all);
    return u"%1 of %2"_s.arg(records.rows().size()).arg(recordCount(all));
}

void FindBar::showState()
{
    if (!isOpen() || !m_records.control().fgData.isDrawing()) // a list that is loading is shown when it is loaded
        return;
    const RecordFilter& filter = m_records.filter();
    if (toText(m_words->text()) != filter.words)
        m_words->setText(toQString(filter.words));
    {
        const QSignalBlocker blocker(m_order);
        m_order->setCurrentIndex(static_cast<int>(m_records.order()));
    }
    showChips();
    showYears();
    showNotice();
}

void FindBar::showYears()
{
    std::vector<int> years = m_records.years();
    const auto& chosen = m_records.filter().year;
    if (chosen && std::find(years.begin(), years.end(), *chosen) == years.end())
        years.push_back(*chosen);
    const QSignalBlocker blocker(m_year);
    if (m_year->count() == 0 || m_years != years) {
        m_years = years;
        m_year->clear();
        m_year->addItem(u"any year"_s);
        for (const int year : years)
            m_year->addItem(QString::number(year), year);
    }
    m_year->setCurrentIndex(chosen ? m_year->findData(*chosen) : 0);
    m_year->setVisible(m_year->count() > 2 || chosen);
}

void FindBar::showNotice()
{
    m_notice->say(noticeText(), m_hiddenSaved ? Tone::Caution : Tone::Quiet);
    m_showAll->setVisible(m_hiddenSaved);
}

QString FindBar::noticeText() const
{
    if (m_hiddenSaved)
        return u"The saved record is hidden by the filter."_s;
    if (const int undated = m_records.undatedHidden(); undated > 0)
        return undated == 1 ? u"1 record without a date is not shown."_s
                            : u"%1 records without a date are not shown."_s.arg(undated);
    return m_records.isFiltered() && m_records.rows().empty() ? u"No record found."_s : QString();
}

// --- Chips ---

void FindBar::showChips()
{
    const auto counts = m_records.counts();
    const bool sameKinds = std::equal(counts.begin(), counts.end(), m_kinds.begin(), m_kinds.end(),
        [](const ShownRecords::KindCount& count, RecordTypeNumber kind) { return count.type->number == kind; });
    if (!sameKinds || m_chips.isEmpty())
        makeChips();
    const auto& chosen = m_records.filter().kinds;
    int all = 0;
    const auto show = [](PillButton& chip, int count, bool checked) {
        chip.setAside(QString::number(count));
        chip.setQuiet(count == 0);
        chip.setChecked(checked);
        chip.setAccessibleName(u"%1, %2"_s.arg(chip.text(), recordCount(count)));
    };
    for (std::size_t i = 0; i < counts.size(); ++i) {
        all += counts[i].count;
        show(*m_chips[static_cast<qsizetype>(i) + 1], counts[i].count, chosen.contains(counts[i].type->number));
    }
    show(*m_chips.first(), all, chosen.empty());
}

void FindBar::makeChips()
{
    const bool focused = std::any_of(m_chips.begin(), m_chips.end(), [](PillButton* chip) { return chip->hasFocus(); });
    for (PillButton* const chip : m_chips) {
        chip->hide();
        chip->deleteLater(); // it may have been clicked
        m_flow->removeWidget(chip);
    }
    m_chips.clear();
    m_kinds.clear();
    QWidget* before = m_words;
    const auto add = [&](const QString& text) {
        auto* const chip = new PillButton(text, this);
        const int index = static_cast<int>(m_chips.size());
        chip->setCheckable(true);
        chip->setFocusPolicy(index == 0 ? Qt::StrongFocus : Qt::ClickFocus);
        chip->installEventFilter(this);
        connect(chip, &PillButton::clicked, this, [this, index] { choose(index); });
        m_flow->insertWidget(index + 1, chip);
        setTabOrder(before, chip);
        chip->show();
        m_chips.append(chip);
        before = chip;
    };
    add(u"All"_s);
    for (const auto& count : m_records.counts()) {
        m_kinds.push_back(count.type->number);
        add(toQString(count.type->rowLabel));
    }
    if (focused)
        m_chips.first()->setFocus(Qt::OtherFocusReason);
}

void FindBar::choose(int chip)
{
    RecordFilter filter = m_records.filter();
    if (chip == 0) {
        filter.kinds.clear();
    } else {
        const RecordTypeNumber kind = m_kinds[static_cast<std::size_t>(chip) - 1];
        if (filter.kinds.erase(kind) == 0)
            filter.kinds.insert(kind);
    }
    m_records.setFilter(std::move(filter));
    showChips(); // a click on "All" has unchecked it, although the filter may be the same
}

// --- Keys ---

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && m_chips.contains(watched)) { // Tab comes back to the chip that was left
        for (PillButton* const chip : m_chips)
            chip->setFocusPolicy(chip == watched ? Qt::StrongFocus : Qt::ClickFocus);
    }
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & ~Qt::KeypadModifier)
        return false;
    return watched == m_words ? fieldKey(key->key()) : chipKey(key->key());
}

bool FindBar::fieldKey(int key)
{
    if (key != Qt::Key_Down && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    Q_EMIT leftForList();
    return true;
}

bool FindBar::chipKey(int key)
{
    switch (key) {
    case Qt::Key_Left:
        moveToChip(-1);
        return true;
    case Qt::Key_Right:
        moveToChip(1);
        return true;
    case Qt::Key_Up:
        m_words->setFocus(Qt::OtherFocusReason);
        return true;
    case Qt::Key_Down:
        Q_EMIT leftForList();
        return true;
    default:
        return false;
    }
}

void FindBar::moveToChip(int step)
{
    const auto focused =
        std::find_if(m_chips.begin(), m_chips.end(), [](PillButton* chip) { return chip->hasFocus(); });
    const auto chip = std::clamp<qsizetype>(focused - m_chips.begin() + step, 0, m_chips.size() - 1);
    m_chips[chip]->setFocus(Qt::OtherFocusReason);
}

}
