#include "app/desktop/desktop_menu.h"

#include <QFile>
#include <QRegularExpression>

namespace velmora {

namespace {

/// One of the two entries, in each language that a desktop may be set to: desktops choose by their own language, not by
/// that of this program.
struct Verb {
    const char *id;
    const char *option;
    const char *english;
    const char16_t *chinese;
};

constexpr Verb verbs[] = {
    {"left", "--as-left", "Velmora: set as left side", u"用 Velmora 选为比较左侧"},
    {"right", "--as-right", "Velmora: set as right side", u"用 Velmora 选为比较右侧"},
};

QString names(const Verb &verb)
{
    return QStringLiteral("Name=%1\nName[zh_CN]=%2\nIcon=velmora\n")
        .arg(QLatin1String(verb.english), QString::fromUtf16(verb.chinese));
}

QString command(const QString &program, const Verb &verb, const char *code)
{
    return QStringLiteral("Exec=%1\n")
        .arg(desktopCommand({program, QString::fromLatin1(verb.option)}, QString::fromLatin1(code)));
}

/// For Dolphin and Konqueror, which want the user's own to be executable.
DesktopFile dolphinMenu(const QString &program)
{
    QString text = QStringLiteral("[Desktop Entry]\n"
                                  "Type=Service\n"
                                  "X-KDE-ServiceTypes=KonqPopupMenu/Plugin\n"
                                  "MimeType=application/octet-stream;inode/directory;\n"
                                  "X-KDE-RequiredNumberOfUrls=1\n"
                                  "Actions=left;right;\n");
    for (const Verb &verb : verbs) {
        text += QStringLiteral("\n[Desktop Action %1]\n").arg(QLatin1String(verb.id)) + names(verb) +
                command(program, verb, "%f");
    }
    return {QStringLiteral("kio/servicemenus/velmora.desktop"), text.toUtf8(), true};
}

/// For Nautilus, which shows the file's name. It starts a script in the folder that it shows, with names from there.
DesktopFile nautilusScript(const QString &program, const Verb &verb)
{
    const QString text = QStringLiteral("#!/bin/sh\n[ $# -gt 0 ] || exit 0\nexec %1 %2 \"$1\"\n")
                             .arg(shellArgument(program), QLatin1String(verb.option));
    // Not every file system takes a colon.
    const QString name = QString::fromLatin1(verb.english).replace(QLatin1String(": "), QLatin1String(" - "));
    return {QStringLiteral("nautilus/scripts/") + name, text.toUtf8(), true};
}

/// For Nemo. The angle brackets name a script beside the entry, as Nemo knows no quoting of a program's path.
QList<DesktopFile> nemoAction(const QString &program, const Verb &verb)
{
    const QString script = QStringLiteral("velmora-%1.sh").arg(QLatin1String(verb.id));
    const QString entry = QStringLiteral("[Nemo Action]\n") +
                          names(verb).replace(QLatin1String("Icon="), QLatin1String("Icon-Name=")) +
                          QStringLiteral("Exec=<%1 %F>\nSelection=s\nExtensions=any;\nQuote=double\n").arg(script);
    const QString shell =
        QStringLiteral("#!/bin/sh\nexec %1 %2 \"$1\"\n").arg(shellArgument(program), QLatin1String(verb.option));
    return {{QStringLiteral("nemo/actions/velmora-%1.nemo_action").arg(QLatin1String(verb.id)), entry.toUtf8()},
            {QStringLiteral("nemo/actions/") + script, shell.toUtf8(), true}};
}

/// For PCManFM, and for Caja with its actions extension.
DesktopFile fileManagerAction(const QString &program, const Verb &verb)
{
    const QString text = QStringLiteral("[Desktop Entry]\nType=Action\n") + names(verb) +
                         QStringLiteral("Profiles=one;\n\n[X-Action-Profile one]\nMimeTypes=all/all;\n"
                                        "SelectionCount==1\n") +
                         command(program, verb, "%f");
    return {QStringLiteral("file-manager/actions/velmora-%1.desktop").arg(QLatin1String(verb.id)), text.toUtf8()};
}

QByteArray resource(const char *path)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The entry that packages install, for a program at a place of its own.
DesktopFile applicationEntry(const QString &program)
{
    static const QRegularExpression places(QStringLiteral("^(Exec|TryExec)=.*\n"), QRegularExpression::MultilineOption);
    QString text = QString::fromUtf8(resource(":/desktop/velmora.desktop"));
    text.remove(places);
    const QString header = QStringLiteral("[Desktop Entry]\n");
    text.insert(text.indexOf(header) + header.size(),
                QStringLiteral("Exec=%1\n").arg(desktopCommand({program}, QStringLiteral("%F"))));
    return {QStringLiteral("applications/velmora.desktop"), text.toUtf8()};
}

/// A second one, as a workspace is named by a switch.
DesktopFile workspaceEntry(const QString &program)
{
    const QString text =
        QStringLiteral("[Desktop Entry]\nType=Application\nName=Velmora\nIcon=velmora\nNoDisplay=true\n"
                       "MimeType=application/x-velmora-workspace;\nExec=%1\n")
            .arg(desktopCommand({program, QStringLiteral("--workspace")}, QStringLiteral("%f")));
    return {QStringLiteral("applications/velmora-workspace.desktop"), text.toUtf8()};
}

} // namespace

QList<DesktopFile> desktopMenuFiles(const QString &program)
{
    QList<DesktopFile> files = {dolphinMenu(program)};
    for (const Verb &verb : verbs) {
        files.append(nautilusScript(program, verb));
        files += nemoAction(program, verb);
        files.append(fileManagerAction(program, verb));
    }
    files.append(applicationEntry(program));
    files.append(workspaceEntry(program));
    files.append({QStringLiteral("mime/packages/velmora.xml"), resource(":/desktop/velmora.xml")});
    files.append({QStringLiteral("icons/hicolor/256x256/apps/velmora.png"), resource(":/icons/app.png")});
    return files;
}

} // namespace velmora
