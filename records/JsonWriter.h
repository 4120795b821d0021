// Writes JSON: deterministic, in UTF-8, without blanks between the tokens.
#pragma once

#include "api/Text.h"

#include <string>
#include <vector>

namespace health {

// Writes one value, member by member. Objects and arrays without content do not appear, nor do empty texts: formats
// such as FHIR forbid them. Names must outlive the writer; elements of an array have an empty name.
class JsonWriter {
public:
    void beginObject(std::string_view name = {}) { m_open.push_back({ name, '{', false }); }
    void beginArray(std::string_view name = {}) { m_open.push_back({ name, '[', false }); }
    // Ends the innermost object or array.
    void end();

    template<typename Work>
    void object(std::string_view name, Work work)
    {
        beginObject(name);
        work();
        end();
    }
    template<typename Work>
    void array(std::string_view name, Work work)
    {
        beginArray(name);
        work();
        end();
    }

    // A code point that UTF-8 cannot encode becomes U+FFFD.
    void text(std::string_view name, TextView value);
    void whole(std::string_view name, long long value);
    // A number as it is to be written: digits with an optional point between them, an optional minus.
    void number(std::string_view name, TextView digits);
    void boolean(std::string_view name, bool value);
    // Begins a new line before the next value.
    void breakLine() { m_breaks = true; }

    // What has been written.
    const std::string& bytes() const { return m_bytes; }

private:
    struct Level {
        std::string_view name;
        char bracket;
        bool isWritten; // its bracket, and at least one value inside
    };

    void begin(std::string_view name);
    void separate(std::size_t levels, std::string_view name);
    void quote(TextView value);

    std::string m_bytes;
    std::vector<Level> m_open;
    bool m_breaks = false;
};

}
