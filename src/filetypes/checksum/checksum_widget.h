#pragma once

#include "core/runner.h"
#include "filetypes/checksum/engine/checksum.h"
#include "session/session_widget.h"

#include <optional>

class QComboBox;
class QLabel;
class QPushButton;

namespace velmora {

class PathsBar;
class StatusLine;

/// Computes the checksum of one file, or of two and tells whether they match. What a failed or cancelled computation
/// was to replace stays.
class ChecksumWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit ChecksumWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override;
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override { onCompute(); }
    /// "algorithm": what the box of algorithms shows.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCompute();
    void onCancel();

private:
    /// What one run was asked for, and what became of it.
    struct Results {
        ChecksumAlgorithm algorithm = ChecksumAlgorithm::Sha256;
        SessionPaths paths;
        std::optional<FileChecksum> left; ///< none for an empty path
        std::optional<FileChecksum> right;
    };

    [[nodiscard]] QWidget *makeInputs();
    [[nodiscard]] QWidget *makeButtons();
    QPushButton *addButton(const QString &text, const char *name, QWidget &row);
    void chooseAlgorithm();
    [[nodiscard]] static Results compute(Results orders, const CancelFlag &cancel, Progress &progress);
    void take(const Results &results);
    void showMatch();
    void tellRunning();

    QComboBox *m_algorithm;
    PathsBar *m_inputs;
    QLabel *m_left; ///< show the values
    QLabel *m_right;
    QLabel *m_match;
    QPushButton *m_cancel = nullptr;
    StatusLine *m_status;
    Runner m_runner;
};

} // namespace velmora
