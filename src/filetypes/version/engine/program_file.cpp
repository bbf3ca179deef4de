#include "filetypes/version/engine/program_file.h"

#include "core/text_file.h"
#include "filetypes/version/engine/elf_reader.h"
#include "filetypes/version/engine/pe_reader.h"
#include "filetypes/version/engine/program_essence.h"

namespace velmora {

namespace {

std::optional<ProgramFacts> factsOf(const QByteArray &bytes)
{
    if (const std::optional<PeImage> image = PeImage::read(ProgramBytes(bytes)))
        return readPeFacts(*image);
    return readElfFacts(bytes);
}

} // namespace

ProgramReading readProgram(const QByteArray &bytes)
{
    ProgramReading reading;
    std::optional<ProgramFacts> facts = factsOf(bytes);
    if (!facts) {
        const bool isBegun = bytes.startsWith("MZ") || bytes.startsWith("\x7f"
                                                                        "ELF");
        reading.fault = isBegun ? ProgramFault::Damaged : ProgramFault::NoProgram;
        return reading;
    }
    facts->fileHash = hashOf(bytes);
    facts->add(ProgramFact::FileSize, QString::number(bytes.size()), -1);
    facts->add(ProgramFact::FileHash, QString::fromLatin1(facts->fileHash.toHex()), -1);
    reading.facts = std::move(*facts);
    return reading;
}

ProgramReading loadProgram(const QString &path, const CancelFlag &cancel)
{
    const FileContents file = readFile(path, cancel);
    if (!file.ok())
        return {{}, ProgramFault::CannotOpen, file.error};
    return readProgram(file.bytes);
}

} // namespace velmora
