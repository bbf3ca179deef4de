#include "folder_actions/actions_fixture.h"

#include "folder/engine/folder_engine.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QRegularExpression>

namespace velmora::test {

ActionsFixture::ActionsFixture(ScriptedLayer::Script script)
    : layer(std::move(script)), actions(window, layer, files.journalFolder())
{
    context.roots = localFolders(files.left(), files.right());
    context.options.compareBasis = qint32(CompareMethod::Binary);
    QObject::connect(&actions, &FolderActions::logLine, &window, [this](const QString &line) { lines.append(line); });
    QObject::connect(&actions, &FolderActions::statusChanged, &window, [this](const QString &text) { status = text; });
    QObject::connect(&actions, &FolderActions::finished, &window, [this](const QStringList &names) {
        ++finished;
        touched = names;
    });
    QObject::connect(&actions, &FolderActions::progressed, &window,
                     [this](const FolderActionProgress &progress) { sawCount = sawCount || progress.filesTotal > 0; });
    window.show();
}

void ActionsFixture::make(const char *words)
{
    files.make(words);
    compare();
}

void ActionsFixture::compare()
{
    context.items = compareFolderTree(FolderInput::of(context.roots, context.options));
    actions.setContext(context);
}

FolderSelection ActionsFixture::select(const QStringList &names, std::optional<Side> side) const
{
    FolderSelection selection{{}, side};
    for (const FolderDiffItem &item : context.items) {
        if (names.contains(item.name))
            selection.items.append(item);
    }
    if (selection.items.size() != names.size())
        qFatal("not all entries to be selected exist");
    return selection;
}

void ActionsFixture::carryOut(FolderCommand command, const FolderSelection &selection)
{
    lines.clear();
    touched.clear();
    actions.carryOut(command, selection);
    settle();
}

void ActionsFixture::carryOut(FolderCommand command, const QStringList &names, std::optional<Side> side)
{
    carryOut(command, select(names, side));
}

QDialog *ActionsFixture::opened() const
{
    for (QDialog *dialog : window.findChildren<QDialog *>()) {
        if (dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QStringList ActionsFixture::rows(int column) const
{
    QStringList texts;
    const QAbstractItemModel *model = opened()->findChild<QTreeView *>()->model();
    const auto add = [&](auto &&self, const QModelIndex &parent) -> void {
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, column, parent);
            texts.append(without(index.data().toString()));
            self(self, model->index(row, 0, parent));
        }
    };
    add(add, {});
    return texts;
}

void ActionsFixture::click(const char *button)
{
    auto *found = opened() ? opened()->findChild<QAbstractButton *>(QLatin1String(button)) : nullptr;
    QVERIFY2(found, opened() ? qPrintable(opened()->windowTitle() + rows().join(u'|') + rows(1).join(u'|')) : button);
    found->click();
    settle();
}

QStringList ActionsFixture::log() const
{
    static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d "));
    QStringList texts;
    for (const QString &line : lines)
        texts.append(without(QString(line).remove(time)));
    return texts;
}

QString ActionsFixture::asked() const
{
    return answers.asked().isEmpty() ? QString() : without(answers.asked().last().text);
}

QString ActionsFixture::askedTitle() const
{
    return answers.asked().isEmpty() ? QString() : answers.asked().last().title;
}

QString ActionsFixture::without(QString text) const
{
    text.replace(QDir::toNativeSeparators(files.path(QString())), QString());
    return QDir::fromNativeSeparators(text);
}

QString ActionsFixture::picture(const char *relative) const
{
    return files.picture(relative).join(u' ');
}

bool ActionsFixture::has(const char *entry) const
{
    return files.picture().contains(QLatin1String(entry));
}

void ActionsFixture::settle()
{
    QTRY_VERIFY_WITH_TIMEOUT(!actions.isRunning(), 20'000);
}

} // namespace velmora::test
