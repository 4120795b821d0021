#include "qt/print/FlowingPrintout.h"

#include <QPainter>

#include <algorithm>

namespace health {

int FlowingPrintout::layOut(int width, int height)
{
    m_width = width;
    m_blocks = blocks(width, height);
    breakPages(std::max<double>(height, m_paper.line));
    return static_cast<int>(m_pages.size());
}

void FlowingPrintout::breakPages(double height)
{
    m_pages.assign(1, {});
    m_used = 0;
    for (std::size_t block = 0; block < m_blocks.size(); ++block)
        place(block, height);
}

double FlowingPrintout::heightWithNext(std::size_t block) const
{
    double height = m_blocks[block].height;
    while (m_blocks[block].keepsWithNext && block + 1 < m_blocks.size())
        height += m_blocks[++block].height;
    return height;
}

void FlowingPrintout::place(std::size_t block, double height)
{
    const double wanted = std::min(heightWithNext(block), height);
    if (m_used + wanted > height && !m_pages.back().empty()) {
        m_pages.emplace_back();
        m_used = 0;
    }
    if (m_blocks[block].height > height)
        return placeInParts(block, height);
    m_pages.back().push_back({ block, m_used, 0, m_blocks[block].height });
    m_used += m_blocks[block].height;
}

// At the height of whole lines.
void FlowingPrintout::placeInParts(std::size_t block, double height)
{
    const double part = std::max(1.0, std::floor(height / m_paper.line)) * m_paper.line;
    for (double from = 0; from < m_blocks[block].height; from += part) {
        if (from > 0)
            m_pages.emplace_back();
        m_used = std::min(part, m_blocks[block].height - from);
        m_pages.back().push_back({ block, 0, from, m_used });
    }
}

void FlowingPrintout::draw(QPainter& painter, int page) const
{
    if (page < 0 || page >= static_cast<int>(m_pages.size()))
        return;
    for (const Piece& piece : m_pages[static_cast<std::size_t>(page)]) {
        painter.save();
        painter.translate(0, piece.top);
        if (piece.height < m_blocks[piece.block].height)
            painter.setClipRect(QRectF(-m_width, 0, 3 * m_width, piece.height));
        painter.translate(0, -piece.from);
        drawBlock(painter, piece.block, piece.top == 0 && piece.from == 0);
        painter.restore();
    }
}

}
