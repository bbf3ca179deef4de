#pragma once

#include "text/syntax/syntax_role.h"

#include <QString>

#include <vector>

namespace velmora {

/// The words of a language and what they are. Looking up allocates nothing and takes constant time.
class WordTable {
public:
    /// A word that is there already keeps its role. Words are compared as they are; see `setIgnoresCase`.
    void add(const QString &word, SyntaxRole role);
    /// Whether ASCII letters count without their case. Set before the first word is added.
    void setIgnoresCase(bool ignores) { m_ignoresCase = ignores; }

    /// `Text` for a word that is not in the table.
    [[nodiscard]] SyntaxRole roleOf(QStringView word) const;

private:
    struct Entry {
        QString word;
        SyntaxRole role = SyntaxRole::Text;
    };

    [[nodiscard]] std::size_t hashOf(QStringView word) const;
    [[nodiscard]] bool areSame(QStringView a, QStringView b) const;
    /// The slot that holds `word`, or the empty one where it would be.
    [[nodiscard]] std::size_t slotOf(QStringView word) const;
    void grow();

    std::vector<Entry> m_slots; ///< open addressing; the size is a power of two
    std::size_t m_count = 0;
    qsizetype m_longest = 0;
    bool m_ignoresCase = false;
};

} // namespace velmora
