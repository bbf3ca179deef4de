#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// Something that a command could not do, or did not do, and why; both texts as a person reads them.
struct ActionProblem {
    QString path; ///< native; may be empty
    QString reason;

    friend bool operator==(const ActionProblem &, const ActionProblem &) = default;
};

} // namespace velmora
