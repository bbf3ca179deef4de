#include "filetypes/version/engine/program_file.h"
#include "filetypes/version/engine/version_compare.h"
#include "fuzz/targets.h"

namespace velmora::fuzz {

void program(const QByteArray &input)
{
    const ProgramReading reading = readProgram(input);
    require(reading.ok() || reading.facts.values.isEmpty(), "where there is a fault nothing is read");
    for (const FactValue &value : reading.facts.values)
        require(value.offset >= -1 && value.offset <= input.size(), "every fact stands in the file");
    if (!reading.ok())
        return;
    require(judgeVersions(reading.facts, reading.facts) == VersionVerdict::SameFile, "a file is the same as itself");
    for (const VersionRow &row : compareVersions(reading.facts, reading.facts))
        require(row.status == PairStatus::Same, "a fact is the same as itself");
}

} // namespace velmora::fuzz
