#include "cli/keyed_output.h"

#include "core/visible_name.h"

#include <QIODevice>

#include <array>

namespace velmora::cli {

bool writeCounts(QIODevice &device, const PairCounts &counts)
{
    const QByteArray line =
        QStringLiteral("Total: %1 items | Same: %2 | Changed: %3 | Left only: %4 | Right only: %5\n")
            .arg(counts.all())
            .arg(counts.same)
            .arg(counts.changed)
            .arg(counts.leftOnly)
            .arg(counts.rightOnly)
            .toLatin1();
    return device.write(line) == line.size();
}

bool writeKeys(QIODevice &device, const QList<KeyedRow> &rows)
{
    OutputBuffer output(device);
    for (const KeyedRow &row : rows) {
        static constexpr std::string_view signs = "=!<>";
        const QByteArray key = visibleName(row.key).toUtf8();
        output << signs[std::size_t(row.status)] << ' ' << std::string_view(key.constData(), std::size_t(key.size()))
               << '\n';
    }
    return output.finish();
}

int statusNumber(PairStatus status)
{
    static constexpr std::array numbers{0, 3, 1, 2};
    return numbers[std::size_t(status)];
}

void writeText(JsonWriter &json, std::string_view key, const QString &text, bool isThere)
{
    json.key(key);
    if (isThere)
        json.text(text);
    else
        json.null();
}

void writeValues(JsonWriter &json, PairStatus status, const QString &left, const QString &right)
{
    json.number("status", statusNumber(status));
    writeText(json, "left", left, isOn(status, Side::Left));
    writeText(json, "right", right, isOn(status, Side::Right));
}

} // namespace velmora::cli
