#pragma once

#include "platform/Explanation.h"

#include <QLabel>

#include <functional>

namespace health {

class RunFlow;

// What OK will save, or why it cannot yet. A click opens the full list in place and closes it again.
class SummaryLine : public QLabel {
public:
    // `toggled` is called after the list was opened or closed.
    explicit SummaryLine(std::function<void(bool isOpen)> toggled);

    // Does nothing if neither differs. `fault` replaces the summary: "CAPTION: message".
    void show(const SaveSummary& summary, const QString& fault);
    // Opens or closes the list; does nothing without values.
    void toggle();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString opening() const;
    RunFlow content() const;
    RunFlow surprises() const;
    int indent() const;
    int lineHeight() const;
    QString spoken() const;

    std::function<void(bool)> m_toggled;
    SaveSummary m_summary;
    QString m_fault;
    bool m_isOpen = false;
};

}
