#pragma once

#include <QWidget>

namespace velmora {

struct TextSessionOptions;

/// One tab of the settings of a text comparison: shows some fields of the record and writes them back.
class SettingsPage : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Shows the page's fields of `options`.
    virtual void load(const TextSessionOptions &options) = 0;
    /// Writes the page's fields into `options` and leaves the others alone.
    virtual void store(TextSessionOptions &options) const = 0;

Q_SIGNALS:
    /// A field has got another value.
    void changed();
};

} // namespace velmora
