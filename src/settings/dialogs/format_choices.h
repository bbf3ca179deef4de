#pragma once

#include <QGroupBox>
#include <QString>

class QComboBox;

namespace velmora {

/// File type, encoding and line ends of one side, chosen from lists.
///
/// A stored value that is not on offer is listed as it stands. The words that stand for "everything else" and
/// "automatic detection" in files are Chinese in every language; what is shown for them is translated.
class FormatChoices final : public QGroupBox {
    Q_OBJECT
public:
    struct Format {
        QString fileType;
        QString encoding;
        QString eol;
    };

    /// The controls are named `prefix` followed by "FileType", "Encoding" and "Eol".
    FormatChoices(const QString &title, const QString &prefix, QWidget *parent = nullptr);

    /// `detectedType` is the type that the file is taken for unless another one is chosen; empty when that is not
    /// known.
    void setFormat(const Format &format, const QString &detectedType = {});
    /// Names the line ends that the file has; empty when that is not known. To be called after `setFormat`.
    void setOwnLineEnds(const QString &name);
    [[nodiscard]] Format format() const;

private:
    QComboBox *m_fileType;
    QComboBox *m_encoding;
    QComboBox *m_eol;
};

} // namespace velmora
