#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_file.h"
#include "filetypes/registry/engine/registry_noise.h"
#include "filetypes/registry/engine/registry_patch.h"
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

void registry(const QByteArray &input)
{
    const RegistryReading reading = readRegistry(input);
    require(reading.ok() || reading.tree.keys.empty(), "where there is a fault nothing is read");
    const QByteArray written = registryFile(reading.tree);
    const RegistryTree again = readRegistry(written).tree;
    require(registryFile(again) == written, "entries are read as they were written");
    const RegistryComparison comparison = compareRegistry(reading.tree, again, {});
    require(comparison.counts.differences() == 0, "and are the same as themselves");
    require(registryPatch(comparison, Side::Left).keys.empty(), "what is the same needs no patch");
}

} // namespace velmora::fuzz
