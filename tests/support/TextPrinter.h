// A printer that keeps the texts of its pages.
#pragma once

#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>

namespace health::test {

// Draws nothing; has the paper of a PDF printer.
class TextEngine : public QPaintEngine, public QPrintEngine {
public:
    TextEngine()
        : QPaintEngine(AllFeatures)
    {
        m_paper.setOutputFormat(QPrinter::PdfFormat);
        m_paper.setPageSize(QPageSize(QPageSize::A4));
        m_paper.setPageMargins(QMarginsF(22, 22, 22, 22), QPageLayout::Millimeter);
    }

    struct Word {
        QPointF place; // of the base line's left end, in the printer's pixels
        QString text;
    };
    QList<QList<Word>> pages;

    bool begin(QPaintDevice*) override
    {
        pages = { {} };
        return true;
    }
    bool end() override { return true; }
    bool newPage() override
    {
        pages.append(QList<Word>());
        return true;
    }
    void updateState(const QPaintEngineState& now) override
    {
        if (now.state() & DirtyTransform)
            m_transform = now.transform();
    }
    void drawTextItem(const QPointF& place, const QTextItem& item) override
    {
        pages.last().append({ m_transform.map(place), item.text() });
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { }
    void drawPath(const QPainterPath&) override { }
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override { }
    Type type() const override { return User; }

    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override
    {
        m_paper.printEngine()->setProperty(key, value);
    }
    QVariant property(PrintEnginePropertyKey key) const override { return m_paper.printEngine()->property(key); }
    bool abort() override { return false; }
    int metric(QPaintDevice::PaintDeviceMetric id) const override { return m_paper.printEngine()->metric(id); }
    QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

private:
    QPrinter m_paper { QPrinter::HighResolution };
    QTransform m_transform;
};

class TextPrinter : public QPrinter {
public:
    TextPrinter() { setEngines(&m_engine, &m_engine); }

    // The text of each page without blanks, in the order of drawing.
    QStringList pages() const
    {
        QStringList texts;
        for (const auto& page : m_engine.pages) {
            QString text;
            for (const TextEngine::Word& word : page)
                text += word.text;
            texts.append(text.remove(u' '));
        }
        return texts;
    }
    const QList<QList<TextEngine::Word>>& words() const { return m_engine.pages; }

private:
    TextEngine m_engine;
};

}
