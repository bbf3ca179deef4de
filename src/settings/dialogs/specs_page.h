#pragma once

#include "settings/dialogs/settings_page.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

namespace velmora {

/// The tab with the paths of both sides, their read-only flags and the description. Paths show the system's separators.
class SpecsPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit SpecsPage(QWidget *parent = nullptr);

    void load(const TextSessionOptions &options) override;
    void store(TextSessionOptions &options) const override;

private:
    void copyLeftToRight();
    void swapPaths();

    QLineEdit *m_leftPath;
    QLineEdit *m_rightPath;
    QCheckBox *m_leftReadOnly;
    QCheckBox *m_rightReadOnly;
    QPlainTextEdit *m_description;
};

} // namespace velmora
