#pragma once

#include <QWidget>

namespace velmora {

struct FolderSessionOptions;
struct TextSessionOptions;

/// What pages of all settings dialogs have in common.
class SettingsPageBase : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

Q_SIGNALS:
    /// A field has got another value.
    void changed();
};

/// One tab of the settings of a session: shows some fields of the record and writes them back.
template <typename Options>
class SettingsPageOf : public SettingsPageBase {
public:
    using SettingsPageBase::SettingsPageBase;

    /// Shows the page's fields of `options`.
    virtual void load(const Options &options) = 0;
    /// Writes the page's fields into `options` and leaves the others alone.
    virtual void store(Options &options) const = 0;
};

using SettingsPage = SettingsPageOf<TextSessionOptions>;
using FolderSettingsPage = SettingsPageOf<FolderSessionOptions>;

} // namespace velmora
