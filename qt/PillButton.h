#pragma once

#include "toolkit/ControlPainting.h"

#include <QAbstractButton>

#include <optional>

namespace health {

// A button without a frame; a checked one lies on a tinted pill. Beside its text it shows a number or a key.
class PillButton : public QAbstractButton {
public:
    explicit PillButton(const QString& text, QWidget* parent = nullptr);

    void setSymbol(Symbol symbol) { m_symbol = symbol; }
    void setAside(const QString& aside);
    // Paints the text in the colour of explanations.
    void setQuiet(bool quiet);

    // Draws a frame although the button is not checked.
    void setFramed() { m_framed = true; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    int symbolWidth() const;
    int textWidth() const;
    void drawPill(QPainter& painter) const;

    std::optional<Symbol> m_symbol;
    QString m_aside;
    bool m_framed = false;
    bool m_quiet = false;
};

}
