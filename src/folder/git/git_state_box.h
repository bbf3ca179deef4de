#pragma once

#include "vfs/git/git_history.h"
#include "vfs/git/git_side.h"

#include <QComboBox>
#include <QStringList>

namespace velmora {

/// The field of one side of a Git comparison: a state that is written, or chosen from those of the repository, which
/// are also offered while one types.
class GitStateBox final : public QComboBox {
    Q_OBJECT
public:
    explicit GitStateBox(QWidget *parent = nullptr);

    /// Offers what the repository has, with `recent` states first, in the form of `gitSideText`.
    void setChoices(const GitRefs &refs, const QStringList &recent, bool hasWorkTree);

    /// Whether nothing is written.
    [[nodiscard]] bool isBlank() const { return currentText().trimmed().isEmpty(); }
    [[nodiscard]] GitSide state() const;
    /// Without a signal.
    void setState(const GitSide &state);

Q_SIGNALS:
    /// A person has chosen a state or pressed Return in one.
    void submitted();
    /// "Folder..." was chosen.
    void folderWanted();

private:
    void addHeading(const QString &text);
    void addState(const QString &shown, const QString &hint = {});
    void take(int row);

    QString m_before; ///< what was written before a row was chosen
};

} // namespace velmora
