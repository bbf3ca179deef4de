#include "filetypes/checksum/checksum_widget.h"

#include "core/visible_name.h"
#include "platform/file_access.h"
#include "session/fault_text.h"
#include "session/frame/paths_bar.h"
#include "session/frame/status_line.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
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

bool isWhole(const std::optional<FileChecksum> &checksum)
{
    return checksum && checksum->end == FileChecksum::End::Whole;
}

QString failureOf(const FileChecksum &checksum, const QString &path)
{
    const QString words = checksum.end == FileChecksum::End::Broken ? Velmora::tr("Cannot read to the end: %1")
                                                                    : Velmora::tr("Cannot open: %1");
    return words.arg(visibleName(QDir::toNativeSeparators(path)));
}

} // namespace

ChecksumWidget::ChecksumWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_algorithm(new QComboBox),
      m_inputs(new PathsBar({{&SessionPaths::left, Velmora::tr("Left file:"), Velmora::tr("Drop or browse file…"),
                              Velmora::tr("Select file")},
                             {&SessionPaths::right, Velmora::tr("Right file:"),
                              Velmora::tr("Optional: compare checksum…"), Velmora::tr("Select file")}})),
      m_left(valueLabel("leftValueLabel")),
      m_right(valueLabel("rightValueLabel")),
      m_match(valueLabel("matchLabel")),
      m_status(new StatusLine)
{
    auto *content = new QVBoxLayout;
    content->setContentsMargins(12, 12, 12, 8);
    content->setSpacing(8);
    for (QWidget *part : {makeInputs(), makeButtons(), static_cast<QWidget *>(m_left), static_cast<QWidget *>(m_right),
                          static_cast<QWidget *>(m_match)})
        content->addWidget(part);
    content->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(content);
    column->addWidget(m_status);

    m_left->setText(Velmora::tr(leftNoValue));
    m_right->setText(Velmora::tr(rightNoValue));
    setFocusProxy(m_inputs);
    connect(m_algorithm, &QComboBox::activated, this, &ChecksumWidget::chooseAlgorithm);
    connect(m_inputs, &PathsBar::submitted, this, &ChecksumWidget::onCompute);
    connect(&m_runner, &Runner::runningChanged, this, &ChecksumWidget::tellRunning);
    tellRunning();
}

QWidget *ChecksumWidget::makeInputs()
{
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms)
        m_algorithm->addItem(labelOf(algorithm));
    m_algorithm->setCurrentIndex(int(ChecksumAlgorithm::Sha256));
    m_algorithm->setObjectName(QStringLiteral("algorithmBox"));
    auto *label = new QLabel(Velmora::tr("Algorithm:"));
    label->setBuddy(m_algorithm);
    m_inputs->grid().addWidget(label, 0, 0);
    m_inputs->grid().addWidget(m_algorithm, 0, 1, Qt::AlignLeft);
    return m_inputs;
}

QWidget *ChecksumWidget::makeButtons()
{
    auto *row = new QWidget;
    auto *buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    connect(addButton(Velmora::tr("Compute/compare"), "computeButton", *row), &QPushButton::clicked, this,
            &ChecksumWidget::onCompute);
    const auto addCopy = [&](const QString &text, const char *name, const QLabel *label) {
        connect(addButton(text, name, *row), &QPushButton::clicked, this, [label] {
            if (const QString value = valueOf(*label); !value.isEmpty())
                QApplication::clipboard()->setText(value);
        });
    };
    addCopy(Velmora::tr("Copy left"), "copyLeftButton", m_left);
    addCopy(Velmora::tr("Copy right"), "copyRightButton", m_right);
    m_cancel = addButton(Velmora::tr("Cancel"), "cancelButton", *row);
    m_cancel->setShortcut(Qt::Key_Escape);
    connect(m_cancel, &QPushButton::clicked, this, &ChecksumWidget::onCancel);
    buttons->addStretch();
    return row;
}

QPushButton *ChecksumWidget::addButton(const QString &text, const char *name, QWidget &row)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    row.layout()->addWidget(button);
    return button;
}

QString ChecksumWidget::kind() const
{
    return QStringLiteral("checksum");
}

SessionPaths ChecksumWidget::paths() const
{
    return m_inputs->paths();
}

void ChecksumWidget::setPaths(const SessionPaths &paths)
{
    m_inputs->setPaths(paths);
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

void ChecksumWidget::dropPaths(const QStringList &paths, QPoint position)
{
    m_inputs->take(paths, m_inputs->mapFrom(this, position));
    onCompute();
}

void ChecksumWidget::refreshTheme()
{
    m_inputs->refreshTheme();
    m_status->refreshTheme();
    showMatch();
}

void ChecksumWidget::chooseAlgorithm()
{
    if (!paths().left.isEmpty())
        onCompute();
}

void ChecksumWidget::onCompute()
{
    const Results orders{checksumAlgorithms.at(std::size_t(m_algorithm->currentIndex())), paths(), {}, {}};
    if (orders.paths.left.isEmpty() && orders.paths.right.isEmpty()) {
        m_status->showMessage(Velmora::tr("Select at least one file"));
        return;
    }
    m_runner.start([orders](const CancelFlag &cancel, Progress &progress) { return compute(orders, cancel, progress); },
                   [this](RunOutcome<Results> &&outcome) {
                       if (outcome.end == RunEnd::Done)
                           take(*outcome.value);
                       else if (outcome.end == RunEnd::Cancelled)
                           m_status->showMessage(Velmora::tr("Cancelled"));
                       else
                           m_status->showMessage(faultText(outcome.fault, Velmora::tr("Not enough memory")));
                   },
                   [this](const ProgressState &state) {
                       m_status->showProgress(
                           state, Velmora::tr("Reading %1").arg(visibleName(QDir::toNativeSeparators(state.item))));
                   });
}

void ChecksumWidget::onCancel()
{
    m_runner.cancel();
}

ChecksumWidget::Results ChecksumWidget::compute(Results orders, const CancelFlag &cancel, Progress &progress)
{
    const SessionPaths &files = orders.paths;
    const qint64 total = QFileInfo(files.left).size() + QFileInfo(files.right).size();
    qint64 before = 0;
    const auto checksum = [&](const QString &path) -> std::optional<FileChecksum> {
        if (path.isEmpty())
            return std::nullopt;
        qint64 done = 0;
        const auto tell = [&](qint64 bytes) {
            done = bytes;
            progress.report(0, before + done, total, path);
        };
        const FileChecksum result = fileChecksum(path, orders.algorithm, FileAccess::native(), cancel, tell);
        before += done;
        return result;
    };
    orders.left = checksum(files.left);
    if (files.left.isEmpty() || isWhole(orders.left))
        orders.right = checksum(files.right);
    return orders;
}

void ChecksumWidget::take(const Results &results)
{
    const QString algorithm = labelOf(results.algorithm);
    const auto show = [&](QLabel &label, const std::optional<FileChecksum> &checksum, const QString &value,
                          const QString &error, const char *none) {
        label.setText(!checksum           ? Velmora::tr(none)
                      : isWhole(checksum) ? value.arg(algorithm, checksum->text())
                                          : error);
    };
    show(*m_left, results.left, Velmora::tr("Left (%1): %2"), Velmora::tr("Left: error"), leftNoValue);
    show(*m_right, results.right, Velmora::tr("Right (%1): %2"), Velmora::tr("Right: error"), rightNoValue);
    const SessionPaths &files = results.paths;
    if (results.left && !isWhole(results.left)) {
        m_match->clear();
        m_status->showMessage(failureOf(*results.left, files.left));
        return;
    }
    if (results.right && !isWhole(results.right)) {
        m_match->clear();
        m_status->showMessage(failureOf(*results.right, files.right));
        return;
    }
    showMatch();
    m_status->showMessage(Velmora::tr("Computed %1").arg(algorithm));
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

void ChecksumWidget::tellRunning()
{
    m_cancel->setEnabled(m_runner.isRunning());
    if (m_runner.isRunning())
        m_status->showProgress({});
    else
        m_status->clearProgress();
}

} // namespace velmora
