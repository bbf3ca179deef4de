#pragma once

#include "settings/dialogs/settings_page.h"

#include <QStringList>

#include <array>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace velmora {

/// The tab with the masks of names that are shown and that are left out. What is wrong with a mask is said while it is
/// typed; it is kept all the same and matches nothing.
class FolderNameFiltersPage final : public FolderSettingsPage {
    Q_OBJECT
public:
    explicit FolderNameFiltersPage(QWidget *parent = nullptr);

    void load(const FolderSessionOptions &options) override;
    void store(FolderSessionOptions &options) const override;

private:
    struct Field {
        QStringList FolderSessionOptions::*masks = nullptr;
        QLineEdit *line = nullptr;
        QLabel *verdict = nullptr;
    };

    [[nodiscard]] Field addField(QGridLayout &grid, const QString &text, const QString &placeholder,
                                 const QString &name, QStringList FolderSessionOptions::*masks);
    void judge();

    std::array<Field, 4> m_fields;
};

} // namespace velmora
