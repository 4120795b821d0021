#pragma once

#include "api/Text.h"

#include <deque>
#include <vector>

namespace health {

// The records behind the rows of the list, as the server sent them, for readers that need single fields. Row for row
// with the grid.
class RecordLines {
public:
    void clear()
    {
        m_lines.clear();
        m_replies.clear();
    }

    // Keeps a reply; views into the returned text are valid until clear().
    TextView keep(Text reply) { return m_replies.emplace_back(std::move(reply)); }
    // Appends the line of the next row: a view into a kept reply.
    void add(TextView line) { m_lines.push_back(line); }

    int count() const { return static_cast<int>(m_lines.size()); }
    // Throws std::out_of_range for a row without a record.
    TextView line(int row) const { return m_lines.at(static_cast<std::size_t>(row)); }

private:
    std::deque<Text> m_replies; // a deque, so that short texts stay where they are
    std::vector<TextView> m_lines;
};

}
