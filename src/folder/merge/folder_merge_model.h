#pragma once

#include "folder/operations/merge_run.h"

#include <QAbstractTableModel>

namespace velmora {

/// The files of a folder merge with what goes into the merged tree.
class FolderMergeModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Path, BaseSize, LeftSize, RightSize, Status, Action, ColumnCount };
    /// What is shown, in the order of the list that it is chosen from.
    enum class View { All, Conflicts, Changed, Added, Deleted };

    using QAbstractTableModel::QAbstractTableModel;

    void setFiles(const QList<FolderMergeFile> &files);
    void setView(View view);

    [[nodiscard]] const QList<FolderMergeFile> &files() const { return m_files; }
    [[nodiscard]] const MergeSources &sources() const { return m_sources; }
    [[nodiscard]] const FolderMergeFile &fileAt(int row) const { return m_files.at(m_rows[std::size_t(row)]); }
    [[nodiscard]] qsizetype indexAt(int row) const { return m_rows[std::size_t(row)]; }
    /// A conflict for which nobody has chosen a version.
    [[nodiscard]] bool isOpenAt(int row) const;
    /// A merged text is taken for it.
    [[nodiscard]] bool hasTextAt(int row) const
    {
        return m_sources[std::size_t(indexAt(row))] == MergedFileSource::Text;
    }
    /// The first row below `folder` and the one behind the last.
    [[nodiscard]] std::pair<int, int> rowsBelow(const QString &folder) const;
    [[nodiscard]] qint64 openConflicts() const;

    /// Chooses a version for these rows, as far as it has the file.
    void take(const QModelIndexList &rows, MergeVersion version);
    /// Has these files not be written.
    void leaveOut(const QModelIndexList &rows);
    /// Has the merged texts of these files be taken; indexes into `files`.
    void takeTexts(const std::vector<qsizetype> &files);
    /// Goes back to what the statuses say.
    void takeAsFound(const QModelIndexList &rows);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void choicesChanged();

private:
    void choose(qsizetype file, MergedFileSource source, bool byHand);
    void tellChoices();
    [[nodiscard]] bool shows(const FolderMergeFile &file) const;
    [[nodiscard]] QString actionText(qsizetype file) const;
    void fillRows();

    QList<FolderMergeFile> m_files;
    MergeSources m_sources;
    std::vector<bool> m_byHand; ///< of each file whether a person has chosen
    std::vector<qsizetype> m_rows;
    View m_view = View::All;
};

} // namespace velmora
