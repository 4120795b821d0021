// Draws what every page shows above and below its contents.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

class QColor;
class QPainter;
class QPrinter;

namespace health {

class PageFrame {
public:
    struct Texts {
        QStringList titles; // the first is the title
        QStringList patient;
        QString footer;
    };

    static constexpr double BodySize = 10; // points

    // The painter draws on the printer. Rows have at least the height of `leastSpacing`, a line spacing in the
    // printer's pixels.
    PageFrame(QPainter& painter, QPrinter& printer, Texts texts, double leastSpacing = 0);

    // Between the heading and the footer.
    QRectF body() const;
    double rowHeight() const { return m_rowHeight; }
    double pageWidth() const { return m_page.width(); }
    const QFont& bodyFont() const { return m_body; }
    const QFont& boldFont() const { return m_bold; }

    void draw(const QString& pageNumber);

    double widthOf(const QFont& font, const QString& text) const;
    double widestOf(const QFont& font, const QStringList& texts) const;
    // A text that is too wide becomes smaller: nothing is cut.
    void drawText(const QRectF& place, const QFont& font, const QString& text, Qt::Alignment alignment);
    void drawRule(double y, double width);

    static QColor quiet();

private:
    double titleHeight() const;
    double headingHeight() const;
    void drawHead();
    void drawFoot(const QString& pageNumber);

    QPainter& m_painter;
    QPrinter& m_printer;
    Texts m_texts;
    QRectF m_page;
    QFont m_body;
    QFont m_bold;
    QFont m_title;
    double m_rowHeight = 0;
    bool m_patientBeside = true; // titles and patient fit side by side
};

}
