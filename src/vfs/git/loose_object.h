#pragma once

#include "core/cancel_flag.h"
#include "platform/file_access.h"
#include "vfs/tree_source.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// Writes contents as loose objects into a folder of objects, in the form that git reads (gitformat-loose-object: a
/// zlib stream, RFC 1950, here of stored blocks, of "blob", the size and the bytes). Nothing is packed, since such
/// folders live as long as a comparison.
class LooseObjects {
public:
    LooseObjects(QString folder, ContentIdentity::Algorithm algorithm);

    /// The name of the content in hexadecimal; nothing when it cannot be read or written to its end.
    [[nodiscard]] std::optional<QByteArray> write(OpenFile &file, const CancelFlag &cancel) const;
    [[nodiscard]] std::optional<QByteArray> write(const QByteArray &content) const;

private:
    QString m_folder;
    ContentIdentity::Algorithm m_algorithm;
};

/// The name of a content in hexadecimal.
[[nodiscard]] QByteArray blobNameOf(const QByteArray &content, ContentIdentity::Algorithm algorithm);

} // namespace velmora
