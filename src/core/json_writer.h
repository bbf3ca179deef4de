#pragma once

#include "core/output_buffer.h"

#include <QString>

#include <string_view>
#include <vector>

namespace velmora {

/// Writes one JSON object, value by value. Its members stand on lines of their own, and so do the items of a list that
/// is one of them; everything deeper stays on its line.
///
/// A surrogate without its partner, as in names that are no text, is written as an escape, so that every string can be
/// read back. Keys are plain ASCII without quotes and backslashes. Objects and lists are ended by who began them.
class JsonWriter final {
public:
    explicit JsonWriter(OutputBuffer &output) : m_output(output) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginList() { begin('['); }
    void endList() { end(']'); }

    /// The name of the member whose value comes next.
    void key(std::string_view name);
    void text(const QString &value);
    void number(qint64 value);
    void boolean(bool value);
    void null();

    void text(std::string_view name, const QString &value) { key(name), text(value); }
    void number(std::string_view name, qint64 value) { key(name), number(value); }
    void boolean(std::string_view name, bool value) { key(name), boolean(value); }

private:
    struct Level {
        bool isEmpty = true;
        bool isBroken = false; ///< into lines
    };

    void begin(char bracket);
    void end(char bracket);
    void separate();
    void beginValue();

    OutputBuffer &m_output;
    std::vector<Level> m_levels;
    bool m_afterKey = false;
};

} // namespace velmora
