#include "text/syntax/syntax_library.h"

#include "text/syntax/syntax_reader.h"

#include <QDir>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace velmora {

namespace {

// First lines are matched against masks whose cost is the product of both lengths.
constexpr qsizetype firstLineLength = 256;

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SyntaxLibrary::SyntaxLibrary(const QString &folder)
{
    const QDir directory(folder);
    const QStringList files = directory.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    QHash<QString, QByteArray> texts;
    for (const QString &file : files)
        texts.insert(file, readAll(directory.filePath(file)));
    QHash<QString, QByteArray> byName;
    for (const QByteArray &text : std::as_const(texts))
        byName.insert(QJsonDocument::fromJson(text).object().value(QStringLiteral("name")).toString(), text);

    for (const QString &file : files) {
        SyntaxReadResult read =
            readSyntaxDefinition(texts.value(file), [&byName](const QString &name) { return byName.value(name); });
        if (read.definition)
            m_definitions.push_back(std::move(read.definition));
        else
            m_errors.append(file + QStringLiteral(": ") + read.error);
    }
    for (const auto &definition : m_definitions)
        m_names.append(definition->name);
    m_names.sort(Qt::CaseInsensitive);
}

const SyntaxLibrary &SyntaxLibrary::bundled()
{
    static const SyntaxLibrary library(QStringLiteral(":/syntax"));
    return library;
}

std::shared_ptr<const SyntaxDefinition> SyntaxLibrary::named(const QString &name) const
{
    const auto found = std::find_if(m_definitions.begin(), m_definitions.end(),
                                    [&name](const auto &definition) { return definition->name == name; });
    return found != m_definitions.end() ? *found : nullptr;
}

std::shared_ptr<const SyntaxDefinition> SyntaxLibrary::detect(const QString &fileName, QStringView firstLine) const
{
    const QStringView line = firstLine.left(firstLineLength).trimmed();
    const auto find = [this](auto test) -> std::shared_ptr<const SyntaxDefinition> {
        const auto found = std::find_if(m_definitions.begin(), m_definitions.end(),
                                        [&test](const auto &definition) { return test(*definition); });
        return found != m_definitions.end() ? *found : nullptr;
    };
    auto byName = find([&](const SyntaxDefinition &definition) {
        return definition.files.matches(fileName) && !definition.otherFirstLines.matches(line);
    });
    if (byName || line.isEmpty())
        return byName;
    return find([&](const SyntaxDefinition &definition) { return definition.firstLines.matches(line); });
}

} // namespace velmora
