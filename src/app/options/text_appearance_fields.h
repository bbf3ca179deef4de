#pragma once

#include "session/pane/text_appearance.h"

#include <QObject>

class QFontComboBox;
class QFormLayout;
class QSpinBox;

namespace velmora {

/// The fields by which a person chooses how compared texts look.
class TextAppearanceFields final : public QObject {
    Q_OBJECT
public:
    /// Adds its rows to `form` and shows what is stored.
    TextAppearanceFields(QFormLayout &form, QObject *parent);

    /// Stores what the fields say, if it is something else than before.
    void save();

private:
    TextAppearance m_stored;
    QString m_shownFamily; ///< what the stored family is in fact
    QFontComboBox *m_family;
    QSpinBox *m_points;
    QSpinBox *m_tabWidth;
};

} // namespace velmora
