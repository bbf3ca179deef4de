#include "text/syntax/json_reading.h"

namespace velmora {

QJsonValue JsonReading::value(const QString &key, QJsonValue::Type type)
{
    m_asked.insert(key);
    const QJsonValue found = m_object.value(key);
    if (!found.isUndefined() && found.type() != type)
        fail(QStringLiteral("\"%1\" is of the wrong type").arg(key));
    return found;
}

QString JsonReading::text(const QString &key)
{
    return value(key, QJsonValue::String).toString();
}

QChar JsonReading::character(const QString &key)
{
    const QString found = text(key);
    if (found.size() > 1)
        fail(QStringLiteral("\"%1\" is one character").arg(key));
    return found.isEmpty() ? QChar() : found.front();
}

bool JsonReading::flag(const QString &key)
{
    return value(key, QJsonValue::Bool).toBool();
}

int JsonReading::number(const QString &key, int largest)
{
    const QJsonValue found = value(key, QJsonValue::Double);
    const int number = found.toInt(found.isUndefined() ? 0 : -1);
    if (number < 0 || number > largest)
        fail(QStringLiteral("\"%1\" is out of range").arg(key));
    return number;
}

QStringList JsonReading::texts(const QString &key)
{
    if (m_object.value(key).isString())
        return {text(key)};
    QStringList found;
    const QJsonArray list = array(key);
    for (const QJsonValue &entry : list) {
        if (!entry.isString())
            fail(QStringLiteral("\"%1\" holds something that is no text").arg(key));
        found.append(entry.toString());
    }
    return found;
}

QStringList JsonReading::words(const QString &key)
{
    return text(key).split(u' ', Qt::SkipEmptyParts);
}

QJsonArray JsonReading::array(const QString &key)
{
    return value(key, QJsonValue::Array).toArray();
}

QJsonValue JsonReading::raw(const QString &key)
{
    m_asked.insert(key);
    return m_object.value(key);
}

JsonReading JsonReading::object(const QString &key)
{
    return {value(key, QJsonValue::Object).toObject(), m_where + u'/' + key};
}

void JsonReading::finish() const
{
    const QStringList all = m_object.keys();
    for (const QString &key : all) {
        if (!m_asked.contains(key))
            fail(QStringLiteral("unknown key \"%1\"").arg(key));
    }
}

} // namespace velmora
