#include "platform/controls/TextArena.h"

#include <algorithm>

namespace health {

namespace {
constexpr std::size_t BlockSize = 16384; // letters
}

TextView TextArena::keep(TextView text)
{
    if (text.empty())
        return {};
    if (m_current >= m_blocks.size() || m_blocks[m_current].size - m_used < text.size())
        openBlock(text.size());
    wchar_t* const start = m_blocks[m_current].letters.get() + m_used;
    std::copy(text.begin(), text.end(), start);
    m_used += text.size();
    return { start, text.size() };
}

// Goes on to the next block that has room for `length` letters.
void TextArena::openBlock(std::size_t length)
{
    if (m_current < m_blocks.size())
        ++m_current;
    m_used = 0;
    const bool fits = m_current < m_blocks.size() && m_blocks[m_current].size >= length;
    if (fits)
        return;
    const std::size_t size = std::max(length, BlockSize);
    m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(m_current),
        Block { std::make_unique_for_overwrite<wchar_t[]>(size), size });
}

void TextArena::clear()
{
    m_current = 0;
    m_used = 0;
}

}
