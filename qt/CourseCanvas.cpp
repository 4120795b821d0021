#include "qt/CourseCanvas.h"

#include "toolkit/Announcer.h"
#include "toolkit/ControlPainting.h"
#include "toolkit/Inks.h"
#include "toolkit/Measures.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace health {

using namespace Qt::StringLiterals;

CourseCanvas::CourseCanvas(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleDescription(u"Left and right arrow read the values, up and down arrow change the row, Enter selects "
                             u"the record in the list. "
                             "The context menu shows a table."_s);
}

void CourseCanvas::setPicture(const CoursePicture* picture)
{
    m_picture = picture;
    pictureChanged();
}

void CourseCanvas::pictureChanged()
{
    const QString reading = m_current == -1 ? QString() : m_points.at(m_current).text;
    redraw();
    if (reading.isEmpty())
        return;
    const auto same =
        std::find_if(points().begin(), points().end(), [&](const CoursePoint& point) { return point.text == reading; });
    m_current = same == m_points.cend() ? -1 : same - m_points.cbegin();
}

void CourseCanvas::redraw()
{
    m_drawn = {};
    m_current = -1;
    m_points.clear();
    update();
}

const QList<CoursePoint>& CourseCanvas::points()
{
    if (m_points.isEmpty() && m_picture)
        m_points = m_picture->points(picturePlace(), look());
    return m_points;
}

void CourseCanvas::resizeEvent(QResizeEvent*) { pictureChanged(); }

void CourseCanvas::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        pictureChanged();
}

// --- Drawing ---

QRect CourseCanvas::picturePlace() const
{
    const int margin = Measures(*this).u();
    return rect().adjusted(margin, 0, -margin, 0);
}

void CourseCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!m_picture)
        return;
    if (m_drawn.isNull()) {
        m_drawn = QPixmap(size() * devicePixelRatioF());
        m_drawn.setDevicePixelRatio(devicePixelRatioF());
        m_drawn.fill(palette().color(QPalette::Active, QPalette::Base));
        QPainter picture(&m_drawn);
        m_picture->draw(picture, picturePlace(), look());
    }
    painter.drawPixmap(0, 0, m_drawn);
    if (hasFocus())
        drawFocus(painter, rect(), *this);
    if (m_current != -1)
        drawReading(painter);
}

void CourseCanvas::drawReading(QPainter& painter) const
{
    const Measures measures(*this);
    const CoursePoint& point = m_points.at(m_current);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colourOf(Ink::Focus, palette()), measures.focusFrame()));
    painter.drawRoundedRect(point.place, measures.cornerRadius(), measures.cornerRadius());
    const QFont font = scaled(this->font(), TypeSize::Note);
    const QFontMetrics metrics(font);
    QRect box(0, 0, metrics.horizontalAdvance(point.text) + measures.units(4), metrics.height() + measures.units(2));
    box.moveCenter(point.place.center());
    box.moveBottom(point.place.top() - measures.u());
    if (box.top() < 0)
        box.moveTop(point.place.bottom() + measures.u());
    box.moveLeft(std::clamp(box.left(), 0, std::max(0, width() - box.width())));
    painter.setPen(QPen(colourOf(Ink::FieldFrame, palette()), measures.hairline()));
    painter.setBrush(palette().color(QPalette::Active, QPalette::Base));
    painter.drawRoundedRect(box, measures.cornerRadius(), measures.cornerRadius());
    painter.setPen(colourOf(Ink::Words, palette()));
    painter.setFont(font);
    painter.drawText(box, Qt::AlignCenter, point.text);
}

// --- Reading ---

void CourseCanvas::read(qsizetype point, bool byKey)
{
    if (point == m_current)
        return;
    m_current = point;
    update();
    if (byKey && point != -1)
        announce(*this, m_points.at(point).text);
}

void CourseCanvas::forget() { read(-1, false); }

qsizetype CourseCanvas::pointAt(QPoint place)
{
    qsizetype nearest = -1;
    int distance = 0;
    for (qsizetype i = 0; i < points().size(); ++i) {
        if (!m_points.at(i).place.contains(place))
            continue;
        const int away = (m_points.at(i).place.center() - place).manhattanLength();
        if (nearest == -1 || away < distance) {
            nearest = i;
            distance = away;
        }
    }
    return nearest;
}

void CourseCanvas::mouseMoveEvent(QMouseEvent* event) { read(pointAt(event->position().toPoint()), false); }

void CourseCanvas::leaveEvent(QEvent*) { forget(); }

void CourseCanvas::mousePressEvent(QMouseEvent* event)
{
    const qsizetype point = pointAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && point != -1 && m_points.at(point).record != -1)
        Q_EMIT recordChosen(m_points.at(point).record);
}

// The points are in reading order: row after row, each from left to right.
qsizetype CourseCanvas::beyond(Way way) const
{
    const qsizetype last = m_points.size() - 1;
    switch (way) {
    case Way::Before:
        return std::max<qsizetype>(m_current - 1, 0);
    case Way::After:
        return std::min(m_current + 1, last);
    case Way::First:
        return 0;
    case Way::Last:
        return last;
    default:
        break;
    }
    // The next point above or below at about the same place from left to right.
    const QPoint from = m_points.at(m_current).place.center();
    const int column = Measures(*this).em() / 2;
    qsizetype nearest = m_current;
    int distance = 0;
    for (qsizetype i = 0; i <= last; ++i) {
        const QPoint away = m_points.at(i).place.center() - from;
        const int ahead = way == Way::Below ? away.y() : -away.y();
        if ((way == Way::Below ? i <= m_current : i >= m_current) || ahead <= 0 || std::abs(away.x()) > column)
            continue;
        const int far = ahead + 4 * std::abs(away.x());
        if (nearest == m_current || far < distance) {
            nearest = i;
            distance = far;
        }
    }
    return nearest;
}

bool CourseCanvas::move(Way way)
{
    if (points().isEmpty())
        return false;
    read(m_current == -1 ? (way == Way::Last || way == Way::Before ? m_points.size() - 1 : 0) : beyond(way), true);
    return true;
}

void CourseCanvas::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        return Q_EMIT copyWanted();
    const bool shiftF10 = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
    bool used = true;
    switch (event->key()) {
    case Qt::Key_Left:
        used = move(Way::Before);
        break;
    case Qt::Key_Right:
        used = move(Way::After);
        break;
    case Qt::Key_Up:
        used = move(Way::Above);
        break;
    case Qt::Key_Down:
        used = move(Way::Below);
        break;
    case Qt::Key_Home:
        used = move(Way::First);
        break;
    case Qt::Key_End:
        used = move(Way::Last);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_current != -1 && m_points.at(m_current).record != -1 && !event->isAutoRepeat())
            Q_EMIT recordChosen(m_points.at(m_current).record);
        break;
    case Qt::Key_Escape:
        used = m_current != -1;
        forget();
        break;
    default:
        used = event->key() == Qt::Key_Menu || shiftF10;
        if (used)
            Q_EMIT menuWanted(mapToGlobal(rect().center()));
        break;
    }
    if (!used)
        QWidget::keyPressEvent(event);
}

void CourseCanvas::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void CourseCanvas::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    forget();
    update();
}

void CourseCanvas::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard)
        Q_EMIT menuWanted(event->globalPos());
}

}
