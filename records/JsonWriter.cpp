#include "records/JsonWriter.h"

#include "api/Utf8.h"

#include <cstdio>

namespace health {

// Brackets are written with the first value inside them.
void JsonWriter::begin(std::string_view name)
{
    for (std::size_t i = 0; i < m_open.size(); ++i) {
        Level& level = m_open[i];
        if (level.isWritten)
            continue;
        separate(i, level.name);
        m_bytes += level.bracket;
        level.isWritten = true;
    }
    separate(m_open.size(), name);
}

// Writes what precedes a value inside the innermost of some levels.
void JsonWriter::separate(std::size_t levels, std::string_view name)
{
    if (levels > 0 && m_bytes.back() != m_open[levels - 1].bracket)
        m_bytes += ',';
    if (m_breaks && levels > 0)
        m_bytes += '\n';
    m_breaks = m_breaks && levels == 0;
    if (!name.empty())
        m_bytes.append(1, '"').append(name).append("\":");
}

void JsonWriter::end()
{
    if (m_open.back().isWritten)
        m_bytes += m_open.back().bracket == '{' ? '}' : ']';
    m_open.pop_back();
}

void JsonWriter::text(std::string_view name, TextView value)
{
    if (value.empty())
        return;
    begin(name);
    quote(value);
}

void JsonWriter::quote(TextView value)
{
    m_bytes += '"';
    for (const char byte : narrow(value)) {
        if (byte == '"' || byte == '\\') {
            m_bytes.append(1, '\\').append(1, byte);
        } else if (static_cast<unsigned char>(byte) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(byte));
            m_bytes += escape;
        } else {
            m_bytes += byte;
        }
    }
    m_bytes += '"';
}

void JsonWriter::whole(std::string_view name, long long value)
{
    begin(name);
    m_bytes += std::to_string(value);
}

void JsonWriter::number(std::string_view name, TextView digits)
{
    begin(name);
    m_bytes += narrow(digits);
}

void JsonWriter::boolean(std::string_view name, bool value)
{
    begin(name);
    m_bytes += value ? "true" : "false";
}

}
