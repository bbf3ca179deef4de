#include "folder/git/git_state_box.h"

#include "folder/git/git_words.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDateTime>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <optional>

namespace velmora {

namespace {

QString headingOf(GitRef::Kind kind)
{
    switch (kind) {
    case GitRef::Kind::Branch:
        return Velmora::tr("Branches");
    case GitRef::Kind::Tag:
        return Velmora::tr("Tags");
    case GitRef::Kind::Stash:
        return Velmora::tr("Stashes");
    case GitRef::Kind::RemoteBranch:
        break;
    }
    return Velmora::tr("Branches of other repositories");
}

} // namespace

GitStateBox::GitStateBox(QWidget *parent) : QComboBox(parent)
{
    constexpr int leastLetters = 10;
    setEditable(true);
    setInsertPolicy(NoInsert);
    setMaxVisibleItems(24);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(leastLetters);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    lineEdit()->setPlaceholderText(Velmora::tr("Branch, tag, commit, ..."));
    completer()->setFilterMode(Qt::MatchContains);
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    connect(this, &QComboBox::activated, this, &GitStateBox::take);
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
        // The field takes Return for itself, and the offered names would stay over what is shown then.
        completer()->popup()->hide();
        Q_EMIT submitted();
    });
    setChoices({}, {}, true);
}

void GitStateBox::setChoices(const GitRefs &refs, const QStringList &recent, bool hasWorkTree)
{
    const QSignalBlocker silent(this);
    const QString written = currentText();
    clear();
    if (hasWorkTree) {
        addState(gitSideShown({GitSide::Kind::WorkTree}), Velmora::tr("The files as they are on the disk"));
        addState(gitSideShown({GitSide::Kind::Index}), Velmora::tr("What the next commit would hold"));
    }
    addState(QStringLiteral("HEAD"), Velmora::tr("The commit that is checked out"));
    addItem(Velmora::tr("Folder..."));
    setItemData(count() - 1, Velmora::tr("Any folder of the disk"), Qt::ToolTipRole);
    setItemData(count() - 1, true, Qt::UserRole);
    if (!recent.isEmpty())
        addHeading(Velmora::tr("Recent"));
    for (const QString &state : recent)
        addState(gitSideShown(gitSideOf(state)));
    std::optional<GitRef::Kind> kind;
    for (const GitRef &ref : refs.refs) {
        if (kind != ref.kind)
            addHeading(headingOf(ref.kind));
        kind = ref.kind;
        const QString when = QLocale().toString(QDateTime::fromMSecsSinceEpoch(ref.timeMs), QLocale::ShortFormat);
        addState(ref.name, ref.subject.isEmpty() ? when : QStringLiteral("%1\n%2").arg(ref.subject, when));
    }
    setCurrentIndex(-1);
    setEditText(written);
}

void GitStateBox::addHeading(const QString &text)
{
    addItem(text);
    auto *items = qobject_cast<QStandardItemModel *>(model());
    QStandardItem *item = items ? items->item(count() - 1) : nullptr;
    if (!item)
        return;
    item->setFlags(Qt::NoItemFlags);
    QFont bold = font();
    bold.setBold(true);
    item->setFont(bold);
}

void GitStateBox::addState(const QString &shown, const QString &hint)
{
    addItem(shown);
    setItemData(count() - 1, plainToolTip(hint), Qt::ToolTipRole);
}

void GitStateBox::take(int row)
{
    if (!itemData(row, Qt::UserRole).toBool()) {
        m_before = currentText();
        Q_EMIT submitted();
        return;
    }
    setEditText(m_before);
    Q_EMIT folderWanted();
}

GitSide GitStateBox::state() const
{
    return gitSideWritten(currentText());
}

void GitStateBox::setState(const GitSide &state)
{
    const QSignalBlocker silent(this);
    setCurrentIndex(-1);
    setEditText(gitSideShown(state));
    m_before = currentText();
}

} // namespace velmora
