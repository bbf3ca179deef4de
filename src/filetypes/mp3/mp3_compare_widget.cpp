#include "filetypes/mp3/mp3_compare_widget.h"

#include "core/text_encoding.h"
#include "filetypes/mp3/mp3_bar.h"
#include "filetypes/mp3/mp3_words.h"
#include "filetypes/mp3/picture_panel.h"
#include "filetypes/mp3/song_rows.h"
#include "session/dialogs.h"
#include "session/list/list_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QJsonObject>
#include <QLabel>
#include <QSplitter>

#include <algorithm>

namespace velmora {

namespace {

constexpr QLatin1String oldTextKey("oldText");

Sides<PairInputs::Field> fields()
{
    const QString filter =
        Velmora::tr("Music (*.mp3 *.flac *.ogg *.oga *.opus *.spx *.m4a *.m4b *.mp4 *.wav *.aif *.aiff *.aifc)") +
        QStringLiteral(";;") + Velmora::tr("All files (*.*)");
    return {{Velmora::tr("Left music file..."), Velmora::tr("Select left file"), filter},
            {Velmora::tr("Right music file..."), Velmora::tr("Select right file"), filter}};
}

} // namespace

struct Mp3CompareWidget::Result {
    Sides<SongReading> readings;
    PictureViews pictures;
};

Mp3CompareWidget::Mp3CompareWidget(SessionHost &host, QWidget *parent) : Mp3CompareWidget(host, parent, m_bar) {}

Mp3CompareWidget::Mp3CompareWidget(SessionHost &host, QWidget *parent, Mp3Bar *&bar)
    : FieldsSession(
          host,
          [&bar](QWidget *session) {
              bar = new Mp3Bar(session);
              return Parts{
                  bar, fields(), std::make_unique<SongRows>(),
                  Velmora::tr("Choose two pieces of music, then click Compare. Files can be dropped here, too.")};
          },
          parent),
      m_bar(bar),
      m_pictures(new PicturePanel(this))
{
    views().addWidget(m_pictures);
    views().setStretchFactor(0, 1);
    views().setStretchFactor(1, 0);
    m_pictures->hide();
    makeEncodingRow();
    connectBar();
    connect(&list().view(), &ListView::currentRowChanged, this, &Mp3CompareWidget::showPictures);
    connect(&list().view(), &ListView::selectedRowsChanged, this, &Mp3CompareWidget::showState);
    connect(this, &SessionWidget::readingEnded, this, &Mp3CompareWidget::showState);
    showState();
}

void Mp3CompareWidget::connectBar()
{
    const auto on = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    on(m_bar->editing, [this](bool checked) { setEditingEnabled(checked); });
    on(m_bar->copyToRight, [this] { copy(Side::Right); });
    on(m_bar->copyToLeft, [this] { copy(Side::Left); });
    on(m_bar->copyAllToRight, [this] { copyAll(Side::Right); });
    on(m_bar->copyAllToLeft, [this] { copyAll(Side::Left); });
    on(m_bar->undo, [this] { edit(EditCommand::Undo); });
    on(m_bar->redo, [this] { edit(EditCommand::Redo); });
    on(m_bar->save, &Mp3CompareWidget::onSave);
}

void Mp3CompareWidget::makeEncodingRow()
{
    m_encodingRow = new QWidget(this);
    m_encoding = new QComboBox(m_encodingRow);
    m_encoding->setObjectName(QStringLiteral("oldTextBox"));
    m_encoding->setToolTip(Velmora::tr(
        "Tags of old programs do not tell the encoding of their texts. Choose one that makes them readable."));
    m_encoding->addItem(QStringLiteral("Latin-1"), QString());
    QStringList names = TextEncoding::offeredNames();
    names.removeIf([](const QString &name) {
        const TextEncoding encoding = TextEncoding::fromName(name);
        return encoding.isAutomatic() || encoding.hasMark() || encoding.charset().startsWith("UTF-16") ||
               encoding.charset().startsWith("UTF-32") || encoding.charset() == "US-ASCII";
    });
    for (const QString &name : names)
        m_encoding->addItem(name, name);
    auto *label = new QLabel(Velmora::tr("Texts without a known encoding:"), m_encodingRow);
    label->setBuddy(m_encoding);
    auto *row = new QHBoxLayout(m_encodingRow);
    row->setContentsMargins(10, 0, 10, 6);
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(m_encoding);
    row->addStretch(1);
    constexpr int behindPaths = 2;
    column().insertWidget(behindPaths, m_encodingRow);
    m_encodingRow->hide();
    connect(m_encoding, &QComboBox::currentIndexChanged, this, [this] {
        if (m_hasSongs)
            showSongs(false);
    });
}

QString Mp3CompareWidget::charset() const
{
    return m_encoding->currentData().toString();
}

void Mp3CompareWidget::start()
{
    if (hasUnsavedChanges())
        askToDiscard([this] { FieldsSession::start(); });
    else
        FieldsSession::start();
}

void Mp3CompareWidget::onSwapSides()
{
    if (hasUnsavedChanges())
        askToDiscard([this] { FieldsSession::onSwapSides(); });
    else
        FieldsSession::onSwapSides();
}

void Mp3CompareWidget::dropPaths(const QStringList &paths, QPoint position)
{
    if (hasUnsavedChanges())
        askToDiscard([this, paths, position] { FieldsSession::dropPaths(paths, position); });
    else
        FieldsSession::dropPaths(paths, position);
}

void Mp3CompareWidget::askToDiscard(std::function<void()> discarded)
{
    Dialogs::instance().askYesNo(
        this, Velmora::tr("Unsaved changes"),
        Velmora::tr("Tags were changed and are not saved. Read the files again and lose that?"), false,
        [this, discarded = std::move(discarded)](bool yes) {
            if (!yes)
                return;
            m_hasSongs = false;
            discarded();
        });
}

QJsonObject Mp3CompareWidget::options() const
{
    QJsonObject options = FieldsSession::options();
    if (!charset().isEmpty())
        options.insert(oldTextKey, charset());
    return options;
}

void Mp3CompareWidget::setOptions(const QJsonObject &options)
{
    FieldsSession::setOptions(options);
    m_encoding->setCurrentIndex(std::max(0, m_encoding->findData(options.value(oldTextKey).toString())));
}

void Mp3CompareWidget::compare(const Sides<QString> &files)
{
    run(
        [files](const CancelFlag &cancel, Progress &progress) {
            Result result;
            for (const Side side : bothSides) {
                progress.report(0, side == Side::Left ? 0 : 1, 2, files[side]);
                result.readings[side] = loadSong(files[side], cancel);
                if (!result.readings[side].ok())
                    return result;
            }
            result.pictures = PictureViews(compareSongs(result.readings.left.song, result.readings.right.song), cancel);
            return result;
        },
        [this, files](Result &&result) { take(files, std::move(result)); });
}

void Mp3CompareWidget::take(const Sides<QString> &files, Result &&result)
{
    for (const Side side : bothSides) {
        const SongReading &reading = result.readings[side];
        if (!reading.ok()) {
            showFailure(faultText(reading, files[side]), reading.detail);
            return;
        }
    }
    m_files = files;
    m_pictures->setViews(std::move(result.pictures));
    m_edits.begin({std::move(result.readings.left.song), std::move(result.readings.right.song)});
    m_hasSongs = true;
    showSongs(true);
}

void Mp3CompareWidget::showSongs(bool isNew)
{
    const Sides<Song> songs{m_edits.edited(Side::Left), m_edits.edited(Side::Right)};
    m_rows = compareSongs(songs.left, songs.right, charset());
    m_numbers.clear();
    for (qsizetype number = m_rows.size() - 1; number >= 0; --number)
        m_numbers.insert(fieldText(m_rows[number].field), number);
    QStringList verdict{verdictText(judgeSongs(songs.left, songs.right))};
    for (const Side side : bothSides)
        verdict += remarkTexts(songs[side], m_files[side], charset());
    const auto tone = verdict.size() > 1 ? NoticeBar::Tone::Warning : NoticeBar::Tone::Verdict;
    auto rows = std::make_unique<SongRows>(m_rows);
    if (isNew) {
        showRows(m_files, std::move(rows), verdict.join(u'\n'), tone);
    } else {
        list().setResult(std::move(rows));
        verdictBar().tell(verdict.join(u'\n'), tone);
        showTitle(m_files, {m_edits.isModified(Side::Left), m_edits.isModified(Side::Right)});
    }
    showEncodingRow();
    showPictures();
    showState();
}

void Mp3CompareWidget::showEncodingRow()
{
    const auto isOld = [](const SongField &field) { return !field.oldBytes.isEmpty(); };
    const QList<SongField> all = m_edits.tags(Side::Left).fields + m_edits.tags(Side::Right).fields;
    m_encodingRow->setVisible(std::any_of(all.begin(), all.end(), isOld));
}

void Mp3CompareWidget::showPictures()
{
    const auto hasPicture = [](const SongRow &row) { return row.pictures.left || row.pictures.right; };
    auto shown = std::find_if(m_rows.begin(), m_rows.end(), hasPicture);
    if (const int row = list().view().currentIndex().row(); row >= 0) {
        const qsizetype number = m_numbers.value(rows().rowAt(row).key, -1);
        if (number >= 0 && hasPicture(m_rows[number]))
            shown = m_rows.begin() + number;
    }
    m_pictures->setVisible(shown != m_rows.end());
    if (shown != m_rows.end())
        m_pictures->showRow(*shown);
}

void Mp3CompareWidget::showState()
{
    const bool mayChange = m_isEditing && m_hasSongs && !isRunning();
    const bool hasRows = mayChange && !list().view().selectedRows().empty();
    m_bar->editing->setChecked(m_isEditing);
    m_bar->copyToRight->setEnabled(hasRows);
    m_bar->copyToLeft->setEnabled(hasRows);
    m_bar->copyAllToRight->setEnabled(mayChange);
    m_bar->copyAllToLeft->setEnabled(mayChange);
    m_bar->undo->setEnabled(canEdit(EditCommand::Undo));
    m_bar->redo->setEnabled(canEdit(EditCommand::Redo));
    m_bar->save->setEnabled(mayChange && m_edits.isModified());
    Q_EMIT editStateChanged();
}

QList<SongField> Mp3CompareWidget::selectedThings()
{
    QList<SongField> things;
    for (const int row : list().view().selectedRows()) {
        const qsizetype number = m_numbers.value(rows().rowAt(row).key, -1);
        if (number < 0)
            continue;
        const SongField &field = m_rows[number].field;
        if (isTag(field.group) || field.group == SongGroup::Common)
            things.append(field);
    }
    return things;
}

void Mp3CompareWidget::tellChange(TagEdits::Copied copied, Side to)
{
    if (copied == TagEdits::Copied::Nothing) {
        status().showMessage(Velmora::tr("Nothing here can be copied to that side, or it is the same already"));
        return;
    }
    showSongs(false);
    const bool isLeft = to == Side::Left;
    if (copied == TagEdits::Copied::MoreTags)
        status().showMessage(
            isLeft ? Velmora::tr("Changed the tags of the left file, its other tags in step; not saved yet")
                   : Velmora::tr("Changed the tags of the right file, its other tags in step; not saved yet"));
    else
        status().showMessage(isLeft ? Velmora::tr("Changed the tags of the left file; not saved yet")
                                    : Velmora::tr("Changed the tags of the right file; not saved yet"));
}

void Mp3CompareWidget::copy(Side to)
{
    tellChange(m_edits.copy(to, selectedThings(), charset()), to);
}

void Mp3CompareWidget::copyAll(Side to)
{
    tellChange(m_edits.copyAll(to, charset()), to);
}

bool Mp3CompareWidget::canEdit(EditCommand command) const
{
    if (!m_isEditing || !m_hasSongs || isRunning())
        return false;
    return (command == EditCommand::Undo && m_edits.canUndo()) || (command == EditCommand::Redo && m_edits.canRedo());
}

void Mp3CompareWidget::edit(EditCommand command)
{
    if (!canEdit(command))
        return;
    if (command == EditCommand::Undo)
        m_edits.undo();
    else
        m_edits.redo();
    showSongs(false);
    status().showMessage(m_edits.isModified() ? Velmora::tr("The tags differ from what is saved")
                                              : Velmora::tr("The tags are as they are saved"));
}

void Mp3CompareWidget::setEditingEnabled(bool enabled)
{
    m_isEditing = enabled;
    showState();
}

} // namespace velmora
