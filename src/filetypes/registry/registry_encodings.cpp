#include "filetypes/registry/registry_encodings.h"

#include "session/translate.h"

#include <QActionGroup>
#include <QMenu>

namespace velmora {

RegistryEncodings::RegistryEncodings(QAction &command, QObject *parent)
    : QObject(parent),
      m_command(command),
      m_menus{command.menu()->addMenu(Velmora::tr("Encoding of the left file")),
              command.menu()->addMenu(Velmora::tr("Encoding of the right file"))}
{
    m_command.setEnabled(false);
    for (const Side side : bothSides) {
        m_menus[side]->setObjectName(side == Side::Left ? QStringLiteral("leftEncodingMenu")
                                                        : QStringLiteral("rightEncodingMenu"));
        m_menus[side]->setEnabled(false);
    }
}

void RegistryEncodings::choose(const QString &place, const TextEncoding &encoding)
{
    if (encoding.isAutomatic())
        m_chosen.remove(place);
    else
        m_chosen.insert(place, encoding);
}

void RegistryEncodings::show(const Sides<QString> &places, const Sides<QByteArray> &charsets)
{
    m_places = places;
    for (const Side side : bothSides)
        fill(side, charsets[side]);
    m_command.setEnabled(m_menus.left->isEnabled() || m_menus.right->isEnabled());
}

void RegistryEncodings::fill(Side side, const QByteArray &charset)
{
    QMenu &menu = *m_menus[side];
    const TextEncoding now = of(m_places[side]);
    delete m_groups[side];
    menu.clear();
    menu.setEnabled(!charset.isEmpty() || !now.isAutomatic());
    auto *group = m_groups[side] = new QActionGroup(this);
    const auto offer = [&](const QString &text, const TextEncoding &encoding) {
        QAction *action = group->addAction(menu.addAction(text));
        action->setCheckable(true);
        action->setChecked(encoding == now);
        connect(action, &QAction::triggered, this, [this, side, encoding] {
            choose(m_places[side], encoding);
            Q_EMIT chosen();
        });
    };
    offer(charset.isEmpty() || !now.isAutomatic()
              ? Velmora::tr("Auto detect")
              : Velmora::tr("Auto detect (%1)").arg(TextEncoding::ofCharset(charset, false).name()),
          {});
    menu.addSeparator();
    for (const QString &name : TextEncoding::offeredNames()) {
        const TextEncoding encoding = TextEncoding::fromName(name);
        if (!encoding.isAutomatic() && !encoding.hasMark())
            offer(name, encoding);
    }
}

} // namespace velmora
