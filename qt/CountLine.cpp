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

namespace {
QString findKey() { return QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText); }
}

CountLine::CountLine(ShownRecords& records, FindBar& bar, QWidget* parent)
    : QWidget(parent)
    , m_records(records)
    , m_bar(bar)
    , m_count(new ToneLabel)
    , m_find(new PillButton(u"Find"_s, this))
{
    m_count->setParent(this);
    m_find->setFocusPolicy(Qt::NoFocus); // keyboard users have the keys
    connect(m_find, &PillButton::clicked, this, [this] {
        if (m_bar.isOpen())
            m_bar.close();
        else
            m_bar.find();
    });
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

// The bar is open: the button closes it.
void CountLine::nameButton()
{
    const bool open = m_bar.isOpen();
    const QString text = open ? u"Show all records and close"_s : u"Find records"_s;
    m_find->setSymbol(open ? Symbol::Cross : Symbol::Magnifier);
    m_find->setAccessibleName(text);
    m_find->setToolTip(u"%1 (%2)"_s.arg(text, open ? u"Escape"_s : findKey()));
}

void CountLine::arrange()
{
    struct Wording {
        QString hint;
        QString caption;
        QString key;
    };
    const QString count = FindBar::countText(m_records);
    const bool open = m_bar.isOpen();
    const QString hint = open && m_records.isFiltered() ? u" \u00B7 Escape shows all"_s : QString();
    const Wording full = open ? Wording { hint, {}, {} } : Wording { {}, u"Find"_s, findKey() };
    nameButton();
    m_count->hide();
    m_find->hide();
    for (const Wording& wording : { full, Wording { {}, full.caption, {} }, Wording {} }) {
        m_count->say(count.isEmpty() ? QString() : count + wording.hint, Tone::Quiet);
        m_find->setText(wording.caption);
        m_find->setAside(wording.key);
        const int needed = m_count->sizeHint().width() + Measures(*this).captionGap() + m_find->sizeHint().width();
        if (count.isEmpty() || needed > width())
            continue;
        place(*m_count, place(*m_find, width()));
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
