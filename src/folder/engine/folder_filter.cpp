#include "folder/engine/folder_filter.h"

#include "core/path_names.h"

#include <algorithm>

namespace velmora {

namespace {

QStringList includedMasks(const FolderSessionOptions &options)
{
    QStringList masks = options.includeFiles;
    for (const FileFormatGroup &format : options.fileFormats) {
        if (format.on)
            masks += splitMasks(format.mask);
    }
    return masks;
}

QStringList viewMasks(const QString &text)
{
    const QString trimmed = text.trimmed();
    const bool all = trimmed == QLatin1String("*") || trimmed == QLatin1String("*.*");
    return all ? QStringList() : splitMasks(trimmed);
}

/// True when the lists let a name through: it is on the first one, unless that is empty, and not on the second.
bool passes(const WildcardList &include, const WildcardList &exclude, QStringView name)
{
    return (include.isEmpty() || include.matches(name)) && !exclude.matches(name);
}

} // namespace

void ViewFilters::exclude(const QStringList &names)
{
    excludedNames.unite({names.begin(), names.end()});
}

void ViewFilters::toggleIgnored(const QStringList &names)
{
    for (const QString &name : names) {
        if (!ignoredNames.remove(name))
            ignoredNames.insert(name);
    }
}

void ViewFilters::takeRanges(const FolderViewLimits &ranges)
{
    const QString masks = limits.masks;
    limits = ranges;
    limits.masks = masks;
}

bool ViewFilters::hasRanges() const
{
    return limits.minimumSize > 0 || limits.maximumSize > 0 || limits.from.isValid() || limits.to.isValid();
}

FolderFilter::FolderFilter(const FolderSessionOptions &options, const ViewFilters &filters, SystemFileTest isSystemFile)
    : m_excludedNames(filters.excludedNames),
      m_includeFiles(includedMasks(options)),
      m_excludeFiles(options.excludeFiles),
      m_includeFolders(options.includeFolders),
      m_excludeFolders(options.excludeFolders),
      m_otherExclude(options.otherExclude),
      m_viewMasks(viewMasks(filters.limits.masks)),
      m_excludeOsFiles(options.excludeOsFiles),
      m_limits(filters.limits),
      m_isSystemFile(std::move(isSystemFile))
{}

bool FolderFilter::shows(const FolderDiffItem &item) const
{
    const QString name = bareName(item.name);
    if (!m_excludedNames.isEmpty() && m_excludedNames.contains(name))
        return false;
    return item.isDir ? passes(m_includeFolders, m_excludeFolders, name) : showsFile(name, item);
}

bool FolderFilter::showsFile(QStringView name, const FolderDiffItem &item) const
{
    return passes(m_includeFiles, m_excludeFiles, name) && !m_otherExclude.matches(name) &&
           !carriesSystemAttribute(item) && (m_viewMasks.isEmpty() || m_viewMasks.matches(name)) &&
           isInSizeRange(item) && isInDateRange(item);
}

bool FolderFilter::carriesSystemAttribute(const FolderDiffItem &item) const
{
    return m_excludeOsFiles && m_isSystemFile && std::any_of(bothSides.begin(), bothSides.end(), [&](Side side) {
               return !pathOn(item, side).isEmpty() && m_isSystemFile(side, pathOn(item, side));
           });
}

bool FolderFilter::isInSizeRange(const FolderDiffItem &item) const
{
    const qint64 size = std::max(item.leftSize, item.rightSize);
    return (m_limits.minimumSize <= 0 || size >= m_limits.minimumSize) &&
           (m_limits.maximumSize <= 0 || size <= m_limits.maximumSize);
}

bool FolderFilter::isInDateRange(const FolderDiffItem &item) const
{
    if (!m_limits.from.isValid() && !m_limits.to.isValid())
        return true;
    const QDateTime &time = item.leftTime.isValid() ? item.leftTime : item.rightTime;
    return time.isValid() && (!m_limits.from.isValid() || time >= m_limits.from) &&
           (!m_limits.to.isValid() || time <= m_limits.to);
}

} // namespace velmora
