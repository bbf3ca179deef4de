#include "text/result/result_presenter.h"

#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "text/syntax/syntax_definition.h"
#include "text/view/diff_view.h"

namespace velmora {

ResultPresenter::ResultPresenter(SessionHost &host, DiffView &view, NoticeBar &bar, QObject *parent)
    : QObject(parent), m_host(host), m_view(view), m_bar(bar)
{
    connect(&view.scene(), &PaneScene::documentChanged, this, &ResultPresenter::showVerdict);
    present();
}

void ResultPresenter::showRunning(bool running)
{
    if (m_result.document)
        return;
    m_view.showNotice(Side::Left, !running);
    m_view.showNotice(Side::Right, !running);
}

void ResultPresenter::show(Result result)
{
    const bool sameFiles = m_result.document && m_result.paths == result.paths;
    m_result = std::move(result);
    m_findings = findingsOf(*m_result.document);
    m_view.scene().changes().setRules(KeyRules::of(m_result.options));
    if (m_asText != m_result.paths)
        m_asText = {};
    present(sameFiles);
}

void ResultPresenter::present(bool keepsPlace)
{
    const bool isBinary = m_result.sides.left.text.binary || m_result.sides.right.text.binary;
    const bool hidesText = isBinary && m_asText != m_result.paths;
    const std::shared_ptr<const DiffDocument> shown = hidesText ? nullptr : m_result.document;
    if (keepsPlace) {
        m_view.scene().replaceDocument(shown);
        m_view.scene().forgetCurrent();
    } else {
        m_view.scene().setDocument(shown);
    }
    presentSide(Side::Left, hidesText);
    presentSide(Side::Right, hidesText);
}

void ResultPresenter::takeEdited(std::shared_ptr<const DiffDocument> document, const TextLines &left,
                                 const TextLines &right)
{
    m_result.document = std::move(document);
    m_result.sides.left.text.lines = left;
    m_result.sides.right.text.lines = right;
    m_findings = findingsOf(*m_result.document);
    showVerdict();
}

void ResultPresenter::showVerdict()
{
    // Of a text that is being edited, or not shown at all, nothing is known.
    const PaneScene &scene = m_view.scene();
    const auto showsText = [&](Side side) {
        return &scene.document()->source(side) == &m_result.document->source(side);
    };
    const bool isShown = m_result.document && scene.document() && showsText(Side::Left) && showsText(Side::Right);
    if (!isShown) {
        m_bar.clear();
        return;
    }
    const Verdict verdict = judge(m_findings, m_result.sides.left, m_result.sides.right, m_result.options,
                                  {scene.countsMinor(), indentedType()});
    switch (verdict.offer) {
    case Verdict::Offer::None:
        m_bar.setAction({});
        break;
    case Verdict::Offer::CountUnimportant:
        m_bar.setAction(Velmora::tr("Count them"),
                        Velmora::tr("Count and step to unimportant differences, too (Alt+M)"));
        break;
    case Verdict::Offer::IgnoreUnimportant:
        m_bar.setAction(Velmora::tr("Ignore them"), Velmora::tr("Ignore unimportant differences again (Alt+M)"));
        break;
    }
    m_bar.tell(verdict.text, verdict.warns ? NoticeBar::Tone::Warning : NoticeBar::Tone::Verdict);
}

QString ResultPresenter::indentedType() const
{
    for (const Side side : {Side::Left, Side::Right}) {
        const auto &type = m_view.scene().colouring(side).definition();
        if (type && type->indentationHasMeaning)
            return type->name;
    }
    return {};
}

void ResultPresenter::presentSide(Side side, bool hidesText)
{
    NoticeCard &notice = m_view.notice(side);
    if (!m_result.document) {
        notice.tell({Velmora::tr("Drop a file here"), Velmora::tr("or choose one above, then press Compare (F5)")});
    } else if (hidesText && m_result.sides[side].text.binary) {
        offerBinary(side);
    } else if (hidesText) {
        notice.tell({Velmora::tr("Not shown"), Velmora::tr("The other side is no text.")});
    } else if (m_result.sides[side].missing) {
        notice.tell(
            {Velmora::tr("No file on this side"), Velmora::tr("The other side is compared with an empty text.")});
    } else {
        notice.clear();
    }
}

void ResultPresenter::offerBinary(Side side)
{
    Notice notice{Velmora::tr("Binary content"),
                  Velmora::tr("This file holds bytes that no text has. Hex compare shows them one by one.")};
    notice.buttons.push_back(
        {Velmora::tr("Open in Hex compare"), [this] { m_host.openSession(QStringLiteral("binary"), m_result.paths); }});
    notice.buttons.push_back({Velmora::tr("Show as text"), [this] {
                                  m_asText = m_result.paths;
                                  present();
                              }});
    m_view.notice(side).tell(notice);
}

} // namespace velmora
