#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QPoint>
#include <QString>
#include <QStringView>

class QPainter;

namespace health {

// A piece of text in one font and colour.
struct TextRun {
    QString text;
    QFont font;
    QColor colour;
};

// Texts of several fonts and colours in one paragraph. Lines break between parts; within a part only if it is longer
// than a line, then between words, or within a word that is itself longer.
class RunFlow {
public:
    // A run with this text is drawn as an upright bar.
    static constexpr QStringView Bar = u"\u2502";

    struct Part {
        QList<TextRun> runs;
        bool breaksBefore = false;
    };

    void add(Part part) { m_parts.append(std::move(part)); }
    bool isEmpty() const { return m_parts.isEmpty(); }

    // In one line, as far as parts permit.
    int naturalWidth() const;
    int heightFor(int width, int lineHeight) const { return lines(width) * lineHeight; }
    void draw(QPainter& painter, QPoint topLeft, int width, int lineHeight) const;

private:
    struct Piece {
        TextRun run;
        int left = 0;
        int line = 0;
    };
    class Setter;
    int lines(int width) const;
    QList<Piece> set(int width) const;

    QList<Part> m_parts;
};

}
