#include "filetypes/checksum/checksum_widget.h"

#include "platform/file_access.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>

namespace velmora {

namespace {

constexpr QLatin1String algorithmKey{"algorithm"};
constexpr const char *leftNoValue = QT_TRANSLATE_NOOP("Velmora", "Left : —");
constexpr const char *rightNoValue = QT_TRANSLATE_NOOP("Velmora", "Right: —");

QString labelOf(ChecksumAlgorithm algorithm)
{
    switch (algorithm) {
    case ChecksumAlgorithm::Md5:
        return QStringLiteral("MD5");
    case ChecksumAlgorithm::Sha1:
        return QStringLiteral("SHA-1");
    case ChecksumAlgorithm::Sha256:
        return QStringLiteral("SHA-256");
    case ChecksumAlgorithm::Crc32:
        break;
    }
    return QStringLiteral("CRC-32");
}

/// The checksum that a label shows; empty when it shows none.
QString valueOf(const QLabel &label)
{
    const QString value = label.text().section(u':', 1).trimmed();
    return value == QChar(0x2014) ? QString() : value;
}

QLabel *valueLabel(const char *name)
{
    auto *label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setWordWrap(true);
    return label;
}

QString failureOf(const FileChecksum &checksum, const QString &path)
{
    const QString words = checksum.end == FileChecksum::End::Broken ? Velmora::tr("Cannot read to the end: %1")
                                                                    : Velmora::tr("Cannot open: %1");
    return words.arg(QDir::toNativeSeparators(path));
}

} // namespace

ChecksumWidget::ChecksumWidget(SessionHost &host, QWidget *parent)
    : FilesSession(host,
                   {{&SessionPaths::left, Velmora::tr("Left file:"), Velmora::tr("Drop or browse file…"),
                     Velmora::tr("Select file")},
                    {&SessionPaths::right, Velmora::tr("Right file:"), Velmora::tr("Optional: compare checksum…"),
                     Velmora::tr("Select file")}},
                   parent),
      m_algorithm(new QComboBox),
      m_left(valueLabel("leftValueLabel")),
      m_right(valueLabel("rightValueLabel")),
      m_match(valueLabel("matchLabel"))
{
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms)
        m_algorithm->addItem(labelOf(algorithm));
    m_algorithm->setCurrentIndex(int(ChecksumAlgorithm::Sha256));
    m_algorithm->setObjectName(QStringLiteral("algorithmBox"));
    auto *label = new QLabel(Velmora::tr("Algorithm:"));
    label->setBuddy(m_algorithm);
    inputs().grid().addWidget(label, 0, 0);
    inputs().grid().addWidget(m_algorithm, 0, 1, Qt::AlignLeft);
    connect(m_algorithm, &QComboBox::activated, this, [this] {
        if (!paths().left.isEmpty())
            onCompute();
    });
    connect(addCommand(Velmora::tr("Compute/compare"), QStringLiteral("computeButton")), &QPushButton::clicked, this,
            &ChecksumWidget::onCompute);
    const auto addCopy = [this](const QString &text, const QString &name, const QLabel *value) {
        connect(addCommand(text, name), &QPushButton::clicked, this, [value] {
            if (const QString shown = valueOf(*value); !shown.isEmpty())
                QApplication::clipboard()->setText(shown);
        });
    };
    addCopy(Velmora::tr("Copy left"), QStringLiteral("copyLeftButton"), m_left);
    addCopy(Velmora::tr("Copy right"), QStringLiteral("copyRightButton"), m_right);
    for (QLabel *value : {m_left, m_right, m_match})
        content().addWidget(value);
    content().addStretch();
    m_left->setText(Velmora::tr(leftNoValue));
    m_right->setText(Velmora::tr(rightNoValue));
}

QJsonObject ChecksumWidget::options() const
{
    return {{algorithmKey, m_algorithm->currentText()}};
}

void ChecksumWidget::setOptions(const QJsonObject &options)
{
    const int index = m_algorithm->findText(options.value(algorithmKey).toString());
    if (index >= 0)
        m_algorithm->setCurrentIndex(index);
}

void ChecksumWidget::refreshTheme()
{
    FilesSession::refreshTheme();
    showMatch();
}

void ChecksumWidget::onCompute()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty() && files.right.isEmpty()) {
        status().showMessage(Velmora::tr("Select at least one file"));
        return;
    }
    const ChecksumAlgorithm algorithm = checksumAlgorithms.at(std::size_t(m_algorithm->currentIndex()));
    run(
        [files, algorithm](const CancelFlag &cancel, Progress &progress) {
            return fileChecksums(files.left, files.right, algorithm, FileAccess::native(), cancel, progress);
        },
        [this, files, algorithm](const ChecksumPair &results) { take(results, files, labelOf(algorithm)); });
}

void ChecksumWidget::take(const ChecksumPair &results, const SessionPaths &files, const QString &algorithm)
{
    const auto show = [&](QLabel &label, const std::optional<FileChecksum> &checksum, const QString &value,
                          const QString &error, const char *none) {
        label.setText(!checksum             ? Velmora::tr(none)
                      : checksum->isWhole() ? value.arg(algorithm, checksum->text())
                                            : error);
    };
    show(*m_left, results.left, Velmora::tr("Left (%1): %2"), Velmora::tr("Left: error"), leftNoValue);
    show(*m_right, results.right, Velmora::tr("Right (%1): %2"), Velmora::tr("Right: error"), rightNoValue);
    for (const auto &[checksum, path] : {std::pair(results.left, files.left), std::pair(results.right, files.right)}) {
        if (checksum && !checksum->isWhole()) {
            m_match->clear();
            status().showMessage(failureOf(*checksum, path));
            return;
        }
    }
    showMatch();
    status().showMessage(Velmora::tr("Computed %1").arg(algorithm));
    const QString leftName = QFileInfo(files.left).fileName();
    const QString rightName = QFileInfo(files.right).fileName();
    if (results.left && results.right) {
        Q_EMIT tabTitleChanged(Velmora::tr("%1 <-> %2").arg(leftName, rightName));
        Q_EMIT comparisonFinished(files.left, files.right);
    } else {
        Q_EMIT tabTitleChanged(results.left ? leftName : rightName);
    }
}

void ChecksumWidget::showMatch()
{
    const QString right = valueOf(*m_right);
    if (right.isEmpty()) {
        m_match->clear();
        return;
    }
    const bool match = valueOf(*m_left) == right;
    const QString dark = match ? QStringLiteral("#6fcf6f") : QStringLiteral("#ff8a80");
    const QString light = match ? QStringLiteral("#0a7a0a") : QStringLiteral("#c03030");
    m_match->setText(match ? Velmora::tr("Checksums match") : Velmora::tr("Checksums differ"));
    m_match->setStyleSheet(QStringLiteral("color: %1; font-weight: 600;").arg(isDarkTheme() ? dark : light));
}

} // namespace velmora
