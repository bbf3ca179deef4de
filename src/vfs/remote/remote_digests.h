#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QList>

#include <span>
#include <vector>

namespace velmora {

/// A file of a host as a listing told of it.
struct RemoteFileName {
    QByteArray name; ///< relative to the folder, any bytes but NUL
    qint64 size = 0;
};

/// Digests that a host computes of many files at once.
enum class RemoteDigest : quint8 {
    Sha256,      ///< of the bytes
    GitBlobSha1, ///< the name that Git has for the content
};

/// The question for the digests of many files and the lines that answer it. A file counts that had its size before and
/// after its bytes were read; of what the host says beyond that nothing is believed.
class RemoteDigestTalk {
public:
    RemoteDigestTalk(std::span<const RemoteFileName> files, RemoteDigest digest);

    /// As the script takes it. Names that could be taken for more than a line of an answer are not in it.
    [[nodiscard]] QByteArray question() const;
    [[nodiscard]] bool asksForNone() const { return m_names.isEmpty(); }

    enum class Taken : quint8 {
        Line, ///< more come
        End,
        Lack, ///< the end: the host has no program for it
        Odd,  ///< no host says such a thing
    };
    [[nodiscard]] Taken take(QByteArrayView line);
    /// No line of an answer is longer.
    static constexpr qint64 longestLine = 8192;

    /// After the end: by file, empty where there is none.
    [[nodiscard]] std::vector<QByteArray> digests() const;

private:
    struct Answer {
        qint64 size = 0;
        QByteArray value;
        int sizes = 0;
        bool isBad = false;
    };

    [[nodiscard]] Taken takeSize(QByteArrayView line);
    [[nodiscard]] Taken takeDigest(QByteArrayView line);

    RemoteDigest m_digest;
    QList<QByteArray> m_names; ///< what is asked for, in the order of the files
    QHash<QByteArray, qsizetype> m_places;
    std::vector<Answer> m_answers; ///< by file
    qsizetype m_current = -1;      ///< the file that was told of last
    qint64 m_linesLeft = 0;
};

/// What a script of the host does with such a question: a function `many` for a shell, called with the first line of
/// it and then the second.
[[nodiscard]] const char *remoteDigestFunction();

} // namespace velmora
