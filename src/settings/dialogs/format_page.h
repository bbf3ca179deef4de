#pragma once

#include "settings/dialogs/settings_page.h"

class QCheckBox;

namespace velmora {

class FormatChoices;

/// The tab with the file formats of both sides. The right side keeps its own choices, at rest, while it follows the
/// left one.
class FormatPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit FormatPage(QWidget *parent = nullptr);

    /// See `FormatChoices::setOwnLineEnds`.
    void setOwnLineEnds(const QString &left, const QString &right);

    void load(const TextSessionOptions &options) override;
    void store(TextSessionOptions &options) const override;

private:
    FormatChoices *m_left;
    FormatChoices *m_right;
    QCheckBox *m_sameAsLeft;
};

} // namespace velmora
