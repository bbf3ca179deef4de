#include "filetypes/binary/hex_finder.h"

#include "filetypes/binary/engine/byte_search.h"
#include "filetypes/binary/hex_find_bar.h"
#include "filetypes/binary/hex_scene.h"
#include "session/fault_text.h"
#include "session/translate.h"

namespace velmora {

HexFinder::HexFinder(HexFindBar &bar, HexScene &scene, QObject *parent) : QObject(parent), m_bar(bar), m_scene(scene)
{
    connect(&bar, &HexFindBar::nextWanted, this, &HexFinder::findNext);
    connect(&bar, &HexFindBar::previousWanted, this, &HexFinder::findPrevious);
    connect(&bar, &HexFindBar::closed, this, &HexFinder::cancel);
    connect(&scene, &HexScene::documentChanged, this, [this] { m_runner.abandon(); });
}

void HexFinder::find(bool forwards)
{
    if (!m_scene.document())
        return;
    const std::optional<QByteArray> pattern = m_bar.pattern();
    if (!pattern)
        return;
    const ByteSelection selected = m_scene.selection();
    const std::shared_ptr<const BinarySource> source = m_scene.document()->sources[selected.side];
    const qint64 first = m_scene.document()->starts[selected.side];
    const qint64 here = selected.length() == 0 ? first : selected.begin + (forwards ? 1 : 0);
    const auto job = [source, forwards, here, first, bytes = *pattern](const CancelFlag &cancel, Progress &progress) {
        const auto search = forwards ? findForwards : findBackwards;
        const auto inside = [first](std::optional<qint64> place) {
            return place && *place >= first ? place : std::nullopt;
        };
        if (const auto place = inside(search(*source, bytes, here, cancel, progress)))
            return Match{place, false};
        return Match{inside(search(*source, bytes, forwards ? first : source->size(), cancel, progress)), true};
    };
    m_bar.tell(Velmora::tr("Searching..."));
    m_runner.start(
        job, [this, length = pattern->size()](RunOutcome<Match> &&outcome) { takeMatch(std::move(outcome), length); });
}

void HexFinder::takeMatch(RunOutcome<Match> &&outcome, qsizetype length)
{
    if (outcome.end == RunEnd::Failed) {
        m_bar.tell(faultText(outcome.fault, Velmora::tr("Not enough memory")));
    } else if (outcome.end == RunEnd::Cancelled) {
        m_bar.tell(Velmora::tr("Cancelled"));
    } else if (!outcome.value->offset) {
        m_bar.tell(Velmora::tr("Not found"));
    } else {
        const qint64 begin = *outcome.value->offset;
        m_scene.select({m_scene.caret().side, begin, begin + length});
        m_bar.tell(outcome.value->isBehindEnd ? Velmora::tr("Found by starting over from the other end") : QString());
        Q_EMIT found();
    }
}

} // namespace velmora
