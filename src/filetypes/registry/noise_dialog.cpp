#include "filetypes/registry/noise_dialog.h"

#include "filetypes/registry/registry_words.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace velmora {

NoiseDialog::NoiseDialog(const QList<NoiseProfile> &profiles, QWidget *parent)
    : QDialog(parent), m_profiles(profiles), m_list(new QListWidget(this)), m_masks(new QPlainTextEdit(this))
{
    setWindowTitle(Velmora::tr("Noise"));
    m_list->setObjectName(QStringLiteral("noiseProfiles"));
    m_masks->setObjectName(QStringLiteral("noiseMasks"));
    m_masks->setTabChangesFocus(true);
    m_masks->setAccessibleName(Velmora::tr("Masks, one a line:"));
    for (const NoiseProfile &profile : m_profiles) {
        auto *item = new QListWidgetItem(noiseText(profile.kind), m_list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(profile.isOn ? Qt::Checked : Qt::Unchecked);
    }
    auto *hint = new QLabel(Velmora::tr("Differences that a ticked profile matches are shown as noise: they are not "
                                        "counted, not stepped to and not part of what is written."),
                            this);
    hint->setObjectName(QStringLiteral("chromeHint"));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    auto *label = new QLabel(Velmora::tr("Masks, one a line:"), this);
    label->setBuddy(m_masks);
    m_masks->setToolTip(Velmora::tr("Each stands for the path of a key, a backslash and the name of a value: "
                                    "* is any run of letters, ? any one"));
    auto *restored = new QPushButton(Velmora::tr("Restore masks"), this);
    restored->setObjectName(QStringLiteral("restoreMasks"));
    restored->setAutoDefault(false);
    connect(restored, &QPushButton::clicked, this, &NoiseDialog::restore);
    connect(m_list, &QListWidget::currentRowChanged, this, &NoiseDialog::showProfile);
    auto *buttons = makeConfirmButtons(*this);
    buttons->insertWidget(0, restored);
    auto *column = new QVBoxLayout(this);
    column->addWidget(hint);
    column->addWidget(m_list, 2);
    column->addWidget(label);
    column->addWidget(m_masks, 3);
    column->addLayout(buttons);
    resize(560, 460);
    m_list->setCurrentRow(0);
}

void NoiseDialog::keepMasks()
{
    if (m_shown < 0)
        return;
    // A text separates masks by line feeds here, and by ";" where they are stored.
    QString text = m_masks->toPlainText();
    m_profiles[m_shown].masks = splitMasks(text.replace(u'\n', u';'));
}

void NoiseDialog::showProfile(int row)
{
    keepMasks();
    m_shown = row;
    m_masks->setPlainText(row < 0 ? QString() : m_profiles[row].masks.join(u'\n'));
}

void NoiseDialog::restore()
{
    if (m_shown >= 0)
        m_masks->setPlainText(defaultNoiseProfiles()[m_shown].masks.join(u'\n'));
}

QList<NoiseProfile> NoiseDialog::profiles() const
{
    QList<NoiseProfile> profiles = m_profiles;
    for (qsizetype k = 0; k < profiles.size(); ++k)
        profiles[k].isOn = m_list->item(int(k))->checkState() == Qt::Checked;
    QString text = m_masks->toPlainText();
    if (m_shown >= 0)
        profiles[m_shown].masks = splitMasks(text.replace(u'\n', u';'));
    return profiles;
}

} // namespace velmora
