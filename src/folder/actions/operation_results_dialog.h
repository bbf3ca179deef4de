#pragma once

#include "folder/actions/problem_list.h"

#include <QDialog>

namespace velmora {

/// Tells of everything that went wrong in one command, with the reasons. Opened with open().
class OperationResultsDialog final : public QDialog {
    Q_OBJECT
public:
    OperationResultsDialog(const QString &title, const QString &heading, const QList<ActionProblem> &problems,
                           QWidget *parent = nullptr);

private:
    /// The whole list, one line for each entry.
    void copyAll() const;

    QList<ActionProblem> m_problems;
};

} // namespace velmora
