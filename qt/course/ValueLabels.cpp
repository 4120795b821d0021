#include "qt/course/ValueLabels.h"

#include <QFontMetrics>

#include <algorithm>
#include <array>

namespace health {

namespace {

class LabelPlacer {
public:
    LabelPlacer(const QList<QPoint>& curve, const QRect& room, const QFont& font)
        : m_curve(curve)
        , m_room(room)
        , m_metrics(font)
    {
    }

    void place(const LabelledPoint& label)
    {
        QRect crossed; // the first free place, if the curve crosses it
        for (const QRect& place : candidates(label)) {
            if (!m_room.contains(place) || overlaps(place))
                continue;
            if (!isCrossed(place, label.point))
                return accept(label, place, false);
            if (crossed.isNull())
                crossed = place;
        }
        if (label.isNeeded && !crossed.isNull())
            accept(label, crossed, true);
    }

    QList<ValueLabel> take() { return std::move(m_labels); }

private:
    std::array<QRect, 6> candidates(const LabelledPoint& label) const
    {
        const QPoint at = m_curve.at(label.point);
        const QSize size(m_metrics.horizontalAdvance(label.text), m_metrics.capHeight() + 1); // digits
        std::array<QRect, 6> places;
        for (std::size_t i = 0; i < places.size(); ++i) {
            const bool below = (i % 2 == 1) != label.isBelow;
            const int shift = i < 2 ? 0 : (i < 4 ? size.width() / 2 : -size.width() / 2); // beside a neighbour's label
            QRect place(QPoint(), size);
            place.moveLeft(std::clamp(at.x() - size.width() / 2 + shift, m_room.left(),
                std::max(m_room.left(), m_room.right() - size.width() + 1)));
            place.moveTop(below ? at.y() + label.distance : at.y() - label.distance - size.height());
            places[i] = place;
        }
        return places;
    }

    void accept(const LabelledPoint& label, const QRect& place, bool crossed)
    {
        m_labels.append({ label.text, place, label.point, crossed });
    }

    bool overlaps(const QRect& place) const
    {
        const int gap = place.height() / 3;
        const QRect wide = place.adjusted(-gap, 0, gap, 0);
        return std::any_of(
            m_labels.begin(), m_labels.end(), [&](const ValueLabel& label) { return label.place.intersects(wide); });
    }

    // Whether the curve passes through a place, beside its own point.
    bool isCrossed(const QRect& place, qsizetype own) const
    {
        const auto first = std::lower_bound(m_curve.begin(), m_curve.end(), place.left(),
            [](const QPoint& point, int left) { return point.x() < left; });
        for (auto i = std::max<qsizetype>(first - m_curve.begin(), 1); i < m_curve.size(); ++i) {
            const QPoint from = m_curve.at(i - 1);
            const QPoint to = m_curve.at(i);
            if (from.x() > place.right())
                return false;
            if ((i != own || to.x() != from.x()) && passes(from, to, place))
                return true;
        }
        return false;
    }

    static bool passes(QPoint from, QPoint to, const QRect& place)
    {
        const double width = std::max(1, to.x() - from.x());
        const auto heightAt = [&](int x) {
            const double part = std::clamp((x - from.x()) / width, 0.0, 1.0);
            return from.y() + part * (to.y() - from.y());
        };
        const double left = heightAt(place.left());
        const double right = heightAt(place.right());
        return std::max(left, right) >= place.top() && std::min(left, right) <= place.bottom();
    }

    const QList<QPoint>& m_curve;
    QRect m_room;
    QFontMetrics m_metrics;
    QList<ValueLabel> m_labels;
};

}

QList<ValueLabel> placedLabels(
    const QList<LabelledPoint>& wanted, const QList<QPoint>& curve, const QRect& room, const QFont& font)
{
    LabelPlacer placer(curve, room, font);
    for (const bool needed : { true, false }) {
        for (const LabelledPoint& label : wanted) {
            if (label.isNeeded == needed)
                placer.place(label);
        }
    }
    return placer.take();
}

}
