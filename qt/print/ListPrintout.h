#pragma once

#include "qt/print/FlowingPrintout.h"

#include <QString>
#include <QTextLayout>

#include <memory>

namespace health {

struct ListedRecord;
class ShownRecords;

// The list as it is shown, on paper: the same rows in the same order, the marks in words.
class ListPrintout : public FlowingPrintout {
public:
    // Copies what it prints. `filter` says by what the rows are filtered; empty if all are shown.
    ListPrintout(const ShownRecords& records, const QString& filter);

    Text title() const override;
    std::vector<Text> remarks() const override;
    Text plainText() const override;

private:
    // A run of a summary's text without its day and time.
    struct Run {
        int start;
        int length;
        bool isQuiet;
        bool isStrong;
    };
    struct Row {
        QString label;
        QString day;
        QString time; // with the blank before it
        QString text;
        QList<Run> runs;
        QList<int> breaks; // where lines may break, after "; "
        QStringList marks;
        bool isOfCurrentVisit;
        QString plain; // label and summary
        std::shared_ptr<QTextLayout> layout; // in the last width
    };

    static Row rowOf(const ListedRecord& record, const ListedRecord* earlier);
    std::vector<Block> blocks(double width, double height) override;
    void drawBlock(QPainter& painter, std::size_t block, bool isFirst) const override;
    void layOutText(Row& row, double width) const;
    bool beginsKind(std::size_t row) const;
    void drawLabel(QPainter& painter, const Row& row, bool isStrong) const;
    void drawDate(QPainter& painter, const Row& row) const;
    double widest(QString Row::*text) const;

    QString m_remark;
    std::vector<Row> m_rows;
    double m_labelRight = 0;
    double m_dateLeft = 0;
    double m_textLeft = 0;
};

}
