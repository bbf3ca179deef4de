#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace velmora {

/// What can be known of a program or library, in the order in which it is shown. PE says what only such files have,
/// ELF the same.
enum class ProgramFact : quint8 {
    FileVersion, ///< PE: of the fixed information, as "1.2.3.4"
    ProductVersion,
    VersionFlags,
    VersionSystem,
    VersionType,
    VersionString,      ///< PE: item: language and code page as eight hexadecimal digits, a blank, the name
    VersionTranslation, ///< PE: the languages that are promised, one a line
    Soname,             ///< ELF
    BuildId,            ///< ELF
    Format,
    Machine,
    ObjectType, ///< ELF
    Subsystem,  ///< PE
    SystemVersion,
    LinkTime,
    LinkerVersion,
    StoredChecksum,
    ComputedChecksum,
    ImageBase,
    SizeOfImage,
    EntryPoint,
    Characteristics,
    DllCharacteristics,
    Needed,      ///< ELF: item: a library; the versions of its symbols that are wanted, one a line
    RunPath,     ///< ELF
    Interpreter, ///< ELF
    Import,      ///< PE: item: a library; its functions, one a line
    DelayedImport,
    ExportName,
    Exports, ///< one a line
    CompilerNotes,
    DebugIdentity,
    DebugFile,
    Manifest,
    SignatureSize, ///< PE: bytes; nothing is said about whether it is valid
    Signer,        ///< PE: the name in the certificate that the signature says it was made with
    SectionSize,   ///< item: the section, here and below
    SectionFlags,
    SectionHash, ///< SHA-256 of its bytes in the file
    FileSize,
    FileHash, ///< SHA-256
};

inline constexpr int programFactCount = int(ProgramFact::FileHash) + 1;

/// The name of a fact in the output of programs, which stays: "fileVersion".
[[nodiscard]] const char *programFactName(ProgramFact fact);

/// One fact with its value. Values are numbers, names of the format's own constants, or texts out of the file.
struct FactValue {
    ProgramFact fact = ProgramFact::FileSize;
    QString item; ///< which one, where there can be several
    QString value;
    qint64 offset = -1; ///< where in the file it stands; -1 for what is computed
};

/// The tables that a file can have damaged: they point out of it, never end, or are larger than any that is known.
enum class ProgramPart : quint8 {
    Sections,
    VersionInfo,
    Resources,
    Imports,
    Exports,
    Debug,
    Signature,
    Dynamic,
    Notes
};

/// What is known of one file.
struct ProgramFacts {
    enum class Format : quint8 { Pe, Elf };

    Format format = Format::Pe;
    QList<FactValue> values;            ///< in the order in which they were found
    std::optional<quint64> fileVersion; ///< four numbers of 16 bits, the first one highest
    std::optional<quint64> productVersion;
    QByteArray fileHash;
    QByteArray
        essence; ///< a hash of all but time stamps, checksum, signature, and of ELF build identity and debug link
    QList<ProgramPart> damaged; ///< each once

    void add(ProgramFact fact, const QString &value, qint64 offset, const QString &item = {});
    void addDamage(ProgramPart part);
};

/// "1.2.3.4".
[[nodiscard]] QString versionText(quint64 version);

/// "0x1f", in lower case.
[[nodiscard]] QString hexText(quint64 number);

/// One constant of a format with its name there.
struct NamedCode {
    quint32 code;
    const char *name;
};

/// "AMD64 (0x8664)"; only the number for one without a name.
template <std::size_t size>
[[nodiscard]] QString codeText(quint32 code, const NamedCode (&names)[size]);

/// The names of the bits that are set, and the number: "DEBUG PRERELEASE (0x3)".
template <std::size_t size>
[[nodiscard]] QString flagsText(quint32 flags, const NamedCode (&names)[size]);

template <std::size_t size>
QString codeText(quint32 code, const NamedCode (&names)[size])
{
    for (const NamedCode &named : names) {
        if (named.code == code)
            return QStringLiteral("%1 (%2)").arg(QLatin1String(named.name), hexText(code));
    }
    return hexText(code);
}

template <std::size_t size>
QString flagsText(quint32 flags, const NamedCode (&names)[size])
{
    QString text;
    for (const NamedCode &named : names) {
        if ((flags & named.code) != 0)
            text += QLatin1String(named.name) + u' ';
    }
    return text.isEmpty() ? hexText(flags) : QStringLiteral("%1(%2)").arg(text, hexText(flags));
}

} // namespace velmora
