#include "qt/CountLine.h"

#include "qt/FindBar.h"
#include "qt/PillButton.h"
#include "qt/ShownRecords.h"
#include "qt/ToneLabel.h"
#include "toolkit/Measures.h"

#include <QEvent>
#include <QKeySequence>

namespace health {

using namespace Qt::StringLiterals;

CountLine::CountLine(ShownRecords& records, FindBar& bar, QWidget* parent)
    : QWidget(parent)
    , m_records(records)
    , m_bar(bar)
    , m_count(new ToneLabel)
    , m_find(new PillButton(u"Find"_s, this))
{
    m_count->setParent(this);
    m_find->setSymbol(Symbol::Magnifier);
    m_find->setFocusPolicy(Qt::NoFocus); // keyboard users have the key
    m_find->setAccessibleName(u"Find records"_s);
    const QString key = QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText);
    m_find->setToolTip(u"Find records (%1)"_s.arg(key));
    connect(m_find, &PillButton::clicked, &bar, &FindBar::find);
    connect(&bar, &FindBar::toggled, this, &CountLine::arrange);
    connect(&records, &ShownRecords::reloaded, this, &CountLine::arrange);
    connect(&records, &ShownRecords::rearranged, this, &CountLine::arrange);
    arrange();
}

// Puts a part left of a place; returns the place left of the part.
int CountLine::place(QWidget& part, int right)
{
    const QSize size = part.sizeHint();
    part.setGeometry(right - size.width(), (height() - size.height()) / 2, size.width(), size.height());
    part.show();
    return part.x() - Measures(*this).captionGap();
}

void CountLine::arrange()
{
    const QString count = FindBar::countText(m_records);
    const QString key = QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText);
    const QString hint = m_records.isFiltered() && m_bar.isOpen() ? u" \u00B7 Escape shows all"_s : QString();
    const int gap = Measures(*this).captionGap();
    struct Wording {
        QString hint;
        QString caption;
        QString key;
    };
    m_count->hide();
    m_find->hide();
    for (const Wording& wording : { Wording { hint, u"Find"_s, key }, { {}, u"Find"_s, {} }, { {}, {}, {} } }) {
        m_count->say(count.isEmpty() ? QString() : count + wording.hint, Tone::Quiet);
        m_find->setText(wording.caption);
        m_find->setAside(wording.key);
        const int find = m_bar.isOpen() ? 0 : m_find->sizeHint().width() + gap;
        if (count.isEmpty() || m_count->sizeHint().width() + find > width())
            continue;
        place(*m_count, m_bar.isOpen() ? width() : place(*m_find, width()));
        return;
    }
    m_count->hide();
}

void CountLine::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void CountLine::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        arrange();
}

}
