#pragma once

#include "settings/dialogs/settings_page.h"
#include "settings/options/kept_copies.h"

class QCheckBox;
class QSpinBox;

namespace velmora {

/// The tab with what the session shows around its tree, and, for all folder comparisons together, how much is kept of
/// files that were replaced or deleted, so that it can be undone.
class FolderMiscPage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderMiscPage(QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

    /// Stores how much is kept, which is part of no options, if a person has changed it.
    void storeKeptCopies() const;

private:
    [[nodiscard]] QWidget *makeKeptCopies();
    [[nodiscard]] KeptCopies chosenLimits() const;

    QCheckBox *m_logPanel;
    QCheckBox *m_filterBar;
    KeptCopies m_kept; ///< as opened
    QSpinBox *m_keptSize;
    QSpinBox *m_keptDays;
};

} // namespace velmora
