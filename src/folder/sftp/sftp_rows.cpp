#include "folder/sftp/sftp_rows.h"

#include "core/visible_name.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

namespace {

QString sizeText(const std::optional<qint64> &size)
{
    return size ? QLocale().toString(*size) : QString();
}

} // namespace

SftpRows::SftpRows(std::shared_ptr<const RemoteComparison> comparison, Contents contents)
    : RowSource(Velmora::tr("Relative path")), m_found(std::move(comparison)), m_contents(std::move(contents))
{}

KeyedRow SftpRows::row(qsizetype number) const
{
    const auto details = [&](Side side) {
        const std::optional<qint64> &size = at(number).sizes[side];
        return size ? Velmora::tr("Size: %1 bytes").arg(sizeText(size)) : QString();
    };
    QString note;
    if (m_contents.contains(key(number)))
        note = m_contents.value(key(number)) ? Velmora::tr("Same contents") : Velmora::tr("Different contents");
    return {key(number), status(number), details(Side::Left), details(Side::Right), note};
}

PairStatus SftpRows::status(qsizetype number) const
{
    return m_contents.value(key(number), true) ? at(number).status : PairStatus::Changed;
}

QStringList SftpRows::headings() const
{
    return {Velmora::tr("Status"), Velmora::tr("Relative path"), Velmora::tr("Local size"), Velmora::tr("Remote size")};
}

QString SftpRows::text(qsizetype number, int column) const
{
    if (column == Key)
        return visibleName(key(number));
    if (column != Status)
        return sizeText(at(number).sizes[column == Left ? Side::Left : Side::Right]);
    if (m_contents.contains(key(number)))
        return m_contents.value(key(number)) ? Velmora::tr("Same contents") : Velmora::tr("Different contents");
    static constexpr const char *texts[] = {
        QT_TRANSLATE_NOOP("Velmora", "Same"), QT_TRANSLATE_NOOP("Velmora", "Different size"),
        QT_TRANSLATE_NOOP("Velmora", "Local only"), QT_TRANSLATE_NOOP("Velmora", "Remote only")};
    return Velmora::tr(texts[std::size_t(at(number).status)]);
}

bool SftpRows::isBefore(qsizetype one, qsizetype other, int column) const
{
    if (column == Status)
        return status(one) < status(other);
    if (column == Key)
        return one < other;
    const Side side = column == Left ? Side::Left : Side::Right;
    return at(one).sizes[side].value_or(-1) < at(other).sizes[side].value_or(-1);
}

} // namespace velmora
