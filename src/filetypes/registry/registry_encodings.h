#pragma once

#include "core/sides.h"
#include "core/text_encoding.h"

#include <QHash>
#include <QObject>

class QAction;
class QActionGroup;
class QMenu;

namespace velmora {

/// Which code pages a person wants files of version 4 to be read by, and the menus to say so. A choice is of a file and
/// goes with it when sides are swapped.
class RegistryEncodings final : public QObject {
    Q_OBJECT
public:
    /// Fills the menu of `command`, which can be used while there is something to choose, with one for each side.
    RegistryEncodings(QAction &command, QObject *parent);

    /// That of a file; automatic detection until another is chosen.
    [[nodiscard]] TextEncoding of(const QString &place) const { return m_chosen.value(place); }
    void choose(const QString &place, const TextEncoding &encoding);

    /// What was compared, and the charsets that letters of files without Unicode were read by; empty for none.
    void show(const Sides<QString> &places, const Sides<QByteArray> &charsets);

Q_SIGNALS:
    /// A person chose another one for a file that is compared.
    void chosen();

private:
    void fill(Side side, const QByteArray &charset);

    QAction &m_command;
    QHash<QString, TextEncoding> m_chosen;
    Sides<QString> m_places;
    Sides<QMenu *> m_menus;
    Sides<QActionGroup *> m_groups{nullptr, nullptr}; ///< of the actions of each menu
};

} // namespace velmora
