#pragma once

#include <QJsonObject>
#include <QString>

namespace velmora {

/// The options of a text edit session.
struct TextEditOptions {
    QString encoding;      ///< that the file is read by, as `TextEncoding` names it; "auto" for what is found
    QString fileType;      ///< the name of a syntax; "auto" for what is found, "plain" for none
    QString savedEncoding; ///< that the text is to get when it is saved; empty for the one that it has
    QString savedLineEnds; ///< "LF", "CRLF", "CR"; empty for those that it has
    bool readOnly = false;

    friend bool operator==(const TextEditOptions &, const TextEditOptions &) = default;
};

inline constexpr QLatin1String automaticType("auto");
inline constexpr QLatin1String plainType("plain");

/// The usual ones.
[[nodiscard]] TextEditOptions usualTextEditOptions();

/// As session files hold them: one key for each member, in lower camel case, without those that are empty.
[[nodiscard]] QJsonObject toJson(const TextEditOptions &options);
/// What is missing, or means nothing, is as usual.
[[nodiscard]] TextEditOptions textEditOptionsFrom(const QJsonObject &object);

} // namespace velmora
