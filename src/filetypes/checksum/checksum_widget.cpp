#include "filetypes/checksum/checksum_widget.h"

#include "core/safe_file.h"
#include "filetypes/checksum/checksum_list_view.h"
#include "platform/file_access.h"
#include "session/dialogs.h"
#include "session/frame/notice_bar.h"
#include "session/shown_path.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGridLayout>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>

namespace velmora {

namespace {

constexpr QLatin1String algorithmKey{"algorithm"};
constexpr const char *leftNoValue = QT_TRANSLATE_NOOP("Velmora", "Left : —");
constexpr const char *rightNoValue = QT_TRANSLATE_NOOP("Velmora", "Right: —");

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
    label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return label;
}

QString failureOf(const FileChecksum &checksum, const QString &path)
{
    const QString words = checksum.end == FileChecksum::End::Broken ? Velmora::tr("Cannot read to the end: %1")
                                                                    : Velmora::tr("Cannot open: %1");
    return words.arg(shownPath(path));
}

/// What may be wrong with a path at which there is nothing. `paste` says whether a checksum could stand there, too.
QString missingText(bool paste)
{
    return paste ? Velmora::tr("There is no such file, and it is no checksum either")
                 : Velmora::tr("There is no such file");
}

/// The algorithm of all values of a list, if they have one in common.
std::optional<ChecksumAlgorithm> commonAlgorithm(const QList<CheckedFile> &files)
{
    std::optional<ChecksumAlgorithm> common;
    for (const CheckedFile &file : files) {
        if (file.status == ListedStatus::NotListed)
            continue;
        if (common.value_or(file.entry.algorithm) != file.entry.algorithm)
            return std::nullopt;
        common = file.entry.algorithm;
    }
    return common;
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
      m_values(new QWidget),
      m_left(valueLabel("leftValueLabel")),
      m_right(valueLabel("rightValueLabel")),
      m_match(new QLabel),
      m_offer(new NoticeBar(QStringLiteral("checksumOffer"))),
      m_list(new ChecksumListView)
{
    for (const ChecksumAlgorithm algorithm : checksumAlgorithms)
        m_algorithm->addItem(checksumLabel(algorithm));
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
    const auto command = [this](const QString &text, const char *name, const QString &hint, auto slot) {
        QPushButton *button = addCommand(text, QLatin1String(name));
        button->setToolTip(hint);
        connect(button, &QPushButton::clicked, this, slot);
    };
    command(
        Velmora::tr("Check list"), "checkListButton",
        Velmora::tr("Compare the files that a list of checksums names: the list is the left file; its files lie beside "
                    "it or in a folder above, or in the folder that is given as the right one"),
        &ChecksumWidget::onCheckList);
    command(Velmora::tr("Write list..."), "writeListButton",
            Velmora::tr("Write a list of the checksums of all files in the folder that is given as the left file"),
            &ChecksumWidget::onWriteList);
    auto *values = new QVBoxLayout(m_values);
    values->setContentsMargins(0, 0, 0, 0);
    for (QLabel *value : {m_left, m_right, m_match})
        values->addWidget(value);
    values->addStretch();
    content().addWidget(m_offer);
    content().addWidget(m_values, 1);
    content().addWidget(m_list, 1);
    m_match->setObjectName(QStringLiteral("matchLabel"));
    m_list->hide();
    connect(m_list, &ChecksumListView::told, this, [this](const QString &text) { status().showMessage(text); });
    connect(m_offer, &NoticeBar::actionWanted, this,
            [this] { m_offered == Offer::Check ? onCheckList() : onWriteList(); });
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
    m_offer->refreshTheme();
    m_list->refreshTheme();
    showMatch();
}

void ChecksumWidget::start()
{
    const SessionPaths files = paths();
    const bool checks = QFileInfo(files.right).isDir() && QFileInfo(files.left).isFile();
    checks ? onCheckList() : onCompute();
}

void ChecksumWidget::onCompute()
{
    SessionPaths files = paths();
    if (files.left.isEmpty() && files.right.isEmpty()) {
        status().showMessage(Velmora::tr("Select at least one file"));
        return;
    }
    QByteArray expected;
    if (const auto value = QFileInfo::exists(files.right) ? std::nullopt : expectedChecksum(files.right)) {
        m_algorithm->setCurrentIndex(int(value->algorithm));
        expected = value->digest;
        files.right.clear();
    }
    const ChecksumAlgorithm algorithm = checksumAlgorithms.at(std::size_t(m_algorithm->currentIndex()));
    run(
        [files, expected, algorithm](const CancelFlag &cancel, Progress &progress) {
            Result result{files, algorithm};
            result.checksums =
                fileChecksums(files.left, files.right, algorithm, FileAccess::native(), cancel, progress);
            result.listed = files.right.isEmpty() && expected.isEmpty() ? looksLikeChecksumList(files.left) : 0;
            if (!expected.isEmpty())
                result.checksums.right = FileChecksum{ChecksumEnd::Whole, expected};
            return result;
        },
        [this](const Result &result) { take(result); });
}

void ChecksumWidget::take(const Result &result)
{
    const auto &[left, right] = result.checksums;
    const SessionPaths &files = result.files;
    const QString algorithm = checksumLabel(result.algorithm);
    m_list->hide();
    m_values->show();
    makeOffer(result);
    const auto show = [&](QLabel &label, const std::optional<FileChecksum> &checksum, const QString &value,
                          const QString &error, const char *none) {
        label.setText(!checksum             ? Velmora::tr(none)
                      : checksum->isWhole() ? value.arg(algorithm, checksum->text())
                                            : error);
    };
    show(*m_left, left, Velmora::tr("Left (%1): %2"), Velmora::tr("Left: error"), leftNoValue);
    show(*m_right, right, Velmora::tr("Right (%1): %2"), Velmora::tr("Right: error"), rightNoValue);
    for (const auto &[checksum, path] : {std::pair(left, files.left), std::pair(right, files.right)}) {
        if (checksum && !checksum->isWhole()) {
            m_match->clear();
            const bool isThere = QFileInfo::exists(path);
            status().showMessage(failureOf(*checksum, path), isThere ? QString() : missingText(path == files.right));
            return;
        }
    }
    showMatch();
    status().showMessage(Velmora::tr("Computed %1").arg(algorithm));
    tellTitle(files);
}

void ChecksumWidget::tellTitle(const SessionPaths &files)
{
    const QString leftName = QFileInfo(files.left).fileName();
    const QString rightName = QFileInfo(files.right).fileName();
    if (!files.left.isEmpty() && !files.right.isEmpty()) {
        Q_EMIT tabTitleChanged(Velmora::tr("%1 <-> %2").arg(leftName, rightName));
        Q_EMIT comparisonFinished(files.left, files.right);
    } else {
        Q_EMIT tabTitleChanged(files.left.isEmpty() ? rightName : leftName);
    }
}

void ChecksumWidget::makeOffer(const Result &result)
{
    m_offer->clear();
    if (result.listed > 0) {
        m_offered = Offer::Check;
        m_offer->setAction(Velmora::tr("Check list"));
        m_offer->tell(Velmora::tr("This file is a list of checksums. Its files can be compared with it."),
                      NoticeBar::Tone::Remark);
    } else if (result.files.right.isEmpty() && QFileInfo(result.files.left).isDir()) {
        m_offered = Offer::Write;
        m_offer->setAction(Velmora::tr("Write list..."));
        m_offer->tell(Velmora::tr("This is a folder. A list of the checksums of all its files can be written."),
                      NoticeBar::Tone::Remark);
    }
}

void ChecksumWidget::onCheckList()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty()) {
        status().showMessage(Velmora::tr("Choose a list of checksums as the left file"));
        return;
    }
    const QString folder = QFileInfo(files.right).isDir() ? files.right : QString();
    run([files, folder](const CancelFlag &cancel,
                        Progress &progress) { return checkChecksumList(files.left, folder, cancel, progress); },
        [this, files, folder](const ChecksumCheck &check) {
            takeCheck(check, {files.left, folder, {}});
        });
}

void ChecksumWidget::takeCheck(const ChecksumCheck &check, const SessionPaths &files)
{
    const QString path = shownPath(files.left);
    switch (check.fault) {
    case ChecksumCheck::Fault::NotOpened:
        status().showFailure(Velmora::tr("Cannot open: %1").arg(path));
        return;
    case ChecksumCheck::Fault::TooLarge:
        status().showFailure(Velmora::tr("Larger than any list of checksums: %1").arg(path));
        return;
    case ChecksumCheck::Fault::NoList:
        status().showFailure(Velmora::tr("No checksums in: %1").arg(path));
        return;
    case ChecksumCheck::Fault::None:
    case ChecksumCheck::Fault::Cancelled:
        break;
    }
    if (const auto algorithm = commonAlgorithm(check.files))
        m_algorithm->setCurrentIndex(int(*algorithm));
    m_values->hide();
    m_list->show();
    m_list->setCheck(check);
    m_offer->setAction({});
    if (check.failures() > 0)
        m_offer->tell(Velmora::tr("Not all files are what the list says."), NoticeBar::Tone::Warning);
    else
        m_offer->tell(Velmora::tr("All files are what the list says."), NoticeBar::Tone::Verdict);
    QStringList details;
    if (check.folder != QFileInfo(files.left).absolutePath())
        details.append(Velmora::tr("Files in: %1").arg(shownPath(check.folder)));
    if (check.badLines > 0)
        details.append(Velmora::tr("Lines that are no checksums: %1, the first is line %2")
                           .arg(check.badLines)
                           .arg(check.firstBadLine));
    status().showMessage(checksumCheckText(check), details.join(QStringLiteral(" · ")));
    tellTitle(files);
}

void ChecksumWidget::onWriteList()
{
    const QString folder = paths().left;
    if (!QFileInfo(folder).isDir()) {
        status().showMessage(Velmora::tr("Choose a folder as the left file"));
        return;
    }
    static constexpr std::array suffixes{"md5", "sha1", "sha256", "sfv"};
    const ChecksumAlgorithm algorithm = checksumAlgorithms.at(std::size_t(m_algorithm->currentIndex()));
    const QString suffix = QLatin1String(suffixes[std::size_t(algorithm)]);
    const QString name = QDir(folder).dirName() + u'.' + suffix;
    const QString filter = QStringLiteral("*.%1").arg(suffix);
    Dialogs::instance().saveFile(this, Velmora::tr("Write a list of checksums"), QDir(folder).filePath(name),
                                 Velmora::tr("Lists of checksums (%1)").arg(filter) + QStringLiteral(";;") +
                                     Velmora::tr("All Files (*)"),
                                 [this, folder, algorithm](const QString &path) {
                                     if (!path.isEmpty())
                                         writeList(folder, algorithm, path);
                                 });
}

void ChecksumWidget::writeList(const QString &folder, ChecksumAlgorithm algorithm, const QString &path)
{
    struct Outcome {
        QStringList unreadable;
        SaveResult saved;
    };
    run(
        [folder, algorithm, path](const CancelFlag &cancel, Progress &progress) -> Outcome {
            const FolderChecksums checksums = folderChecksums(folder, {algorithm}, path, cancel, progress);
            if (!checksums.unreadable.isEmpty() || cancel.isCancelled())
                return {checksums.unreadable, {}};
            const ChecksumForm form = canHold(ChecksumForm::Gnu, algorithm) ? ChecksumForm::Gnu : ChecksumForm::Sfv;
            QByteArray list;
            for (const ChecksumEntry &entry : checksums.entries)
                list += checksumLine(form, entry);
            return {{}, saveFile(path, list)};
        },
        [this, path](const Outcome &outcome) {
            if (!outcome.unreadable.isEmpty())
                status().showFailure(Velmora::tr("Cannot read: %1").arg(shownPath(outcome.unreadable.first())),
                                     Velmora::tr("No list was written"));
            else if (!outcome.saved.ok())
                status().showFailure(Velmora::tr("Cannot write: %1").arg(shownPath(path)), outcome.saved.error);
            else
                status().showMessage(Velmora::tr("Saved %1").arg(shownPath(path)));
        });
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
