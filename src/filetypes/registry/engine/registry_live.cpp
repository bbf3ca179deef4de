#include "filetypes/registry/engine/registry_live.h"

#include <algorithm>

namespace velmora {

namespace {

class Writer {
public:
    Writer(LiveRegistry &registry, RegistryView view) : m_registry(registry), m_view(view) {}

    void write(const RegistryKey &key)
    {
        const LiveKey place{key.path, m_view};
        if (key.isDeletion)
            note(key, m_registry.removeKey(place));
        const bool holdsValues = std::any_of(key.values.begin(), key.values.end(),
                                             [](const RegistryValue &value) { return !value.isDeletion; });
        if (m_writing.ok() && (holdsValues || !key.isDeletion))
            note(key, m_registry.createKey(place));
        for (auto value = key.values.begin(); value != key.values.end() && m_writing.ok(); ++value)
            note(key, value->isDeletion ? m_registry.removeValue(place, value->name)
                                        : m_registry.setValue(place, {value->name, quint32(value->type), value->data}));
    }

    [[nodiscard]] const RegistryWriting &writing() const { return m_writing; }

private:
    void note(const RegistryKey &key, const QString &error)
    {
        if (error.isEmpty()) {
            ++m_writing.done;
            return;
        }
        m_writing.failed = key.path;
        m_writing.error = error;
    }

    LiveRegistry &m_registry;
    RegistryView m_view;
    RegistryWriting m_writing;
};

} // namespace

RegistryReading readLiveKey(const LiveRegistry &registry, const LiveKey &key, const CancelFlag &cancel,
                            Progress &progress)
{
    RegistryReading reading;
    const auto take = [&](const QString &path, QList<LiveValue> &&values) {
        RegistryKey taken{path};
        for (LiveValue &value : values)
            taken.values.push_back({std::move(value.name), RegistryType(value.type), std::move(value.data)});
        reading.tree.keys.push_back(std::move(taken));
        progress.report(0, qint64(reading.tree.keys.size()), 0, path);
        return !cancel.isCancelled();
    };
    reading.detail = registry.read(key, take, reading.badLines);
    if (!reading.detail.isEmpty())
        reading.fault = RegistryFault::CannotReadKey;
    reading.tree.settle();
    return reading;
}

RegistryWriting writeToRegistry(LiveRegistry &registry, RegistryView view, const RegistryTree &patch)
{
    Writer writer(registry, view);
    for (const RegistryKey &key : patch.keys) {
        if (!writer.writing().ok())
            break;
        writer.write(key);
    }
    return writer.writing();
}

} // namespace velmora
