#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>
#include <QStringList>

#include <stdexcept>

namespace velmora {

/// What is wrong with a definition. Thrown and caught inside of the reader only.
class SyntaxError final : public std::runtime_error {
public:
    SyntaxError(const QString &where, const QString &what)
        : std::runtime_error((where + QStringLiteral(": ") + what).toStdString())
    {}
};

/// A JSON object that is read key by key. A value of the wrong type is an error, and so is a key that nobody asked for.
class JsonReading {
public:
    JsonReading(QJsonObject object, QString where) : m_object(std::move(object)), m_where(std::move(where)) {}

    [[nodiscard]] const QString &where() const noexcept { return m_where; }
    [[noreturn]] void fail(const QString &what) const { throw SyntaxError(m_where, what); }
    [[nodiscard]] bool has(const QString &key) const { return m_object.contains(key); }

    /// Empty, false and 0 stand for keys that are not there.
    [[nodiscard]] QString text(const QString &key);
    [[nodiscard]] QChar character(const QString &key);
    [[nodiscard]] bool flag(const QString &key);
    [[nodiscard]] int number(const QString &key, int largest);
    /// A string stands for a list of one.
    [[nodiscard]] QStringList texts(const QString &key);
    /// A string that separates its words by blanks.
    [[nodiscard]] QStringList words(const QString &key);
    [[nodiscard]] QJsonArray array(const QString &key);
    [[nodiscard]] JsonReading object(const QString &key);
    [[nodiscard]] QJsonValue raw(const QString &key);
    [[nodiscard]] QStringList keys() const { return m_object.keys(); }

    /// Fails when a key was not asked for.
    void finish() const;

private:
    [[nodiscard]] QJsonValue value(const QString &key, QJsonValue::Type type);

    QJsonObject m_object;
    QString m_where;
    QSet<QString> m_asked;
};

} // namespace velmora
