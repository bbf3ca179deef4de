#include "app/desktop/explorer_menu.h"

#include "platform/user_registry.h"

#include <QDir>

namespace velmora {

namespace {

struct Verb {
    const char *key;
    const char16_t *label; ///< in Chinese whatever the interface's language
    const char *option;
};

constexpr char16_t leftLabel[] = u"用 Velmora 选为比较左侧";
constexpr char16_t rightLabel[] = u"用 Velmora 选为比较右侧";

constexpr Verb verbs[] = {
    {"Software\\Classes\\*\\shell\\VelmoraAsLeft", leftLabel, "--as-left"},
    {"Software\\Classes\\*\\shell\\VelmoraAsRight", rightLabel, "--as-right"},
    {"Software\\Classes\\Directory\\shell\\VelmoraAsLeft", leftLabel, "--as-left"},
    {"Software\\Classes\\Directory\\shell\\VelmoraAsRight", rightLabel, "--as-right"},
};

bool writeVerb(UserRegistry &registry, const Verb &verb, const QString &program)
{
    const QString key = QString::fromLatin1(verb.key);
    const QString command =
        QStringLiteral("\"%1\" %2 \"%3\"").arg(program, QLatin1String(verb.option), QStringLiteral("%1"));
    return registry.setString(key, {}, QString::fromUtf16(verb.label)) &&
           registry.setString(key, QStringLiteral("Icon"), program + QStringLiteral(",0")) &&
           registry.setString(key + QStringLiteral("\\command"), {}, command);
}

} // namespace

bool registerExplorerMenu(UserRegistry &registry, const QString &program)
{
    const QString native = QDir::toNativeSeparators(program);
    bool complete = true;
    for (const Verb &verb : verbs)
        complete = writeVerb(registry, verb, native) && complete;
    return complete;
}

bool unregisterExplorerMenu(UserRegistry &registry)
{
    for (const Verb &verb : verbs)
        registry.removeTree(QString::fromLatin1(verb.key));
    return true;
}

bool isExplorerMenuRegistered(const UserRegistry &registry)
{
    return registry.contains(QString::fromLatin1(verbs[0].key));
}

} // namespace velmora
