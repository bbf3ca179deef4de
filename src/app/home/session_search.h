#pragma once

#include <QString>

namespace velmora {

struct SessionKindRow;
struct SessionRecord;

/// Whether every word of `words` is somewhere in `text`, in any order and letter case. No words are in every text.
[[nodiscard]] bool containsWords(const QString &text, const QString &words);

/// The same for what a kind is called and for, in English and in the interface's language.
[[nodiscard]] bool kindMatches(const SessionKindRow &kind, const QString &words);

/// The same for the name, the paths and the kind of a remembered session.
[[nodiscard]] bool recordMatches(const SessionRecord &record, const QString &words);

} // namespace velmora
