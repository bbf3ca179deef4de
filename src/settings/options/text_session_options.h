#pragma once

#include <QString>
#include <QStringList>

class QJsonObject;

namespace velmora {

/// How the lines of two texts are brought together (the numbers are stored).
enum class AlignAlgorithm : qint32 {
    Standard = 0,
    Myers = 1,
    Patience = 2,
    Unaligned = 3,
};

/// The options of a text comparison: what counts as a difference, how lines are aligned, and the format of each side.
///
/// A value type. The three legacy switches always follow from the importance flags (`deriveLegacySwitches`); they exist
/// for session files of earlier versions.
struct TextSessionOptions {
    QString leftPath;
    QString rightPath;
    bool leftReadOnly = false;
    bool rightReadOnly = false;
    QString description;

    bool ignoreWhitespace = true;
    bool ignoreCase = false;
    bool ignoreLineEndings = false;
    bool ignoreBlankLines = false;

    bool importantLeadingWhitespace = false;
    bool importantEmbeddedWhitespace = false;
    bool importantTrailingWhitespace = false;
    bool importantEverythingElse = true;
    bool importantCharacterCase = true;
    bool orphanLinesAlwaysImportant = false;
    bool compareLineEndings = true;
    QStringList unimportantText; ///< texts or regular expressions; a line with a hit is unimportant

    // The Chinese words stand for "everything else" and "automatic detection" in every language.
    QString leftFileType = QStringLiteral("其它一切");
    QString leftEncoding = QStringLiteral("自动检测");
    QString leftEol = QStringLiteral("PC");
    QString rightFileType = QStringLiteral("其它一切");
    QString rightEncoding = QStringLiteral("自动检测");
    QString rightEol = QStringLiteral("PC");
    bool sameAsLeftFileFormat = true;

    qint32 alignAlgorithm = 0;        ///< an `AlignAlgorithm`; files may hold any number
    qint32 curvatureTolerance = 2000; ///< lines by which a pairing may drift from the last anchor
    bool useNearbyMatches = true;
    bool neverAlignDifferences = false;

    QStringList leftReplaceFind;
    QStringList leftReplaceWith; ///< parallel to leftReplaceFind; missing entries stand for nothing
    QStringList rightReplaceFind;
    QStringList rightReplaceWith;

    friend bool operator==(const TextSessionOptions &, const TextSessionOptions &) = default;
};

/// Whether a stored file type leaves it open what the file is: the default, the word that the settings dialog stores
/// for it, or none at all.
[[nodiscard]] bool leavesFileTypeOpen(const QString &fileType);

/// Sets the legacy switches from the importance flags.
void deriveLegacySwitches(TextSessionOptions &options);

/// The record as session files hold it; the paths and the description are not part of it.
[[nodiscard]] QJsonObject toJson(const TextSessionOptions &options);

/// Reads `object` over `options`. A missing or mistyped key leaves its field alone; an object without the importance
/// flags is of an earlier version, and sets them from its legacy switches. False, and nothing changed, for an empty
/// object.
[[nodiscard]] bool fromJson(const QJsonObject &object, TextSessionOptions &options);

} // namespace velmora
