#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace velmora {

/// Which of the registry's two views programs see: a 64-bit system keeps some keys once for each kind of program.
enum class RegistryView : quint8 { Own, Bits32, Bits64 };

/// A key of this system's registry.
struct LiveKey {
    QString path; ///< from the long name of its root on, with backslashes: "HKEY_CURRENT_USER\Software"
    RegistryView view = RegistryView::Own;

    friend bool operator==(const LiveKey &, const LiveKey &) = default;
};

/// A value as the registry keeps it.
struct LiveValue {
    QString name; ///< empty for the default value
    quint32 type = 0;
    QByteArray data;
};

/// The registry of this system, read and written. Any thread. What returns a text says in the system's own words what
/// went wrong, and is empty where nothing did.
class LiveRegistry {
public:
    LiveRegistry() = default;
    LiveRegistry(const LiveRegistry &) = delete;
    LiveRegistry &operator=(const LiveRegistry &) = delete;
    virtual ~LiveRegistry() = default;

    /// The system's own; null where there is no registry.
    [[nodiscard]] static LiveRegistry *system();

    /// Takes one key with its values; false stops the reading.
    using Sink = std::function<bool(const QString &path, QList<LiveValue> &&values)>;
    /// Gives `sink` the key and all that is in it, each key before what is in it. Keys within that cannot be read are
    /// counted in `unreadable` and left out.
    [[nodiscard]] virtual QString read(const LiveKey &key, const Sink &sink, qsizetype &unreadable) const = 0;

    /// Makes the key with all that it lies in, where it is missing.
    [[nodiscard]] virtual QString createKey(const LiveKey &key) = 0;
    /// Writes a value into a key that is there.
    [[nodiscard]] virtual QString setValue(const LiveKey &key, const LiveValue &value) = 0;
    /// Removing what is not there is fine.
    [[nodiscard]] virtual QString removeValue(const LiveKey &key, const QString &name) = 0;
    /// With all that is in it. A root is refused.
    [[nodiscard]] virtual QString removeKey(const LiveKey &key) = 0;
};

/// The key that a text names: a root by its long or short name ("HKLM"), a path behind it, and "32:" or "64:" before it
/// for a view. Nothing for a text that names none.
[[nodiscard]] std::optional<LiveKey> liveKeyOf(const QString &text);

/// The text that names a key.
[[nodiscard]] QString liveKeyText(const LiveKey &key);

} // namespace velmora
