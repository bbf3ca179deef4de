#pragma once

#include "filetypes/mp3/engine/song_compare.h"
#include "filetypes/mp3/picture_views.h"
#include "filetypes/mp3/tag_edits.h"
#include "session/fields/fields_session.h"

#include <QHash>

class QComboBox;

namespace velmora {

class Mp3Bar;
class PicturePanel;

/// The session of kind "mp3": the tags of two pieces of music, what is known of their sound, and whether that is the
/// same. Tags can be copied from one file to the other once editing is switched on, and saved.
class Mp3CompareWidget final : public FieldsSession {
    Q_OBJECT
public:
    explicit Mp3CompareWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("mp3"); }
    void start() override;
    /// What the frame has, and "oldText": the encoding of texts that do not tell theirs, where one was chosen.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool canEnableEditing() const override { return true; }
    [[nodiscard]] bool isEditingEnabled() const override { return m_isEditing; }
    void setEditingEnabled(bool enabled) override;
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_hasSongs && m_edits.isModified(); }
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void dropPaths(const QStringList &paths, QPoint position) override;

public Q_SLOTS:
    void onSave();
    void onSwapSides() override;

protected:
    void compare(const Sides<QString> &files) override;

private:
    struct Result;

    Mp3CompareWidget(SessionHost &host, QWidget *parent, Mp3Bar *&bar);
    void connectBar();
    void makeEncodingRow();
    [[nodiscard]] QString charset() const;
    void take(const Sides<QString> &files, Result &&result);
    void showSongs(bool isNew);
    void showEncodingRow();
    void showPictures();
    void showState();
    [[nodiscard]] QList<SongField> selectedThings();
    void copy(Side to);
    void copyAll(Side to);
    void tellChange(TagEdits::Copied copied, Side to);
    void askToDiscard(std::function<void()> discarded);

    // What is saved (mp3_saving.cpp).
    using Saved = std::function<void(bool saved)>;
    void save(const QList<Side> &sides, Loss loss, Saved then);
    void takeSave(const QList<Side> &sides, TagSave &&save, Saved then);

    Mp3Bar *m_bar = nullptr;
    QWidget *m_encodingRow = nullptr;
    QComboBox *m_encoding = nullptr;
    PicturePanel *m_pictures;
    Sides<QString> m_files; ///< that the songs were read from
    TagEdits m_edits;
    QList<SongRow> m_rows;
    QHash<QString, qsizetype> m_numbers; ///< of the first row of each name
    bool m_hasSongs = false;
    bool m_isEditing = false;
};

} // namespace velmora
