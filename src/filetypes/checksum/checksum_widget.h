#pragma once

#include "filetypes/checksum/engine/checksum.h"
#include "session/frame/files_session.h"

class QComboBox;
class QLabel;

namespace velmora {

/// Computes the checksum of one file, or of two and tells whether they match. What a failed or cancelled computation
/// was to replace stays.
class ChecksumWidget final : public FilesSession {
    Q_OBJECT
public:
    explicit ChecksumWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("checksum"); }
    void start() override { onCompute(); }
    /// "algorithm": what the box of algorithms shows.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCompute();

private:
    void take(const ChecksumPair &results, const SessionPaths &files, const QString &algorithm);
    void showMatch();

    QComboBox *m_algorithm;
    QLabel *m_left; ///< show the values
    QLabel *m_right;
    QLabel *m_match;
};

} // namespace velmora
