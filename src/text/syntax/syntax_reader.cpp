#include "text/syntax/syntax_reader.h"

#include "text/syntax/json_reading.h"

#include <QHash>
#include <QJsonDocument>

#include <limits>
#include <utility>

namespace velmora {

namespace {

constexpr int mostContexts = 1000;
constexpr int deepestNesting = 16;

template <typename Value>
using Names = QHash<QString, Value>;

const Names<SyntaxRole> &roleNames()
{
    static const Names<SyntaxRole> names = {
        {QStringLiteral("text"), SyntaxRole::Text},
        {QStringLiteral("comment"), SyntaxRole::Comment},
        {QStringLiteral("string"), SyntaxRole::String},
        {QStringLiteral("escape"), SyntaxRole::Escape},
        {QStringLiteral("number"), SyntaxRole::Number},
        {QStringLiteral("keyword"), SyntaxRole::Keyword},
        {QStringLiteral("type"), SyntaxRole::Type},
        {QStringLiteral("constant"), SyntaxRole::Constant},
        {QStringLiteral("function"), SyntaxRole::Function},
        {QStringLiteral("preprocessor"), SyntaxRole::Preprocessor},
        {QStringLiteral("variable"), SyntaxRole::Variable},
        {QStringLiteral("tag"), SyntaxRole::Tag},
        {QStringLiteral("attribute"), SyntaxRole::Attribute},
        {QStringLiteral("heading"), SyntaxRole::Heading},
        {QStringLiteral("inserted"), SyntaxRole::Inserted},
        {QStringLiteral("deleted"), SyntaxRole::Deleted},
    };
    return names;
}

const Names<SyntaxRule::Place> &placeNames()
{
    static const Names<SyntaxRule::Place> names = {
        {QStringLiteral("anywhere"), SyntaxRule::Place::Anywhere},
        {QStringLiteral("lineStart"), SyntaxRule::Place::LineStart},
        {QStringLiteral("column"), SyntaxRule::Place::Column},
        {QStringLiteral("wordStart"), SyntaxRule::Place::WordStart},
        {QStringLiteral("behindBlank"), SyntaxRule::Place::BehindBlank},
        {QStringLiteral("operand"), SyntaxRule::Place::Operand},
    };
    return names;
}

const Names<SyntaxRule::Next> &nextNames()
{
    static const Names<SyntaxRule::Next> names = {
        {QStringLiteral("anything"), SyntaxRule::Next::Anything},
        {QStringLiteral("letter"), SyntaxRule::Next::Letter},
        {QStringLiteral("word"), SyntaxRule::Next::WordCharacter},
        {QStringLiteral("noWord"), SyntaxRule::Next::NoWordCharacter},
        {QStringLiteral("blank"), SyntaxRule::Next::Blank},
        {QStringLiteral("digit"), SyntaxRule::Next::Digit},
    };
    return names;
}

template <typename Value>
Value named(JsonReading &from, const QString &key, const Names<Value> &names, Value usual)
{
    const QString name = from.text(key);
    if (name.isEmpty())
        return usual;
    const auto found = names.constFind(name);
    if (found == names.constEnd())
        from.fail(QStringLiteral("\"%1\" is no value of \"%2\"").arg(name, key));
    return *found;
}

void include(AsciiSet &set, QStringView characters)
{
    for (const QChar unit : characters) {
        if (unit.unicode() < set.size())
            set.set(unit.unicode());
    }
}

void include(AsciiSet &set, QStringView characters, bool ignoresCase)
{
    include(set, characters);
    if (ignoresCase) {
        include(set, characters.toString().toLower());
        include(set, characters.toString().toUpper());
    }
}

AsciiSet lettersAndUnderscore()
{
    AsciiSet set;
    for (char16_t letter = u'a'; letter <= u'z'; ++letter)
        set.set(letter).set(std::size_t(letter - u'a' + u'A'));
    return set.set(u'_');
}

JsonReading parse(const QByteArray &json, const QString &where)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject())
        throw SyntaxError(where, error.error == QJsonParseError::NoError ? QStringLiteral("not a JSON object")
                                                                         : error.errorString());
    return {document.object(), where};
}

/// Builds one definition; embedded languages are built into it by readers of their own that share the definition.
class DefinitionReader {
public:
    DefinitionReader(SyntaxDefinition &definition, const SyntaxTexts &others, QHash<QString, int> &languages)
        : m_definition(definition), m_others(others), m_languages(languages)
    {}

    /// The number of the set that holds outside of all spans.
    int readLanguage(JsonReading &from);
    void readHead(JsonReading &from);

private:
    int readSet(JsonReading &from, bool isMain);
    int namedSet(const JsonReading &from, const QString &name);
    int embeddedSet(const JsonReading &from, const QString &name);
    void readWords(JsonReading &from, SyntaxSet &set);
    void readRule(JsonReading from, SyntaxSet &set);
    void readKind(JsonReading &from, SyntaxRule &rule);
    void addRule(const JsonReading &from, SyntaxSet &set, SyntaxRule rule);
    /// The context of a rule or of what follows it, -1 when it has no span.
    int readSpan(JsonReading &from, const SyntaxRule &rule);
    int readContents(JsonReading &from);
    int addContext(const JsonReading &from, const SyntaxContext &context);

    SyntaxDefinition &m_definition;
    const SyntaxTexts &m_others;
    QHash<QString, int> &m_languages; ///< main sets by name, -1 while they are being read
    QHash<QString, int> m_named;
    AsciiSet m_wordStarts = lettersAndUnderscore();
    AsciiSet m_wordCharacters = lettersAndUnderscore();
    bool m_ignoresCase = false;
    int m_depth = 0;
};

void DefinitionReader::readHead(JsonReading &from)
{
    m_definition.name = from.text(QStringLiteral("name"));
    if (m_definition.name.isEmpty())
        from.fail(QStringLiteral("has no name"));
    m_definition.indentationHasMeaning = from.flag(QStringLiteral("indentation"));
    m_definition.files = WildcardList(from.words(QStringLiteral("files")));
    m_definition.firstLines = WildcardList(from.texts(QStringLiteral("firstLines")));
    m_definition.otherFirstLines = WildcardList(from.texts(QStringLiteral("otherFirstLines")));
}

int DefinitionReader::readLanguage(JsonReading &from)
{
    // What files the language is found in does not matter where it is embedded.
    for (const char *key : {"name", "indentation", "files", "firstLines", "otherFirstLines"})
        static_cast<void>(from.raw(QLatin1String(key)));
    m_ignoresCase = from.flag(QStringLiteral("ignoreCase"));
    include(m_wordStarts, from.text(QStringLiteral("wordStarts")));
    include(m_wordCharacters, u"0123456789");
    include(m_wordCharacters, from.text(QStringLiteral("wordCharacters")));
    m_wordCharacters |= m_wordStarts;
    JsonReading sets = from.object(QStringLiteral("sets"));
    const QStringList names = sets.keys();
    for (const QString &name : names)
        m_named.insert(name, -1);
    // Sets refer to each other, so that all have their numbers before the first is read.
    const int main = int(m_definition.sets.size());
    m_definition.sets.emplace_back();
    m_named.insert(QStringLiteral("main"), main);
    for (const QString &name : names) {
        m_named.insert(name, int(m_definition.sets.size()));
        m_definition.sets.emplace_back();
    }
    for (const QString &name : names) {
        JsonReading set = sets.object(name);
        const int number = readSet(set, false);
        m_definition.sets[std::size_t(m_named.value(name))] = m_definition.sets[std::size_t(number)];
    }
    const int number = readSet(from, true);
    m_definition.sets[std::size_t(main)] = m_definition.sets[std::size_t(number)];
    return main;
}

int DefinitionReader::namedSet(const JsonReading &from, const QString &name)
{
    const int number = m_named.value(name, -1);
    if (number < 0)
        from.fail(QStringLiteral("there is no set \"%1\"").arg(name));
    return number;
}

int DefinitionReader::embeddedSet(const JsonReading &from, const QString &name)
{
    const auto known = m_languages.constFind(name);
    if (known != m_languages.constEnd()) {
        if (*known < 0)
            from.fail(QStringLiteral("\"%1\" contains itself").arg(name));
        return *known;
    }
    const QByteArray text = m_others ? m_others(name) : QByteArray();
    if (text.isEmpty())
        from.fail(QStringLiteral("there is no language \"%1\"").arg(name));
    m_languages.insert(name, -1);
    JsonReading json = parse(text, name);
    DefinitionReader reader(m_definition, m_others, m_languages);
    const int number = reader.readLanguage(json);
    m_languages.insert(name, number);
    return number;
}

int DefinitionReader::readSet(JsonReading &from, bool isMain)
{
    if (++m_depth > deepestNesting)
        from.fail(QStringLiteral("nested too deep"));
    SyntaxSet set;
    set.wordCharacters = m_wordCharacters;
    readWords(from, set);
    if (isMain)
        set.wordStarts = m_wordStarts;
    const QJsonArray rules = from.array(QStringLiteral("rules"));
    for (qsizetype k = 0; k < rules.size(); ++k) {
        const QString where = QStringLiteral("%1/rules[%2]").arg(from.where()).arg(k);
        if (!rules.at(k).isObject())
            throw SyntaxError(where, QStringLiteral("not an object"));
        readRule(JsonReading(rules.at(k).toObject(), where), set);
    }
    from.finish();
    --m_depth;
    m_definition.sets.push_back(std::move(set));
    return int(m_definition.sets.size()) - 1;
}

void DefinitionReader::readWords(JsonReading &from, SyntaxSet &set)
{
    set.words.setIgnoresCase(m_ignoresCase);
    JsonReading words = from.object(QStringLiteral("words"));
    const QStringList roles = words.keys();
    for (const QString &role : roles) {
        if (!roleNames().contains(role))
            words.fail(QStringLiteral("unknown role \"%1\"").arg(role));
        const QStringList list = words.words(role);
        for (const QString &word : list)
            set.words.add(word, roleNames().value(role));
    }
    set.calls = named(from, QStringLiteral("calls"), roleNames(), SyntaxRole::Text);
    set.keys = named(from, QStringLiteral("keys"), roleNames(), SyntaxRole::Text);
    set.otherWords = named(from, QStringLiteral("otherWords"), roleNames(), SyntaxRole::Text);
    if (!roles.isEmpty() || set.calls != SyntaxRole::Text || set.keys != SyntaxRole::Text ||
        set.otherWords != SyntaxRole::Text)
        set.wordStarts = m_wordStarts;
    set.numbers = from.flag(QStringLiteral("numbers"));
    set.numberSigns = from.text(QStringLiteral("numberSigns"));
    set.numberSeparator = from.character(QStringLiteral("numberSeparator"));
}

void DefinitionReader::readRule(JsonReading from, SyntaxSet &set)
{
    SyntaxRule rule;
    rule.ignoresCase = m_ignoresCase || from.flag(QStringLiteral("ignoreCase"));
    rule.place = named(from, QStringLiteral("at"), placeNames(), SyntaxRule::Place::Anywhere);
    rule.column = from.number(QStringLiteral("column"), std::numeric_limits<qint16>::max());
    rule.next = named(from, QStringLiteral("next"), nextNames(), SyntaxRule::Next::Anything);
    rule.takesWord = from.flag(QStringLiteral("withWord"));
    rule.takesCharacter = from.flag(QStringLiteral("withCharacter"));
    rule.takesName = from.flag(QStringLiteral("withName"));
    rule.keepsLineStart = from.flag(QStringLiteral("keepsLineStart"));
    rule.role = named(from, QStringLiteral("role"), roleNames(), SyntaxRole::Text);
    rule.mustClose = from.flag(QStringLiteral("mustClose"));
    rule.atMost = from.number(QStringLiteral("atMost"), 1000);
    rule.before = from.character(QStringLiteral("before"));
    readKind(from, rule);

    const QStringList starts = from.texts(QStringLiteral("start"));
    QStringList prefixes = from.words(QStringLiteral("prefixes"));
    const bool nests = from.has(QStringLiteral("nested"));
    if (nests && (starts.size() != 1 || !prefixes.isEmpty()))
        from.fail(QStringLiteral("a nested span has one start"));
    if (starts.isEmpty() && rule.kind != SyntaxRule::Kind::UpTo)
        from.fail(QStringLiteral("has no start"));
    rule.start = starts.value(0);
    rule.context = readSpan(from, rule);
    from.finish();
    const bool needsSpan = rule.mustClose || !rule.before.isNull() || rule.kind == SyntaxRule::Kind::Delimited;
    if (needsSpan && (rule.context < 0 || m_definition.contexts[std::size_t(rule.context)].end.isEmpty()))
        from.fail(QStringLiteral("has no end"));

    if (prefixes.isEmpty())
        prefixes.append(QString());
    if (starts.isEmpty())
        addRule(from, set, rule);
    for (const QString &start : starts) {
        for (const QString &prefix : std::as_const(prefixes)) {
            rule.start = prefix + start;
            addRule(from, set, rule);
        }
    }
}

void DefinitionReader::readKind(JsonReading &from, SyntaxRule &rule)
{
    if (from.has(QStringLiteral("delimiter"))) {
        rule.kind = SyntaxRule::Kind::Delimited;
        JsonReading delimiter = from.object(QStringLiteral("delimiter"));
        rule.delimiterCharacters = delimiter.text(QStringLiteral("characters"));
        rule.open = delimiter.text(QStringLiteral("open"));
        delimiter.finish();
    } else if (from.flag(QStringLiteral("hereDocument"))) {
        rule.kind = SyntaxRule::Kind::HereDocument;
    } else if (from.flag(QStringLiteral("indented"))) {
        rule.kind = SyntaxRule::Kind::Indented;
    } else if (from.has(QStringLiteral("upTo"))) {
        rule.kind = SyntaxRule::Kind::UpTo;
        rule.stops = from.text(QStringLiteral("upTo"));
        rule.stopsBeforeBlank = from.flag(QStringLiteral("upToBeforeBlank"));
        if (rule.stops.isEmpty())
            from.fail(QStringLiteral("\"upTo\" names no character"));
    }
}

void DefinitionReader::addRule(const JsonReading &from, SyntaxSet &set, SyntaxRule rule)
{
    constexpr std::size_t mostRules = 2000;
    if (set.rules.size() >= mostRules)
        from.fail(QStringLiteral("too many rules"));
    const auto index = quint16(set.rules.size());
    if (rule.start.isEmpty() && rule.kind == SyntaxRule::Kind::UpTo) {
        set.atLineStart.push_back(index);
    } else {
        if (rule.start.isEmpty() || rule.start.front().unicode() >= set.byStart.size())
            from.fail(QStringLiteral("a start begins with an ASCII character"));
        AsciiSet first;
        include(first, QStringView(rule.start).first(1), rule.ignoresCase);
        for (std::size_t unit = 0; unit < first.size(); ++unit) {
            if (first.test(unit))
                set.byStart[unit].push_back(index);
        }
    }
    set.rules.push_back(std::move(rule));
}

int DefinitionReader::readSpan(JsonReading &from, const SyntaxRule &rule)
{
    SyntaxContext span;
    span.edge = rule.role;
    span.role = named(from, QStringLiteral("inside"), roleNames(), rule.role);
    span.end = from.text(QStringLiteral("to"));
    span.hasOwnEnd = rule.kind == SyntaxRule::Kind::Delimited;
    span.ignoresCase = rule.ignoresCase;
    span.isHereDocument = rule.kind == SyntaxRule::Kind::HereDocument;
    span.isIndented = rule.kind == SyntaxRule::Kind::Indented;
    const bool toLineEnd = from.flag(QStringLiteral("toLineEnd"));
    span.endsAtLineStart = from.flag(QStringLiteral("endsAtLineStart"));
    span.multiline = from.flag(QStringLiteral("multiline")) || span.isHereDocument || span.isIndented;
    span.doubled = from.flag(QStringLiteral("doubled"));
    span.nested = from.flag(QStringLiteral("nested"));
    span.isEmbedded = from.has(QStringLiteral("language"));
    span.start = rule.start;
    span.escape = from.character(QStringLiteral("escape"));
    span.continued = from.character(QStringLiteral("continued"));
    span.set = readContents(from);
    if (from.has(QStringLiteral("then"))) {
        JsonReading then = from.object(QStringLiteral("then"));
        SyntaxRule next;
        next.ignoresCase = rule.ignoresCase;
        next.role = named(then, QStringLiteral("role"), roleNames(), SyntaxRole::Text);
        span.then = readSpan(then, next);
        then.finish();
    }
    const bool isSpan = !span.end.isEmpty() || toLineEnd || span.isHereDocument || span.isIndented;
    if (!isSpan)
        return -1;
    if (span.isEmbedded && span.end.isEmpty())
        from.fail(QStringLiteral("an embedded language needs an end"));
    return addContext(from, span);
}

int DefinitionReader::readContents(JsonReading &from)
{
    if (from.has(QStringLiteral("language")))
        return embeddedSet(from, from.text(QStringLiteral("language")));
    if (from.has(QStringLiteral("set")))
        return namedSet(from, from.text(QStringLiteral("set")));
    QJsonObject contents;
    for (const char *key : {"rules", "words", "calls", "keys", "otherWords", "numbers"}) {
        const QString name = QLatin1String(key);
        if (from.has(name))
            contents.insert(name, from.raw(name));
    }
    JsonReading inside(contents, from.where());
    return readSet(inside, false);
}

int DefinitionReader::addContext(const JsonReading &from, const SyntaxContext &context)
{
    if (m_definition.contexts.size() >= mostContexts)
        from.fail(QStringLiteral("too many spans"));
    m_definition.contexts.push_back(context);
    return int(m_definition.contexts.size()) - 1;
}

/// Sets each context's `stops`, once all sets are complete.
void findStops(SyntaxDefinition &definition)
{
    for (SyntaxContext &context : definition.contexts) {
        const SyntaxSet &set = definition.sets[std::size_t(context.set)];
        for (std::size_t unit = 0; unit < set.byStart.size(); ++unit) {
            if (!set.byStart[unit].empty())
                context.stops.set(unit);
        }
        context.stops |= set.wordStarts;
        if (set.numbers)
            include(context.stops, QStringLiteral("0123456789.") + set.numberSigns);
        include(context.stops, QStringView(context.end).left(1), context.ignoresCase);
        if (!context.escape.isNull())
            include(context.stops, QString(context.escape));
        if (context.nested)
            include(context.stops, QStringView(context.start).left(1), context.ignoresCase);
    }
}

} // namespace

SyntaxReadResult readSyntaxDefinition(const QByteArray &json, const SyntaxTexts &others)
{
    try {
        auto definition = std::make_shared<SyntaxDefinition>();
        definition->contexts.emplace_back();
        definition->contexts.front().multiline = true;
        JsonReading from = parse(json, QStringLiteral("definition"));
        QHash<QString, int> languages;
        DefinitionReader reader(*definition, others, languages);
        reader.readHead(from);
        languages.insert(definition->name, -1);
        definition->contexts.front().set = reader.readLanguage(from);
        findStops(*definition);
        return {std::move(definition), {}};
    } catch (const SyntaxError &error) {
        return {nullptr, QString::fromUtf8(error.what())};
    }
}

} // namespace velmora
