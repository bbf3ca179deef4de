#include "vfs/archive/archive_library.h"

#include <QLibrary>

#include <optional>
#include <type_traits>

namespace velmora {

namespace {

constexpr int binaryInterface = 13; // of every release since 3.0

std::optional<ArchiveLibrary> load()
{
    QLibrary file(QStringLiteral("archive"), binaryInterface);
    if (!file.load())
        return std::nullopt;
    ArchiveLibrary library;
    bool isWhole = true;
    const auto find = [&](const char *name, auto &function) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(file.resolve(name));
        isWhole = isWhole && function;
    };
#define VELMORA_ARCHIVE_FIND(name) find(#name, library.name);
    VELMORA_ARCHIVE_FUNCTIONS(VELMORA_ARCHIVE_FIND)
#undef VELMORA_ARCHIVE_FIND
    return isWhole ? std::optional(library) : std::nullopt;
}

} // namespace

const ArchiveLibrary *ArchiveLibrary::get()
{
    static const std::optional<ArchiveLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace velmora
