#pragma once

#include "session/list/row_tree.h"
#include "vfs/git/git_comparison.h"

#include <array>
#include <memory>
#include <vector>

namespace velmora {

inline constexpr int gitStatusCount = int(GitStatus::TypeChanged) + 1;

/// A set of statuses.
class GitStatusSet {
public:
    constexpr GitStatusSet() = default;
    [[nodiscard]] static constexpr GitStatusSet all() { return GitStatusSet((1U << unsigned(gitStatusCount)) - 1); }
    [[nodiscard]] static constexpr GitStatusSet of(GitStatus status) { return GitStatusSet(1U << unsigned(status)); }

    [[nodiscard]] constexpr bool has(GitStatus status) const { return meets(of(status)); }
    [[nodiscard]] constexpr bool meets(GitStatusSet other) const { return (m_bits & other.m_bits) != 0; }
    constexpr void set(GitStatus status, bool on)
    {
        m_bits = on ? m_bits | of(status).m_bits : m_bits & ~of(status).m_bits;
    }
    constexpr void add(GitStatusSet other) { m_bits |= other.m_bits; }
    friend bool operator==(const GitStatusSet &, const GitStatusSet &) = default;

private:
    explicit constexpr GitStatusSet(unsigned bits) : m_bits(bits) {}
    unsigned m_bits = 0;
};

/// A file or folder of the tree.
struct GitNode {
    qint32 change = -1; ///< its number in the comparison; -1 for a folder
    QString name;
    QString path;
    GitStatusSet within;  ///< of a folder: what its files are; of a file its own
    qint64 differing = 0; ///< files in it that differ
    GitLines lines;       ///< of all of them, as far as they are known
};

struct GitNodes {
    std::vector<GitNode> nodes;
    std::vector<quint16> depths;
};

/// The changes as a tree: folders before files. What was renamed or copied stands where it is now.
[[nodiscard]] GitNodes gitNodesOf(const GitComparison &comparison);

/// The two states side by side as a tree.
class GitRowTree final : public FixedRowTree {
public:
    enum Column { LeftName, LeftSize, Status, RightName, RightSize, Mode, Added, Removed, ColumnCount };

    GitRowTree(std::shared_ptr<const GitComparison> comparison, GitNodes nodes);

    [[nodiscard]] const GitNode &node(qint32 number) const { return m_nodes[std::size_t(number)]; }
    /// Null for a folder.
    [[nodiscard]] const GitChange *change(qint32 number) const;
    /// What a file is called on a side, or a folder; empty where it is not.
    [[nodiscard]] QString nameOn(qint32 number, Side side) const;
    [[nodiscard]] GitStatusSet statuses() const { return m_statuses; }
    /// `TreeModel::update` follows.
    void setStatuses(GitStatusSet statuses) { m_statuses = statuses; }
    /// Takes the same changes with more known of them. `TreeModel::refresh` follows.
    void takeDetails(std::shared_ptr<const GitComparison> comparison);

    [[nodiscard]] bool isShown(qint32 number) const override { return node(number).within.meets(m_statuses); }
    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 number, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 number, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 number) const override;
    [[nodiscard]] QVariant data(qint32 number, int column, int role) const override;
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;
    [[nodiscard]] bool holds(qint32 number, const QString &word) const override;

private:
    [[nodiscard]] QString lineText(qint32 number, qint64 GitLines::*count, QChar sign) const;
    [[nodiscard]] qint64 number(qint32 node, int column) const;
    void sumLines();

    std::shared_ptr<const GitComparison> m_comparison;
    std::vector<GitNode> m_nodes;
    GitStatusSet m_statuses = GitStatusSet::all();
};

} // namespace velmora
