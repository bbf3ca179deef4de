#include "settings/dialogs/settings_footer.h"

#include "session/translate.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

namespace velmora {

namespace {

enum Scope { ThisViewOnly, Defaults };

} // namespace

SettingsFooter::SettingsFooter(const QString &thisViewOnly, QWidget *parent)
    : QWidget(parent), m_scope(new QComboBox), m_preset(new QLabel)
{
    m_scope->setObjectName(QStringLiteral("settingsScope"));
    m_scope->addItems({thisViewOnly, Velmora::tr("Save as default settings")});
    m_preset->setObjectName(QStringLiteral("settingsPreset"));
    auto *label = new QLabel(Velmora::tr("&Where these settings apply"));
    label->setBuddy(m_scope);

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(label);
    line->addWidget(m_scope);
    line->addStretch(1);
    line->addSpacing(16);
    line->addWidget(m_preset);
}

bool SettingsFooter::savesDefaults() const
{
    return m_scope->currentIndex() == Defaults;
}

void SettingsFooter::showPreset(const QString &name)
{
    m_preset->setText(presetText(name));
}

QString presetText(const QString &name)
{
    return Velmora::tr("Preset: %1").arg(name.isEmpty() ? Velmora::tr("Custom") : name);
}

} // namespace velmora
