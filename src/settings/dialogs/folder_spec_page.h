#pragma once

#include "session/session_record.h"
#include "settings/dialogs/settings_page.h"

class QCheckBox;
class QGridLayout;
class QPlainTextEdit;

namespace velmora {

/// The tab with both folders, which of them may be written, and the description of the settings. The description is
/// none of the options: it is stored with defaults and presets.
class FolderSpecPage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderSpecPage(const SessionPaths &paths, QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

    void setDescription(const QString &description);
    [[nodiscard]] QString description() const;

private:
    void addSide(QGridLayout &grid, const QString &title, const QString &path, QCheckBox *readOnly);

    QCheckBox *m_leftReadOnly;
    QCheckBox *m_rightReadOnly;
    QPlainTextEdit *m_description;
};

} // namespace velmora
