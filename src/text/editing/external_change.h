#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace velmora {

/// The files that were written by somebody else since they were read; empty for a side that was not.
struct ExternalChange {
    QString leftPath;
    QString rightPath;
    bool unsavedEdits = false; ///< the panes hold text that is not on disk

    [[nodiscard]] bool isEmpty() const { return leftPath.isEmpty() && rightPath.isEmpty(); }
};

enum class ExternalChangeAnswer { Reload, KeepLoaded, Cancel };

/// Asks whether to read changed files again before they are compared.
void askAboutExternalChange(QWidget *parent, const ExternalChange &change,
                            std::function<void(ExternalChangeAnswer)> answered);

} // namespace velmora
