#include "filetypes/registry/registry_job.h"

#include "core/crew.h"
#include "core/safe_file.h"
#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_patch.h"

namespace velmora {

namespace {

bool areSame(const RegistryTree &one, const RegistryTree &other)
{
    const RegistryComparison comparison = compareRegistry(one, other, {});
    return comparison.counts.differences() == 0;
}

} // namespace

RegistryReading readRegistrySide(const RegistryPlace &place, const LiveRegistry *live, const CancelFlag &cancel,
                                 Progress &progress)
{
    const std::optional<LiveKey> key = live ? liveKeyOf(place.text) : std::nullopt;
    return key ? readLiveKey(*live, *key, cancel, progress) : loadRegistry(place.text, place.encoding, cancel);
}

RegistryResult compareRegistrySides(const Sides<RegistryPlace> &places, const LiveRegistry *live,
                                    const QList<NoiseProfile> &noise, const CancelFlag &cancel, Progress &progress)
{
    RegistryResult result;
    runCrew(
        2,
        [&](int worker) {
            const Side side = worker == 0 ? Side::Left : Side::Right;
            Progress silent; // one thread reports
            result.readings[side] = readRegistrySide(places[side], live, cancel, worker == 0 ? progress : silent);
        },
        [] {});
    if (!result.readings.left.ok() || !result.readings.right.ok() || cancel.isCancelled())
        return result;
    result.comparison = std::make_shared<RegistryComparison>(compareRegistry(
        std::move(result.readings.left.tree), std::move(result.readings.right.tree), RegistryNoise(noise)));
    result.nodes = keyNodesOf(*result.comparison);
    return result;
}

RegistryWriteResult writeRegistry(LiveRegistry &live, const RegistryWriteOrder &order, const CancelFlag &cancel,
                                  Progress &progress)
{
    using enum RegistryWriteResult::End;
    const RegistryReading now = readLiveKey(live, order.key, cancel, progress);
    if (!now.ok() || !areSame(now.tree, order.before))
        return {Changed, {}, now.detail};
    const SaveResult kept = saveFile(order.keptPath, registryFile(registryUndo(now.tree, order.patch)));
    if (!kept.ok())
        return {NotKept, {}, kept.error};
    const RegistryWriting writing = writeToRegistry(live, order.key.view, order.patch);
    return {writing.ok() ? Done : Failed, writing, writing.error};
}

} // namespace velmora
