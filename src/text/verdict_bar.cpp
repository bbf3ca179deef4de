#include "text/verdict_bar.h"

#include "session/diff_colours.h"
#include "session/translate.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace velmora {

VerdictBar::VerdictBar(QWidget *parent) : QWidget(parent), m_text(new QLabel(this)), m_offer(new QPushButton(this))
{
    m_text->setObjectName(QStringLiteral("diffBanner"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_offer->setObjectName(QStringLiteral("verdictOffer"));
    setAutoFillBackground(true);

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(8, 4, 8, 4);
    line->setSpacing(12);
    line->addWidget(m_text, 1);
    line->addWidget(m_offer);
    connect(m_offer, &QPushButton::clicked, this, &VerdictBar::offerTaken);
    hide();
}

void VerdictBar::show(const Verdict &verdict)
{
    m_text->setText(verdict.text);
    m_warns = verdict.warns;
    const bool counts = verdict.offer == Verdict::Offer::CountUnimportant;
    m_offer->setText(counts ? Velmora::tr("Count them") : Velmora::tr("Ignore them"));
    m_offer->setToolTip(counts ? Velmora::tr("Count and step to unimportant differences, too (Alt+M)")
                               : Velmora::tr("Ignore unimportant differences again (Alt+M)"));
    m_offer->setVisible(verdict.offer != Verdict::Offer::None);
    refreshTheme();
    setVisible(!verdict.text.isEmpty());
}

void VerdictBar::refreshTheme()
{
    QPalette colours = palette();
    colours.setColor(QPalette::Window, diffColour(m_warns ? DiffColour::Modified : DiffColour::Unimportant));
    colours.setColor(QPalette::WindowText, diffColour(DiffColour::Text));
    setPalette(colours);
}

} // namespace velmora
