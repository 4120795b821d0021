#pragma once

#include "qt/course/CoursePicture.h"
#include "qt/print/FlowingPrintout.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace health {

struct CourseSource;

// The selected record in full and the course of its kind, on paper: fields, picture, and the picture in words.
class CoursePrintout : public FlowingPrintout {
public:
    // Copies what it prints. The source has a selected record.
    explicit CoursePrintout(const CourseSource& source);

    Text title() const override;
    Text plainText() const override;

private:
    struct Field {
        QString caption;
        QString value;
        QString before; // "was ..."; empty if it is the same
    };
    // What a block is, in the order of printing.
    struct Part {
        enum class Kind {
            Heading,
            Field,
            Picture,
            TableHead,
            TableRow,
        };
        Kind kind;
        std::size_t row = 0; // of the fields or of the table
    };

    std::vector<Block> blocks(double width, double height) override;
    void drawBlock(QPainter& painter, std::size_t block, bool isFirst) const override;
    double heightOf(const Part& part) const;
    double fieldHeight(const Field& field) const;
    void drawField(QPainter& painter, const Field& field) const;
    void drawCells(QPainter& painter, const std::vector<Text>& cells, const QFont& font) const;
    double cellsHeight(const std::vector<Text>& cells, const QFont& font) const;
    QRectF wrapped(const QFont& font, const QString& text, double width) const;
    QSize pictureSize(double height) const;
    double valueLeft() const;
    double valueWidth() const;
    double beforeWidth() const { return width() - valueLeft() - valueWidth(); }
    double columnWidth() const;

    QString m_kind;
    QString m_heading;
    std::vector<Field> m_fields;
    std::unique_ptr<CoursePicture> m_picture; // null for a kind without one
    CourseTable m_table;
    std::vector<Part> m_parts;
    QSize m_pictureSize;
};

}
