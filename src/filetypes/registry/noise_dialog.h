#pragma once

#include "filetypes/registry/engine/registry_noise.h"

#include <QDialog>

class QListWidget;
class QPlainTextEdit;

namespace velmora {

/// Chooses which profiles of noise are on, and edits their masks.
class NoiseDialog final : public QDialog {
    Q_OBJECT
public:
    explicit NoiseDialog(const QList<NoiseProfile> &profiles, QWidget *parent);

    [[nodiscard]] QList<NoiseProfile> profiles() const;

private:
    void showProfile(int row);
    void keepMasks();
    void restore();

    QList<NoiseProfile> m_profiles;
    QListWidget *m_list;
    QPlainTextEdit *m_masks;
    int m_shown = -1;
};

} // namespace velmora
