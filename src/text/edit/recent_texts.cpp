#include "text/edit/recent_texts.h"

#include "core/settings_store.h"

#include <QFileInfo>

namespace velmora {

namespace {

constexpr QLatin1String filesKey("textEdit/recentFiles"); // in the store of the sessions

} // namespace

QStringList RecentTexts::load()
{
    QStringList files = SessionSettings().value(filesKey).toStringList();
    files.removeIf([](const QString &file) { return !QFileInfo(file).isFile(); });
    return files.first(std::min(files.size(), most));
}

void RecentTexts::add(const QString &path)
{
    SessionSettings settings;
    QStringList files = settings.value(filesKey).toStringList();
    files.removeAll(path);
    files.prepend(path);
    settings.setValue(filesKey, files.first(std::min(files.size(), most)));
}

void RecentTexts::clear()
{
    SessionSettings().remove(filesKey);
}

} // namespace velmora
