#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <span>
#include <variant>

namespace velmora {

/// One field of an option record with the key under which JSON holds it.
template <typename Record>
struct JsonField {
    const char *key;
    std::variant<bool Record::*, qint32 Record::*, QString Record::*, QStringList Record::*> member;
};

namespace json_fields {

inline QJsonValue toValue(bool value)
{
    return value;
}

inline QJsonValue toValue(qint32 value)
{
    return value;
}

inline QJsonValue toValue(const QString &value)
{
    return value;
}

inline QJsonValue toValue(const QStringList &value)
{
    return QJsonArray::fromStringList(value);
}

// Each takes a value of its type and leaves the field alone for any other.

inline void read(const QJsonValue &value, bool &field)
{
    field = value.toBool(field);
}

inline void read(const QJsonValue &value, qint32 &field)
{
    field = value.toInt(field);
}

inline void read(const QJsonValue &value, QString &field)
{
    field = value.toString(field);
}

inline void read(const QJsonValue &value, QStringList &field)
{
    if (!value.isArray())
        return;
    field.clear();
    // Every entry keeps its place: some lists run parallel to another.
    for (const QJsonValue entry : value.toArray())
        field.append(entry.toString());
}

} // namespace json_fields

/// An object with the keys of `fields`.
template <typename Record>
[[nodiscard]] QJsonObject fieldsToJson(std::span<const JsonField<Record>> fields, const Record &record)
{
    QJsonObject object;
    for (const JsonField<Record> &field : fields) {
        std::visit([&](auto member) { object.insert(QLatin1String(field.key), json_fields::toValue(record.*member)); },
                   field.member);
    }
    return object;
}

/// Reads the keys of `fields` over `record`; a missing or mistyped one leaves its field alone.
template <typename Record>
void fieldsFromJson(std::span<const JsonField<Record>> fields, const QJsonObject &object, Record &record)
{
    for (const JsonField<Record> &field : fields) {
        std::visit([&](auto member) { json_fields::read(object.value(QLatin1String(field.key)), record.*member); },
                   field.member);
    }
}

} // namespace velmora
