#include "filetypes/version/engine/program_facts.h"

#include <array>

namespace velmora {

const char *programFactName(ProgramFact fact)
{
    static constexpr std::array<const char *, programFactCount> names{"fileVersion",
                                                                      "productVersion",
                                                                      "versionFlags",
                                                                      "versionSystem",
                                                                      "versionType",
                                                                      "versionString",
                                                                      "versionTranslation",
                                                                      "soname",
                                                                      "buildId",
                                                                      "format",
                                                                      "machine",
                                                                      "objectType",
                                                                      "subsystem",
                                                                      "systemVersion",
                                                                      "linkTime",
                                                                      "linkerVersion",
                                                                      "storedChecksum",
                                                                      "computedChecksum",
                                                                      "imageBase",
                                                                      "sizeOfImage",
                                                                      "entryPoint",
                                                                      "characteristics",
                                                                      "dllCharacteristics",
                                                                      "needed",
                                                                      "runPath",
                                                                      "interpreter",
                                                                      "import",
                                                                      "delayedImport",
                                                                      "exportName",
                                                                      "exports",
                                                                      "compilerNotes",
                                                                      "debugIdentity",
                                                                      "debugFile",
                                                                      "manifest",
                                                                      "signatureSize",
                                                                      "signer",
                                                                      "sectionSize",
                                                                      "sectionFlags",
                                                                      "sectionHash",
                                                                      "fileSize",
                                                                      "fileHash"};
    return names[std::size_t(fact)];
}

void ProgramFacts::add(ProgramFact fact, const QString &value, qint64 offset, const QString &item)
{
    values.append({fact, item, value, offset});
}

void ProgramFacts::addDamage(ProgramPart part)
{
    if (!damaged.contains(part))
        damaged.append(part);
}

QString versionText(quint64 version)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(version >> 48)
        .arg(version >> 32 & 0xffff)
        .arg(version >> 16 & 0xffff)
        .arg(version & 0xffff);
}

QString hexText(quint64 number)
{
    return QStringLiteral("0x") + QString::number(number, 16);
}

} // namespace velmora
