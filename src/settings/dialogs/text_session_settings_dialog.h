#pragma once

#include "settings/dialogs/settings_page.h"
#include "settings/options/text_session_options.h"

#include <QDialog>
#include <QList>

class QTabWidget;

namespace velmora {

class FormatPage;
class SettingsFooter;

/// Edits the options of one text comparison.
///
/// Works on a copy: the caller opens the dialog with open() and takes `options()` when `accepted` comes. On accepting,
/// the options also become the stored defaults where the person has asked for it.
class TextSessionSettingsDialog final : public QDialog {
    Q_OBJECT
public:
    /// The tabs by their index.
    enum Tab { Specs, Format, Importance, Alignment, Replacements };

    /// `initialTab` is a `Tab`; any other number opens the first.
    explicit TextSessionSettingsDialog(const TextSessionOptions &options, int initialTab = Specs,
                                       QWidget *parent = nullptr);

    /// Names the line ends that the files have; empty where that is not known.
    void setOwnLineEnds(const QString &left, const QString &right);

    /// The options as the controls show them, the legacy switches derived from them.
    [[nodiscard]] TextSessionOptions options() const;

public Q_SLOTS:
    void accept() override;

private:
    void addPage(SettingsPage *page, const QString &title);
    void applyPreset(const QString &name);
    void showPreset();

    TextSessionOptions m_options; ///< what no control shows comes from here
    QTabWidget *m_tabs;
    FormatPage *m_format;
    SettingsFooter *m_footer;
    QList<SettingsPage *> m_pages;
};

} // namespace velmora
