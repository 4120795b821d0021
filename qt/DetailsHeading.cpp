#include "qt/DetailsHeading.h"

#include "toolkit/ControlPainting.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QEvent>
#include <QFontInfo>
#include <QKeyEvent>
#include <QPainter>

namespace health {

using namespace Qt::StringLiterals;

namespace {

QString styled(const QString& text, const QFont& font, const QColor& colour)
{
    return u"<span style='font-size:%1px;font-weight:%2;color:%3'>%4</span>"_s.arg(QFontInfo(font).pixelSize())
        .arg(static_cast<int>(font.weight()))
        .arg(colour.name(), text.toHtmlEscaped());
}

}

DetailsHeading::DetailsHeading(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::RichText);
    setWordWrap(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void DetailsHeading::say(const HeadingTexts& texts)
{
    m_hint.clear();
    m_texts = texts;
    typeset();
}

void DetailsHeading::hint(const QString& text)
{
    m_hint = text;
    m_texts = {};
    typeset();
}

void DetailsHeading::typeset()
{
    const QColor quiet = colourOf(Ink::Quiet, palette());
    if (m_texts.kind.isEmpty())
        return show(styled(m_hint, font(), quiet), m_hint);
    const QColor words = colourOf(Ink::Words, palette());
    QString html = styled(m_texts.kind, semibold(scaled(font(), TypeSize::DetailsHeading)), words);
    QString plain = m_texts.kind;
    if (!m_texts.date.isEmpty()) {
        const Ink ink = m_texts.isOfCurrentVisit ? Ink::Visit : Ink::Words;
        html += u"&nbsp; "_s + styled(m_texts.date, semibold(font()), colourOf(ink, palette()));
        plain += u' ' + m_texts.date;
    }
    if (const QString remarks = m_texts.remarks.join(u" \u00B7 "_s); !remarks.isEmpty()) {
        html += u"&nbsp; "_s + styled(remarks, font(), quiet);
        plain += u", "_s + m_texts.remarks.join(u", "_s);
    }
    for (qsizetype i = 0; i + 1 < m_texts.facts.size(); i += 2) {
        html += u"&nbsp;&nbsp;&nbsp;&nbsp; "_s + styled(m_texts.facts[i], font(), quiet) + u"&nbsp; "_s
            + styled(m_texts.facts[i + 1], semibold(font()), words);
        plain += u", "_s + m_texts.facts[i] + u": "_s + m_texts.facts[i + 1];
    }
    show(html, plain);
}

void DetailsHeading::show(const QString& html, const QString& plain)
{
    if (html == text())
        return;
    m_plain = plain;
    setText(html);
    // Screen readers do not stop at an empty text.
    setTextInteractionFlags(plain.isEmpty() ? Qt::NoTextInteraction : Qt::TextSelectableByMouse);
    setAccessibleName(plain);
}

void DetailsHeading::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        typeset();
}

// --- The arrow ---

FoldButton::FoldButton(QWidget* parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setFolded(false);
}

void FoldButton::setFolded(bool folded)
{
    m_folded = folded;
    setAccessibleName(folded ? u"Unfold details"_s : u"Fold details"_s);
    setToolTip(folded ? u"Show the record's fields and their course"_s : u"Show the heading only"_s);
    update();
}

QSize FoldButton::sizeHint() const
{
    const int side = Measures(*this).ems(1.2);
    return { side, side };
}

void FoldButton::keyPressEvent(QKeyEvent* event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat())
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void FoldButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSymbol(painter, rect(), *this, m_folded ? Symbol::ChevronUp : Symbol::ChevronDown,
        colourOf(underMouse() ? Ink::Words : Ink::Quiet, palette()));
    if (hasFocus())
        drawFocus(painter, rect(), *this);
}

}
