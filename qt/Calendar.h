#pragma once

#include "text/DateEntries.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace health {

class MonthView;

// A popup in which the user picks a day. Escape, or a click elsewhere, closes it; closing destroys it.
class Calendar : public QWidget {
    Q_OBJECT
public:
    // Starts on `day`; days outside the range cannot be picked. The name is for screen readers.
    Calendar(const DateRange& allowed, Moment day, Moment today, const QString& name, QWidget* parent);

    // Opens at the widget: below it, or above it where the screen ends.
    void openAt(const QWidget& widget);

Q_SIGNALS:
    // The calendar has been closed by the choice of a day.
    void picked(Moment day);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeHeading();
    QToolButton* makeArrow(const QString& text, const QString& name, const QString& key, int months);
    void showTitle();

    MonthView* m_days;
    QLabel* m_title;
};

}
