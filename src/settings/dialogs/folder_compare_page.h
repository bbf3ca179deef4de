#pragma once

#include "settings/dialogs/settings_page.h"

class QComboBox;
class QLabel;
class QSpinBox;

namespace velmora {

/// The tab that says how two files are compared. A method that nobody knows shows as the first one, which is how it is
/// compared, and stays as it is while nobody chooses another.
class FolderComparePage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderComparePage(QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

private:
    void explain();

    QComboBox *m_basis;
    QSpinBox *m_tolerance;
    QLabel *m_explanation;
};

} // namespace velmora
