#pragma once

#include "filetypes/checksum/engine/checksum_check.h"
#include "session/frame/files_session.h"

class QComboBox;
class QLabel;

namespace velmora {

class ChecksumListView;
class NoticeBar;

/// Computes the checksum of one file, or of two and tells whether they match; a checksum may stand in place of the
/// right file. Checks the files of a list of checksums, and writes such lists. What a failed or cancelled computation
/// was to replace stays.
class ChecksumWidget final : public FilesSession {
    Q_OBJECT
public:
    explicit ChecksumWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("checksum"); }
    /// A file and a folder are a list and the files to be compared with it.
    void start() override;
    /// "algorithm": what the box of algorithms shows.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCompute();
    void onCheckList();
    void onWriteList();

private:
    /// What the bar above the values offers to do.
    enum class Offer : quint8 { Check, Write };
    /// What a computation came to.
    struct Result {
        SessionPaths files;
        ChecksumAlgorithm algorithm = ChecksumAlgorithm::Sha256;
        ChecksumPair checksums = {};
        qsizetype listed = 0; ///< checksums in the left file, if it is a list of them
    };

    void take(const Result &result);
    void takeCheck(const ChecksumCheck &check, const SessionPaths &files);
    void makeOffer(const Result &result);
    void tellTitle(const SessionPaths &files);
    void writeList(const QString &folder, ChecksumAlgorithm algorithm, const QString &path);
    void showMatch();

    QComboBox *m_algorithm;
    QWidget *m_values;
    QLabel *m_left; ///< show the values
    QLabel *m_right;
    QLabel *m_match;
    NoticeBar *m_offer;
    ChecksumListView *m_list; ///< in place of the values
    Offer m_offered = Offer::Check;
};

} // namespace velmora
