#pragma once

#include "api/Printout.h"
#include "qt/print/Paper.h"

#include <vector>

namespace health {

// A printout whose blocks follow each other from page to page. A block is drawn in one piece unless it is higher than a
// page; then it continues on the next page at the height that its lines allow.
class FlowingPrintout : public Printout {
public:
    int layOut(int width, int height) final;
    void draw(QPainter& painter, int page) const final;

protected:
    struct Block {
        double height = 0;
        bool keepsWithNext = false; // a heading
    };

    // The blocks in a width, in their order.
    virtual std::vector<Block> blocks(double width, double height) = 0;
    // Draws a block at y = 0 and below. `isFirst`: no other block stands above it on the page.
    virtual void drawBlock(QPainter& painter, std::size_t block, bool isFirst) const = 0;

    const Paper& paper() const { return m_paper; }
    double width() const { return m_width; }

private:
    // A block, or a part of one, on a page.
    struct Piece {
        std::size_t block;
        double top; // on the page
        double from; // within the block
        double height;
    };

    void breakPages(double height);
    void place(std::size_t block, double height);
    double heightWithNext(std::size_t block) const;
    void placeInParts(std::size_t block, double height);

    Paper m_paper;
    double m_width = 0;
    double m_used = 0; // height of the last page
    std::vector<Block> m_blocks;
    std::vector<std::vector<Piece>> m_pages;
};

}
