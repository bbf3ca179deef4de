#pragma once

#include "settings/options/folder_session_options.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace velmora {

/// Asks for the name and the masks of one file format. Says at once what is wrong with what is typed and takes only
/// what is right. Opened with open(); the result counts when `accepted` comes.
class FolderFormatDialog final : public QDialog {
    Q_OBJECT
public:
    /// `taken` holds the names that other formats have. A new format is switched on.
    FolderFormatDialog(const FileFormatGroup &group, const QStringList &taken, QWidget *parent);

    /// The name trimmed, the masks trimmed and separated by ";".
    [[nodiscard]] FileFormatGroup group() const;

private:
    [[nodiscard]] QString problem(const FileFormatGroup &typed) const;
    void judge();

    QStringList m_taken;
    bool m_on;
    QLineEdit *m_name;
    QLineEdit *m_masks;
    QLabel *m_verdict;
};

} // namespace velmora
