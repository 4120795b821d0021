#include "qt/SearchLine.h"

#include "qt/FieldButton.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

namespace health {

using namespace Qt::StringLiterals;

namespace {
constexpr double SearchWidth = 11.5; // em
constexpr double MagnifierWidth = 1.2; // em
}

SearchLine::SearchLine(QWidget* parent)
    : EntryLine({}, parent)
    , m_clear(new FieldButton(Symbol::Cross, this))
{
    m_clear->setToolTip(u"Clear the words"_s);
    m_clear->setAccessibleName(u"Clear the words"_s);
    m_clear->hide();
    connect(m_clear, &FieldButton::clicked, this, [this] {
        setFocus(Qt::OtherFocusReason);
        clear();
    });
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { m_clear->setVisible(!text.isEmpty()); });
}

QSize SearchLine::sizeHint() const { return { Measures(*this).ems(SearchWidth), Measures(*this).fieldHeight() }; }

void SearchLine::resizeEvent(QResizeEvent* event)
{
    EntryLine::resizeEvent(event);
    const QSize size = m_clear->sizeHint();
    m_clear->setGeometry(width() - size.width() - Measures(*this).hairline(), (height() - size.height()) / 2,
        size.width(), size.height());
    setTextMargins(Measures(*this).ems(MagnifierWidth), 0, size.width(), 0);
}

void SearchLine::paintEvent(QPaintEvent* event)
{
    EntryLine::paintEvent(event);
    QPainter painter(this);
    const Measures measures(*this);
    const QRect place(measures.u(), 0, measures.ems(MagnifierWidth), height());
    drawSymbol(painter, place, *this, Symbol::Magnifier, colourOf(Ink::Quiet, palette()));
}

}
