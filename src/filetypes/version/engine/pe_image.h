#pragma once

#include "filetypes/version/engine/program_bytes.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace velmora {

/// One section as its header describes it.
struct PeSection {
    QString name;
    quint32 virtualSize = 0;
    quint32 address = 0; ///< relative to the image's base
    quint32 fileSize = 0;
    quint32 fileOffset = 0;
    quint32 flags = 0;
    qint64 headerAt = 0;
};

/// The headers of a Portable Executable (PE Format, as Microsoft publishes it), and the way from addresses in memory
/// to places in the file.
class PeImage {
public:
    /// The tables of the optional header.
    enum class Directory : quint8 {
        Exports = 0,
        Imports = 1,
        Resources = 2,
        Security = 4,
        Debug = 6,
        DelayImports = 13
    };

    struct Table {
        quint32 address = 0; ///< relative to the image's base; of `Security` a place in the file
        quint32 size = 0;
        qint64 entryAt = -1; ///< where the header says so
    };

    /// Nothing when the headers are none, or not whole. `bytes` outlive the image.
    [[nodiscard]] static std::optional<PeImage> read(ProgramBytes bytes);

    [[nodiscard]] const ProgramBytes &bytes() const { return m_bytes; }
    [[nodiscard]] bool is64() const { return m_is64; }
    [[nodiscard]] qint64 fileHeaderAt() const { return m_fileHeader; }
    [[nodiscard]] qint64 optionalHeaderAt() const { return m_optionalHeader; }
    [[nodiscard]] const QList<PeSection> &sections() const { return m_sections; }
    /// The header counts more sections than there are headers for.
    [[nodiscard]] bool lacksSections() const { return m_lacksSections; }

    [[nodiscard]] Table table(Directory directory) const;
    /// The place in the file of an address in memory; nothing where the file has none for it.
    [[nodiscard]] std::optional<qint64> placeOf(quint32 address) const;

private:
    explicit PeImage(ProgramBytes bytes) : m_bytes(bytes) {}
    void readSections();
    [[nodiscard]] QString sectionName(qint64 at) const;

    ProgramBytes m_bytes;
    qint64 m_fileHeader = 0;
    qint64 m_optionalHeader = 0;
    bool m_is64 = false;
    bool m_lacksSections = false;
    QList<PeSection> m_sections;
};

} // namespace velmora
